// The order-statistic containers behind the overlay, checked against plain standard containers at
// sizes that fill many blocks.
#include "document/DeletedOffsets.h"
#include "document/InsertedRuns.h"
#include "document/RunBytes.h"

#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <random>
#include <set>
#include <vector>

namespace tlm {
namespace {

std::uint64_t BruteCountBelow(const std::set<std::uint64_t>& set, std::uint64_t offset)
{
    return static_cast<std::uint64_t>(std::distance(set.begin(), set.lower_bound(offset)));
}

std::uint64_t BruteNthSurvivor(const std::set<std::uint64_t>& set, std::uint64_t first, std::uint64_t n)
{
    for (std::uint64_t p = first;; ++p) {
        if (set.count(p) == 0) {
            if (n == 0) {
                return p;
            }
            --n;
        }
    }
}

TEST(DeletedOffsets, AgreesWithAPlainSetAcrossManyBlocks)
{
    std::mt19937_64 random(7);
    DeletedOffsets deleted;
    std::set<std::uint64_t> plain;
    for (int i = 0; i < 40000; ++i) {
        // Clustered offsets make intervals merge as well as stand apart.
        const std::uint64_t offset = random() % 4 == 0 ? random() % 200 : random() % 120000;
        EXPECT_EQ(deleted.Insert(offset), plain.insert(offset).second);
        if (i % 997 == 0) {
            ASSERT_EQ(deleted.Count(), plain.size());
            for (int q = 0; q < 50; ++q) {
                const std::uint64_t at = random() % 130000;
                ASSERT_EQ(deleted.Contains(at), plain.count(at) == 1) << at;
                ASSERT_EQ(deleted.CountBelow(at), BruteCountBelow(plain, at)) << at;
                const std::uint64_t n = random() % 50;
                ASSERT_EQ(deleted.NthSurvivorFrom(at, n), BruteNthSurvivor(plain, at, n)) << at << " " << n;
                const auto interval = deleted.IntervalEndingAfter(at);
                const auto next = plain.lower_bound(at);
                ASSERT_EQ(interval.has_value(), next != plain.end());
                if (interval) {
                    ASSERT_EQ(interval->start <= at, *next == at);
                    ASSERT_TRUE(plain.count(interval->start) == 1 && plain.count(interval->end - 1) == 1);
                    ASSERT_TRUE(plain.count(interval->end) == 0);
                }
            }
        }
    }
    EXPECT_GT(deleted.IntervalCount(), 1000u);
    EXPECT_EQ(deleted.ToSet(), plain);
}

TEST(DeletedOffsets, TailIsExactlyTheLastOffsetsBeforeTheFileSize)
{
    DeletedOffsets deleted;
    EXPECT_FALSE(deleted.IsTailOf(10));
    deleted.Insert(9);
    deleted.Insert(8);
    EXPECT_TRUE(deleted.IsTailOf(10));
    EXPECT_FALSE(deleted.IsTailOf(11));
    deleted.Insert(5);
    EXPECT_FALSE(deleted.IsTailOf(10));
    deleted.Insert(6);
    deleted.Insert(7);
    EXPECT_TRUE(deleted.IsTailOf(10));
    EXPECT_EQ(deleted.IntervalCount(), 1u);
}

TEST(RunBytes, AgreesWithAPlainVectorAcrossManyChunks)
{
    std::mt19937_64 random(11);
    RunBytes run;
    std::vector<std::uint8_t> plain;
    // Long enough for hundreds of chunks, so the chunk list spans several blocks.
    for (int i = 0; i < 700000; ++i) {
        run.Insert(plain.size(), static_cast<std::uint8_t>(i));
        plain.push_back(static_cast<std::uint8_t>(i));
    }
    for (int i = 0; i < 200000; ++i) {
        const std::uint64_t roll = random() % 10;
        if (roll < 4) {
            const std::uint64_t at = random() % (plain.size() + 1);
            const auto value = static_cast<std::uint8_t>(random());
            run.Insert(at, value);
            plain.insert(plain.begin() + static_cast<std::ptrdiff_t>(at), value);
        } else if (roll < 8 && !plain.empty()) {
            const std::uint64_t at = random() % plain.size();
            run.Erase(at);
            plain.erase(plain.begin() + static_cast<std::ptrdiff_t>(at));
        } else if (!plain.empty()) {
            const std::uint64_t at = random() % plain.size();
            const auto value = static_cast<std::uint8_t>(random());
            run.Set(at, value);
            plain[at] = value;
        }
        if (i % 9973 == 0) {
            ASSERT_EQ(run.Length(), plain.size());
            for (int q = 0; q < 20; ++q) {
                const std::uint64_t at = random() % plain.size();
                ASSERT_EQ(run.At(at), plain[at]);
                const std::uint64_t count = std::min<std::uint64_t>(random() % 20000, plain.size() - at);
                std::vector<std::uint8_t> copy;
                run.CopyTo(at, count, copy);
                ASSERT_TRUE(std::equal(copy.begin(), copy.end(), plain.begin() + static_cast<std::ptrdiff_t>(at)));
                ASSERT_EQ(copy.size(), count);
            }
        }
    }
    EXPECT_TRUE(run.ToVector() == plain);
    // Erasing from the top down empties the run.
    while (!plain.empty()) {
        run.Erase(plain.size() - 1);
        plain.pop_back();
    }
    EXPECT_TRUE(run.Empty());
    EXPECT_EQ(run.Length(), 0u);
}

TEST(InsertedRuns, AgreesWithAPlainMapAcrossManyRuns)
{
    std::mt19937_64 random(13);
    InsertedRuns runs;
    std::map<std::uint64_t, std::vector<std::uint8_t>> plain;
    for (int i = 0; i < 60000; ++i) {
        const std::uint64_t anchor = random() % 5000;
        const auto value = static_cast<std::uint8_t>(random());
        const auto found = plain.find(anchor);
        if (found == plain.end() || random() % 3 != 0) {
            std::vector<std::uint8_t>& bytes = plain[anchor];
            const std::uint64_t index = random() % (bytes.size() + 1);
            runs.InsertByte(anchor, index, value);
            bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(index), value);
        } else {
            const std::uint64_t index = random() % (found->second.size() + 1);
            const bool inside = index < found->second.size();
            ASSERT_EQ(runs.EraseByte(anchor, index), inside);
            if (inside) {
                found->second.erase(found->second.begin() + static_cast<std::ptrdiff_t>(index));
                if (found->second.empty()) {
                    plain.erase(found);
                }
            }
        }
        if (i % 4999 == 0) {
            ASSERT_EQ(runs.ToMap(), plain);
            std::uint64_t total = 0;
            for (const auto& [key, bytes] : plain) {
                total += bytes.size();
            }
            ASSERT_EQ(runs.TotalLength(), total);
            ASSERT_EQ(runs.RunCount(), plain.size());
            const std::uint64_t probe = random() % 5100;
            const auto lower = runs.LowerBound(probe);
            const auto expected = plain.lower_bound(probe);
            ASSERT_EQ(runs.IsEnd(lower), expected == plain.end());
            if (expected != plain.end()) {
                ASSERT_EQ(runs.At(lower).anchor, expected->first);
            }
        }
    }
    EXPECT_GT(runs.RunCount(), 1000u);
    EXPECT_FALSE(runs.SetByte(6000, 0, 1));
    EXPECT_FALSE(runs.EraseByte(6000, 0));
}

} // namespace
} // namespace tlm
