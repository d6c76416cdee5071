#include "TestFolder.h"

#include "document/FileFaults.h"
#include "document/FileViewModel.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

using test::TestFolder;

const std::vector<std::uint8_t> TenBytes = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};

#if defined(__linux__)
// The process's open descriptors, to see that a dropped file's handle was really let go.
std::size_t OpenDescriptorCount()
{
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        ++count;
    }
    return count;
}
#endif

TEST(FileViewModel, FreshObjectIsClosed)
{
    FileViewModel view;
    EXPECT_FALSE(view.IsOpen());
    EXPECT_EQ(view.GetSize(), 0u);
    EXPECT_TRUE(view.GetPath().empty());
    EXPECT_TRUE(view.Read(0, 10).bytes.empty());
}

TEST(FileViewModel, OpensAndReadsAtAbsoluteOffsets)
{
    TestFolder folder;
    const std::u16string path = folder.Write("ten.bin", TenBytes);
    FileViewModel view;
    ASSERT_TRUE(view.Open(path));
    EXPECT_TRUE(view.IsOpen());
    EXPECT_EQ(view.GetSize(), 10u);
    EXPECT_EQ(view.GetPath(), path);
    EXPECT_EQ(view.Read(3, 4).bytes, (std::vector<std::uint8_t>{3, 4, 5, 6}));
    EXPECT_EQ(view.Read(0, 1).bytes, (std::vector<std::uint8_t>{0}));
    EXPECT_EQ(view.Read(3, 4).offset, 3u);
}

TEST(FileViewModel, ZeroLengthFileOpensWithSizeZeroAndEveryReadEmpty)
{
    TestFolder folder;
    FileViewModel view;
    ASSERT_TRUE(view.Open(folder.Write("empty.bin", {})));
    EXPECT_TRUE(view.IsOpen());
    EXPECT_EQ(view.GetSize(), 0u);
    for (const std::uint64_t offset : {0ull, 1ull, 1000ull}) {
        const ByteBlock block = view.Read(offset, 16);
        EXPECT_TRUE(block.bytes.empty());
        EXPECT_EQ(block.offset, offset);
    }
}

TEST(FileViewModel, ReadAtTheSizeGivesEmptyBlockWithTheAskedOffset)
{
    TestFolder folder;
    FileViewModel view;
    ASSERT_TRUE(view.Open(folder.Write("ten.bin", TenBytes)));
    const ByteBlock block = view.Read(10, 5);
    EXPECT_TRUE(block.bytes.empty());
    EXPECT_EQ(block.offset, 10u);
    EXPECT_EQ(view.Read(12345, 5).offset, 12345u);
}

TEST(FileViewModel, ReadCrossingTheEndGivesOnlyTheBytesUpToTheEnd)
{
    TestFolder folder;
    FileViewModel view;
    ASSERT_TRUE(view.Open(folder.Write("ten.bin", TenBytes)));
    const ByteBlock block = view.Read(7, 100);
    EXPECT_EQ(block.bytes, (std::vector<std::uint8_t>{7, 8, 9}));
    EXPECT_EQ(block.offset, 7u);
    EXPECT_EQ(view.Read(0, UINT64_MAX).bytes, TenBytes);
}

TEST(FileViewModel, ReadOfZeroBytesGivesEmptyBlockWithoutTouchingTheFile)
{
    TestFolder folder;
    FileViewModel view;
    ASSERT_TRUE(view.Open(folder.Write("ten.bin", TenBytes)));
    const std::uint64_t readsBefore = FileOperationCalls(FileOperation::Read);
    const ByteBlock block = view.Read(4, 0);
    EXPECT_TRUE(block.bytes.empty());
    EXPECT_EQ(block.offset, 4u);
    EXPECT_EQ(FileOperationCalls(FileOperation::Read), readsBefore);
    view.Read(4, 1);
    EXPECT_EQ(FileOperationCalls(FileOperation::Read), readsBefore + 1);
}

TEST(FileViewModel, FailedOpenLeavesTheObjectClosedWithThePreviousFileGone)
{
    TestFolder folder;
    FileViewModel view;
    const std::u16string path = folder.Write("ten.bin", TenBytes);
#if defined(__linux__)
    const std::size_t descriptorsBefore = OpenDescriptorCount();
#endif
    ASSERT_TRUE(view.Open(path));
    EXPECT_FALSE(view.Open(test::PathText(folder.File("missing.bin"))));
    EXPECT_FALSE(view.IsOpen());
    EXPECT_EQ(view.GetSize(), 0u);
    EXPECT_TRUE(view.GetPath().empty());
    EXPECT_TRUE(view.Read(0, 4).bytes.empty());
#if defined(__linux__)
    EXPECT_EQ(OpenDescriptorCount(), descriptorsBefore);
#endif
    // Also when the new file opens but its length cannot be taken.
    ASSERT_TRUE(view.Open(path));
    InjectFileFault(FileOperation::QueryLength, 5);
    EXPECT_FALSE(view.Open(path));
    ClearFileFaults();
    EXPECT_FALSE(view.IsOpen());
    EXPECT_TRUE(view.GetPath().empty());
#if defined(__linux__)
    EXPECT_EQ(OpenDescriptorCount(), descriptorsBefore);
#endif
}

TEST(FileViewModel, FileTruncatedByAnotherProgramKeepsTheOldSizeAndReadsShort)
{
    TestFolder folder;
    FileViewModel view;
    ASSERT_TRUE(view.Open(folder.Write("ten.bin", TenBytes)));
    std::filesystem::resize_file(folder.File("ten.bin"), 4);
    EXPECT_EQ(view.GetSize(), 10u);
    EXPECT_EQ(view.Read(2, 6).bytes, (std::vector<std::uint8_t>{2, 3}));
    EXPECT_TRUE(view.Read(6, 2).bytes.empty());
}

TEST(FileViewModel, FileGrownByAnotherProgramKeepsTheOldSize)
{
    TestFolder folder;
    FileViewModel view;
    ASSERT_TRUE(view.Open(folder.Write("ten.bin", TenBytes)));
    std::vector<std::uint8_t> longer = TenBytes;
    longer.resize(40, 0xEE);
    test::WriteWholeFile(folder.File("ten.bin"), longer);
    EXPECT_EQ(view.GetSize(), 10u);
    EXPECT_EQ(view.Read(8, 10).bytes, (std::vector<std::uint8_t>{8, 9}));
}

TEST(FileViewModel, AnotherProgramMayWriteTheOpenFileAndReadsSeeIt)
{
    TestFolder folder;
    FileViewModel view;
    ASSERT_TRUE(view.Open(folder.Write("ten.bin", TenBytes)));
    test::WriteWholeFile(folder.File("ten.bin"), {9, 9, 9, 9, 9, 9, 9, 9, 9, 9});
    EXPECT_EQ(view.Read(0, 3).bytes, (std::vector<std::uint8_t>{9, 9, 9}));
}

TEST(FileViewModel, AnotherProgramRenamingOverTheOpenFileLeavesTheOldBytesReadable)
{
    TestFolder folder;
    FileViewModel view;
    const std::u16string path = folder.Write("ten.bin", TenBytes);
    ASSERT_TRUE(view.Open(path));
    folder.Write("other.bin", {7, 7, 7});
    // POSIX allows the rename; Windows refuses to replace a file that has open handles. Either way the
    // open view keeps reading the bytes it opened.
    std::error_code error;
    std::filesystem::rename(folder.File("other.bin"), folder.File("ten.bin"), error);
#if !defined(_WIN32)
    EXPECT_FALSE(error) << error.message();
#endif
    EXPECT_EQ(view.Read(0, 10).bytes, TenBytes);
    EXPECT_EQ(view.GetSize(), 10u);
    EXPECT_EQ(view.GetPath(), path);
    view.Close();
    if (!error) {
        EXPECT_EQ(test::ReadWholeFile(folder.File("ten.bin")), (std::vector<std::uint8_t>{7, 7, 7}));
    }
}

TEST(FileViewModel, AnotherProgramMayDeleteTheOpenFileAndItStaysReadable)
{
    TestFolder folder;
    FileViewModel view;
    ASSERT_TRUE(view.Open(folder.Write("ten.bin", TenBytes)));
    std::error_code error;
    EXPECT_TRUE(std::filesystem::remove(folder.File("ten.bin"), error)) << error.message();
    EXPECT_EQ(view.Read(0, 10).bytes, TenBytes);
    view.Close();
    EXPECT_FALSE(std::filesystem::exists(folder.File("ten.bin")));
}

TEST(FileViewModel, OpenAgainWithoutClosingSwitchesFiles)
{
    TestFolder folder;
    FileViewModel view;
    ASSERT_TRUE(view.Open(folder.Write("ten.bin", TenBytes)));
    const std::u16string second = folder.Write("three.bin", {1, 2, 3});
    ASSERT_TRUE(view.Open(second));
    EXPECT_EQ(view.GetSize(), 3u);
    EXPECT_EQ(view.GetPath(), second);
    EXPECT_EQ(view.Read(0, 10).bytes, (std::vector<std::uint8_t>{1, 2, 3}));
}

TEST(FileViewModel, CloseReturnsToTheClosedState)
{
    TestFolder folder;
    FileViewModel view;
    ASSERT_TRUE(view.Open(folder.Write("ten.bin", TenBytes)));
    view.Close();
    EXPECT_FALSE(view.IsOpen());
    EXPECT_EQ(view.GetSize(), 0u);
    EXPECT_TRUE(view.GetPath().empty());
    view.Close();
    EXPECT_FALSE(view.IsOpen());
}

TEST(FileViewModel, AFolderDoesNotOpen)
{
    TestFolder folder;
    FileViewModel view;
    EXPECT_FALSE(view.Open(test::PathText(folder.Path())));
    EXPECT_FALSE(view.IsOpen());
}

TEST(FileViewModel, EmptyPathDoesNotOpen)
{
    FileViewModel view;
    EXPECT_FALSE(view.Open(u""));
    EXPECT_FALSE(view.IsOpen());
}

TEST(FileViewModel, FailedLengthQueryClosesAndFails)
{
    TestFolder folder;
    const std::u16string path = folder.Write("ten.bin", TenBytes);
    FileViewModel view;
    InjectFileFault(FileOperation::QueryLength, 5);
    EXPECT_FALSE(view.Open(path));
    ClearFileFaults();
    EXPECT_FALSE(view.IsOpen());
    EXPECT_TRUE(view.GetPath().empty());
    EXPECT_EQ(view.GetSize(), 0u);
}

TEST(FileViewModel, FailedReadGivesEmptyBlockWithTheOffset)
{
    TestFolder folder;
    FileViewModel view;
    ASSERT_TRUE(view.Open(folder.Write("ten.bin", TenBytes)));
    InjectFileFault(FileOperation::Read, 5);
    const ByteBlock block = view.Read(2, 3);
    ClearFileFaults();
    EXPECT_TRUE(block.bytes.empty());
    EXPECT_EQ(block.offset, 2u);
    EXPECT_EQ(view.Read(2, 3).bytes.size(), 3u);
}

TEST(FileViewModel, MovedViewTakesTheFileAlong)
{
    TestFolder folder;
    FileViewModel view;
    ASSERT_TRUE(view.Open(folder.Write("ten.bin", TenBytes)));
    FileViewModel moved = std::move(view);
    EXPECT_TRUE(moved.IsOpen());
    EXPECT_EQ(moved.Read(9, 1).bytes, (std::vector<std::uint8_t>{9}));
    EXPECT_FALSE(view.IsOpen());
}

} // namespace
} // namespace tlm
