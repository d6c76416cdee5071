#include "HexViewFixture.h"

#include "hexview/HexViewPaint.h"
#include "hexview/VirtualKey.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace tlm::test {
namespace {

// The fixture's grid: 8-wide cells, the offset column 72 wide, so the hex column starts at
// 8 + 72 + 12 and the text column at 92 + 16 * 24 + 12; the 800-pixel client ends the scrolling
// area at 792.
constexpr float Margin = 8.0f;
constexpr float Cell = 8.0f;
constexpr float HexLeft = 92.0f;
constexpr float TextLeft = 488.0f;
constexpr float ContentRight = 792.0f;

// The operations between one PushClip and its PopClip.
struct ClipGroup {
    PaintRect clip;
    std::vector<PaintOperation> operations;
};

// One row's layers as the paint draws them.
struct PaintedRow {
    std::optional<ClipGroup> selection;
    std::optional<ClipGroup> caret;
    ClipGroup offset;
    ClipGroup hex;
    ClipGroup text;
};

// A document that logs its reads and passes them on.
class ReadLogDocument final : public IReadOnlyDocument {
public:
    explicit ReadLogDocument(const IReadOnlyDocument& inner)
        : inner(inner)
    {
    }

    bool IsOpen() const override { return inner.IsOpen(); }
    std::uint64_t GetSize() const override { return inner.GetSize(); }
    std::u16string GetPath() const override { return inner.GetPath(); }
    ByteBlock Read(std::uint64_t offset, std::uint64_t count) const override
    {
        reads.push_back({offset, count});
        return inner.Read(offset, count);
    }

    struct ReadRequest {
        std::uint64_t offset = 0;
        std::uint64_t count = 0;
    };
    const IReadOnlyDocument& inner;
    mutable std::vector<ReadRequest> reads;
};

class HexViewPaintTest : public HexViewFixture {
protected:
    const HexViewPaint& Paint()
    {
        BuildPaint(view, paint);
        return paint;
    }

    // The clipped groups after the two operations every paint starts with. Fails the test when an
    // operation stands outside a clip or clips nest.
    std::vector<ClipGroup> Groups()
    {
        Paint();
        std::vector<ClipGroup> groups;
        bool open = false;
        for (std::size_t i = 2; i < paint.operations.size(); ++i) {
            const PaintOperation& operation = paint.operations[i];
            if (operation.kind == PaintKind::PushClip) {
                EXPECT_FALSE(open) << "nested clip at " << i;
                groups.push_back({operation.rect, {}});
                open = true;
            } else if (operation.kind == PaintKind::PopClip) {
                EXPECT_TRUE(open) << "pop without push at " << i;
                open = false;
            } else {
                EXPECT_TRUE(open) << "operation outside a clip at " << i;
                if (!groups.empty()) {
                    groups.back().operations.push_back(operation);
                }
            }
        }
        EXPECT_FALSE(open);
        return groups;
    }

    // Splits the groups into rows, knowing whether a selection is active and on which line the caret is.
    std::vector<PaintedRow> Rows(bool selectionActive, std::optional<int> caretLine)
    {
        const std::vector<ClipGroup> groups = Groups();
        std::vector<PaintedRow> rows;
        std::size_t next = 0;
        const auto take = [&]() -> std::optional<ClipGroup> {
            if (next >= groups.size()) {
                ADD_FAILURE() << "a row ends early";
                return std::nullopt;
            }
            return groups[next++];
        };
        for (int line = 0; next < groups.size(); ++line) {
            PaintedRow row;
            if (selectionActive) {
                row.selection = take();
            }
            if (caretLine == line) {
                row.caret = take();
            }
            row.offset = take().value_or(ClipGroup{});
            row.hex = take().value_or(ClipGroup{});
            row.text = take().value_or(ClipGroup{});
            EXPECT_FLOAT_EQ(row.offset.clip.left, Margin) << "line " << line << " is not in the expected order";
            rows.push_back(row);
        }
        return rows;
    }

    float RowHeight() const { return view.Metrics().rowHeight; }
    float RowTop(int line) const { return Margin + static_cast<float>(line) * RowHeight(); }

    std::u16string TextOf(const PaintOperation& operation) const { return std::u16string(paint.TextOf(operation)); }

    std::vector<std::u16string> Texts(const ClipGroup& group) const
    {
        std::vector<std::u16string> texts;
        for (const PaintOperation& operation : group.operations) {
            texts.push_back(TextOf(operation));
        }
        return texts;
    }

    void Focus() { view.OnSetFocus(); }

    HexViewPaint paint;
};

void ExpectRect(const PaintRect& rect, float left, float top, float right, float bottom)
{
    EXPECT_FLOAT_EQ(rect.left, left);
    EXPECT_FLOAT_EQ(rect.top, top);
    EXPECT_FLOAT_EQ(rect.right, right);
    EXPECT_FLOAT_EQ(rect.bottom, bottom);
}

int CountKind(const std::vector<PaintOperation>& operations, PaintKind kind)
{
    int count = 0;
    for (const PaintOperation& operation : operations) {
        count += operation.kind == kind ? 1 : 0;
    }
    return count;
}

std::vector<std::u16string> HexTexts(std::initializer_list<const char16_t*> cells)
{
    return std::vector<std::u16string>(cells.begin(), cells.end());
}

// The edge cases of painting.

TEST_F(HexViewPaintTest, EmptyDocumentPaintsBackgroundOnly)
{
    Open({});
    Paint();
    ASSERT_EQ(paint.operations.size(), 2u);
    EXPECT_EQ(paint.operations[0].kind, PaintKind::Clear);
    EXPECT_EQ(paint.operations[1].kind, PaintKind::FillRectangle);
}

TEST_F(HexViewPaintTest, EmptyDocumentShowsNoCaretInInsertMode)
{
    OpenEditable({});
    Focus();
    EnterInsertMode();
    ASSERT_TRUE(view.State().hasFocus);
    ASSERT_TRUE(view.State().caretPhase);
    Paint();
    EXPECT_EQ(paint.operations.size(), 2u);
}

TEST_F(HexViewPaintTest, CaretPastAFullLastRowInInsertModePaintsALineOfOffsetAndBar)
{
    OpenEditable(Iota(32));
    Focus();
    EnterInsertMode();
    view.MoveCaretTo(32);
    ASSERT_EQ(view.State().caretOffset, 32u);

    const std::vector<PaintedRow> rows = Rows(false, 2);
    ASSERT_EQ(rows.size(), 3u);
    const PaintedRow& third = rows[2];
    EXPECT_EQ(Texts(third.offset), HexTexts({u"0", u"0", u"0", u"0", u"0", u"0", u"2", u"0", u":"}));
    EXPECT_TRUE(third.hex.operations.empty());
    EXPECT_TRUE(third.text.operations.empty());
    ASSERT_TRUE(third.caret.has_value());
    ASSERT_EQ(third.caret->operations.size(), 2u);
    for (const PaintOperation& bar : third.caret->operations) {
        EXPECT_EQ(bar.kind, PaintKind::FillRectangle);
        EXPECT_EQ(bar.color, PaletteRole::Caret);
    }
    EXPECT_FLOAT_EQ(third.caret->operations[0].rect.left, HexLeft);
    EXPECT_FLOAT_EQ(third.caret->operations[1].rect.left, TextLeft);
}

TEST_F(HexViewPaintTest, ShortLastRowShowsItsOffsetItsCellsAndNoCaretPastThem)
{
    Open(Iota(20));
    view.OnKeyDown(VirtualKey::End, true);
    ASSERT_EQ(view.State().caretOffset, 19u);

    const std::vector<PaintedRow> rows = Rows(false, 1);
    ASSERT_EQ(rows.size(), 2u);
    const PaintedRow& last = rows[1];
    EXPECT_EQ(Texts(last.offset), HexTexts({u"0", u"0", u"0", u"0", u"0", u"0", u"1", u"0", u":"}));
    EXPECT_EQ(Texts(last.hex), HexTexts({u"10", u"11", u"12", u"13"}));
    EXPECT_EQ(last.text.operations.size(), 4u);
    ASSERT_TRUE(last.caret.has_value());
    // The box stands on the last byte, column 3, and nothing is drawn behind it.
    const float lastHexCell = HexLeft + 3.0f * 3.0f * Cell;
    const float lastTextCell = TextLeft + 3.0f * Cell;
    for (const PaintOperation& operation : last.caret->operations) {
        const bool inHex = operation.rect.left == lastHexCell && operation.rect.right == lastHexCell + 2.0f * Cell;
        const bool inText = operation.rect.left == lastTextCell && operation.rect.right == lastTextCell + Cell;
        EXPECT_TRUE(inHex || inText) << operation.rect.left << " to " << operation.rect.right;
    }
}

TEST_F(HexViewPaintTest, SelectedHexCellsFillTheWholePitchAsOneBand)
{
    Open(Iota(32));
    view.SelectRange(2, 5);

    const std::vector<PaintedRow> rows = Rows(true, 0);
    const std::vector<PaintOperation>& fills = rows[0].selection->operations;
    ASSERT_EQ(fills.size(), 8u);
    for (std::size_t i = 0; i + 2 < fills.size(); i += 2) {
        EXPECT_FLOAT_EQ(fills[i].rect.right, fills[i + 2].rect.left) << "gap after hex cell " << i / 2;
    }
    const PaintOperation& lastHex = fills[6];
    const float lastDigitsRight = HexLeft + 5.0f * 3.0f * Cell + 2.0f * Cell;
    EXPECT_FLOAT_EQ(lastHex.rect.right, lastDigitsRight + Cell);
}

TEST_F(HexViewPaintTest, OverwriteBoxShowsWithoutFocus)
{
    Open(Iota(32));
    view.OnKillFocus();
    view.MoveCaretTo(4);

    const std::vector<PaintedRow> rows = Rows(false, 0);
    ASSERT_TRUE(rows[0].caret.has_value());
    EXPECT_EQ(CountKind(rows[0].caret->operations, PaintKind::DrawRectangle), 2);
    EXPECT_EQ(CountKind(rows[0].caret->operations, PaintKind::FillRectangle), 2);
}

TEST_F(HexViewPaintTest, InsertCaretHiddenWithoutFocus)
{
    OpenEditable(Iota(32));
    EnterInsertMode();
    view.OnKillFocus();

    const std::vector<PaintedRow> rows = Rows(false, 0);
    ASSERT_TRUE(rows[0].caret.has_value());
    EXPECT_TRUE(rows[0].caret->operations.empty());
}

TEST_F(HexViewPaintTest, WideCharacterRunsOnOverTheEmptyCellsItCovers)
{
    // "あ" in UTF-8 takes three bytes: its cell and two empty ones, then "A".
    Open({0xE3, 0x81, 0x82, 0x41});
    view.SetEncoding(TextEncoding::Utf8);

    const std::vector<PaintedRow> rows = Rows(false, 0);
    const std::vector<PaintOperation>& layouts = rows[0].text.operations;
    ASSERT_EQ(layouts.size(), 2u);
    EXPECT_EQ(TextOf(layouts[0]), u"\u3042");
    EXPECT_FLOAT_EQ(layouts[0].rect.left, TextLeft);
    // The layout box reaches past the covered cells, so the glyph is not cut at its own cell.
    EXPECT_GE(layouts[0].maxWidth, 3.0f * Cell);
    // The next character is drawn later, over whatever ran into its cell.
    EXPECT_EQ(TextOf(layouts[1]), u"A");
    EXPECT_FLOAT_EQ(layouts[1].rect.left, TextLeft + 3.0f * Cell);
}

TEST_F(HexViewPaintTest, BlackOverwriteBoxIsATranslucentFillUnderTheGlyphs)
{
    Open({'A', 'B', 'C'});
    view.SetTheme(Theme::Black);
    view.MoveCaretTo(1);

    Paint();
    std::optional<std::size_t> textBoxFill;
    std::optional<std::size_t> glyph;
    for (std::size_t i = 0; i < paint.operations.size(); ++i) {
        const PaintOperation& operation = paint.operations[i];
        if (operation.kind == PaintKind::FillRectangle && operation.color == PaletteRole::Selection
            && operation.rect.left == TextLeft + Cell) {
            textBoxFill = i;
        }
        if (operation.kind == PaintKind::DrawTextLayout && TextOf(operation) == u"B") {
            glyph = i;
        }
    }
    ASSERT_TRUE(textBoxFill.has_value());
    ASSERT_TRUE(glyph.has_value());
    EXPECT_LT(*textBoxFill, *glyph);
    const RgbaColor fill = paint.ColorOf(paint.operations[*textBoxFill]);
    EXPECT_FLOAT_EQ(fill.alpha, 0.48f);
    EXPECT_FLOAT_EQ(fill.red, 0x70 / 255.0f);
}

TEST_F(HexViewPaintTest, ThemeSevenPaintsLight)
{
    Open(Iota(16));
    view.SetTheme(static_cast<Theme>(7));
    Paint();
    EXPECT_EQ(paint.palette, PaletteFor(Theme::Light));
    const RgbaColor background = paint.ColorOf(paint.operations[0]);
    EXPECT_FLOAT_EQ(background.red, 0xF6 / 255.0f);
    EXPECT_FLOAT_EQ(background.green, 0xF4 / 255.0f);
    EXPECT_FLOAT_EQ(background.blue, 0xEF / 255.0f);
}

// Order and clips.

TEST_F(HexViewPaintTest, StartsWithAClearAndAOnePixelBackgroundFill)
{
    Open(Iota(64));
    Paint();
    ASSERT_GE(paint.operations.size(), 2u);
    EXPECT_EQ(paint.operations[0].kind, PaintKind::Clear);
    EXPECT_EQ(paint.operations[0].color, PaletteRole::Background);
    EXPECT_EQ(paint.operations[1].kind, PaintKind::FillRectangle);
    EXPECT_EQ(paint.operations[1].color, PaletteRole::Background);
    ExpectRect(paint.operations[1].rect, 0.0f, 0.0f, 1.0f, 1.0f);
}

TEST_F(HexViewPaintTest, PaletteFollowsTheTheme)
{
    Open(Iota(16));
    EXPECT_EQ(Paint().palette, PaletteFor(Theme::CoolSlate));
    view.SetTheme(Theme::DarkBlue);
    EXPECT_EQ(Paint().palette, PaletteFor(Theme::DarkBlue));
}

TEST_F(HexViewPaintTest, NoDocumentPaintsBackgroundOnly)
{
    view.SetDocument(nullptr);
    EXPECT_EQ(Paint().operations.size(), 2u);
}

TEST_F(HexViewPaintTest, ClosedDocumentPaintsBackgroundOnly)
{
    Open(Iota(64));
    document.open = false;
    EXPECT_EQ(Paint().operations.size(), 2u);
}

TEST_F(HexViewPaintTest, EveryOperationAfterTheStartIsInsideOneClip)
{
    Open(Iota(100));
    view.SelectRange(3, 40);
    const std::vector<ClipGroup> groups = Groups();
    EXPECT_FALSE(groups.empty());
}

TEST_F(HexViewPaintTest, RowLayersComeAsSelectionCaretOffsetHexText)
{
    Open(Iota(64));
    view.MoveCaretTo(17);
    view.SelectRange(16, 18);
    const float top = RowTop(1);
    const float bottom = top + RowHeight();

    const std::vector<PaintedRow> rows = Rows(true, 1);
    ASSERT_EQ(rows.size(), 4u);
    const PaintedRow& row = rows[1];
    ExpectRect(row.selection->clip, HexLeft, top, ContentRight, bottom);
    ExpectRect(row.caret->clip, HexLeft, top, ContentRight, bottom);
    ExpectRect(row.offset.clip, Margin, top, Margin + 9.0f * Cell, bottom);
    ExpectRect(row.hex.clip, HexLeft, top, ContentRight, bottom);
    ExpectRect(row.text.clip, HexLeft, top - RowHeight(), ContentRight, top + 2.0f * RowHeight());
    // The selection's six fills come before the caret's box, which alone has outlines.
    EXPECT_EQ(row.selection->operations.size(), 6u);
    EXPECT_EQ(CountKind(row.selection->operations, PaintKind::DrawRectangle), 0);
    EXPECT_EQ(CountKind(row.caret->operations, PaintKind::DrawRectangle), 2);
    EXPECT_EQ(CountKind(row.offset.operations, PaintKind::DrawTextInBox), 9);
    EXPECT_EQ(CountKind(row.hex.operations, PaintKind::DrawTextInBox), 16);
    EXPECT_EQ(CountKind(row.text.operations, PaintKind::DrawTextLayout), 16);
}

TEST_F(HexViewPaintTest, TextClipOfTheFirstRowStartsAtZero)
{
    Open(Iota(16));
    const std::vector<PaintedRow> rows = Rows(false, 0);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_FLOAT_EQ(rows[0].text.clip.top, 0.0f);
    EXPECT_FLOAT_EQ(rows[0].text.clip.bottom, Margin + 2.0f * RowHeight());
}

TEST_F(HexViewPaintTest, ScrollingAreaEndsAtTheMarginOfANarrowWindow)
{
    host.client = {60, 600};
    Open(Iota(16));
    const std::vector<PaintedRow> rows = Rows(false, 0);
    // The area never ends left of where it starts.
    EXPECT_FLOAT_EQ(rows[0].hex.clip.left, HexLeft);
    EXPECT_FLOAT_EQ(rows[0].hex.clip.right, HexLeft);
}

TEST_F(HexViewPaintTest, OffsetIsDrawnOneCharacterACell)
{
    Open(Iota(4096));
    view.OnVerticalScroll(ScrollCommand::LineDown, 0);
    const std::vector<PaintedRow> rows = Rows(false, std::nullopt);
    const std::vector<PaintOperation>& characters = rows[0].offset.operations;
    ASSERT_EQ(characters.size(), 9u);
    const std::u16string expected = u"00000010:";
    for (std::size_t k = 0; k < characters.size(); ++k) {
        EXPECT_EQ(characters[k].kind, PaintKind::DrawTextInBox);
        EXPECT_EQ(characters[k].color, PaletteRole::OffsetText);
        EXPECT_EQ(TextOf(characters[k]), expected.substr(k, 1));
        const float left = Margin + static_cast<float>(k) * Cell;
        ExpectRect(characters[k].rect, left, RowTop(0), left + Cell, RowTop(0) + RowHeight());
    }
}

TEST_F(HexViewPaintTest, WideOffsetHasSixteenDigitsAndMovesTheColumnsRight)
{
    SizedDocument huge(0x100000000ull, 0x41);
    view.SetDocument(&huge);
    const std::vector<PaintedRow> rows = Rows(false, 0);
    EXPECT_EQ(rows[0].offset.operations.size(), 17u);
    EXPECT_FLOAT_EQ(rows[0].offset.clip.right, Margin + 17.0f * Cell);
    EXPECT_FLOAT_EQ(rows[0].hex.operations[0].rect.left, HexLeft + 8.0f * Cell);
}

TEST_F(HexViewPaintTest, HexDigitsAreDrawnInBoxesTwoDigitsWide)
{
    Open(Iota(16));
    view.MoveCaretTo(15);
    const std::vector<PaintedRow> rows = Rows(false, 0);
    const std::vector<PaintOperation>& cells = rows[0].hex.operations;
    ASSERT_EQ(cells.size(), 16u);
    for (std::size_t c = 0; c < cells.size(); ++c) {
        EXPECT_EQ(cells[c].kind, PaintKind::DrawTextInBox);
        EXPECT_EQ(cells[c].color, PaletteRole::Text);
        const float left = HexLeft + static_cast<float>(c) * 3.0f * Cell;
        ExpectRect(cells[c].rect, left, RowTop(0), left + 2.0f * Cell, RowTop(0) + RowHeight());
    }
    EXPECT_EQ(TextOf(cells[10]), u"0A");
}

TEST_F(HexViewPaintTest, TextCellsAreLayoutsThreeRowsHighAtTheirCells)
{
    Open({'T', 'o', 'l', 0x00});
    const std::vector<PaintedRow> rows = Rows(false, 0);
    const std::vector<PaintOperation>& layouts = rows[0].text.operations;
    ASSERT_EQ(layouts.size(), 4u);
    EXPECT_EQ(TextOf(layouts[3]), u".");
    for (std::size_t c = 0; c < layouts.size(); ++c) {
        EXPECT_EQ(layouts[c].kind, PaintKind::DrawTextLayout);
        EXPECT_EQ(layouts[c].color, PaletteRole::Text);
        EXPECT_FLOAT_EQ(layouts[c].rect.left, TextLeft + static_cast<float>(c) * Cell);
        EXPECT_FLOAT_EQ(layouts[c].rect.top, RowTop(0));
        EXPECT_FLOAT_EQ(layouts[c].maxHeight, 3.0f * RowHeight());
        // One unit of text: four cells, which is more than twice its own width.
        EXPECT_FLOAT_EQ(layouts[c].maxWidth, 4.0f * Cell);
    }
}

TEST_F(HexViewPaintTest, LayoutOfALongCellIsTwiceItsTextWide)
{
    // A Thai consonant with a vowel and a tone mark above it: one cell of three units.
    Open({0xA1, 0xD5, 0xE8});
    view.SetEncoding(TextEncoding::Tis620);
    const std::vector<PaintedRow> rows = Rows(false, 0);
    const std::vector<PaintOperation>& layouts = rows[0].text.operations;
    ASSERT_EQ(layouts.size(), 1u);
    ASSERT_EQ(layouts[0].textLength, 3u);
    EXPECT_FLOAT_EQ(layouts[0].maxWidth, 2.0f * 3.0f * Cell);
}

TEST_F(HexViewPaintTest, EncodingDecidesTheTextCells)
{
    Open({0x82, 0xA0, 0x41});
    view.SetEncoding(TextEncoding::ShiftJis);
    const std::vector<PaintedRow> rows = Rows(false, 0);
    EXPECT_EQ(Texts(rows[0].text), HexTexts({u"\u3042", u"A"}));
}

TEST_F(HexViewPaintTest, EachRowReadsSixteenBytesAndTheFirstEmptyReadEndsThePaint)
{
    Open(Iota(40));
    ReadLogDocument logged(document);
    view.SetDocument(&logged);
    Paint();
    ASSERT_EQ(logged.reads.size(), 4u);
    for (std::size_t i = 0; i < logged.reads.size(); ++i) {
        EXPECT_EQ(logged.reads[i].offset, i * 16);
        EXPECT_EQ(logged.reads[i].count, 16u);
    }
    EXPECT_EQ(Rows(false, 0).size(), 3u);
}

TEST_F(HexViewPaintTest, OnlyWholeVisibleRowsArePainted)
{
    Open(Iota(4096));
    // (600 - 2 * 8) / 21.6 gives 27 whole rows.
    EXPECT_EQ(Rows(false, 0).size(), 27u);
}

TEST_F(HexViewPaintTest, RowsAreCountedInLayoutUnitsAtHighDpi)
{
    host.dpi = 192;
    Open(Iota(4096));
    // 600 pixels are 300 units: (300 - 16) / 21.6 gives 13 rows.
    EXPECT_EQ(Rows(false, 0).size(), 13u);
}

TEST_F(HexViewPaintTest, PaintStartsAtTheTopRow)
{
    Open(Iota(4096));
    view.OnVerticalScroll(ScrollCommand::ThumbTrack, 5);
    const std::vector<PaintedRow> rows = Rows(false, std::nullopt);
    EXPECT_EQ(Texts(rows[0].offset), HexTexts({u"0", u"0", u"0", u"0", u"0", u"0", u"5", u"0", u":"}));
    EXPECT_FLOAT_EQ(rows[0].offset.clip.top, Margin);
}

TEST_F(HexViewPaintTest, HorizontalScrollMovesHexAndTextButNotTheOffset)
{
    host.client = {300, 600};
    Open(Iota(16));
    view.OnHorizontalScroll(ScrollCommand::ThumbTrack, 40);
    ASSERT_EQ(view.State().horizontalScroll, 40);
    const std::vector<PaintedRow> rows = Rows(false, 0);
    EXPECT_FLOAT_EQ(rows[0].offset.operations[0].rect.left, Margin);
    EXPECT_FLOAT_EQ(rows[0].hex.operations[0].rect.left, HexLeft - 40.0f);
    EXPECT_FLOAT_EQ(rows[0].text.operations[0].rect.left, TextLeft - 40.0f);
    // The clips stay where the scrolling area is.
    EXPECT_FLOAT_EQ(rows[0].hex.clip.left, HexLeft);
    EXPECT_FLOAT_EQ(rows[0].text.clip.left, HexLeft);
}

TEST_F(HexViewPaintTest, SelectionCoversBothEndsWhicheverComesFirst)
{
    Open(Iota(64));
    view.SelectRange(20, 5);
    const std::vector<PaintedRow> rows = Rows(true, 0);
    EXPECT_EQ(rows[0].selection->operations.size(), 2u * 11u);
    EXPECT_EQ(rows[1].selection->operations.size(), 2u * 5u);
    EXPECT_FLOAT_EQ(rows[0].selection->operations[0].rect.left, HexLeft + 5.0f * 3.0f * Cell);
    EXPECT_FLOAT_EQ(rows[1].selection->operations.back().rect.left, TextLeft + 4.0f * Cell);
}

TEST_F(HexViewPaintTest, SelectionFillsEachByteInBothColumnsInTheSelectionColour)
{
    Open(Iota(16));
    view.SelectRange(7, 7);
    const std::vector<PaintedRow> rows = Rows(true, 0);
    const std::vector<PaintOperation>& fills = rows[0].selection->operations;
    ASSERT_EQ(fills.size(), 2u);
    const float hexCell = HexLeft + 7.0f * 3.0f * Cell;
    ExpectRect(fills[0].rect, hexCell, RowTop(0), hexCell + 3.0f * Cell, RowTop(0) + RowHeight());
    ExpectRect(fills[1].rect, TextLeft + 7.0f * Cell, RowTop(0), TextLeft + 8.0f * Cell, RowTop(0) + RowHeight());
    for (const PaintOperation& fill : fills) {
        EXPECT_EQ(fill.kind, PaintKind::FillRectangle);
        EXPECT_EQ(fill.color, PaletteRole::Selection);
    }
}

TEST_F(HexViewPaintTest, ActiveSelectionClipsRowsWithoutSelectedBytesToo)
{
    Open(Iota(64));
    view.SelectRange(0, 1);
    const std::vector<PaintedRow> rows = Rows(true, 0);
    ASSERT_EQ(rows.size(), 4u);
    ASSERT_TRUE(rows[3].selection.has_value());
    EXPECT_TRUE(rows[3].selection->operations.empty());
}

TEST_F(HexViewPaintTest, OverwriteBoxIsFilledThenOutlinedInBothColumns)
{
    Open(Iota(32));
    view.MoveCaretTo(18);
    const std::vector<PaintedRow> rows = Rows(false, 1);
    const std::vector<PaintOperation>& box = rows[1].caret->operations;
    ASSERT_EQ(box.size(), 4u);
    const float hexCell = HexLeft + 2.0f * 3.0f * Cell;
    const float textCell = TextLeft + 2.0f * Cell;
    const float top = RowTop(1);
    const float bottom = top + RowHeight();

    EXPECT_EQ(box[0].kind, PaintKind::FillRectangle);
    EXPECT_EQ(box[0].color, PaletteRole::Selection);
    ExpectRect(box[0].rect, hexCell, top, hexCell + 2.0f * Cell, bottom);
    EXPECT_EQ(box[1].kind, PaintKind::DrawRectangle);
    EXPECT_EQ(box[1].color, PaletteRole::Caret);
    EXPECT_FLOAT_EQ(box[1].strokeWidth, 1.0f);
    ExpectRect(box[1].rect, hexCell, top, hexCell + 2.0f * Cell, bottom);

    EXPECT_EQ(box[2].kind, PaintKind::FillRectangle);
    EXPECT_EQ(box[2].color, PaletteRole::Selection);
    ExpectRect(box[2].rect, textCell, top, textCell + Cell, bottom);
    EXPECT_EQ(box[3].kind, PaintKind::DrawRectangle);
    EXPECT_EQ(box[3].color, PaletteRole::Caret);
    EXPECT_FLOAT_EQ(box[3].strokeWidth, 1.0f);
    ExpectRect(box[3].rect, textCell, top, textCell + Cell, bottom);
}

TEST_F(HexViewPaintTest, InsertCaretIsTwoBarsTwoWideOverTheRow)
{
    OpenEditable(Iota(32));
    Focus();
    EnterInsertMode();
    view.MoveCaretTo(5);
    const std::vector<PaintedRow> rows = Rows(false, 0);
    const std::vector<PaintOperation>& bars = rows[0].caret->operations;
    ASSERT_EQ(bars.size(), 2u);
    const float hexCell = HexLeft + 5.0f * 3.0f * Cell;
    const float textCell = TextLeft + 5.0f * Cell;
    ExpectRect(bars[0].rect, hexCell, RowTop(0), hexCell + 2.0f, RowTop(0) + RowHeight());
    ExpectRect(bars[1].rect, textCell, RowTop(0), textCell + 2.0f, RowTop(0) + RowHeight());
    EXPECT_EQ(CountKind(bars, PaintKind::DrawRectangle), 0);
}

TEST_F(HexViewPaintTest, InsertCaretHiddenInTheOffPhaseOfItsBlink)
{
    OpenEditable(Iota(32));
    Focus();
    EnterInsertMode();
    view.OnTimer(HexView::BlinkTimerId);
    ASSERT_FALSE(view.State().caretPhase);
    const std::vector<PaintedRow> rows = Rows(false, 0);
    EXPECT_TRUE(rows[0].caret->operations.empty());
}

TEST_F(HexViewPaintTest, CaretIsDrawnInItsOwnRowOnly)
{
    Open(Iota(64));
    view.MoveCaretTo(40);
    const std::vector<PaintedRow> rows = Rows(false, 2);
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_FALSE(rows[0].caret.has_value());
    EXPECT_FALSE(rows[1].caret.has_value());
    EXPECT_TRUE(rows[2].caret.has_value());
    EXPECT_FALSE(rows[3].caret.has_value());
}

TEST_F(HexViewPaintTest, RebuildingReplacesThePreviousPaint)
{
    Open(Iota(64));
    Paint();
    const std::size_t operations = paint.operations.size();
    const std::size_t text = paint.text.size();
    Paint();
    EXPECT_EQ(paint.operations.size(), operations);
    EXPECT_EQ(paint.text.size(), text);
}

} // namespace
} // namespace tlm::test
