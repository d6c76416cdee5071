// The inspector window's decisions: splitter, picking, copying, what survives, and the paint list.
#include "inspector/DataInspectorWindow.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tlm {
namespace {

std::vector<std::u16string> TwelveValues()
{
    std::vector<std::u16string> values;
    for (int row = 0; row < 12; ++row) {
        values.push_back(u"value " + std::u16string(1, static_cast<char16_t>(u'A' + row)));
    }
    return values;
}

InspectorLabels TestLabels()
{
    return MakeInspectorLabels([](std::string_view key) { return std::u16string(key.begin(), key.end()); });
}

// A window whose host records what it is asked to do, in a client area the test sets.
class DataInspectorWindowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        DataInspectorHost host;
        host.requestRedraw = [this](bool erase) { redraws.push_back(erase); };
        host.setTitle = [this](const std::u16string& text) { title = text; };
        host.takeFocus = [this] { ++focusTaken; };
        host.captureMouse = [this] { captured = true; };
        host.releaseCapture = [this] { captured = false; ++releases; };
        host.holdsCapture = [this] { return captured; };
        host.showSizingCursor = [this] { ++sizingCursors; };
        host.copyToClipboard = [this](const std::u16string& text) { clipboard.push_back(text); };
        host.clientSize = [this] { return client; };
        window.SetHost(std::move(host));
        window.SetLabels(TestLabels());
        redraws.clear();
    }

    // The middle of a row's value cell, in pixels at 96 dots per inch.
    void ClickValue(int row) { window.OnLeftButtonDown(client.width - 40, 38 + 36 * row + 18); }

    DataInspectorWindow window;
    InspectorClientSize client{504, 600};
    std::vector<bool> redraws;
    std::u16string title;
    int focusTaken = 0;
    bool captured = false;
    int releases = 0;
    int sizingCursors = 0;
    std::vector<std::u16string> clipboard;
};

TEST_F(DataInspectorWindowTest, StartsWithWidth520SplitterAt112AndNothingPicked)
{
    DataInspectorWindow fresh;
    EXPECT_EQ(fresh.WindowWidth(), 520);
    EXPECT_EQ(fresh.SplitterX(), 112);
    EXPECT_EQ(fresh.SelectedRow(), -1);
    EXPECT_FALSE(fresh.DraggingSplitter());
    EXPECT_TRUE(fresh.Values().empty());
}

TEST(InspectorLabelsTest, TakeTitleColumnsAndTheTwelveRowNamesInRowOrder)
{
    const InspectorLabels labels = TestLabels();
    EXPECT_EQ(labels.title, u"inspector.data.title");
    EXPECT_EQ(labels.nameColumnTitle, u"inspector.data.column.name");
    EXPECT_EQ(labels.valueColumnTitle, u"inspector.data.column.value");
    const std::vector<std::u16string> expected{u"inspector.data.row.binary", u"inspector.data.row.uint8_dec",
        u"inspector.data.row.uint16_le", u"inspector.data.row.uint16_be", u"inspector.data.row.uint32_le",
        u"inspector.data.row.uint32_be", u"inspector.data.row.uint64_le", u"inspector.data.row.uint64_be",
        u"inspector.data.row.utf8", u"inspector.data.row.utf16le", u"inspector.data.row.utf16be",
        u"inspector.data.row.current_encoding_char"};
    EXPECT_EQ(labels.rowNames, expected);
}

TEST_F(DataInspectorWindowTest, NewLabelsSetTheTitleAndRepaintWithErasing)
{
    InspectorLabels labels = TestLabels();
    labels.title = u"Dateninspektor";
    window.SetLabels(labels);
    EXPECT_EQ(title, u"Dateninspektor");
    EXPECT_EQ(redraws, std::vector<bool>{true});
}

TEST_F(DataInspectorWindowTest, ANewThemeRepaintsWithErasing)
{
    window.SetTheme(Theme::Black);
    EXPECT_EQ(window.GetTheme(), Theme::Black);
    EXPECT_EQ(redraws, std::vector<bool>{true});
}

TEST_F(DataInspectorWindowTest, NewValuesRepaint)
{
    window.SetValues(TwelveValues());
    EXPECT_EQ(window.Values(), TwelveValues());
    EXPECT_EQ(redraws, std::vector<bool>{false});
}

TEST_F(DataInspectorWindowTest, EffectiveSplitterKeeps112AtTheLeftAnd160ForTheValues)
{
    EXPECT_EQ(window.EffectiveSplitter(504), 112);
    window.OnLeftButtonDown(112, 10);
    window.OnMouseMove(400, 10);
    EXPECT_EQ(window.SplitterX(), 344); // 504 less 160
    window.OnMouseMove(20, 10);
    EXPECT_EQ(window.SplitterX(), 112);
}

TEST_F(DataInspectorWindowTest, AWindow420WideHasItsSplitterNoFurtherRightThan260)
{
    client = {420, 300};
    window.OnLeftButtonDown(112, 100);
    window.OnMouseMove(419, 100);
    EXPECT_EQ(window.SplitterX(), 260);
    EXPECT_EQ(window.EffectiveSplitter(420), 260);
}

TEST_F(DataInspectorWindowTest, ANarrowAreaKeepsTheSplitterAt112)
{
    EXPECT_EQ(window.EffectiveSplitter(200), 112);
    EXPECT_EQ(window.EffectiveSplitter(0), 112);
}

TEST_F(DataInspectorWindowTest, TheSplitterIsGrabbedCloserThanSevenUnitsAlsoInTheHeader)
{
    EXPECT_TRUE(window.IsOverSplitter(106.0f, 5.0f, client));
    EXPECT_TRUE(window.IsOverSplitter(118.5f, 300.0f, client));
    EXPECT_FALSE(window.IsOverSplitter(105.0f, 300.0f, client));
    EXPECT_FALSE(window.IsOverSplitter(119.0f, 300.0f, client));
    EXPECT_FALSE(window.IsOverSplitter(112.0f, 600.0f, client)); // below the client area
    EXPECT_FALSE(window.IsOverSplitter(112.0f, -1.0f, client));
}

TEST_F(DataInspectorWindowTest, ADragCapturesMovesTheSplitterAndEndsOnRelease)
{
    window.OnLeftButtonDown(114, 200);
    EXPECT_TRUE(window.DraggingSplitter());
    EXPECT_TRUE(captured);
    EXPECT_EQ(window.SplitterX(), 114);
    window.OnMouseMove(250, 500);
    EXPECT_EQ(window.SplitterX(), 250);
    EXPECT_GE(sizingCursors, 2);
    EXPECT_TRUE(window.OnLeftButtonUp());
    EXPECT_FALSE(window.DraggingSplitter());
    EXPECT_FALSE(captured);
    EXPECT_EQ(releases, 1);
    EXPECT_EQ(window.SelectedRow(), -1); // a grab picks nothing
}

TEST_F(DataInspectorWindowTest, AReleaseWithoutTheCaptureReleasesNothing)
{
    window.OnLeftButtonDown(112, 200);
    captured = false;
    window.OnLeftButtonUp();
    EXPECT_EQ(releases, 0);
    EXPECT_FALSE(window.DraggingSplitter());
}

TEST_F(DataInspectorWindowTest, LosingTheCaptureEndsTheDrag)
{
    window.OnLeftButtonDown(112, 200);
    window.OnCaptureChanged();
    EXPECT_FALSE(window.DraggingSplitter());
    window.OnMouseMove(300, 200);
    EXPECT_EQ(window.SplitterX(), 112);
}

TEST_F(DataInspectorWindowTest, AMoveOverTheSplitterShowsTheSizingArrowElsewhereTheDefault)
{
    EXPECT_TRUE(window.OnMouseMove(110, 300));
    EXPECT_EQ(sizingCursors, 1);
    EXPECT_FALSE(window.OnMouseMove(300, 300));
    EXPECT_EQ(sizingCursors, 1);
}

TEST_F(DataInspectorWindowTest, AClickTakesTheFocus)
{
    ClickValue(3);
    EXPECT_EQ(focusTaken, 1);
}

TEST_F(DataInspectorWindowTest, AClickOnAValuePicksItsRowAndRepaintsWithErasing)
{
    window.SetValues(TwelveValues());
    redraws.clear();
    ClickValue(4);
    EXPECT_EQ(window.SelectedRow(), 4);
    EXPECT_EQ(redraws, std::vector<bool>{true});
}

TEST_F(DataInspectorWindowTest, AClickOnTheSamePickRepaintsNothing)
{
    window.SetValues(TwelveValues());
    ClickValue(4);
    redraws.clear();
    ClickValue(4);
    EXPECT_TRUE(redraws.empty());
}

TEST_F(DataInspectorWindowTest, AClickOnANameCellClearsTheSelection)
{
    window.SetValues(TwelveValues());
    ClickValue(2);
    window.OnLeftButtonDown(50, 38 + 36 * 2 + 18);
    EXPECT_EQ(window.SelectedRow(), -1);
}

TEST_F(DataInspectorWindowTest, AClickInTheHeaderOrBelowTheRowsClearsTheSelection)
{
    window.SetValues(TwelveValues());
    ClickValue(2);
    window.OnLeftButtonDown(300, 20);
    EXPECT_EQ(window.SelectedRow(), -1);
    ClickValue(2);
    window.OnLeftButtonDown(300, 38 + 36 * 12 + 5);
    EXPECT_EQ(window.SelectedRow(), -1);
}

TEST_F(DataInspectorWindowTest, TheRowOfAClickIsCountedFromTheHeadersLowerEdge)
{
    window.SetValues(TwelveValues());
    window.OnLeftButtonDown(300, 38);
    EXPECT_EQ(window.SelectedRow(), 0);
    window.OnLeftButtonDown(300, 38 + 36 - 1);
    EXPECT_EQ(window.SelectedRow(), 0);
    window.OnLeftButtonDown(300, 38 + 36);
    EXPECT_EQ(window.SelectedRow(), 1);
    window.OnLeftButtonDown(300, 38 + 36 * 11 + 35);
    EXPECT_EQ(window.SelectedRow(), 11);
}

TEST_F(DataInspectorWindowTest, WithNoValuesTheNamesShowAndClicksSelectNothing)
{
    ClickValue(0);
    ClickValue(5);
    EXPECT_EQ(window.SelectedRow(), -1);
    InspectorPaint paint;
    BuildInspectorPaint(window, client, paint);
    std::vector<std::u16string> texts;
    for (const InspectorPaintOperation& operation : paint.operations) {
        if (operation.kind == InspectorPaintKind::DrawTextInBox) {
            texts.emplace_back(paint.TextOf(operation));
        }
    }
    ASSERT_EQ(texts.size(), 2u + 12u * 2u);
    for (int row = 0; row < 12; ++row) {
        EXPECT_EQ(texts[2 + row * 2], TestLabels().rowNames[row]);
        EXPECT_TRUE(texts[3 + row * 2].empty());
    }
}

TEST_F(DataInspectorWindowTest, OnlyRowsWithValuesCanBePicked)
{
    window.SetValues({u"a", u"b", u"c"});
    ClickValue(2);
    EXPECT_EQ(window.SelectedRow(), 2);
    ClickValue(3);
    EXPECT_EQ(window.SelectedRow(), -1);
}

TEST_F(DataInspectorWindowTest, ClicksAtHigherDpiAreTurnedIntoLayoutUnits)
{
    window.SetDpi(192);
    window.SetValues(TwelveValues());
    // Row 1 spans 74 to 110 units, 148 to 220 pixels.
    window.OnLeftButtonDown(1100, 150);
    EXPECT_EQ(window.SelectedRow(), -1); // 550 units lies past a client area 504 wide
    window.OnLeftButtonDown(600, 150);
    EXPECT_EQ(window.SelectedRow(), 1);
}

TEST_F(DataInspectorWindowTest, ADpiOfZeroCountsAs96)
{
    window.SetDpi(0);
    EXPECT_EQ(window.Dpi(), 96u);
}

TEST_F(DataInspectorWindowTest, ThePickSurvivesNewValues)
{
    window.SetValues(TwelveValues());
    ClickValue(7);
    std::vector<std::u16string> next = TwelveValues();
    next[7] = u"changed";
    window.SetValues(next);
    EXPECT_EQ(window.SelectedRow(), 7);
    EXPECT_EQ(window.CopyText(), std::optional<std::u16string>(u"changed"));
}

TEST_F(DataInspectorWindowTest, APickPastFewerValuesFallsToTheLastRow)
{
    window.SetValues(TwelveValues());
    ClickValue(9);
    window.SetValues({u"a", u"b", u"c"});
    EXPECT_EQ(window.SelectedRow(), 2);
}

TEST_F(DataInspectorWindowTest, APickWithNoValuesLeftIsDropped)
{
    window.SetValues(TwelveValues());
    ClickValue(9);
    window.SetValues({});
    EXPECT_EQ(window.SelectedRow(), -1);
}

TEST_F(DataInspectorWindowTest, CtrlCCopiesThePickedValueAsShown)
{
    std::vector<std::u16string> values = TwelveValues();
    values[8] = u"\u00E9 (U+00E9)";
    window.SetValues(values);
    ClickValue(8);
    EXPECT_TRUE(window.OnKeyDown(0x43, true));
    EXPECT_EQ(clipboard, std::vector<std::u16string>{u"\u00E9 (U+00E9)"});
}

TEST_F(DataInspectorWindowTest, CtrlInsertAndTheCopyMessageCopyToo)
{
    window.SetValues(TwelveValues());
    ClickValue(1);
    EXPECT_TRUE(window.OnKeyDown(0x2D, true));
    window.Copy();
    EXPECT_EQ(clipboard, (std::vector<std::u16string>{u"value B", u"value B"}));
}

TEST_F(DataInspectorWindowTest, OtherKeysAreNotTheWindows)
{
    window.SetValues(TwelveValues());
    ClickValue(1);
    EXPECT_FALSE(window.OnKeyDown(0x43, false));
    EXPECT_FALSE(window.OnKeyDown(0x2D, false));
    EXPECT_FALSE(window.OnKeyDown(0x56, true));
    EXPECT_TRUE(clipboard.empty());
}

TEST_F(DataInspectorWindowTest, AfterCtrlCWithNothingSelectedTheClipboardIsUnchanged)
{
    window.SetValues(TwelveValues());
    EXPECT_TRUE(window.OnKeyDown(0x43, true));
    window.Copy();
    EXPECT_TRUE(clipboard.empty());
    EXPECT_FALSE(window.CopyText().has_value());
}

TEST_F(DataInspectorWindowTest, HidingAndShowingAgainKeepsWidthSplitterAndPick)
{
    window.SetValues(TwelveValues());
    window.OnResized(600, false);
    window.OnLeftButtonDown(112, 10);
    window.OnMouseMove(200, 10);
    window.OnLeftButtonUp();
    ClickValue(5);
    // The platform window goes and a new one comes: the object and its host stay, the texts are given again.
    window.SetHost({});
    window.SetHost(DataInspectorHost{});
    window.SetLabels(TestLabels());
    window.SetTheme(Theme::DarkBlue);
    EXPECT_EQ(window.WindowWidth(), 600);
    EXPECT_EQ(window.SplitterX(), 200);
    EXPECT_EQ(window.SelectedRow(), 5);
}

TEST_F(DataInspectorWindowTest, AResizeKeepsTheOuterWidthUnlessMaximised)
{
    window.OnResized(640, false);
    EXPECT_EQ(window.WindowWidth(), 640);
    window.OnResized(1920, true);
    EXPECT_EQ(window.WindowWidth(), 640);
}

TEST(InspectorPaletteTest, EachThemeHasItsOwnColours)
{
    const InspectorPalette light = InspectorPaletteFor(Theme::Light);
    EXPECT_EQ(light.background, (InspectorColor{0xFA, 0xFA, 0xFA}));
    EXPECT_EQ(light.header, (InspectorColor{0xE0, 0xE8, 0xF2}));
    EXPECT_EQ(light.grid, (InspectorColor{0xC2, 0xC6, 0xCD}));
    EXPECT_EQ(light.text, (InspectorColor{0x20, 0x20, 0x20}));
    EXPECT_EQ(light.selection, (InspectorColor{0xD6, 0xE4, 0xF6}));
    const InspectorPalette slate = InspectorPaletteFor(Theme::CoolSlate);
    EXPECT_EQ(slate.background, (InspectorColor{0x1E, 0x22, 0x28}));
    EXPECT_EQ(slate.header, (InspectorColor{0x2A, 0x30, 0x39}));
    EXPECT_EQ(slate.grid, (InspectorColor{0x4A, 0x52, 0x5E}));
    EXPECT_EQ(slate.text, (InspectorColor{0xE8, 0xEB, 0xEF}));
    EXPECT_EQ(slate.selection, (InspectorColor{0x32, 0x3D, 0x4D}));
    const InspectorPalette blue = InspectorPaletteFor(Theme::DarkBlue);
    EXPECT_EQ(blue.background, (InspectorColor{0x0F, 0x14, 0x1C}));
    EXPECT_EQ(blue.header, (InspectorColor{0x2A, 0x47, 0x6E}));
    EXPECT_EQ(blue.grid, (InspectorColor{0x3C, 0x46, 0x52}));
    EXPECT_EQ(blue.text, (InspectorColor{0xE6, 0xED, 0xF3}));
    EXPECT_EQ(blue.selection, (InspectorColor{0x20, 0x34, 0x4F}));
    const InspectorPalette black = InspectorPaletteFor(Theme::Black);
    EXPECT_EQ(black.background, (InspectorColor{0x11, 0x11, 0x11}));
    EXPECT_EQ(black.header, (InspectorColor{0x2D, 0x2D, 0x2D}));
    EXPECT_EQ(black.grid, (InspectorColor{0x48, 0x48, 0x48}));
    EXPECT_EQ(black.text, (InspectorColor{0xF3, 0xF3, 0xF3}));
    EXPECT_EQ(black.selection, (InspectorColor{0x38, 0x38, 0x38}));
}

TEST(InspectorPaletteTest, AnUnknownThemeIsLight)
{
    EXPECT_EQ(InspectorPaletteFor(static_cast<Theme>(9)), InspectorPaletteFor(Theme::Light));
}

TEST(InspectorPaletteTest, RolesNameTheirColours)
{
    const InspectorPalette palette = InspectorPaletteFor(Theme::DarkBlue);
    EXPECT_EQ(palette.Of(InspectorColorRole::Background), palette.background);
    EXPECT_EQ(palette.Of(InspectorColorRole::Header), palette.header);
    EXPECT_EQ(palette.Of(InspectorColorRole::Grid), palette.grid);
    EXPECT_EQ(palette.Of(InspectorColorRole::Text), palette.text);
    EXPECT_EQ(palette.Of(InspectorColorRole::Selection), palette.selection);
}

class InspectorPaintTest : public DataInspectorWindowTest {
protected:
    InspectorPaint Build()
    {
        InspectorPaint paint;
        BuildInspectorPaint(window, client, paint);
        return paint;
    }
};

void ExpectBox(const InspectorPaintOperation& operation, float left, float top, float right, float bottom)
{
    EXPECT_FLOAT_EQ(operation.left, left);
    EXPECT_FLOAT_EQ(operation.top, top);
    EXPECT_FLOAT_EQ(operation.right, right);
    EXPECT_FLOAT_EQ(operation.bottom, bottom);
}

TEST_F(InspectorPaintTest, ClearsThenHeaderThenTheTwoLinesThenTheColumnTitles)
{
    window.SetTheme(Theme::CoolSlate);
    const InspectorPaint paint = Build();
    EXPECT_EQ(paint.palette, InspectorPaletteFor(Theme::CoolSlate));
    ASSERT_GE(paint.operations.size(), 6u);
    EXPECT_EQ(paint.operations[0].kind, InspectorPaintKind::Clear);
    EXPECT_EQ(paint.operations[0].color, InspectorColorRole::Background);
    EXPECT_EQ(paint.operations[1].kind, InspectorPaintKind::FillRectangle);
    EXPECT_EQ(paint.operations[1].color, InspectorColorRole::Header);
    ExpectBox(paint.operations[1], 0, 0, 504, 38);
    EXPECT_EQ(paint.operations[2].kind, InspectorPaintKind::DrawLine);
    EXPECT_EQ(paint.operations[2].color, InspectorColorRole::Grid);
    ExpectBox(paint.operations[2], 112, 0, 112, 600);
    EXPECT_EQ(paint.operations[3].kind, InspectorPaintKind::DrawLine);
    ExpectBox(paint.operations[3], 0, 38, 504, 38);
    EXPECT_EQ(paint.operations[4].kind, InspectorPaintKind::DrawTextInBox);
    EXPECT_EQ(paint.operations[4].color, InspectorColorRole::Text);
    EXPECT_EQ(paint.TextOf(paint.operations[4]), u"inspector.data.column.name");
    ExpectBox(paint.operations[4], 12, 0, 100, 38);
    EXPECT_EQ(paint.TextOf(paint.operations[5]), u"inspector.data.column.value");
    ExpectBox(paint.operations[5], 124, 0, 492, 38);
}

TEST_F(InspectorPaintTest, EachRowHasItsLowerGridLineNameAndValue)
{
    window.SetValues(TwelveValues());
    const InspectorPaint paint = Build();
    ASSERT_EQ(paint.operations.size(), 6u + 12u * 3u);
    for (int row = 0; row < 12; ++row) {
        const float top = 38.0f + 36.0f * static_cast<float>(row);
        const InspectorPaintOperation& line = paint.operations[6 + row * 3];
        const InspectorPaintOperation& name = paint.operations[7 + row * 3];
        const InspectorPaintOperation& value = paint.operations[8 + row * 3];
        EXPECT_EQ(line.kind, InspectorPaintKind::DrawLine);
        EXPECT_EQ(line.color, InspectorColorRole::Grid);
        ExpectBox(line, 0, top + 36, 504, top + 36);
        EXPECT_EQ(paint.TextOf(name), TestLabels().rowNames[row]);
        ExpectBox(name, 12, top, 100, top + 36);
        EXPECT_EQ(paint.TextOf(value), TwelveValues()[row]);
        ExpectBox(value, 124, top, 492, top + 36);
    }
}

TEST_F(InspectorPaintTest, ThePickedRowIsFilledAcrossTheWholeWidthBeforeItsLine)
{
    window.SetValues(TwelveValues());
    ClickValue(3);
    const InspectorPaint paint = Build();
    ASSERT_EQ(paint.operations.size(), 6u + 12u * 3u + 1u);
    const InspectorPaintOperation& fill = paint.operations[6 + 3 * 3];
    EXPECT_EQ(fill.kind, InspectorPaintKind::FillRectangle);
    EXPECT_EQ(fill.color, InspectorColorRole::Selection);
    ExpectBox(fill, 0, 38 + 36 * 3, 504, 38 + 36 * 4);
    EXPECT_EQ(paint.operations[7 + 3 * 3].kind, InspectorPaintKind::DrawLine);
}

TEST_F(InspectorPaintTest, TheColumnsFollowTheSplitter)
{
    window.OnLeftButtonDown(112, 10);
    window.OnMouseMove(200, 10);
    const InspectorPaint paint = Build();
    ExpectBox(paint.operations[2], 200, 0, 200, 600);
    ExpectBox(paint.operations[4], 12, 0, 188, 38);
    ExpectBox(paint.operations[5], 212, 0, 492, 38);
}

TEST_F(InspectorPaintTest, ARebuildReplacesTheFormerList)
{
    InspectorPaint paint;
    BuildInspectorPaint(window, client, paint);
    const std::size_t count = paint.operations.size();
    const std::size_t characters = paint.text.size();
    BuildInspectorPaint(window, client, paint);
    EXPECT_EQ(paint.operations.size(), count);
    EXPECT_EQ(paint.text.size(), characters);
}

} // namespace
} // namespace tlm
