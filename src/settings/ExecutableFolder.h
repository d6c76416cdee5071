#pragma once

#include <optional>
#include <string>

namespace tlm {

// The folder that holds the running program; nothing when the system cannot tell, with the system's
// reason in `error`.
std::optional<std::u16string> ExecutableFolder(std::u16string& error);

// The process's current folder; nothing when it is unknown.
std::optional<std::u16string> CurrentFolder();

} // namespace tlm
