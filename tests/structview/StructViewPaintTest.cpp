// The struct view's paint list and its palettes.
#include "structview/StructViewPaint.h"

#include "structview/StructViewWindow.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tlm {
namespace {

StructViewWindow LoadedView(std::size_t rowCount, Theme theme = Theme::Light)
{
    StructViewWindow view;
    view.SetLabels(LoadStructViewLabels([](std::string_view key) { return std::u16string(key.begin(), key.end()); }));
    view.SetTheme(theme);
    view.SetClientSize(700, 300);
    std::vector<StructRow> rows(rowCount);
    for (std::size_t index = 0; index < rowCount; ++index) {
        rows[index].name = u"n" + std::u16string(1, static_cast<char16_t>(u'0' + index % 10));
        rows[index].offset = u"0x" + std::u16string(1, static_cast<char16_t>(u'0' + index % 10));
        rows[index].value = u"v";
        rows[index].size = u"1";
    }
    view.ShowRows(u"x.tlpat", std::move(rows), u"");
    return view;
}

std::vector<StructPaintOperation> TextsOf(const std::vector<StructPaintOperation>& operations)
{
    std::vector<StructPaintOperation> texts;
    std::copy_if(operations.begin(), operations.end(), std::back_inserter(texts),
        [](const StructPaintOperation& operation) { return operation.kind == StructPaintKind::Text; });
    return texts;
}

const StructPaintOperation* FindText(const std::vector<StructPaintOperation>& operations, std::u16string_view text)
{
    for (const StructPaintOperation& operation : operations) {
        if (operation.kind == StructPaintKind::Text && operation.text == text) {
            return &operation;
        }
    }
    return nullptr;
}

TEST(StructViewPaletteTest, EachThemeHasItsOwnRowAndOthersTakeTheLightOne)
{
    EXPECT_EQ(StructViewPaletteFor(Theme::Light), (StructViewPalette{0x202020, 0xF2E8E0, 0xCDC6C2, 0xF6E4D6, 0xFAFAFA}));
    EXPECT_EQ(StructViewPaletteFor(Theme::CoolSlate).background, 0x28221Eu);
    EXPECT_EQ(StructViewPaletteFor(Theme::DarkBlue).band, 0x6E472Au);
    EXPECT_EQ(StructViewPaletteFor(Theme::Black).selection, 0x383838u);
    EXPECT_EQ(StructViewPaletteFor(static_cast<Theme>(9)), StructViewPaletteFor(Theme::Light));
}

TEST(StructViewPaletteTest, TheDefinitionColourMixesSeventyTwoPartsTextWithTwentyEightBorder)
{
    const StructViewPalette light = StructViewPaletteFor(Theme::Light);
    const auto mix = [](std::uint32_t a, std::uint32_t b) { return (a * 72 + b * 28) / 100; };
    const std::uint32_t expected =
        mix(0x20, 0xC2) | (mix(0x20, 0xC6) << 8) | (mix(0x20, 0xCD) << 16);
    EXPECT_EQ(StructViewDefinitionColour(light), expected);
}

TEST(StructViewPaintTest, APaintStartsWithTheBackgroundAndTheBand)
{
    const std::vector<StructPaintOperation> operations = BuildStructViewPaint(LoadedView(2, Theme::DarkBlue));
    ASSERT_GE(operations.size(), 2u);
    EXPECT_EQ(operations[0].kind, StructPaintKind::Fill);
    EXPECT_EQ(operations[0].colour, 0x1C140Fu);
    EXPECT_EQ(operations[0].rect, (StructViewRect{0, 0, 700, 300}));
    EXPECT_EQ(operations[1].colour, 0x6E472Au);
    EXPECT_EQ(operations[1].rect.bottom, 62);
}

TEST(StructViewPaintTest, TheDefinitionLineIsDrawnInTheSecondaryFontAndMutedColour)
{
    const std::vector<StructPaintOperation> operations = BuildStructViewPaint(LoadedView(1));
    const StructPaintOperation* line = FindText(operations, u"structview.header.definition: x.tlpat");
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->font, StructPaintFont::Secondary);
    EXPECT_EQ(line->colour, StructViewDefinitionColour(StructViewPaletteFor(Theme::Light)));
    const StructPaintOperation* title = FindText(operations, u"structview.title");
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(title->font, StructPaintFont::Main);
    EXPECT_EQ(title->rect.left, 12);
}

TEST(StructViewPaintTest, HeaderTitlesStandInScreenOrderAndTheTypeIsNeverDrawn)
{
    const std::vector<StructPaintOperation> operations = BuildStructViewPaint(LoadedView(1));
    const StructPaintOperation* offset = FindText(operations, u"structview.column.offset");
    const StructPaintOperation* value = FindText(operations, u"structview.column.value");
    const StructPaintOperation* size = FindText(operations, u"structview.column.size");
    const StructPaintOperation* name = FindText(operations, u"structview.column.name");
    ASSERT_TRUE(offset && value && size && name);
    EXPECT_LT(offset->rect.left, value->rect.left);
    EXPECT_LT(value->rect.left, size->rect.left);
    EXPECT_LT(size->rect.left, name->rect.left);
    EXPECT_EQ(FindText(operations, u"structview.column.type"), nullptr);
}

TEST(StructViewPaintTest, TheDropDownIsAWhiteBoxWithABlackEdgeAndADownMark)
{
    StructViewWindow view = LoadedView(1);
    const std::vector<StructPaintOperation> operations = BuildStructViewPaint(view);
    const StructPaintOperation* mark = FindText(operations, u"\u25BC");
    ASSERT_NE(mark, nullptr);
    EXPECT_EQ(mark->rect, view.Layout().dropDown);
    const auto fill = std::find_if(operations.begin(), operations.end(), [&](const StructPaintOperation& operation) {
        return operation.kind == StructPaintKind::Fill && operation.rect == view.Layout().dropDown;
    });
    ASSERT_NE(fill, operations.end());
    EXPECT_EQ(fill->colour, 0xFFFFFFu);
    EXPECT_EQ((fill + 1)->kind, StructPaintKind::Frame);
    EXPECT_EQ((fill + 1)->colour, 0u);
}

TEST(StructViewPaintTest, OnlyVisibleRowsAreDrawn)
{
    StructViewWindow view = LoadedView(100);
    const std::vector<StructPaintOperation> operations = BuildStructViewPaint(view);
    // 300 high: rows start at 96, so rows 0 to 6 reach the area.
    EXPECT_NE(FindText(operations, u"n6"), nullptr);
    EXPECT_EQ(FindText(operations, u"n7"), nullptr);
}

TEST(StructViewPaintTest, TheSelectedRowIsFilledInTheSelectionColour)
{
    StructViewWindow view = LoadedView(5, Theme::Black);
    view.OnKeyDown(0x28, false);
    view.OnKeyDown(0x28, false);
    const std::vector<StructPaintOperation> operations = BuildStructViewPaint(view);
    const int top = StructRowTop(view.Layout(), 1, 0);
    const auto fill = std::find_if(operations.begin(), operations.end(), [&](const StructPaintOperation& operation) {
        return operation.kind == StructPaintKind::Fill && operation.colour == 0x383838u;
    });
    ASSERT_NE(fill, operations.end());
    EXPECT_EQ(fill->rect.top, top);
}

TEST(StructViewPaintTest, OutsideLoadedNoColumnsOrRowsAreDrawn)
{
    StructViewWindow view = LoadedView(3);
    view.ShowMessage(u"empty");
    const std::vector<StructPaintOperation> operations = BuildStructViewPaint(view);
    EXPECT_EQ(FindText(operations, u"structview.column.offset"), nullptr);
    EXPECT_NE(FindText(operations, u"structview.header.definition: -"), nullptr);
    EXPECT_EQ(TextsOf(operations).size(), 2u);
}

} // namespace
} // namespace tlm
