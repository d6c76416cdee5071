#pragma once

#include "cli/CliStreams.h"

#include <span>
#include <string>

namespace tlm {

// struct FILE --pattern FILE.tlpat [--offset N] [--dec] [--big-endian] [--ascii] [--json]: the struct
// view's rows for the entry struct at N, or the pattern loader's error with its line and column.
int RunStructCommand(std::span<const std::string> words, CliStreams& streams);

} // namespace tlm
