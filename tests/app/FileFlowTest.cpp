#include "app/FileFlow.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tlm {
namespace {

struct RecordingHost {
    std::vector<std::u16string> boxes;
    std::vector<MessageBoxKind> kinds;
    std::vector<std::u16string> processLines;
    std::vector<std::u16string> processApplications;
    MessageBoxResult answer = MessageBoxResult::Ok;
    std::optional<std::u16string> executable = u"C:\\Tools\\tolmo.exe";
    bool processStarts = true;
    AppHost host;

    RecordingHost()
    {
        host.messageBox = [this](const std::u16string& text, const std::u16string&, MessageBoxKind kind) {
            boxes.push_back(text);
            kinds.push_back(kind);
            return answer;
        };
        host.executablePath = [this] { return executable; };
        host.createProcess = [this](const std::u16string& application, const std::u16string& line) {
            processApplications.push_back(application);
            processLines.push_back(line);
            return processStarts;
        };
    }
};

TEST(FileFlowTest, CommandLineQuotesExecutableAndPathSeparatedByOneBlank)
{
    EXPECT_EQ(NewInstanceCommandLine(u"C:\\a b\\tolmo.exe", u"D:\\x y.bin"), u"\"C:\\a b\\tolmo.exe\" \"D:\\x y.bin\"");
}

TEST(FileFlowTest, NewInstanceStartsTheExecutableWithTheQuotedLine)
{
    RecordingHost rec;
    EXPECT_TRUE(OpenInNewInstance(rec.host, u"D:\\f.bin", u"failed", u"Tolmo"));
    ASSERT_EQ(rec.processLines.size(), 1u);
    EXPECT_EQ(rec.processApplications[0], u"C:\\Tools\\tolmo.exe");
    EXPECT_EQ(rec.processLines[0], u"\"C:\\Tools\\tolmo.exe\" \"D:\\f.bin\"");
    EXPECT_TRUE(rec.boxes.empty());
}

TEST(FileFlowTest, NewInstanceWithEmptyPathDoesNothing)
{
    RecordingHost rec;
    EXPECT_FALSE(OpenInNewInstance(rec.host, u"", u"failed", u"Tolmo"));
    EXPECT_TRUE(rec.processLines.empty());
    EXPECT_TRUE(rec.boxes.empty());
}

TEST(FileFlowTest, NewInstanceWithoutExecutablePathShowsStopBox)
{
    RecordingHost rec;
    rec.executable.reset();
    EXPECT_FALSE(OpenInNewInstance(rec.host, u"D:\\f.bin", u"could not start", u"Tolmo"));
    EXPECT_TRUE(rec.processLines.empty());
    ASSERT_EQ(rec.boxes.size(), 1u);
    EXPECT_EQ(rec.boxes[0], u"could not start");
    EXPECT_EQ(rec.kinds[0], MessageBoxKind::Stop);
}

TEST(FileFlowTest, NewInstanceThatFailsToStartShowsStopBox)
{
    RecordingHost rec;
    rec.processStarts = false;
    EXPECT_FALSE(OpenInNewInstance(rec.host, u"D:\\f.bin", u"could not start", u"Tolmo"));
    ASSERT_EQ(rec.boxes.size(), 1u);
    EXPECT_EQ(rec.kinds[0], MessageBoxKind::Stop);
}

TEST(FileFlowTest, ThreeFilesDroppedOnEmptyWindowWithFirstUnreadable)
{
    RecordingHost rec;
    std::vector<std::u16string> openedHere;
    auto openHere = [&](const std::u16string& path) {
        if (path == u"unreadable.bin") {
            rec.host.messageBox(u"open failed", u"Tolmo", MessageBoxKind::Stop);
            return false;
        }
        openedHere.push_back(path);
        return true;
    };
    auto newInstance = [&](const std::u16string& path) { OpenInNewInstance(rec.host, path, u"x", u"Tolmo"); };
    DropFiles({u"unreadable.bin", u"second.bin", u"third.bin"}, false, openHere, newInstance);
    EXPECT_EQ(rec.boxes, std::vector<std::u16string>{u"open failed"});
    EXPECT_EQ(openedHere, std::vector<std::u16string>{u"second.bin"});
    ASSERT_EQ(rec.processLines.size(), 1u);
    EXPECT_EQ(rec.processLines[0], u"\"C:\\Tools\\tolmo.exe\" \"third.bin\"");
}

TEST(FileFlowTest, DropOnWindowWithUnsavedChangesStartsProcessAndAsksNothing)
{
    RecordingHost rec;
    rec.answer = MessageBoxResult::Cancel;
    bool openedHere = false;
    DropFiles({u"other.bin"}, true,
        [&](const std::u16string&) {
            openedHere = true;
            return true;
        },
        [&](const std::u16string& path) { OpenInNewInstance(rec.host, path, u"x", u"Tolmo"); });
    EXPECT_FALSE(openedHere);
    EXPECT_TRUE(rec.boxes.empty());
    EXPECT_EQ(rec.processLines.size(), 1u);
}

TEST(FileFlowTest, ConfirmWithoutFileOrChangesAsksNothing)
{
    RecordingHost rec;
    int saves = 0;
    auto save = [&] { return ++saves > 0; };
    EXPECT_TRUE(ConfirmSaveChanges(rec.host, false, false, u"Save?", u"Tolmo", save));
    EXPECT_TRUE(ConfirmSaveChanges(rec.host, true, false, u"Save?", u"Tolmo", save));
    EXPECT_TRUE(rec.boxes.empty());
    EXPECT_EQ(saves, 0);
}

TEST(FileFlowTest, ConfirmYesSavesAndReturnsTheSaveResult)
{
    RecordingHost rec;
    rec.answer = MessageBoxResult::Yes;
    int saves = 0;
    bool saveResult = false;
    EXPECT_FALSE(ConfirmSaveChanges(rec.host, true, true, u"Save?", u"Tolmo", [&] {
        ++saves;
        return saveResult;
    }));
    saveResult = true;
    EXPECT_TRUE(ConfirmSaveChanges(rec.host, true, true, u"Save?", u"Tolmo", [&] {
        ++saves;
        return saveResult;
    }));
    EXPECT_EQ(saves, 2);
    EXPECT_EQ(rec.kinds[0], MessageBoxKind::YesNoCancelExclamation);
    EXPECT_EQ(rec.boxes[0], u"Save?");
}

TEST(FileFlowTest, ConfirmNoDiscardsWithoutWriting)
{
    RecordingHost rec;
    rec.answer = MessageBoxResult::No;
    int saves = 0;
    EXPECT_TRUE(ConfirmSaveChanges(rec.host, true, true, u"Save?", u"Tolmo", [&] { return ++saves > 0; }));
    EXPECT_EQ(saves, 0);
}

TEST(FileFlowTest, ConfirmCancelKeepsTheFileOpen)
{
    RecordingHost rec;
    rec.answer = MessageBoxResult::Cancel;
    int saves = 0;
    EXPECT_FALSE(ConfirmSaveChanges(rec.host, true, true, u"Save?", u"Tolmo", [&] { return ++saves > 0; }));
    EXPECT_EQ(saves, 0);
}

} // namespace
} // namespace tlm
