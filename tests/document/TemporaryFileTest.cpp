#include "TestFolder.h"

#include "document/FileFaults.h"
#include "document/PlatformFile.h"
#include "document/TemporaryFile.h"
#include "document/WriteAll.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

namespace tlm {
namespace {

using test::TestFolder;

std::string Narrow(const std::u16string& text)
{
    return std::string(text.begin(), text.end());
}

TEST(MakeTemporaryFileName, HasTheProgramNameSixteenHexDigitsTheAttemptAndTmp)
{
    const std::regex form("Tolmo-[0-9A-F]{16}-[0-9A-F]{2,}\\.tmp");
    for (const std::uint32_t attempt : {0u, 1u, 10u, 63u}) {
        const std::string name = Narrow(MakeTemporaryFileName(attempt));
        EXPECT_TRUE(std::regex_match(name, form)) << name;
    }
    EXPECT_TRUE(Narrow(MakeTemporaryFileName(0)).ends_with("-00.tmp"));
    EXPECT_TRUE(Narrow(MakeTemporaryFileName(10)).ends_with("-0A.tmp"));
    EXPECT_TRUE(Narrow(MakeTemporaryFileName(63)).ends_with("-3F.tmp"));
    EXPECT_TRUE(Narrow(MakeTemporaryFileName(0x1AB)).ends_with("-1AB.tmp"));
}

TEST(MakeTemporaryFileName, VariesFromCallToCall)
{
    std::set<std::u16string> names;
    for (int i = 0; i < 50; ++i) {
        names.insert(MakeTemporaryFileName(0));
    }
    EXPECT_GT(names.size(), 45u);
}

TEST(CreateUniqueTemporaryFile, CreatesAFreshFileBesideTheTarget)
{
    TestFolder folder;
    const std::u16string target = folder.Write("target.bin", {1});
    const std::optional<TemporaryFile> temporary = CreateUniqueTemporaryFile(target);
    ASSERT_TRUE(temporary.has_value());
    EXPECT_TRUE(IsValidFileHandle(temporary->handle));
    const std::filesystem::path created(temporary->path);
    EXPECT_EQ(created.parent_path(), folder.Path());
    EXPECT_TRUE(std::filesystem::exists(created));
    EXPECT_EQ(std::filesystem::file_size(created), 0u);
    EXPECT_EQ(folder.TemporaryFiles().size(), 1u);
    CloseFile(temporary->handle);
    EXPECT_TRUE(RemoveFile(temporary->path));
    EXPECT_TRUE(folder.TemporaryFiles().empty());
}

TEST(CreateUniqueTemporaryFile, FailsWithTheSystemErrorInAMissingFolder)
{
    TestFolder folder;
    const std::optional<TemporaryFile> temporary
        = CreateUniqueTemporaryFile(test::PathText(folder.File("missing") / "target.bin"));
    EXPECT_FALSE(temporary.has_value());
    EXPECT_NE(LastSystemError(), 0u);
    EXPECT_FALSE(IsFileExistsError(LastSystemError()));
}

TEST(WriteAll, NothingToWriteSucceedsWithoutAWrite)
{
    const std::uint64_t writes = FileOperationCalls(FileOperation::Write);
    EXPECT_TRUE(WriteAll(InvalidFileHandle, 0, nullptr, 0));
    EXPECT_EQ(FileOperationCalls(FileOperation::Write), writes);
}

TEST(WriteAll, WritesEveryByteAtTheOffset)
{
    TestFolder folder;
    const std::u16string path = folder.Write("file.bin", {1, 2, 3, 4, 5, 6});
    const FileHandle handle = OpenFileForWriting(path);
    ASSERT_TRUE(IsValidFileHandle(handle));
    const std::vector<std::uint8_t> bytes = {9, 8};
    EXPECT_TRUE(WriteAll(handle, 2, bytes.data(), bytes.size()));
    CloseFile(handle);
    EXPECT_EQ(test::ReadWholeFile(folder.File("file.bin")), (std::vector<std::uint8_t>{1, 2, 9, 8, 5, 6}));
}

TEST(WriteAll, AFailedWriteFails)
{
    TestFolder folder;
    const std::u16string path = folder.Write("file.bin", {1, 2, 3});
    const FileHandle handle = OpenFileForWriting(path);
    ASSERT_TRUE(IsValidFileHandle(handle));
    const std::vector<std::uint8_t> bytes = {9};
    InjectFileFault(FileOperation::Write, FileExistsError());
    EXPECT_FALSE(WriteAll(handle, 0, bytes.data(), bytes.size()));
    ClearFileFaults();
    EXPECT_EQ(LastSystemError(), FileExistsError());
    CloseFile(handle);
    EXPECT_FALSE(WriteAll(InvalidFileHandle, 0, bytes.data(), bytes.size()));
}

TEST(FormatSystemError, ZeroIsEmptyAndOthersHaveNoTrailingLineBreak)
{
    EXPECT_TRUE(FormatSystemError(0).empty());
    for (const std::uint32_t code : {PathNotFoundError(), FileExistsError(), EndOfFileError()}) {
        const std::u16string text = FormatSystemError(code);
        ASSERT_FALSE(text.empty());
        EXPECT_NE(text.back(), u'\n');
        EXPECT_NE(text.back(), u'\r');
        EXPECT_NE(text.back(), u' ');
    }
    EXPECT_NE(FormatSystemError(PathNotFoundError()), FormatSystemError(FileExistsError()));
}

TEST(PlatformFile, CreateNewFileRefusesAnExistingNameWithTheFileExistsError)
{
    TestFolder folder;
    const std::u16string path = folder.Write("taken.bin", {1});
    EXPECT_FALSE(IsValidFileHandle(CreateNewFile(path)));
    EXPECT_TRUE(IsFileExistsError(LastSystemError()));
}

TEST(PlatformFile, ZeroAndTheInvalidValueAreNotFiles)
{
    EXPECT_FALSE(IsValidFileHandle(0));
    EXPECT_FALSE(IsValidFileHandle(InvalidFileHandle));
}

} // namespace
} // namespace tlm
