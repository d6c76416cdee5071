#include "TestFolder.h"

#include "document/ByteSearch.h"
#include "document/EditableDocument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace tlm {
namespace {

using Bytes = std::vector<std::uint8_t>;
constexpr std::uint64_t Block = SearchBlockSize;

// A document held in memory that counts its reads.
class MemoryDocument final : public IReadOnlyDocument {
public:
    explicit MemoryDocument(Bytes content, bool open = true)
        : content(std::move(content))
        , open(open)
    {
    }

    bool IsOpen() const override { return open; }
    std::uint64_t GetSize() const override { return open ? content.size() : 0; }
    std::u16string GetPath() const override { return u"memory"; }
    ByteBlock Read(std::uint64_t offset, std::uint64_t count) const override
    {
        ++reads;
        ByteBlock block;
        block.offset = offset;
        if (offset < content.size()) {
            const std::uint64_t end = std::min<std::uint64_t>(content.size(), offset + count);
            block.bytes.assign(content.begin() + static_cast<std::ptrdiff_t>(offset),
                content.begin() + static_cast<std::ptrdiff_t>(end));
        }
        return block;
    }

    Bytes content;
    bool open = true;
    mutable int reads = 0;
};

std::optional<std::uint64_t> NaiveForward(const Bytes& data, const Bytes& pattern, std::uint64_t start)
{
    if (pattern.empty() || pattern.size() > data.size()) {
        return std::nullopt;
    }
    for (std::uint64_t i = start; i + pattern.size() <= data.size(); ++i) {
        if (std::equal(pattern.begin(), pattern.end(), data.begin() + static_cast<std::ptrdiff_t>(i))) {
            return i;
        }
    }
    return std::nullopt;
}

std::optional<std::uint64_t> NaiveBackward(const Bytes& data, const Bytes& pattern, std::uint64_t start)
{
    if (pattern.empty() || pattern.size() > data.size()) {
        return std::nullopt;
    }
    for (std::uint64_t i = std::min<std::uint64_t>(start, data.size() - pattern.size()) + 1; i-- > 0;) {
        if (std::equal(pattern.begin(), pattern.end(), data.begin() + static_cast<std::ptrdiff_t>(i))) {
            return i;
        }
    }
    return std::nullopt;
}

std::optional<std::uint64_t> OffsetOf(const SearchResult& result)
{
    EXPECT_EQ(result.hasOffset, result.status == SearchStatus::Found);
    if (result.status != SearchStatus::Found) {
        return std::nullopt;
    }
    return result.offset;
}

void Plant(Bytes& data, const Bytes& pattern, std::uint64_t at)
{
    std::copy(pattern.begin(), pattern.end(), data.begin() + static_cast<std::ptrdiff_t>(at));
}

struct ProgressLog {
    std::vector<std::pair<std::uint64_t, std::uint64_t>> calls;
    ProgressCallback Callback()
    {
        return [this](std::uint64_t done, std::uint64_t total) { calls.emplace_back(done, total); };
    }
};

TEST(ByteSearch, StatusValuesAndBlockSize)
{
    EXPECT_EQ(static_cast<std::uint32_t>(SearchStatus::Found), 0u);
    EXPECT_EQ(static_cast<std::uint32_t>(SearchStatus::NotFound), 1u);
    EXPECT_EQ(static_cast<std::uint32_t>(SearchStatus::Cancelled), 2u);
    EXPECT_EQ(SearchBlockSize, 1048576u);
}

TEST(ByteSearch, AMatchAcrossTwoBlocksIsFoundInBothDirections)
{
    Bytes data(3 * Block, 0);
    const Bytes pattern = {1, 2, 3, 4, 5, 6};
    Plant(data, pattern, Block - 3);
    MemoryDocument document(data);
    EXPECT_EQ(OffsetOf(SearchForward(&document, pattern, 0)), Block - 3);
    EXPECT_EQ(OffsetOf(SearchBackward(&document, pattern, data.size())), Block - 3);
    // Also across the seam of the backward blocks, which are counted from `start`.
    const std::uint64_t start = 2 * Block + 100;
    Bytes second(3 * Block, 0);
    Plant(second, pattern, start + 1 - Block - 2);
    MemoryDocument other(second);
    EXPECT_EQ(OffsetOf(SearchBackward(&other, pattern, start)), start + 1 - Block - 2);
    EXPECT_EQ(OffsetOf(SearchForward(&other, pattern, 5)), start + 1 - Block - 2);
}

TEST(ByteSearch, AForwardSearchNeverReturnsAMatchThatBeginsBeforeStart)
{
    Bytes data(2 * Block + 10, 0);
    const Bytes pattern = {7, 7, 7, 7};
    // A match straddling the seam begins before `start`, though the carry reaches back over it.
    Plant(data, pattern, Block - 2);
    Plant(data, pattern, Block + 500);
    MemoryDocument document(data);
    EXPECT_EQ(OffsetOf(SearchForward(&document, pattern, Block - 1)), Block + 500);
    EXPECT_EQ(OffsetOf(SearchForward(&document, pattern, Block - 2)), Block - 2);
    EXPECT_EQ(OffsetOf(SearchForward(&document, pattern, Block + 501)), std::nullopt);
}

TEST(ByteSearch, APatternAsLongAsTheFileMatchesOnlyAtZero)
{
    const Bytes data = {4, 5, 6, 7};
    MemoryDocument document(data);
    EXPECT_EQ(OffsetOf(SearchForward(&document, data, 0)), 0u);
    EXPECT_EQ(OffsetOf(SearchForward(&document, data, 1)), std::nullopt);
    EXPECT_EQ(OffsetOf(SearchBackward(&document, data, 3)), 0u);
    EXPECT_EQ(OffsetOf(SearchBackward(&document, data, 0)), 0u);
    EXPECT_EQ(OffsetOf(SearchForward(&document, {4, 5, 6, 7, 8}, 0)), std::nullopt);
    EXPECT_EQ(OffsetOf(SearchBackward(&document, {4, 5, 6, 7, 8}, 10)), std::nullopt);
}

TEST(ByteSearch, BackwardStartPastTheEndIsClampedNotRefused)
{
    const Bytes data = {1, 2, 3, 1, 2, 3};
    MemoryDocument document(data);
    EXPECT_EQ(OffsetOf(SearchBackward(&document, {1, 2, 3}, 100)), 3u);
    EXPECT_EQ(OffsetOf(SearchBackward(&document, {1, 2, 3}, UINT64_MAX)), 3u);
    EXPECT_EQ(OffsetOf(SearchBackward(&document, {1, 2, 3}, 2)), 0u);
    EXPECT_EQ(OffsetOf(SearchForward(&document, {1, 2, 3}, 6)), std::nullopt);
}

TEST(ByteSearch, AnEmptyPatternGivesNotFoundWithoutAnyProgressCall)
{
    MemoryDocument document({1, 2, 3});
    ProgressLog log;
    EXPECT_EQ(SearchForward(&document, {}, 0, {}, log.Callback()).status, SearchStatus::NotFound);
    EXPECT_EQ(SearchBackward(&document, {}, 2, {}, log.Callback()).status, SearchStatus::NotFound);
    EXPECT_TRUE(log.calls.empty());
    EXPECT_EQ(document.reads, 0);
}

TEST(ByteSearch, NoDocumentOrAClosedOneGivesNotFound)
{
    ProgressLog log;
    EXPECT_EQ(SearchForward(nullptr, {1}, 0, {}, log.Callback()).status, SearchStatus::NotFound);
    EXPECT_EQ(SearchBackward(nullptr, {1}, 0, {}, log.Callback()).status, SearchStatus::NotFound);
    MemoryDocument closed({1, 2, 3}, false);
    EXPECT_EQ(SearchForward(&closed, {1}, 0, {}, log.Callback()).status, SearchStatus::NotFound);
    EXPECT_EQ(SearchBackward(&closed, {1}, 0, {}, log.Callback()).status, SearchStatus::NotFound);
    EXPECT_TRUE(log.calls.empty());
}

TEST(ByteSearch, ForwardFromTheEndGivesNotFoundWithoutProgress)
{
    MemoryDocument document({1, 2, 3});
    ProgressLog log;
    EXPECT_EQ(SearchForward(&document, {3}, 3, {}, log.Callback()).status, SearchStatus::NotFound);
    EXPECT_TRUE(log.calls.empty());
}

TEST(ByteSearch, ForwardReportsEachBlockBeforeItsReadAndTheEndWhenNothingIsFound)
{
    MemoryDocument document(Bytes(2 * Block + 5, 0));
    ProgressLog log;
    EXPECT_EQ(SearchForward(&document, {1}, 3, {}, log.Callback()).status, SearchStatus::NotFound);
    const std::uint64_t size = 2 * Block + 5;
    EXPECT_EQ(log.calls, (std::vector<std::pair<std::uint64_t, std::uint64_t>>{
                             {3, size}, {3 + Block, size}, {3 + 2 * Block, size}, {size, size}}));
}

TEST(ByteSearch, BackwardReportsEachBlockBeforeItsReadAndTheEndWhenNothingIsFound)
{
    const std::uint64_t size = 2 * Block + 5;
    MemoryDocument document(Bytes(size, 0));
    ProgressLog log;
    EXPECT_EQ(SearchBackward(&document, {1, 1}, size, {}, log.Callback()).status, SearchStatus::NotFound);
    const std::uint64_t last = size - 2;
    EXPECT_EQ(log.calls, (std::vector<std::pair<std::uint64_t, std::uint64_t>>{{size - last - 1, size},
                             {size - (last - Block) - 1, size}, {size - (last - 2 * Block) - 1, size}, {size, size}}));
}

TEST(ByteSearch, AfterAHitNoFinalProgressIsGiven)
{
    Bytes data(Block + 10, 0);
    data[Block + 3] = 9;
    MemoryDocument document(data);
    ProgressLog forward;
    EXPECT_EQ(OffsetOf(SearchForward(&document, {9}, 0, {}, forward.Callback())), Block + 3);
    EXPECT_EQ(forward.calls.size(), 2u);
    EXPECT_EQ(forward.calls.back().first, Block);
    ProgressLog backward;
    EXPECT_EQ(OffsetOf(SearchBackward(&document, {9}, Block + 9, {}, backward.Callback())), Block + 3);
    EXPECT_EQ(backward.calls.size(), 1u);
}

TEST(ByteSearch, CancelTakesEffectAfterTheBlockInHand)
{
    const Bytes pattern = {5, 5};
    Bytes data(6 * Block, 0);
    Plant(data, pattern, 5 * Block + 7);
    MemoryDocument document(data);
    for (int allowed = 0; allowed < 4; ++allowed) {
        int asked = 0;
        const KeepGoingCallback keepGoing = [&] { return asked++ < allowed; };
        document.reads = 0;
        EXPECT_EQ(SearchForward(&document, pattern, 0, keepGoing).status, SearchStatus::Cancelled);
        EXPECT_EQ(document.reads, allowed);
        EXPECT_EQ(asked, allowed + 1);
        asked = 0;
        document.reads = 0;
        EXPECT_EQ(SearchBackward(&document, pattern, 5 * Block, keepGoing).status, SearchStatus::Cancelled);
        EXPECT_EQ(document.reads, allowed);
    }
    int asked = 0;
    EXPECT_EQ(OffsetOf(SearchForward(&document, pattern, 0, [&] { return ++asked > 0; })), 5 * Block + 7);
    EXPECT_EQ(asked, 6);
}

TEST(ByteSearch, ACancelledResultHasNoOffset)
{
    MemoryDocument document(Bytes(10, 1));
    const SearchResult result = SearchForward(&document, {1}, 0, [] { return false; });
    EXPECT_EQ(result.status, SearchStatus::Cancelled);
    EXPECT_FALSE(result.hasOffset);
}

TEST(ByteSearch, BackwardReturnsTheLastOfOverlappingMatches)
{
    MemoryDocument document(Bytes(20, 0xAA));
    EXPECT_EQ(OffsetOf(SearchBackward(&document, {0xAA, 0xAA, 0xAA}, 100)), 17u);
    EXPECT_EQ(OffsetOf(SearchBackward(&document, {0xAA, 0xAA, 0xAA}, 9)), 9u);
    EXPECT_EQ(OffsetOf(SearchForward(&document, {0xAA, 0xAA, 0xAA}, 9)), 9u);
}

TEST(ByteSearch, MatchesTheNaiveSearchInBothDirectionsOnRandomData)
{
    std::mt19937_64 random(99);
    for (int round = 0; round < 12; ++round) {
        // Small alphabets give many partial matches; sizes straddle one and two blocks.
        const std::uint64_t size = round % 3 == 0 ? 1 + random() % 5000 : Block - 50 + random() % (Block + 100);
        Bytes data(size);
        const std::uint64_t alphabet = 2 + random() % 6;
        for (std::uint8_t& byte : data) {
            byte = static_cast<std::uint8_t>(random() % alphabet);
        }
        MemoryDocument document(data);
        for (int query = 0; query < 30; ++query) {
            Bytes pattern(1 + random() % 12);
            for (std::uint8_t& byte : pattern) {
                byte = static_cast<std::uint8_t>(random() % alphabet);
            }
            // Plant the pattern across a seam (forward blocks begin at `start`, backward blocks end at
            // it) or just around the start.
            std::uint64_t start = random() % (size + 2);
            const std::uint64_t across = 1 + random() % pattern.size();
            if (query % 4 == 0 && size > Block + 20 + pattern.size()) {
                start = random() % 16;
                Plant(data, pattern, start + Block - across);
            } else if (query % 4 == 1 && size > Block + 20 + pattern.size()) {
                start = size - pattern.size() - random() % 16;
                Plant(data, pattern, start + 1 - Block - across + pattern.size() - 1);
            } else if (query % 4 == 2 && start + pattern.size() + 2 < size) {
                Plant(data, pattern, start + random() % 3);
            }
            document.content = data;
            SCOPED_TRACE("size " + std::to_string(size) + " start " + std::to_string(start) + " length "
                + std::to_string(pattern.size()));
            ASSERT_EQ(OffsetOf(SearchForward(&document, pattern, start)), start < size ? NaiveForward(data, pattern, start) : std::nullopt);
            ASSERT_EQ(OffsetOf(SearchBackward(&document, pattern, start)), NaiveBackward(data, pattern, start));
        }
    }
}

TEST(ByteSearch, MatchesTheNaiveSearchWhenThePatternIsRareOrAbsent)
{
    std::mt19937_64 random(5);
    Bytes data = test::RandomBytes(2 * Block + 777, 17);
    MemoryDocument document(data);
    for (int query = 0; query < 40; ++query) {
        Bytes pattern = test::RandomBytes(1 + query % 20, 1000 + query);
        const std::uint64_t start = random() % data.size();
        ASSERT_EQ(OffsetOf(SearchForward(&document, pattern, start)), NaiveForward(data, pattern, start));
        ASSERT_EQ(OffsetOf(SearchBackward(&document, pattern, start)), NaiveBackward(data, pattern, start));
    }
}

TEST(ByteSearch, SearchesTheEditedViewOfADocument)
{
    test::TestFolder folder;
    Bytes data(Block + 100, 0x11);
    EditableDocument document;
    ASSERT_TRUE(document.file.Open(folder.Write("searched.bin", data)));
    // The pattern exists only in the edited view, across a run and the block seam.
    ASSERT_TRUE(document.InsertByte(Block - 1, 0x22));
    ASSERT_TRUE(document.InsertByte(Block, 0x33));
    ASSERT_TRUE(document.OverwriteByte(Block + 1, 0x44));
    ASSERT_TRUE(document.DeleteByte(10));
    const Bytes pattern = {0x11, 0x22, 0x33, 0x44};
    EXPECT_EQ(OffsetOf(SearchForward(&document, pattern, 0)), Block - 3);
    EXPECT_EQ(OffsetOf(SearchBackward(&document, pattern, document.GetSize())), Block - 3);
    EXPECT_EQ(OffsetOf(SearchForward(&document.file, pattern, 0)), std::nullopt);
}

} // namespace
} // namespace tlm
