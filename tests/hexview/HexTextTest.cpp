#include "hexview/HexText.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

TEST(HexTextTest, DigitsOfEitherCaseHaveTheirValues)
{
    EXPECT_EQ(HexDigitValue(u'0'), 0);
    EXPECT_EQ(HexDigitValue(u'9'), 9);
    EXPECT_EQ(HexDigitValue(u'a'), 10);
    EXPECT_EQ(HexDigitValue(u'F'), 15);
}

TEST(HexTextTest, LettersPastFAndFullWidthDigitsAreNoDigits)
{
    EXPECT_FALSE(HexDigitValue(u'g'));
    EXPECT_FALSE(HexDigitValue(u'G'));
    EXPECT_FALSE(HexDigitValue(u'/'));
    EXPECT_FALSE(HexDigitValue(u'\uFF10')); // full-width zero
    EXPECT_FALSE(HexDigitValue(u'\uFF21')); // full-width A
}

TEST(HexTextTest, ByteRoundTripsThroughItsDigits)
{
    for (unsigned value = 0; value < 256; ++value) {
        const std::u16string text = FormatHexByte(static_cast<std::uint8_t>(value));
        ASSERT_EQ(text.size(), 2u);
        EXPECT_EQ(*HexDigitValue(text[0]) * 16 + *HexDigitValue(text[1]), value);
    }
}

} // namespace
} // namespace tlm
