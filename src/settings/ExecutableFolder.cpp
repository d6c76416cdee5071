#include "settings/ExecutableFolder.h"

namespace tlm {

std::u16string ProgramBaseDirectory()
{
    std::u16string error;
    if (auto folder = ExecutableFolder(error))
        return std::move(*folder);
    return CurrentFolder().value_or(std::u16string());
}

} // namespace tlm
