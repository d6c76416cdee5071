#pragma once

#include "cli/CliStreams.h"

#include <span>
#include <string>

namespace tlm {

// inspect FILE --offset N [--encoding NAME] [--json]: the twelve rows of the data inspector for the
// bytes at N. N may be the file's size, where there are no bytes and every row is unavailable.
int RunInspectCommand(std::span<const std::string> words, CliStreams& streams);

} // namespace tlm
