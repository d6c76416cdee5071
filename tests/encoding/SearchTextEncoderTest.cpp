#include "encoding/SearchTextEncoder.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

using Bytes = std::vector<std::uint8_t>;

std::optional<Bytes> Encode(std::u16string_view query, TextEncoding encoding)
{
    return EncodeSearchText(query, encoding);
}

TEST(SearchTextEncoder, AsciiRefusesAccentedLettersAndCopiesPlainOnes)
{
    EXPECT_EQ(Encode(u"\u00E9", TextEncoding::Ascii), std::nullopt);
    EXPECT_EQ(Encode(u"abc", TextEncoding::Ascii), (Bytes{0x61, 0x62, 0x63}));
    EXPECT_EQ(Encode(u"a\u0080", TextEncoding::Ascii), std::nullopt);
}

TEST(SearchTextEncoder, HiraganaIsTwoBytesInShiftJisAndRefusedInTis620)
{
    EXPECT_EQ(Encode(u"\u3042", TextEncoding::ShiftJis), (Bytes{0x82, 0xA0}));
    EXPECT_EQ(Encode(u"\u3042", TextEncoding::Tis620), std::nullopt);
}

TEST(SearchTextEncoder, EuroIsRefusedByTheTis620ByteCheckButIsOneByteInWindows1258)
{
    EXPECT_EQ(Encode(u"\u20AC", TextEncoding::Tis620), std::nullopt);
    EXPECT_EQ(Encode(u"\u20AC", TextEncoding::Windows1258), (Bytes{0x80}));
}

TEST(SearchTextEncoder, LetterAInBothUtf16ByteOrders)
{
    EXPECT_EQ(Encode(u"A", TextEncoding::Utf16Le), (Bytes{0x41, 0x00}));
    EXPECT_EQ(Encode(u"A", TextEncoding::Utf16Be), (Bytes{0x00, 0x41}));
}

TEST(SearchTextEncoder, EmptyQueryIsRefusedInEveryEncoding)
{
    for (std::uint32_t value = 0; value < TextEncodingCount; ++value) {
        EXPECT_EQ(Encode(u"", static_cast<TextEncoding>(value)), std::nullopt) << value;
    }
}

TEST(SearchTextEncoder, CharacterOutsideTheBasicPlaneIsTwoUnitsInUtf16Le)
{
    EXPECT_EQ(Encode(u"\U0001F600", TextEncoding::Utf16Le), (Bytes{0x3D, 0xD8, 0x00, 0xDE}));
}

TEST(SearchTextEncoder, UnknownEncodingIsRefused)
{
    EXPECT_EQ(Encode(u"a", static_cast<TextEncoding>(12)), std::nullopt);
}

TEST(SearchTextEncoder, LoneSurrogateIsAUnitInUtf16)
{
    EXPECT_EQ(Encode(u"\xD800", TextEncoding::Utf16Be), (Bytes{0xD8, 0x00}));
}

TEST(SearchTextEncoder, Utf8EncodesEveryLength)
{
    EXPECT_EQ(Encode(u"a\u00E9\u20AC\U0001F600", TextEncoding::Utf8),
        (Bytes{0x61, 0xC3, 0xA9, 0xE2, 0x82, 0xAC, 0xF0, 0x9F, 0x98, 0x80}));
}

TEST(SearchTextEncoder, Utf8WritesALoneSurrogateAsThePlatformDoes)
{
    EXPECT_EQ(Encode(u"\xD800", TextEncoding::Utf8), (Bytes{0xEF, 0xBF, 0xBD}));
}

TEST(SearchTextEncoder, DoubleByteEncodingsConvertExactly)
{
    EXPECT_EQ(Encode(u"\u4E2D", TextEncoding::Gbk), (Bytes{0xD6, 0xD0}));
    EXPECT_EQ(Encode(u"\u4E2D", TextEncoding::Big5), (Bytes{0xA4, 0xA4}));
    EXPECT_EQ(Encode(u"\uAC00a", TextEncoding::EucKr), (Bytes{0xB0, 0xA1, 0x61}));
    EXPECT_EQ(Encode(u"\uAC00", TextEncoding::Windows949), (Bytes{0xB0, 0xA1}));
    EXPECT_EQ(Encode(u"\uFF71", TextEncoding::ShiftJis), (Bytes{0xB1}));
}

TEST(SearchTextEncoder, HangulOutsideEucKrIsRefusedThereButFoundInWindows949)
{
    // U+B620 is one of the syllables that only the Windows extension of the Korean page holds.
    EXPECT_EQ(Encode(u"\uB620", TextEncoding::Windows949), (Bytes{0x8C, 0x63}));
    EXPECT_EQ(Encode(u"\uB620", TextEncoding::EucKr), std::nullopt);
}

TEST(SearchTextEncoder, BestFitLookAlikeIsRefused)
{
    // Code page 932 would stand a plain A in for U+00C0; a query is never approximated.
    EXPECT_EQ(Encode(u"\u00C0", TextEncoding::ShiftJis), std::nullopt);
    EXPECT_EQ(Encode(u"a\u00C0b", TextEncoding::Gbk), std::nullopt);
}

TEST(SearchTextEncoder, OneUnrepresentableCharacterRefusesTheWholeQuery)
{
    EXPECT_EQ(Encode(u"abc\u3042", TextEncoding::Windows1258), std::nullopt);
    EXPECT_EQ(Encode(u"\U0001F600", TextEncoding::Big5), std::nullopt);
}

TEST(SearchTextEncoder, ThaiLettersAreTis620Bytes)
{
    EXPECT_EQ(Encode(u"\u0E01\u0E31a", TextEncoding::Tis620), (Bytes{0xA1, 0xD1, 0x61}));
}

TEST(SearchTextEncoder, IsciiConvertsSyllables)
{
    EXPECT_EQ(Encode(u"\u0915\u094D\u0937", TextEncoding::IsciiDevanagari), (Bytes{0xB3, 0xE8, 0xD6}));
}

} // namespace
} // namespace tlm
