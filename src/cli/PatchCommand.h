#pragma once

#include "cli/CliStreams.h"

#include <span>
#include <string>

namespace tlm {

// patch FILE (--overwrite N HEX | --insert N HEX | --delete N COUNT)... [--json]: the edits go onto
// the document's overlay in the order given, each at offsets of the file as the edits before it left
// it, then one save writes them. Every edit is checked before anything is written, so a refused patch
// leaves the file as it was.
int RunPatchCommand(std::span<const std::string> words, CliStreams& streams);

} // namespace tlm
