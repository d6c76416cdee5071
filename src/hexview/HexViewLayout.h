#pragma once

#include "hexview/HexViewMetrics.h"
#include "hexview/HexViewState.h"

#include <cstdint>
#include <optional>

namespace tlm {

class IReadOnlyDocument;

inline constexpr std::uint64_t BytesPerRow = 16;

// What the layout needs of a document: whether one is open, and its size.
struct DocumentExtent {
    bool isOpen = false;
    std::uint64_t size = 0;
};

DocumentExtent ExtentOf(const IReadOnlyDocument* document);

// The client area in physical pixels.
struct ClientSize {
    std::int32_t width = 0;
    std::int32_t height = 0;
};

// One scroll bar: range, page and position, set together.
struct ScrollBarValues {
    std::int32_t minimum = 0;
    std::int32_t maximum = 0;
    std::uint32_t page = 0;
    std::int32_t position = 0;

    friend bool operator==(const ScrollBarValues&, const ScrollBarValues&) = default;
};

struct ScrollBarSettings {
    ScrollBarValues vertical;
    ScrollBarValues horizontal;

    friend bool operator==(const ScrollBarSettings&, const ScrollBarSettings&) = default;
};

// A length in pixels as layout units at the metrics' DPI.
float ToLayoutUnits(std::int32_t pixels, std::uint32_t dpi);

// The last byte, or 0 for an empty document.
std::uint64_t LastByte(DocumentExtent document);

// The highest offset the caret may stand on: one past the last byte in insert mode.
std::uint64_t MaxCaretOffset(const HexViewState& state, DocumentExtent document);

// Whether the caret stands past a full last row in insert mode, which adds a row to hold it.
bool HasCaretRowPastEnd(const HexViewState& state, DocumentExtent document);

std::uint64_t RowCount(const HexViewState& state, DocumentExtent document);
std::int32_t VisibleRowCount(const HexViewMetrics& metrics, ClientSize client);
std::uint64_t MaxTopRow(const HexViewMetrics& metrics, const HexViewState& state, DocumentExtent document,
    ClientSize client);

std::int32_t ViewportWidth(const HexViewMetrics& metrics, ClientSize client);
std::int32_t ContentWidth(const HexViewMetrics& metrics);
std::int32_t MaxHorizontalScroll(const HexViewMetrics& metrics, ClientSize client);

// Brings the caret, the top row and the horizontal scroll into their ranges, in that order, and gives
// the scroll bars that follow.
ScrollBarSettings ClampView(const HexViewMetrics& metrics, HexViewState& state, DocumentExtent document,
    ClientSize client);

// Scrolls as little as needed to show the caret's row and its hex cell, then clamps.
ScrollBarSettings EnsureCaretVisible(const HexViewMetrics& metrics, HexViewState& state, DocumentExtent document,
    ClientSize client);

// Where the parts of the row on screen line `line` stand, in layout units.
struct RowGeometry {
    float top = 0.0f;
    float bottom = 0.0f;
    float contentLeft = 0.0f; // fixed left edge of the scrolling area
    float contentRight = 0.0f;
    float hexLeft = 0.0f;
    float hexRight = 0.0f;
    float textLeft = 0.0f;
    float textRight = 0.0f;
};

RowGeometry GetRowGeometry(const HexViewMetrics& metrics, const HexViewState& state, ClientSize client,
    std::int32_t line);
float HexCellLeft(const HexViewMetrics& metrics, const RowGeometry& row, std::int32_t column);
float TextCellLeft(const HexViewMetrics& metrics, const RowGeometry& row, std::int32_t column);
float OffsetCharacterLeft(const HexViewMetrics& metrics, std::int32_t index);

// The byte under a point given in client pixels, if any.
std::optional<std::uint64_t> HitTest(const HexViewMetrics& metrics, const HexViewState& state, DocumentExtent document,
    ClientSize client, std::int32_t x, std::int32_t y);

} // namespace tlm
