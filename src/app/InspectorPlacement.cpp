#include "app/InspectorPlacement.h"

namespace tlm {

InspectorPlacementStep PlaceInspectorBeside(const ScreenRect& main, bool mainMinimised, bool inspectorMaximised,
    std::int32_t width)
{
    InspectorPlacementStep step;
    if (mainMinimised) {
        return step; // hidden until the main window is back
    }
    if (!inspectorMaximised) {
        step.move = WindowPlacement{main.right + 1, main.top, width, main.bottom - main.top};
    }
    step.show = true;
    return step;
}

} // namespace tlm
