#pragma once

#include "document/IEditableDocument.h"

#include <string>
#include <string_view>

namespace tlm {

// The last component of `path`; both "\" and "/" separate components.
std::u16string_view LastPathComponent(std::u16string_view path);

// The main window's title: the program's title, then " - " and the file's name while a file is open,
// then " *" while the document has unsaved changes.
std::u16string ComposeWindowTitle(std::u16string_view programTitle, const IEditableDocument& document);

} // namespace tlm
