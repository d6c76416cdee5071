#include "hexview/HexViewPaint.h"

#include "document/IReadOnlyDocument.h"
#include "hexview/HexView.h"
#include "hexview/HexViewLayout.h"
#include "hexview/RowCells.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace tlm {

namespace {

constexpr float CaretOutlineWidth = 1.0f;
constexpr float InsertBarWidth = 2.0f;

// Appends operations to a paint; the text of each goes into the paint's one string.
class PaintWriter {
public:
    explicit PaintWriter(HexViewPaint& paint)
        : paint(paint)
    {
    }

    void Clear(PaletteRole color) { Add({PaintKind::Clear, color, {}}); }
    void Fill(const PaintRect& rect, PaletteRole color) { Add({PaintKind::FillRectangle, color, rect}); }

    void Outline(const PaintRect& rect, PaletteRole color, float strokeWidth)
    {
        PaintOperation operation{PaintKind::DrawRectangle, color, rect};
        operation.strokeWidth = strokeWidth;
        Add(operation);
    }

    void PushClip(const PaintRect& rect) { Add({PaintKind::PushClip, PaletteRole::Background, rect}); }
    void PopClip() { Add({PaintKind::PopClip, PaletteRole::Background, {}}); }

    void Text(std::u16string_view text, const PaintRect& box, PaletteRole color)
    {
        PaintOperation operation{PaintKind::DrawTextInBox, color, box};
        AddText(operation, text);
    }

    void Layout(std::u16string_view text, float x, float y, float maxWidth, float maxHeight, PaletteRole color)
    {
        PaintOperation operation{PaintKind::DrawTextLayout, color, {x, y, x + maxWidth, y + maxHeight}};
        operation.maxWidth = maxWidth;
        operation.maxHeight = maxHeight;
        AddText(operation, text);
    }

private:
    void Add(const PaintOperation& operation) { paint.operations.push_back(operation); }

    void AddText(PaintOperation& operation, std::u16string_view text)
    {
        operation.textStart = static_cast<std::uint32_t>(paint.text.size());
        operation.textLength = static_cast<std::uint32_t>(text.size());
        paint.text.append(text);
        Add(operation);
    }

    HexViewPaint& paint;
};

// Everything the rows of one paint share.
struct PaintContext {
    const HexViewMetrics& metrics;
    const HexViewEditState& state;
    ClientSize client;
    std::optional<ByteRange> selection;
};

struct RowBox {
    std::int32_t line = 0;
    std::uint64_t firstOffset = 0;
    RowGeometry geometry;
    PaintRect rowClip;
    PaintRect textClip; // lets tall glyphs reach into the rows around, not out of the scrolling area
};

RowBox MakeRowBox(const PaintContext& context, std::int32_t line, std::uint64_t row)
{
    const HexViewMetrics& metrics = context.metrics;
    RowBox box;
    box.line = line;
    box.firstOffset = row * BytesPerRow;
    box.geometry = GetRowGeometry(metrics, context.state, context.client, line);
    const RowGeometry& g = box.geometry;
    box.rowClip = {g.contentLeft, g.top, g.contentRight, g.bottom};
    box.textClip = {g.contentLeft, std::max(g.top - metrics.rowHeight, 0.0f), g.contentRight,
        g.top + 2.0f * metrics.rowHeight};
    return box;
}

PaintRect HexCellBox(const PaintContext& context, const RowBox& row, std::int32_t column, float width)
{
    const float left = HexCellLeft(context.metrics, row.geometry, column);
    return {left, row.geometry.top, left + width, row.geometry.bottom};
}

PaintRect TextCellBox(const PaintContext& context, const RowBox& row, std::int32_t column, float width)
{
    const float left = TextCellLeft(context.metrics, row.geometry, column);
    return {left, row.geometry.top, left + width, row.geometry.bottom};
}

void PaintSelection(PaintWriter& out, const PaintContext& context, const RowBox& row, std::size_t byteCount)
{
    if (!context.selection) {
        return;
    }
    const float hexPitch = context.metrics.hexCellWidth * 3.0f;
    out.PushClip(row.rowClip);
    for (std::size_t column = 0; column < byteCount; ++column) {
        const std::uint64_t offset = row.firstOffset + column;
        if (offset < context.selection->first || offset > context.selection->last) {
            continue;
        }
        const auto c = static_cast<std::int32_t>(column);
        // The whole pitch, so that neighbouring selected cells join into one band.
        out.Fill(HexCellBox(context, row, c, hexPitch), PaletteRole::Selection);
        out.Fill(TextCellBox(context, row, c, context.metrics.textCellWidth), PaletteRole::Selection);
    }
    out.PopClip();
}

void PaintCaret(PaintWriter& out, const PaintContext& context, const RowBox& row)
{
    const HexViewEditState& state = context.state;
    if (state.caretOffset / BytesPerRow != row.firstOffset / BytesPerRow) {
        return;
    }
    const auto column = static_cast<std::int32_t>(state.caretOffset % BytesPerRow);
    out.PushClip(row.rowClip);
    if (state.insertMode == HexEditMode::Insert) {
        // The insert bar blinks and shows only with the focus.
        if (state.hasFocus && state.caretPhase) {
            out.Fill(HexCellBox(context, row, column, InsertBarWidth), PaletteRole::Caret);
            out.Fill(TextCellBox(context, row, column, InsertBarWidth), PaletteRole::Caret);
        }
    } else {
        // The overwrite box stays, focus or not: it marks the byte that typing changes.
        const PaintRect hexBox = HexCellBox(context, row, column, context.metrics.hexCellWidth * 2.0f);
        const PaintRect textBox = TextCellBox(context, row, column, context.metrics.textCellWidth);
        out.Fill(hexBox, PaletteRole::Selection);
        out.Outline(hexBox, PaletteRole::Caret, CaretOutlineWidth);
        out.Fill(textBox, PaletteRole::Selection);
        out.Outline(textBox, PaletteRole::Caret, CaretOutlineWidth);
    }
    out.PopClip();
}

void PaintOffset(PaintWriter& out, const PaintContext& context, const RowBox& row, const std::u16string& offsetText)
{
    const HexViewMetrics& metrics = context.metrics;
    const float top = row.geometry.top;
    const float bottom = row.geometry.bottom;
    out.PushClip({metrics.margin, top, metrics.margin + metrics.offsetWidth, bottom});
    // One character a cell on the digit pitch, so that a proportional font still lines up.
    for (std::size_t k = 0; k < offsetText.size(); ++k) {
        const float left = OffsetCharacterLeft(metrics, static_cast<std::int32_t>(k));
        out.Text(std::u16string_view(offsetText).substr(k, 1), {left, top, left + metrics.hexCellWidth, bottom},
            PaletteRole::OffsetText);
    }
    out.PopClip();
}

void PaintHexCells(PaintWriter& out, const PaintContext& context, const RowBox& row,
    const std::vector<std::u16string>& hexCells)
{
    const float digitsWidth = context.metrics.hexCellWidth * 2.0f;
    out.PushClip(row.rowClip);
    for (std::size_t column = 0; column < hexCells.size(); ++column) {
        out.Text(hexCells[column], HexCellBox(context, row, static_cast<std::int32_t>(column), digitsWidth),
            PaletteRole::Text);
    }
    out.PopClip();
}

// A character wider than its cell runs on into the cells it covers, which are empty.
float TextLayoutMaxWidth(float textCellWidth, std::size_t length)
{
    const float textWidth = static_cast<float>(length) * textCellWidth;
    return std::max(textCellWidth * 4.0f, 2.0f * std::max(textWidth, textCellWidth));
}

void PaintTextCells(PaintWriter& out, const PaintContext& context, const RowBox& row,
    const std::vector<std::u16string>& textCells)
{
    const HexViewMetrics& metrics = context.metrics;
    out.PushClip(row.textClip);
    for (std::size_t column = 0; column < textCells.size(); ++column) {
        const std::u16string& cell = textCells[column];
        if (cell.empty()) {
            continue;
        }
        out.Layout(cell, TextCellLeft(metrics, row.geometry, static_cast<std::int32_t>(column)), row.geometry.top,
            TextLayoutMaxWidth(metrics.textCellWidth, cell.size()), metrics.rowHeight * 3.0f, PaletteRole::Text);
    }
    out.PopClip();
}

// The row that holds only the caret past a full last row in insert mode, if there is one.
std::optional<std::uint64_t> PhantomRow(const HexViewEditState& state, DocumentExtent extent)
{
    if (!HasCaretRowPastEnd(state, extent)) {
        return std::nullopt;
    }
    return extent.size / BytesPerRow;
}

void PaintRows(PaintWriter& out, const PaintContext& context, const IReadOnlyDocument& document,
    TextEncoding encoding)
{
    const DocumentExtent extent = ExtentOf(&document);
    const std::optional<std::uint64_t> phantomRow = PhantomRow(context.state, extent);
    const std::int32_t visible = VisibleRowCount(context.metrics, context.client);
    constexpr std::uint64_t lastAddressableRow = std::numeric_limits<std::uint64_t>::max() / BytesPerRow;
    for (std::int32_t line = 0; line < visible; ++line) {
        const std::uint64_t row = context.state.topRow + static_cast<std::uint64_t>(line);
        if (row < context.state.topRow || row > lastAddressableRow) {
            break;
        }
        const ByteBlock block = document.Read(row * BytesPerRow, BytesPerRow);
        if (block.bytes.empty() && row != phantomRow) {
            break;
        }
        const RowCells cells = BuildRowCells(&document, row * BytesPerRow, block.bytes, encoding);
        const RowBox box = MakeRowBox(context, line, row);
        PaintSelection(out, context, box, block.bytes.size());
        PaintCaret(out, context, box);
        PaintOffset(out, context, box, cells.offsetText);
        PaintHexCells(out, context, box, cells.hexCells);
        PaintTextCells(out, context, box, cells.textCells);
    }
}

} // namespace

void HexViewPaint::Clear()
{
    operations.clear();
    text.clear();
}

std::u16string_view HexViewPaint::TextOf(const PaintOperation& operation) const
{
    return std::u16string_view(text).substr(operation.textStart, operation.textLength);
}

RgbaColor HexViewPaint::ColorOf(const PaintOperation& operation) const
{
    return tlm::ColorOf(palette, operation.color);
}

RgbaColor ColorOf(const ThemePalette& palette, PaletteRole role)
{
    switch (role) {
    case PaletteRole::Text:
        return palette.text;
    case PaletteRole::OffsetText:
        return palette.offsetText;
    case PaletteRole::Selection:
        return palette.selection;
    case PaletteRole::Caret:
        return palette.caret;
    case PaletteRole::Background:
        break;
    }
    return palette.background;
}

void BuildPaint(const HexView& view, HexViewPaint& paint)
{
    paint.Clear();
    paint.palette = PaletteFor(view.GetTheme());
    PaintWriter out(paint);
    out.Clear(PaletteRole::Background);
    // A one-pixel fill in the background colour: invisible, and the first primitive of every paint.
    out.Fill({0.0f, 0.0f, 1.0f, 1.0f}, PaletteRole::Background);

    const IReadOnlyDocument* document = view.Document();
    if (document == nullptr || !document->IsOpen()) {
        return;
    }
    const PaintContext context{view.Metrics(), view.State(), view.Client(), view.Selection()};
    PaintRows(out, context, *document, view.Encoding());
}

} // namespace tlm
