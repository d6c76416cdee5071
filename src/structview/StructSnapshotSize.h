#pragma once

#include "structview/StructPatternFile.h"

#include <cstdint>

namespace tlm {

// However long the entry struct claims to be, one refresh reads at most this much at the caret. Values
// show only their first bytes and a result holds a bounded number of rows, so members past this point
// show the unavailable text instead of costing a read of gigabytes on the user-interface thread.
inline constexpr std::uint64_t MaxStructSnapshotBytes = std::uint64_t{1} << 20;

// A flexible array at the end is shown from at most this many bytes past the struct.
inline constexpr std::uint64_t FlexibleArrayTail = 256;

// How many bytes at the caret one evaluation of the entry struct reads: its size, and the tail of a
// flexible array it ends in, bounded as above. 0 without an entry struct.
std::uint64_t StructSnapshotSize(const StructPatternFile& patternFile);

} // namespace tlm
