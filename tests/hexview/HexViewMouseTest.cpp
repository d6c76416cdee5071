#include "HexViewFixture.h"

#include "hexview/VirtualKey.h"

#include <gtest/gtest.h>

namespace tlm::test {
namespace {

using HexViewMouse = HexViewFixture;

TEST_F(HexViewMouse, ClickPutsTheCaretAndAOneByteSelectionOnTheByte)
{
    Open(Iota(64));
    const Point cell = HexCell(1, 3);
    EXPECT_TRUE(view.OnLeftButtonDown(cell.x, cell.y));
    EXPECT_EQ(host.focusRequests, 1);
    EXPECT_TRUE(host.captured);
    EXPECT_TRUE(view.State().dragging);
    EXPECT_EQ(view.State().dragAnchor, std::optional<std::uint64_t>(19));
    EXPECT_EQ(view.State().caretOffset, 19u);
    ASSERT_TRUE(view.Selection().has_value());
    EXPECT_EQ(view.Selection()->first, 19u);
    EXPECT_EQ(view.Selection()->last, 19u);
    EXPECT_EQ(host.posted, std::vector<AppMessage>{AppMessage::ViewChanged});
}

TEST_F(HexViewMouse, TextColumnAndHexColumnActAlike)
{
    Open(Iota(64));
    Click(TextCell(2, 7));
    EXPECT_EQ(view.State().caretOffset, 39u);
    EXPECT_EQ(view.Selection()->first, 39u);
}

TEST_F(HexViewMouse, ButtonUpEndsTheDragAndTheCaptureChangeDropsTheAnchor)
{
    Open(Iota(64));
    const Point cell = HexCell(0, 5);
    view.OnLeftButtonDown(cell.x, cell.y);
    view.SetHost(host.Host(nullptr)); // a window that does not report the capture change at once
    EXPECT_TRUE(view.OnLeftButtonUp());
    EXPECT_FALSE(view.State().dragging);
    EXPECT_FALSE(host.captured);
    EXPECT_TRUE(view.State().dragAnchor.has_value()); // until the capture changes
    EXPECT_TRUE(view.OnCaptureChanged());
    EXPECT_FALSE(view.State().dragAnchor.has_value());
    EXPECT_TRUE(view.State().selectionActive);
}

TEST_F(HexViewMouse, ButtonUpWithoutADragReleasesNothing)
{
    Open(Iota(64));
    host.captured = true; // somebody else's capture
    view.OnLeftButtonUp();
    EXPECT_TRUE(host.captured);
}

TEST_F(HexViewMouse, DragFromTwentyBackToFiveSelectsFiveToTwentyWithTheCaretAtTwenty)
{
    Open(Iota(64));
    const Point from = HexCell(1, 4);
    const Point to = HexCell(0, 5);
    view.OnLeftButtonDown(from.x, from.y);
    view.OnMouseMove(to.x, to.y);
    view.OnLeftButtonUp();
    ASSERT_TRUE(view.Selection().has_value());
    EXPECT_EQ(view.Selection()->first, 5u);
    EXPECT_EQ(view.Selection()->last, 20u);
    EXPECT_EQ(view.State().selectionAnchor, 20u);
    EXPECT_EQ(view.State().selectionEnd, 5u);
    EXPECT_EQ(view.State().caretOffset, 20u);
}

TEST_F(HexViewMouse, DragOffTheGridStopsGrowingTheSelection)
{
    Open(Iota(64));
    const Point from = HexCell(0, 2);
    const Point to = HexCell(0, 9);
    view.OnLeftButtonDown(from.x, from.y);
    view.OnMouseMove(to.x, to.y);
    view.OnMouseMove(700, to.y); // right of the text column
    view.OnMouseMove(to.x, 590); // below the last row
    EXPECT_EQ(view.Selection()->first, 2u);
    EXPECT_EQ(view.Selection()->last, 9u);
    EXPECT_EQ(view.State().topRow, 0u); // no scrolling while dragging
}

TEST_F(HexViewMouse, MovingWithoutTheButtonSelectsNothing)
{
    Open(Iota(64));
    const Point to = HexCell(0, 9);
    view.OnMouseMove(to.x, to.y);
    EXPECT_FALSE(view.State().selectionActive);
}

TEST_F(HexViewMouse, MovingAfterTheCaptureEndedSelectsNothingMore)
{
    Open(Iota(64));
    Click(HexCell(0, 2));
    const Point to = HexCell(0, 9);
    view.OnMouseMove(to.x, to.y);
    EXPECT_EQ(view.Selection()->last, 2u);
}

TEST_F(HexViewMouse, ClickThatMissesKeepsTheSelection)
{
    Open(Iota(64));
    view.MoveCaretTo(3);
    view.SelectRange(3, 8);
    host.ClearLog();
    view.OnLeftButtonDown(20, 20); // offset column
    EXPECT_EQ(host.focusRequests, 1);
    EXPECT_FALSE(host.captured);
    EXPECT_TRUE(view.State().selectionActive);
    EXPECT_EQ(view.State().caretOffset, 3u);
    EXPECT_TRUE(host.posted.empty());
}

TEST_F(HexViewMouse, ClickBehindTheEndOfAShortRowHitsNothing)
{
    Open(Iota(20));
    Click(HexCell(1, 8));
    EXPECT_EQ(view.State().caretOffset, 0u);
    EXPECT_FALSE(view.State().selectionActive);
}

TEST_F(HexViewMouse, AClickLosesAHeldDigitWithoutWritingIt)
{
    Open(Iota(32));
    view.ToggleEditing();
    view.OnKeyDown(VirtualKey::Insert, false);
    view.OnChar(u'7');
    ASSERT_TRUE(view.State().nibblePending);
    Click(HexCell(1, 1));
    EXPECT_FALSE(view.State().nibblePending);
    EXPECT_EQ(document.bytes, Iota(32));
}

TEST_F(HexViewMouse, ClickOnAScrolledViewHitsTheRowsShown)
{
    Open(Iota(16 * 100));
    view.OnVerticalScroll(ScrollCommand::ThumbTrack, 40);
    Click(HexCell(2, 0));
    EXPECT_EQ(view.State().caretOffset, 42u * 16u);
    EXPECT_EQ(view.State().topRow, 40u);
}

TEST_F(HexViewMouse, ClicksAtHighDpiHitTheSameBytes)
{
    host.dpi = 192;
    host.client = {1600, 1200};
    Open(Iota(64));
    // Hex cell 3 of the second row spans 164 to 188 units across and 29.6 to 51.2 down: twice that in pixels.
    view.OnLeftButtonDown(2 * 170, 2 * 40);
    EXPECT_EQ(view.State().caretOffset, 19u);
    view.OnLeftButtonDown(2 * 187, 2 * 51);
    EXPECT_EQ(view.State().caretOffset, 19u);
    view.OnLeftButtonDown(2 * 189, 2 * 40);
    EXPECT_EQ(view.State().caretOffset, 20u);
}

} // namespace
} // namespace tlm::test
