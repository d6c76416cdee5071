#include "app/InspectorPlacement.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

const ScreenRect Main{100, 50, 1080, 810};

TEST(InspectorPlacementTest, StandsOnePixelRightOfTheMainWindowWithItsTopAndHeight)
{
    const InspectorPlacementStep step = PlaceInspectorBeside(Main, false, false, 520);
    ASSERT_TRUE(step.move.has_value());
    EXPECT_EQ(*step.move, (WindowPlacement{1081, 50, 520, 760}));
    EXPECT_TRUE(step.show);
}

TEST(InspectorPlacementTest, KeepsItsOwnWidth)
{
    EXPECT_EQ(PlaceInspectorBeside(Main, false, false, 777).move->width, 777);
}

TEST(InspectorPlacementTest, IsHiddenWhileTheMainWindowIsMinimised)
{
    const InspectorPlacementStep step = PlaceInspectorBeside(Main, true, false, 520);
    EXPECT_FALSE(step.move.has_value());
    EXPECT_FALSE(step.show);
}

TEST(InspectorPlacementTest, AMaximisedInspectorStaysWhereItIsButIsShown)
{
    const InspectorPlacementStep step = PlaceInspectorBeside(Main, false, true, 520);
    EXPECT_FALSE(step.move.has_value());
    EXPECT_TRUE(step.show);
}

TEST(InspectorPlacementTest, AMaximisedMainWindowStillPushesItBeside)
{
    // A maximised main window fills the work area; the inspector goes beyond its right edge.
    const ScreenRect maximised{-8, -8, 1928, 1048};
    const InspectorPlacementStep step = PlaceInspectorBeside(maximised, false, false, 520);
    ASSERT_TRUE(step.move.has_value());
    EXPECT_EQ(*step.move, (WindowPlacement{1929, -8, 520, 1056}));
}

} // namespace
} // namespace tlm
