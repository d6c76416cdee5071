#include "inspector/DataInspectorWindow.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace tlm {

namespace {

constexpr std::array<const char*, 12> RowNameKeys = {
    "inspector.data.row.binary",
    "inspector.data.row.uint8_dec",
    "inspector.data.row.uint16_le",
    "inspector.data.row.uint16_be",
    "inspector.data.row.uint32_le",
    "inspector.data.row.uint32_be",
    "inspector.data.row.uint64_le",
    "inspector.data.row.uint64_be",
    "inspector.data.row.utf8",
    "inspector.data.row.utf16le",
    "inspector.data.row.utf16be",
    "inspector.data.row.current_encoding_char",
};

constexpr std::uint32_t KeyC = 0x43;
constexpr std::uint32_t KeyInsert = 0x2D;

constexpr InspectorColor Rgb(std::uint32_t value)
{
    return InspectorColor{static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 8),
        static_cast<std::uint8_t>(value)};
}

void Add(InspectorPaint& paint, InspectorPaintKind kind, InspectorColorRole color, float left, float top, float right,
    float bottom)
{
    InspectorPaintOperation operation;
    operation.kind = kind;
    operation.color = color;
    operation.left = left;
    operation.top = top;
    operation.right = right;
    operation.bottom = bottom;
    paint.operations.push_back(operation);
}

void AddText(InspectorPaint& paint, std::u16string_view text, float left, float top, float right, float bottom)
{
    InspectorPaintOperation operation;
    operation.kind = InspectorPaintKind::DrawTextInBox;
    operation.color = InspectorColorRole::Text;
    operation.left = left;
    operation.top = top;
    operation.right = right;
    operation.bottom = bottom;
    operation.textStart = static_cast<std::uint32_t>(paint.text.size());
    operation.textLength = static_cast<std::uint32_t>(text.size());
    paint.text.append(text);
    paint.operations.push_back(operation);
}

} // namespace

InspectorLabels MakeInspectorLabels(const std::function<std::u16string(std::string_view key)>& lookUp)
{
    InspectorLabels labels;
    if (!lookUp) {
        return labels;
    }
    labels.title = lookUp("inspector.data.title");
    labels.nameColumnTitle = lookUp("inspector.data.column.name");
    labels.valueColumnTitle = lookUp("inspector.data.column.value");
    for (const char* key : RowNameKeys) {
        labels.rowNames.push_back(lookUp(key));
    }
    return labels;
}

InspectorColor InspectorPalette::Of(InspectorColorRole role) const
{
    switch (role) {
    case InspectorColorRole::Background:
        return background;
    case InspectorColorRole::Header:
        return header;
    case InspectorColorRole::Grid:
        return grid;
    case InspectorColorRole::Text:
        return text;
    case InspectorColorRole::Selection:
        return selection;
    }
    return background;
}

InspectorPalette InspectorPaletteFor(Theme theme)
{
    switch (theme) {
    case Theme::CoolSlate:
        return {Rgb(0x1E2228), Rgb(0x2A3039), Rgb(0x4A525E), Rgb(0xE8EBEF), Rgb(0x323D4D)};
    case Theme::DarkBlue:
        return {Rgb(0x0F141C), Rgb(0x2A476E), Rgb(0x3C4652), Rgb(0xE6EDF3), Rgb(0x20344F)};
    case Theme::Black:
        return {Rgb(0x111111), Rgb(0x2D2D2D), Rgb(0x484848), Rgb(0xF3F3F3), Rgb(0x383838)};
    case Theme::Light:
    default:
        return {Rgb(0xFAFAFA), Rgb(0xE0E8F2), Rgb(0xC2C6CD), Rgb(0x202020), Rgb(0xD6E4F6)};
    }
}

void InspectorPaint::Clear()
{
    operations.clear();
    text.clear();
}

std::u16string_view InspectorPaint::TextOf(const InspectorPaintOperation& operation) const
{
    return std::u16string_view(text).substr(operation.textStart, operation.textLength);
}

void DataInspectorWindow::SetHost(DataInspectorHost newHost)
{
    host = std::move(newHost);
}

void DataInspectorWindow::SetLabels(InspectorLabels newLabels)
{
    labels = std::move(newLabels);
    if (host.setTitle) {
        host.setTitle(labels.title);
    }
    Redraw(true);
}

void DataInspectorWindow::SetTheme(Theme newTheme)
{
    theme = newTheme;
    Redraw(true);
}

void DataInspectorWindow::SetValues(std::vector<std::u16string> newValues)
{
    values = std::move(newValues);
    const auto count = static_cast<std::int32_t>(values.size());
    if (selectedRow >= count) {
        selectedRow = count - 1; // -1 when there are none
    }
    Redraw(false);
}

void DataInspectorWindow::SetDpi(std::uint32_t newDpi)
{
    dpi = newDpi == 0 ? 96 : newDpi;
}

float DataInspectorWindow::ToLayout(std::int32_t pixels) const
{
    return static_cast<float>(pixels) * 96.0f / static_cast<float>(dpi == 0 ? 96 : dpi);
}

InspectorClientSize DataInspectorWindow::Client() const
{
    return host.clientSize ? host.clientSize() : InspectorClientSize{};
}

void DataInspectorWindow::Redraw(bool erase) const
{
    if (host.requestRedraw) {
        host.requestRedraw(erase);
    }
}

std::int32_t DataInspectorWindow::EffectiveSplitter(std::int32_t clientWidth) const
{
    const std::int32_t highest =
        std::max(clientWidth - InspectorLayout::ValueColumnReserve, InspectorLayout::MinimumSplitter);
    return std::clamp(splitterX, InspectorLayout::MinimumSplitter, highest);
}

bool DataInspectorWindow::IsOverSplitter(float x, float y, const InspectorClientSize& client) const
{
    // The header is no exception: the splitter can be grabbed there too.
    if (y < 0.0f || y >= static_cast<float>(client.height)) {
        return false;
    }
    return std::fabs(x - static_cast<float>(EffectiveSplitter(client.width))) < InspectorLayout::SplitterGrab;
}

std::optional<std::int32_t> DataInspectorWindow::ValueRowAt(float x, float y, const InspectorClientSize& client) const
{
    if (y < InspectorLayout::HeaderHeight) {
        return std::nullopt;
    }
    if (x < static_cast<float>(EffectiveSplitter(client.width)) || x >= static_cast<float>(client.width)) {
        return std::nullopt;
    }
    const auto row = static_cast<std::int32_t>((y - InspectorLayout::HeaderHeight) / InspectorLayout::RowHeight);
    if (row < 0 || row >= static_cast<std::int32_t>(values.size())) {
        return std::nullopt;
    }
    return row;
}

bool DataInspectorWindow::OnLeftButtonDown(std::int32_t x, std::int32_t y)
{
    if (host.takeFocus) {
        host.takeFocus();
    }
    const InspectorClientSize client = Client();
    const float layoutX = ToLayout(x);
    const float layoutY = ToLayout(y);
    if (IsOverSplitter(layoutX, layoutY, client)) {
        draggingSplitter = true;
        if (host.captureMouse) {
            host.captureMouse();
        }
        DragTo(layoutX, client);
        return true;
    }
    const std::int32_t picked = ValueRowAt(layoutX, layoutY, client).value_or(-1);
    if (picked != selectedRow) {
        selectedRow = picked;
        Redraw(true);
    }
    return true;
}

void DataInspectorWindow::DragTo(float x, const InspectorClientSize& client)
{
    splitterX = static_cast<std::int32_t>(x);
    splitterX = EffectiveSplitter(client.width);
    if (host.showSizingCursor) {
        host.showSizingCursor();
    }
    Redraw(false);
}

bool DataInspectorWindow::OnMouseMove(std::int32_t x, std::int32_t y)
{
    const InspectorClientSize client = Client();
    if (draggingSplitter) {
        DragTo(ToLayout(x), client);
        return true;
    }
    if (IsOverSplitter(ToLayout(x), ToLayout(y), client)) {
        if (host.showSizingCursor) {
            host.showSizingCursor();
        }
        return true;
    }
    return false;
}

bool DataInspectorWindow::OnLeftButtonUp()
{
    if (!draggingSplitter) {
        return false;
    }
    draggingSplitter = false;
    if (host.holdsCapture && host.holdsCapture() && host.releaseCapture) {
        host.releaseCapture();
    }
    return true;
}

void DataInspectorWindow::OnCaptureChanged()
{
    draggingSplitter = false;
}

bool DataInspectorWindow::OnKeyDown(std::uint32_t virtualKey, bool control)
{
    if (!control || (virtualKey != KeyC && virtualKey != KeyInsert)) {
        return false;
    }
    Copy();
    return true;
}

std::optional<std::u16string> DataInspectorWindow::CopyText() const
{
    if (selectedRow < 0 || selectedRow >= static_cast<std::int32_t>(values.size())) {
        return std::nullopt;
    }
    // As shown, code point tail and all; the row's name stays out.
    return values[static_cast<std::size_t>(selectedRow)];
}

void DataInspectorWindow::Copy()
{
    if (const std::optional<std::u16string> text = CopyText(); text && host.copyToClipboard) {
        host.copyToClipboard(*text);
    }
}

void DataInspectorWindow::OnResized(std::int32_t outerWidth, bool maximised)
{
    // Kept so that the window keeps its width when it is placed beside the main window again.
    if (!maximised && outerWidth > 0) {
        windowWidth = outerWidth;
    }
}

void BuildInspectorPaint(const DataInspectorWindow& window, const InspectorClientSize& client, InspectorPaint& paint)
{
    using namespace InspectorLayout;
    paint.Clear();
    paint.palette = InspectorPaletteFor(window.GetTheme());
    const auto width = static_cast<float>(client.width);
    const auto height = static_cast<float>(client.height);
    const auto splitter = static_cast<float>(window.EffectiveSplitter(client.width));

    Add(paint, InspectorPaintKind::Clear, InspectorColorRole::Background, 0.0f, 0.0f, width, height);
    Add(paint, InspectorPaintKind::FillRectangle, InspectorColorRole::Header, 0.0f, 0.0f, width, HeaderHeight);
    Add(paint, InspectorPaintKind::DrawLine, InspectorColorRole::Grid, splitter, 0.0f, splitter, height);
    Add(paint, InspectorPaintKind::DrawLine, InspectorColorRole::Grid, 0.0f, HeaderHeight, width, HeaderHeight);
    const InspectorLabels& labels = window.Labels();
    AddText(paint, labels.nameColumnTitle, CellPadding, 0.0f, splitter - CellPadding, HeaderHeight);
    AddText(paint, labels.valueColumnTitle, splitter + CellPadding, 0.0f, width - CellPadding, HeaderHeight);

    const std::vector<std::u16string>& values = window.Values();
    for (std::size_t row = 0; row < labels.rowNames.size(); ++row) {
        const float top = HeaderHeight + RowHeight * static_cast<float>(row);
        const float bottom = top + RowHeight;
        if (static_cast<std::int32_t>(row) == window.SelectedRow()) {
            Add(paint, InspectorPaintKind::FillRectangle, InspectorColorRole::Selection, 0.0f, top, width, bottom);
        }
        Add(paint, InspectorPaintKind::DrawLine, InspectorColorRole::Grid, 0.0f, bottom, width, bottom);
        AddText(paint, labels.rowNames[row], CellPadding, top, splitter - CellPadding, bottom);
        const std::u16string_view value = row < values.size() ? std::u16string_view(values[row]) : std::u16string_view();
        AddText(paint, value, splitter + CellPadding, top, width - CellPadding, bottom);
    }
}

} // namespace tlm
