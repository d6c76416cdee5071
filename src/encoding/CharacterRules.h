#pragma once

#include <string_view>

namespace tlm {

// Whether at least one unit of the text is no control: a text of controls only is no text to show.
bool HasNonControlUnit(std::u16string_view text);

// The marks that join the character before them in the UTF-8 and UTF-16 columns, beyond what the
// platform's classes call combining: the combining blocks, the variation selectors and the joiner.
bool IsInCombiningTable(char32_t codePoint);

// Whether any unit of the text is a non-spacing mark or a diacritic by the platform's classes.
bool HasCombiningUnit(std::u16string_view text);

} // namespace tlm
