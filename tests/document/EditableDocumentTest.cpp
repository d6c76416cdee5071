#include "TestFolder.h"

#include "document/EditableDocument.h"
#include "document/FileFaults.h"

#include <gtest/gtest.h>

#include <chrono>

namespace tlm {
namespace {

using test::TestFolder;
using Bytes = std::vector<std::uint8_t>;

class EditableDocumentTest : public ::testing::Test {
protected:
    void Open(const Bytes& bytes)
    {
        path = folder.Write("document.bin", bytes);
        document.Close();
        ASSERT_TRUE(document.file.Open(path));
    }

    Bytes All() const { return document.Read(0, document.GetEditedSize() + 10).bytes; }

    TestFolder folder;
    std::u16string path;
    EditableDocument document;
};

TEST_F(EditableDocumentTest, FreshDocumentIsClosedAndRefusesEdits)
{
    EXPECT_FALSE(document.IsOpen());
    EXPECT_EQ(document.GetEditedSize(), 0u);
    EXPECT_FALSE(document.IsModified());
    EXPECT_FALSE(document.OverwriteByte(0, 1));
    EXPECT_FALSE(document.InsertByte(0, 1));
    EXPECT_FALSE(document.DeleteByte(0));
    EXPECT_TRUE(document.Read(0, 4).bytes.empty());
}

TEST_F(EditableDocumentTest, ForwardsOpenStateAndPathToTheFile)
{
    Open({1, 2, 3});
    EXPECT_TRUE(document.IsOpen());
    EXPECT_EQ(document.GetPath(), path);
    EXPECT_EQ(document.GetSize(), 3u);
    EXPECT_EQ(All(), (Bytes{1, 2, 3}));
}

TEST_F(EditableDocumentTest, OverwritingWithTheValueInTheFileRemovesTheEntryAndCanEndModified)
{
    Open({1, 2, 3});
    ASSERT_TRUE(document.OverwriteByte(1, 9));
    EXPECT_TRUE(document.IsModified());
    EXPECT_EQ(document.overwrites.size(), 1u);
    ASSERT_TRUE(document.OverwriteByte(1, 2));
    EXPECT_TRUE(document.overwrites.empty());
    EXPECT_FALSE(document.IsModified());
    ASSERT_TRUE(document.OverwriteByte(0, 1));
    EXPECT_TRUE(document.overwrites.empty());
    EXPECT_FALSE(document.IsModified());
    EXPECT_EQ(All(), (Bytes{1, 2, 3}));
}

TEST_F(EditableDocumentTest, InsertingAtTheEditedSizeOfAnEmptyFileAnchorsARunAtZero)
{
    Open({});
    ASSERT_TRUE(document.InsertByte(0, 0xAB));
    EXPECT_EQ(document.GetEditedSize(), 1u);
    ASSERT_EQ(document.insertedRuns.RunCount(), 1u);
    EXPECT_NE(document.insertedRuns.Find(0), nullptr);
    EXPECT_EQ(All(), (Bytes{0xAB}));
    EXPECT_FALSE(document.InsertByte(2, 1));
}

TEST_F(EditableDocumentTest, DeletingTheLastByteOfARunRemovesTheRunAndTheViewClosesUp)
{
    Open({1, 2, 3});
    ASSERT_TRUE(document.InsertByte(1, 0xAA));
    EXPECT_EQ(All(), (Bytes{1, 0xAA, 2, 3}));
    ASSERT_TRUE(document.DeleteByte(1));
    EXPECT_TRUE(document.insertedRuns.Empty());
    EXPECT_EQ(All(), (Bytes{1, 2, 3}));
    EXPECT_FALSE(document.IsModified());
}

TEST_F(EditableDocumentTest, DeletingEveryByteLeavesAnOpenDocumentOfSizeZero)
{
    Open({1, 2, 3, 4});
    for (int i = 0; i < 4; ++i) {
        ASSERT_TRUE(document.DeleteByte(0));
    }
    EXPECT_TRUE(document.IsOpen());
    EXPECT_EQ(document.GetEditedSize(), 0u);
    EXPECT_TRUE(document.Read(0, 4).bytes.empty());
    EXPECT_FALSE(document.DeleteByte(0));
    EXPECT_TRUE(document.IsModified());
}

TEST_F(EditableDocumentTest, ReadingAcrossARunAndADeletedByteGivesTheBytesInViewOrder)
{
    Open({10, 11, 12, 13, 14});
    ASSERT_TRUE(document.InsertByte(1, 0xA0));
    ASSERT_TRUE(document.InsertByte(2, 0xA1));
    ASSERT_TRUE(document.DeleteByte(4));
    ASSERT_TRUE(document.OverwriteByte(4, 0xCC));
    EXPECT_EQ(All(), (Bytes{10, 0xA0, 0xA1, 11, 0xCC, 14}));
    EXPECT_EQ(document.Read(2, 3).bytes, (Bytes{0xA1, 11, 0xCC}));
}

TEST_F(EditableDocumentTest, TypingBeforeAFileByteExtendsItsRunInOrder)
{
    Open({1, 2});
    ASSERT_TRUE(document.InsertByte(1, 0xA));
    ASSERT_TRUE(document.InsertByte(2, 0xB));
    ASSERT_TRUE(document.InsertByte(3, 0xC));
    EXPECT_EQ(All(), (Bytes{1, 0xA, 0xB, 0xC, 2}));
    EXPECT_EQ(document.insertedRuns.RunCount(), 1u);
    EXPECT_EQ(document.insertedRuns.Find(1)->bytes.Length(), 3u);
}

TEST_F(EditableDocumentTest, ARunStandsBeforeItsAnchorByteAlsoWhenThatByteIsDeleted)
{
    Open({1, 2, 3});
    ASSERT_TRUE(document.InsertByte(1, 0xA));
    ASSERT_TRUE(document.DeleteByte(2));
    EXPECT_EQ(All(), (Bytes{1, 0xA, 3}));
    const ResolvedPosition position = document.ResolvePosition(1);
    EXPECT_TRUE(position.valid);
    EXPECT_TRUE(position.inRun);
    EXPECT_EQ(position.offset, 1u);
    EXPECT_EQ(position.indexInRun, 0u);
    EXPECT_TRUE(document.deletedOffsets.Contains(1));
}

TEST_F(EditableDocumentTest, OverwriteInsideARunChangesTheRunNotTheOverwrites)
{
    Open({1, 2});
    ASSERT_TRUE(document.InsertByte(2, 0xA));
    ASSERT_TRUE(document.OverwriteByte(2, 0xB));
    EXPECT_TRUE(document.overwrites.empty());
    EXPECT_EQ(All(), (Bytes{1, 2, 0xB}));
}

TEST_F(EditableDocumentTest, DeletingAnOverwrittenByteErasesTheOverwrite)
{
    Open({1, 2, 3});
    ASSERT_TRUE(document.OverwriteByte(1, 9));
    ASSERT_TRUE(document.DeleteByte(1));
    EXPECT_TRUE(document.overwrites.empty());
    EXPECT_TRUE(document.deletedOffsets.Contains(1));
    EXPECT_EQ(All(), (Bytes{1, 3}));
}

TEST_F(EditableDocumentTest, EditsPastTheEndAreRefused)
{
    Open({1, 2, 3});
    EXPECT_FALSE(document.OverwriteByte(3, 0));
    EXPECT_FALSE(document.DeleteByte(3));
    EXPECT_FALSE(document.InsertByte(4, 0));
    EXPECT_TRUE(document.InsertByte(3, 0));
    EXPECT_TRUE(document.IsModified());
}

TEST_F(EditableDocumentTest, ResolvePositionPastTheLastByteIsNotValid)
{
    Open({1, 2, 3});
    EXPECT_FALSE(document.ResolvePosition(3).valid);
    const ResolvedPosition position = document.ResolvePosition(2);
    EXPECT_TRUE(position.valid);
    EXPECT_FALSE(position.inRun);
    EXPECT_EQ(position.offset, 2u);
}

TEST_F(EditableDocumentTest, OverwriteOfAByteTheFileNoLongerHasFails)
{
    Open({1, 2, 3, 4});
    std::filesystem::resize_file(folder.File("document.bin"), 2);
    EXPECT_FALSE(document.OverwriteByte(3, 0));
    EXPECT_TRUE(document.OverwriteByte(1, 0));
    EXPECT_EQ(document.ReadByteAt(3), std::nullopt);
}

TEST_F(EditableDocumentTest, ReadStopsAtTheFirstByteThatCannotBeRead)
{
    Open({1, 2, 3, 4, 5, 6});
    ASSERT_TRUE(document.InsertByte(1, 0xA));
    std::filesystem::resize_file(folder.File("document.bin"), 3);
    EXPECT_EQ(document.Read(0, 10).bytes, (Bytes{1, 0xA, 2, 3}));
    EXPECT_EQ(document.GetEditedSize(), 7u);
}

TEST_F(EditableDocumentTest, CloseEmptiesTheEditsTheErrorAndTheFile)
{
    Open({1, 2, 3});
    ASSERT_TRUE(document.InsertByte(0, 1));
    ASSERT_TRUE(document.DeleteByte(3));
    ASSERT_TRUE(document.OverwriteByte(1, 7));
    document.lastError = u"old";
    document.Close();
    EXPECT_FALSE(document.IsOpen());
    EXPECT_FALSE(document.IsModified());
    EXPECT_TRUE(document.lastError.empty());
    EXPECT_TRUE(document.GetPath().empty());
    EXPECT_EQ(document.GetEditedSize(), 0u);
}

TEST_F(EditableDocumentTest, FastPathPatchesOnlyOverwritesInsideTheBlock)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    ASSERT_TRUE(document.OverwriteByte(1, 0xF1));
    ASSERT_TRUE(document.OverwriteByte(5, 0xF5));
    EXPECT_EQ(document.Read(2, 4).bytes, (Bytes{2, 3, 4, 0xF5}));
    EXPECT_EQ(document.Read(6, 10).bytes, (Bytes{6, 7}));
}

TEST_F(EditableDocumentTest, CountDeletedInAndSkipDeletedFollowTheDeletions)
{
    Open(Bytes(10, 0));
    for (const std::uint64_t offset : {7u, 4u, 2u}) {
        ASSERT_TRUE(document.DeleteByte(offset));
    }
    // Deleting from the highest offset down hides file offsets 7, 4 and 2.
    EXPECT_EQ(document.CountDeletedIn(0, 10), 3u);
    EXPECT_EQ(document.CountDeletedIn(3, 9), 2u);
    EXPECT_EQ(document.CountDeletedIn(5, 7), 0u);
    EXPECT_EQ(document.CountDeletedIn(5, 5), 0u);
    EXPECT_EQ(document.SkipDeleted(0, 10, 2), 3u);
    EXPECT_EQ(document.SkipDeleted(0, 10, 4), 6u);
    EXPECT_EQ(document.SkipDeleted(0, 10, 7), 10u);
    EXPECT_EQ(document.SkipDeleted(6, 9, 5), 9u);
}

// The hex view deletes a selection one byte at a time from its end. The first, linear design took
// minutes for a mebibyte; the bound here is loose enough for slow builds and busy machines and still
// fails on anything quadratic.
double SecondsToDeleteSelection(EditableDocument& document, std::uint64_t first, std::uint64_t count)
{
    const auto start = std::chrono::steady_clock::now();
    for (std::uint64_t i = count; i-- > 0;) {
        EXPECT_TRUE(document.DeleteByte(first + i));
        (void)document.GetEditedSize();
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST(EditableDocumentScale, DeletingAMebibyteOfFileBytesByteByByteIsFast)
{
    TestFolder folder;
    EditableDocument document;
    ASSERT_TRUE(document.file.Open(folder.Write("big.bin", Bytes(3 * 1048576, 0x33))));
    EXPECT_LT(SecondsToDeleteSelection(document, 1048576 + 7, 1048576), 10.0);
    EXPECT_EQ(document.GetEditedSize(), 2u * 1048576);
    EXPECT_EQ(document.deletedOffsets.IntervalCount(), 1u);
}

TEST(EditableDocumentScale, DeletingAMebibyteInsideAnInsertedRunByteByByteIsFast)
{
    TestFolder folder;
    EditableDocument document;
    ASSERT_TRUE(document.file.Open(folder.Write("small.bin", Bytes(100, 0x33))));
    for (std::uint64_t i = 0; i < 3 * 1048576; ++i) {
        ASSERT_TRUE(document.InsertByte(50 + i, static_cast<std::uint8_t>(i)));
    }
    EXPECT_LT(SecondsToDeleteSelection(document, 50 + 1048576, 1048576), 10.0);
    EXPECT_EQ(document.GetEditedSize(), 2u * 1048576 + 100);
    EXPECT_EQ(document.Read(50 + 1048576 - 1, 2).bytes,
        (Bytes{static_cast<std::uint8_t>(1048576 - 1), static_cast<std::uint8_t>(2 * 1048576)}));
}

} // namespace
} // namespace tlm
