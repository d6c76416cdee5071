#pragma once

#include "hexview/HexView.h"

#include <cmath>
#include <cstdint>

namespace tlm::test {

struct Point {
    std::int32_t x = 0;
    std::int32_t y = 0;
};

// The middle of a hex cell's digits on screen line `line`, in pixels.
inline Point HexCellPoint(const HexView& view, std::int32_t line, std::int32_t column)
{
    const HexViewMetrics& metrics = view.Metrics();
    const RowGeometry row = GetRowGeometry(metrics, view.State(), view.Client(), line);
    const float scale = static_cast<float>(metrics.dpi == 0 ? 96 : metrics.dpi) / 96.0f;
    return {static_cast<std::int32_t>(std::lround((HexCellLeft(metrics, row, column) + metrics.hexCellWidth) * scale)),
        static_cast<std::int32_t>(std::lround((row.top + metrics.rowHeight / 2.0f) * scale))};
}

// The middle of a text cell on screen line `line`, in pixels.
inline Point TextCellPoint(const HexView& view, std::int32_t line, std::int32_t column)
{
    const HexViewMetrics& metrics = view.Metrics();
    const RowGeometry row = GetRowGeometry(metrics, view.State(), view.Client(), line);
    const float scale = static_cast<float>(metrics.dpi == 0 ? 96 : metrics.dpi) / 96.0f;
    return {static_cast<std::int32_t>(std::lround((TextCellLeft(metrics, row, column) + metrics.textCellWidth / 2.0f) * scale)),
        static_cast<std::int32_t>(std::lround((row.top + metrics.rowHeight / 2.0f) * scale))};
}

} // namespace tlm::test
