#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tlm {

struct TextMeasurer;

// Geometry of the hex view. Lengths are in device-independent pixels (1/96 inch); the values below are
// those of a view that has not been measured yet.
struct HexViewMetrics {
    std::uint32_t dpi = 96; // 0 counts as 96 wherever it is used
    float rowHeight = 19.0f;
    float margin = 8.0f;
    float offsetWidth = 126.0f;
    float hexWidth = 470.0f;
    float textWidth = 160.0f;
    float columnGap = 12.0f;
    float baseFontSize = 16.0f;
    float fontSize = 16.0f;
    float hexCellWidth = 8.0f;
    float textCellWidth = 8.0f;
    float zoom = 1.0f;
};

// The face of the view's font; its size lives in HexViewMetrics.
struct HexViewFont {
    std::u16string family = u"Consolas";
    bool bold = false;
    bool italic = false;
};

inline constexpr float MinimumFontPoints = 6.0f;
inline constexpr float MaximumFontPoints = 48.0f;
inline constexpr float MinimumZoom = 0.6f;
inline constexpr float MaximumZoom = 2.5f;
inline constexpr float ZoomStep = 0.1f;

// Offsets from this size on need sixteen digits instead of eight.
inline constexpr std::uint64_t WideOffsetThreshold = 0x100000000ull;

// Rebuilds every width and the row height from the font. `wideOffsetColumn` is true when a document is
// open and holds WideOffsetThreshold bytes or more. When no text format can be made the widths stay 0.
void RecomputeMetrics(HexViewMetrics& metrics, const HexViewFont& font, bool wideOffsetColumn,
    const TextMeasurer& measurer);

// The font size in device-independent pixels for a size in points, clamped to the allowed points.
// Nothing for a size that is not a number.
std::optional<float> FontSizeFromPoints(float points);

// Whether a font request would change nothing: same family regardless of case, same size within 0.01,
// same bold and italic.
bool IsSameFont(const HexViewFont& current, float currentBaseFontSize, const HexViewFont& requested,
    float requestedBaseFontSize);

// The zoom after a signed step, or nothing when it would move by less than 0.001 after clamping.
std::optional<float> ZoomAfterStep(float zoom, float step);

} // namespace tlm
