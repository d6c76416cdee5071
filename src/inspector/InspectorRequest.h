#pragma once

#include "encoding/TextEncoding.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tlm {

// The bytes at the caret for the inspector: up to 96 of them, fewer near the end, none when empty.
struct InspectorRequest {
    std::uint64_t offset = 0; // carried along for the reply; the values do not use it
    TextEncoding encoding = TextEncoding::Ascii;
    std::vector<std::uint8_t> bytes;
};

inline constexpr std::size_t InspectorSnapshotSize = 96;
inline constexpr std::size_t InspectorRowCount = 12;

} // namespace tlm
