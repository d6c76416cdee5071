#pragma once

// CurrentFolder, the process's current folder, is the document core's: one answer for both.
#include "document/PlatformFile.h"

#include <optional>
#include <string>

namespace tlm {

// The folder that holds the running program; nothing when the system cannot tell, with the system's
// reason in `error`.
std::optional<std::u16string> ExecutableFolder(std::u16string& error);

// Where the program's own files (the language files) are looked for: the program's folder, else the
// current folder, else nothing, which leaves paths relative. Why the program's folder was unknown is
// not worth showing and is dropped.
std::u16string ProgramBaseDirectory();

} // namespace tlm
