#include "inspector/CodePointForm.h"

#include <array>
#include <utility>

namespace tlm {

namespace {

constexpr std::array<std::pair<char32_t, std::u16string_view>, 9> Names{{
    {0x0009, u"TAB"},
    {0x000A, u"LF"},
    {0x000B, u"VT"},
    {0x000C, u"FF"},
    {0x000D, u"CR"},
    {0x0020, u"Space"},
    {0x0085, u"NEL"},
    {0x00A0, u"NBSP"},
    {0x3000, u"Ideographic Space"},
}};

bool IsHighSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(char16_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// The code point at `index` and how many units it takes; nothing for a broken surrogate.
std::optional<std::pair<char32_t, std::size_t>> CodePointAt(std::u16string_view text, std::size_t index)
{
    const char16_t unit = text[index];
    if (IsHighSurrogate(unit)) {
        if (index + 1 < text.size() && IsLowSurrogate(text[index + 1])) {
            const char32_t codePoint = 0x10000 + ((static_cast<char32_t>(unit) - 0xD800) << 10)
                + (static_cast<char32_t>(text[index + 1]) - 0xDC00);
            return std::pair{codePoint, std::size_t{2}};
        }
        return std::nullopt;
    }
    if (IsLowSurrogate(unit)) {
        return std::nullopt;
    }
    return std::pair{static_cast<char32_t>(unit), std::size_t{1}};
}

void AppendUpperHex(std::u16string& out, char32_t value, int minimumDigits)
{
    std::u16string digits;
    do {
        const auto nibble = static_cast<unsigned>(value & 0xF);
        digits.insert(digits.begin(), static_cast<char16_t>(nibble < 10 ? u'0' + nibble : u'A' + (nibble - 10)));
        value >>= 4;
    } while (value != 0);
    while (digits.size() < static_cast<std::size_t>(minimumDigits)) {
        digits.insert(digits.begin(), u'0');
    }
    out += digits;
}

} // namespace

std::optional<std::u16string_view> CodePointName(char32_t codePoint)
{
    for (const auto& [named, name] : Names) {
        if (named == codePoint) {
            return name;
        }
    }
    return std::nullopt;
}

std::optional<char32_t> FirstCodePoint(std::u16string_view text)
{
    if (text.empty()) {
        return std::nullopt;
    }
    if (const auto first = CodePointAt(text, 0)) {
        return first->first;
    }
    return std::nullopt;
}

std::u16string CharacterLabel(std::u16string_view text)
{
    if (const std::optional<char32_t> first = FirstCodePoint(text)) {
        if (const std::optional<std::u16string_view> name = CodePointName(*first)) {
            return std::u16string(*name);
        }
    }
    return std::u16string(text);
}

std::u16string FormatCodePointForm(std::u16string_view text)
{
    if (!FirstCodePoint(text)) {
        return std::u16string(text);
    }
    std::u16string result = CharacterLabel(text);
    result += u" (";
    std::size_t index = 0;
    bool first = true;
    while (index < text.size()) {
        const auto codePoint = CodePointAt(text, index);
        if (!codePoint) {
            break;
        }
        result += first ? u"U+" : u" U+";
        AppendUpperHex(result, codePoint->first, 4);
        index += codePoint->second;
        first = false;
    }
    result += u")";
    return result;
}

} // namespace tlm
