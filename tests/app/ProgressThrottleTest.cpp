#include "app/ProgressThrottle.h"

#include <gtest/gtest.h>

#include <limits>

namespace tlm {
namespace {

// A realistic tick count: the system has been up for a while.
constexpr std::uint64_t Start = 5'000'000;

TEST(ProgressThrottle, ATotalOfZeroShowsOneHundredPercent)
{
    ProgressThrottle throttle;
    EXPECT_TRUE(throttle.Report(0, 0, Start, u"Saving..."));
    EXPECT_EQ(throttle.text, u"Saving... 100%");
    EXPECT_EQ(throttle.lastPercent, 100);
}

TEST(ProgressThrottle, TheTextIsTheWordABlankThePercentAndASign)
{
    ProgressThrottle throttle;
    EXPECT_TRUE(throttle.Report(42, 100, Start, u"Searching..."));
    EXPECT_EQ(throttle.text, u"Searching... 42%");
}

TEST(ProgressThrottle, ThePercentIsRoundedDown)
{
    ProgressThrottle throttle;
    throttle.Report(2, 3, Start, u"w");
    EXPECT_EQ(throttle.lastPercent, 66);
}

TEST(ProgressThrottle, ThePercentIsAtMostOneHundred)
{
    ProgressThrottle throttle;
    throttle.Report(500, 100, Start, u"w");
    EXPECT_EQ(throttle.text, u"w 100%");
}

TEST(ProgressThrottle, HugeSizesDoNotOverflow)
{
    constexpr std::uint64_t max = std::numeric_limits<std::uint64_t>::max();
    ProgressThrottle throttle;
    throttle.Report(max / 2, max, Start, u"w");
    EXPECT_EQ(throttle.lastPercent, 49);
    throttle.Report(max - 1, max, Start + 1000, u"w");
    EXPECT_EQ(throttle.lastPercent, 99);
    throttle.Report(max / 100 * 37 + 12345, max, Start + 2000, u"w");
    EXPECT_EQ(throttle.lastPercent, 37);
}

TEST(ProgressThrottle, ZeroIsShownAtOnce)
{
    ProgressThrottle throttle;
    ASSERT_TRUE(throttle.Report(50, 100, Start, u"w"));
    EXPECT_TRUE(throttle.Report(0, 100, Start + 1, u"w"));
    EXPECT_EQ(throttle.text, u"w 0%");
}

TEST(ProgressThrottle, OneHundredIsShownAtOnce)
{
    ProgressThrottle throttle;
    ASSERT_TRUE(throttle.Report(98, 100, Start, u"w"));
    EXPECT_TRUE(throttle.Report(100, 100, Start + 1, u"w"));
    EXPECT_EQ(throttle.text, u"w 100%");
}

TEST(ProgressThrottle, APercentBetweenTheEndsWithinFiftyMillisecondsIsDropped)
{
    ProgressThrottle throttle;
    ASSERT_TRUE(throttle.Report(10, 100, Start, u"w"));
    EXPECT_FALSE(throttle.Report(20, 100, Start + 49, u"w"));
    EXPECT_EQ(throttle.text, u"w 10%");
    EXPECT_TRUE(throttle.Report(20, 100, Start + 50, u"w"));
    EXPECT_EQ(throttle.text, u"w 20%");
}

TEST(ProgressThrottle, TheSamePercentWithinOneHundredMillisecondsIsDropped)
{
    ProgressThrottle throttle;
    ASSERT_TRUE(throttle.Report(0, 100, Start, u"w"));
    EXPECT_FALSE(throttle.Report(0, 100, Start + 99, u"w"));
    EXPECT_TRUE(throttle.Report(0, 100, Start + 100, u"w"));
}

TEST(ProgressThrottle, TheSamePercentBetweenTheEndsWaitsTheLongerInterval)
{
    ProgressThrottle throttle;
    ASSERT_TRUE(throttle.Report(30, 100, Start, u"w"));
    EXPECT_FALSE(throttle.Report(30, 100, Start + 60, u"w"));
    EXPECT_TRUE(throttle.Report(30, 100, Start + 100, u"w"));
}

TEST(ProgressThrottle, AtMostTwentyUpdatesASecond)
{
    ProgressThrottle throttle;
    int shown = 0;
    // A report every millisecond for one second, climbing from 1 to 99 percent.
    for (std::uint64_t ms = 0; ms < 1000; ++ms) {
        if (throttle.Report(1000 + ms * 98, 100'000, Start + ms, u"w"))
            ++shown;
    }
    EXPECT_LE(shown, 20);
    EXPECT_GE(shown, 19);
}

TEST(ProgressThrottle, ADroppedReportStillMarksTheProgressActive)
{
    ProgressThrottle throttle;
    ASSERT_TRUE(throttle.Report(10, 100, Start, u"w"));
    throttle.active = false;
    EXPECT_FALSE(throttle.Report(11, 100, Start + 1, u"w"));
    EXPECT_TRUE(throttle.active);
}

TEST(ProgressThrottle, ResetForgetsEverything)
{
    ProgressThrottle throttle;
    throttle.Report(10, 100, Start, u"w");
    throttle.Reset();
    EXPECT_FALSE(throttle.active);
    EXPECT_TRUE(throttle.text.empty());
    EXPECT_EQ(throttle.lastPercent, -1);
    EXPECT_EQ(throttle.lastTick, 0u);
}

TEST(ProgressThrottle, AfterResetTheFirstReportIsShown)
{
    ProgressThrottle throttle;
    throttle.Report(10, 100, Start, u"w");
    throttle.Reset();
    EXPECT_TRUE(throttle.Report(10, 100, Start + 1, u"w"));
}

} // namespace
} // namespace tlm
