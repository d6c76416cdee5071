#include "app/WindowPlacement.h"

#include <gtest/gtest.h>

#include <limits>

namespace tlm {
namespace {

constexpr std::int32_t Unlimited = std::numeric_limits<std::int32_t>::max();

TEST(WindowPlacement, WorkArea500WideGivesWindow400Wide)
{
    const WindowPlacement placement = PlaceMainWindow({0, 0, 500, 1000}, Unlimited, Unlimited);
    EXPECT_EQ(placement.width, 400);
}

TEST(WindowPlacement, LargeWorkAreaGivesAtMost980By760)
{
    const WindowPlacement placement = PlaceMainWindow({0, 0, 2560, 1400}, Unlimited, Unlimited);
    EXPECT_EQ(placement.width, 980);
    EXPECT_EQ(placement.height, 760);
}

TEST(WindowPlacement, WindowIsCentredInTheWorkArea)
{
    const WindowPlacement placement = PlaceMainWindow({0, 0, 1920, 1040}, Unlimited, Unlimited);
    EXPECT_EQ(placement, (WindowPlacement{470, 140, 980, 760}));
}

TEST(WindowPlacement, CentringStartsFromTheWorkAreaCorner)
{
    // A second monitor to the left of the primary one, below a top task bar.
    const WindowPlacement placement = PlaceMainWindow({-1920, 40, 0, 1080}, Unlimited, Unlimited);
    EXPECT_EQ(placement, (WindowPlacement{-1920 + 470, 40 + 140, 980, 760}));
}

TEST(WindowPlacement, EightyPercentUsesIntegerDivision)
{
    const WindowPlacement placement = PlaceMainWindow({0, 0, 999, 949}, Unlimited, Unlimited);
    EXPECT_EQ(placement.width, 799);
    EXPECT_EQ(placement.height, 759);
}

TEST(WindowPlacement, MarginOf48WinsOnTinyWorkAreas)
{
    // 80 percent of 200 is 160, but 200 less 48 is 152.
    const WindowPlacement placement = PlaceMainWindow({0, 0, 200, 100}, Unlimited, Unlimited);
    EXPECT_EQ(placement.width, 152);
    EXPECT_EQ(placement.height, 52);
}

TEST(WindowPlacement, WindowIsAtLeastOnePixel)
{
    const WindowPlacement placement = PlaceMainWindow({10, 20, 40, 30}, Unlimited, Unlimited);
    EXPECT_EQ(placement, (WindowPlacement{10 + 14, 20 + 4, 1, 1}));
}

TEST(WindowPlacement, EmptyOrInvertedWorkAreaStillGivesAOnePixelWindowAtItsCorner)
{
    const WindowPlacement placement = PlaceMainWindow({300, 200, 100, 100}, Unlimited, Unlimited);
    EXPECT_EQ(placement, (WindowPlacement{300, 200, 1, 1}));
}

TEST(WindowPlacement, NeverLargerThanTheDefaultSize)
{
    const WindowPlacement placement = PlaceMainWindow({0, 0, 1920, 1040}, 640, 480);
    EXPECT_EQ(placement, (WindowPlacement{640, 280, 640, 480}));
}

TEST(WindowPlacement, HugeWorkAreaDoesNotOverflow)
{
    const ScreenRect huge{std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::min(),
                          std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::max()};
    const WindowPlacement placement = PlaceMainWindow(huge, Unlimited, Unlimited);
    EXPECT_EQ(placement.width, 980);
    EXPECT_EQ(placement.height, 760);
    // The work area spans 2^32 - 1 pixels around the origin; centring lands just left of and above it.
    EXPECT_EQ(placement.left, -491);
    EXPECT_EQ(placement.top, -381);
}

TEST(WorkArea, MonitorWorkAreaIsUsedWhenPresent)
{
    bool askedSystem = false;
    const ScreenRect chosen = ChooseWorkArea(ScreenRect{0, 0, 1600, 860}, [&] {
        askedSystem = true;
        return ScreenRect{0, 0, 800, 600};
    });
    EXPECT_EQ(chosen, (ScreenRect{0, 0, 1600, 860}));
    EXPECT_FALSE(askedSystem);
}

TEST(WorkArea, NoMonitorFallsBackToTheSystemWorkArea)
{
    const ScreenRect chosen = ChooseWorkArea(std::nullopt, [] { return ScreenRect{0, 0, 800, 600}; });
    EXPECT_EQ(chosen, (ScreenRect{0, 0, 800, 600}));
}

TEST(WorkArea, AllZeroMonitorRectangleFallsBackToTheSystemWorkArea)
{
    const ScreenRect chosen = ChooseWorkArea(ScreenRect{}, [] { return ScreenRect{0, 0, 800, 600}; });
    EXPECT_EQ(chosen, (ScreenRect{0, 0, 800, 600}));
}

TEST(WorkArea, MonitorRectangleWithOnlyAnOriginAtZeroIsKept)
{
    const ScreenRect chosen = ChooseWorkArea(ScreenRect{0, 0, 0, 600}, [] { return ScreenRect{0, 0, 800, 600}; });
    EXPECT_EQ(chosen, (ScreenRect{0, 0, 0, 600}));
}

} // namespace
} // namespace tlm
