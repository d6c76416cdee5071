// Opening, the open dialog, the recent list, dropped files, the question about unsaved changes,
// closing the file and closing the window, on real files.
#include "AppWindowFixture.h"

#include "document/FileFaults.h"
#include "settings/RecentFilePath.h"

#include <cerrno>

namespace tlm::test {
namespace {

using AppWindowFileFlowTest = AppWindowFixture;
using Bytes = std::vector<std::uint8_t>;

std::u16string NewInstanceLine(const std::u16string& executable, const std::u16string& path)
{
    return u"\"" + executable + u"\" \"" + path + u"\"";
}

TEST_F(AppWindowFileFlowTest, OpeningAFileShowsItsNameAndPutsItFirstInTheRecentList)
{
    ASSERT_TRUE(Start());
    const std::u16string older = WriteFile("older.bin", {1});
    const std::u16string path = WriteFile("opened.bin", {1, 2, 3});
    OpenFile(older);
    EXPECT_TRUE(app.OpenFile(path));
    EXPECT_EQ(app.Document().GetPath(), path);
    EXPECT_EQ(LastTitle(), AppTitle() + u" - opened.bin");
    const std::vector<std::u16string> recent{path, older};
    EXPECT_EQ(app.Settings().recentFiles, recent);
    EXPECT_EQ(StoredSettings().recentFiles, recent);
    EXPECT_EQ(Item(4000).label, u"1 " + path);
    EXPECT_EQ(app.View().Document(), &app.Document());
    EXPECT_TRUE(app.View().Extent().isOpen);
    EXPECT_TRUE(boxes.empty());
}

TEST_F(AppWindowFileFlowTest, AFailedOpenShowsTheStopBoxAndLeavesNoFileOpen)
{
    ASSERT_TRUE(Start());
    const std::u16string good = WriteFile("good.bin", {1, 2});
    OpenFile(good);
    EXPECT_FALSE(app.OpenFile(folder.File("missing.bin")));
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, Tr("error.open_failed"));
    EXPECT_EQ(boxes[0].caption, AppTitle());
    EXPECT_EQ(boxes[0].kind, MessageBoxKind::Stop);
    EXPECT_FALSE(app.Document().IsOpen());
    // The recent list stays as it was.
    EXPECT_EQ(app.Settings().recentFiles, std::vector<std::u16string>{good});
    EXPECT_EQ(StoredSettings().recentFiles, std::vector<std::u16string>{good});
}

TEST_F(AppWindowFileFlowTest, AFailedOpenAlsoResetsTheViewTitleMenuAndStatus)
{
    // The old file is gone before the new one fails, so nothing may go on showing it.
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("good.bin", {1, 2}));
    EXPECT_FALSE(app.OpenFile(folder.File("missing.bin")));
    EXPECT_FALSE(app.View().Extent().isOpen);
    EXPECT_EQ(LastTitle(), AppTitle());
    EXPECT_EQ(LastStatus(), Tr("status.no_file"));
    EXPECT_FALSE(Item(CommandId::FileSave).enabled);
}

TEST_F(AppWindowFileFlowTest, AnEmptyPathOpensNothingAndShowsNothing)
{
    ASSERT_TRUE(Start());
    const std::u16string path = WriteFile("kept.bin", {1});
    OpenFile(path);
    EXPECT_FALSE(app.OpenFile(u""));
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(app.Document().GetPath(), path);
}

TEST_F(AppWindowFileFlowTest, EveryFileOpensReadOnly)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("first.bin", {1}));
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::EditReadOnly)));
    ASSERT_TRUE(app.View().IsEditingEnabled());
    OpenFile(WriteFile("second.bin", {2}));
    EXPECT_FALSE(app.View().IsEditingEnabled());
    EXPECT_TRUE(Item(CommandId::EditReadOnly).checked);
}

TEST_F(AppWindowFileFlowTest, OpeningAgainMovesTheFileToTheFrontWithoutARepeat)
{
    ASSERT_TRUE(Start());
    const std::u16string a = WriteFile("a.bin", {1});
    const std::u16string b = WriteFile("b.bin", {2});
    OpenFile(a);
    OpenFile(b);
    OpenFile(a);
    EXPECT_EQ(app.Settings().recentFiles, (std::vector<std::u16string>{a, b}));
}

TEST_F(AppWindowFileFlowTest, TwoSpellingsOfOnePathAreOneRecentEntry)
{
    ASSERT_TRUE(Start());
    std::filesystem::create_directory(folder.Path() / "sub");
    const std::u16string plain = WriteFile("same.bin", {1});
    const std::u16string roundabout = (folder.Path() / "sub" / ".." / "." / "same.bin").u16string();
    OpenFile(plain);
    OpenFile(roundabout);
    EXPECT_EQ(app.Settings().recentFiles, std::vector<std::u16string>{roundabout});
}

TEST_F(AppWindowFileFlowTest, SpellingsDifferingInCaseFollowTheNativePathRules)
{
    ASSERT_TRUE(Start());
    const std::u16string lower = WriteFile("case.bin", {1});
    if constexpr (NativePathStyle == PathStyle::Windows) {
        // One file under two spellings: one entry, in the latest spelling.
        const std::u16string upper = folder.File("CASE.BIN");
        OpenFile(lower);
        OpenFile(upper);
        EXPECT_EQ(app.Settings().recentFiles, std::vector<std::u16string>{upper});
    } else {
        // Case tells files apart here: two files, two entries.
        const std::u16string upper = WriteFile("CASE.BIN", {2});
        OpenFile(lower);
        OpenFile(upper);
        EXPECT_EQ(app.Settings().recentFiles, (std::vector<std::u16string>{upper, lower}));
    }
}

TEST_F(AppWindowFileFlowTest, TheRecentListKeepsSixteen)
{
    AppSettings stored;
    for (char letter = 'a'; letter < 'a' + 16; ++letter) {
        stored.recentFiles.push_back(folder.File(std::string(1, letter) + ".bin"));
    }
    ASSERT_TRUE(StartWith(stored));
    const std::u16string path = WriteFile("newest.bin", {1});
    OpenFile(path);
    ASSERT_EQ(app.Settings().recentFiles.size(), 16u);
    EXPECT_EQ(app.Settings().recentFiles.front(), path);
    EXPECT_EQ(app.Settings().recentFiles.back(), stored.recentFiles[14]);
}

TEST_F(AppWindowFileFlowTest, TheOpenDialogOpensTheChosenFileInThisProcess)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("before.bin", {1}));
    chosenFile = WriteFile("chosen.bin", {2});
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileOpen)));
    EXPECT_EQ(openDialogTitles, std::vector<std::u16string>{Tr("dialog.open.title")});
    EXPECT_EQ(app.Document().GetPath(), *chosenFile);
    EXPECT_TRUE(processes.empty());
    EXPECT_EQ(LastTitle(), AppTitle() + u" - chosen.bin");
}

TEST_F(AppWindowFileFlowTest, TheOpenDialogCancelledChangesNothing)
{
    ASSERT_TRUE(Start());
    const std::u16string path = WriteFile("before.bin", {1});
    OpenFile(path);
    chosenFile.reset();
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileOpen)));
    EXPECT_TRUE(Called("chooseFileToOpen"));
    EXPECT_EQ(app.Document().GetPath(), path);
    EXPECT_FALSE(Called("setTitle"));
    EXPECT_FALSE(Called("installMenu"));
    EXPECT_TRUE(boxes.empty());
}

TEST_F(AppWindowFileFlowTest, TheOpenDialogAsksAboutUnsavedChangesFirstAndCancelStopsIt)
{
    ASSERT_TRUE(Start());
    const std::u16string path = OpenModified("edited.bin", {1, 2});
    chosenFile = WriteFile("chosen.bin", {2});
    answers = {MessageBoxResult::Cancel};
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileOpen)));
    EXPECT_EQ(boxes.size(), 1u);
    EXPECT_FALSE(Called("chooseFileToOpen"));
    EXPECT_EQ(app.Document().GetPath(), path);
    EXPECT_TRUE(app.Document().IsModified());
}

TEST_F(AppWindowFileFlowTest, ThreeFilesDroppedOnAnEmptyWindowWithTheFirstUnreadable)
{
    ASSERT_TRUE(Start());
    ClearRecords();
    const std::u16string missing = folder.File("missing.bin");
    const std::u16string second = WriteFile("second.bin", {2});
    const std::u16string third = WriteFile("third.bin", {3});
    app.OnDropFiles({missing, second, third});
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, Tr("error.open_failed"));
    EXPECT_EQ(app.Document().GetPath(), second);
    ASSERT_EQ(processes.size(), 1u);
    EXPECT_EQ(processes[0].application, *executablePathAnswer);
    EXPECT_EQ(processes[0].commandLine, NewInstanceLine(*executablePathAnswer, third));
}

TEST_F(AppWindowFileFlowTest, ADropOnAModifiedFileStartsAProcessAndAsksNothing)
{
    ASSERT_TRUE(Start());
    const std::u16string path = OpenModified("edited.bin", {1, 2});
    const std::u16string dropped = WriteFile("dropped.bin", {3});
    app.OnDropFiles({dropped});
    EXPECT_TRUE(boxes.empty());
    ASSERT_EQ(processes.size(), 1u);
    EXPECT_EQ(processes[0].commandLine, NewInstanceLine(*executablePathAnswer, dropped));
    EXPECT_EQ(app.Document().GetPath(), path);
    EXPECT_TRUE(app.Document().IsModified());
}

TEST_F(AppWindowFileFlowTest, ADropWhoseProcessCannotStartShowsTheStopBox)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("open.bin", {1}));
    processStarts = false;
    app.OnDropFiles({WriteFile("dropped.bin", {3})});
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, Tr("error.open_new_instance_failed"));
    EXPECT_EQ(boxes[0].caption, AppTitle());
    EXPECT_EQ(boxes[0].kind, MessageBoxKind::Stop);
}

TEST_F(AppWindowFileFlowTest, ADropWithoutTheProgramsPathShowsTheStopBoxAndStartsNothing)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("open.bin", {1}));
    executablePathAnswer.reset();
    app.OnDropFiles({WriteFile("dropped.bin", {3})});
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, Tr("error.open_new_instance_failed"));
    EXPECT_TRUE(processes.empty());
}

TEST_F(AppWindowFileFlowTest, TheQuestionAboutChangesNamesThemWithYesNoAndCancel)
{
    ASSERT_TRUE(Start());
    OpenModified("edited.bin", {1, 2});
    answers = {MessageBoxResult::Cancel};
    EXPECT_FALSE(app.ConfirmSaveChanges());
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, Tr("confirm.save_changes"));
    EXPECT_EQ(boxes[0].caption, AppTitle());
    EXPECT_EQ(boxes[0].kind, MessageBoxKind::YesNoCancelExclamation);
}

TEST_F(AppWindowFileFlowTest, WithoutChangesNothingIsAsked)
{
    ASSERT_TRUE(Start());
    EXPECT_TRUE(app.ConfirmSaveChanges());
    OpenFile(WriteFile("clean.bin", {1}));
    EXPECT_TRUE(app.ConfirmSaveChanges());
    EXPECT_TRUE(boxes.empty());
}

TEST_F(AppWindowFileFlowTest, NoDiscardsTheChangesWithoutWriting)
{
    ASSERT_TRUE(Start());
    const std::u16string path = OpenModified("edited.bin", {1, 2});
    answers = {MessageBoxResult::No};
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileClose)));
    EXPECT_EQ(ReadFileBytes(path), (Bytes{1, 2}));
    EXPECT_FALSE(app.Document().IsOpen());
    EXPECT_FALSE(Called("pumpMessages"));
}

TEST_F(AppWindowFileFlowTest, CancelKeepsTheFileOpenWithItsChanges)
{
    ASSERT_TRUE(Start());
    const std::u16string path = OpenModified("edited.bin", {1, 2});
    answers = {MessageBoxResult::Cancel};
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileClose)));
    EXPECT_TRUE(app.Document().IsOpen());
    EXPECT_TRUE(app.Document().IsModified());
    EXPECT_EQ(ReadFileBytes(path), (Bytes{1, 2}));
    EXPECT_FALSE(Called("setTitle"));
}

TEST_F(AppWindowFileFlowTest, YesSavesTheChangesBeforeTheFileCloses)
{
    ASSERT_TRUE(Start());
    const std::u16string path = OpenModified("edited.bin", {1, 2});
    answers = {MessageBoxResult::Yes};
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileClose)));
    EXPECT_EQ(ReadFileBytes(path), (Bytes{0xAB, 2}));
    EXPECT_FALSE(app.Document().IsOpen());
    EXPECT_EQ(boxes.size(), 1u);
}

TEST_F(AppWindowFileFlowTest, YesWhoseSaveFailsAnswersFalseAndKeepsTheFile)
{
    ASSERT_TRUE(Start());
    const std::u16string path = OpenModified("edited.bin", {1, 2});
    answers = {MessageBoxResult::Yes};
    InjectFileFault(FileOperation::OpenForWriting, AccessDenied, 0, 1);
    EXPECT_FALSE(app.ConfirmSaveChanges());
    ClearFileFaults();
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_EQ(boxes[1].kind, MessageBoxKind::Stop);
    EXPECT_EQ(boxes[1].text.rfind(Tr("error.save_failed"), 0), 0u);
    EXPECT_TRUE(app.Document().IsOpen());
    EXPECT_TRUE(app.Document().IsModified());
    EXPECT_EQ(ReadFileBytes(path), (Bytes{1, 2}));
}

TEST_F(AppWindowFileFlowTest, AFailedSaveAbandonsTheClose)
{
    ASSERT_TRUE(Start());
    OpenModified("edited.bin", {1, 2});
    answers = {MessageBoxResult::Yes};
    InjectFileFault(FileOperation::OpenForWriting, AccessDenied, 0, 1);
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileClose)));
    ClearFileFaults();
    EXPECT_TRUE(app.Document().IsOpen());
    EXPECT_TRUE(app.Document().IsModified());
}

TEST_F(AppWindowFileFlowTest, ClosingTheFileResetsTheViewTitleMenuAndStatus)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("closing.bin", {1, 2, 3}));
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileClose)));
    EXPECT_TRUE(boxes.empty());
    EXPECT_FALSE(app.Document().IsOpen());
    EXPECT_FALSE(app.View().Extent().isOpen);
    EXPECT_EQ(LastTitle(), AppTitle());
    EXPECT_EQ(LastStatus(), Tr("status.no_file"));
    EXPECT_FALSE(Item(CommandId::FileClose).enabled);
}

TEST_F(AppWindowFileFlowTest, ClosingTheWindowAsksAboutChangesAndDestroysItOnNo)
{
    ASSERT_TRUE(Start());
    const std::u16string path = OpenModified("edited.bin", {1, 2});
    answers = {MessageBoxResult::No};
    app.OnClose();
    EXPECT_EQ(boxes.size(), 1u);
    EXPECT_TRUE(Called("destroyWindow"));
    EXPECT_FALSE(windowStands);
    EXPECT_TRUE(quitPosted);
    EXPECT_EQ(ReadFileBytes(path), (Bytes{1, 2}));
}

TEST_F(AppWindowFileFlowTest, ClosingTheWindowCancelledKeepsIt)
{
    ASSERT_TRUE(Start());
    OpenModified("edited.bin", {1, 2});
    answers = {MessageBoxResult::Cancel};
    app.OnClose();
    EXPECT_FALSE(Called("destroyWindow"));
    EXPECT_TRUE(windowStands);
    EXPECT_FALSE(quitPosted);
}

TEST_F(AppWindowFileFlowTest, ClosingTheWindowWithoutChangesAsksNothing)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("clean.bin", {1}));
    app.OnClose();
    EXPECT_TRUE(boxes.empty());
    EXPECT_TRUE(Called("destroyWindow"));
}

} // namespace
} // namespace tlm::test
