#include "app/SearchStart.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

TEST(SearchStartTest, WithoutASelectionBothDirectionsStartAtTheCaret)
{
    EXPECT_EQ(SearchStart(SearchDirection::Next, 7, std::nullopt, 100), 7u);
    EXPECT_EQ(SearchStart(SearchDirection::Previous, 7, std::nullopt, 100), 7u);
}

TEST(SearchStartTest, NextFromASelectionStartsOnePastItsLowerEnd)
{
    EXPECT_EQ(SearchStart(SearchDirection::Next, 9, 5u, 100), 6u);
}

TEST(SearchStartTest, PreviousFromASelectionStartsOneBeforeItsLowerEnd)
{
    EXPECT_EQ(SearchStart(SearchDirection::Previous, 9, 5u, 100), 4u);
}

TEST(SearchStartTest, NextFromASelectionAtTheLastByteHasNoRoom)
{
    EXPECT_FALSE(SearchStart(SearchDirection::Next, 99, 99u, 100));
}

TEST(SearchStartTest, PreviousFromASelectionAtZeroHasNoRoom)
{
    EXPECT_FALSE(SearchStart(SearchDirection::Previous, 0, 0u, 100));
}

} // namespace
} // namespace tlm
