#include "inspector/InspectorRows.h"

#include "encoding/RowTextDecoder.h"
#include "encoding/TextServices.h"
#include "encoding/Utf8.h"
#include "inspector/CodePointForm.h"
#include "inspector/InspectorCombiningMarks.h"

#include <algorithm>
#include <optional>
#include <span>

namespace tlm {

namespace {

using ByteSpan = std::span<const std::uint8_t>;

constexpr std::size_t Utf16SampleSize = 32;
constexpr char32_t ZeroWidthJoiner = 0x200D;

char16_t HexDigit(unsigned value)
{
    return static_cast<char16_t>(value < 10 ? u'0' + value : u'A' + (value - 10));
}

std::u16string Decimal(std::uint64_t value)
{
    std::u16string digits;
    do {
        digits.insert(digits.begin(), static_cast<char16_t>(u'0' + value % 10));
        value /= 10;
    } while (value != 0);
    return digits;
}

std::u16string PaddedHex(std::uint64_t value, int digits)
{
    std::u16string text(static_cast<std::size_t>(digits), u'0');
    for (int i = digits - 1; i >= 0; --i) {
        text[static_cast<std::size_t>(i)] = HexDigit(static_cast<unsigned>(value & 0xF));
        value >>= 4;
    }
    return text;
}

// "255 / 0xFF": the decimal value, then the hexadecimal padded to the width of the integer.
std::u16string NumberForm(std::uint64_t value, std::size_t byteCount)
{
    return Decimal(value) + u" / 0x" + PaddedHex(value, static_cast<int>(byteCount * 2));
}

std::u16string BinaryForm(std::uint8_t byte)
{
    std::u16string text = u"0b";
    for (int bit = 7; bit >= 0; --bit) {
        text.push_back((byte >> bit) & 1 ? u'1' : u'0');
        if (bit == 4) {
            text.push_back(u'_');
        }
    }
    return text;
}

std::optional<std::uint64_t> ReadUnsigned(ByteSpan bytes, std::size_t byteCount, bool bigEndian)
{
    if (bytes.size() < byteCount) {
        return std::nullopt;
    }
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < byteCount; ++i) {
        const std::uint8_t byte = bytes[bigEndian ? i : byteCount - 1 - i];
        value = (value << 8) | byte;
    }
    return value;
}

struct Utf8Character {
    char32_t codePoint = 0;
    std::size_t length = 0;
};

// One character at `position`. A NUL, a stray continuation byte, a sequence cut off by the end of the
// snapshot and anything the strict converter refuses (overlong forms, surrogates) give nothing.
std::optional<Utf8Character> DecodeUtf8At(ByteSpan bytes, std::size_t position)
{
    if (position >= bytes.size() || bytes[position] == 0) {
        return std::nullopt;
    }
    const std::size_t length = Utf8SequenceLength(bytes[position]);
    if (length == 0 || length > bytes.size() - position) {
        return std::nullopt;
    }
    for (std::size_t i = 1; i < length; ++i) {
        const std::uint8_t next = bytes[position + i];
        if (next == 0 || (next & 0xC0) != 0x80) {
            return std::nullopt;
        }
    }
    const std::optional<std::u16string> text = Utf8ToUtf16(bytes.subspan(position, length));
    if (!text) {
        return std::nullopt;
    }
    const std::optional<char32_t> codePoint = FirstCodePoint(*text);
    if (!codePoint) {
        return std::nullopt;
    }
    return Utf8Character{*codePoint, length};
}

// The first user-perceived character: marks, and whatever follows a joiner, stay with it.
std::optional<std::u16string> Utf8Row(ByteSpan bytes)
{
    std::optional<Utf8Character> previous = DecodeUtf8At(bytes, 0);
    if (!previous) {
        return std::nullopt;
    }
    std::size_t end = previous->length;
    while (const std::optional<Utf8Character> next = DecodeUtf8At(bytes, end)) {
        if (!IsInspectorCombiningMark(next->codePoint) && previous->codePoint != ZeroWidthJoiner) {
            break;
        }
        end += next->length;
        previous = next;
    }
    const std::optional<std::u16string> text = Utf8ToUtf16(bytes.first(end));
    if (!text || text->empty()) {
        return std::nullopt;
    }
    return FormatCodePointForm(*text);
}

char16_t ReadUnit(ByteSpan bytes, std::size_t index, bool bigEndian)
{
    const std::uint8_t first = bytes[index];
    const std::uint8_t second = bytes[index + 1];
    return static_cast<char16_t>(bigEndian ? (first << 8) | second : (second << 8) | first);
}

// Shown only when the start of the snapshot looks like UTF-16 text in this byte order.
std::optional<std::u16string> Utf16Row(ByteSpan bytes, bool bigEndian)
{
    if (bytes.size() < 2) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> sample(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(std::min(bytes.size(), Utf16SampleSize)));
    if (bigEndian) {
        for (std::size_t i = 0; i + 1 < sample.size(); i += 2) {
            std::swap(sample[i], sample[i + 1]);
        }
    }
    if (!LooksLikeUtf16Text(sample)) {
        return std::nullopt;
    }
    const char16_t unit = ReadUnit(bytes, 0, bigEndian);
    if (unit == 0) {
        return std::nullopt;
    }
    if (unit >= 0xDC00 && unit <= 0xDFFF) {
        return std::nullopt;
    }
    if (unit >= 0xD800 && unit <= 0xDBFF) {
        if (bytes.size() < 4) {
            return std::nullopt;
        }
        const char16_t low = ReadUnit(bytes, 2, bigEndian);
        if (low < 0xDC00 || low > 0xDFFF) {
            return std::nullopt;
        }
        return FormatCodePointForm(std::u16string{unit, low});
    }
    return FormatCodePointForm(std::u16string(1, unit));
}

// The character in the chosen encoding with the bytes it took: "Space (20)".
std::optional<std::u16string> CurrentEncodingRow(ByteSpan bytes, TextEncoding encoding)
{
    const std::optional<DecodedCharacter> decoded = DecodeCharacterAt(encoding, bytes);
    if (!decoded) {
        return std::nullopt;
    }
    std::u16string text = CharacterLabel(decoded->text) + u" (";
    const std::size_t consumed = std::min(decoded->consumed, bytes.size());
    for (std::size_t i = 0; i < consumed; ++i) {
        text.push_back(HexDigit(bytes[i] >> 4));
        text.push_back(HexDigit(bytes[i] & 0xF));
    }
    text += u")";
    return text;
}

} // namespace

std::vector<std::u16string> BuildInspectorRows(const InspectorRequest& request, const std::u16string& unavailableText)
{
    const ByteSpan bytes(request.bytes);
    const auto orUnavailable = [&unavailableText](const std::optional<std::u16string>& value) {
        return value ? *value : unavailableText;
    };
    const auto number = [&](std::size_t byteCount, bool bigEndian) -> std::optional<std::u16string> {
        if (const std::optional<std::uint64_t> value = ReadUnsigned(bytes, byteCount, bigEndian)) {
            return NumberForm(*value, byteCount);
        }
        return std::nullopt;
    };

    std::vector<std::u16string> rows;
    rows.reserve(InspectorRowCount);
    rows.push_back(bytes.empty() ? unavailableText : BinaryForm(bytes[0]));
    rows.push_back(orUnavailable(number(1, false)));
    rows.push_back(orUnavailable(number(2, false)));
    rows.push_back(orUnavailable(number(2, true)));
    rows.push_back(orUnavailable(number(4, false)));
    rows.push_back(orUnavailable(number(4, true)));
    rows.push_back(orUnavailable(number(8, false)));
    rows.push_back(orUnavailable(number(8, true)));
    rows.push_back(orUnavailable(Utf8Row(bytes)));
    rows.push_back(orUnavailable(Utf16Row(bytes, false)));
    rows.push_back(orUnavailable(Utf16Row(bytes, true)));
    rows.push_back(bytes.empty() ? unavailableText : orUnavailable(CurrentEncodingRow(bytes, request.encoding)));
    return rows;
}

} // namespace tlm
