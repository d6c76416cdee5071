#include "HexViewFixture.h"

#include "hexview/HexView.h"
#include "hexview/VirtualKey.h"

#include <gtest/gtest.h>

namespace tlm::test {
namespace {

using HexViewBasics = HexViewFixture;

TEST_F(HexViewBasics, NewDocumentStartsAtTheTopReadOnlyAndFocused)
{
    document.bytes = Iota(4096);
    view.SetDocument(&document);
    view.ToggleEditing();
    view.MoveCaretTo(3000);
    view.SelectRange(10, 20);
    view.OnHorizontalScroll(ScrollCommand::Bottom, 0);
    host.ClearLog();

    MemoryDocument other(Iota(100));
    view.SetDocument(&other);
    EXPECT_EQ(view.State().caretOffset, 0u);
    EXPECT_EQ(view.State().topRow, 0u);
    EXPECT_EQ(view.State().horizontalScroll, 0);
    EXPECT_FALSE(view.State().selectionActive);
    EXPECT_FALSE(view.State().dragAnchor.has_value());
    EXPECT_FALSE(view.IsEditingEnabled());
    EXPECT_TRUE(view.State().firstPaintPending);
    EXPECT_EQ(host.focusRequests, 1);
    EXPECT_GE(host.redraws, 1);
    EXPECT_GE(host.graphicsReleases, 1);
    ASSERT_TRUE(host.bars.has_value());
    EXPECT_EQ(host.bars->vertical.maximum, 6);
}

TEST_F(HexViewBasics, NewDocumentKeepsModeFocusAndEncoding)
{
    OpenEditable(Iota(64));
    view.OnSetFocus();
    EnterInsertMode();
    view.SetEncoding(TextEncoding::ShiftJis);
    Type(u"1");
    ASSERT_TRUE(view.State().nibblePending);

    MemoryDocument other(Iota(10));
    view.SetDocument(&other);
    EXPECT_EQ(view.State().insertMode, HexEditMode::Insert);
    EXPECT_TRUE(view.State().hasFocus);
    EXPECT_FALSE(view.State().nibblePending);
    EXPECT_EQ(view.Encoding(), TextEncoding::ShiftJis);
}

TEST_F(HexViewBasics, NewDocumentReadsTheWindowDpi)
{
    host.dpi = 144;
    Open(Iota(16));
    EXPECT_EQ(view.Metrics().dpi, 144u);
    host.dpi = 0; // no window yet
    view.SetDocument(&document);
    EXPECT_EQ(view.Metrics().dpi, 96u);
}

TEST_F(HexViewBasics, NewDocumentMeasuresTheFont)
{
    Open(Iota(16));
    EXPECT_FLOAT_EQ(view.Metrics().rowHeight, 21.6f);
    EXPECT_EQ(view.Metrics().hexCellWidth, 8.0f);
    EXPECT_EQ(view.Metrics().offsetWidth, 72.0f);
}

TEST_F(HexViewBasics, OffsetColumnWidensAtFourGibibytes)
{
    SizedDocument below(0xFFFFFFFFull);
    view.SetDocument(&below);
    const float narrow = view.Metrics().offsetWidth;
    const RowGeometry narrowRow = GetRowGeometry(view.Metrics(), view.State(), view.Client(), 0);
    EXPECT_EQ(narrow, 9.0f * view.Metrics().hexCellWidth);

    SizedDocument at(0x100000000ull);
    view.SetDocument(&at);
    EXPECT_EQ(view.Metrics().offsetWidth, 17.0f * view.Metrics().hexCellWidth);
    const RowGeometry wideRow = GetRowGeometry(view.Metrics(), view.State(), view.Client(), 0);
    EXPECT_FLOAT_EQ(wideRow.hexLeft - narrowRow.hexLeft, 8.0f * view.Metrics().hexCellWidth);
    EXPECT_FLOAT_EQ(wideRow.textLeft - narrowRow.textLeft, 8.0f * view.Metrics().hexCellWidth);
}

TEST_F(HexViewBasics, ClosedDocumentShowsNothing)
{
    document.bytes = Iota(64);
    document.open = false;
    view.SetDocument(&document);
    EXPECT_FALSE(view.Extent().isOpen);
    EXPECT_EQ(RowCount(view.State(), view.Extent()), 0u);
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Right, false)); // swallowed
    EXPECT_EQ(view.State().caretOffset, 0u);
    EXPECT_TRUE(host.posted.empty());
}

TEST_F(HexViewBasics, NullDocumentIsAccepted)
{
    view.SetDocument(nullptr);
    EXPECT_FALSE(view.Extent().isOpen);
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Down, false));
    EXPECT_TRUE(view.OnChar(u'1')); // the read-only refusal comes before the document is looked at
    EXPECT_EQ(host.posted, std::vector<AppMessage>{AppMessage::ReadOnlyBlocked});
    EXPECT_FALSE(view.OnChar(u'x'));
    EXPECT_TRUE(view.OnLeftButtonDown(100, 20));
}

TEST_F(HexViewBasics, ZoomingPastTheTopChangesNothingAndSendsNothing)
{
    Open(Iota(16));
    for (int i = 0; i < 40; ++i) {
        view.StepZoom(ZoomStep);
    }
    EXPECT_FLOAT_EQ(view.Metrics().zoom, 2.5f);
    host.ClearLog();
    const float rowHeight = view.Metrics().rowHeight;
    view.StepZoom(ZoomStep);
    EXPECT_TRUE(host.sent.empty());
    EXPECT_EQ(host.redraws, 0);
    EXPECT_EQ(view.Metrics().rowHeight, rowHeight);
}

TEST_F(HexViewBasics, ZoomingPastTheBottomChangesNothingAndSendsNothing)
{
    Open(Iota(16));
    for (int i = 0; i < 10; ++i) {
        view.StepZoom(-ZoomStep);
    }
    EXPECT_FLOAT_EQ(view.Metrics().zoom, 0.6f);
    host.ClearLog();
    view.StepZoom(-ZoomStep);
    EXPECT_TRUE(host.sent.empty());
    EXPECT_EQ(host.redraws, 0);
}

TEST_F(HexViewBasics, ZoomSendsZoomChangedAndRemeasures)
{
    Open(Iota(16));
    view.StepZoom(ZoomStep);
    EXPECT_FLOAT_EQ(view.Metrics().zoom, 1.1f);
    EXPECT_FLOAT_EQ(view.Metrics().fontSize, 17.6f);
    EXPECT_FLOAT_EQ(view.Metrics().hexCellWidth, 8.8f);
    EXPECT_EQ(host.sent, std::vector<AppMessage>{AppMessage::ZoomChanged});
    EXPECT_TRUE(host.posted.empty());
    EXPECT_GE(host.redraws, 1);
    EXPECT_GE(host.graphicsReleases, 1);
}

TEST_F(HexViewBasics, ResetZoomReturnsToOneOnlyWhenAway)
{
    Open(Iota(16));
    view.ResetZoom();
    EXPECT_TRUE(host.sent.empty());
    view.StepZoom(-ZoomStep);
    view.StepZoom(-ZoomStep);
    host.ClearLog();
    view.ResetZoom();
    EXPECT_EQ(view.Metrics().zoom, 1.0f);
    EXPECT_EQ(host.sent, std::vector<AppMessage>{AppMessage::ZoomChanged});
}

TEST_F(HexViewBasics, AFontOfAHundredPointsActsAsFortyEight)
{
    Open(Iota(16));
    view.SetFont(u"Consolas", 100.0f, false, false);
    EXPECT_FLOAT_EQ(view.Metrics().baseFontSize, 64.0f);
    host.ClearLog();
    view.SetFont(u"consolas", 48.0f, false, false);
    EXPECT_TRUE(host.posted.empty()); // the same font
}

TEST_F(HexViewBasics, FontChangeRemeasuresAndNotifies)
{
    Open(Iota(16));
    view.SetFont(u"Courier New", 9.0f, true, false);
    EXPECT_EQ(view.Font().family, u"Courier New");
    EXPECT_TRUE(view.Font().bold);
    EXPECT_FLOAT_EQ(view.Metrics().baseFontSize, 12.0f);
    EXPECT_FLOAT_EQ(view.Metrics().hexCellWidth, 6.0f);
    EXPECT_EQ(host.posted, std::vector<AppMessage>{AppMessage::ViewChanged});
    EXPECT_GE(host.redraws, 1);
}

TEST_F(HexViewBasics, SameFontChangesNothing)
{
    Open(Iota(16));
    view.SetFont(u"CONSOLAS", 12.0f, false, false);
    EXPECT_TRUE(host.posted.empty());
    EXPECT_EQ(host.redraws, 0);
    EXPECT_EQ(view.Font().family, u"Consolas");
}

TEST_F(HexViewBasics, EncodingChangeRedrawsOnlyWhenDifferent)
{
    Open(Iota(16));
    view.SetEncoding(TextEncoding::Ascii);
    EXPECT_EQ(host.redraws, 0);
    view.SetEncoding(TextEncoding::Utf8);
    EXPECT_EQ(host.redraws, 1);
    EXPECT_EQ(view.Encoding(), TextEncoding::Utf8);
}

TEST_F(HexViewBasics, ResizeClampsWithoutRemeasuring)
{
    Open(Iota(1600)); // 100 rows
    view.OnVerticalScroll(ScrollCommand::Bottom, 0);
    const std::uint64_t bottom = view.State().topRow;
    host.client.height = 2000;
    host.ClearLog();
    const float rowHeight = view.Metrics().rowHeight;
    EXPECT_TRUE(view.OnResize());
    EXPECT_LT(view.State().topRow, bottom);
    EXPECT_EQ(view.State().topRow, MaxTopRow(view.Metrics(), view.State(), view.Extent(), view.Client()));
    EXPECT_EQ(view.Metrics().rowHeight, rowHeight);
    EXPECT_EQ(host.redraws, 1);
    EXPECT_EQ(host.graphicsReleases, 1);
    EXPECT_TRUE(host.posted.empty());
}

TEST_F(HexViewBasics, DpiChangeStoresTheDpiAndRemeasures)
{
    Open(Iota(16));
    EXPECT_TRUE(view.OnDpiChanged(192));
    EXPECT_EQ(view.Metrics().dpi, 192u);
    EXPECT_GE(host.redraws, 1);
    EXPECT_GE(host.graphicsReleases, 1);
    view.OnDpiChanged(0);
    EXPECT_EQ(view.Metrics().dpi, 96u);
}

TEST_F(HexViewBasics, VerticalScrollCommands)
{
    Open(Iota(16 * 200));
    const auto page = static_cast<std::uint64_t>(VisibleRowCount(view.Metrics(), view.Client()));
    ASSERT_EQ(page, 27u); // (600 - 16) / 21.6

    view.OnVerticalScroll(ScrollCommand::LineDown, 0);
    EXPECT_EQ(view.State().topRow, 1u);
    EXPECT_EQ(host.CountPosted(AppMessage::ViewChanged), 1);
    view.OnVerticalScroll(ScrollCommand::LineUp, 0);
    view.OnVerticalScroll(ScrollCommand::LineUp, 0);
    EXPECT_EQ(view.State().topRow, 0u);
    view.OnVerticalScroll(ScrollCommand::PageDown, 0);
    EXPECT_EQ(view.State().topRow, page);
    view.OnVerticalScroll(ScrollCommand::LineDown, 0);
    view.OnVerticalScroll(ScrollCommand::PageUp, 0);
    EXPECT_EQ(view.State().topRow, 1u);
    view.OnVerticalScroll(ScrollCommand::PageUp, 0); // not above the page: to the top
    EXPECT_EQ(view.State().topRow, 0u);
    view.OnVerticalScroll(ScrollCommand::ThumbTrack, 42);
    EXPECT_EQ(view.State().topRow, 42u);
    view.OnVerticalScroll(ScrollCommand::ThumbPosition, 50);
    EXPECT_EQ(view.State().topRow, 50u);
    view.OnVerticalScroll(ScrollCommand::Bottom, 0);
    EXPECT_EQ(view.State().topRow, 200u - page);
    view.OnVerticalScroll(ScrollCommand::PageDown, 0);
    EXPECT_EQ(view.State().topRow, 200u - page);
    view.OnVerticalScroll(ScrollCommand::Top, 0);
    EXPECT_EQ(view.State().topRow, 0u);
    ASSERT_TRUE(host.bars.has_value());
    EXPECT_EQ(host.bars->vertical.position, 0);
}

TEST_F(HexViewBasics, EndOfScrollChangesNothing)
{
    Open(Iota(16 * 200));
    view.OnVerticalScroll(ScrollCommand::ThumbTrack, 7);
    host.ClearLog();
    EXPECT_TRUE(view.OnVerticalScroll(ScrollCommand::EndScroll, 0));
    EXPECT_EQ(view.State().topRow, 7u);
    EXPECT_TRUE(host.posted.empty());
}

TEST_F(HexViewBasics, HorizontalScrollCommandsDoNotNotify)
{
    host.client.width = 300; // viewport 300 - 92 - 8 = 200, content 524
    Open(Iota(64));
    view.OnHorizontalScroll(ScrollCommand::LineDown, 0);
    EXPECT_EQ(view.State().horizontalScroll, 8);
    view.OnHorizontalScroll(ScrollCommand::PageDown, 0);
    EXPECT_EQ(view.State().horizontalScroll, 208);
    view.OnHorizontalScroll(ScrollCommand::PageDown, 0);
    EXPECT_EQ(view.State().horizontalScroll, 324);
    view.OnHorizontalScroll(ScrollCommand::PageUp, 0);
    EXPECT_EQ(view.State().horizontalScroll, 124);
    view.OnHorizontalScroll(ScrollCommand::LineUp, 0);
    EXPECT_EQ(view.State().horizontalScroll, 116);
    view.OnHorizontalScroll(ScrollCommand::ThumbTrack, 30);
    EXPECT_EQ(view.State().horizontalScroll, 30);
    view.OnHorizontalScroll(ScrollCommand::Top, 0);
    EXPECT_EQ(view.State().horizontalScroll, 0);
    view.OnHorizontalScroll(ScrollCommand::LineUp, 0);
    EXPECT_EQ(view.State().horizontalScroll, 0);
    view.OnHorizontalScroll(ScrollCommand::Bottom, 0);
    EXPECT_EQ(view.State().horizontalScroll, 324);
    EXPECT_TRUE(host.posted.empty());
    EXPECT_GE(host.redraws, 1);
    ASSERT_TRUE(host.bars.has_value());
    EXPECT_EQ(host.bars->horizontal, (ScrollBarValues{0, 523, 200, 324}));
}

TEST_F(HexViewBasics, WheelScrollsThreeRowsWhateverTheDelta)
{
    Open(Iota(16 * 200));
    view.OnMouseWheel(-120, false);
    EXPECT_EQ(view.State().topRow, 3u);
    view.OnMouseWheel(-960, false);
    EXPECT_EQ(view.State().topRow, 6u);
    view.OnMouseWheel(1, false);
    EXPECT_EQ(view.State().topRow, 3u);
    view.OnMouseWheel(120, false);
    view.OnMouseWheel(120, false);
    EXPECT_EQ(view.State().topRow, 0u);
    EXPECT_EQ(host.CountPosted(AppMessage::ViewChanged), 5);
}

TEST_F(HexViewBasics, WheelDeltaZeroScrollsDownAndZoomsOutUnderCtrl)
{
    Open(Iota(16 * 200));
    view.OnMouseWheel(0, false);
    EXPECT_EQ(view.State().topRow, 3u);
    view.OnMouseWheel(0, true);
    EXPECT_FLOAT_EQ(view.Metrics().zoom, 0.9f);
    view.OnMouseWheel(120, true);
    EXPECT_FLOAT_EQ(view.Metrics().zoom, 1.0f);
}

TEST_F(HexViewBasics, BeyondThe32BitBarTheWheelKeepsScrolling)
{
    SizedDocument huge(0x10000000000ull); // 0x1000000000 rows
    view.SetDocument(&huge);
    view.OnVerticalScroll(ScrollCommand::ThumbTrack, 0x7FFFFFFF);
    EXPECT_EQ(view.State().topRow, 0x7FFFFFFFull);
    view.OnMouseWheel(-120, false);
    view.OnMouseWheel(-120, false);
    EXPECT_EQ(view.State().topRow, 0x7FFFFFFFull + 6);
    ASSERT_TRUE(host.bars.has_value());
    EXPECT_EQ(host.bars->vertical.maximum, 0x7FFFFFFF);
    EXPECT_EQ(host.bars->vertical.position, 0x7FFFFFFF);
    view.OnKeyDown(0x23, true); // Ctrl+End still reaches the last byte
    EXPECT_EQ(view.State().caretOffset, 0x10000000000ull - 1);
    EXPECT_EQ(view.State().topRow, 0x1000000000ull - 27);
}

TEST_F(HexViewBasics, BlinkTimerRunsOnlyInInsertModeWithFocus)
{
    OpenEditable(Iota(64));
    view.OnSetFocus();
    EXPECT_TRUE(host.timers.empty());
    EXPECT_GE(host.timerKills, 1);

    view.OnKeyDown(VirtualKey::Insert, false);
    ASSERT_EQ(host.timers.count(HexView::BlinkTimerId), 1u);
    EXPECT_EQ(host.timers[HexView::BlinkTimerId], 530u);

    view.OnKillFocus();
    EXPECT_TRUE(host.timers.empty());
    EXPECT_FALSE(view.State().hasFocus);
    EXPECT_FALSE(view.State().caretPhase);

    host.blinkTime = 50;
    view.OnSetFocus();
    EXPECT_EQ(host.timers[HexView::BlinkTimerId], 200u); // never faster than 200 ms
    EXPECT_TRUE(view.State().caretPhase);

    view.OnKeyDown(VirtualKey::Insert, false);
    EXPECT_TRUE(host.timers.empty());
}

TEST_F(HexViewBasics, BlinkTimerFlipsThePhase)
{
    Open(Iota(16));
    view.OnSetFocus();
    host.ClearLog();
    EXPECT_TRUE(view.OnTimer(HexView::BlinkTimerId));
    EXPECT_FALSE(view.State().caretPhase);
    EXPECT_EQ(host.redraws, 1);
    view.OnTimer(HexView::BlinkTimerId);
    EXPECT_TRUE(view.State().caretPhase);
    EXPECT_FALSE(view.OnTimer(7));
}

TEST_F(HexViewBasics, InsertKeyRestartsTheBlinkInTheVisiblePhase)
{
    OpenEditable(Iota(64));
    view.OnSetFocus();
    view.OnKeyDown(VirtualKey::Insert, false);
    view.OnTimer(HexView::BlinkTimerId);
    ASSERT_FALSE(view.State().caretPhase);
    view.OnKeyDown(VirtualKey::Insert, false);
    view.OnKeyDown(VirtualKey::Insert, false);
    EXPECT_TRUE(view.State().caretPhase);
    EXPECT_EQ(host.timers.count(HexView::BlinkTimerId), 1u);
}

TEST_F(HexViewBasics, ToggleEditingClearsThePendingDigitAndNotifies)
{
    OpenEditable(Iota(16));
    Type(u"7");
    ASSERT_TRUE(view.State().nibblePending);
    host.ClearLog();
    view.ToggleEditing();
    EXPECT_FALSE(view.IsEditingEnabled());
    EXPECT_FALSE(view.State().nibblePending);
    EXPECT_EQ(host.posted, std::vector<AppMessage>{AppMessage::ViewChanged});
    EXPECT_EQ(host.redraws, 1);
    view.ToggleEditing();
    EXPECT_TRUE(view.IsEditingEnabled());
}

TEST_F(HexViewBasics, ShowFoundRangeSelectsAndScrollsToTheHit)
{
    Open(Iota(16 * 200));
    view.ToggleEditing();
    Type(u"4");
    host.ClearLog();
    view.ShowFoundRange(0x800, 4);
    EXPECT_FALSE(view.State().nibblePending);
    ASSERT_TRUE(view.Selection().has_value());
    EXPECT_EQ(view.Selection()->first, 0x800u);
    EXPECT_EQ(view.Selection()->last, 0x803u);
    EXPECT_EQ(view.State().caretOffset, 0x800u);
    EXPECT_EQ(view.State().topRow, 0x80u - 26);
    EXPECT_EQ(host.posted, std::vector<AppMessage>{AppMessage::ViewChanged});
}

} // namespace
} // namespace tlm::test
