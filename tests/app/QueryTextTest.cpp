#include "app/QueryText.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(QueryTextTest, TrimRemovesBlanksTabsAndLineEndsAtBothEnds)
{
    EXPECT_EQ(TrimQuery(u" \t\r\n4A 4B\n\t "), u"4A 4B");
}

TEST(QueryTextTest, TrimOfBlanksOnlyIsEmpty)
{
    EXPECT_EQ(TrimQuery(u" \t\r\n "), u"");
}

TEST(QueryTextTest, TrimKeepsOtherSpacesAtTheEnds)
{
    EXPECT_EQ(TrimQuery(u"\u3000a\u00A0"), u"\u3000a\u00A0");
}

TEST(QueryTextTest, HexPairsWithMixedCaseAndBlanksGiveTheirBytes)
{
    EXPECT_EQ(ParseHexQuery(u"4A 4b"), (Bytes{0x4A, 0x4B}));
}

TEST(QueryTextTest, HexWithAnOddDigitIsRefused)
{
    EXPECT_FALSE(ParseHexQuery(u"4A 4"));
}

TEST(QueryTextTest, HexOfBlanksOnlyIsRefused)
{
    EXPECT_FALSE(ParseHexQuery(u"  \t "));
    EXPECT_FALSE(ParseHexQuery(u""));
}

TEST(QueryTextTest, HexBlanksInsideAPairAreDropped)
{
    EXPECT_EQ(ParseHexQuery(u"4 A\t4\nB"), (Bytes{0x4A, 0x4B}));
}

TEST(QueryTextTest, HexDropsUnicodeSpaces)
{
    EXPECT_EQ(ParseHexQuery(u"00\u3000FF\u00A0"), (Bytes{0x00, 0xFF}));
}

TEST(QueryTextTest, HexWithANonDigitIsRefused)
{
    EXPECT_FALSE(ParseHexQuery(u"4G"));
    EXPECT_FALSE(ParseHexQuery(u"0x4A"));
    EXPECT_FALSE(ParseHexQuery(u"+1"));
}

TEST(QueryTextTest, HexWithFullWidthDigitsIsRefused)
{
    EXPECT_FALSE(ParseHexQuery(u"\uFF14\uFF21"));
}

TEST(QueryTextTest, HexWithControlsOrSurrogateHalvesIsRefused)
{
    EXPECT_FALSE(ParseHexQuery(u"4A\u00014B"));
    EXPECT_FALSE(ParseHexQuery(std::u16string(u"4A") + char16_t(0xD800) + u"4"));
}

TEST(QueryTextTest, HexOfTheLongestQueryGives4096Bytes)
{
    std::u16string query;
    for (int index = 0; index < 4096; ++index) {
        query += index == 0 ? u"AB" : u" AB";
    }
    ASSERT_EQ(query.size(), HexQueryLimit);
    const auto bytes = ParseHexQuery(query);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->size(), 4096u);
}

TEST(QueryTextTest, GoToWithPrefixAndBlanksGoesTo31)
{
    EXPECT_EQ(ParseGoToOffset(u" 0X1f "), 31u);
}

TEST(QueryTextTest, GoToReadsEveryNumberAsHexadecimal)
{
    EXPECT_EQ(ParseGoToOffset(u"100"), 256u);
    EXPECT_EQ(ParseGoToOffset(u"0x0"), 0u);
}

TEST(QueryTextTest, GoToWithANonHexCharacterFails)
{
    EXPECT_FALSE(ParseGoToOffset(u"g"));
    EXPECT_FALSE(ParseGoToOffset(u"1 2"));
    EXPECT_FALSE(ParseGoToOffset(u"-1"));
    EXPECT_FALSE(ParseGoToOffset(u"\uFF11"));
}

TEST(QueryTextTest, GoToOfNothingFails)
{
    EXPECT_FALSE(ParseGoToOffset(u""));
    EXPECT_FALSE(ParseGoToOffset(u" \t"));
    EXPECT_FALSE(ParseGoToOffset(u"0x"));
}

TEST(QueryTextTest, GoToAbove64BitsFails)
{
    EXPECT_FALSE(ParseGoToOffset(u"10000000000000000"));
}

TEST(QueryTextTest, GoToOfTheLargest64BitValueWorks)
{
    EXPECT_EQ(ParseGoToOffset(u"FFFFFFFFFFFFFFFF"), UINT64_MAX);
    EXPECT_EQ(ParseGoToOffset(u"0000000000000000001"), 1u);
}

TEST(QueryTextTest, GoToFormatIsUpperCaseWithoutPadding)
{
    EXPECT_EQ(FormatGoToOffset(0), u"0");
    EXPECT_EQ(FormatGoToOffset(0x1F40), u"1F40");
    EXPECT_EQ(FormatGoToOffset(UINT64_MAX), u"FFFFFFFFFFFFFFFF");
}

TEST(QueryTextTest, TextLimitIsHalvedForUtf16AndDoubleByteEncodings)
{
    EXPECT_EQ(TextQueryLimit(TextEncoding::Ascii), 4096u);
    EXPECT_EQ(TextQueryLimit(TextEncoding::Utf8), 4096u);
    for (TextEncoding encoding : {TextEncoding::Utf16Le, TextEncoding::Utf16Be, TextEncoding::ShiftJis,
             TextEncoding::Windows949, TextEncoding::EucKr, TextEncoding::Big5, TextEncoding::Gbk}) {
        EXPECT_EQ(TextQueryLimit(encoding), 2048u);
    }
    EXPECT_EQ(TextQueryLimit(TextEncoding::Tis620), 4096u);
    EXPECT_EQ(TextQueryLimit(TextEncoding::IsciiDevanagari), 4096u);
}

} // namespace
} // namespace tlm
