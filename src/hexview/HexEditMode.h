#pragma once

#include <cstdint>

namespace tlm {

// How a typed byte lands: over the byte at the caret, or in front of it.
enum class HexEditMode : std::uint32_t {
    Overwrite = 0,
    Insert = 1,
};

} // namespace tlm
