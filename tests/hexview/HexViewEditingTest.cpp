#include "HexViewFixture.h"

#include "hexview/VirtualKey.h"

#include <gtest/gtest.h>

namespace tlm::test {
namespace {

using HexViewEditing = HexViewFixture;
using Bytes = std::vector<std::uint8_t>;

TEST_F(HexViewEditing, OverwriteOnTheOnlyByteKeepsTheCaretAndStartsOver)
{
    OpenEditable({0xAB});
    Type(u"1");
    EXPECT_EQ(document.bytes, Bytes{0x1B});
    Type(u"2");
    EXPECT_EQ(document.bytes, Bytes{0x12});
    EXPECT_EQ(view.State().caretOffset, 0u);
    EXPECT_FALSE(view.State().nibblePending);
    Type(u"3");
    EXPECT_EQ(document.bytes, Bytes{0x32});
    EXPECT_TRUE(view.State().nibblePending);
}

TEST_F(HexViewEditing, OverwriteWritesEachDigitAndMovesOnAfterTheSecond)
{
    OpenEditable({0x00, 0x11, 0x22});
    EXPECT_TRUE(view.HandleHexDigit(u'f'));
    EXPECT_EQ(document.bytes, (Bytes{0xF0, 0x11, 0x22}));
    EXPECT_EQ(view.State().caretOffset, 0u);
    EXPECT_EQ(host.CountPosted(AppMessage::ViewChanged), 1);
    EXPECT_TRUE(view.HandleHexDigit(u'E'));
    EXPECT_EQ(document.bytes, (Bytes{0xFE, 0x11, 0x22}));
    EXPECT_EQ(view.State().caretOffset, 1u);
    EXPECT_EQ(host.CountPosted(AppMessage::ViewChanged), 2);
}

TEST_F(HexViewEditing, SecondDigitTakesTheHighHalfFromTheHeldDigitNotTheByte)
{
    OpenEditable({0x55, 0x00});
    Type(u"a");
    document.bytes[0] = 0x77; // changed behind the view's back
    Type(u"b");
    EXPECT_EQ(document.bytes[0], 0xAB);
}

TEST_F(HexViewEditing, OneDigitThenAnArrowKeepsTheNewHighHalfAndForgetsThePendingDigit)
{
    OpenEditable({0x12, 0x34});
    Type(u"9");
    view.OnKeyDown(VirtualKey::Right, false);
    EXPECT_EQ(document.bytes, (Bytes{0x92, 0x34}));
    EXPECT_FALSE(view.State().nibblePending);
    Type(u"5");
    EXPECT_EQ(document.bytes, (Bytes{0x92, 0x54})); // a first digit again
}

TEST_F(HexViewEditing, InsertModeOneDigitThenAnArrowInsertsNothing)
{
    OpenEditable({0x12, 0x34});
    EnterInsertMode();
    Type(u"1");
    EXPECT_TRUE(view.State().nibblePending);
    EXPECT_EQ(host.CountPosted(AppMessage::ViewChanged), 1);
    view.OnKeyDown(VirtualKey::Right, false);
    EXPECT_EQ(document.bytes, (Bytes{0x12, 0x34}));
    EXPECT_FALSE(view.State().nibblePending);
}

TEST_F(HexViewEditing, InsertModeInsertsACompleteByteBeforeTheCaret)
{
    OpenEditable({0x12, 0x34});
    EnterInsertMode();
    view.MoveCaretTo(1);
    Type(u"AB");
    EXPECT_EQ(document.bytes, (Bytes{0x12, 0xAB, 0x34}));
    EXPECT_EQ(view.State().caretOffset, 2u);
}

TEST_F(HexViewEditing, InsertModeAtTheSizeAppendsAndMovesPast)
{
    OpenEditable({0x12, 0x34});
    EnterInsertMode();
    view.OnKeyDown(VirtualKey::End, true);
    ASSERT_EQ(view.State().caretOffset, 2u);
    Type(u"cd");
    EXPECT_EQ(document.bytes, (Bytes{0x12, 0x34, 0xCD}));
    EXPECT_EQ(view.State().caretOffset, 3u);
}

TEST_F(HexViewEditing, EmptyDocumentTakesAFirstByteInInsertModeOnly)
{
    OpenEditable({});
    EXPECT_FALSE(view.HandleHexDigit(u'4'));
    EXPECT_FALSE(view.OnChar(u'4')); // declined: on to the default handler
    EXPECT_TRUE(document.bytes.empty());
    EnterInsertMode();
    Type(u"42");
    EXPECT_EQ(document.bytes, Bytes{0x42});
    EXPECT_EQ(view.State().caretOffset, 1u);
}

TEST_F(HexViewEditing, FailedOverwriteDeclinesAndKeepsTheState)
{
    OpenEditable({0x10, 0x20});
    document.failEdits = true;
    host.ClearLog();
    EXPECT_FALSE(view.HandleHexDigit(u'7'));
    EXPECT_FALSE(view.State().nibblePending);
    EXPECT_TRUE(host.posted.empty());
}

TEST_F(HexViewEditing, FailedInsertDeclinesAndKeepsTheHeldDigit)
{
    OpenEditable({0x10, 0x20});
    EnterInsertMode();
    Type(u"7");
    document.failEdits = true;
    EXPECT_FALSE(view.HandleHexDigit(u'8'));
    EXPECT_TRUE(view.State().nibblePending);
    EXPECT_EQ(view.State().caretOffset, 0u);
}

TEST_F(HexViewEditing, TypingOverASelectionChangesTheCaretByteOnly)
{
    OpenEditable({0x00, 0x00, 0x00, 0x00});
    view.MoveCaretTo(1);
    view.SelectRange(0, 3);
    Type(u"f");
    EXPECT_EQ(document.bytes, (Bytes{0x00, 0xF0, 0x00, 0x00}));
    EXPECT_TRUE(view.State().selectionActive);
    Type(u"f");
    EXPECT_FALSE(view.State().selectionActive); // went with the caret's move
}

TEST_F(HexViewEditing, DeleteRemovesTheByteAtTheCaret)
{
    OpenEditable({1, 2, 3, 4});
    view.MoveCaretTo(1);
    host.ClearLog();
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Delete, false));
    EXPECT_EQ(document.bytes, (Bytes{1, 3, 4}));
    EXPECT_EQ(view.State().caretOffset, 1u);
    EXPECT_EQ(host.posted, std::vector<AppMessage>{AppMessage::ViewChanged});
}

TEST_F(HexViewEditing, DeleteOfTheLastByteInOverwriteModePullsTheCaretBack)
{
    OpenEditable({1, 2, 3});
    view.MoveCaretTo(2);
    view.OnKeyDown(VirtualKey::Delete, false);
    EXPECT_EQ(document.bytes, (Bytes{1, 2}));
    EXPECT_EQ(view.State().caretOffset, 1u);
}

TEST_F(HexViewEditing, BackspaceRemovesTheByteBeforeTheCaret)
{
    OpenEditable({1, 2, 3, 4});
    view.MoveCaretTo(2);
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Back, false));
    EXPECT_EQ(document.bytes, (Bytes{1, 3, 4}));
    EXPECT_EQ(view.State().caretOffset, 1u);
}

TEST_F(HexViewEditing, BackspaceAtOffsetZeroIsHandledAndDoesNothing)
{
    OpenEditable({1, 2});
    host.ClearLog();
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Back, false));
    EXPECT_EQ(document.bytes, (Bytes{1, 2}));
    EXPECT_TRUE(document.deletions.empty());
    EXPECT_TRUE(host.posted.empty());
}

TEST_F(HexViewEditing, DeletePastTheEndIsHandledAndDoesNothing)
{
    OpenEditable({1, 2});
    EnterInsertMode();
    view.OnKeyDown(VirtualKey::End, true);
    ASSERT_EQ(view.State().caretOffset, 2u);
    host.ClearLog();
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Delete, false));
    EXPECT_EQ(document.bytes, (Bytes{1, 2}));
    EXPECT_TRUE(host.posted.empty());
}

TEST_F(HexViewEditing, BackspaceInInsertModeAtTheSizeRemovesTheLastByte)
{
    OpenEditable({1, 2, 3});
    EnterInsertMode();
    view.OnKeyDown(VirtualKey::End, true);
    view.OnKeyDown(VirtualKey::Back, false);
    EXPECT_EQ(document.bytes, (Bytes{1, 2}));
    EXPECT_EQ(view.State().caretOffset, 2u);
}

TEST_F(HexViewEditing, DeleteOnAnEmptyDocumentDeclinesToTheDefaultHandler)
{
    OpenEditable({});
    EXPECT_FALSE(view.OnKeyDown(VirtualKey::Delete, false));
    EXPECT_FALSE(view.OnKeyDown(VirtualKey::Back, false));
    EXPECT_TRUE(host.posted.empty());
}

TEST_F(HexViewEditing, DeleteOnAReadOnlyDocumentObjectDeclines)
{
    SizedDocument readOnly(64);
    view.SetDocument(&readOnly);
    view.ToggleEditing();
    EXPECT_FALSE(view.OnKeyDown(VirtualKey::Delete, false));
    EXPECT_FALSE(view.OnChar(u'1'));
    view.SelectRange(0, 3);
    EXPECT_FALSE(view.DeleteSelection());
}

TEST_F(HexViewEditing, FailedDeleteDeclinesAndKeepsTheView)
{
    OpenEditable({1, 2, 3});
    view.MoveCaretTo(1);
    document.failEdits = true;
    host.ClearLog();
    EXPECT_FALSE(view.OnKeyDown(VirtualKey::Delete, false));
    EXPECT_EQ(view.State().caretOffset, 1u);
    EXPECT_TRUE(host.posted.empty());
}

TEST_F(HexViewEditing, DeleteWithASelectionDeletesTheSelectionTopDown)
{
    OpenEditable(Iota(10));
    view.MoveCaretTo(8);
    view.SelectRange(6, 2);
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Delete, false));
    EXPECT_EQ(document.deletions, (std::vector<std::uint64_t>{6, 5, 4, 3, 2}));
    EXPECT_EQ(document.bytes, (Bytes{0, 1, 7, 8, 9}));
    EXPECT_EQ(view.State().caretOffset, 2u);
    EXPECT_FALSE(view.State().selectionActive);
}

TEST_F(HexViewEditing, BackspaceWithASelectionDeletesTheSelectionToo)
{
    OpenEditable(Iota(10));
    view.SelectRange(0, 9);
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Back, false));
    EXPECT_TRUE(document.bytes.empty());
    EXPECT_EQ(view.State().caretOffset, 0u);
    EXPECT_EQ(RowCount(view.State(), view.Extent()), 0u);
}

TEST_F(HexViewEditing, FailedSelectionDeleteStopsWithoutRollback)
{
    OpenEditable(Iota(10));
    view.SelectRange(2, 6);
    document.failDeleteAt = 3;
    host.ClearLog();
    EXPECT_FALSE(view.DeleteSelection());
    EXPECT_EQ(document.deletions, (std::vector<std::uint64_t>{6, 5, 4}));
    EXPECT_EQ(document.bytes, (Bytes{0, 1, 2, 3, 7, 8, 9}));
    EXPECT_TRUE(host.posted.empty());
}

TEST_F(HexViewEditing, DeleteSelectionNeedsASelection)
{
    OpenEditable(Iota(10));
    EXPECT_FALSE(view.DeleteSelection());
    EXPECT_EQ(document.bytes, Iota(10));
}

TEST_F(HexViewEditing, CopyWritesUpperCaseHexWithSingleBlanks)
{
    Open({0xDE, 0xAD, 0xBE, 0xEF, 0x01});
    view.SelectRange(2, 0);
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::C, true));
    EXPECT_EQ(host.clipboard, std::vector<std::u16string>{u"DE AD BE"});
}

TEST_F(HexViewEditing, AfterAClickCtrlCCopiesThatOneByte)
{
    Open({0x00, 0x0A, 0xFF});
    Click(HexCell(0, 1));
    view.OnKeyDown(VirtualKey::C, true);
    EXPECT_EQ(host.clipboard, std::vector<std::u16string>{u"0A"});
}

TEST_F(HexViewEditing, CopyOfNothingReadLeavesTheClipboardAlone)
{
    OpenEditable({});
    view.SelectRange(0, 0);
    view.CopySelectionAsHex();
    EXPECT_TRUE(host.clipboard.empty());
}

TEST_F(HexViewEditing, SelectRangeClampsBothEndsToTheLastByte)
{
    Open(Iota(10));
    host.ClearLog();
    view.SelectRange(50, 3);
    EXPECT_EQ(view.State().selectionAnchor, 9u);
    EXPECT_EQ(view.State().selectionEnd, 3u);
    EXPECT_TRUE(view.State().selectionActive);
    EXPECT_EQ(host.redraws, 1);
    EXPECT_TRUE(host.posted.empty());
}

TEST_F(HexViewEditing, SelectRangeClampsInInsertModeToo)
{
    OpenEditable(Iota(10));
    EnterInsertMode();
    view.SelectRange(10, 10);
    EXPECT_EQ(view.State().selectionAnchor, 9u);
}

TEST_F(HexViewEditing, MoveCaretToClampsAndNotifies)
{
    Open(Iota(10));
    view.MoveCaretTo(1000);
    EXPECT_EQ(view.State().caretOffset, 9u);
    EXPECT_EQ(host.posted, std::vector<AppMessage>{AppMessage::ViewChanged});
    EXPECT_GE(host.redraws, 1);
}

TEST_F(HexViewEditing, MoveCaretByClampsBelowZero)
{
    Open(Iota(10));
    view.MoveCaretTo(3);
    view.MoveCaretBy(-100);
    EXPECT_EQ(view.State().caretOffset, 0u);
    view.MoveCaretBy(INT64_MAX);
    EXPECT_EQ(view.State().caretOffset, 9u);
    view.MoveCaretBy(INT64_MIN);
    EXPECT_EQ(view.State().caretOffset, 0u);
}

} // namespace
} // namespace tlm::test
