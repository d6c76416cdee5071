#include "structview/StructViewWindow.h"

#include "hexview/VirtualKey.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace tlm {

namespace {

constexpr int WheelNotch = 120;
constexpr int WheelStep = 48;
constexpr int VerticalLine = StructRowHeight;
constexpr int HorizontalLine = 24;
constexpr std::uint32_t F5Key = 0x74;
constexpr std::uint32_t ReloadKey = F5Key;

// The scroll-bar request codes of the platform.
constexpr int ScrollLineUp = 0;
constexpr int ScrollLineDown = 1;
constexpr int ScrollPageUp = 2;
constexpr int ScrollPageDown = 3;
constexpr int ScrollThumbPosition = 4;
constexpr int ScrollThumbTrack = 5;
constexpr int ScrollTop = 6;
constexpr int ScrollBottom = 7;

// The new position of one scroll bar for a request, before clamping.
int ScrolledBy(int code, int position, int line, int page, int trackPosition, int maximum)
{
    switch (code) {
    case ScrollLineUp:
        return position - line;
    case ScrollLineDown:
        return position + line;
    case ScrollPageUp:
        return position - page;
    case ScrollPageDown:
        return position + page;
    case ScrollThumbPosition:
    case ScrollThumbTrack:
        return trackPosition;
    case ScrollTop:
        return 0;
    case ScrollBottom:
        return maximum;
    default:
        return position;
    }
}

void AppendCells(std::u16string& text, const std::u16string& offset, const std::u16string& value,
    const std::u16string& size, const std::u16string& name)
{
    text += offset;
    text += u'\t';
    text += value;
    text += u'\t';
    text += size;
    text += u'\t';
    text += name;
}

} // namespace

void StructViewWindow::SetLabels(StructViewLabels newLabels)
{
    labels = std::move(newLabels);
    ControlsChanged();
    Redraw();
}

void StructViewWindow::SetTheme(Theme newTheme)
{
    theme = newTheme;
    Redraw();
}

void StructViewWindow::SetValueFormat(StructValueFormat format)
{
    valueFormat = format;
    Redraw();
}

void StructViewWindow::ShowRows(std::u16string name, std::vector<StructRow> newRows, std::u16string newInfoText)
{
    state = StructViewState::Loaded;
    definitionName = std::move(name);
    message.clear();
    infoText = std::move(newInfoText);
    rows = std::move(newRows);
    if (selectedRow >= static_cast<std::int64_t>(rows.size())) {
        selectedRow = static_cast<std::int32_t>(rows.size()) - 1;
    }
    Relayout();
    ControlsChanged();
    Redraw();
}

void StructViewWindow::ShowMessage(std::u16string text)
{
    EnterMessageState(StructViewState::Empty, std::move(text));
}

void StructViewWindow::ShowError(std::u16string text)
{
    EnterMessageState(StructViewState::Error, std::move(text));
}

void StructViewWindow::EnterMessageState(StructViewState newState, std::u16string text)
{
    state = newState;
    message = std::move(text);
    definitionName.clear();
    infoText.clear();
    rows.clear();
    selectedRow = -1;
    Relayout();
    ControlsChanged();
    Redraw();
}

std::u16string StructViewWindow::MessageEditText() const
{
    if (state == StructViewState::Error) {
        return labels.errorPrefix + u": " + message;
    }
    return message;
}

std::u16string StructViewWindow::DefinitionLine() const
{
    return labels.headerDefinition + u": " + (definitionName.empty() ? std::u16string(u"-") : definitionName);
}

bool StructViewWindow::ButtonEnabled(StructViewButton button) const
{
    switch (button) {
    case StructViewButton::Reload:
    case StructViewButton::Close:
        return !definitionName.empty();
    case StructViewButton::Info:
        return !infoText.empty();
    case StructViewButton::Open:
        break;
    }
    return true;
}

std::u16string StructViewWindow::ButtonText(StructViewButton button) const
{
    switch (button) {
    case StructViewButton::Open:
        return labels.openButton;
    case StructViewButton::Reload:
        return labels.reloadButton;
    case StructViewButton::Close:
        return labels.closeButton;
    case StructViewButton::Info:
        return labels.infoButton;
    }
    return {};
}

void StructViewWindow::SetClientSize(int width, int height)
{
    clientWidth = width;
    clientHeight = height;
    Relayout();
    ControlsChanged();
    Redraw();
}

void StructViewWindow::Relayout()
{
    StructViewLayoutInput input;
    input.clientWidth = clientWidth;
    input.clientHeight = clientHeight;
    input.infoShown = infoVisible && !infoText.empty();
    if (input.infoShown && host.measureInfoText) {
        input.infoTextHeight = host.measureInfoText(std::max(clientWidth - 2 * StructMargin, 1));
    }
    input.columnWidths = columnWidths;
    input.rowCount = rows.size();
    input.scrollX = 0;
    // The scroll positions are clamped against the content of this layout, then the columns follow them.
    layout = LayoutStructView(input);
    scrollX = std::clamp(scrollX, 0, StructMaxScrollX(layout));
    scrollY = std::clamp(scrollY, 0, StructMaxScrollY(layout));
    input.scrollX = scrollX;
    layout = LayoutStructView(input);
}

void StructViewWindow::OnButton(std::uint32_t controlId)
{
    switch (controlId) {
    case StructOpenButtonId:
        CallIfSetPost(AppMessage::StructOpenPattern, 0);
        break;
    case StructCloseButtonId:
        CallIfSetPost(AppMessage::StructClearPattern, 0);
        break;
    case StructReloadButtonId:
        CallIfSetPost(AppMessage::StructReloadPattern, 0);
        break;
    case StructInfoButtonId:
        if (!infoText.empty()) {
            infoVisible = !infoVisible;
            Relayout();
            ControlsChanged();
            Redraw();
        }
        break;
    default:
        break;
    }
}

void StructViewWindow::CallIfSetPost(AppMessage notice, std::uintptr_t wParam)
{
    if (host.postToOwner) {
        host.postToOwner(notice, wParam);
    }
}

bool StructViewWindow::OnKeyDown(std::uint32_t virtualKey, bool control)
{
    const int rowCount = static_cast<int>(std::min<std::size_t>(rows.size(), std::numeric_limits<std::int32_t>::max()));
    const int page = std::max(layout.rowArea.Height(), StructRowHeight);
    switch (virtualKey) {
    case VirtualKey::Up:
        if (selectedRow <= 0) {
            return false;
        }
        SelectRow(selectedRow - 1);
        return true;
    case VirtualKey::Down:
        if (selectedRow + 1 >= rowCount) {
            return false;
        }
        SelectRow(selectedRow + 1);
        return true;
    case VirtualKey::PageUp:
        ScrollTo(scrollX, scrollY - page);
        return true;
    case VirtualKey::PageDown:
        ScrollTo(scrollX, scrollY + page);
        return true;
    case VirtualKey::Home:
        ScrollTo(0, 0);
        return true;
    case VirtualKey::End:
        ScrollTo(layout.contentWidth, layout.contentHeight);
        return true;
    case ReloadKey:
        CallIfSetPost(AppMessage::StructReloadPattern, 0);
        return true;
    case VirtualKey::C:
    case VirtualKey::Insert:
        if (!control) {
            return false;
        }
        Copy();
        return true;
    default:
        return false;
    }
}

void StructViewWindow::OnWheel(int delta)
{
    const int notches = std::max(std::abs(delta) / WheelNotch, 1);
    const int distance = notches * WheelStep;
    ScrollTo(scrollX, delta > 0 ? scrollY - distance : scrollY + distance);
}

void StructViewWindow::ScrollTo(int x, int y)
{
    const int newX = std::clamp(x, 0, StructMaxScrollX(layout));
    const int newY = std::clamp(y, 0, StructMaxScrollY(layout));
    if (newX == scrollX && newY == scrollY) {
        return;
    }
    scrollX = newX;
    scrollY = newY;
    Relayout();
    Redraw();
}

void StructViewWindow::OnVerticalScroll(int code, int trackPosition)
{
    const int page = std::max(layout.rowArea.Height(), 1);
    ScrollTo(scrollX, ScrolledBy(code, scrollY, VerticalLine, page, trackPosition, StructMaxScrollY(layout)));
}

void StructViewWindow::OnHorizontalScroll(int code, int trackPosition)
{
    const int page = std::max(layout.clientWidth, 1);
    ScrollTo(ScrolledBy(code, scrollX, HorizontalLine, page, trackPosition, StructMaxScrollX(layout)), scrollY);
}

StructPress StructViewWindow::OnLeftDown(int x, int y)
{
    if (state != StructViewState::Loaded) {
        return StructPress::None;
    }
    if (StructDropDownAt(layout, x, y)) {
        if (host.openFormatMenu) {
            host.openFormatMenu(layout.dropDown.left, layout.dropDown.bottom);
        }
        return StructPress::OpenedMenu;
    }
    if (const std::optional<StructColumn> column = StructColumnEdgeAt(layout, x, y)) {
        drag = ColumnDrag{*column, x, columnWidths[static_cast<std::size_t>(*column)]};
        if (host.captureMouse) {
            host.captureMouse();
        }
        return StructPress::StartedDrag;
    }
    const std::optional<std::size_t> row = StructRowAt(layout, rows.size(), scrollY, x, y);
    SelectRow(row ? static_cast<std::int32_t>(*row) : -1);
    return StructPress::Selected;
}

void StructViewWindow::OnMouseMove(int x, int)
{
    if (!drag) {
        return;
    }
    const auto index = static_cast<std::size_t>(drag->column);
    const int width = std::max(drag->startWidth + (x - drag->startX), StructColumnMinimums[index]);
    if (width == columnWidths[index]) {
        return;
    }
    columnWidths[index] = width;
    Relayout();
    Redraw();
}

void StructViewWindow::OnLeftUp()
{
    if (drag && host.releaseCapture) {
        host.releaseCapture(); // the capture change that follows ends the drag
    }
    drag.reset();
}

void StructViewWindow::OnCaptureLost()
{
    drag.reset();
}

void StructViewWindow::OnDoubleClick(int x, int y)
{
    if (state != StructViewState::Loaded) {
        return;
    }
    const std::optional<StructColumn> column = StructColumnEdgeAt(layout, x, y);
    if (!column) {
        return;
    }
    const auto index = static_cast<std::size_t>(*column);
    columnWidths[index] = StructColumnDefaults[index];
    Relayout();
    Redraw();
}

bool StructViewWindow::WantsSizingCursor(int x, int y) const
{
    return drag.has_value() || (state == StructViewState::Loaded && StructColumnEdgeAt(layout, x, y).has_value());
}

void StructViewWindow::OnClose()
{
    CallIfSetPost(AppMessage::StructViewClosed, 0);
}

void StructViewWindow::Copy()
{
    const std::u16string text = CopyText();
    if (!text.empty() && host.copyToClipboard) {
        host.copyToClipboard(text);
    }
}

void StructViewWindow::OnMenuChoice(std::uint32_t menuId)
{
    if (menuId < StructFormatMenuFirstId || menuId > StructFormatMenuLastId) {
        return;
    }
    CallIfSetPost(AppMessage::StructValueFormat, menuId - StructFormatMenuFirstId + 1);
}

std::vector<StructFormatMenu> StructViewWindow::FormatMenu() const
{
    const bool ascii = valueFormat.byteArrayFormat == 1;
    const bool big = valueFormat.endian == 1;
    const bool decimal = valueFormat.numericBase == 1;
    return {
        StructFormatMenu{labels.byteArray,
            {{4201, labels.byteArrayHex, !ascii}, {4202, labels.byteArrayAscii, ascii}}},
        StructFormatMenu{labels.endian, {{4203, labels.endianLittle, !big}, {4204, labels.endianBig, big}}},
        StructFormatMenu{labels.numericBase,
            {{4205, labels.numericBaseHex, !decimal}, {4206, labels.numericBaseDec, decimal}}},
    };
}

std::u16string StructViewWindow::CopyText() const
{
    std::u16string text = labels.title + u"\r\n" + DefinitionLine();
    switch (state) {
    case StructViewState::Empty:
        text += u"\r\n\r\n" + message;
        break;
    case StructViewState::Error:
        text += u"\r\n\r\n" + labels.errorPrefix + u": " + message;
        break;
    case StructViewState::Loaded:
        text += u"\r\n\r\n";
        AppendCells(text, labels.columnOffset, labels.columnValue, labels.columnSize, labels.columnName);
        for (const StructRow& row : rows) {
            text += u"\r\n";
            AppendCells(text, row.offset, row.value, row.size, row.name);
        }
        break;
    }
    return text;
}

void StructViewWindow::SelectRow(std::int32_t row)
{
    if (row == selectedRow) {
        return;
    }
    selectedRow = row;
    ScrollRowIntoView(row);
    Redraw();
}

void StructViewWindow::ScrollRowIntoView(std::int32_t row)
{
    if (row < 0) {
        return;
    }
    const int top = row * StructRowHeight;
    const int visible = layout.rowArea.Height();
    if (top < scrollY) {
        ScrollTo(scrollX, top);
    } else if (top + StructRowHeight > scrollY + visible) {
        ScrollTo(scrollX, top + StructRowHeight - visible);
    }
}

void StructViewWindow::Redraw()
{
    if (host.requestRedraw) {
        host.requestRedraw();
    }
}

void StructViewWindow::ControlsChanged()
{
    if (host.controlsChanged) {
        host.controlsChanged();
    }
}

} // namespace tlm
