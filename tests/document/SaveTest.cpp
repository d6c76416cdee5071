#include "TestFolder.h"

#include "document/EditableDocument.h"
#include "document/FileFaults.h"
#include "document/PlatformFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <functional>
#include <regex>
#include <string>

namespace tlm {
namespace {

using test::TestFolder;
using Bytes = std::vector<std::uint8_t>;

#if defined(_WIN32)
constexpr std::uint32_t AccessDenied = 5;
#else
constexpr std::uint32_t AccessDenied = EACCES;
#endif

struct ProgressCall {
    std::uint64_t done = 0;
    std::uint64_t total = 0;
    friend bool operator==(const ProgressCall&, const ProgressCall&) = default;
};

class SaveTest : public ::testing::Test {
protected:
    void TearDown() override { ClearFileFaults(); }

    // Opens a file of `bytes`, by its plain path or by the two-slash form that a save always rewrites.
    void Open(const Bytes& bytes, bool byTwoSlashPath = false)
    {
        original = bytes;
        path = folder.Write("target.bin", bytes);
        if (byTwoSlashPath) {
            path = folder.TwoSlashPath("target.bin");
        }
        document.Close();
        ASSERT_TRUE(document.file.Open(path));
    }

    Bytes OnDisk() const { return test::ReadWholeFile(folder.File("target.bin")); }
    Bytes Shown() const { return document.Read(0, document.GetEditedSize()).bytes; }

    bool Save()
    {
        progress.clear();
        return document.Save([this](std::uint64_t done, std::uint64_t total) { progress.push_back({done, total}); });
    }

    std::uint64_t Calls(FileOperation operation) const { return FileOperationCalls(operation); }

    // A failed save that must leave the file as it was, the edits in place and the document open.
    void ExpectNothingChanged(const Bytes& shownBefore)
    {
        EXPECT_EQ(OnDisk(), original);
        EXPECT_TRUE(document.IsOpen());
        EXPECT_TRUE(document.IsModified());
        EXPECT_EQ(Shown(), shownBefore);
        EXPECT_EQ(document.file.GetSize(), original.size());
        EXPECT_FALSE(document.lastError.empty());
        EXPECT_TRUE(folder.TemporaryFiles().empty());
    }

    // Makes `edit` twice on a file of `bytes`: opened by its plain path, where the save must go in place,
    // and by its two-slash path, where it must go through a temporary file. Both times the document must
    // show `expected`, and the save must leave exactly what was shown on disk.
    void ExpectBothPathsSaveWhatWasShown(
        const Bytes& bytes, const std::function<void(EditableDocument&)>& edit, const Bytes& expected)
    {
        for (const bool rewrite : {false, true}) {
            SCOPED_TRACE(rewrite ? "through a temporary file" : "in place");
            ASSERT_NO_FATAL_FAILURE(Open(bytes, rewrite));
            ASSERT_NO_FATAL_FAILURE(edit(document));
            const Bytes shown = Shown();
            ASSERT_TRUE(shown == expected) << Difference(shown, expected);
            ASSERT_EQ(document.SavesViaTemporaryFile(), rewrite);
            const std::uint64_t created = Calls(FileOperation::CreateNew);
            ASSERT_TRUE(Save()) << std::string(document.lastError.begin(), document.lastError.end());
            EXPECT_EQ(Calls(FileOperation::CreateNew), created + (rewrite ? 1 : 0));
            const Bytes disk = OnDisk();
            EXPECT_TRUE(disk == shown) << Difference(disk, shown);
            EXPECT_FALSE(document.IsModified());
            EXPECT_TRUE(Shown() == shown);
            EXPECT_TRUE(folder.TemporaryFiles().empty());
        }
    }

    // Where two byte strings part: their sizes and the first offset at which they differ.
    static std::string Difference(const Bytes& actual, const Bytes& expected)
    {
        const auto parted = std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
        return "sizes " + std::to_string(actual.size()) + " and " + std::to_string(expected.size()) + ", first difference at "
            + std::to_string(parted.first - actual.begin());
    }

    TestFolder folder;
    std::u16string path;
    Bytes original;
    EditableDocument document;
    std::vector<ProgressCall> progress;
};

constexpr std::uint64_t MiB = 1048576;

// Deletes the last `count` bytes shown, from the end.
void CutTail(EditableDocument& document, std::uint64_t count)
{
    for (std::uint64_t i = 0; i < count; ++i) {
        ASSERT_TRUE(document.DeleteByte(document.GetEditedSize() - 1));
    }
}

// Types `bytes` at the end of what is shown.
void Append(EditableDocument& document, const Bytes& bytes)
{
    for (const std::uint8_t byte : bytes) {
        ASSERT_TRUE(document.InsertByte(document.GetEditedSize(), byte));
    }
}

// Edits that keep every byte where it is, and one that moves bytes.
void EditInPlace(EditableDocument& document)
{
    ASSERT_TRUE(document.OverwriteByte(1, 0xA1));
    ASSERT_TRUE(document.OverwriteByte(5, 0xA5));
}

void EditWithMove(EditableDocument& document)
{
    ASSERT_TRUE(document.InsertByte(2, 0xEE));
    ASSERT_TRUE(document.OverwriteByte(5, 0xA5));
}

TEST_F(SaveTest, SaveWithNoFileOpenFailsWithItsMessage)
{
    EXPECT_FALSE(document.Save());
    EXPECT_EQ(document.lastError, u"No file is open.");
}

TEST_F(SaveTest, SaveClearsTheLastErrorFirst)
{
    Open({1, 2, 3});
    document.lastError = u"earlier failure";
    EXPECT_TRUE(document.Save());
    EXPECT_TRUE(document.lastError.empty());
}

TEST_F(SaveTest, SavingWithNoEditsReturnsTrueAndLeavesTheFileTimeAlone)
{
    Open({1, 2, 3});
    const auto past = std::filesystem::file_time_type::clock::now() - std::chrono::hours(30 * 24);
    std::filesystem::last_write_time(folder.File("target.bin"), past);
    const std::filesystem::file_time_type before = std::filesystem::last_write_time(folder.File("target.bin"));
    const std::uint64_t writesOpened = Calls(FileOperation::OpenForWriting);
    const std::uint64_t created = Calls(FileOperation::CreateNew);
    EXPECT_TRUE(Save());
    EXPECT_EQ(std::filesystem::last_write_time(folder.File("target.bin")), before);
    EXPECT_EQ(Calls(FileOperation::OpenForWriting), writesOpened);
    EXPECT_EQ(Calls(FileOperation::CreateNew), created);
    EXPECT_TRUE(progress.empty());
    EXPECT_TRUE(document.IsOpen());
}

TEST_F(SaveTest, OverwritesAloneAreWrittenInPlaceGroupByGroup)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    ASSERT_TRUE(document.OverwriteByte(2, 0xA2));
    ASSERT_TRUE(document.OverwriteByte(3, 0xA3));
    ASSERT_TRUE(document.OverwriteByte(8, 0xA8));
    const std::uint64_t created = Calls(FileOperation::CreateNew);
    const std::uint64_t writes = Calls(FileOperation::Write);
    ASSERT_TRUE(Save());
    EXPECT_EQ(Calls(FileOperation::CreateNew), created);
    EXPECT_EQ(Calls(FileOperation::Write), writes + 2);
    EXPECT_EQ(OnDisk(), (Bytes{0, 1, 0xA2, 0xA3, 4, 5, 6, 7, 0xA8, 9}));
    EXPECT_EQ(progress, (std::vector<ProgressCall>{{4, 10}, {9, 10}}));
    EXPECT_FALSE(document.IsModified());
    EXPECT_EQ(Shown(), OnDisk());
}

TEST_F(SaveTest, AppendedBytesAreWrittenInPlaceAtTheEnd)
{
    Open({1, 2, 3});
    ASSERT_TRUE(document.InsertByte(3, 0xB0));
    ASSERT_TRUE(document.InsertByte(4, 0xB1));
    ASSERT_TRUE(document.OverwriteByte(0, 0xA0));
    const std::uint64_t created = Calls(FileOperation::CreateNew);
    ASSERT_TRUE(Save());
    EXPECT_EQ(Calls(FileOperation::CreateNew), created);
    EXPECT_EQ(OnDisk(), (Bytes{0xA0, 2, 3, 0xB0, 0xB1}));
    EXPECT_EQ(progress, (std::vector<ProgressCall>{{1, 5}, {5, 5}}));
    EXPECT_EQ(document.GetEditedSize(), 5u);
}

TEST_F(SaveTest, ACutTailIsTruncatedInPlace)
{
    Open({1, 2, 3, 4, 5});
    ASSERT_TRUE(document.DeleteByte(4));
    ASSERT_TRUE(document.DeleteByte(3));
    const std::uint64_t created = Calls(FileOperation::CreateNew);
    ASSERT_TRUE(Save());
    EXPECT_EQ(Calls(FileOperation::CreateNew), created);
    EXPECT_EQ(OnDisk(), (Bytes{1, 2, 3}));
    EXPECT_EQ(progress, (std::vector<ProgressCall>{{3, 3}}));
}

TEST_F(SaveTest, AFileEditedToZeroLengthIsTruncatedInPlaceWithProgressTotalOne)
{
    Open({1, 2, 3, 4});
    for (int i = 0; i < 4; ++i) {
        ASSERT_TRUE(document.DeleteByte(0));
    }
    const std::uint64_t created = Calls(FileOperation::CreateNew);
    ASSERT_TRUE(Save());
    EXPECT_EQ(Calls(FileOperation::CreateNew), created);
    EXPECT_TRUE(OnDisk().empty());
    EXPECT_EQ(std::filesystem::file_size(folder.File("target.bin")), 0u);
    EXPECT_EQ(progress, (std::vector<ProgressCall>{{1, 1}}));
    EXPECT_TRUE(document.IsOpen());
    EXPECT_EQ(document.GetEditedSize(), 0u);
}

TEST_F(SaveTest, AnEmptyFileWithAppendedBytesIsSavedAsShownByBothPaths)
{
    ExpectBothPathsSaveWhatWasShown(
        {}, [](EditableDocument& edited) { Append(edited, {0xB0, 0xB1, 0xB2}); }, {0xB0, 0xB1, 0xB2});
}

TEST_F(SaveTest, AOneByteFileCutToNothingIsSavedEmptyByBothPaths)
{
    ExpectBothPathsSaveWhatWasShown({0x5A}, [](EditableDocument& edited) { CutTail(edited, 1); }, {});
}

TEST_F(SaveTest, TheOnlyByteDeletedAndManyBytesAppendedAreSavedAsShownByBothPaths)
{
    Bytes typed;
    for (std::uint32_t i = 0; i < 498; ++i) {
        typed.push_back(static_cast<std::uint8_t>(i * 7 + 1));
    }
    ExpectBothPathsSaveWhatWasShown(
        {0x5A},
        [&](EditableDocument& edited) {
            ASSERT_TRUE(edited.DeleteByte(0));
            Append(edited, typed);
        },
        typed);
}

TEST_F(SaveTest, TheOnlyByteDeletedAndOneByteAppendedAreSavedAsShownByBothPaths)
{
    ExpectBothPathsSaveWhatWasShown(
        {0x5A},
        [](EditableDocument& edited) {
            ASSERT_TRUE(edited.DeleteByte(0));
            Append(edited, {0x77});
        },
        {0x77});
}

TEST_F(SaveTest, ARunShorterThanTheCutTailIsSavedAsShownByBothPaths)
{
    ExpectBothPathsSaveWhatWasShown(
        {1, 2, 3, 4, 5, 6, 7, 8},
        [](EditableDocument& edited) {
            CutTail(edited, 4);
            ASSERT_TRUE(edited.OverwriteByte(1, 0xA1));
            Append(edited, {0xB0});
        },
        {1, 0xA1, 3, 4, 0xB0});
}

TEST_F(SaveTest, ARunAsLongAsTheCutTailIsSavedAsShownByBothPaths)
{
    ExpectBothPathsSaveWhatWasShown(
        {1, 2, 3, 4, 5, 6},
        [](EditableDocument& edited) {
            CutTail(edited, 3);
            Append(edited, {0xC0, 0xC1, 0xC2});
            ASSERT_TRUE(edited.OverwriteByte(0, 0xA0));
        },
        {0xA0, 2, 3, 0xC0, 0xC1, 0xC2});
}

TEST_F(SaveTest, ARunLongerThanTheCutTailIsSavedAsShownByBothPaths)
{
    ExpectBothPathsSaveWhatWasShown(
        {1, 2, 3, 4, 5, 6},
        [](EditableDocument& edited) {
            CutTail(edited, 2);
            ASSERT_TRUE(edited.OverwriteByte(1, 0xA1));
            Append(edited, {0xC4, 0xC5, 0xC6, 0xC7, 0xC8});
        },
        {1, 0xA1, 3, 4, 0xC4, 0xC5, 0xC6, 0xC7, 0xC8});
}

TEST_F(SaveTest, ATailCutUnderAnAppendedRunIsSavedAsShownByBothPaths)
{
    ExpectBothPathsSaveWhatWasShown(
        {1, 2, 3, 4, 5},
        [](EditableDocument& edited) {
            Append(edited, {0xB0, 0xB1});
            // The file's last two bytes, in front of the run, then a byte of the run itself.
            ASSERT_TRUE(edited.DeleteByte(4));
            ASSERT_TRUE(edited.DeleteByte(3));
            ASSERT_TRUE(edited.OverwriteByte(4, 0xBB));
        },
        {1, 2, 3, 0xB0, 0xBB});
}

TEST_F(SaveTest, AnAppendedRunWithACutTailAroundTheCopyChunkIsSavedAsShownByBothPaths)
{
    struct Shape {
        std::uint64_t cut;
        std::uint64_t run;
    };
    for (const std::uint64_t size : {MiB - 1, MiB, MiB + 1}) {
        for (const Shape shape : {Shape{1, 3}, Shape{3, 1}, Shape{2, 2}}) {
            SCOPED_TRACE("size " + std::to_string(size) + ", cut " + std::to_string(shape.cut) + ", run "
                + std::to_string(shape.run));
            const Bytes bytes = test::RandomBytes(static_cast<std::size_t>(size), static_cast<std::uint32_t>(size + shape.cut));
            const Bytes run(static_cast<std::size_t>(shape.run), 0xE5);
            Bytes expected(bytes.begin(), bytes.end() - static_cast<std::ptrdiff_t>(shape.cut));
            expected[MiB - 5] = 0xE1;
            expected.insert(expected.end(), run.begin(), run.end());
            ExpectBothPathsSaveWhatWasShown(
                bytes,
                [&](EditableDocument& edited) {
                    CutTail(edited, shape.cut);
                    Append(edited, run);
                    ASSERT_TRUE(edited.OverwriteByte(MiB - 5, 0xE1));
                },
                expected);
        }
    }
}

TEST_F(SaveTest, TheReadHandleStaysOpenDuringAnInPlaceSave)
{
    Open({0, 1, 2, 3});
    ASSERT_TRUE(document.OverwriteByte(1, 0xA1));
    ASSERT_TRUE(document.InsertByte(4, 0xB0));
    ASSERT_FALSE(document.SavesViaTemporaryFile());
    int calls = 0;
    ASSERT_TRUE(document.Save([&](std::uint64_t, std::uint64_t) {
        ++calls;
        EXPECT_TRUE(document.file.IsOpen());
        EXPECT_EQ(document.file.GetSize(), 4u);
    }));
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(OnDisk(), (Bytes{0, 0xA1, 2, 3, 0xB0}));
}

TEST_F(SaveTest, TheRewriteIsATemporaryFileNamedByProcessAndAttemptBesideTheTarget)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    EditWithMove(document);
    const Bytes expected = Shown();
    // Two taken names first, so the third attempt's number shows in the name.
    InjectFileFault(FileOperation::CreateNew, FileExistsError(), 0, 2);
    std::vector<std::string> seen;
    ASSERT_TRUE(document.Save([&](std::uint64_t, std::uint64_t) {
        for (const std::string& name : folder.TemporaryFiles()) {
            if (std::find(seen.begin(), seen.end(), name) == seen.end()) {
                seen.push_back(name);
            }
        }
    }));
    ClearFileFaults();
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_TRUE(std::regex_match(seen[0], std::regex("Tolmo-[0-9A-F]{16}-02\\.tmp"))) << seen[0];
    EXPECT_TRUE(folder.TemporaryFiles().empty());
    EXPECT_EQ(OnDisk(), expected);
}

TEST_F(SaveTest, AnInsertInTheMiddleWritesAFullCopyThenReplacesTheTarget)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    EditWithMove(document);
    const std::uint64_t created = Calls(FileOperation::CreateNew);
    const std::uint64_t replaced = Calls(FileOperation::Replace);
    const Bytes expected = Shown();
    ASSERT_TRUE(document.SavesViaTemporaryFile());
    ASSERT_TRUE(Save());
    EXPECT_EQ(Calls(FileOperation::CreateNew), created + 1);
    EXPECT_EQ(Calls(FileOperation::Replace), replaced + 1);
    EXPECT_EQ(OnDisk(), expected);
    EXPECT_EQ(OnDisk(), (Bytes{0, 1, 0xEE, 2, 3, 0xA5, 5, 6, 7}));
    // Copy up to the run, the run, copy up to the overwrite, the overwrite, copy the rest.
    EXPECT_EQ(progress, (std::vector<ProgressCall>{{2, 9}, {3, 9}, {5, 9}, {6, 9}, {9, 9}}));
    EXPECT_TRUE(folder.TemporaryFiles().empty());
    EXPECT_FALSE(document.IsModified());
    EXPECT_EQ(Shown(), expected);
    EXPECT_EQ(document.file.GetSize(), 9u);
}

TEST_F(SaveTest, ARewriteCopiesInChunksOfOneMebibyte)
{
    Bytes big = test::RandomBytes(2 * 1048576 + 100, 3);
    Open(big);
    ASSERT_TRUE(document.InsertByte(0, 0x11));
    ASSERT_TRUE(Save());
    big.insert(big.begin(), 0x11);
    EXPECT_TRUE(OnDisk() == big);
    EXPECT_EQ(progress, (std::vector<ProgressCall>{{1, big.size()}, {1048577, big.size()}, {2097153, big.size()},
                            {big.size(), big.size()}}));
}

TEST_F(SaveTest, DeletionsInTheMiddleGoThroughTheTemporaryFile)
{
    Open({1, 2, 3, 4, 5});
    ASSERT_TRUE(document.DeleteByte(1));
    ASSERT_TRUE(document.SavesViaTemporaryFile());
    const std::uint64_t created = Calls(FileOperation::CreateNew);
    ASSERT_TRUE(Save());
    EXPECT_EQ(Calls(FileOperation::CreateNew), created + 1);
    EXPECT_EQ(OnDisk(), (Bytes{1, 3, 4, 5}));
}

TEST_F(SaveTest, RunsAmongDeletedBytesKeepTheirPlace)
{
    Open({0, 1, 2, 3, 4, 5});
    // A run before file byte 3, with bytes 2 and 3 deleted around it.
    ASSERT_TRUE(document.InsertByte(3, 0xEE));
    ASSERT_TRUE(document.DeleteByte(4));
    ASSERT_TRUE(document.DeleteByte(2));
    ASSERT_TRUE(document.OverwriteByte(3, 0xA4));
    EXPECT_EQ(Shown(), (Bytes{0, 1, 0xEE, 0xA4, 5}));
    ASSERT_TRUE(Save());
    EXPECT_EQ(OnDisk(), (Bytes{0, 1, 0xEE, 0xA4, 5}));
}

TEST_F(SaveTest, APathBeginningWithTwoBackslashesAlwaysUsesTheTemporaryFile)
{
    TestFolder cwdFolder;
    const std::filesystem::path previous = std::filesystem::current_path();
    std::filesystem::current_path(cwdFolder.Path());
#if defined(_WIN32)
    // The long-path form names an ordinary local file.
    const std::u16string name = u"\\\\?\\" + test::PathText(std::filesystem::absolute(cwdFolder.File("plain.bin")));
    const std::filesystem::path onDisk = cwdFolder.File("plain.bin");
    const std::filesystem::path temporaryFolder = cwdFolder.Path();
#else
    // Here a backslash is an ordinary character: the whole name is one file in the current folder, and
    // the lexical parent ("\\srv\share") is a folder whose name holds backslashes. Make both, so that
    // the rewrite can run there and be renamed over the target.
    const std::u16string name = u"\\\\srv\\share\\plain.bin";
    const std::filesystem::path onDisk = cwdFolder.File("\\\\srv\\share\\plain.bin");
    const std::filesystem::path temporaryFolder = cwdFolder.File("\\\\srv\\share");
    std::filesystem::create_directory(temporaryFolder);
#endif
    test::WriteWholeFile(onDisk, {1, 2, 3});
    ASSERT_TRUE(document.file.Open(name));
    // An overwrite alone would go in place on a local path.
    ASSERT_TRUE(document.OverwriteByte(0, 9));
    EXPECT_TRUE(document.SavesViaTemporaryFile());
    const std::uint64_t created = Calls(FileOperation::CreateNew);
    const std::uint64_t openedForWriting = Calls(FileOperation::OpenForWriting);
    bool sawTemporaryFile = false;
    EXPECT_TRUE(document.Save([&](std::uint64_t, std::uint64_t) {
        for (const auto& entry : std::filesystem::directory_iterator(temporaryFolder)) {
            sawTemporaryFile = sawTemporaryFile || entry.path().filename().string().starts_with("Tolmo-");
        }
    })) << std::string(document.lastError.begin(), document.lastError.end());
    EXPECT_TRUE(sawTemporaryFile);
    EXPECT_EQ(Calls(FileOperation::CreateNew), created + 1);
    EXPECT_EQ(Calls(FileOperation::OpenForWriting), openedForWriting);
    EXPECT_EQ(test::ReadWholeFile(onDisk), (Bytes{9, 2, 3}));
    for (const auto& entry : std::filesystem::directory_iterator(temporaryFolder)) {
        EXPECT_FALSE(entry.path().filename().string().starts_with("Tolmo-")) << entry.path();
    }
    EXPECT_FALSE(document.IsModified());
    document.Close();
    std::filesystem::current_path(previous);
}

TEST_F(SaveTest, APathBeginningWithTwoSlashesAlwaysUsesTheTemporaryFile)
{
    folder.Write("slashes.bin", {1, 2, 3});
    ASSERT_TRUE(document.file.Open(folder.TwoSlashPath("slashes.bin")));
    ASSERT_TRUE(document.OverwriteByte(0, 9));
    EXPECT_TRUE(document.SavesViaTemporaryFile());
    const std::uint64_t created = Calls(FileOperation::CreateNew);
    ASSERT_TRUE(document.Save()) << std::string(document.lastError.begin(), document.lastError.end());
    EXPECT_EQ(Calls(FileOperation::CreateNew), created + 1);
    EXPECT_EQ(test::ReadWholeFile(folder.File("slashes.bin")), (Bytes{9, 2, 3}));
    EXPECT_TRUE(folder.TemporaryFiles().empty());
}

TEST_F(SaveTest, ABareFileNameIsRewrittenBesideItInTheCurrentFolder)
{
    const std::filesystem::path previous = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    folder.Write("bare.bin", {1, 2, 3});
    ASSERT_TRUE(document.file.Open(u"bare.bin"));
    ASSERT_TRUE(document.InsertByte(0, 7));
    EXPECT_TRUE(document.Save());
    EXPECT_EQ(test::ReadWholeFile(folder.File("bare.bin")), (Bytes{7, 1, 2, 3}));
    EXPECT_TRUE(folder.TemporaryFiles().empty());
    document.Close();
    std::filesystem::current_path(previous);
}

TEST_F(SaveTest, ABareFileNameWithoutACurrentFolderFailsAsPathNotFound)
{
    const std::filesystem::path previous = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    folder.Write("bare.bin", {1, 2, 3});
    original = {1, 2, 3};
    ASSERT_TRUE(document.file.Open(u"bare.bin"));
    ASSERT_TRUE(document.InsertByte(0, 7));
    InjectFileFault(FileOperation::CurrentFolder, AccessDenied);
    EXPECT_FALSE(document.Save());
    ClearFileFaults();
    EXPECT_EQ(document.lastError, FormatSystemError(PathNotFoundError()));
    EXPECT_EQ(test::ReadWholeFile(folder.File("bare.bin")), original);
    EXPECT_TRUE(document.IsOpen());
    EXPECT_TRUE(document.IsModified());
    document.Close();
    std::filesystem::current_path(previous);
}

// Failure rows, each made to happen by failing one platform operation.

TEST_F(SaveTest, InPlaceOpenFailureKeepsTheFileTheEditsAndTheOpenDocument)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    EditInPlace(document);
    const Bytes shown = Shown();
    InjectFileFault(FileOperation::OpenForWriting, AccessDenied);
    EXPECT_FALSE(Save());
    ClearFileFaults();
    ExpectNothingChanged(shown);
    EXPECT_EQ(document.lastError, FormatSystemError(AccessDenied));
}

TEST_F(SaveTest, InPlaceWriteFailureLeavesTheFilePartlyWrittenAndTheEditsKept)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    EditInPlace(document);
    const Bytes shown = Shown();
    InjectFileFault(FileOperation::Write, AccessDenied, 1);
    EXPECT_FALSE(Save());
    ClearFileFaults();
    EXPECT_EQ(OnDisk(), (Bytes{0, 0xA1, 2, 3, 4, 5, 6, 7}));
    EXPECT_TRUE(document.IsOpen());
    EXPECT_EQ(document.file.GetSize(), 8u);
    EXPECT_EQ(Shown(), shown);
    EXPECT_EQ(document.lastError, FormatSystemError(AccessDenied));
    // The write handle was let go: saving again works.
    EXPECT_TRUE(Save());
    EXPECT_EQ(OnDisk(), shown);
}

TEST_F(SaveTest, InPlaceFlushFailureKeepsTheEditsAndTheOpenDocument)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    ASSERT_TRUE(document.DeleteByte(7));
    const Bytes shown = Shown();
    InjectFileFault(FileOperation::Flush, AccessDenied);
    EXPECT_FALSE(Save());
    ClearFileFaults();
    EXPECT_TRUE(document.IsOpen());
    EXPECT_TRUE(document.IsModified());
    EXPECT_EQ(document.file.GetSize(), 8u);
    EXPECT_EQ(Shown(), shown);
    EXPECT_FALSE(document.lastError.empty());
}

TEST_F(SaveTest, InPlaceTruncationFailureKeepsTheEdits)
{
    Open({0, 1, 2, 3});
    ASSERT_TRUE(document.DeleteByte(3));
    InjectFileFault(FileOperation::SetEnd, AccessDenied);
    EXPECT_FALSE(Save());
    ClearFileFaults();
    EXPECT_EQ(OnDisk(), original);
    EXPECT_TRUE(document.IsModified());
    EXPECT_EQ(document.lastError, FormatSystemError(AccessDenied));
}

TEST_F(SaveTest, InPlaceReopenFailureLeavesTheFileSavedTheEditsEmptiedAndTheDocumentClosed)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    EditInPlace(document);
    const Bytes shown = Shown();
    InjectFileFault(FileOperation::OpenForReading, AccessDenied);
    EXPECT_FALSE(Save());
    ClearFileFaults();
    EXPECT_EQ(OnDisk(), shown);
    EXPECT_FALSE(document.IsModified());
    EXPECT_FALSE(document.IsOpen());
    EXPECT_EQ(document.lastError, FormatSystemError(AccessDenied));
    EXPECT_TRUE(folder.TemporaryFiles().empty());
}

TEST_F(SaveTest, TemporaryFileCreationFailureKeepsTheFileTheEditsAndTheOpenDocument)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    EditWithMove(document);
    const Bytes shown = Shown();
    const std::uint64_t created = Calls(FileOperation::CreateNew);
    InjectFileFault(FileOperation::CreateNew, AccessDenied);
    EXPECT_FALSE(Save());
    ClearFileFaults();
    // Only a taken name is worth another attempt.
    EXPECT_EQ(Calls(FileOperation::CreateNew), created + 1);
    ExpectNothingChanged(shown);
    EXPECT_EQ(document.lastError, FormatSystemError(AccessDenied));
}

TEST_F(SaveTest, TemporaryNamesThatExistAreRetried)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    EditWithMove(document);
    const Bytes shown = Shown();
    const std::uint64_t created = Calls(FileOperation::CreateNew);
    InjectFileFault(FileOperation::CreateNew, FileExistsError(), 0, 3);
    EXPECT_TRUE(Save());
    ClearFileFaults();
    EXPECT_EQ(Calls(FileOperation::CreateNew), created + 4);
    EXPECT_EQ(OnDisk(), shown);
}

TEST_F(SaveTest, SixtyFourTakenTemporaryNamesFailAsFileExists)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    EditWithMove(document);
    const Bytes shown = Shown();
    const std::uint64_t created = Calls(FileOperation::CreateNew);
    InjectFileFault(FileOperation::CreateNew, FileExistsError());
    EXPECT_FALSE(Save());
    ClearFileFaults();
    EXPECT_EQ(Calls(FileOperation::CreateNew), created + 64);
    ExpectNothingChanged(shown);
    EXPECT_EQ(document.lastError, FormatSystemError(FileExistsError()));
}

TEST_F(SaveTest, TemporaryWriteFailureDeletesTheTemporaryFileAndKeepsEverything)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    EditWithMove(document);
    const Bytes shown = Shown();
    InjectFileFault(FileOperation::Write, AccessDenied, 2);
    EXPECT_FALSE(Save());
    ClearFileFaults();
    ExpectNothingChanged(shown);
    EXPECT_EQ(document.lastError, FormatSystemError(AccessDenied));
}

TEST_F(SaveTest, TemporaryCopyReadFailureDeletesTheTemporaryFileAndKeepsEverything)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    EditWithMove(document);
    const Bytes shown = Shown();
    InjectFileFault(FileOperation::Read, AccessDenied);
    EXPECT_FALSE(Save());
    ClearFileFaults();
    ExpectNothingChanged(shown);
}

TEST_F(SaveTest, ATargetThatShrankMeanwhileFailsTheRewriteWithAnEndOfFileError)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    EditWithMove(document);
    std::filesystem::resize_file(folder.File("target.bin"), 4);
    original.resize(4);
    EXPECT_FALSE(Save());
    EXPECT_EQ(OnDisk(), original);
    EXPECT_TRUE(document.IsOpen());
    EXPECT_TRUE(document.IsModified());
    EXPECT_EQ(document.lastError, FormatSystemError(EndOfFileError()));
    EXPECT_TRUE(folder.TemporaryFiles().empty());
}

TEST_F(SaveTest, TemporaryFlushFailureDeletesTheTemporaryFileAndKeepsEverything)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    EditWithMove(document);
    const Bytes shown = Shown();
    InjectFileFault(FileOperation::Flush, AccessDenied);
    EXPECT_FALSE(Save());
    ClearFileFaults();
    ExpectNothingChanged(shown);
    EXPECT_EQ(document.lastError, FormatSystemError(AccessDenied));
}

TEST_F(SaveTest, WhenReplaceFailsTheMoveStillPutsTheFileInPlace)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    EditWithMove(document);
    const Bytes shown = Shown();
    const std::uint64_t moved = Calls(FileOperation::MoveOver);
    InjectFileFault(FileOperation::Replace, AccessDenied);
    EXPECT_TRUE(Save());
    ClearFileFaults();
    EXPECT_EQ(Calls(FileOperation::MoveOver), moved + 1);
    EXPECT_EQ(OnDisk(), shown);
    EXPECT_TRUE(document.IsOpen());
    EXPECT_FALSE(document.IsModified());
    EXPECT_TRUE(folder.TemporaryFiles().empty());
}

TEST_F(SaveTest, WhenBothReplacesFailTheFileStaysTheTemporaryGoesAndTheDocumentReopens)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    EditWithMove(document);
    const Bytes shown = Shown();
    InjectFileFault(FileOperation::Replace, AccessDenied);
    InjectFileFault(FileOperation::MoveOver, AccessDenied);
    EXPECT_FALSE(Save());
    ClearFileFaults();
    ExpectNothingChanged(shown);
    EXPECT_EQ(document.lastError, FormatSystemError(AccessDenied));
}

TEST_F(SaveTest, WhenBothReplacesAndTheReopenFailTheEditsStayOnAClosedDocument)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    EditWithMove(document);
    InjectFileFault(FileOperation::Replace, AccessDenied);
    InjectFileFault(FileOperation::MoveOver, AccessDenied);
    InjectFileFault(FileOperation::OpenForReading, AccessDenied);
    EXPECT_FALSE(Save());
    ClearFileFaults();
    EXPECT_EQ(OnDisk(), original);
    EXPECT_FALSE(document.IsOpen());
    EXPECT_TRUE(document.IsModified());
    EXPECT_FALSE(document.lastError.empty());
    EXPECT_TRUE(folder.TemporaryFiles().empty());
}

TEST_F(SaveTest, TemporaryReopenFailureLeavesTheFileSavedTheEditsEmptiedAndTheDocumentClosed)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    EditWithMove(document);
    const Bytes shown = Shown();
    InjectFileFault(FileOperation::OpenForReading, AccessDenied);
    EXPECT_FALSE(Save());
    ClearFileFaults();
    EXPECT_EQ(OnDisk(), shown);
    EXPECT_FALSE(document.IsOpen());
    EXPECT_FALSE(document.IsModified());
    EXPECT_EQ(document.lastError, FormatSystemError(AccessDenied));
    EXPECT_TRUE(folder.TemporaryFiles().empty());
}

} // namespace
} // namespace tlm
