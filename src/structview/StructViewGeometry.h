#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace tlm {

// A rectangle of the struct view's client area, in plain pixels: the struct view does not scale by DPI.
struct StructViewRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    bool Contains(int x, int y) const { return x >= left && x < right && y >= top && y < bottom; }

    friend bool operator==(const StructViewRect&, const StructViewRect&) = default;
};

// The columns, in the order they stand on screen from the left.
enum class StructColumn : std::uint8_t { Offset = 0, Value = 1, Size = 2, Name = 3 };

inline constexpr std::size_t StructColumnCount = 4;
using StructColumnWidths = std::array<int, StructColumnCount>;

inline constexpr StructColumnWidths StructColumnMinimums{56, 80, 56, 120};
inline constexpr StructColumnWidths StructColumnDefaults{72, 220, 72, 280};

// The buttons along the top band and their control ids.
enum class StructViewButton : std::uint8_t { Open, Reload, Close, Info };

inline constexpr std::uint32_t StructOpenButtonId = 4101;
inline constexpr std::uint32_t StructInfoButtonId = 4102;
inline constexpr std::uint32_t StructCloseButtonId = 4103;
inline constexpr std::uint32_t StructReloadButtonId = 4104;

inline constexpr int StructBandBottom = 62;
inline constexpr int StructColumnHeaderHeight = 34;
inline constexpr int StructRowHeight = 32;
inline constexpr int StructMargin = 12;
inline constexpr int StructColumnGap = 16;
inline constexpr int StructEdgeGrab = 6;
inline constexpr int StructDropDownWidth = 20;
inline constexpr int StructDropDownHeight = 18;

// Where everything of the window stands for one client size, info band and scroll position. No width or
// height is ever below 1, however narrow the window.
struct StructViewLayout {
    int clientWidth = 0;
    int clientHeight = 0;
    int infoBandHeight = 0; // 0 while the info text is hidden
    std::array<StructViewRect, 4> buttons; // by StructViewButton
    StructViewRect band;          // the top band, up to its line
    StructViewRect infoEdit;      // the read-only edit of the info text
    StructViewRect columnHeader;  // the band of column titles
    StructViewRect rowArea;       // the rows, below the column header
    StructViewRect messageEdit;   // the read-only edit of the empty or error message
    std::array<StructViewRect, StructColumnCount> columns; // cells in the header band, by StructColumn
    StructViewRect dropDown;      // the value-format box at the right of the value column
    int contentWidth = 0;
    int contentHeight = 0;

    const StructViewRect& Button(StructViewButton button) const { return buttons[static_cast<std::size_t>(button)]; }
    const StructViewRect& Column(StructColumn column) const { return columns[static_cast<std::size_t>(column)]; }
    // The x of the separator after a column, which is also its grab edge.
    int ColumnEdge(StructColumn column) const { return Column(column).right + StructColumnGap / 2; }
};

struct StructViewLayoutInput {
    int clientWidth = 0;
    int clientHeight = 0;
    int infoTextHeight = 0; // the measured text at the client width less the margins
    bool infoShown = false;
    StructColumnWidths columnWidths = StructColumnDefaults;
    std::size_t rowCount = 0;
    int scrollX = 0;
};

StructViewLayout LayoutStructView(const StructViewLayoutInput& input);

// The top of row `index` on screen, for a vertical scroll position.
int StructRowTop(const StructViewLayout& layout, std::size_t index, int scrollY);

// The row under a point of the row area, if any of the `rowCount` rows is there.
std::optional<std::size_t> StructRowAt(const StructViewLayout& layout, std::size_t rowCount, int scrollY, int x, int y);

// The column whose grab edge is within reach of a point in the column header band.
std::optional<StructColumn> StructColumnEdgeAt(const StructViewLayout& layout, int x, int y);

bool StructDropDownAt(const StructViewLayout& layout, int x, int y);

// The largest scroll positions that still show content: never negative.
int StructMaxScrollX(const StructViewLayout& layout);
int StructMaxScrollY(const StructViewLayout& layout);

// Where the struct view stands beside the main window: its own width to the left of the main window's
// left edge, with one pixel between, as tall as the main window.
struct StructViewPlacement {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    friend bool operator==(const StructViewPlacement&, const StructViewPlacement&) = default;
};

inline constexpr int StructViewDefaultWidth = 700;
inline constexpr int StructViewMinimumWidth = 520;
inline constexpr int StructViewMinimumHeight = 260;
inline constexpr int StructViewDefaultHeight = 640;

StructViewPlacement PlaceStructViewBeside(int mainLeft, int mainTop, int mainBottom, int storedWidth);

// The width kept after the window was sized by the user.
int StoredStructViewWidth(int windowWidth);

} // namespace tlm
