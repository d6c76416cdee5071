#pragma once

#include "settings/Theme.h"

namespace tlm {

// A colour as the drawing layer takes it: each channel from 0 to 1.
struct RgbaColor {
    float red = 0.0f;
    float green = 0.0f;
    float blue = 0.0f;
    float alpha = 1.0f;

    friend bool operator==(const RgbaColor&, const RgbaColor&) = default;
};

// The colours of one theme in the hex view. `accent` is a reserved role: no element of the view draws
// with it, but it stays in the record so that every theme keeps the same six entries.
struct ThemePalette {
    RgbaColor background;
    RgbaColor text;
    RgbaColor offsetText;
    RgbaColor accent;
    RgbaColor selection;
    RgbaColor caret;

    friend bool operator==(const ThemePalette&, const ThemePalette&) = default;
};

// The hex view's palette of a theme; a value outside the four gives Light's.
ThemePalette PaletteFor(Theme theme);

} // namespace tlm
