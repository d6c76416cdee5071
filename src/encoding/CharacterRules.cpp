#include "encoding/CharacterRules.h"

#include "encoding/TextServices.h"

#include <algorithm>
#include <array>

namespace tlm {

namespace {

struct CodePointRange {
    char32_t first;
    char32_t last;
};

constexpr std::array<CodePointRange, 10> CombiningTable{{
    {0x0300, 0x036F},
    {0x0483, 0x0489},
    {0x1AB0, 0x1AFF},
    {0x1DC0, 0x1DFF},
    {0x200D, 0x200D},
    {0x20D0, 0x20FF},
    {0x3099, 0x309A},
    {0xFE00, 0xFE0F},
    {0xFE20, 0xFE2F},
    {0xE0100, 0xE01EF},
}};

} // namespace

bool HasNonControlUnit(std::u16string_view text)
{
    return std::any_of(text.begin(), text.end(), [](char16_t unit) { return !IsControl(unit); });
}

bool IsInCombiningTable(char32_t codePoint)
{
    return std::any_of(CombiningTable.begin(), CombiningTable.end(),
        [codePoint](const CodePointRange& range) { return codePoint >= range.first && codePoint <= range.last; });
}

bool HasCombiningUnit(std::u16string_view text)
{
    return std::any_of(text.begin(), text.end(), [](char16_t unit) { return IsCombining(unit); });
}

} // namespace tlm
