#pragma once

#include <functional>
#include <string_view>

namespace tlm {

// Where a command writes: standard output and standard error in the real program, strings in tests.
// Text is UTF-8 with "\n" line ends on every platform.
struct CliStreams {
    std::function<void(std::string_view)> writeOut;
    std::function<void(std::string_view)> writeError;
    // Only a terminal gets a progress bar; a pipe or a file gets the plain text alone.
    bool errorIsTerminal = false;
    bool outIsTerminal = false;
};

// Exit codes of every command.
inline constexpr int CliSuccess = 0;
inline constexpr int CliNotFound = 1;
inline constexpr int CliBadInput = 2;

} // namespace tlm
