#include "hexview/HexViewMetrics.h"

#include "hexview/TextMeasurer.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace tlm {

namespace {

constexpr float MinimumRowHeight = 17.0f;
constexpr float MeasuredCellFloor = 1.0f;

// Four lines of "0": the mean line height includes the leading the font puts between lines.
constexpr std::u16string_view LineSample = u"0\r\n0\r\n0\r\n0";
constexpr float LineSampleBox = 4096.0f;
constexpr float CharacterBox = 256.0f;

constexpr std::u16string_view HexMeasureCharacters = u"0123456789ABCDEF:";

bool IsUsableLength(float value)
{
    return std::isfinite(value) && value >= 0.0f;
}

std::optional<float> MeanLineHeight(const TextMeasurer& measurer)
{
    if (!measurer.lineHeights) {
        return std::nullopt;
    }
    const std::optional<std::vector<float>> heights = measurer.lineHeights(LineSample, LineSampleBox, LineSampleBox);
    if (!heights || heights->empty()) {
        return std::nullopt;
    }
    double sum = 0.0;
    for (float height : *heights) {
        if (!IsUsableLength(height)) {
            return std::nullopt;
        }
        sum += height;
    }
    return static_cast<float>(sum / static_cast<double>(heights->size()));
}

// The widest of the characters, each laid out alone; a character whose layout fails is skipped.
float WidestCharacter(const TextMeasurer& measurer, std::u16string_view characters)
{
    float widest = 0.0f;
    if (!measurer.width) {
        return widest;
    }
    for (char16_t character : characters) {
        const std::optional<float> width = measurer.width(std::u16string_view(&character, 1), CharacterBox, CharacterBox);
        if (width && IsUsableLength(*width)) {
            widest = std::max(widest, *width);
        }
    }
    return widest;
}

std::u16string PrintableAscii()
{
    std::u16string characters;
    for (char16_t c = 0x20; c <= 0x7E; ++c) {
        characters.push_back(c);
    }
    return characters;
}

char16_t FoldCase(char16_t unit)
{
    const bool basicLatin = unit >= u'A' && unit <= u'Z';
    const bool latin1 = unit >= 0x00C0 && unit <= 0x00DE && unit != 0x00D7;
    const bool greek = unit >= 0x0391 && unit <= 0x03AB && unit != 0x03A2;
    const bool cyrillic = unit >= 0x0410 && unit <= 0x042F;
    if (basicLatin || latin1 || greek || cyrillic) {
        return static_cast<char16_t>(unit + 0x20);
    }
    if (unit >= 0x0400 && unit <= 0x040F) {
        return static_cast<char16_t>(unit + 0x50);
    }
    return unit;
}

bool EqualsIgnoringCase(std::u16string_view a, std::u16string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
        [](char16_t x, char16_t y) { return FoldCase(x) == FoldCase(y); });
}

} // namespace

void RecomputeMetrics(HexViewMetrics& metrics, const HexViewFont& font, bool wideOffsetColumn,
    const TextMeasurer& measurer)
{
    metrics.margin = 8.0f;
    metrics.columnGap = 12.0f;
    metrics.rowHeight = MinimumRowHeight;
    metrics.offsetWidth = 0.0f;
    metrics.hexWidth = 0.0f;
    metrics.textWidth = 0.0f;
    metrics.hexCellWidth = 8.0f;
    metrics.textCellWidth = 8.0f;
    metrics.fontSize = metrics.zoom * metrics.baseFontSize;

    if (!measurer.makeTextFormat || !measurer.makeTextFormat(font, metrics.fontSize)) {
        return;
    }

    const float lineHeight = MeanLineHeight(measurer).value_or(metrics.rowHeight);
    static const std::u16string printable = PrintableAscii();
    const float textMeasure = WidestCharacter(measurer, printable);
    const float hexMeasure = WidestCharacter(measurer, HexMeasureCharacters);

    metrics.hexCellWidth = std::max(hexMeasure, MeasuredCellFloor);
    metrics.textCellWidth = std::max(textMeasure, MeasuredCellFloor);
    metrics.offsetWidth = metrics.hexCellWidth * (wideOffsetColumn ? 17.0f : 9.0f);
    metrics.hexWidth = metrics.hexCellWidth * 3.0f * 16.0f;
    metrics.textWidth = metrics.textCellWidth * 16.0f;

    const float leading = std::max(metrics.fontSize * 0.15f, 0.75f);
    metrics.rowHeight = std::max({MinimumRowHeight, metrics.fontSize * 1.35f, lineHeight + leading});
}

std::optional<float> FontSizeFromPoints(float points)
{
    if (std::isnan(points)) {
        return std::nullopt;
    }
    const float clamped = std::clamp(points, MinimumFontPoints, MaximumFontPoints);
    return clamped * 96.0f / 72.0f;
}

bool IsSameFont(const HexViewFont& current, float currentBaseFontSize, const HexViewFont& requested,
    float requestedBaseFontSize)
{
    return EqualsIgnoringCase(current.family, requested.family)
        && std::abs(currentBaseFontSize - requestedBaseFontSize) < 0.01f && current.bold == requested.bold
        && current.italic == requested.italic;
}

std::optional<float> ZoomAfterStep(float zoom, float step)
{
    if (!std::isfinite(step)) {
        return std::nullopt;
    }
    const float next = std::clamp(zoom + step, MinimumZoom, MaximumZoom);
    if (std::abs(next - zoom) < 0.001f) {
        return std::nullopt;
    }
    return next;
}

} // namespace tlm
