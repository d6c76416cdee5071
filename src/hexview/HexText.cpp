#include "hexview/HexText.h"

namespace tlm {

char16_t UpperHexDigit(std::uint8_t value)
{
    return static_cast<char16_t>(value < 10 ? u'0' + value : u'A' + (value - 10));
}

std::optional<std::uint8_t> HexDigitValue(char16_t character)
{
    if (character >= u'0' && character <= u'9') {
        return static_cast<std::uint8_t>(character - u'0');
    }
    if (character >= u'a' && character <= u'f') {
        return static_cast<std::uint8_t>(character - u'a' + 10);
    }
    if (character >= u'A' && character <= u'F') {
        return static_cast<std::uint8_t>(character - u'A' + 10);
    }
    return std::nullopt;
}

std::u16string FormatHexByte(std::uint8_t byte)
{
    return {UpperHexDigit(static_cast<std::uint8_t>(byte >> 4)), UpperHexDigit(static_cast<std::uint8_t>(byte & 0xF))};
}

std::u16string FormatBytesAsHex(std::span<const std::uint8_t> bytes)
{
    std::u16string text;
    if (bytes.empty()) {
        return text;
    }
    text.reserve(bytes.size() * 3 - 1);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i != 0) {
            text.push_back(u' ');
        }
        text.push_back(UpperHexDigit(static_cast<std::uint8_t>(bytes[i] >> 4)));
        text.push_back(UpperHexDigit(static_cast<std::uint8_t>(bytes[i] & 0xF)));
    }
    return text;
}

std::u16string FormatRowOffset(std::uint64_t rowOffset, bool wide)
{
    const int digits = wide ? 16 : 8;
    std::u16string text(static_cast<std::size_t>(digits), u'0');
    for (int i = digits - 1; i >= 0; --i) {
        text[static_cast<std::size_t>(i)] = UpperHexDigit(static_cast<std::uint8_t>(rowOffset & 0xF));
        rowOffset >>= 4;
    }
    text.push_back(u':');
    return text;
}

} // namespace tlm
