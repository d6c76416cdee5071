#include "app/QueryText.h"

#include "hexview/HexText.h"

#include <array>

namespace tlm {

namespace {

bool IsTrimmed(char16_t character)
{
    return character == u' ' || character == u'\t' || character == u'\r' || character == u'\n';
}

// The characters the Windows runtime's iswspace counts as space: the C locale's six and the
// Unicode spaces, so a query pasted with a no-break or an ideographic space still parses.
bool IsSpace(char16_t character)
{
    if ((character >= 0x09 && character <= 0x0D) || character == 0x20) {
        return true;
    }
    constexpr std::array<char16_t, 8> others{0x85, 0xA0, 0x1680, 0x2028, 0x2029, 0x202F, 0x205F, 0x3000};
    for (const char16_t other : others) {
        if (character == other) {
            return true;
        }
    }
    return character >= 0x2000 && character <= 0x200A;
}

} // namespace

std::u16string_view TrimQuery(std::u16string_view text)
{
    while (!text.empty() && IsTrimmed(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsTrimmed(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::optional<std::vector<std::uint8_t>> ParseHexQuery(std::u16string_view text)
{
    std::u16string digits;
    for (const char16_t character : text) {
        if (!IsSpace(character)) {
            digits.push_back(character);
        }
    }
    if (digits.empty() || digits.size() % 2 != 0) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> bytes;
    bytes.reserve(digits.size() / 2);
    for (std::size_t index = 0; index < digits.size(); index += 2) {
        const std::optional<std::uint8_t> high = HexDigitValue(digits[index]);
        const std::optional<std::uint8_t> low = HexDigitValue(digits[index + 1]);
        if (!high || !low) {
            return std::nullopt;
        }
        bytes.push_back(static_cast<std::uint8_t>(*high << 4 | *low));
    }
    return bytes;
}

std::optional<std::uint64_t> ParseGoToOffset(std::u16string_view text)
{
    text = TrimQuery(text);
    if (text.empty()) {
        return std::nullopt;
    }
    if (text.size() >= 2 && text[0] == u'0' && (text[1] == u'x' || text[1] == u'X')) {
        text.remove_prefix(2);
    }
    if (text.empty()) {
        return std::nullopt;
    }
    std::uint64_t value = 0;
    for (const char16_t character : text) {
        const std::optional<std::uint8_t> digit = HexDigitValue(character);
        if (!digit || value > (UINT64_MAX >> 4)) {
            return std::nullopt;
        }
        value = value << 4 | *digit;
    }
    return value;
}

std::u16string FormatGoToOffset(std::uint64_t offset)
{
    constexpr char16_t Digits[] = u"0123456789ABCDEF";
    std::u16string text;
    do {
        text.insert(text.begin(), Digits[offset & 0xF]);
        offset >>= 4;
    } while (offset != 0);
    return text;
}

std::uint32_t TextQueryLimit(TextEncoding encoding)
{
    const auto value = static_cast<std::uint32_t>(encoding);
    return value >= 2 && value <= 8 ? 2048 : 4096;
}

} // namespace tlm
