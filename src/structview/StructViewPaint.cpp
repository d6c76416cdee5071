#include "structview/StructViewPaint.h"

#include "structview/StructViewWindow.h"

#include <algorithm>

namespace tlm {

namespace {

constexpr std::uint32_t White = 0xFFFFFF;
constexpr std::uint32_t Black = 0x000000;
constexpr int TitleTop = 8;
constexpr int TitleHeight = 24;
constexpr int DefinitionTop = 33;
constexpr int DefinitionHeight = 22;
constexpr int CellInset = 4;

class PaintList {
public:
    explicit PaintList(std::vector<StructPaintOperation>& operations)
        : operations(operations)
    {
    }

    void Fill(StructViewRect rect, std::uint32_t colour) { Add(StructPaintKind::Fill, rect, colour); }
    void Frame(StructViewRect rect, std::uint32_t colour) { Add(StructPaintKind::Frame, rect, colour); }
    void Clip(StructViewRect rect) { Add(StructPaintKind::Clip, rect, 0); }
    void Unclip() { Add(StructPaintKind::Unclip, {}, 0); }

    void Text(StructViewRect rect, std::u16string text, std::uint32_t colour, StructPaintFont font,
        bool centred = false)
    {
        if (text.empty()) {
            return;
        }
        StructPaintOperation operation;
        operation.kind = StructPaintKind::Text;
        operation.rect = rect;
        operation.colour = colour;
        operation.font = font;
        operation.centred = centred;
        operation.text = std::move(text);
        operations.push_back(std::move(operation));
    }

private:
    void Add(StructPaintKind kind, StructViewRect rect, std::uint32_t colour)
    {
        StructPaintOperation operation;
        operation.kind = kind;
        operation.rect = rect;
        operation.colour = colour;
        operations.push_back(std::move(operation));
    }

    std::vector<StructPaintOperation>& operations;
};

// A cell's text box: the column's span at the band or row's height, kept off the edges a little.
StructViewRect CellBox(const StructViewRect& column, int top, int height)
{
    return StructViewRect{column.left, top, column.right, top + height};
}

void PaintColumnHeader(const StructViewWindow& view, const StructViewPalette& palette, PaintList& list)
{
    const StructViewLayout& layout = view.Layout();
    const StructViewLabels& labels = view.Labels();
    list.Fill(layout.columnHeader, palette.band);
    list.Clip(layout.columnHeader);
    const std::u16string titles[StructColumnCount] = {
        labels.columnOffset, labels.columnValue, labels.columnSize, labels.columnName};
    for (std::size_t index = 0; index < StructColumnCount; ++index) {
        StructViewRect box = CellBox(layout.columns[index], layout.columnHeader.top, StructColumnHeaderHeight);
        if (static_cast<StructColumn>(index) == StructColumn::Value) {
            box.right = layout.dropDown.left - CellInset; // the title stops before the drop-down box
        }
        list.Text(box, titles[index], palette.text, StructPaintFont::Main);
    }
    list.Fill(layout.dropDown, White);
    list.Frame(layout.dropDown, Black);
    list.Text(layout.dropDown, u"\u25BC", Black, StructPaintFont::Secondary, true);
    for (std::size_t index = 0; index < StructColumnCount; ++index) {
        const int edge = layout.ColumnEdge(static_cast<StructColumn>(index));
        list.Fill(StructViewRect{edge, layout.columnHeader.top, edge + 1, layout.columnHeader.bottom}, palette.border);
    }
    list.Fill(StructViewRect{0, layout.columnHeader.bottom - 1, layout.clientWidth, layout.columnHeader.bottom},
        palette.border);
    list.Unclip();
}

void PaintRows(const StructViewWindow& view, const StructViewPalette& palette, PaintList& list)
{
    const StructViewLayout& layout = view.Layout();
    const std::vector<StructRow>& rows = view.Rows();
    list.Clip(layout.rowArea);
    const int scrollY = view.ScrollY();
    const std::size_t first = static_cast<std::size_t>(std::max(scrollY, 0) / StructRowHeight);
    for (std::size_t index = first; index < rows.size(); ++index) {
        const int top = StructRowTop(layout, index, scrollY);
        if (top >= layout.rowArea.bottom) {
            break;
        }
        const StructViewRect line{0, top, layout.clientWidth, top + StructRowHeight};
        if (static_cast<std::int64_t>(index) == view.SelectedRow()) {
            list.Fill(line, palette.selection);
        }
        list.Fill(StructViewRect{0, line.bottom - 1, layout.clientWidth, line.bottom}, palette.border);
        const StructRow& row = rows[index];
        const std::u16string* cells[StructColumnCount] = {&row.offset, &row.value, &row.size, &row.name};
        for (std::size_t column = 0; column < StructColumnCount; ++column) {
            list.Text(CellBox(layout.columns[column], top, StructRowHeight), *cells[column], palette.text,
                StructPaintFont::Main);
        }
    }
    list.Unclip();
}

} // namespace

std::vector<StructPaintOperation> BuildStructViewPaint(const StructViewWindow& view)
{
    std::vector<StructPaintOperation> operations;
    PaintList list(operations);
    const StructViewLayout& layout = view.Layout();
    const StructViewPalette palette = StructViewPaletteFor(view.CurrentTheme());

    list.Fill(StructViewRect{0, 0, std::max(layout.clientWidth, 1), std::max(layout.clientHeight, 1)},
        palette.background);
    list.Fill(layout.band, palette.band);
    list.Fill(StructViewRect{0, layout.band.bottom - 1, layout.band.right, layout.band.bottom}, palette.border);
    const int textRight = std::max(layout.Button(StructViewButton::Open).left - 8, StructMargin + 1);
    list.Text(StructViewRect{StructMargin, TitleTop, textRight, TitleTop + TitleHeight}, view.Labels().title,
        palette.text, StructPaintFont::Main);
    list.Text(StructViewRect{StructMargin, DefinitionTop, layout.clientWidth - StructMargin,
                  DefinitionTop + DefinitionHeight},
        view.DefinitionLine(), StructViewDefinitionColour(palette), StructPaintFont::Secondary);

    if (view.State() == StructViewState::Loaded) {
        PaintColumnHeader(view, palette, list);
        PaintRows(view, palette, list);
    }
    return operations;
}

} // namespace tlm
