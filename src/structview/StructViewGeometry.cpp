#include "structview/StructViewGeometry.h"

#include <algorithm>
#include <cstdlib>

namespace tlm {

namespace {

constexpr int ButtonTop = 10;
constexpr int ButtonHeight = 26;
constexpr int ButtonGap = 8;
constexpr std::array<int, 4> ButtonWidths{90, 128, 80, 70}; // open, reload, close, info
constexpr int InfoEditTop = 72;
constexpr int InfoBandPadding = 20;
constexpr int MessageEditOffset = 74;
constexpr int DropDownInset = (StructColumnHeaderHeight - StructDropDownHeight) / 2;

// Sizes are kept at 1 at least, so a narrow window never hands a control a negative size.
StructViewRect Sized(int left, int top, int width, int height)
{
    return StructViewRect{left, top, left + std::max(width, 1), top + std::max(height, 1)};
}

void PlaceButtons(StructViewLayout& layout)
{
    // Right-aligned from the info button at the far right towards the open button.
    int right = layout.clientWidth - StructMargin;
    for (std::size_t index = ButtonWidths.size(); index-- > 0;) {
        const int left = right - ButtonWidths[index];
        layout.buttons[index] = Sized(left, ButtonTop, ButtonWidths[index], ButtonHeight);
        right = left - ButtonGap;
    }
}

} // namespace

StructViewLayout LayoutStructView(const StructViewLayoutInput& input)
{
    StructViewLayout layout;
    layout.clientWidth = std::max(input.clientWidth, 0);
    layout.clientHeight = std::max(input.clientHeight, 0);
    layout.infoBandHeight = input.infoShown ? std::max(input.infoTextHeight, 0) + InfoBandPadding : 0;
    const int innerWidth = layout.clientWidth - 2 * StructMargin;

    PlaceButtons(layout);
    layout.band = Sized(0, 0, layout.clientWidth, StructBandBottom);
    layout.infoEdit = Sized(StructMargin, InfoEditTop, innerWidth, layout.infoBandHeight - InfoBandPadding);

    const int headerTop = StructBandBottom + layout.infoBandHeight;
    layout.columnHeader = Sized(0, headerTop, layout.clientWidth, StructColumnHeaderHeight);
    const int rowsTop = headerTop + StructColumnHeaderHeight;
    layout.rowArea = Sized(0, rowsTop, layout.clientWidth, std::max(layout.clientHeight - rowsTop, StructRowHeight));

    const int messageTop = layout.infoBandHeight + MessageEditOffset;
    layout.messageEdit =
        Sized(StructMargin, messageTop, innerWidth, layout.clientHeight - messageTop - StructMargin);

    int left = StructMargin - input.scrollX;
    int widthSum = 0;
    for (std::size_t index = 0; index < StructColumnCount; ++index) {
        const int width = std::max(input.columnWidths[index], StructColumnMinimums[index]);
        layout.columns[index] = StructViewRect{left, headerTop, left + width, headerTop + StructColumnHeaderHeight};
        left += width + StructColumnGap;
        widthSum += width;
    }
    const StructViewRect& value = layout.Column(StructColumn::Value);
    layout.dropDown = StructViewRect{value.right - StructDropDownWidth, headerTop + DropDownInset, value.right,
        headerTop + DropDownInset + StructDropDownHeight};

    layout.contentWidth = widthSum + 72;
    layout.contentHeight = static_cast<int>(std::min<std::size_t>(input.rowCount, 0x3FFFFFFF / StructRowHeight))
        * StructRowHeight;
    return layout;
}

int StructRowTop(const StructViewLayout& layout, std::size_t index, int scrollY)
{
    return layout.rowArea.top + static_cast<int>(index) * StructRowHeight - scrollY;
}

std::optional<std::size_t> StructRowAt(const StructViewLayout& layout, std::size_t rowCount, int scrollY, int x, int y)
{
    if (!layout.rowArea.Contains(x, y)) {
        return std::nullopt;
    }
    const int within = y - layout.rowArea.top + scrollY;
    if (within < 0) {
        return std::nullopt;
    }
    const auto index = static_cast<std::size_t>(within / StructRowHeight);
    if (index >= rowCount) {
        return std::nullopt;
    }
    return index;
}

std::optional<StructColumn> StructColumnEdgeAt(const StructViewLayout& layout, int x, int y)
{
    if (y < layout.columnHeader.top || y >= layout.columnHeader.bottom) {
        return std::nullopt;
    }
    for (std::size_t index = 0; index < StructColumnCount; ++index) {
        const auto column = static_cast<StructColumn>(index);
        if (std::abs(x - layout.ColumnEdge(column)) <= StructEdgeGrab) {
            return column;
        }
    }
    return std::nullopt;
}

bool StructDropDownAt(const StructViewLayout& layout, int x, int y)
{
    return layout.dropDown.Contains(x, y);
}

int StructMaxScrollX(const StructViewLayout& layout)
{
    return std::max(layout.contentWidth - layout.clientWidth, 0);
}

int StructMaxScrollY(const StructViewLayout& layout)
{
    return std::max(layout.contentHeight - layout.rowArea.Height(), 0);
}

StructViewPlacement PlaceStructViewBeside(int mainLeft, int mainTop, int mainBottom, int storedWidth)
{
    const int width = storedWidth > 0 ? storedWidth : StructViewDefaultWidth;
    return StructViewPlacement{mainLeft - width - 1, mainTop, width, std::max(mainBottom - mainTop, 0)};
}

int StoredStructViewWidth(int windowWidth)
{
    return std::max(windowWidth, StructViewMinimumWidth);
}

} // namespace tlm
