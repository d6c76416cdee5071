#pragma once

#include <optional>
#include <span>
#include <string>

namespace tlm {

// The one file the command line may name. `arguments` is the split command line with the program
// first; a command line that could not be split is an empty list. Only the second element counts,
// and only when it is not empty: the program has no options and ignores everything after it.
std::optional<std::u16string> TakeStartupPath(std::span<const std::u16string> arguments);

} // namespace tlm
