#include "document/HorspoolSearcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace tlm {
namespace {

std::size_t NaiveFindFirst(const std::vector<std::uint8_t>& data, std::size_t length, std::size_t from,
    const std::vector<std::uint8_t>& pattern)
{
    for (std::size_t i = from; i + pattern.size() <= length; ++i) {
        if (std::equal(pattern.begin(), pattern.end(), data.begin() + static_cast<std::ptrdiff_t>(i))) {
            return i;
        }
    }
    return HorspoolSearcher::NotFound;
}

TEST(HorspoolSearcher, FindsTheFirstMatchAtOrAfterFromForEveryLengthAndStart)
{
    std::mt19937 random(3);
    // Lengths around the 32-window step, where the fast scan hands over to the byte-wise one.
    for (std::size_t length = 0; length <= 140; ++length) {
        for (int round = 0; round < 6; ++round) {
            const std::uint32_t alphabet = 2 + round % 3;
            std::vector<std::uint8_t> data(length);
            for (std::uint8_t& byte : data) {
                byte = static_cast<std::uint8_t>(random() % alphabet);
            }
            std::vector<std::uint8_t> pattern(1 + random() % 9);
            for (std::uint8_t& byte : pattern) {
                byte = static_cast<std::uint8_t>(random() % alphabet);
            }
            const HorspoolSearcher searcher(pattern);
            for (std::size_t from = 0; from <= length + 1; ++from) {
                ASSERT_EQ(searcher.FindFirst(data.data(), length, from), NaiveFindFirst(data, length, from, pattern))
                    << "length " << length << " from " << from << " pattern length " << pattern.size();
            }
        }
    }
}

TEST(HorspoolSearcher, StopsAtTheGivenLength)
{
    const std::vector<std::uint8_t> data = {1, 2, 3, 4, 5, 6};
    const std::vector<std::uint8_t> pattern = {5, 6};
    const HorspoolSearcher searcher(pattern);
    EXPECT_EQ(searcher.FindFirst(data.data(), 6, 0), 4u);
    EXPECT_EQ(searcher.FindFirst(data.data(), 5, 0), HorspoolSearcher::NotFound);
    EXPECT_EQ(searcher.FindFirst(data.data(), 1, 0), HorspoolSearcher::NotFound);
}

TEST(HorspoolSearcher, LongPatternsWithManyNearMisses)
{
    std::vector<std::uint8_t> data(5000, 7);
    std::vector<std::uint8_t> pattern(100, 7);
    pattern[50] = 8;
    const HorspoolSearcher searcher(pattern);
    EXPECT_EQ(searcher.FindFirst(data.data(), data.size(), 0), HorspoolSearcher::NotFound);
    data[4321] = 8;
    EXPECT_EQ(searcher.FindFirst(data.data(), data.size(), 0), 4271u);
    EXPECT_EQ(searcher.FindFirst(data.data(), data.size(), 4272), HorspoolSearcher::NotFound);
}

} // namespace
} // namespace tlm
