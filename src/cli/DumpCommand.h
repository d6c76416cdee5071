#pragma once

#include "cli/CliStreams.h"

#include <span>
#include <string>

namespace tlm {

// dump FILE [--offset N] [--length N] [--encoding NAME] [--json]: the rows as the hex view shows them.
// Rows start at multiples of sixteen as in the view: --offset is rounded down to its row, and the
// dump ends with the row that holds the last byte of the range.
int RunDumpCommand(std::span<const std::string> words, CliStreams& streams);

} // namespace tlm
