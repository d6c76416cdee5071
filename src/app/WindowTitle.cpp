#include "app/WindowTitle.h"

namespace tlm {

std::u16string_view LastPathComponent(std::u16string_view path)
{
    const std::size_t separator = path.find_last_of(u"\\/");
    if (separator == std::u16string_view::npos)
        return path;
    return path.substr(separator + 1);
}

std::u16string ComposeWindowTitle(std::u16string_view programTitle, const IEditableDocument& document)
{
    std::u16string title(programTitle);
    if (document.IsOpen()) {
        title += u" - ";
        title += LastPathComponent(document.GetPath());
    }
    if (document.IsModified())
        title += u" *";
    return title;
}

} // namespace tlm
