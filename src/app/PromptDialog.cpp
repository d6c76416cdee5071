#include "app/PromptDialog.h"

#include <utility>

namespace tlm {

void PromptDialog::Accept(std::u16string editText)
{
    result = std::move(editText);
    accepted = true;
    closed = true;
}

void PromptDialog::Cancel()
{
    closed = true;
}

void PromptDialog::OnDestroy()
{
    closed = true;
}

} // namespace tlm
