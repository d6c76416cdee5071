#include "inspector/InspectorCombiningMarks.h"

#include <algorithm>
#include <array>

namespace tlm {

namespace {

struct CodePointRange {
    char32_t first;
    char32_t last;
};

// Sorted, both ends included. The gaps leave out the letters and signs that stand between the marks.
constexpr std::array<CodePointRange, 43> CombiningRanges{{
    {0x0300, 0x036F},
    {0x0483, 0x0489},
    {0x0591, 0x05BD},
    {0x05BF, 0x05BF},
    {0x05C1, 0x05C2},
    {0x05C4, 0x05C5},
    {0x05C7, 0x05C7},
    {0x0610, 0x061A},
    {0x064B, 0x065F},
    {0x0670, 0x0670},
    {0x06D6, 0x06DC},
    {0x06DF, 0x06E4},
    {0x06E7, 0x06E8},
    {0x06EA, 0x06ED},
    {0x0900, 0x0903},
    {0x093A, 0x094F},
    {0x0951, 0x0957},
    {0x0962, 0x0963},
    {0x0981, 0x0983},
    {0x09BE, 0x09CD},
    {0x09D7, 0x09D7},
    {0x0A01, 0x0A03},
    {0x0A3E, 0x0A4D},
    {0x0ABE, 0x0ACD},
    {0x0B01, 0x0B03},
    {0x0B3E, 0x0B4D},
    {0x0B57, 0x0B57},
    {0x0BBE, 0x0BCD},
    {0x0C00, 0x0C04},
    {0x0C3E, 0x0C56},
    {0x0D00, 0x0D03},
    {0x0D3B, 0x0D4E},
    {0x0E31, 0x0E4E},
    {0x0EB1, 0x0ECD},
    {0x1AB0, 0x1AFF},
    {0x1DC0, 0x1DFF},
    {0x200D, 0x200D},
    {0x20D0, 0x20FF},
    {0x3099, 0x309A},
    {0xFE00, 0xFE0F},
    {0xFE20, 0xFE2F},
    {0x1F3FB, 0x1F3FF},
    {0xE0100, 0xE01EF},
}};

static_assert(std::is_sorted(CombiningRanges.begin(), CombiningRanges.end(),
    [](const CodePointRange& a, const CodePointRange& b) { return a.last < b.first; }));

} // namespace

bool IsInspectorCombiningMark(char32_t codePoint)
{
    const auto range = std::lower_bound(CombiningRanges.begin(), CombiningRanges.end(), codePoint,
        [](const CodePointRange& r, char32_t value) { return r.last < value; });
    return range != CombiningRanges.end() && range->first <= codePoint;
}

} // namespace tlm
