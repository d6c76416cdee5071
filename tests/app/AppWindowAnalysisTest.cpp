// The analysis workers seen from the main window: requests follow the view, results come back only as
// posted messages, stale or unwanted ones are dropped, and every record is freed by its receiver.
#include "AppWindowFixture.h"

#include "FreedBlockWatch.h"

#include "hexview/VirtualKey.h"

#include <chrono>

namespace tlm::test {
namespace {

std::uint64_t GenerationOf(const PostedResult& result)
{
    return reinterpret_cast<const InspectorWorker::Result*>(result.lParam)->generation;
}

class AppWindowAnalysisTest : public AppWindowFixture {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Start());
        ASSERT_TRUE(results.WaitForPosted(AppMessage::InspectorResult, 1));
    }

    void TearDown() override { StopWatchingFrees(); }

    // The newest inspector result waiting; the older ones are delivered first.
    PostedResult TakeNewestInspectorResult()
    {
        std::vector<PostedResult> waiting = results.TakeAll();
        EXPECT_FALSE(waiting.empty());
        if (waiting.empty()) {
            return {};
        }
        const PostedResult newest = waiting.back();
        waiting.pop_back();
        for (const PostedResult& older : waiting) {
            app.OnAppMessage(static_cast<AppMessage>(older.message), 0, older.lParam);
        }
        EXPECT_EQ(newest.message, static_cast<std::uint32_t>(AppMessage::InspectorResult));
        return newest;
    }

    void Deliver(const PostedResult& result)
    {
        EXPECT_TRUE(app.OnAppMessage(static_cast<AppMessage>(result.message), 0, result.lParam));
    }
};

TEST_F(AppWindowAnalysisTest, NothingIsShownUntilTheResultsMessageIsHandled)
{
    EXPECT_TRUE(inspectorValues.empty());
    EXPECT_FALSE(Called("showInspectorValues"));
}

TEST_F(AppWindowAnalysisTest, AResultAnsweringTheLatestRequestIsShownPlacedAndFreed)
{
    const PostedResult result = TakeNewestInspectorResult();
    ASSERT_EQ(GenerationOf(result), app.Inspector().CurrentGeneration());
    ClearRecords();
    StartWatchingFrees();
    Deliver(result);
    StopWatchingFrees();
    EXPECT_TRUE(WasFreed(reinterpret_cast<const void*>(result.lParam)));
    ASSERT_EQ(inspectorValues.size(), 1u);
    EXPECT_FALSE(inspectorValues[0].empty());
    EXPECT_EQ(CallsAmong({"showInspectorValues", "placeAnalysisWindows"}),
        (std::vector<std::string>{"showInspectorValues", "placeAnalysisWindows"}));
}

TEST_F(AppWindowAnalysisTest, AStaleResultIsDroppedAndFreed)
{
    const PostedResult stale = TakeNewestInspectorResult();
    const std::uint64_t staleGeneration = GenerationOf(stale);
    app.OnAppMessage(AppMessage::ViewChanged, 0, 0);
    ASSERT_GT(app.Inspector().CurrentGeneration(), staleGeneration);
    ClearRecords();
    StartWatchingFrees();
    Deliver(stale);
    StopWatchingFrees();
    EXPECT_TRUE(WasFreed(reinterpret_cast<const void*>(stale.lParam)));
    EXPECT_TRUE(inspectorValues.empty());

    // The answer to the newer request is shown.
    ASSERT_TRUE(results.WaitForPosted(AppMessage::InspectorResult, 2));
    const PostedResult fresh = TakeNewestInspectorResult();
    EXPECT_EQ(GenerationOf(fresh), app.Inspector().CurrentGeneration());
    Deliver(fresh);
    EXPECT_EQ(inspectorValues.size(), 1u);
}

TEST_F(AppWindowAnalysisTest, AResultArrivingAfterTheInspectorWasSwitchedOffIsDroppedAndFreed)
{
    const PostedResult result = TakeNewestInspectorResult();
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsAnalysisDataInspector)));
    ASSERT_EQ(GenerationOf(result), app.Inspector().CurrentGeneration());
    ClearRecords();
    StartWatchingFrees();
    Deliver(result);
    StopWatchingFrees();
    EXPECT_TRUE(WasFreed(reinterpret_cast<const void*>(result.lParam)));
    EXPECT_TRUE(inspectorValues.empty());
    EXPECT_FALSE(inspectorWindow);
}

TEST_F(AppWindowAnalysisTest, AStructResultIsFreedWhetherWantedOrNot)
{
    auto* unwanted = new StructWorker::Result{};
    unwanted->generation = app.StructRows().CurrentGeneration();
    StartWatchingFrees();
    EXPECT_TRUE(app.OnAppMessage(AppMessage::StructResult, 0, reinterpret_cast<std::intptr_t>(unwanted)));
    EXPECT_TRUE(WasFreed(unwanted));

    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsAnalysisStructView)));
    auto* shown = new StructWorker::Result{};
    shown->generation = app.StructRows().CurrentGeneration();
    EXPECT_TRUE(app.OnAppMessage(AppMessage::StructResult, 0, reinterpret_cast<std::intptr_t>(shown)));
    EXPECT_TRUE(WasFreed(shown));
    StopWatchingFrees();
}

TEST_F(AppWindowAnalysisTest, EveryViewChangeRequestsTheInspectorAgain)
{
    OpenFile(WriteFile("inspected.bin", {0x41, 0x42, 0x43}));
    const std::uint64_t before = app.Inspector().CurrentGeneration();
    app.View().OnKeyDown(VirtualKey::Right, false);
    DeliverViewMessages();
    EXPECT_EQ(app.Inspector().CurrentGeneration(), before + 1);
}

TEST_F(AppWindowAnalysisTest, WithTheInspectorOffNothingIsRequested)
{
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsAnalysisDataInspector)));
    const std::uint64_t before = app.Inspector().CurrentGeneration();
    app.OnAppMessage(AppMessage::ViewChanged, 0, 0);
    EXPECT_EQ(app.Inspector().CurrentGeneration(), before);
    EXPECT_FALSE(app.Inspector().HasPendingRequest());
}

TEST_F(AppWindowAnalysisTest, TheInspectorClosedMessageSwitchesTheInspectorOffAndStoresIt)
{
    ClearRecords();
    EXPECT_TRUE(app.OnAppMessage(AppMessage::InspectorClosed, 0, 0));
    EXPECT_FALSE(inspectorWindow);
    EXPECT_FALSE(app.Settings().dataInspectorVisible);
    EXPECT_FALSE(StoredSettings().dataInspectorVisible);
    EXPECT_FALSE(Item(CommandId::SettingsAnalysisDataInspector).checked);
    EXPECT_TRUE(Called("installMenu"));
}

TEST_F(AppWindowAnalysisTest, AClosedMessageForAnInspectorAlreadyOffDoesNotWriteTheSettings)
{
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsAnalysisDataInspector)));
    // Without the file, any write would show as a file that is back.
    std::filesystem::remove(std::filesystem::path(SettingsFile()));
    EXPECT_TRUE(app.OnAppMessage(AppMessage::InspectorClosed, 0, 0));
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(SettingsFile())));
}

TEST_F(AppWindowAnalysisTest, TheValuesShownAreThoseOfTheBytesAtTheCaret)
{
    OpenFile(WriteFile("values.bin", {0x00, 0x41, 0x42, 0x43, 0x44}));
    app.View().OnKeyDown(VirtualKey::Right, false);
    DeliverViewMessages();
    ClearRecords();
    // Older answers are dropped as they come; the one for the latest request is shown.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (inspectorValues.empty() && std::chrono::steady_clock::now() < deadline) {
        results.WaitForPosted(AppMessage::InspectorResult, results.PostedCount(AppMessage::InspectorResult) + 1,
            std::chrono::milliseconds(50));
        DeliverResults();
    }
    ASSERT_FALSE(inspectorValues.empty());
    const std::vector<std::u16string>& rows = inspectorValues.back();
    ASSERT_EQ(rows.size(), 12u);
    EXPECT_EQ(rows[0], u"0b0100_0001");
    EXPECT_EQ(rows[2], u"16961 / 0x4241");
    EXPECT_EQ(rows[5], u"1094861636 / 0x41424344");
    // Eight bytes are wanted, four are there.
    EXPECT_EQ(rows[6], Tr("inspector.data.value.unavailable"));
}

TEST_F(AppWindowAnalysisTest, SwitchingTheInspectorOnMakesLabelsPlacesAndRequestsItsWindow)
{
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsAnalysisDataInspector)));
    ClearRecords();
    const std::uint64_t before = app.Inspector().CurrentGeneration();
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsAnalysisDataInspector)));
    EXPECT_TRUE(inspectorWindow);
    const std::vector<std::string> order =
        CallsAmong({"ensureInspectorWindow", "relabelAnalysisWindows", "placeAnalysisWindows", "installMenu"});
    ASSERT_GE(order.size(), 4u);
    EXPECT_EQ(std::vector<std::string>(order.begin(), order.begin() + 3),
        (std::vector<std::string>{"ensureInspectorWindow", "relabelAnalysisWindows", "placeAnalysisWindows"}));
    EXPECT_EQ(order.back(), "installMenu");
    EXPECT_GT(app.Inspector().CurrentGeneration(), before);
}

TEST_F(AppWindowAnalysisTest, SwitchingTheInspectorOffDestroysItsWindow)
{
    ClearRecords();
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsAnalysisDataInspector)));
    EXPECT_TRUE(Called("destroyInspectorWindow"));
    EXPECT_FALSE(Called("ensureInspectorWindow"));
}

TEST_F(AppWindowAnalysisTest, MovingSizingAndANewDpiPlaceTheAnalysisWindows)
{
    ClearRecords();
    app.OnMove();
    EXPECT_EQ(CallCount("placeAnalysisWindows"), 1u);
    app.OnSize();
    EXPECT_EQ(CallCount("placeAnalysisWindows"), 2u);
    app.OnDpiChanged(144);
    EXPECT_EQ(CallCount("placeAnalysisWindows"), 3u);
}

TEST_F(AppWindowAnalysisTest, AnInspectorWindowThatCannotBeMadeIsNeitherPlacedNorFed)
{
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsAnalysisDataInspector)));
    inspectorWindowWorks = false;
    const std::uint64_t before = app.Inspector().CurrentGeneration();
    ClearRecords();
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsAnalysisDataInspector)));
    EXPECT_TRUE(app.Settings().dataInspectorVisible);
    EXPECT_FALSE(Called("relabelAnalysisWindows"));
    EXPECT_FALSE(Called("placeAnalysisWindows"));
    EXPECT_EQ(app.Inspector().CurrentGeneration(), before);
    EXPECT_TRUE(Item(CommandId::SettingsAnalysisDataInspector).checked);
}

TEST_F(AppWindowAnalysisTest, TheStructViewClosedMessageSwitchesTheStructViewOffAndStoresIt)
{
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsAnalysisStructView)));
    ASSERT_TRUE(structViewWindow);
    EXPECT_TRUE(app.OnAppMessage(AppMessage::StructViewClosed, 0, 0));
    EXPECT_FALSE(structViewWindow);
    EXPECT_FALSE(StoredSettings().structViewVisible);
    EXPECT_FALSE(Item(CommandId::SettingsAnalysisStructView).checked);
}

} // namespace
} // namespace tlm::test
