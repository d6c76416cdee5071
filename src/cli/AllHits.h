#pragma once

#include "document/FileViewModel.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace tlm {

// Every place where `pattern` lies in the file, overlapping ones included: forward, those that begin at
// or after `from` in rising order; backward, those that begin at or before it in falling order. The file
// is read once, block by block, into one buffer, and each block is scanned with the same searcher as
// a single find. `hit` is called for each offset; `progress` with bytes done and the total.
void ForEachHit(const FileViewModel& file, const std::vector<std::uint8_t>& pattern, std::uint64_t from, bool backward,
    const std::function<void(std::uint64_t)>& hit, const std::function<void(std::uint64_t, std::uint64_t)>& progress);

} // namespace tlm
