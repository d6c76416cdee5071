#include "encoding/IsciiDecoder.h"

#include "encoding/CharacterRules.h"
#include "encoding/TextServices.h"

#include <algorithm>

namespace tlm {

namespace {

constexpr std::uint32_t IsciiDevanagariCodePage = 57002;
constexpr char16_t Virama = 0x094D;
constexpr char16_t ZeroWidthNonJoiner = 0x200C;
constexpr char16_t ZeroWidthJoiner = 0x200D;

// Signs that belong to the letter before them: candrabindu, anusvara, visarga, nukta, vowel signs,
// virama, stress and tone marks and the vocalic vowel signs.
bool IsDevanagariMark(char16_t unit)
{
    return (unit >= 0x0900 && unit <= 0x0903) || (unit >= 0x093A && unit <= 0x094D) || (unit >= 0x0951 && unit <= 0x0957)
        || unit == 0x0962 || unit == 0x0963;
}

bool IsDependentSign(char16_t unit)
{
    return IsDevanagariMark(unit) || IsCombining(unit);
}

// Consonants and independent vowels, which a virama joins to the syllable before them.
bool IsDevanagariLetter(char16_t unit)
{
    return (unit >= 0x0904 && unit <= 0x0939) || (unit >= 0x0958 && unit <= 0x0961) || (unit >= 0x0972 && unit <= 0x097F);
}

} // namespace

std::size_t DevanagariClusterLength(std::u16string_view units)
{
    if (units.empty() || IsDependentSign(units[0])) {
        return 0;
    }
    std::size_t index = 1;
    while (index < units.size()) {
        bool endsWithVirama = false;
        while (index < units.size() && IsDevanagariMark(units[index])) {
            endsWithVirama = units[index] == Virama;
            ++index;
        }
        if (!endsWithVirama || index == units.size()) {
            break;
        }
        if (units[index] == ZeroWidthNonJoiner || units[index] == ZeroWidthJoiner) {
            ++index;
            if (index == units.size()) {
                break;
            }
        }
        if (!IsDevanagariLetter(units[index])) {
            break;
        }
        ++index;
    }
    return index;
}

std::optional<DecodedCharacter> DecodeIsciiSyllable(std::span<const std::uint8_t> bytes)
{
    std::optional<DecodedCharacter> longest;
    const std::size_t longestTried = std::min(bytes.size(), IsciiLongestSyllable);
    // Every length is tried: a length that fails does not end the search for a longer one.
    for (std::size_t length = 1; length <= longestTried; ++length) {
        std::optional<std::u16string> text = MultiByteToUtf16(IsciiDevanagariCodePage, bytes.first(length), false);
        if (!text || text->empty() || !HasNonControlUnit(*text)) {
            continue;
        }
        if (DevanagariClusterLength(*text) != text->size()) {
            continue;
        }
        longest = DecodedCharacter{std::move(*text), length};
    }
    return longest;
}

std::vector<std::u16string> DecodeIsciiRow(const RowDecodeBuffer& buffer)
{
    std::vector<std::u16string> cells(buffer.RowSize());
    std::size_t position = 0;
    while (position < buffer.rowEnd) {
        std::optional<DecodedCharacter> decoded = DecodeIsciiSyllable(buffer.From(position));
        if (buffer.InRow(position)) {
            cells[buffer.CellOf(position)] = decoded ? std::move(decoded->text) : std::u16string(FillerText);
        }
        position += decoded ? decoded->consumed : 1;
    }
    return cells;
}

} // namespace tlm
