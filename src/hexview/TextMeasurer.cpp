#include "hexview/TextMeasurer.h"

#include <algorithm>
#include <memory>

namespace tlm {

TextMeasurer FixedTextMeasurer(float lineHeightAt16, float characterWidthAt16)
{
    // The size of the last format made; the layouts scale with it.
    auto fontSize = std::make_shared<float>(16.0f);
    TextMeasurer measurer;
    measurer.makeTextFormat = [fontSize](const HexViewFont&, float size) {
        *fontSize = size;
        return true;
    };
    measurer.lineHeights = [fontSize, lineHeightAt16](std::u16string_view text, float, float) {
        const auto lines = 1 + std::count(text.begin(), text.end(), u'\n');
        return std::optional<std::vector<float>>(std::vector<float>(static_cast<std::size_t>(lines),
            lineHeightAt16 * *fontSize / 16.0f));
    };
    measurer.width = [fontSize, characterWidthAt16](std::u16string_view text, float, float) {
        return std::optional<float>(characterWidthAt16 * *fontSize / 16.0f * static_cast<float>(text.size()));
    };
    return measurer;
}

} // namespace tlm
