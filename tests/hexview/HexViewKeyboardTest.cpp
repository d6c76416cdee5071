#include "HexViewFixture.h"

#include "hexview/VirtualKey.h"

#include <gtest/gtest.h>

namespace tlm::test {
namespace {

using HexViewKeyboard = HexViewFixture;

TEST_F(HexViewKeyboard, ArrowsMoveByByteAndRow)
{
    Open(Iota(100));
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Right, false));
    EXPECT_EQ(view.State().caretOffset, 1u);
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Down, false));
    EXPECT_EQ(view.State().caretOffset, 17u);
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Left, true)); // Ctrl changes nothing here
    EXPECT_EQ(view.State().caretOffset, 16u);
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Up, false));
    EXPECT_EQ(view.State().caretOffset, 0u);
    EXPECT_EQ(host.CountPosted(AppMessage::ViewChanged), 4);
}

TEST_F(HexViewKeyboard, MovesStopAtTheEnds)
{
    Open(Iota(20));
    view.OnKeyDown(VirtualKey::Up, false);
    EXPECT_EQ(view.State().caretOffset, 0u);
    view.OnKeyDown(VirtualKey::Left, false);
    EXPECT_EQ(view.State().caretOffset, 0u);
    view.MoveCaretTo(10);
    view.OnKeyDown(VirtualKey::Down, false);
    EXPECT_EQ(view.State().caretOffset, 19u);
    view.OnKeyDown(VirtualKey::Right, false);
    EXPECT_EQ(view.State().caretOffset, 19u);
}

TEST_F(HexViewKeyboard, PageKeysMoveByAScreenOfRows)
{
    Open(Iota(16 * 100));
    const auto page = static_cast<std::uint64_t>(16 * VisibleRowCount(view.Metrics(), view.Client()));
    view.MoveCaretTo(5);
    view.OnKeyDown(VirtualKey::PageDown, false);
    EXPECT_EQ(view.State().caretOffset, 5 + page);
    view.OnKeyDown(VirtualKey::PageDown, true);
    EXPECT_EQ(view.State().caretOffset, 5 + 2 * page);
    view.OnKeyDown(VirtualKey::PageUp, false);
    EXPECT_EQ(view.State().caretOffset, 5 + page);
    view.OnKeyDown(VirtualKey::PageUp, false);
    view.OnKeyDown(VirtualKey::PageUp, false);
    EXPECT_EQ(view.State().caretOffset, 0u);
}

TEST_F(HexViewKeyboard, HomeAndEndGoToTheRowEdgesAndWithCtrlToTheDocumentEdges)
{
    Open(Iota(40));
    view.MoveCaretTo(21);
    view.OnKeyDown(VirtualKey::Home, false);
    EXPECT_EQ(view.State().caretOffset, 16u);
    view.OnKeyDown(VirtualKey::End, false);
    EXPECT_EQ(view.State().caretOffset, 31u);
    view.OnKeyDown(VirtualKey::End, true);
    EXPECT_EQ(view.State().caretOffset, 39u);
    view.OnKeyDown(VirtualKey::End, false); // short last row
    EXPECT_EQ(view.State().caretOffset, 39u);
    view.OnKeyDown(VirtualKey::Home, true);
    EXPECT_EQ(view.State().caretOffset, 0u);
}

TEST_F(HexViewKeyboard, CtrlEndInInsertModeGoesPastTheLastByte)
{
    OpenEditable(Iota(40));
    EnterInsertMode();
    view.OnKeyDown(VirtualKey::End, true);
    EXPECT_EQ(view.State().caretOffset, 40u);
    view.OnKeyDown(VirtualKey::End, false);
    EXPECT_EQ(view.State().caretOffset, 40u); // the row of 40 has no byte to its end
}

TEST_F(HexViewKeyboard, EveryKeyboardMoveDropsTheSelection)
{
    Open(Iota(64));
    view.SelectRange(3, 9);
    view.OnKeyDown(VirtualKey::Right, false);
    EXPECT_FALSE(view.State().selectionActive);
}

TEST_F(HexViewKeyboard, EscapeClearsTheSelectionAndItsAnchor)
{
    Open(Iota(64));
    const Point cell = HexCell(0, 4);
    view.OnLeftButtonDown(cell.x, cell.y); // the button is still down: the anchor stands
    ASSERT_TRUE(view.State().selectionActive);
    ASSERT_TRUE(view.State().dragAnchor.has_value());
    host.ClearLog();
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Escape, false));
    EXPECT_FALSE(view.State().selectionActive);
    EXPECT_FALSE(view.State().dragAnchor.has_value());
    EXPECT_EQ(view.State().caretOffset, 4u);
    EXPECT_EQ(host.redraws, 1);
    EXPECT_TRUE(host.posted.empty());
}

TEST_F(HexViewKeyboard, EscapeWithoutSelectionDoesNothing)
{
    Open(Iota(64));
    view.MoveCaretTo(33);
    host.ClearLog();
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Escape, false));
    EXPECT_EQ(view.State().caretOffset, 33u);
    EXPECT_EQ(host.redraws, 0);
    EXPECT_TRUE(host.posted.empty());
}

TEST_F(HexViewKeyboard, InsertKeyIsRefusedWhileReadOnly)
{
    Open(Iota(16));
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Insert, false));
    EXPECT_EQ(view.State().insertMode, HexEditMode::Overwrite);
    EXPECT_EQ(host.posted, std::vector<AppMessage>{AppMessage::ReadOnlyBlocked});
}

TEST_F(HexViewKeyboard, InsertKeyTogglesTheModeAndNotifies)
{
    OpenEditable(Iota(16));
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Insert, false));
    EXPECT_EQ(view.State().insertMode, HexEditMode::Insert);
    EXPECT_EQ(host.posted, std::vector<AppMessage>{AppMessage::ViewChanged});
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Insert, false));
    EXPECT_EQ(view.State().insertMode, HexEditMode::Overwrite);
}

TEST_F(HexViewKeyboard, LeavingInsertModeAtTheSizeMovesTheCaretToTheLastByte)
{
    OpenEditable(Iota(16));
    EnterInsertMode();
    view.OnKeyDown(VirtualKey::End, true);
    ASSERT_EQ(view.State().caretOffset, 16u);
    ASSERT_EQ(RowCount(view.State(), view.Extent()), 2u);
    view.OnKeyDown(VirtualKey::Insert, false);
    EXPECT_EQ(view.State().caretOffset, 15u);
    EXPECT_EQ(RowCount(view.State(), view.Extent()), 1u);
}

TEST_F(HexViewKeyboard, InsertKeyDropsAHeldDigit)
{
    OpenEditable(Iota(16));
    Type(u"9");
    ASSERT_TRUE(view.State().nibblePending);
    view.OnKeyDown(VirtualKey::Insert, false);
    EXPECT_FALSE(view.State().nibblePending);
}

TEST_F(HexViewKeyboard, DeleteAndBackspaceAreRefusedWhileReadOnly)
{
    Open(Iota(16));
    view.MoveCaretTo(4);
    host.ClearLog();
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Delete, false));
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Back, false));
    EXPECT_EQ(document.bytes.size(), 16u);
    EXPECT_EQ(host.posted, (std::vector<AppMessage>{AppMessage::ReadOnlyBlocked, AppMessage::ReadOnlyBlocked}));
}

TEST_F(HexViewKeyboard, CtrlCWithoutSelectionIsHandledAndCopiesNothing)
{
    Open(Iota(16));
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::C, true));
    EXPECT_TRUE(host.clipboard.empty());
}

TEST_F(HexViewKeyboard, PlainCIsPassedOn)
{
    Open(Iota(16));
    view.SelectRange(0, 1);
    EXPECT_FALSE(view.OnKeyDown(VirtualKey::C, false));
    EXPECT_TRUE(host.clipboard.empty());
}

TEST_F(HexViewKeyboard, UnknownKeysArePassedOn)
{
    Open(Iota(16));
    EXPECT_FALSE(view.OnKeyDown(0x70, false)); // F1
    EXPECT_FALSE(view.OnKeyDown(0x41, true));  // Ctrl+A
    EXPECT_FALSE(view.OnKeyDown(0x10, false)); // Shift alone
}

TEST_F(HexViewKeyboard, KeysWithoutADocumentAreSwallowed)
{
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Right, false));
    EXPECT_TRUE(view.OnKeyDown(0x70, false));
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::C, false));
    EXPECT_TRUE(host.posted.empty());
}

TEST_F(HexViewKeyboard, DigitKeysInReadOnlyStateAreRefusedLettersFromGAreNot)
{
    Open(Iota(16));
    for (char16_t c : std::u16string(u"09afAF")) {
        EXPECT_TRUE(view.OnChar(c)) << static_cast<int>(c);
    }
    EXPECT_EQ(host.CountPosted(AppMessage::ReadOnlyBlocked), 6);
    host.ClearLog();
    for (char16_t c : std::u16string(u"gGzZ x")) {
        EXPECT_FALSE(view.OnChar(c)) << static_cast<int>(c);
    }
    EXPECT_TRUE(host.posted.empty());
    EXPECT_EQ(document.bytes, Iota(16));
}

TEST_F(HexViewKeyboard, CharactersWithoutADocumentGoToTheDefaultHandler)
{
    view.ToggleEditing();
    EXPECT_FALSE(view.OnChar(u'1'));
}

TEST_F(HexViewKeyboard, NonDigitCharactersGoToTheDefaultHandlerWhileEditing)
{
    OpenEditable(Iota(16));
    EXPECT_FALSE(view.OnChar(u'g'));
    EXPECT_FALSE(view.OnChar(u'\r'));
    EXPECT_EQ(document.bytes, Iota(16));
}

} // namespace
} // namespace tlm::test
