#include "app/ReadOnlyWarning.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>

namespace tlm {
namespace {

// Timers on a simulated millisecond clock: a timer fires once its deadline is reached, and keeps
// firing every period until killed, as Win32 timers do.
struct SimulatedHost {
    std::uint64_t now = 0;
    std::map<unsigned, std::pair<std::uint64_t, unsigned>> timers; // id -> (deadline, period)
    int beeps = 0;
    int refreshes = 0;
    AppHost host;

    SimulatedHost()
    {
        host.setTimer = [this](unsigned id, unsigned ms) { timers[id] = {now + ms, ms}; };
        host.killTimer = [this](unsigned id) { timers.erase(id); };
        host.beep = [this] { ++beeps; };
        host.refreshStatusBar = [this] { ++refreshes; };
    }

    void AdvanceTo(std::uint64_t time, ReadOnlyWarning& warning)
    {
        while (true) {
            bool fired = false;
            for (auto& [id, timer] : timers) {
                if (timer.first <= time) {
                    now = timer.first;
                    timer.first += timer.second;
                    warning.OnTimer(host, id);
                    fired = true;
                    break;
                }
            }
            if (!fired) {
                break;
            }
        }
        now = time;
    }
};

TEST(ReadOnlyWarningTest, RefusedKeyShowsTheGivenTextBeepsAndRepaints)
{
    SimulatedHost sim;
    ReadOnlyWarning warning;
    warning.OnBlocked(sim.host, u"The file is read-only");
    EXPECT_TRUE(warning.Active());
    EXPECT_EQ(warning.Text(), u"The file is read-only");
    EXPECT_EQ(sim.beeps, 1);
    EXPECT_EQ(sim.refreshes, 1);
    ASSERT_EQ(sim.timers.count(ReadOnlyWarning::TimerId), 1u);
    EXPECT_EQ(sim.timers[ReadOnlyWarning::TimerId].first, 900u);
}

TEST(ReadOnlyWarningTest, WarningEndsNineHundredMillisecondsAfterTheKey)
{
    SimulatedHost sim;
    ReadOnlyWarning warning;
    warning.OnBlocked(sim.host, u"w");
    sim.AdvanceTo(899, warning);
    EXPECT_TRUE(warning.Active());
    sim.AdvanceTo(900, warning);
    EXPECT_FALSE(warning.Active());
    EXPECT_TRUE(warning.Text().empty());
    EXPECT_TRUE(sim.timers.empty());
    EXPECT_EQ(sim.refreshes, 2);
}

TEST(ReadOnlyWarningTest, SecondKeyWithinTheDurationExtendsTheWarningFromItsPressAndBeepsTwice)
{
    SimulatedHost sim;
    ReadOnlyWarning warning;
    warning.OnBlocked(sim.host, u"w");
    sim.AdvanceTo(500, warning);
    warning.OnBlocked(sim.host, u"w");
    sim.AdvanceTo(1399, warning);
    EXPECT_TRUE(warning.Active());
    sim.AdvanceTo(1400, warning);
    EXPECT_FALSE(warning.Active());
    EXPECT_EQ(sim.beeps, 2);
}

TEST(ReadOnlyWarningTest, OtherTimerIdsAreNotHandled)
{
    SimulatedHost sim;
    ReadOnlyWarning warning;
    warning.OnBlocked(sim.host, u"w");
    EXPECT_FALSE(warning.OnTimer(sim.host, 2));
    EXPECT_TRUE(warning.Active());
    EXPECT_TRUE(warning.OnTimer(sim.host, ReadOnlyWarning::TimerId));
    EXPECT_FALSE(warning.Active());
}

TEST(ReadOnlyWarningTest, EmptyHostOperationsAreSkipped)
{
    AppHost empty;
    ReadOnlyWarning warning;
    warning.OnBlocked(empty, u"w");
    EXPECT_TRUE(warning.Active());
    EXPECT_TRUE(warning.OnTimer(empty, ReadOnlyWarning::TimerId));
    EXPECT_FALSE(warning.Active());
}

} // namespace
} // namespace tlm
