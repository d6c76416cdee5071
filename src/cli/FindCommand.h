#pragma once

#include "cli/CliStreams.h"

#include <span>
#include <string>

namespace tlm {

// find FILE (--text TEXT [--encoding NAME] | --hex "4A 4B") [--from N] [--backward] [--all] [--count]
// [--json]. The query is read by the find dialog's rules. --from is where the search starts, inclusive:
// forward the first match at or after it, backward the last match that begins at or before it; its
// default is the start of the file forward and the end backward. Offsets are printed in decimal.
int RunFindCommand(std::span<const std::string> words, CliStreams& streams);

} // namespace tlm
