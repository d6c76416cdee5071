#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace tlm {

// A rectangle in screen pixels; right and bottom lie just outside it.
struct ScreenRect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    friend bool operator==(const ScreenRect&, const ScreenRect&) = default;
};

// Where the main window goes and how large it is, in screen pixels.
struct WindowPlacement {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;

    friend bool operator==(const WindowPlacement&, const WindowPlacement&) = default;
};

// The work area to centre on: the monitor's, unless there is no monitor or it reports an all-zero
// rectangle, in which case the system-wide work area is asked for.
ScreenRect ChooseWorkArea(const std::optional<ScreenRect>& monitorWorkArea,
                          const std::function<ScreenRect()>& systemWorkArea);

// Size and centre the main window on `workArea`: at most 980 by 760, at most 80 percent of the work
// area and 48 pixels less than it, at least one pixel, and never larger than the size the system gave
// the window by default.
WindowPlacement PlaceMainWindow(const ScreenRect& workArea, std::int32_t defaultWidth, std::int32_t defaultHeight);

} // namespace tlm
