#pragma once

#include "cli/CliStreams.h"

#include <string>
#include <vector>

namespace tlm {

// The whole program: `arguments` are the words after the program's name, in UTF-8. Gives the exit
// code: 0 done, 1 nothing found, 2 bad usage or input (with one line on standard error saying what).
int RunCli(const std::vector<std::string>& arguments, CliStreams& streams);

} // namespace tlm
