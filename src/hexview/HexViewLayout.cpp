#include "hexview/HexViewLayout.h"

#include "document/IReadOnlyDocument.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tlm {

namespace {

constexpr std::uint64_t ScrollBarLimit = 0x7FFFFFFF;

// Float to int without undefined behaviour for values out of range or not a number.
std::int32_t ToInt(double value)
{
    if (std::isnan(value)) {
        return 0;
    }
    constexpr double low = std::numeric_limits<std::int32_t>::min();
    constexpr double high = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(value, low, high));
}

float EffectiveDpi(std::uint32_t dpi)
{
    return dpi == 0 ? 96.0f : static_cast<float>(dpi);
}

float ClientWidthDip(const HexViewMetrics& metrics, ClientSize client)
{
    return ToLayoutUnits(client.width, metrics.dpi);
}

float ClientHeightDip(const HexViewMetrics& metrics, ClientSize client)
{
    return ToLayoutUnits(client.height, metrics.dpi);
}

float ContentLeft(const HexViewMetrics& metrics)
{
    return metrics.margin + metrics.offsetWidth + metrics.columnGap;
}

std::int32_t ClampToBar(std::uint64_t value)
{
    return static_cast<std::int32_t>(std::min(value, ScrollBarLimit));
}

ScrollBarSettings ScrollBarsFor(const HexViewMetrics& metrics, const HexViewState& state, DocumentExtent document,
    ClientSize client)
{
    const std::uint64_t rows = RowCount(state, document);
    ScrollBarSettings bars;
    bars.vertical.maximum = rows == 0 ? 0 : ClampToBar(rows - 1);
    bars.vertical.page = static_cast<std::uint32_t>(std::max(VisibleRowCount(metrics, client), 1));
    bars.vertical.position = ClampToBar(state.topRow);
    bars.horizontal.maximum = std::max(ContentWidth(metrics) - 1, 0);
    bars.horizontal.page = static_cast<std::uint32_t>(ViewportWidth(metrics, client));
    bars.horizontal.position = state.horizontalScroll;
    return bars;
}

} // namespace

DocumentExtent ExtentOf(const IReadOnlyDocument* document)
{
    if (document == nullptr || !document->IsOpen()) {
        return {};
    }
    return {true, document->GetSize()};
}

float ToLayoutUnits(std::int32_t pixels, std::uint32_t dpi)
{
    return static_cast<float>(pixels) * 96.0f / EffectiveDpi(dpi);
}

std::uint64_t LastByte(DocumentExtent document)
{
    return document.size == 0 ? 0 : document.size - 1;
}

std::uint64_t MaxCaretOffset(const HexViewState& state, DocumentExtent document)
{
    if (!document.isOpen || document.size == 0) {
        return 0;
    }
    return state.insertMode == HexEditMode::Insert ? document.size : document.size - 1;
}

bool HasCaretRowPastEnd(const HexViewState& state, DocumentExtent document)
{
    return state.insertMode == HexEditMode::Insert && state.caretOffset == document.size && document.size != 0
        && document.size % BytesPerRow == 0;
}

std::uint64_t RowCount(const HexViewState& state, DocumentExtent document)
{
    if (document.size == 0) {
        return 0;
    }
    // Written so that it cannot overflow at the very top of the range.
    const std::uint64_t rows = document.size / BytesPerRow + (document.size % BytesPerRow != 0 ? 1 : 0);
    return HasCaretRowPastEnd(state, document) ? rows + 1 : rows;
}

std::int32_t VisibleRowCount(const HexViewMetrics& metrics, ClientSize client)
{
    const float usable = ClientHeightDip(metrics, client) - (metrics.margin + metrics.margin);
    return std::max(ToInt(usable / metrics.rowHeight), 1);
}

std::uint64_t MaxTopRow(const HexViewMetrics& metrics, const HexViewState& state, DocumentExtent document,
    ClientSize client)
{
    const std::uint64_t rows = RowCount(state, document);
    const auto visible = static_cast<std::uint64_t>(VisibleRowCount(metrics, client));
    return rows > visible ? rows - visible : 0;
}

std::int32_t ViewportWidth(const HexViewMetrics& metrics, ClientSize client)
{
    const float width = ClientWidthDip(metrics, client) - ContentLeft(metrics) - metrics.margin;
    return std::max(ToInt(std::floor(width)), 0);
}

std::int32_t ContentWidth(const HexViewMetrics& metrics)
{
    return std::max(ToInt(std::ceil(metrics.hexWidth + metrics.columnGap + metrics.textWidth)), 0);
}

std::int32_t MaxHorizontalScroll(const HexViewMetrics& metrics, ClientSize client)
{
    return std::max(ContentWidth(metrics) - ViewportWidth(metrics, client), 0);
}

ScrollBarSettings ClampView(const HexViewMetrics& metrics, HexViewState& state, DocumentExtent document,
    ClientSize client)
{
    state.caretOffset = std::min(state.caretOffset, MaxCaretOffset(state, document));
    state.topRow = std::min(state.topRow, MaxTopRow(metrics, state, document, client));
    state.horizontalScroll = std::clamp(state.horizontalScroll, 0, MaxHorizontalScroll(metrics, client));
    return ScrollBarsFor(metrics, state, document, client);
}

ScrollBarSettings EnsureCaretVisible(const HexViewMetrics& metrics, HexViewState& state, DocumentExtent document,
    ClientSize client)
{
    const std::uint64_t row = state.caretOffset / BytesPerRow;
    const auto visible = static_cast<std::uint64_t>(VisibleRowCount(metrics, client));
    if (row < state.topRow) {
        state.topRow = row;
    } else if (row - state.topRow >= visible) {
        state.topRow = row - visible + 1;
    }

    // Only the hex cell decides: the text cell of the same byte stands further right and may stay hidden.
    const auto column = static_cast<float>(state.caretOffset % BytesPerRow);
    const std::int32_t left = ToInt(std::floor(metrics.hexCellWidth * 3.0f * column));
    const std::int32_t right = ToInt(std::ceil(metrics.hexCellWidth * 2.0f + static_cast<float>(left)));
    const std::int64_t viewport = ViewportWidth(metrics, client);
    if (left < state.horizontalScroll) {
        state.horizontalScroll = left;
    } else if (right > viewport + state.horizontalScroll) {
        state.horizontalScroll = static_cast<std::int32_t>(right - viewport);
    }
    return ClampView(metrics, state, document, client);
}

RowGeometry GetRowGeometry(const HexViewMetrics& metrics, const HexViewState& state, ClientSize client,
    std::int32_t line)
{
    RowGeometry row;
    row.top = metrics.margin + static_cast<float>(line) * metrics.rowHeight;
    row.bottom = row.top + metrics.rowHeight;
    row.contentLeft = ContentLeft(metrics);
    row.contentRight = std::max(ClientWidthDip(metrics, client) - metrics.margin, row.contentLeft);
    row.hexLeft = row.contentLeft - static_cast<float>(state.horizontalScroll);
    row.hexRight = row.hexLeft + metrics.hexWidth;
    row.textLeft = row.hexRight + metrics.columnGap;
    row.textRight = row.textLeft + metrics.textWidth;
    return row;
}

float HexCellLeft(const HexViewMetrics& metrics, const RowGeometry& row, std::int32_t column)
{
    return row.hexLeft + static_cast<float>(column) * metrics.hexCellWidth * 3.0f;
}

float TextCellLeft(const HexViewMetrics& metrics, const RowGeometry& row, std::int32_t column)
{
    return row.textLeft + static_cast<float>(column) * metrics.textCellWidth;
}

float OffsetCharacterLeft(const HexViewMetrics& metrics, std::int32_t index)
{
    return metrics.margin + static_cast<float>(index) * metrics.hexCellWidth;
}

std::optional<std::uint64_t> HitTest(const HexViewMetrics& metrics, const HexViewState& state, DocumentExtent document,
    ClientSize client, std::int32_t x, std::int32_t y)
{
    if (!document.isOpen) {
        return std::nullopt;
    }
    const float yDip = ToLayoutUnits(y, metrics.dpi);
    if (yDip < metrics.margin || yDip >= ClientHeightDip(metrics, client) - metrics.margin) {
        return std::nullopt;
    }
    const std::int32_t line = ToInt((yDip - metrics.margin) / metrics.rowHeight);
    // A row cut off at the bottom is not drawn, so the mouse does not reach it either.
    if (line < 0 || line >= VisibleRowCount(metrics, client)) {
        return std::nullopt;
    }
    const std::uint64_t lastByte = LastByte(document);
    const std::uint64_t row = state.topRow + static_cast<std::uint64_t>(line);
    if (row < state.topRow || row > lastByte / BytesPerRow) {
        return std::nullopt;
    }
    const std::uint64_t rowStart = row * BytesPerRow;

    const float xDip = ToLayoutUnits(x, metrics.dpi);
    const RowGeometry geometry = GetRowGeometry(metrics, state, client, line);
    std::int32_t column = 0;
    if (xDip >= geometry.hexLeft && xDip < geometry.hexRight) {
        // The blank after the two digits belongs to the byte on its left.
        column = ToInt((xDip - geometry.hexLeft) / (metrics.hexCellWidth * 3.0f));
    } else if (xDip >= geometry.textLeft && xDip < geometry.textRight) {
        column = ToInt((xDip - geometry.textLeft) / metrics.textCellWidth);
    } else {
        return std::nullopt;
    }
    if (column < 0) {
        return std::nullopt;
    }
    const std::uint64_t offset = rowStart + static_cast<std::uint64_t>(std::min(column, 15));
    if (offset > lastByte) {
        return std::nullopt;
    }
    return offset;
}

} // namespace tlm
