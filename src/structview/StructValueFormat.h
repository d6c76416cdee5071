#pragma once

#include <cstdint>

namespace tlm {

// How the struct view writes values. Each field is 0 or 1; any other number acts as 0.
struct StructValueFormat {
    std::uint32_t byteArrayFormat = 0; // 0 hex, 1 ascii (only for arrays of one-byte characters)
    std::uint32_t endian = 0;          // 0 little, 1 big
    std::uint32_t numericBase = 0;     // 0 hex, 1 decimal

    friend bool operator==(const StructValueFormat&, const StructValueFormat&) = default;
};

} // namespace tlm
