#pragma once

#include "hexview/HexViewMetrics.h"

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace tlm {

// What the metrics need of a text engine. On Windows these are DirectWrite text formats and layouts;
// a headless build gives fixed numbers. Any of them may fail, and an empty function counts as failing.
struct TextMeasurer {
    // Drops the current text format and makes one for the font at `fontSize`; false when none can be had.
    std::function<bool(const HexViewFont& font, float fontSize)> makeTextFormat;
    // The height of each line of `text` laid out in a box of the given size; nothing when the layout or
    // its line metrics fail.
    std::function<std::optional<std::vector<float>>(std::u16string_view text, float maxWidth, float maxHeight)>
        lineHeights;
    // The width of `text` laid out alone, trailing white space included; nothing when the layout fails.
    std::function<std::optional<float>(std::u16string_view text, float maxWidth, float maxHeight)> width;
};

// A measurer that answers with fixed numbers: every line is `lineHeight` high and every character
// `characterWidth` wide, scaled with the font size against a 16-pixel base.
TextMeasurer FixedTextMeasurer(float lineHeightAt16, float characterWidthAt16);

} // namespace tlm
