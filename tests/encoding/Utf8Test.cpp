#include "encoding/Utf8.h"

#include <gtest/gtest.h>

#include <vector>

namespace tlm {
namespace {

std::optional<std::u16string> Decode(std::vector<std::uint8_t> bytes)
{
    return Utf8ToUtf16(std::span<const std::uint8_t>(bytes));
}

TEST(Utf8, DecodesEveryLength)
{
    EXPECT_EQ(Decode({0x41, 0xC3, 0xA9, 0xE3, 0x81, 0x82, 0xF0, 0x9F, 0x98, 0x80}), std::u16string(u"A\u00E9\u3042\U0001F600"));
}

TEST(Utf8, EmptyInputIsEmptyText)
{
    EXPECT_EQ(Decode({}), std::u16string());
}

TEST(Utf8, RefusesOverlongForms)
{
    EXPECT_FALSE(Decode({0xC0, 0x80}));
    EXPECT_FALSE(Decode({0xC1, 0xBF}));
    EXPECT_FALSE(Decode({0xE0, 0x80, 0x80}));
    EXPECT_FALSE(Decode({0xF0, 0x8F, 0xBF, 0xBF}));
}

TEST(Utf8, RefusesSurrogatesAndValuesAboveTheLastPlane)
{
    EXPECT_FALSE(Decode({0xED, 0xA0, 0x80}));
    EXPECT_FALSE(Decode({0xED, 0xBF, 0xBF}));
    EXPECT_FALSE(Decode({0xF4, 0x90, 0x80, 0x80}));
    EXPECT_FALSE(Decode({0xF8, 0x88, 0x80, 0x80, 0x80}));
    EXPECT_TRUE(Decode({0xF4, 0x8F, 0xBF, 0xBF}));
}

TEST(Utf8, RefusesStrayContinuationAndTruncation)
{
    EXPECT_FALSE(Decode({0x80}));
    EXPECT_FALSE(Decode({0x41, 0xE3, 0x81}));
    EXPECT_FALSE(Decode({0xC3, 0x41}));
}

TEST(Utf8, EncodesPairsAndReplacesLoneSurrogates)
{
    EXPECT_EQ(Utf16ToUtf8(u"A\u00E9\U0001F600"), "A\xC3\xA9\xF0\x9F\x98\x80");
    const char16_t lone[] = {0xD800, 0x41, 0};
    EXPECT_EQ(Utf16ToUtf8(lone), "\xEF\xBF\xBD" "A");
}

TEST(Utf8, SequenceLengthOfTheFirstCharacter)
{
    const std::vector<std::uint8_t> bytes{0xE3, 0x81, 0x82, 0x41};
    EXPECT_EQ(ValidUtf8SequenceLength(bytes), 3u);
    const std::vector<std::uint8_t> bad{0xE3, 0x41};
    EXPECT_EQ(ValidUtf8SequenceLength(bad), 0u);
}

} // namespace
} // namespace tlm
