// Saving on the user-interface thread: the steps around the document's save, the greyed menu and the
// busy window while messages are pumped, the progress in the status bar, and the failure box.
#include "AppWindowFixture.h"

#include "document/FileFaults.h"
#include "hexview/VirtualKey.h"

#include <cerrno>

namespace tlm::test {
namespace {

using AppWindowSaveTest = AppWindowFixture;
using Bytes = std::vector<std::uint8_t>;

// Every popup title and every plain item below the bar is greyed.
bool AllGreyed(const MenuItem& menu)
{
    for (const MenuItem& item : menu.children) {
        if (item.kind == MenuItem::Kind::Separator) {
            continue;
        }
        if (item.enabled) {
            return false;
        }
        if (item.kind == MenuItem::Kind::Popup && !AllGreyed(item)) {
            return false;
        }
    }
    return true;
}

std::size_t CountItems(const MenuItem& menu)
{
    std::size_t count = 0;
    for (const MenuItem& item : menu.children) {
        count += item.kind == MenuItem::Kind::Separator ? 0 : 1;
        if (item.kind == MenuItem::Kind::Popup) {
            count += CountItems(item);
        }
    }
    return count;
}

bool StartsWith(const std::u16string& text, const std::u16string& start)
{
    return text.compare(0, start.size(), start) == 0;
}

std::vector<std::string> TemporaryFilesIn(const std::filesystem::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (name.rfind("Tolmo-", 0) == 0) {
            names.push_back(name);
        }
    }
    return names;
}

Bytes Shown(AppWindow& app)
{
    return app.Document().Read(0, app.Document().GetSize()).bytes;
}

TEST_F(AppWindowSaveTest, SavingInPlaceWritesTheEditAndTakesTheStarFromTheTitle)
{
    ASSERT_TRUE(Start());
    const std::u16string path = OpenModified("inplace.bin", {1, 2, 3, 4});
    ASSERT_FALSE(app.Document().SavesViaTemporaryFile());
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileSave)));
    EXPECT_EQ(ReadFileBytes(path), (Bytes{0xAB, 2, 3, 4}));
    EXPECT_FALSE(app.Document().IsModified());
    EXPECT_EQ(LastTitle(), AppTitle() + u" - inplace.bin");
    EXPECT_EQ(LastStatus().find(Tr("status.modified")), std::u16string::npos);
    EXPECT_TRUE(boxes.empty());
}

TEST_F(AppWindowSaveTest, TheTitleCarriesAStarWhileTheFileHasChanges)
{
    ASSERT_TRUE(Start());
    const std::u16string path = WriteFile("star.bin", {1, 2});
    OpenFile(path);
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::EditReadOnly)));
    DeliverViewMessages();
    TypeHex(u"AB");
    DeliverViewMessages();
    EXPECT_EQ(LastTitle(), AppTitle() + u" - star.bin *");
}

TEST_F(AppWindowSaveTest, SavingThroughATemporaryFileWritesWhatWasShownAndTakesTheStar)
{
    ASSERT_TRUE(Start());
    const std::u16string path = WriteFile("moved.bin", {1, 2, 3, 4});
    OpenFile(path);
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::EditReadOnly)));
    app.View().OnKeyDown(VirtualKey::Insert, false);
    TypeHex(u"CD");
    DeliverViewMessages();
    ASSERT_TRUE(app.Document().SavesViaTemporaryFile());
    ASSERT_EQ(LastTitle(), AppTitle() + u" - moved.bin *");
    const Bytes shown = Shown(app);
    ASSERT_EQ(shown.size(), 5u);
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileSave)));
    EXPECT_EQ(ReadFileBytes(path), shown);
    EXPECT_TRUE(TemporaryFilesIn(folder.Path()).empty());
    EXPECT_EQ(LastTitle(), AppTitle() + u" - moved.bin");
    EXPECT_TRUE(app.Document().IsOpen());
}

TEST_F(AppWindowSaveTest, ASaveRunsItsStepsInOrder)
{
    ASSERT_TRUE(Start());
    OpenModified("steps.bin", {1, 2, 3, 4});
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileSave)));
    const std::vector<std::string> among = CallsAmong({"installMenu", "enableHexView off", "setStatusText",
        "updateStatusBarNow", "pumpMessages", "enableHexView on", "setTitle"});
    const std::vector<std::string> start{
        "installMenu", "enableHexView off", "setStatusText", "updateStatusBarNow", "pumpMessages"};
    const std::vector<std::string> end{"enableHexView on", "installMenu", "setTitle", "setStatusText"};
    ASSERT_GE(among.size(), start.size() + end.size());
    EXPECT_EQ(std::vector<std::string>(among.begin(), among.begin() + 5), start);
    EXPECT_EQ(std::vector<std::string>(among.end() - 4, among.end()), end);
    // In between only shown progress reports: status, paint at once, pump.
    const std::vector<std::string> middle(among.begin() + 5, among.end() - 4);
    ASSERT_EQ(middle.size() % 3, 0u);
    for (std::size_t index = 0; index < middle.size(); index += 3) {
        EXPECT_EQ(middle[index], "setStatusText");
        EXPECT_EQ(middle[index + 1], "updateStatusBarNow");
        EXPECT_EQ(middle[index + 2], "pumpMessages");
    }
}

TEST_F(AppWindowSaveTest, TheStatusTextShowsTheSaveAndItsProgress)
{
    ASSERT_TRUE(Start());
    OpenModified("progress.bin", {1, 2, 3, 4});
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileSave)));
    ASSERT_GE(statusTexts.size(), 3u);
    EXPECT_EQ(statusTexts[0], Tr("status.saving"));
    // One byte of four written.
    EXPECT_EQ(statusTexts[1], Tr("status.saving") + u" 25%");
    EXPECT_FALSE(StartsWith(statusTexts.back(), Tr("status.saving")));
    EXPECT_EQ(statusTexts.back(), app.BuildStatusText());
}

TEST_F(AppWindowSaveTest, TheMenuIsGreyedWhileASaveRunsAndRestoredAfter)
{
    AppSettings stored;
    stored.encodingFavorites = {TextEncoding::Utf8};
    ASSERT_TRUE(StartWith(stored));
    OpenModified("menu.bin", {1, 2, 3, 4});
    std::optional<bool> greyed;
    std::size_t items = 0;
    onPump = [&] {
        greyed = AllGreyed(Bar());
        items = CountItems(Bar());
    };
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileSave)));
    EXPECT_EQ(greyed, std::optional<bool>(true));
    EXPECT_GT(items, 60u);
    for (const MenuItem& popup : Bar().children) {
        EXPECT_TRUE(popup.enabled);
    }
    EXPECT_TRUE(Item(CommandId::FileSave).enabled);
    EXPECT_TRUE(Item(CommandId::FileOpen).enabled);
    EXPECT_TRUE(Item(4000).enabled);
}

TEST_F(AppWindowSaveTest, TheViewIsDisabledWhileASaveRuns)
{
    ASSERT_TRUE(Start());
    OpenModified("view.bin", {1, 2});
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileSave)));
    EXPECT_EQ(viewEnabled, (std::vector<bool>{false, true}));
}

TEST_F(AppWindowSaveTest, EveryCommandIsRefusedWhileASaveRuns)
{
    ASSERT_TRUE(Start());
    OpenModified("busy.bin", {1, 2});
    std::vector<std::uint32_t> enabledWhileBusy;
    std::optional<bool> busy;
    onPump = [&] {
        busy = app.Busy();
        for (std::uint32_t id = 0; id < 5000; ++id) {
            if (app.IsCommandEnabled(id)) {
                enabledWhileBusy.push_back(id);
            }
        }
    };
    queue.push_back(QueuedMessage{QueuedMessage::Kind::Command, AppMessage::ViewChanged, ToNumber(CommandId::FileOpen)});
    queue.push_back(QueuedMessage{QueuedMessage::Kind::Command, AppMessage::ViewChanged, ToNumber(CommandId::FileExit)});
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileSave)));
    EXPECT_EQ(busy, std::optional<bool>(true));
    EXPECT_TRUE(enabledWhileBusy.empty());
    EXPECT_EQ(pumpedCommandResults, (std::vector<bool>{false, false}));
    EXPECT_FALSE(Called("chooseFileToOpen"));
    EXPECT_FALSE(Called("destroyWindow"));
    EXPECT_FALSE(app.Busy());
}

TEST_F(AppWindowSaveTest, ClosingTheWindowWhileASaveRunsDoesNothingAndAsksNothing)
{
    ASSERT_TRUE(Start());
    const std::u16string path = OpenModified("close.bin", {1, 2});
    queue.push_back(QueuedMessage{QueuedMessage::Kind::Close});
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileSave)));
    EXPECT_TRUE(queue.empty());
    EXPECT_TRUE(boxes.empty());
    EXPECT_FALSE(Called("destroyWindow"));
    EXPECT_TRUE(windowStands);
    EXPECT_EQ(ReadFileBytes(path), (Bytes{0xAB, 2}));
}

TEST_F(AppWindowSaveTest, AQuitArrivingDuringASaveIsKeptForTheMainLoop)
{
    ASSERT_TRUE(Start());
    const std::u16string path = OpenModified("quit.bin", {1, 2});
    queue.push_back(QueuedMessage{QueuedMessage::Kind::Quit});
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileSave)));
    EXPECT_GT(pumps, 0);
    // The save ran to its end, and the quit still waits for the loop after it.
    EXPECT_EQ(ReadFileBytes(path), (Bytes{0xAB, 2}));
    ASSERT_EQ(queue.size(), 1u);
    EXPECT_EQ(queue.front().kind, QueuedMessage::Kind::Quit);
    EXPECT_FALSE(quitPosted);
    EXPECT_FALSE(Called("destroyWindow"));
    EXPECT_FALSE(app.Busy());
}

TEST_F(AppWindowSaveTest, AViewChangeHandledDuringASaveKeepsTheSavingStatusAndTheTitle)
{
    ASSERT_TRUE(Start());
    OpenModified("change.bin", {1, 2});
    std::vector<std::u16string> statusWhileBusy;
    std::vector<std::u16string> titlesWhileBusy;
    onCall = [&](const std::string& name) {
        if (!app.Busy()) {
            return;
        }
        if (name == "setStatusText") {
            statusWhileBusy.push_back(statusTexts.back());
        }
        if (name == "setTitle") {
            titlesWhileBusy.push_back(titles.back());
        }
    };
    queue.push_back(QueuedMessage{QueuedMessage::Kind::App, AppMessage::ViewChanged});
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileSave)));
    EXPECT_TRUE(queue.empty());
    ASSERT_FALSE(titlesWhileBusy.empty());
    for (const std::u16string& title : titlesWhileBusy) {
        EXPECT_EQ(title, AppTitle() + u" - change.bin *");
    }
    ASSERT_GE(statusWhileBusy.size(), 2u);
    for (const std::u16string& status : statusWhileBusy) {
        EXPECT_TRUE(StartsWith(status, Tr("status.saving")));
    }
}

TEST_F(AppWindowSaveTest, ASaveFailureShowsTheReasonAfterABlankLine)
{
    ASSERT_TRUE(Start());
    const std::u16string path = OpenModified("fails.bin", {1, 2});
    InjectFileFault(FileOperation::OpenForWriting, AccessDenied, 0, 1);
    EXPECT_FALSE(app.SaveFile());
    ClearFileFaults();
    ASSERT_FALSE(app.Document().LastError().empty());
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, Tr("error.save_failed") + u"\r\n\r\n" + app.Document().LastError());
    EXPECT_EQ(boxes[0].caption, AppTitle());
    EXPECT_EQ(boxes[0].kind, MessageBoxKind::Stop);
    EXPECT_EQ(ReadFileBytes(path), (Bytes{1, 2}));
}

TEST_F(AppWindowSaveTest, AFailedSaveKeepsTheChangesAndRestoresTheWindow)
{
    ASSERT_TRUE(Start());
    OpenModified("fails.bin", {1, 2});
    InjectFileFault(FileOperation::OpenForWriting, AccessDenied, 0, 1);
    EXPECT_FALSE(app.SaveFile());
    ClearFileFaults();
    EXPECT_TRUE(app.Document().IsModified());
    EXPECT_FALSE(app.Busy());
    EXPECT_EQ(viewEnabled.back(), true);
    EXPECT_TRUE(Item(CommandId::FileSave).enabled);
    EXPECT_EQ(LastTitle(), AppTitle() + u" - fails.bin *");
    EXPECT_NE(LastStatus().find(Tr("status.modified")), std::u16string::npos);
}

TEST_F(AppWindowSaveTest, ASaveThatCannotOpenTheFileAgainLeavesNothingShown)
{
    ASSERT_TRUE(Start());
    const std::u16string path = OpenModified("reopen.bin", {1, 2});
    InjectFileFault(FileOperation::OpenForReading, AccessDenied, 0, 1);
    EXPECT_FALSE(app.SaveFile());
    ClearFileFaults();
    EXPECT_EQ(ReadFileBytes(path), (Bytes{0xAB, 2}));
    EXPECT_FALSE(app.Document().IsOpen());
    EXPECT_FALSE(app.View().Extent().isOpen);
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, Tr("error.save_failed") + u"\r\n\r\n" + app.Document().LastError());
    EXPECT_EQ(LastTitle(), AppTitle());
    EXPECT_EQ(LastStatus(), Tr("status.no_file"));
}

TEST_F(AppWindowSaveTest, SavingWithNoFileOpenSucceedsAndDoesNothing)
{
    ASSERT_TRUE(Start());
    ClearRecords();
    EXPECT_TRUE(app.SaveFile());
    EXPECT_TRUE(calls.empty());
}

} // namespace
} // namespace tlm::test
