#include "app/SaveFlow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tlm {
namespace {

struct RecordingHost {
    std::vector<std::string> calls;
    std::vector<std::u16string> boxes;
    std::u16string statusSeen;
    std::uint64_t now = 1000;
    AppHost host;

    explicit RecordingHost(const SaveFlow& flow)
    {
        host.rebuildMenu = [this, &flow] { calls.push_back(flow.Busy() ? "menu-busy" : "menu"); };
        host.enableHexView = [this](bool on) { calls.push_back(on ? "enable" : "disable"); };
        host.refreshStatusBar = [this, &flow] {
            calls.push_back("status");
            statusSeen = flow.Progress().text;
        };
        host.updateStatusBarNow = [this] { calls.push_back("paint"); };
        host.pumpMessages = [this] { calls.push_back("pump"); };
        host.updateTitle = [this] { calls.push_back("title"); };
        host.tickCount = [this] { return now; };
        host.messageBox = [this](const std::u16string& text, const std::u16string&, MessageBoxKind) {
            boxes.push_back(text);
            return MessageBoxResult::Ok;
        };
    }
};

const SaveTexts texts{u"Saving", u"Could not save.", u"Tolmo"};

TEST(SaveFlowTest, NoFileOpenSucceedsWithoutSaving)
{
    SaveFlow flow;
    RecordingHost rec(flow);
    bool called = false;
    EXPECT_TRUE(flow.Run(rec.host, false, [&](const ProgressCallback&) { return called = true; }, {}, texts));
    EXPECT_FALSE(called);
    EXPECT_TRUE(rec.calls.empty());
}

TEST(SaveFlowTest, StepsGreyTheMenuDisableTheViewAndRestoreAfterwards)
{
    SaveFlow flow;
    RecordingHost rec(flow);
    EXPECT_TRUE(flow.Run(rec.host, true,
        [&](const ProgressCallback&) {
            rec.calls.push_back("save");
            return true;
        },
        {}, texts));
    const std::vector<std::string> expected{"menu-busy", "disable", "status", "paint", "pump", "save", "enable",
        "menu", "title", "status"};
    EXPECT_EQ(rec.calls, expected);
    EXPECT_FALSE(flow.Busy());
    EXPECT_FALSE(flow.Progress().active);
    EXPECT_TRUE(rec.boxes.empty());
}

TEST(SaveFlowTest, WindowIsBusyWhileTheSaveRunsSoACloseIsRefused)
{
    SaveFlow flow;
    RecordingHost rec(flow);
    bool busyDuringSave = false;
    flow.Run(rec.host, true,
        [&](const ProgressCallback&) {
            busyDuringSave = flow.Busy();
            return true;
        },
        {}, texts);
    EXPECT_TRUE(busyDuringSave);
    EXPECT_FALSE(flow.Busy());
}

TEST(SaveFlowTest, ProgressWithTotalZeroShowsHundredPercent)
{
    SaveFlow flow;
    RecordingHost rec(flow);
    std::u16string shown;
    flow.Run(rec.host, true,
        [&](const ProgressCallback& progress) {
            progress(0, 0);
            shown = rec.statusSeen;
            return true;
        },
        {}, texts);
    EXPECT_EQ(shown, u"Saving 100%");
}

TEST(SaveFlowTest, ShownProgressPumpsMessagesAndThrottledReportsDoNot)
{
    SaveFlow flow;
    RecordingHost rec(flow);
    int pumpsAfterFirst = 0;
    int pumpsAfterSecond = 0;
    flow.Run(rec.host, true,
        [&](const ProgressCallback& progress) {
            rec.calls.clear();
            progress(10, 100);
            pumpsAfterFirst = static_cast<int>(std::count(rec.calls.begin(), rec.calls.end(), "pump"));
            rec.now += 10;
            progress(20, 100);
            pumpsAfterSecond = static_cast<int>(std::count(rec.calls.begin(), rec.calls.end(), "pump"));
            return true;
        },
        {}, texts);
    EXPECT_EQ(pumpsAfterFirst, 1);
    EXPECT_EQ(pumpsAfterSecond, 1);
}

TEST(SaveFlowTest, FailureShowsMessageFollowedByTheDocumentsReason)
{
    SaveFlow flow;
    RecordingHost rec(flow);
    EXPECT_FALSE(flow.Run(rec.host, true, [](const ProgressCallback&) { return false; },
        [] { return std::u16string(u"Access denied."); }, texts));
    ASSERT_EQ(rec.boxes.size(), 1u);
    EXPECT_EQ(rec.boxes[0], u"Could not save.\r\n\r\nAccess denied.");
    EXPECT_FALSE(flow.Busy());
}

TEST(SaveFlowTest, FailureWithoutReasonShowsTheMessageAlone)
{
    SaveFlow flow;
    RecordingHost rec(flow);
    EXPECT_FALSE(flow.Run(rec.host, true, [](const ProgressCallback&) { return false; },
        [] { return std::u16string(); }, texts));
    ASSERT_EQ(rec.boxes.size(), 1u);
    EXPECT_EQ(rec.boxes[0], u"Could not save.");
}

} // namespace
} // namespace tlm
