#include "encoding/Utf16RowDecoder.h"

#include "encoding/CharacterRules.h"
#include "encoding/RowDecodeBuffer.h"

namespace tlm {

namespace {

// Controls, both surrogate halves (never joined here) and the noncharacters U+FFFE and U+FFFF are no text.
bool IsShownUnit(char16_t unit)
{
    return (unit >= 0x20 && unit <= 0x7E) || (unit >= 0x80 && unit <= 0xD7FF) || (unit >= 0xE000 && unit <= 0xFFFD);
}

// A mark is not merged with its base in this column, so it is shown as no text at all.
bool IsMarkUnit(char16_t unit)
{
    return unit == 0x200D || IsInCombiningTable(unit);
}

} // namespace

std::vector<std::u16string> DecodeUtf16Row(std::span<const std::uint8_t> rowBytes, bool bigEndian)
{
    std::vector<std::u16string> cells(rowBytes.size());
    for (std::size_t i = 0; i < rowBytes.size(); i += 2) {
        if (i + 1 >= rowBytes.size()) {
            cells[i] = std::u16string(FillerText);
            break;
        }
        const std::uint8_t first = rowBytes[i];
        const std::uint8_t second = rowBytes[i + 1];
        const auto unit = static_cast<char16_t>(bigEndian ? (first << 8) | second : (second << 8) | first);
        if (IsShownUnit(unit) && !IsMarkUnit(unit)) {
            cells[i] = std::u16string(1, unit);
        } else {
            cells[i] = std::u16string(FillerText);
        }
    }
    return cells;
}

} // namespace tlm
