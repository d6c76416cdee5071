#include "encoding/TextServices.h"

#include "encoding/CharacterClassTable.h"
#include "encoding/CodePageTable.h"
#include "encoding/IsciiDevanagari.h"
#include "encoding/Utf8.h"

#include <algorithm>

namespace tlm {

namespace {

constexpr std::uint32_t IsciiDevanagariCodePage = 57002;
constexpr std::uint32_t Utf8CodePage = 65001;
constexpr char16_t ReplacementCharacter = 0xFFFD;

bool IsPrivateUse(char16_t unit)
{
    return unit >= 0xE000 && unit <= 0xF8FF;
}

bool IsSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit <= 0xDFFF;
}

// A single byte is invalid when it has no character (it reads as the default character without being
// its bytes) or when it reads as a private-use character. Pairs in the private-use area are valid: they
// are the user-defined characters of the double-byte pages.
bool IsInvalidSingle(const CodePageTable& table, std::uint8_t byte, char16_t unit)
{
    return (unit == table.defaultUnicode && byte != table.Encode(table.defaultUnicode)) || IsPrivateUse(unit);
}

bool IsInvalidPair(const CodePageTable& table, std::uint8_t lead, std::uint8_t trail, char16_t unit)
{
    const auto value = static_cast<std::uint16_t>((lead << 8) | trail);
    return unit == table.defaultUnicode && value != table.Encode(table.defaultUnicode);
}

std::optional<std::u16string> DecodeWithTable(const CodePageTable& table, std::span<const std::uint8_t> bytes, bool strict)
{
    std::u16string text;
    text.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::uint8_t byte = bytes[i];
        if (!table.IsLeadByte(byte)) {
            const char16_t unit = table.DecodeSingle(byte);
            if (strict && IsInvalidSingle(table, byte, unit)) {
                return std::nullopt;
            }
            text.push_back(unit);
        } else if (i + 1 == bytes.size() || bytes[i + 1] == 0) {
            // A lead byte cut off by the end of the input, or by a NUL, which always stays itself.
            if (strict) {
                return std::nullopt;
            }
            text.push_back(table.defaultUnicode);
        } else {
            // Any other byte after a lead byte belongs to it, even when the pair means nothing.
            const std::uint8_t trail = bytes[++i];
            const char16_t unit = table.DecodePair(byte, trail);
            if (strict && IsInvalidPair(table, byte, trail, unit)) {
                return std::nullopt;
            }
            text.push_back(unit);
        }
    }
    return text;
}

MultiByteText EncodeWithTable(const CodePageTable& table, std::u16string_view text, bool exactOnly)
{
    MultiByteText result;
    result.bytes.reserve(text.size() * 2);
    for (const char16_t unit : text) {
        std::uint16_t value = table.Encode(unit);
        const bool roundTrip = table.DecodeValue(value) == unit;
        // A best fit is a one-way mapping; without one the table already holds the default byte.
        if (!roundTrip && (exactOnly || value == table.defaultByte)) {
            value = table.defaultByte;
            result.usedDefaultChar = true;
        }
        if (value > 0xFF) {
            result.bytes.push_back(static_cast<std::uint8_t>(value >> 8));
        }
        result.bytes.push_back(static_cast<std::uint8_t>(value & 0xFF));
    }
    return result;
}

// Range of the second byte after a lead byte; later continuation bytes are 0x80 to 0xBF.
struct SecondByteRange {
    std::uint8_t low = 0x80;
    std::uint8_t high = 0xBF;
};

SecondByteRange SecondByteRangeAfter(std::uint8_t lead)
{
    switch (lead) {
    case 0xE0: return {0xA0, 0xBF}; // no overlong three-byte form
    case 0xED: return {0x80, 0x9F}; // no surrogate
    case 0xF0: return {0x90, 0xBF}; // no overlong four-byte form
    case 0xF4: return {0x80, 0x8F}; // nothing above U+10FFFF
    default: return {};
    }
}

// Length of the sequence a lead byte starts; 1 for a byte that starts none.
std::size_t SequenceLengthAfter(std::uint8_t lead)
{
    if (lead >= 0xC2 && lead <= 0xDF) {
        return 2;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        return 3;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        return 4;
    }
    return 1;
}

// Bytes of the longest start of a valid sequence at the front of `bytes` (at least 1): an ill-formed
// sequence becomes one replacement character for that start, as Unicode recommends.
std::size_t IllFormedLength(std::span<const std::uint8_t> bytes)
{
    const std::uint8_t lead = bytes[0];
    const std::size_t length = SequenceLengthAfter(lead);
    std::size_t taken = 1;
    while (taken < length && taken < bytes.size()) {
        const SecondByteRange range = taken == 1 ? SecondByteRangeAfter(lead) : SecondByteRange{};
        if (bytes[taken] < range.low || bytes[taken] > range.high) {
            break;
        }
        ++taken;
    }
    return taken;
}

std::u16string DecodeUtf8Leniently(std::span<const std::uint8_t> bytes)
{
    std::u16string text;
    std::size_t i = 0;
    while (i < bytes.size()) {
        const std::span<const std::uint8_t> rest = bytes.subspan(i);
        const std::size_t length = ValidUtf8SequenceLength(rest);
        if (length == 0) {
            text.push_back(ReplacementCharacter);
            i += IllFormedLength(rest);
            continue;
        }
        text += *Utf8ToUtf16(rest.first(length));
        i += length;
    }
    return text;
}

bool HasLoneSurrogate(std::u16string_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (!IsSurrogate(unit)) {
            continue;
        }
        const bool high = unit <= 0xDBFF;
        if (high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            ++i;
            continue;
        }
        return true;
    }
    return false;
}

MultiByteText EncodeUtf8(std::u16string_view text)
{
    const std::string utf8 = Utf16ToUtf8(text);
    MultiByteText result;
    result.bytes.assign(utf8.begin(), utf8.end());
    // A lone surrogate has no UTF-8 form and came out as U+FFFD.
    result.usedDefaultChar = HasLoneSurrogate(text);
    return result;
}

// Statistics and control tests over little-endian UTF-16 units.
constexpr std::size_t MaxUnitsExamined = 256;

bool IsTextControl(char16_t unit)
{
    return unit == 0x000D || unit == 0x000A || unit == 0x0009 || unit == 0x0020 || unit == 0x3000;
}

} // namespace

std::optional<std::u16string> MultiByteToUtf16(std::uint32_t codePage, std::span<const std::uint8_t> bytes, bool strict)
{
    if (codePage == Utf8CodePage) {
        return strict ? Utf8ToUtf16(bytes) : std::optional<std::u16string>(DecodeUtf8Leniently(bytes));
    }
    if (codePage == IsciiDevanagariCodePage) {
        // The page knows a single mode: bytes without a character fail with or without `strict`.
        return DecodeIsciiDevanagari(bytes);
    }
    const CodePageTable* table = FindCodePageTable(codePage);
    if (table == nullptr) {
        return std::nullopt;
    }
    return DecodeWithTable(*table, bytes, strict);
}

std::optional<MultiByteText> Utf16ToMultiByte(std::uint32_t codePage, std::u16string_view text, bool exactOnly)
{
    if (text.empty()) {
        return std::nullopt;
    }
    if (codePage == Utf8CodePage) {
        return EncodeUtf8(text);
    }
    if (codePage == IsciiDevanagariCodePage) {
        return EncodeIsciiDevanagari(text);
    }
    const CodePageTable* table = FindCodePageTable(codePage);
    if (table == nullptr) {
        return std::nullopt;
    }
    return EncodeWithTable(*table, text, exactOnly);
}

bool IsControl(char16_t unit)
{
    return (CharacterClassOf(unit) & ControlClass) != 0;
}

bool IsCombining(char16_t unit)
{
    return (CharacterClassOf(unit) & CombiningClass) != 0;
}

bool LooksLikeUtf16Text(std::span<const std::uint8_t> bytes)
{
    std::size_t size = bytes.size();
    if (size % 2 == 1) {
        // A trailing zero byte may end the text; any other odd byte means these are no UTF-16 units.
        if (bytes[size - 1] != 0) {
            return false;
        }
        --size;
    }
    if (size < 2) {
        return false;
    }
    const std::size_t units = std::min(size / 2, MaxUnitsExamined);
    std::size_t narrow = 0;
    bool hasTextControl = false;
    for (std::size_t i = 0; i < units; ++i) {
        const auto unit = static_cast<char16_t>(bytes[2 * i] | (bytes[2 * i + 1] << 8));
        narrow += unit <= 0x00FF ? 1 : 0;
        hasTextControl = hasTextControl || IsTextControl(unit);
    }
    const bool statistics = narrow * 2 > units;
    return statistics || hasTextControl;
}

bool IsShiftJisLeadByte(std::uint8_t byte)
{
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

} // namespace tlm
