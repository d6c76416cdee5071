// Where the struct view's parts stand, and what a point on it hits.
#include "structview/StructViewGeometry.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

StructViewLayout Wide(int infoTextHeight = 0, bool infoShown = false, int scrollX = 0)
{
    StructViewLayoutInput input;
    input.clientWidth = 700;
    input.clientHeight = 600;
    input.infoTextHeight = infoTextHeight;
    input.infoShown = infoShown;
    input.rowCount = 10;
    input.scrollX = scrollX;
    return LayoutStructView(input);
}

TEST(StructViewGeometryTest, ButtonsAreRightAlignedFromTheInfoButtonWithEightBetween)
{
    const StructViewLayout layout = Wide();
    EXPECT_EQ(layout.Button(StructViewButton::Info), (StructViewRect{618, 10, 688, 36}));
    EXPECT_EQ(layout.Button(StructViewButton::Close), (StructViewRect{530, 10, 610, 36}));
    EXPECT_EQ(layout.Button(StructViewButton::Reload), (StructViewRect{394, 10, 522, 36}));
    EXPECT_EQ(layout.Button(StructViewButton::Open), (StructViewRect{296, 10, 386, 36}));
}

TEST(StructViewGeometryTest, WithoutInfoTheColumnHeaderFollowsTheBandAndRowsFollowIt)
{
    const StructViewLayout layout = Wide();
    EXPECT_EQ(layout.band.bottom, 62);
    EXPECT_EQ(layout.columnHeader, (StructViewRect{0, 62, 700, 96}));
    EXPECT_EQ(layout.rowArea, (StructViewRect{0, 96, 700, 600}));
    EXPECT_EQ(layout.messageEdit, (StructViewRect{12, 74, 688, 588}));
}

TEST(StructViewGeometryTest, TheInfoBandIsTheMeasuredTextPlusTwenty)
{
    const StructViewLayout layout = Wide(100, true);
    EXPECT_EQ(layout.infoBandHeight, 120);
    EXPECT_EQ(layout.infoEdit, (StructViewRect{12, 72, 688, 172}));
    EXPECT_EQ(layout.columnHeader.top, 182);
    EXPECT_EQ(layout.rowArea.top, 216);
    EXPECT_EQ(layout.messageEdit.top, 194);
}

TEST(StructViewGeometryTest, HiddenInfoTakesNoRoomWhateverItsMeasure)
{
    EXPECT_EQ(Wide(100, false).infoBandHeight, 0);
}

TEST(StructViewGeometryTest, ColumnsStandOffsetValueSizeNameWithSixteenBetween)
{
    const StructViewLayout layout = Wide();
    EXPECT_EQ(layout.Column(StructColumn::Offset).left, 12);
    EXPECT_EQ(layout.Column(StructColumn::Offset).right, 84);
    EXPECT_EQ(layout.Column(StructColumn::Value).left, 100);
    EXPECT_EQ(layout.Column(StructColumn::Value).right, 320);
    EXPECT_EQ(layout.Column(StructColumn::Size).left, 336);
    EXPECT_EQ(layout.Column(StructColumn::Size).right, 408);
    EXPECT_EQ(layout.Column(StructColumn::Name).left, 424);
    EXPECT_EQ(layout.Column(StructColumn::Name).right, 704);
}

TEST(StructViewGeometryTest, ColumnsMoveLeftWithTheHorizontalScroll)
{
    EXPECT_EQ(Wide(0, false, 30).Column(StructColumn::Offset).left, -18);
}

TEST(StructViewGeometryTest, ContentIsTheColumnsPlusSeventyTwoWideAndThirtyTwoARow)
{
    const StructViewLayout layout = Wide();
    EXPECT_EQ(layout.contentWidth, 72 + 220 + 72 + 280 + 72);
    EXPECT_EQ(layout.contentHeight, 320);
}

TEST(StructViewGeometryTest, NarrowColumnsAreTakenAtTheirMinimums)
{
    StructViewLayoutInput input;
    input.clientWidth = 700;
    input.clientHeight = 600;
    input.columnWidths = {1, 1, 1, 1};
    const StructViewLayout layout = LayoutStructView(input);
    EXPECT_EQ(layout.Column(StructColumn::Offset).Width(), 56);
    EXPECT_EQ(layout.Column(StructColumn::Value).Width(), 80);
    EXPECT_EQ(layout.Column(StructColumn::Size).Width(), 56);
    EXPECT_EQ(layout.Column(StructColumn::Name).Width(), 120);
}

TEST(StructViewGeometryTest, TheDropDownEndsAtTheValueColumnsRightSeventyBelowTheInfoBandStart)
{
    EXPECT_EQ(Wide().dropDown, (StructViewRect{300, 70, 320, 88}));
    EXPECT_EQ(Wide(100, true).dropDown, (StructViewRect{300, 190, 320, 208}));
}

TEST(StructViewGeometryTest, ADropDownHitIsInsideTheBoxOnly)
{
    const StructViewLayout layout = Wide();
    EXPECT_TRUE(StructDropDownAt(layout, 300, 70));
    EXPECT_TRUE(StructDropDownAt(layout, 319, 87));
    EXPECT_FALSE(StructDropDownAt(layout, 320, 80));
    EXPECT_FALSE(StructDropDownAt(layout, 310, 88));
}

TEST(StructViewGeometryTest, AnEdgeIsHitWithinSixPixelsOfTheColumnRightPlusEight)
{
    const StructViewLayout layout = Wide();
    EXPECT_EQ(StructColumnEdgeAt(layout, 92, 70), StructColumn::Offset);
    EXPECT_EQ(StructColumnEdgeAt(layout, 86, 70), StructColumn::Offset);
    EXPECT_EQ(StructColumnEdgeAt(layout, 98, 70), StructColumn::Offset);
    EXPECT_FALSE(StructColumnEdgeAt(layout, 99, 70).has_value());
    EXPECT_EQ(StructColumnEdgeAt(layout, 328, 70), StructColumn::Value);
    EXPECT_EQ(StructColumnEdgeAt(layout, 416, 70), StructColumn::Size);
}

TEST(StructViewGeometryTest, AnEdgeIsHitOnlyInTheColumnHeaderBand)
{
    const StructViewLayout layout = Wide();
    EXPECT_FALSE(StructColumnEdgeAt(layout, 92, 61).has_value());
    EXPECT_FALSE(StructColumnEdgeAt(layout, 92, 96).has_value());
}

TEST(StructViewGeometryTest, ARowIsFoundUnderAPointWithTheScroll)
{
    const StructViewLayout layout = Wide();
    EXPECT_EQ(StructRowAt(layout, 10, 0, 50, 96), 0u);
    EXPECT_EQ(StructRowAt(layout, 10, 0, 50, 128), 1u);
    EXPECT_EQ(StructRowAt(layout, 10, 64, 50, 96), 2u);
    EXPECT_FALSE(StructRowAt(layout, 10, 0, 50, 95).has_value());
    EXPECT_FALSE(StructRowAt(layout, 10, 0, 50, 96 + 320).has_value());
}

TEST(StructViewGeometryTest, AClientAreaNarrowerThanTheButtonsLaysOutWithWidthsOfOne)
{
    StructViewLayoutInput input;
    input.clientWidth = 10;
    input.clientHeight = 20;
    input.infoShown = true;
    input.infoTextHeight = 0;
    const StructViewLayout layout = LayoutStructView(input);
    for (const StructViewRect& button : layout.buttons) {
        EXPECT_GE(button.Width(), 1);
        EXPECT_GE(button.Height(), 1);
    }
    EXPECT_EQ(layout.infoEdit.Width(), 1);
    EXPECT_EQ(layout.infoEdit.Height(), 1);
    EXPECT_EQ(layout.messageEdit.Width(), 1);
    EXPECT_EQ(layout.messageEdit.Height(), 1);
    EXPECT_GE(layout.band.Width(), 1);
    EXPECT_GE(layout.columnHeader.Width(), 1);
}

TEST(StructViewGeometryTest, TheRowAreaIsNeverLessThanOneRow)
{
    StructViewLayoutInput input;
    input.clientWidth = 700;
    input.clientHeight = 50;
    EXPECT_EQ(LayoutStructView(input).rowArea.Height(), 32);
}

TEST(StructViewGeometryTest, ScrollLimitsAreTheContentBeyondTheVisiblePart)
{
    StructViewLayoutInput input;
    input.clientWidth = 300;
    input.clientHeight = 96 + 320;
    input.rowCount = 20;
    const StructViewLayout layout = LayoutStructView(input);
    EXPECT_EQ(StructMaxScrollY(layout), 320);
    EXPECT_EQ(StructMaxScrollX(layout), 716 - 300);
    input.rowCount = 2;
    input.clientWidth = 2000;
    EXPECT_EQ(StructMaxScrollY(LayoutStructView(input)), 0);
    EXPECT_EQ(StructMaxScrollX(LayoutStructView(input)), 0);
}

TEST(StructViewGeometryTest, TheWindowStandsItsWidthAndOnePixelLeftOfTheMainWindowAtItsHeight)
{
    EXPECT_EQ(PlaceStructViewBeside(800, 100, 900, 700), (StructViewPlacement{99, 100, 700, 800}));
    EXPECT_EQ(PlaceStructViewBeside(800, 100, 900, 0), (StructViewPlacement{99, 100, 700, 800}));
}

TEST(StructViewGeometryTest, TheStoredWidthIsNeverBelowTheMinimum)
{
    EXPECT_EQ(StoredStructViewWidth(300), 520);
    EXPECT_EQ(StoredStructViewWidth(900), 900);
}

} // namespace
} // namespace tlm
