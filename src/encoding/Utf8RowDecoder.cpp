#include "encoding/Utf8RowDecoder.h"

#include "encoding/CharacterRules.h"
#include "encoding/Utf8.h"

#include <algorithm>
#include <optional>

namespace tlm {

namespace {

// The text of the well-formed sequence at the start of `bytes`, or nothing when it is invalid.
std::optional<std::u16string> DecodeSequence(std::span<const std::uint8_t> bytes, std::size_t& length)
{
    length = Utf8SequenceLength(bytes[0]);
    if (length == 0 || length > bytes.size()) {
        return std::nullopt;
    }
    const auto continuation = bytes.subspan(1, length - 1);
    if (!std::all_of(continuation.begin(), continuation.end(), [](std::uint8_t b) { return (b & 0xC0) == 0x80; })) {
        return std::nullopt;
    }
    // The strict conversion refuses overlong forms, surrogates and values above U+10FFFF.
    std::optional<std::u16string> text = Utf8ToUtf16(bytes.first(length));
    if (!text || text->empty()) {
        return std::nullopt;
    }
    return text;
}

// Only C0 controls and DEL: C1 controls pass as text in this column.
bool IsControlsOnly(std::u16string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x20 || unit == 0x7F; });
}

char32_t FirstCodePoint(std::u16string_view text)
{
    const char16_t high = text[0];
    if (high >= 0xD800 && high <= 0xDBFF && text.size() > 1 && text[1] >= 0xDC00 && text[1] <= 0xDFFF) {
        return 0x10000 + ((static_cast<char32_t>(high) - 0xD800) << 10) + (text[1] - 0xDC00);
    }
    return high;
}

bool IsCombiningCharacter(std::u16string_view text)
{
    const char32_t codePoint = FirstCodePoint(text);
    const std::size_t units = codePoint >= 0x10000 ? 2 : 1;
    return IsInCombiningTable(codePoint) || HasCombiningUnit(text.substr(0, units));
}

} // namespace

std::vector<std::u16string> DecodeUtf8Row(const RowDecodeBuffer& buffer)
{
    std::vector<std::u16string> cells(buffer.RowSize());
    bool haveBase = false;
    std::size_t baseCell = 0;
    std::size_t position = 0;
    // Positions behind the row never write, so the walk ends with the row.
    while (position < buffer.rowEnd) {
        const bool inRow = buffer.InRow(position);
        std::size_t length = 0;
        const std::optional<std::u16string> text = DecodeSequence(buffer.From(position), length);
        if (!text) {
            if (inRow) {
                cells[buffer.CellOf(position)] = std::u16string(FillerText);
            }
            position += 1;
            continue;
        }
        if (IsControlsOnly(*text)) {
            if (inRow) {
                cells[buffer.CellOf(position)] = std::u16string(FillerText);
            }
            position += length;
            continue;
        }
        const bool combining = IsCombiningCharacter(*text);
        if (!inRow) {
            if (!combining) {
                haveBase = false;
            }
        } else if (combining && haveBase) {
            cells[baseCell] += *text;
        } else {
            baseCell = buffer.CellOf(position);
            cells[baseCell] = *text;
            haveBase = true;
        }
        position += length;
    }
    return cells;
}

} // namespace tlm
