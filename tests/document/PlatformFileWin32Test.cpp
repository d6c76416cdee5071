#include "TestFolder.h"

#include "document/EditableDocument.h"
#include "document/PlatformFile.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace tlm {
namespace {

using test::TestFolder;

TEST(FormatWin32Error, ZeroGivesEmptyText)
{
    EXPECT_TRUE(FormatWin32Error(0).empty());
}

TEST(FormatWin32Error, GivesTheSystemTextWithoutTrailingLineBreaks)
{
    const std::u16string text = FormatWin32Error(ERROR_FILE_NOT_FOUND);
    ASSERT_FALSE(text.empty());
    EXPECT_NE(text.back(), u'\n');
    EXPECT_NE(text.back(), u'\r');
    EXPECT_NE(text.back(), u' ');
    EXPECT_EQ(text.find(u"Win32 error"), std::u16string::npos);
}

TEST(FormatWin32Error, ACodeWithoutTextGivesTheNumber)
{
    EXPECT_EQ(FormatWin32Error(0x2FFFFFFF), u"Win32 error: 805306367");
}

TEST(PlatformFileWin32, ErrorsEightyAndOneEightyThreeMeanTheFileExists)
{
    EXPECT_TRUE(IsFileExistsError(80));
    EXPECT_TRUE(IsFileExistsError(183));
    EXPECT_FALSE(IsFileExistsError(5));
    EXPECT_EQ(FileExistsError(), 80u);
    EXPECT_EQ(PathNotFoundError(), 3u);
}

TEST(PlatformFileWin32, ADeviceIsNoDocument)
{
    EXPECT_FALSE(IsValidFileHandle(OpenFileForReading(u"NUL")));
    EXPECT_FALSE(IsValidFileHandle(OpenFileForReading(u"\\\\.\\NUL")));
    EditableDocument document;
    EXPECT_FALSE(document.file.Open(u"NUL"));
    EXPECT_FALSE(document.IsOpen());
}

TEST(PlatformFileWin32, AFolderIsNoDocument)
{
    TestFolder folder;
    EditableDocument document;
    EXPECT_FALSE(document.file.Open(test::PathText(folder.Path())));
    EXPECT_FALSE(document.IsOpen());
}

TEST(PlatformFileWin32, TheReadHandleLetsOthersWriteAndDelete)
{
    TestFolder folder;
    const std::u16string path = folder.Write("shared.bin", {1, 2, 3});
    const FileHandle handle = OpenFileForReading(path);
    ASSERT_TRUE(IsValidFileHandle(handle));
    const HANDLE writer = CreateFileW(reinterpret_cast<const wchar_t*>(path.c_str()), GENERIC_WRITE | DELETE,
        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_NE(writer, INVALID_HANDLE_VALUE);
    CloseHandle(writer);
    // A reader that refuses to share writing cannot join: somebody (we) may still write.
    const HANDLE exclusive = CreateFileW(reinterpret_cast<const wchar_t*>(path.c_str()), GENERIC_READ, FILE_SHARE_READ,
        nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_NE(exclusive, INVALID_HANDLE_VALUE);
    if (exclusive != INVALID_HANDLE_VALUE) {
        CloseHandle(exclusive);
    }
    CloseFile(handle);
}

TEST(PlatformFileWin32, TheInPlaceWriteHandleSharesOnlyReading)
{
    TestFolder folder;
    const std::u16string path = folder.Write("target.bin", {1, 2, 3});
    const FileHandle handle = OpenFileForWriting(path);
    ASSERT_TRUE(IsValidFileHandle(handle));
    const HANDLE reader = CreateFileW(reinterpret_cast<const wchar_t*>(path.c_str()), GENERIC_READ,
        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_NE(reader, INVALID_HANDLE_VALUE);
    if (reader != INVALID_HANDLE_VALUE) {
        CloseHandle(reader);
    }
    const HANDLE writer = CreateFileW(reinterpret_cast<const wchar_t*>(path.c_str()), GENERIC_WRITE,
        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_EQ(writer, INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SHARING_VIOLATION));
    if (writer != INVALID_HANDLE_VALUE) {
        CloseHandle(writer);
    }
    CloseFile(handle);
}

TEST(PlatformFileWin32, TheTemporaryFileSharesNothing)
{
    TestFolder folder;
    const std::u16string path = test::PathText(folder.File("Tolmo-test.tmp"));
    const FileHandle handle = CreateNewFile(path);
    ASSERT_TRUE(IsValidFileHandle(handle));
    const HANDLE reader = CreateFileW(reinterpret_cast<const wchar_t*>(path.c_str()), GENERIC_READ,
        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_EQ(reader, INVALID_HANDLE_VALUE);
    if (reader != INVALID_HANDLE_VALUE) {
        CloseHandle(reader);
    }
    CloseFile(handle);
    EXPECT_TRUE(RemoveFile(path));
}

} // namespace
} // namespace tlm
