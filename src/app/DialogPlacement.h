#pragma once

#include "app/WindowPlacement.h"

#include <cstdint>

namespace tlm {

// A control's or a dialog's rectangle in plain pixels.
struct DialogRect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;

    friend bool operator==(const DialogRect&, const DialogRect&) = default;
};

// A dialog of `width` by `height` centred on its owner's window rectangle. A margin below zero
// becomes zero, so a dialog larger than its owner sits at the owner's top left.
DialogRect CentreOnOwner(const ScreenRect& owner, std::int32_t width, std::int32_t height);

} // namespace tlm
