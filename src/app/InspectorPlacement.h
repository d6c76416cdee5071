#pragma once

#include "app/WindowPlacement.h"

#include <cstdint>
#include <optional>

namespace tlm {

// What placing the inspector beside the main window does: where it moves, if it moves, and whether it
// is shown (without taking the activation) or hidden.
struct InspectorPlacementStep {
    std::optional<WindowPlacement> move;
    bool show = false;

    friend bool operator==(const InspectorPlacementStep&, const InspectorPlacementStep&) = default;
};

// The inspector stands one pixel right of the main window's outer rectangle `main`, as tall as it, at
// its own `width`. A minimised main window hides it instead. A maximised inspector stays where the
// user put it; a maximised main window still pushes it beside it.
InspectorPlacementStep PlaceInspectorBeside(const ScreenRect& main, bool mainMinimised, bool inspectorMaximised,
    std::int32_t width);

} // namespace tlm
