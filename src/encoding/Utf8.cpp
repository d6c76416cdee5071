#include "encoding/Utf8.h"

namespace tlm {

namespace {

bool IsContinuation(std::uint8_t byte)
{
    return (byte & 0xC0) == 0x80;
}

// Decodes the sequence at the start of `bytes`; the code point, or nothing when it is invalid.
struct CodePointAndLength {
    char32_t codePoint = 0;
    std::size_t length = 0;
};

std::optional<CodePointAndLength> DecodeSequence(std::span<const std::uint8_t> bytes)
{
    if (bytes.empty()) {
        return std::nullopt;
    }
    const std::uint8_t lead = bytes[0];
    std::size_t length = 0;
    char32_t codePoint = 0;
    char32_t smallest = 0;
    if (lead < 0x80) {
        return CodePointAndLength{lead, 1};
    } else if ((lead & 0xE0) == 0xC0) {
        length = 2;
        codePoint = lead & 0x1F;
        smallest = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3;
        codePoint = lead & 0x0F;
        smallest = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4;
        codePoint = lead & 0x07;
        smallest = 0x10000;
    } else {
        return std::nullopt;
    }
    if (bytes.size() < length) {
        return std::nullopt;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsContinuation(bytes[i])) {
            return std::nullopt;
        }
        codePoint = (codePoint << 6) | (bytes[i] & 0x3F);
    }
    const bool overlong = codePoint < smallest;
    const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (overlong || surrogate || codePoint > 0x10FFFF) {
        return std::nullopt;
    }
    return CodePointAndLength{codePoint, length};
}

void AppendUtf16(std::u16string& text, char32_t codePoint)
{
    if (codePoint < 0x10000) {
        text.push_back(static_cast<char16_t>(codePoint));
        return;
    }
    const char32_t offset = codePoint - 0x10000;
    text.push_back(static_cast<char16_t>(0xD800 + (offset >> 10)));
    text.push_back(static_cast<char16_t>(0xDC00 + (offset & 0x3FF)));
}

void AppendUtf8(std::string& bytes, char32_t codePoint)
{
    if (codePoint < 0x80) {
        bytes.push_back(static_cast<char>(codePoint));
    } else if (codePoint < 0x800) {
        bytes.push_back(static_cast<char>(0xC0 | (codePoint >> 6)));
        bytes.push_back(static_cast<char>(0x80 | (codePoint & 0x3F)));
    } else if (codePoint < 0x10000) {
        bytes.push_back(static_cast<char>(0xE0 | (codePoint >> 12)));
        bytes.push_back(static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F)));
        bytes.push_back(static_cast<char>(0x80 | (codePoint & 0x3F)));
    } else {
        bytes.push_back(static_cast<char>(0xF0 | (codePoint >> 18)));
        bytes.push_back(static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F)));
        bytes.push_back(static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F)));
        bytes.push_back(static_cast<char>(0x80 | (codePoint & 0x3F)));
    }
}

bool IsHighSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(char16_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

} // namespace

std::optional<std::u16string> Utf8ToUtf16(std::span<const std::uint8_t> bytes)
{
    std::u16string text;
    text.reserve(bytes.size());
    std::size_t position = 0;
    while (position < bytes.size()) {
        const auto sequence = DecodeSequence(bytes.subspan(position));
        if (!sequence) {
            return std::nullopt;
        }
        AppendUtf16(text, sequence->codePoint);
        position += sequence->length;
    }
    return text;
}

std::optional<std::u16string> Utf8ToUtf16(std::string_view bytes)
{
    return Utf8ToUtf16(std::span<const std::uint8_t>(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
}

std::string Utf16ToUtf8(std::u16string_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            AppendUtf8(bytes, 0x10000 + ((char32_t(unit) - 0xD800) << 10) + (char32_t(text[i + 1]) - 0xDC00));
            ++i;
        } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
            AppendUtf8(bytes, 0xFFFD);
        } else {
            AppendUtf8(bytes, unit);
        }
    }
    return bytes;
}

std::size_t Utf8SequenceLength(std::uint8_t lead)
{
    if (lead < 0x80) {
        return 1;
    }
    if ((lead & 0xE0) == 0xC0) {
        return 2;
    }
    if ((lead & 0xF0) == 0xE0) {
        return 3;
    }
    if ((lead & 0xF8) == 0xF0) {
        return 4;
    }
    return 0;
}

std::size_t ValidUtf8SequenceLength(std::span<const std::uint8_t> bytes)
{
    const auto sequence = DecodeSequence(bytes);
    return sequence ? sequence->length : 0;
}

} // namespace tlm
