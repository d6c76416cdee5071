#pragma once

#include "cli/CliStreams.h"

#include <string>
#include <vector>

namespace tlm {

// Standard output and standard error of the process, written without any buffering of their own:
// callers hand over large pieces. On Windows the console is switched to UTF-8 output first.
CliStreams ProcessStreams();

} // namespace tlm
