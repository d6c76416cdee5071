#include "TestFolder.h"

#include "document/FileViewModel.h"
#include "document/PlatformFile.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tlm {
namespace {

using test::TestFolder;

TEST(PlatformFilePosix, FileExistsIsEexist)
{
    EXPECT_TRUE(IsFileExistsError(EEXIST));
    EXPECT_FALSE(IsFileExistsError(EACCES));
    EXPECT_EQ(FileExistsError(), static_cast<std::uint32_t>(EEXIST));
    EXPECT_EQ(PathNotFoundError(), static_cast<std::uint32_t>(ENOENT));
}

TEST(PlatformFilePosix, ErrorTextIsTheSystemsOwn)
{
    const std::string expected = std::strerror(ENOENT);
    EXPECT_EQ(FormatSystemError(ENOENT), std::u16string(expected.begin(), expected.end()));
}

TEST(PlatformFilePosix, APipeIsRefusedWithoutWaitingForAWriter)
{
    TestFolder folder;
    const std::filesystem::path pipe = folder.File("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    FileViewModel view;
    EXPECT_FALSE(view.Open(test::PathText(pipe)));
    EXPECT_FALSE(view.IsOpen());
}

TEST(PlatformFilePosix, ADeviceIsRefused)
{
    FileViewModel view;
    EXPECT_FALSE(view.Open(u"/dev/null"));
}

TEST(PlatformFilePosix, HandlesNeverUseTheStandardStreamNumbers)
{
    TestFolder folder;
    const std::u16string path = folder.Write("file.bin", {1, 2, 3});
    // With standard input closed the system would hand out descriptor 0 next.
    const int savedInput = dup(0);
    ASSERT_GE(savedInput, 0);
    close(0);
    const FileHandle handle = OpenFileForReading(path);
    dup2(savedInput, 0);
    close(savedInput);
    EXPECT_TRUE(IsValidFileHandle(handle));
    EXPECT_GT(handle, 2);
    CloseFile(handle);
}

TEST(PlatformFilePosix, ReplaceCarriesThePermissionBitsOver)
{
    TestFolder folder;
    const std::u16string target = folder.Write("target.bin", {1});
    const std::u16string replacement = folder.Write("replacement.bin", {2});
    ASSERT_EQ(chmod(folder.File("target.bin").c_str(), 0640), 0);
    ASSERT_EQ(chmod(folder.File("replacement.bin").c_str(), 0600), 0);
    ASSERT_TRUE(ReplaceFileWith(target, replacement));
    struct stat status {};
    ASSERT_EQ(stat(folder.File("target.bin").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
    EXPECT_EQ(test::ReadWholeFile(folder.File("target.bin")), (std::vector<std::uint8_t>{2}));
    EXPECT_FALSE(std::filesystem::exists(folder.File("replacement.bin")));
}

TEST(PlatformFilePosix, ReplaceNeedsAnExistingTarget)
{
    TestFolder folder;
    const std::u16string replacement = folder.Write("replacement.bin", {2});
    EXPECT_FALSE(ReplaceFileWith(test::PathText(folder.File("missing.bin")), replacement));
    EXPECT_EQ(LastSystemError(), static_cast<std::uint32_t>(ENOENT));
    EXPECT_TRUE(MoveFileOver(replacement, test::PathText(folder.File("missing.bin"))));
    EXPECT_TRUE(std::filesystem::exists(folder.File("missing.bin")));
}

} // namespace
} // namespace tlm
