#pragma once

#include "hexview/HexEditMode.h"

#include <cstdint>

namespace tlm {

// Where the view stands. It survives every change of metrics.
struct HexViewState {
    std::uint64_t topRow = 0;
    std::int32_t horizontalScroll = 0; // the hex and text columns move left by this; the offsets never do
    std::uint64_t caretOffset = 0;
    HexEditMode insertMode = HexEditMode::Overwrite;
};

} // namespace tlm
