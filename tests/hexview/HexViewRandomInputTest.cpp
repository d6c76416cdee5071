// Long random sequences of platform events over a small document: whatever arrives, the view keeps its
// invariants and the document stays a plain byte sequence that a model can follow.
#include "HexViewFixture.h"

#include "hexview/VirtualKey.h"

#include <gtest/gtest.h>

#include <random>

namespace tlm::test {
namespace {

class HexViewRandomInput : public HexViewFixture {
protected:
    void CheckInvariants(int step)
    {
        const DocumentExtent extent = view.Extent();
        const HexViewEditState& state = view.State();
        ASSERT_LE(state.caretOffset, MaxCaretOffset(state, extent)) << step;
        ASSERT_LE(state.topRow, MaxTopRow(view.Metrics(), state, extent, view.Client())) << step;
        ASSERT_GE(state.horizontalScroll, 0) << step;
        ASSERT_LE(state.horizontalScroll, MaxHorizontalScroll(view.Metrics(), view.Client())) << step;
        if (state.selectionActive) {
            ASSERT_LE(state.selectionAnchor, LastByte(extent)) << step;
            ASSERT_LE(state.selectionEnd, LastByte(extent)) << step;
        }
        ASSERT_TRUE(std::isfinite(view.Metrics().rowHeight));
        for (AppMessage message : host.posted) {
            ASSERT_TRUE(message == AppMessage::ViewChanged || message == AppMessage::ReadOnlyBlocked) << step;
        }
        for (AppMessage message : host.sent) {
            ASSERT_EQ(message, AppMessage::ZoomChanged) << step;
        }
        host.ClearLog();
    }
};

TEST_F(HexViewRandomInput, AnySequenceOfEventsKeepsTheViewInRange)
{
    static constexpr std::uint32_t keys[] = {VirtualKey::Left, VirtualKey::Right, VirtualKey::Up, VirtualKey::Down,
        VirtualKey::PageUp, VirtualKey::PageDown, VirtualKey::Home, VirtualKey::End, VirtualKey::Escape,
        VirtualKey::Insert, VirtualKey::Delete, VirtualKey::Back, VirtualKey::C, 0x41, 0x70};
    static constexpr char16_t characters[] = u"0123456789abcdefABCDEFgz \r";
    std::mt19937 random(20240611);
    const auto pick = [&random](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };

    Open(Iota(300));
    int steps = 0;
    for (int step = 0; step < 20000; ++step) {
        switch (pick(0, 13)) {
        case 0:
        case 1:
        case 2:
            view.OnKeyDown(keys[pick(0, std::size(keys) - 1)], pick(0, 3) == 0);
            break;
        case 3:
        case 4:
            view.OnChar(characters[pick(0, std::size(characters) - 2)]);
            break;
        case 5:
            view.OnLeftButtonDown(pick(-50, 900), pick(-50, 700));
            break;
        case 6:
            view.OnMouseMove(pick(-50, 900), pick(-50, 700));
            break;
        case 7:
            view.OnLeftButtonUp();
            break;
        case 8:
            view.OnMouseWheel(pick(-240, 240), pick(0, 5) == 0);
            break;
        case 9:
            view.OnVerticalScroll(static_cast<ScrollCommand>(pick(0, 9)), pick(-10, 100));
            view.OnHorizontalScroll(static_cast<ScrollCommand>(pick(0, 9)), pick(-10, 1000));
            break;
        case 10:
            host.client = {pick(0, 1200), pick(0, 900)};
            view.OnResize();
            break;
        case 11:
            if (pick(0, 20) == 0) {
                view.ToggleEditing();
            } else if (pick(0, 10) == 0) {
                view.OnDpiChanged(static_cast<std::uint32_t>(pick(0, 3) * 48));
            } else {
                view.SelectRange(static_cast<std::uint64_t>(pick(0, 400)), static_cast<std::uint64_t>(pick(0, 400)));
            }
            break;
        case 12:
            if (pick(0, 30) == 0) {
                view.SetFont(u"Consolas", static_cast<float>(pick(0, 120)), pick(0, 1) == 1, false);
            } else {
                view.OnTimer(static_cast<std::uint32_t>(pick(0, 2)));
            }
            break;
        default:
            if (document.bytes.size() < 40 && pick(0, 3) == 0) {
                document.bytes = Iota(static_cast<std::size_t>(pick(0, 600)));
                view.SetDocument(&document);
            }
            break;
        }
        CheckInvariants(step);
        if (HasFatalFailure()) {
            return;
        }
        steps = step + 1;
    }
    EXPECT_EQ(steps, 20000);
    EXPECT_TRUE(document.modified); // the sequence did reach the editing paths
}

TEST(HexViewWithoutHost, AViewWithNoWindowAndNoTextEngineStillWorks)
{
    MemoryDocument document(Iota(100));
    HexView view;
    view.SetDocument(&document);
    EXPECT_EQ(view.Metrics().hexWidth, 0.0f); // no text format could be had
    EXPECT_EQ(view.Metrics().rowHeight, 17.0f);
    view.ToggleEditing();
    view.OnKeyDown(VirtualKey::Insert, false);
    view.OnChar(u'4');
    view.OnChar(u'2');
    EXPECT_EQ(document.bytes.front(), 0x42);
    view.OnKeyDown(VirtualKey::Back, false);
    EXPECT_EQ(document.bytes, Iota(100));
    view.SelectRange(0, 3);
    view.CopySelectionAsHex();
    view.OnLeftButtonDown(10, 10);
    view.OnMouseWheel(-120, false);
    view.OnMouseWheel(120, true);
    view.OnSetFocus();
    view.OnTimer(HexView::BlinkTimerId);
    view.OnResize();
    EXPECT_LE(view.State().topRow, MaxTopRow(view.Metrics(), view.State(), view.Extent(), view.Client()));
    EXPECT_FLOAT_EQ(view.Metrics().zoom, 1.1f);
}

} // namespace
} // namespace tlm::test
