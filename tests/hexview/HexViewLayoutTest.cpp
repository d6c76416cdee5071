#include "hexview/HexViewLayout.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tlm {
namespace {

// Round numbers: cells 10 wide, rows 20 high, so the hex column starts at 8 + 90 + 12 = 110, ends at
// 590, and the text column runs from 602 to 762.
HexViewMetrics RoundMetrics()
{
    HexViewMetrics metrics;
    metrics.rowHeight = 20.0f;
    metrics.hexCellWidth = 10.0f;
    metrics.textCellWidth = 10.0f;
    metrics.offsetWidth = 90.0f;
    metrics.hexWidth = 480.0f;
    metrics.textWidth = 160.0f;
    return metrics;
}

HexViewState Overwrite(std::uint64_t caret = 0)
{
    HexViewState state;
    state.caretOffset = caret;
    return state;
}

HexViewState Insert(std::uint64_t caret)
{
    HexViewState state;
    state.insertMode = HexEditMode::Insert;
    state.caretOffset = caret;
    return state;
}

DocumentExtent Sized(std::uint64_t size)
{
    return {true, size};
}

// 10 whole rows of 20 between the margins, and a viewport of 800 - 110 - 8 = 682.
constexpr ClientSize Client{800, 216};

TEST(HexViewLayout, EmptyDocumentHasNoRowsAndHitsOnlyColumnZeroOfFirstRow)
{
    const HexViewMetrics metrics = RoundMetrics();
    HexViewState state = Overwrite();
    const DocumentExtent empty = Sized(0);
    EXPECT_EQ(RowCount(state, empty), 0u);
    EXPECT_EQ(MaxCaretOffset(state, empty), 0u);
    EXPECT_EQ(MaxCaretOffset(Insert(0), empty), 0u);
    EXPECT_EQ(MaxTopRow(metrics, state, empty, Client), 0u);
    const ScrollBarSettings bars = ClampView(metrics, state, empty, Client);
    EXPECT_EQ(bars.vertical.minimum, 0);
    EXPECT_EQ(bars.vertical.maximum, 0);

    EXPECT_EQ(HitTest(metrics, state, empty, Client, 115, 18), std::optional<std::uint64_t>(0));
    EXPECT_EQ(HitTest(metrics, state, empty, Client, 605, 18), std::optional<std::uint64_t>(0));
    EXPECT_FALSE(HitTest(metrics, state, empty, Client, 145, 18).has_value()); // column 1
    EXPECT_FALSE(HitTest(metrics, state, empty, Client, 115, 38).has_value()); // second row
}

TEST(HexViewLayout, SixteenByteDocumentGainsRowOnlyWhileInsertCaretStandsPastEnd)
{
    const HexViewMetrics metrics = RoundMetrics();
    const ClientSize oneRow{800, 36};
    const DocumentExtent document = Sized(16);
    EXPECT_EQ(RowCount(Overwrite(15), document), 1u);
    EXPECT_EQ(MaxTopRow(metrics, Overwrite(15), document, oneRow), 0u);
    EXPECT_EQ(RowCount(Insert(15), document), 1u);
    EXPECT_EQ(RowCount(Insert(16), document), 2u);
    EXPECT_EQ(MaxTopRow(metrics, Insert(16), document, oneRow), 1u);
    EXPECT_EQ(MaxTopRow(metrics, Insert(15), document, oneRow), 0u);
}

TEST(HexViewLayout, ExtraRowNeedsAFullLastRow)
{
    EXPECT_EQ(RowCount(Insert(17), Sized(17)), 2u);
    EXPECT_EQ(RowCount(Insert(32), Sized(32)), 3u);
    EXPECT_EQ(RowCount(Insert(0), Sized(0)), 0u);
}

TEST(HexViewLayout, MaxCaretOffsetIsLastByteOrOnePastInInsertMode)
{
    EXPECT_EQ(MaxCaretOffset(Overwrite(), Sized(10)), 9u);
    EXPECT_EQ(MaxCaretOffset(Insert(0), Sized(10)), 10u);
    EXPECT_EQ(MaxCaretOffset(Insert(0), DocumentExtent{}), 0u);
}

TEST(HexViewLayout, RowCountRoundsUpToWholeRows)
{
    EXPECT_EQ(RowCount(Overwrite(), Sized(1)), 1u);
    EXPECT_EQ(RowCount(Overwrite(), Sized(16)), 1u);
    EXPECT_EQ(RowCount(Overwrite(), Sized(17)), 2u);
    EXPECT_EQ(RowCount(Overwrite(), Sized(UINT64_MAX)), 0x1000000000000000ull);
}

TEST(HexViewLayout, ShortWindowStillCountsOneVisibleRow)
{
    const HexViewMetrics metrics = RoundMetrics();
    EXPECT_EQ(VisibleRowCount(metrics, ClientSize{800, 35}), 1);
    EXPECT_EQ(VisibleRowCount(metrics, ClientSize{800, 0}), 1);
    EXPECT_EQ(VisibleRowCount(metrics, ClientSize{800, 10}), 1);
}

TEST(HexViewLayout, VisibleRowsCountOnlyWholeRows)
{
    const HexViewMetrics metrics = RoundMetrics();
    EXPECT_EQ(VisibleRowCount(metrics, ClientSize{800, 216}), 10);
    EXPECT_EQ(VisibleRowCount(metrics, ClientSize{800, 235}), 10);
    EXPECT_EQ(VisibleRowCount(metrics, ClientSize{800, 236}), 11);
}

TEST(HexViewLayout, PixelsBecomeLayoutUnitsByDpi)
{
    EXPECT_FLOAT_EQ(ToLayoutUnits(192, 192), 96.0f);
    EXPECT_FLOAT_EQ(ToLayoutUnits(144, 144), 96.0f);
    EXPECT_FLOAT_EQ(ToLayoutUnits(96, 0), 96.0f);
    HexViewMetrics metrics = RoundMetrics();
    metrics.dpi = 192;
    // 432 pixels at 192 dpi are 216 units: ten rows, as at 96 dpi with 216 pixels.
    EXPECT_EQ(VisibleRowCount(metrics, ClientSize{1600, 432}), 10);
}

TEST(HexViewLayout, NarrowWindowHasNoViewportAndScrollsTheWholeContent)
{
    const HexViewMetrics metrics = RoundMetrics();
    const ClientSize narrow{60, 216};
    EXPECT_EQ(ViewportWidth(metrics, narrow), 0);
    EXPECT_EQ(ContentWidth(metrics), 652);
    EXPECT_EQ(MaxHorizontalScroll(metrics, narrow), ContentWidth(metrics));
}

TEST(HexViewLayout, HorizontalExtentFollowsTheColumns)
{
    HexViewMetrics metrics = RoundMetrics();
    metrics.textWidth = 160.4f;
    EXPECT_EQ(ViewportWidth(metrics, ClientSize{500, 216}), 382);
    EXPECT_EQ(ContentWidth(metrics), 653); // rounded up
    EXPECT_EQ(MaxHorizontalScroll(metrics, ClientSize{500, 216}), 653 - 382);
    EXPECT_EQ(MaxHorizontalScroll(metrics, ClientSize{2000, 216}), 0);
}

TEST(HexViewLayout, ClampViewBringsCaretTopAndScrollIntoRange)
{
    const HexViewMetrics metrics = RoundMetrics();
    HexViewState state = Overwrite(1000);
    state.topRow = 500;
    state.horizontalScroll = 9999;
    const ClientSize client{500, 216};
    const ScrollBarSettings bars = ClampView(metrics, state, Sized(320), client);
    EXPECT_EQ(state.caretOffset, 319u);
    EXPECT_EQ(state.topRow, 10u); // 20 rows, 10 visible
    EXPECT_EQ(state.horizontalScroll, 652 - 382);
    EXPECT_EQ(bars.vertical, (ScrollBarValues{0, 19, 10, 10}));
    EXPECT_EQ(bars.horizontal, (ScrollBarValues{0, 651, 382, 652 - 382}));

    state.horizontalScroll = -5;
    ClampView(metrics, state, Sized(320), client);
    EXPECT_EQ(state.horizontalScroll, 0);
}

TEST(HexViewLayout, ClampViewUsesTheClampedCaretForTheExtraRow)
{
    const HexViewMetrics metrics = RoundMetrics();
    HexViewState state = Insert(100);
    state.topRow = 100;
    const ClientSize oneRow{800, 36};
    ClampView(metrics, state, Sized(32), oneRow);
    EXPECT_EQ(state.caretOffset, 32u);
    EXPECT_EQ(state.topRow, 2u); // the caret row past the full last row
}

TEST(HexViewLayout, VerticalBarSaturatesBeyondThirtyTwoGibibytes)
{
    const HexViewMetrics metrics = RoundMetrics();
    const DocumentExtent huge = Sized(0x10000000000ull); // 0x1000000000 rows
    HexViewState state = Overwrite();
    state.topRow = 0x80000005ull;
    const ScrollBarSettings bars = ClampView(metrics, state, huge, Client);
    EXPECT_EQ(state.topRow, 0x80000005ull);
    EXPECT_EQ(bars.vertical.maximum, 0x7FFFFFFF);
    EXPECT_EQ(bars.vertical.position, 0x7FFFFFFF);
}

TEST(HexViewLayout, EnsureCaretVisibleScrollsAsLittleAsNeeded)
{
    const HexViewMetrics metrics = RoundMetrics();
    const DocumentExtent document = Sized(0x1000);
    HexViewState state = Overwrite(0x200); // row 32
    EnsureCaretVisible(metrics, state, document, Client);
    EXPECT_EQ(state.topRow, 23u); // the caret's row becomes the last visible one

    state.caretOffset = 0x150; // row 21, above
    EnsureCaretVisible(metrics, state, document, Client);
    EXPECT_EQ(state.topRow, 21u);

    state.caretOffset = 0x1E0; // row 30, the last visible one
    EnsureCaretVisible(metrics, state, document, Client);
    EXPECT_EQ(state.topRow, 21u);
}

TEST(HexViewLayout, EnsureCaretVisibleFollowsTheHexCellOnly)
{
    const HexViewMetrics metrics = RoundMetrics();
    const DocumentExtent document = Sized(64);
    const ClientSize client{300, 216}; // viewport 182
    HexViewState state = Overwrite(15); // hex cell 450 to 470
    EnsureCaretVisible(metrics, state, document, client);
    EXPECT_EQ(state.horizontalScroll, 470 - 182);

    state.caretOffset = 17; // column 1: 30 to 50
    EnsureCaretVisible(metrics, state, document, client);
    EXPECT_EQ(state.horizontalScroll, 30);

    state.caretOffset = 20; // column 4: 120 to 140, already in view
    EnsureCaretVisible(metrics, state, document, client);
    EXPECT_EQ(state.horizontalScroll, 30);
}

TEST(HexViewLayout, RowGeometryShiftsHexAndTextButNotOffsets)
{
    const HexViewMetrics metrics = RoundMetrics();
    HexViewState state;
    state.horizontalScroll = 40;
    const RowGeometry row = GetRowGeometry(metrics, state, Client, 2);
    EXPECT_FLOAT_EQ(row.top, 48.0f);
    EXPECT_FLOAT_EQ(row.bottom, 68.0f);
    EXPECT_FLOAT_EQ(row.contentLeft, 110.0f);
    EXPECT_FLOAT_EQ(row.contentRight, 792.0f);
    EXPECT_FLOAT_EQ(row.hexLeft, 70.0f);
    EXPECT_FLOAT_EQ(row.hexRight, 550.0f);
    EXPECT_FLOAT_EQ(row.textLeft, 562.0f);
    EXPECT_FLOAT_EQ(row.textRight, 722.0f);
    EXPECT_FLOAT_EQ(HexCellLeft(metrics, row, 3), 160.0f);
    EXPECT_FLOAT_EQ(TextCellLeft(metrics, row, 3), 592.0f);
    EXPECT_FLOAT_EQ(OffsetCharacterLeft(metrics, 4), 48.0f);

    const RowGeometry squeezed = GetRowGeometry(metrics, state, ClientSize{50, 216}, 0);
    EXPECT_FLOAT_EQ(squeezed.contentRight, squeezed.contentLeft);
}

TEST(HexViewLayout, ClickOnTheBlankThirdOfAHexCellSelectsThatCellsByte)
{
    const HexViewMetrics metrics = RoundMetrics();
    const HexViewState state;
    // Cell 2 spans 170 to 200; its digits end at 190.
    EXPECT_EQ(HitTest(metrics, state, Sized(64), Client, 195, 18), std::optional<std::uint64_t>(2));
    EXPECT_EQ(HitTest(metrics, state, Sized(64), Client, 199, 18), std::optional<std::uint64_t>(2));
    EXPECT_EQ(HitTest(metrics, state, Sized(64), Client, 200, 18), std::optional<std::uint64_t>(3));
}

TEST(HexViewLayout, ClickInTheGapBetweenHexAndTextHitsNothing)
{
    const HexViewMetrics metrics = RoundMetrics();
    const HexViewState state;
    EXPECT_FALSE(HitTest(metrics, state, Sized(64), Client, 595, 18).has_value());
    EXPECT_EQ(HitTest(metrics, state, Sized(64), Client, 589, 18), std::optional<std::uint64_t>(15));
    EXPECT_EQ(HitTest(metrics, state, Sized(64), Client, 602, 18), std::optional<std::uint64_t>(0));
}

TEST(HexViewLayout, HitTestMapsTextCellsAndRows)
{
    const HexViewMetrics metrics = RoundMetrics();
    HexViewState state;
    state.topRow = 1;
    EXPECT_EQ(HitTest(metrics, state, Sized(64), Client, 607 + 50, 30), std::optional<std::uint64_t>(16 + 16 + 5));
    EXPECT_FALSE(HitTest(metrics, state, Sized(64), Client, 50, 18).has_value());  // offset column
    EXPECT_FALSE(HitTest(metrics, state, Sized(64), Client, 105, 18).has_value()); // first gap
    EXPECT_FALSE(HitTest(metrics, state, Sized(64), Client, 770, 18).has_value()); // right of the text
}

TEST(HexViewLayout, HitTestNeedsAnOpenDocument)
{
    EXPECT_FALSE(HitTest(RoundMetrics(), HexViewState{}, DocumentExtent{}, Client, 115, 18).has_value());
}

TEST(HexViewLayout, HitTestIgnoresTheMarginsAndPartRows)
{
    const HexViewMetrics metrics = RoundMetrics();
    const HexViewState state;
    const ClientSize client{800, 226}; // ten whole rows end at 208; the cut row lies below
    EXPECT_FALSE(HitTest(metrics, state, Sized(4096), client, 115, 7).has_value());
    EXPECT_EQ(HitTest(metrics, state, Sized(4096), client, 115, 8), std::optional<std::uint64_t>(0));
    EXPECT_EQ(HitTest(metrics, state, Sized(4096), client, 115, 207), std::optional<std::uint64_t>(144));
    EXPECT_FALSE(HitTest(metrics, state, Sized(4096), client, 115, 212).has_value());
    EXPECT_FALSE(HitTest(metrics, state, Sized(4096), client, 115, 220).has_value()); // bottom margin
}

TEST(HexViewLayout, ClickBehindAShortLastRowHitsNothing)
{
    const HexViewMetrics metrics = RoundMetrics();
    const HexViewState state;
    EXPECT_EQ(HitTest(metrics, state, Sized(20), Client, 145, 38), std::optional<std::uint64_t>(17));
    EXPECT_FALSE(HitTest(metrics, state, Sized(20), Client, 235, 38).has_value()); // column 4 of row 1
    EXPECT_FALSE(HitTest(metrics, state, Sized(20), Client, 115, 58).has_value()); // row 2
}

TEST(HexViewLayout, ClickPastTheEndHitsNothingInInsertModeToo)
{
    const HexViewMetrics metrics = RoundMetrics();
    EXPECT_FALSE(HitTest(metrics, Insert(16), Sized(16), Client, 115, 38).has_value());
}

TEST(HexViewLayout, HexCellsScrolledUnderTheOffsetColumnStillHit)
{
    const HexViewMetrics metrics = RoundMetrics();
    HexViewState state;
    state.horizontalScroll = 100; // the hex column now starts at 10
    EXPECT_EQ(HitTest(metrics, state, Sized(64), Client, 15, 18), std::optional<std::uint64_t>(0));
}

TEST(HexViewLayout, HitTestScalesPixelsByDpi)
{
    HexViewMetrics metrics = RoundMetrics();
    metrics.dpi = 192;
    // 230 pixels at 192 dpi are 115 units: cell 0.
    EXPECT_EQ(HitTest(metrics, HexViewState{}, Sized(64), ClientSize{1600, 432}, 230, 36), std::optional<std::uint64_t>(0));
    EXPECT_EQ(HitTest(metrics, HexViewState{}, Sized(64), ClientSize{1600, 432}, 290, 36), std::optional<std::uint64_t>(1));
}

} // namespace
} // namespace tlm
