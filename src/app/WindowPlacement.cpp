#include "app/WindowPlacement.h"

#include <algorithm>

namespace tlm {

namespace {

constexpr std::int64_t MaximumWidth = 980;
constexpr std::int64_t MaximumHeight = 760;
constexpr std::int64_t WorkAreaPercent = 80;
constexpr std::int64_t WorkAreaMargin = 48;

bool IsAllZero(const ScreenRect& rect)
{
    return rect == ScreenRect{};
}

// One dimension of the window. 64-bit arithmetic: the percentage of a huge extent must not overflow.
std::int64_t FitExtent(std::int64_t available, std::int64_t maximum, std::int64_t byDefault)
{
    const std::int64_t extent = std::max<std::int64_t>(
        std::min({maximum, available * WorkAreaPercent / 100, available - WorkAreaMargin}), 1);
    return std::min(extent, byDefault);
}

std::int64_t CentredStart(std::int64_t areaStart, std::int64_t available, std::int64_t extent)
{
    return areaStart + std::max<std::int64_t>((available - extent) / 2, 0);
}

} // namespace

ScreenRect ChooseWorkArea(const std::optional<ScreenRect>& monitorWorkArea,
                          const std::function<ScreenRect()>& systemWorkArea)
{
    if (monitorWorkArea && !IsAllZero(*monitorWorkArea))
        return *monitorWorkArea;
    return systemWorkArea ? systemWorkArea() : ScreenRect{};
}

WindowPlacement PlaceMainWindow(const ScreenRect& workArea, std::int32_t defaultWidth, std::int32_t defaultHeight)
{
    const std::int64_t availableWidth = std::int64_t{workArea.right} - workArea.left;
    const std::int64_t availableHeight = std::int64_t{workArea.bottom} - workArea.top;
    const std::int64_t width = FitExtent(availableWidth, MaximumWidth, defaultWidth);
    const std::int64_t height = FitExtent(availableHeight, MaximumHeight, defaultHeight);

    WindowPlacement placement;
    placement.width = static_cast<std::int32_t>(width);
    placement.height = static_cast<std::int32_t>(height);
    placement.left = static_cast<std::int32_t>(CentredStart(workArea.left, availableWidth, width));
    placement.top = static_cast<std::int32_t>(CentredStart(workArea.top, availableHeight, height));
    return placement;
}

} // namespace tlm
