#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tlm {

// The name shown for a blank or control character, such as "LF" or "NBSP"; nothing for the others.
std::optional<std::u16string_view> CodePointName(char32_t codePoint);

// The first code point of `text`; nothing for empty text or a surrogate without its partner.
std::optional<char32_t> FirstCodePoint(std::u16string_view text);

// The label shown for a text: the name of its first code point, or the text itself.
std::u16string CharacterLabel(std::u16string_view text);

// "label (U+XXXX U+XXXX)": the label, then each code point of the text. Empty text, or text that starts
// with a broken surrogate, is given back as it is; a broken surrogate later ends the list.
std::u16string FormatCodePointForm(std::u16string_view text);

} // namespace tlm
