// Scripted editing sessions: keys and clicks over real files through the editable overlay, checking
// the bytes shown, the caret, the selection and the notifications after every step.

#include "RecordingHost.h"
#include "TemporaryFolder.h"
#include "ViewPoints.h"

#include "document/EditableDocument.h"
#include "hexview/HexView.h"
#include "hexview/HexText.h"
#include "hexview/RowCells.h"
#include "hexview/TextMeasurer.h"
#include "hexview/VirtualKey.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace tlm::test {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Messages = std::vector<AppMessage>;

constexpr AppMessage Changed = AppMessage::ViewChanged;
constexpr AppMessage Blocked = AppMessage::ReadOnlyBlocked;

Bytes Iota(std::size_t count, std::uint8_t first = 0)
{
    Bytes bytes(count);
    for (std::size_t i = 0; i < count; ++i) {
        bytes[i] = static_cast<std::uint8_t>(first + i);
    }
    return bytes;
}

Bytes Concat(std::initializer_list<Bytes> parts)
{
    Bytes all;
    for (const Bytes& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

std::optional<ByteRange> Range(std::uint64_t first, std::uint64_t last)
{
    return ByteRange{first, last};
}

class HexViewSession : public ::testing::Test {
protected:
    void SetUp() override
    {
        view.SetHost(host.Host(&view));
        view.SetTextMeasurer(FixedTextMeasurer(16.0f, 8.0f));
    }

    void TearDown() override { document.Close(); }

    void OpenFile(const std::filesystem::path& path)
    {
        document.Close();
        ASSERT_TRUE(document.file.Open(path.u16string()));
        view.SetDocument(&document);
        host.ClearLog();
    }

    void Key(std::uint32_t virtualKey, bool ctrl = false) { view.OnKeyDown(virtualKey, ctrl); }

    void Chars(std::u16string_view characters)
    {
        for (char16_t c : characters) {
            view.OnChar(c);
        }
    }

    void Click(Point point)
    {
        view.OnLeftButtonDown(point.x, point.y);
        view.OnLeftButtonUp();
    }

    void Drag(Point from, Point to)
    {
        view.OnLeftButtonDown(from.x, from.y);
        view.OnMouseMove(to.x, to.y);
        view.OnLeftButtonUp();
    }

    Bytes Shown() const { return document.Read(0, document.GetSize()).bytes; }

    Bytes Tail(std::uint64_t count) const { return document.Read(document.GetSize() - count, count).bytes; }

    std::optional<ByteRange> SelectionShown() const { return view.Selection(); }

    // Compares what the step left behind and forgets the notifications seen so far.
    void Check(const Bytes& bytes, std::uint64_t caret, std::optional<ByteRange> selection, const Messages& posted)
    {
        EXPECT_EQ(Shown(), bytes);
        CheckView(caret, selection, posted);
    }

    void CheckView(std::uint64_t caret, std::optional<ByteRange> selection, const Messages& posted)
    {
        EXPECT_EQ(view.State().caretOffset, caret);
        EXPECT_EQ(selection.has_value(), view.Selection().has_value());
        if (selection && view.Selection()) {
            EXPECT_EQ(view.Selection()->first, selection->first);
            EXPECT_EQ(view.Selection()->last, selection->last);
        }
        EXPECT_EQ(host.posted, posted);
        host.ClearLog();
    }

    TemporaryFolder folder;
    EditableDocument document;
    RecordingHost host;
    HexView view;
};

TEST_F(HexViewSession, OverwritingAcrossRowsToTheEndOfTheFile)
{
    const std::filesystem::path path = folder.Write("overwrite.bin", Iota(40));
    OpenFile(path);
    Check(Iota(40), 0, std::nullopt, {});

    SCOPED_TRACE("typing while read-only");
    Chars(u"4");
    Check(Iota(40), 0, std::nullopt, {Blocked});

    SCOPED_TRACE("editing on, click on byte 30");
    view.ToggleEditing();
    Click(HexCellPoint(view, 1, 14));
    Check(Iota(40), 30, Range(30, 30), {Changed, Changed});

    SCOPED_TRACE("first digit replaces the high half and holds");
    Chars(u"4");
    Bytes expected = Iota(40);
    expected[30] = 0x4E;
    Check(expected, 30, Range(30, 30), {Changed});

    SCOPED_TRACE("second digit completes the byte and moves on, dropping the selection");
    Chars(u"1");
    expected[30] = 0x41;
    Check(expected, 31, std::nullopt, {Changed});

    Chars(u"42");
    expected[31] = 0x42;
    Check(expected, 32, std::nullopt, {Changed, Changed});

    SCOPED_TRACE("at the last byte the caret stays and a third digit starts over");
    Key(VirtualKey::End, true);
    Check(expected, 39, std::nullopt, {Changed});
    Chars(u"ff");
    expected[39] = 0xFF;
    Check(expected, 39, std::nullopt, {Changed, Changed});
    Chars(u"0");
    expected[39] = 0x0F;
    Check(expected, 39, std::nullopt, {Changed});

    SCOPED_TRACE("an arrow drops the held digit");
    Key(VirtualKey::Right);
    Check(expected, 39, std::nullopt, {Changed});
    EXPECT_FALSE(view.State().nibblePending);

    SCOPED_TRACE("backspace and delete at the end");
    Key(VirtualKey::Back);
    expected.erase(expected.begin() + 38);
    Check(expected, 38, std::nullopt, {Changed});
    Key(VirtualKey::Delete);
    expected.erase(expected.begin() + 38);
    Check(expected, 37, std::nullopt, {Changed});
    EXPECT_EQ(RowCount(view.State(), view.Extent()), 3u);

    SCOPED_TRACE("saving writes what is shown");
    ASSERT_TRUE(document.Save());
    EXPECT_EQ(ReadWholeFile(path), expected);
}

TEST_F(HexViewSession, InsertingPastAFullLastRow)
{
    const std::filesystem::path path = folder.Write("insert.bin", Iota(16, 0x30));
    OpenFile(path);

    SCOPED_TRACE("the mode cannot change while read-only");
    Key(VirtualKey::Insert);
    Check(Iota(16, 0x30), 0, std::nullopt, {Blocked});
    EXPECT_EQ(view.State().insertMode, HexEditMode::Overwrite);

    view.ToggleEditing();
    Key(VirtualKey::Insert);
    Check(Iota(16, 0x30), 0, std::nullopt, {Changed, Changed});

    SCOPED_TRACE("the caret goes past the end into a row of its own");
    Key(VirtualKey::End, true);
    Check(Iota(16, 0x30), 16, std::nullopt, {Changed});
    EXPECT_EQ(RowCount(view.State(), view.Extent()), 2u);

    SCOPED_TRACE("nothing is written until the byte is complete");
    Chars(u"0");
    Check(Iota(16, 0x30), 16, std::nullopt, {Changed});
    Chars(u"a");
    Bytes expected = Concat({Iota(16, 0x30), {0x0A}});
    Check(expected, 17, std::nullopt, {Changed});
    EXPECT_EQ(RowCount(view.State(), view.Extent()), 2u);

    SCOPED_TRACE("a held digit dies with the caret move");
    Chars(u"7");
    Key(VirtualKey::Left);
    Check(expected, 16, std::nullopt, {Changed, Changed});

    SCOPED_TRACE("typing before a byte inserts in order");
    Key(VirtualKey::Home);
    Chars(u"FFEE");
    expected = Concat({Iota(16, 0x30), {0xFF, 0xEE, 0x0A}});
    Check(expected, 18, std::nullopt, {Changed, Changed, Changed, Changed, Changed});

    Key(VirtualKey::Home, true);
    Chars(u"00");
    expected.insert(expected.begin(), 0x00);
    Check(expected, 1, std::nullopt, {Changed, Changed, Changed});

    SCOPED_TRACE("backspace at the end, then leaving insert mode pulls the caret onto the last byte");
    Key(VirtualKey::End, true);
    Key(VirtualKey::Back);
    expected.pop_back();
    Check(expected, 19, std::nullopt, {Changed, Changed});
    Key(VirtualKey::Insert);
    Check(expected, 18, std::nullopt, {Changed});
    EXPECT_EQ(RowCount(view.State(), view.Extent()), 2u);

    ASSERT_TRUE(document.Save());
    EXPECT_EQ(ReadWholeFile(path), expected);
}

TEST_F(HexViewSession, AppendingToAnEmptyFile)
{
    const std::filesystem::path path = folder.Write("empty.bin", {});
    OpenFile(path);
    view.ToggleEditing();
    host.ClearLog();

    SCOPED_TRACE("overwrite mode has no byte to change");
    EXPECT_FALSE(view.OnChar(u'1'));
    Check({}, 0, std::nullopt, {});
    EXPECT_FALSE(view.OnKeyDown(VirtualKey::Delete, false));

    Key(VirtualKey::Insert);
    Chars(u"DEADBEEF");
    Check({0xDE, 0xAD, 0xBE, 0xEF}, 4, std::nullopt, Messages(9, Changed));

    Key(VirtualKey::Back);
    Key(VirtualKey::Back);
    Check({0xDE, 0xAD}, 2, std::nullopt, {Changed, Changed});

    ASSERT_TRUE(document.Save());
    EXPECT_EQ(ReadWholeFile(path), (Bytes{0xDE, 0xAD}));
}

TEST_F(HexViewSession, SelectingCopyingAndDeletingWithTheMouse)
{
    const std::filesystem::path path = folder.Write("select.bin", Iota(64));
    OpenFile(path);
    view.ToggleEditing();
    host.ClearLog();

    SCOPED_TRACE("a drag from the text column back into the hex column");
    Drag(TextCellPoint(view, 2, 3), HexCellPoint(view, 0, 10));
    Check(Iota(64), 35, Range(10, 35), {Changed});

    SCOPED_TRACE("copy");
    Key(VirtualKey::C, true);
    std::u16string copied;
    for (int b = 10; b <= 35; ++b) {
        static constexpr char16_t digits[] = u"0123456789ABCDEF";
        copied += (b == 10 ? u"" : u" ");
        copied += digits[b >> 4];
        copied += digits[b & 15];
    }
    ASSERT_EQ(host.clipboard.size(), 1u);
    EXPECT_EQ(host.clipboard.front(), copied);
    Check(Iota(64), 35, Range(10, 35), {});

    SCOPED_TRACE("delete takes the whole selection");
    Key(VirtualKey::Delete);
    Bytes expected = Concat({Iota(10), Iota(28, 36)});
    Check(expected, 10, std::nullopt, {Changed});

    SCOPED_TRACE("escape drops a click's selection and keeps the caret");
    Click(HexCellPoint(view, 0, 2));
    Check(expected, 2, Range(2, 2), {Changed});
    Key(VirtualKey::Escape);
    Check(expected, 2, std::nullopt, {});

    SCOPED_TRACE("clicks on the offsets or behind the short last row hit nothing");
    Click({20, HexCellPoint(view, 0, 0).y});
    Check(expected, 2, std::nullopt, {});
    Click(HexCellPoint(view, 2, 9));
    Check(expected, 2, std::nullopt, {});

    SCOPED_TRACE("a drag stops growing behind the end, and backspace deletes the selection");
    view.OnLeftButtonDown(HexCellPoint(view, 2, 1).x, HexCellPoint(view, 2, 1).y);
    view.OnMouseMove(HexCellPoint(view, 2, 12).x, HexCellPoint(view, 2, 12).y);
    CheckView(33, Range(33, 33), {Changed});
    view.OnMouseMove(HexCellPoint(view, 2, 5).x, HexCellPoint(view, 2, 5).y);
    view.OnLeftButtonUp();
    CheckView(33, Range(33, 37), {});
    Key(VirtualKey::Back);
    expected.resize(33);
    Check(expected, 32, std::nullopt, {Changed});

    ASSERT_TRUE(document.Save());
    EXPECT_EQ(ReadWholeFile(path), expected);
}

TEST_F(HexViewSession, TypingAcrossTheEndOfAnInsertedRun)
{
    const std::filesystem::path path = folder.Write("runs.bin", Iota(8));
    OpenFile(path);
    view.ToggleEditing();
    Key(VirtualKey::Insert);
    view.MoveCaretTo(4);
    Chars(u"AABB");
    Key(VirtualKey::Insert); // back to overwrite
    Key(VirtualKey::Left);   // onto the second inserted byte, so typing runs on into the file's bytes
    host.ClearLog();
    Chars(u"1234");
    Check({0, 1, 2, 3, 0xAA, 0x12, 0x34, 5, 6, 7}, 7, std::nullopt, {Changed, Changed, Changed, Changed});
    view.SelectRange(3, 6);
    Key(VirtualKey::Delete);
    Check({0, 1, 2, 5, 6, 7}, 3, std::nullopt, {Changed});
}

// Files of four gibibytes and more: sparse, so they cost no disk space.
class HexViewLargeFileSession : public HexViewSession {};

TEST_F(HexViewLargeFileSession, EditingAroundTheFourGibibyteMarkWidensAndNarrowsTheOffsets)
{
    constexpr std::uint64_t size = 0x100000010ull;
    const std::filesystem::path path = folder.WriteSparse("large.bin", size, Iota(16, 0xE0));
    OpenFile(path);
    const float digit = view.Metrics().hexCellWidth;
    EXPECT_EQ(view.Metrics().offsetWidth, 17.0f * digit);
    const float wideHexLeft = GetRowGeometry(view.Metrics(), view.State(), view.Client(), 0).hexLeft;

    SCOPED_TRACE("to the end, read-only");
    Key(VirtualKey::End, true);
    const auto visible = static_cast<std::uint64_t>(VisibleRowCount(view.Metrics(), view.Client()));
    CheckView(size - 1, std::nullopt, {Changed});
    EXPECT_EQ(view.State().topRow, 0x10000001ull - visible);
    ASSERT_TRUE(host.bars.has_value());
    EXPECT_EQ(host.bars->vertical.maximum, 0x10000000);
    EXPECT_EQ(host.bars->vertical.position, static_cast<std::int32_t>(0x10000001ull - visible));
    EXPECT_EQ(FormatRowOffset(0x100000000ull, true), u"0000000100000000:");

    SCOPED_TRACE("overwrite the last byte");
    view.ToggleEditing();
    host.ClearLog();
    Chars(u"12");
    EXPECT_EQ(Tail(2), (Bytes{0xEE, 0x12}));
    CheckView(size - 1, std::nullopt, {Changed, Changed});

    SCOPED_TRACE("overwrite a byte of the sparse part, below the mark");
    Key(VirtualKey::Up);
    EXPECT_EQ(view.State().caretOffset, 0xFFFFFFFFull);
    Chars(u"AB");
    CheckView(0x100000000ull, std::nullopt, {Changed, Changed, Changed});
    EXPECT_EQ(document.Read(0xFFFFFFFEull, 3).bytes, (Bytes{0x00, 0xAB, 0xE0}));

    SCOPED_TRACE("select the last seventeen bytes with the mouse and delete them");
    const auto lastLine = static_cast<std::int32_t>(visible - 1);
    Drag(HexCellPoint(view, lastLine - 1, 15), HexCellPoint(view, lastLine, 15));
    CheckView(0xFFFFFFFFull, Range(0xFFFFFFFFull, size - 1), {Changed});
    Key(VirtualKey::Delete);
    CheckView(0xFFFFFFFEull, std::nullopt, {Changed});
    EXPECT_EQ(document.GetSize(), 0xFFFFFFFFull);
    EXPECT_EQ(view.Metrics().offsetWidth, 9.0f * digit);
    const float narrowHexLeft = GetRowGeometry(view.Metrics(), view.State(), view.Client(), 0).hexLeft;
    EXPECT_FLOAT_EQ(wideHexLeft - narrowHexLeft, 8.0f * digit);
    EXPECT_EQ(Tail(1), Bytes{0x00});

    SCOPED_TRACE("appending one byte in insert mode crosses the mark again");
    Key(VirtualKey::Insert);
    Key(VirtualKey::End, true);
    CheckView(0xFFFFFFFFull, std::nullopt, {Changed, Changed});
    Chars(u"7e");
    CheckView(0x100000000ull, std::nullopt, {Changed, Changed});
    EXPECT_EQ(document.GetSize(), 0x100000000ull);
    EXPECT_EQ(Tail(2), (Bytes{0x00, 0x7E}));
    EXPECT_EQ(view.Metrics().offsetWidth, 17.0f * digit);
    EXPECT_EQ(RowCount(view.State(), view.Extent()), 0x10000001ull); // the caret's own row past the end

    SCOPED_TRACE("and deleting it backwards narrows the column once more");
    Key(VirtualKey::Back);
    CheckView(0xFFFFFFFFull, std::nullopt, {Changed});
    EXPECT_EQ(view.Metrics().offsetWidth, 9.0f * digit);
    EXPECT_FALSE(document.file.GetSize() == document.GetSize()); // the file itself is untouched
}

TEST_F(HexViewLargeFileSession, ClicksAndKeysReachBytesFarBeyondTheMark)
{
    constexpr std::uint64_t size = 0x180000000ull; // 6 GiB
    const std::filesystem::path path = folder.WriteSparse("six.bin", size, {0x5A});
    OpenFile(path);
    view.OnVerticalScroll(ScrollCommand::ThumbTrack, 0x10000000); // row at 4 GiB
    Click(HexCellPoint(view, 3, 7));
    CheckView(0x100000037ull, Range(0x100000037ull, 0x100000037ull), {Changed, Changed});
    Key(VirtualKey::PageDown);
    const auto page = 16ull * static_cast<std::uint64_t>(VisibleRowCount(view.Metrics(), view.Client()));
    CheckView(0x100000037ull + page, std::nullopt, {Changed});
    Key(VirtualKey::End, true);
    view.ToggleEditing();
    host.ClearLog();
    Key(VirtualKey::Delete);
    CheckView(size - 2, std::nullopt, {Changed});
    EXPECT_EQ(document.GetSize(), size - 1);
    EXPECT_EQ(Tail(1), Bytes{0x00});
}

} // namespace
} // namespace tlm::test
