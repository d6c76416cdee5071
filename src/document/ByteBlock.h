#pragma once

#include <cstdint>
#include <vector>

namespace tlm {

// What a document read gives back: the bytes found at `offset`, possibly fewer than asked.
struct ByteBlock {
    std::uint64_t offset = 0;
    std::vector<std::uint8_t> bytes;
};

} // namespace tlm
