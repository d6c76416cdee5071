#pragma once

#include "structview/StructPatternFile.h"

#include <string>

namespace tlm {

// The settings a loaded pattern runs under, one "name = value" line each, lines joined by CR LF:
// the entry struct first, then the type sizes, pointer size and member alignment in decimal.
std::u16string BuildStructInfoText(const StructPatternFile& patternFile);

} // namespace tlm
