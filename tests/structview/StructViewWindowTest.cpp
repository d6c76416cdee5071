// The struct view's states, selection, input and copy text, with its window recorded.
#include "structview/StructViewWindow.h"

#include "hexview/VirtualKey.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tlm {
namespace {

constexpr std::uint32_t F5 = 0x74;
constexpr std::uint32_t KeyA = 0x41;

StructRow Row(std::u16string name, std::u16string offset, std::u16string value, std::u16string size)
{
    StructRow row;
    row.name = std::move(name);
    row.offset = std::move(offset);
    row.value = std::move(value);
    row.size = std::move(size);
    return row;
}

std::vector<StructRow> Rows(std::size_t count)
{
    std::vector<StructRow> rows;
    for (std::size_t index = 0; index < count; ++index) {
        rows.push_back(Row(u"m" + std::u16string(1, static_cast<char16_t>(u'a' + index % 26)), u"0x0", u"0x00", u"1"));
    }
    return rows;
}

StructViewLabels TestLabels()
{
    return LoadStructViewLabels([](std::string_view key) { return u"<" + std::u16string(key.begin(), key.end()) + u">"; });
}

struct Posted {
    AppMessage message;
    std::uintptr_t wParam;
    friend bool operator==(const Posted&, const Posted&) = default;
};

class StructViewWindowTest : public ::testing::Test {
protected:
    StructViewWindowTest()
    {
        StructViewHost host;
        host.postToOwner = [this](AppMessage message, std::uintptr_t wParam) { posts.push_back({message, wParam}); };
        host.requestRedraw = [this] { ++redraws; };
        host.controlsChanged = [this] { ++controlChanges; };
        host.copyToClipboard = [this](const std::u16string& text) { clipboard.push_back(text); };
        host.openFormatMenu = [this](int x, int y) { menus.emplace_back(x, y); };
        host.captureMouse = [this] { ++captures; };
        host.releaseCapture = [this] { ++releases; };
        host.measureInfoText = [this](int width) {
            measuredWidths.push_back(width);
            return infoHeight;
        };
        view.SetHost(std::move(host));
        view.SetLabels(TestLabels());
        view.SetClientSize(700, 600);
    }

    void Load(std::size_t count) { view.ShowRows(u"png.tlpat", Rows(count), u"entry = PngHeader"); }

    // The centre of row `index` on screen.
    std::pair<int, int> RowPoint(std::size_t index) const
    {
        return {200, StructRowTop(view.Layout(), index, view.ScrollY()) + StructRowHeight / 2};
    }

    StructViewWindow view;
    std::vector<Posted> posts;
    std::vector<std::u16string> clipboard;
    std::vector<std::pair<int, int>> menus;
    std::vector<int> measuredWidths;
    int redraws = 0;
    int controlChanges = 0;
    int captures = 0;
    int releases = 0;
    int infoHeight = 60;
};

TEST_F(StructViewWindowTest, StartsEmptyWithNoSelection)
{
    EXPECT_EQ(view.State(), StructViewState::Empty);
    EXPECT_EQ(view.SelectedRow(), -1);
    EXPECT_TRUE(view.Rows().empty());
}

TEST_F(StructViewWindowTest, ShowRowsEntersLoadedWithNameRowsAndInfo)
{
    Load(3);
    EXPECT_EQ(view.State(), StructViewState::Loaded);
    EXPECT_EQ(view.DefinitionName(), u"png.tlpat");
    EXPECT_EQ(view.Rows().size(), 3u);
    EXPECT_EQ(view.InfoText(), u"entry = PngHeader");
}

TEST_F(StructViewWindowTest, ShowMessageEntersEmptyAndClearsEverything)
{
    Load(3);
    view.OnLeftDown(RowPoint(1).first, RowPoint(1).second);
    view.ShowMessage(u"nothing");
    EXPECT_EQ(view.State(), StructViewState::Empty);
    EXPECT_EQ(view.Message(), u"nothing");
    EXPECT_TRUE(view.DefinitionName().empty());
    EXPECT_TRUE(view.Rows().empty());
    EXPECT_TRUE(view.InfoText().empty());
    EXPECT_EQ(view.SelectedRow(), -1);
}

TEST_F(StructViewWindowTest, ShowErrorEntersErrorAndShowsThePrefixInTheMessageEdit)
{
    Load(2);
    view.ShowError(u"line 3: unknown type");
    EXPECT_EQ(view.State(), StructViewState::Error);
    EXPECT_TRUE(view.DefinitionName().empty());
    EXPECT_EQ(view.MessageEditText(), u"<structview.error.prefix>: line 3: unknown type");
}

TEST_F(StructViewWindowTest, RowsShrinkingBelowTheSelectionMoveItToTheLastRow)
{
    Load(10);
    view.OnLeftDown(RowPoint(8).first, RowPoint(8).second);
    ASSERT_EQ(view.SelectedRow(), 8);
    view.ShowRows(u"png.tlpat", Rows(4), u"");
    EXPECT_EQ(view.SelectedRow(), 3);
}

TEST_F(StructViewWindowTest, RowsShrinkingToNoneLeaveNoSelection)
{
    Load(5);
    view.OnLeftDown(RowPoint(2).first, RowPoint(2).second);
    view.ShowRows(u"png.tlpat", {}, u"");
    EXPECT_EQ(view.SelectedRow(), -1);
}

TEST_F(StructViewWindowTest, RowsGrowingKeepTheSelection)
{
    Load(5);
    view.OnLeftDown(RowPoint(2).first, RowPoint(2).second);
    view.ShowRows(u"png.tlpat", Rows(9), u"");
    EXPECT_EQ(view.SelectedRow(), 2);
}

TEST_F(StructViewWindowTest, APressOnARowSelectsIt)
{
    Load(5);
    EXPECT_EQ(view.OnLeftDown(RowPoint(3).first, RowPoint(3).second), StructPress::Selected);
    EXPECT_EQ(view.SelectedRow(), 3);
}

TEST_F(StructViewWindowTest, APressBelowAllRowsClearsTheSelection)
{
    Load(5);
    view.OnLeftDown(RowPoint(3).first, RowPoint(3).second);
    view.OnLeftDown(200, RowPoint(4).second + 3 * StructRowHeight);
    EXPECT_EQ(view.SelectedRow(), -1);
}

TEST_F(StructViewWindowTest, APressOutsideLoadedDoesNothing)
{
    EXPECT_EQ(view.OnLeftDown(RowPoint(0).first, RowPoint(0).second), StructPress::None);
    EXPECT_TRUE(menus.empty());
}

TEST_F(StructViewWindowTest, APressOnTheDropDownOpensTheFormatMenu)
{
    Load(2);
    const StructViewRect box = view.Layout().dropDown;
    EXPECT_EQ(view.OnLeftDown(box.left + 5, box.top + 5), StructPress::OpenedMenu);
    ASSERT_EQ(menus.size(), 1u);
}

TEST_F(StructViewWindowTest, UpAndDownMoveTheSelectionAndFallThroughAtTheEnds)
{
    Load(3);
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Down, false));
    EXPECT_EQ(view.SelectedRow(), 0);
    EXPECT_FALSE(view.OnKeyDown(VirtualKey::Up, false));
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Down, false));
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Down, false));
    EXPECT_EQ(view.SelectedRow(), 2);
    EXPECT_FALSE(view.OnKeyDown(VirtualKey::Down, false));
    EXPECT_EQ(view.SelectedRow(), 2);
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Up, false));
    EXPECT_EQ(view.SelectedRow(), 1);
}

TEST_F(StructViewWindowTest, MovingTheSelectionScrollsItIntoView)
{
    Load(100);
    for (int step = 0; step < 60; ++step) {
        view.OnKeyDown(VirtualKey::Down, false);
    }
    const int top = StructRowTop(view.Layout(), static_cast<std::size_t>(view.SelectedRow()), view.ScrollY());
    EXPECT_GE(top, view.Layout().rowArea.top);
    EXPECT_LE(top + StructRowHeight, view.Layout().rowArea.bottom);
    EXPECT_GT(view.ScrollY(), 0);
}

TEST_F(StructViewWindowTest, PageKeysScrollByTheRowAreaAndKeepTheSelection)
{
    Load(200);
    view.OnKeyDown(VirtualKey::Down, false);
    view.OnKeyDown(VirtualKey::PageDown, false);
    EXPECT_EQ(view.ScrollY(), view.Layout().rowArea.Height());
    EXPECT_EQ(view.SelectedRow(), 0);
    view.OnKeyDown(VirtualKey::PageUp, false);
    EXPECT_EQ(view.ScrollY(), 0);
}

TEST_F(StructViewWindowTest, HomeAndEndScrollToTheCornersClamped)
{
    Load(200);
    view.SetClientSize(300, 600);
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::End, false));
    EXPECT_EQ(view.ScrollY(), StructMaxScrollY(view.Layout()));
    EXPECT_EQ(view.ScrollX(), StructMaxScrollX(view.Layout()));
    EXPECT_GT(view.ScrollX(), 0);
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Home, false));
    EXPECT_EQ(view.ScrollX(), 0);
    EXPECT_EQ(view.ScrollY(), 0);
}

TEST_F(StructViewWindowTest, TheWheelMovesFortyEightPixelsANotchTowardsTheStartWhenRolledForward)
{
    Load(200);
    view.OnWheel(-240);
    EXPECT_EQ(view.ScrollY(), 96);
    view.OnWheel(120);
    EXPECT_EQ(view.ScrollY(), 48);
}

TEST_F(StructViewWindowTest, APartialWheelNotchStillMovesOneNotch)
{
    Load(200);
    view.OnWheel(-30);
    EXPECT_EQ(view.ScrollY(), 48);
}

TEST_F(StructViewWindowTest, ScrollingNeverLeavesTheContent)
{
    Load(3);
    view.OnWheel(-1200);
    EXPECT_EQ(view.ScrollY(), 0);
    view.ScrollTo(-50, -50);
    EXPECT_EQ(view.ScrollX(), 0);
    EXPECT_EQ(view.ScrollY(), 0);
}

TEST_F(StructViewWindowTest, VerticalBarLinesAreOneRowAndThumbsTakeTheTrackPosition)
{
    Load(200);
    view.OnVerticalScroll(1, 0);
    EXPECT_EQ(view.ScrollY(), 32);
    view.OnVerticalScroll(5, 500);
    EXPECT_EQ(view.ScrollY(), 500);
    view.OnVerticalScroll(3, 0);
    EXPECT_EQ(view.ScrollY(), 500 + view.Layout().rowArea.Height());
}

TEST_F(StructViewWindowTest, HorizontalBarLinesAreTwentyFourPixels)
{
    Load(2);
    view.SetClientSize(300, 600);
    view.OnHorizontalScroll(1, 0);
    EXPECT_EQ(view.ScrollX(), 24);
    view.OnHorizontalScroll(0, 0);
    EXPECT_EQ(view.ScrollX(), 0);
}

TEST_F(StructViewWindowTest, F5PostsAReload)
{
    EXPECT_TRUE(view.OnKeyDown(F5, false));
    EXPECT_EQ(posts, (std::vector<Posted>{{AppMessage::StructReloadPattern, 0}}));
}

TEST_F(StructViewWindowTest, TheButtonsPostTheirMessages)
{
    view.OnButton(StructOpenButtonId);
    view.OnButton(StructReloadButtonId);
    view.OnButton(StructCloseButtonId);
    EXPECT_EQ(posts, (std::vector<Posted>{{AppMessage::StructOpenPattern, 0}, {AppMessage::StructReloadPattern, 0},
                         {AppMessage::StructClearPattern, 0}}));
}

TEST_F(StructViewWindowTest, ClosingPostsClosedAndLeavesTheWindowToItsOwner)
{
    view.OnClose();
    EXPECT_EQ(posts, (std::vector<Posted>{{AppMessage::StructViewClosed, 0}}));
}

TEST_F(StructViewWindowTest, TheInfoButtonFlipsTheInfoBandOnlyWithInfoText)
{
    view.OnButton(StructInfoButtonId);
    EXPECT_FALSE(view.InfoVisible());
    Load(2);
    view.OnButton(StructInfoButtonId);
    EXPECT_TRUE(view.InfoVisible());
    EXPECT_EQ(view.Layout().infoBandHeight, infoHeight + 20);
    EXPECT_EQ(measuredWidths.back(), 700 - 24);
    view.OnButton(StructInfoButtonId);
    EXPECT_FALSE(view.InfoVisible());
    EXPECT_EQ(view.Layout().infoBandHeight, 0);
    EXPECT_TRUE(posts.empty());
}

TEST_F(StructViewWindowTest, ReloadAndCloseAreEnabledOnlyWithADefinitionAndInfoOnlyWithInfoText)
{
    EXPECT_TRUE(view.ButtonEnabled(StructViewButton::Open));
    EXPECT_FALSE(view.ButtonEnabled(StructViewButton::Reload));
    EXPECT_FALSE(view.ButtonEnabled(StructViewButton::Close));
    EXPECT_FALSE(view.ButtonEnabled(StructViewButton::Info));
    view.ShowRows(u"a.tlpat", Rows(1), u"");
    EXPECT_TRUE(view.ButtonEnabled(StructViewButton::Reload));
    EXPECT_TRUE(view.ButtonEnabled(StructViewButton::Close));
    EXPECT_FALSE(view.ButtonEnabled(StructViewButton::Info));
    Load(1);
    EXPECT_TRUE(view.ButtonEnabled(StructViewButton::Info));
}

TEST_F(StructViewWindowTest, CopyInLoadedGivesTitleDefinitionHeaderAndRowsInScreenOrder)
{
    view.ShowRows(u"png.tlpat", {Row(u"width", u"0x10", u"0x20", u"4"), Row(u"height", u"0x14", u"0x30", u"4")}, u"");
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::C, true));
    ASSERT_EQ(clipboard.size(), 1u);
    EXPECT_EQ(clipboard[0],
        u"<structview.title>\r\n<structview.header.definition>: png.tlpat\r\n\r\n"
        u"<structview.column.offset>\t<structview.column.value>\t<structview.column.size>\t<structview.column.name>"
        u"\r\n0x10\t0x20\t4\twidth\r\n0x14\t0x30\t4\theight");
}

TEST_F(StructViewWindowTest, CopyInEmptyGivesTheMessageAndADash)
{
    view.ShowMessage(u"Open a pattern");
    EXPECT_EQ(view.CopyText(),
        u"<structview.title>\r\n<structview.header.definition>: -\r\n\r\nOpen a pattern");
}

TEST_F(StructViewWindowTest, CopyInErrorGivesThePrefixAndTheError)
{
    view.ShowError(u"bad");
    EXPECT_EQ(view.CopyText(),
        u"<structview.title>\r\n<structview.header.definition>: -\r\n\r\n<structview.error.prefix>: bad");
}

TEST_F(StructViewWindowTest, CtrlInsertCopiesToo)
{
    EXPECT_TRUE(view.OnKeyDown(VirtualKey::Insert, true));
    EXPECT_EQ(clipboard.size(), 1u);
}

TEST_F(StructViewWindowTest, CAndInsertWithoutControlDoNothing)
{
    EXPECT_FALSE(view.OnKeyDown(VirtualKey::C, false));
    EXPECT_FALSE(view.OnKeyDown(VirtualKey::Insert, false));
    EXPECT_FALSE(view.OnKeyDown(KeyA, true));
    EXPECT_TRUE(clipboard.empty());
}

TEST_F(StructViewWindowTest, TheFormatMenuChecksTheCurrentChoices)
{
    view.SetValueFormat(StructValueFormat{1, 0, 1});
    const std::vector<StructFormatMenu> menu = view.FormatMenu();
    ASSERT_EQ(menu.size(), 3u);
    EXPECT_EQ(menu[0].label, u"<structview.valueformat.bytearray>");
    EXPECT_EQ(menu[1].label, u"<structview.valueformat.endian>");
    EXPECT_EQ(menu[2].label, u"<structview.valueformat.numericbase>");
    std::vector<std::uint32_t> checked;
    std::vector<std::uint32_t> ids;
    for (const StructFormatMenu& group : menu) {
        for (const StructFormatMenuItem& item : group.items) {
            ids.push_back(item.id);
            if (item.checked) {
                checked.push_back(item.id);
            }
        }
    }
    EXPECT_EQ(ids, (std::vector<std::uint32_t>{4201, 4202, 4203, 4204, 4205, 4206}));
    EXPECT_EQ(checked, (std::vector<std::uint32_t>{4202, 4203, 4206}));
    EXPECT_EQ(menu[1].items[1].label, u"<structview.valueformat.endian.big>");
}

TEST_F(StructViewWindowTest, AMenuChoicePostsItsNumberFromOneToSix)
{
    for (std::uint32_t id = 4201; id <= 4206; ++id) {
        view.OnMenuChoice(id);
    }
    view.OnMenuChoice(4200);
    view.OnMenuChoice(4207);
    ASSERT_EQ(posts.size(), 6u);
    for (std::size_t index = 0; index < posts.size(); ++index) {
        EXPECT_EQ(posts[index].message, AppMessage::StructValueFormat);
        EXPECT_EQ(posts[index].wParam, index + 1);
    }
}

TEST_F(StructViewWindowTest, DraggingAColumnEdgeResizesItWithCapture)
{
    Load(2);
    const int edge = view.Layout().ColumnEdge(StructColumn::Value);
    const int y = view.Layout().columnHeader.top + 4;
    EXPECT_EQ(view.OnLeftDown(edge + 3, y), StructPress::StartedDrag);
    EXPECT_EQ(captures, 1);
    EXPECT_TRUE(view.WantsSizingCursor(0, 0));
    view.OnMouseMove(edge + 53, y);
    EXPECT_EQ(view.ColumnWidths()[1], 270);
    view.OnLeftUp();
    EXPECT_EQ(releases, 1);
    EXPECT_FALSE(view.Dragging());
}

TEST_F(StructViewWindowTest, ADraggedColumnNeverGoesBelowItsMinimum)
{
    Load(2);
    const int edge = view.Layout().ColumnEdge(StructColumn::Name);
    const int y = view.Layout().columnHeader.top + 4;
    view.OnLeftDown(edge, y);
    view.OnMouseMove(edge - 1000, y);
    EXPECT_EQ(view.ColumnWidths()[3], 120);
}

TEST_F(StructViewWindowTest, LosingTheCaptureEndsADrag)
{
    Load(2);
    const int edge = view.Layout().ColumnEdge(StructColumn::Offset);
    view.OnLeftDown(edge, view.Layout().columnHeader.top + 4);
    ASSERT_TRUE(view.Dragging());
    view.OnCaptureLost();
    EXPECT_FALSE(view.Dragging());
    view.OnMouseMove(edge + 100, 0);
    EXPECT_EQ(view.ColumnWidths()[0], 72);
}

TEST_F(StructViewWindowTest, ADoubleClickOnAnEdgeResetsThatColumnToItsDefault)
{
    Load(2);
    const int y = view.Layout().columnHeader.top + 4;
    const int edge = view.Layout().ColumnEdge(StructColumn::Size);
    view.OnLeftDown(edge, y);
    view.OnMouseMove(edge + 40, y);
    view.OnLeftUp();
    ASSERT_EQ(view.ColumnWidths()[2], 112);
    view.OnDoubleClick(view.Layout().ColumnEdge(StructColumn::Size), y);
    EXPECT_EQ(view.ColumnWidths(), StructColumnDefaults);
}

TEST_F(StructViewWindowTest, TheSizingCursorShowsOverAnEdgeOnly)
{
    Load(2);
    const int y = view.Layout().columnHeader.top + 4;
    EXPECT_TRUE(view.WantsSizingCursor(view.Layout().ColumnEdge(StructColumn::Offset) + 6, y));
    EXPECT_FALSE(view.WantsSizingCursor(view.Layout().ColumnEdge(StructColumn::Offset) + 7, y));
    EXPECT_FALSE(view.WantsSizingCursor(view.Layout().ColumnEdge(StructColumn::Offset), y + 40));
}

TEST_F(StructViewWindowTest, LabelsReachTheButtonsAndTheWindow)
{
    const int before = controlChanges;
    view.SetLabels(TestLabels());
    EXPECT_GT(controlChanges, before);
    EXPECT_EQ(view.ButtonText(StructViewButton::Open), u"<structview.open.button>");
    EXPECT_EQ(view.ButtonText(StructViewButton::Info), u"<structview.info.button>");
    EXPECT_EQ(view.Labels().columnType, u"<structview.column.type>");
}

} // namespace
} // namespace tlm
