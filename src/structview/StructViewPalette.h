#pragma once

#include "settings/Theme.h"

#include <cstdint>

namespace tlm {

// The struct view's own colours, as 0xBBGGRR numbers.
struct StructViewPalette {
    std::uint32_t text = 0;
    std::uint32_t band = 0;
    std::uint32_t border = 0;
    std::uint32_t selection = 0;
    std::uint32_t background = 0;

    friend bool operator==(const StructViewPalette&, const StructViewPalette&) = default;
};

// The palette of a theme; a number outside the four themes takes the light one.
StructViewPalette StructViewPaletteFor(Theme theme);

// The muted colour of the definition line: 72 parts text and 28 parts border, channel by channel.
std::uint32_t StructViewDefinitionColour(const StructViewPalette& palette);

} // namespace tlm
