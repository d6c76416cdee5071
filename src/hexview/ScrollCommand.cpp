#include "hexview/ScrollCommand.h"

#include <algorithm>
#include <cmath>

namespace tlm {

namespace {

std::int32_t SaturatedInt(std::int64_t value)
{
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
}

} // namespace

std::optional<std::uint64_t> ScrolledTopRow(const HexViewMetrics& metrics, const HexViewState& state,
    DocumentExtent document, ClientSize client, ScrollCommand command, std::int32_t trackPosition)
{
    const auto page = static_cast<std::uint64_t>(std::max(VisibleRowCount(metrics, client), 1));
    const std::uint64_t top = state.topRow;
    switch (command) {
    case ScrollCommand::LineUp:
        return top == 0 ? 0 : top - 1;
    case ScrollCommand::LineDown:
        return top + 1;
    case ScrollCommand::PageUp:
        return top > page ? top - page : 0;
    case ScrollCommand::PageDown:
        return top + page;
    case ScrollCommand::ThumbPosition:
    case ScrollCommand::ThumbTrack:
        return static_cast<std::uint64_t>(std::max(trackPosition, 0));
    case ScrollCommand::Top:
        return 0;
    case ScrollCommand::Bottom:
        return MaxTopRow(metrics, state, document, client);
    case ScrollCommand::EndScroll:
        break;
    }
    return std::nullopt;
}

std::optional<std::int32_t> ScrolledHorizontal(const HexViewMetrics& metrics, const HexViewState& state,
    ClientSize client, ScrollCommand command, std::int32_t trackPosition)
{
    const std::int64_t step = std::max<std::int64_t>(std::lround(metrics.hexCellWidth), 1);
    const std::int64_t page = ViewportWidth(metrics, client);
    const std::int64_t position = state.horizontalScroll;
    switch (command) {
    case ScrollCommand::LineUp:
        return SaturatedInt(position - step);
    case ScrollCommand::LineDown:
        return SaturatedInt(position + step);
    case ScrollCommand::PageUp:
        return SaturatedInt(position - page);
    case ScrollCommand::PageDown:
        return SaturatedInt(position + page);
    case ScrollCommand::ThumbPosition:
    case ScrollCommand::ThumbTrack:
        return trackPosition;
    case ScrollCommand::Top:
        return 0;
    case ScrollCommand::Bottom:
        return MaxHorizontalScroll(metrics, client);
    case ScrollCommand::EndScroll:
        break;
    }
    return std::nullopt;
}

} // namespace tlm
