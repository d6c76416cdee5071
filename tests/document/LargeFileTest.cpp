// Files above 4 GiB, made sparse by setting the end of an empty file, read and edited at offsets past
// 2^32 where a 32-bit offset would wrap.
#include "TestFolder.h"

#include "document/ByteSearch.h"
#include "document/EditableDocument.h"
#include "document/FileFaults.h"
#include "document/PlatformFile.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

using test::TestFolder;
using Bytes = std::vector<std::uint8_t>;

constexpr std::uint64_t FourGiB = std::uint64_t{1} << 32;
constexpr std::uint64_t LargeSize = 5 * (std::uint64_t{1} << 30) + 123;

class LargeFileTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        path = test::PathText(folder.File("large.bin"));
        const FileHandle handle = CreateNewFile(path);
        ASSERT_TRUE(IsValidFileHandle(handle));
        ASSERT_TRUE(SetFileEnd(handle, LargeSize));
        Put(handle, 100, {0xA0, 0xA1});
        Put(handle, FourGiB - 2, {0xB0, 0xB1, 0xB2, 0xB3});
        Put(handle, FourGiB + 4096, {0xC0, 0xC1, 0xC2});
        Put(handle, LargeSize - 3, {0xD0, 0xD1, 0xD2});
        CloseFile(handle);
    }

    static void Put(FileHandle handle, std::uint64_t offset, const Bytes& bytes)
    {
        ASSERT_EQ(WriteFileAt(handle, offset, bytes.data(), static_cast<std::uint32_t>(bytes.size())), bytes.size());
    }

    TestFolder folder;
    std::u16string path;
};

TEST_F(LargeFileTest, ReadsPastFourGibibytesAreCorrect)
{
    FileViewModel view;
    ASSERT_TRUE(view.Open(path));
    EXPECT_EQ(view.GetSize(), LargeSize);
    EXPECT_EQ(view.Read(FourGiB - 2, 4).bytes, (Bytes{0xB0, 0xB1, 0xB2, 0xB3}));
    EXPECT_EQ(view.Read(FourGiB + 4095, 5).bytes, (Bytes{0, 0xC0, 0xC1, 0xC2, 0}));
    EXPECT_EQ(view.Read(LargeSize - 3, 10).bytes, (Bytes{0xD0, 0xD1, 0xD2}));
    EXPECT_EQ(view.Read(100, 2).bytes, (Bytes{0xA0, 0xA1}));
    // One read takes a 32-bit count: of a request of 4 GiB and two bytes, two bytes come back.
    EXPECT_EQ(view.Read(100, FourGiB + 2).bytes, (Bytes{0xA0, 0xA1}));
}

TEST_F(LargeFileTest, OneOverwrittenBytePastFourGibibytesIsSavedInPlace)
{
    EditableDocument document;
    ASSERT_TRUE(document.file.Open(path));
    ASSERT_TRUE(document.OverwriteByte(FourGiB + 4097, 0xEE));
    EXPECT_EQ(document.Read(FourGiB + 4096, 3).bytes, (Bytes{0xC0, 0xEE, 0xC2}));
    EXPECT_FALSE(document.SavesViaTemporaryFile());
    const std::uint64_t created = FileOperationCalls(FileOperation::CreateNew);
    ASSERT_TRUE(document.Save());
    EXPECT_EQ(FileOperationCalls(FileOperation::CreateNew), created);
    EXPECT_FALSE(document.IsModified());
    document.Close();
    FileViewModel view;
    ASSERT_TRUE(view.Open(path));
    EXPECT_EQ(view.GetSize(), LargeSize);
    EXPECT_EQ(view.Read(FourGiB + 4096, 3).bytes, (Bytes{0xC0, 0xEE, 0xC2}));
    // The same byte four gibibytes lower was not touched.
    EXPECT_EQ(view.Read(4097, 1).bytes, (Bytes{0}));
}

TEST_F(LargeFileTest, EditsNearTheStartShiftReadsPastFourGibibytes)
{
    EditableDocument document;
    ASSERT_TRUE(document.file.Open(path));
    ASSERT_TRUE(document.InsertByte(0, 0x11));
    ASSERT_TRUE(document.InsertByte(1, 0x12));
    ASSERT_TRUE(document.DeleteByte(102));
    EXPECT_EQ(document.GetEditedSize(), LargeSize + 1);
    EXPECT_EQ(document.Read(FourGiB - 1, 4).bytes, (Bytes{0xB0, 0xB1, 0xB2, 0xB3}));
    EXPECT_EQ(document.Read(FourGiB + 4097, 3).bytes, (Bytes{0xC0, 0xC1, 0xC2}));
    EXPECT_EQ(document.Read(LargeSize - 2, 10).bytes, (Bytes{0xD0, 0xD1, 0xD2}));
    // File byte 100 is gone: view 101 is file byte 99, view 102 file byte 101.
    EXPECT_EQ(document.Read(101, 2).bytes, (Bytes{0, 0xA1}));
    EXPECT_TRUE(document.SavesViaTemporaryFile());
}

TEST_F(LargeFileTest, SearchFindsAMatchAcrossFourGibibytes)
{
    EditableDocument document;
    ASSERT_TRUE(document.file.Open(path));
    const Bytes pattern = {0xB1, 0xB2, 0xB3};
    const SearchResult forward = SearchForward(&document, pattern, FourGiB - 1024 * 1024 - 7);
    EXPECT_EQ(forward.status, SearchStatus::Found);
    EXPECT_EQ(forward.offset, FourGiB - 1);
    const SearchResult backward = SearchBackward(&document, pattern, FourGiB + 1024 * 1024 + 9);
    EXPECT_EQ(backward.status, SearchStatus::Found);
    EXPECT_EQ(backward.offset, FourGiB - 1);
}

TEST_F(LargeFileTest, ACutTailWithAnAppendedByteOfALargeFileIsSavedInPlaceAsShown)
{
    EditableDocument document;
    ASSERT_TRUE(document.file.Open(path));
    ASSERT_TRUE(document.DeleteByte(LargeSize - 1));
    ASSERT_TRUE(document.DeleteByte(LargeSize - 2));
    ASSERT_TRUE(document.InsertByte(LargeSize - 2, 0x77));
    ASSERT_EQ(document.Read(LargeSize - 3, 3).bytes, (Bytes{0xD0, 0x77}));
    EXPECT_FALSE(document.SavesViaTemporaryFile());
    const std::uint64_t created = FileOperationCalls(FileOperation::CreateNew);
    ASSERT_TRUE(document.Save());
    EXPECT_EQ(FileOperationCalls(FileOperation::CreateNew), created);
    document.Close();
    FileViewModel view;
    ASSERT_TRUE(view.Open(path));
    EXPECT_EQ(view.GetSize(), LargeSize - 1);
    EXPECT_EQ(view.Read(LargeSize - 3, 3).bytes, (Bytes{0xD0, 0x77}));
}

} // namespace
} // namespace tlm
