#pragma once

#include "hexview/HexViewLayout.h"

#include <cstdint>

namespace tlm {

// The scroll bar requests, numbered as the platform's SB_ codes.
enum class ScrollCommand : std::uint32_t {
    LineUp = 0, // also line left
    LineDown = 1,
    PageUp = 2,
    PageDown = 3,
    ThumbPosition = 4,
    ThumbTrack = 5,
    Top = 6,
    Bottom = 7,
    EndScroll = 8,
};

// The top row that a vertical scroll request asks for, before clamping; nothing for a request that
// does not move (the end of a scroll, an unknown code).
std::optional<std::uint64_t> ScrolledTopRow(const HexViewMetrics& metrics, const HexViewState& state,
    DocumentExtent document, ClientSize client, ScrollCommand command, std::int32_t trackPosition);

// The horizontal scroll that a horizontal request asks for, before clamping; nothing when it does not move.
std::optional<std::int32_t> ScrolledHorizontal(const HexViewMetrics& metrics, const HexViewState& state,
    ClientSize client, ScrollCommand command, std::int32_t trackPosition);

} // namespace tlm
