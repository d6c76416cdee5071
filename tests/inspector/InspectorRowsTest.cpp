#include "inspector/InspectorRows.h"

#include "encoding/TextServices.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace tlm {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Rows = std::vector<std::u16string>;

const std::u16string Unavailable = u"n/a";

enum Row : std::size_t {
    Binary,
    UInt8,
    UInt16Le,
    UInt16Be,
    UInt32Le,
    UInt32Be,
    UInt64Le,
    UInt64Be,
    Utf8,
    Utf16Le,
    Utf16Be,
    CurrentEncoding,
};

Rows Build(const Bytes& bytes, TextEncoding encoding = TextEncoding::Ascii)
{
    InspectorRequest request;
    request.offset = 1234;
    request.encoding = encoding;
    request.bytes = bytes;
    Rows rows = BuildInspectorRows(request, Unavailable);
    EXPECT_EQ(rows.size(), 12u);
    rows.resize(12);
    return rows;
}

Bytes Utf8Bytes(std::string_view text)
{
    return Bytes(text.begin(), text.end());
}

Bytes Utf16LeBytes(std::u16string_view text)
{
    Bytes bytes;
    for (char16_t unit : text) {
        bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
    }
    return bytes;
}

Bytes Utf16BeBytes(std::u16string_view text)
{
    Bytes bytes;
    for (char16_t unit : text) {
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
        bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
    }
    return bytes;
}

Bytes Swapped(Bytes bytes)
{
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        std::swap(bytes[i], bytes[i + 1]);
    }
    return bytes;
}

Bytes FirstBytes(const Bytes& bytes, std::size_t count)
{
    return Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(std::min(count, bytes.size())));
}

// --- The edge cases of the values ---

TEST(InspectorRows, EmptyBytesGiveTwelveUnavailableRows)
{
    for (TextEncoding encoding : {TextEncoding::Ascii, TextEncoding::ShiftJis, TextEncoding::Utf8}) {
        EXPECT_EQ(Build({}, encoding), Rows(12, Unavailable));
    }
}

TEST(InspectorRows, OneByteFillsTheBinaryAndByteRowsOnly)
{
    const Rows rows = Build({0xA5}, TextEncoding::Ascii);
    EXPECT_EQ(rows[Binary], u"0b1010_0101");
    EXPECT_EQ(rows[UInt8], u"165 / 0xA5");
    for (std::size_t row = UInt16Le; row <= CurrentEncoding; ++row) {
        EXPECT_EQ(rows[row], Unavailable) << row;
    }
}

TEST(InspectorRows, OneByteLeavesTheCurrentEncodingRowToTheEncoding)
{
    // 0xA5 is a half-width katakana middle dot in Shift_JIS, but no ASCII character.
    EXPECT_EQ(Build({0xA5}, TextEncoding::ShiftJis)[CurrentEncoding], u"\uFF65 (A5)");
    EXPECT_EQ(Build({0xA5}, TextEncoding::Ascii)[CurrentEncoding], Unavailable);
}

TEST(InspectorRows, ThreeBytesFillTheSixteenBitRowsOnly)
{
    const Rows rows = Build({0x01, 0x02, 0x03});
    EXPECT_EQ(rows[UInt16Le], u"513 / 0x0201");
    EXPECT_EQ(rows[UInt16Be], u"258 / 0x0102");
    for (std::size_t row = UInt32Le; row <= UInt64Be; ++row) {
        EXPECT_EQ(rows[row], Unavailable) << row;
    }
}

TEST(InspectorRows, ANulFirstMakesTheUtf8RowUnavailable)
{
    EXPECT_EQ(Build({0x00, 0x41})[Utf8], Unavailable);
}

TEST(InspectorRows, ALineFeedShowsAsLF)
{
    EXPECT_EQ(Build({0x0A, 0x41, 0x42})[Utf8], u"LF (U+000A)");
}

TEST(InspectorRows, ATruncatedSequenceAtTheEndIsUnavailableWithoutFiller)
{
    EXPECT_EQ(Build({0xE3, 0x81})[Utf8], Unavailable);
    EXPECT_EQ(Build({0xF0, 0x9F, 0x98})[Utf8], Unavailable);
}

TEST(InspectorRows, AJoinOfManyCombiningMarksStopsAtTheEndOfTheSnapshot)
{
    // A hundred acute accents on an e, of which the 96-byte snapshot holds the base, 47 whole marks and
    // the first byte of the 48th.
    Bytes text{'e'};
    for (int mark = 0; mark < 100; ++mark) {
        text.insert(text.end(), {0xCC, 0x81}); // U+0301
    }
    const Bytes snapshot = FirstBytes(text, 96);
    std::u16string expected = u"e" + std::u16string(47, u'\u0301') + u" (U+0065";
    for (int mark = 0; mark < 47; ++mark) {
        expected += u" U+0301";
    }
    EXPECT_EQ(Build(snapshot)[Utf8], expected + u")");

    // Marks alone: the first stands as the character and the other 47 of the snapshot join it.
    const Bytes marks = FirstBytes(Bytes(text.begin() + 1, text.end()), 96);
    std::u16string points = u"U+0301";
    for (int mark = 1; mark < 48; ++mark) {
        points += u" U+0301";
    }
    EXPECT_EQ(Build(marks)[Utf8], std::u16string(48, u'\u0301') + u" (" + points + u")");
}

TEST(InspectorRows, AJoinerTakesTheFollowingNonCombiningCharacter)
{
    // MAN, ZERO WIDTH JOINER, WOMAN, then a letter that no longer joins.
    const Rows rows = Build(Utf8Bytes("\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9x"));
    EXPECT_EQ(rows[Utf8], u"\U0001F468\u200D\U0001F469 (U+1F468 U+200D U+1F469)");
}

TEST(InspectorRows, TheUtf16BeRowSwapsACopyForTheTextTestAndReadsTheBytesUnswapped)
{
    const Bytes bytes = Utf16BeBytes(u"Big endian text, plainly written.");
    // The text test must see the swapped copy: as they stand these bytes are no little-endian text.
    ASSERT_TRUE(LooksLikeUtf16Text(Swapped(FirstBytes(bytes, 32))));
    ASSERT_FALSE(LooksLikeUtf16Text(FirstBytes(bytes, 32)));
    const Rows rows = Build(bytes);
    EXPECT_EQ(rows[Utf16Be], u"B (U+0042)");
    EXPECT_EQ(rows[Utf16Le], Unavailable);
}

// --- Numbers ---

TEST(InspectorRows, NumbersShowDecimalThenPaddedHexadecimal)
{
    const Rows rows = Build({0xFF, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01});
    EXPECT_EQ(rows[UInt8], u"255 / 0xFF");
    EXPECT_EQ(rows[UInt16Le], u"255 / 0x00FF");
    EXPECT_EQ(rows[UInt16Be], u"65280 / 0xFF00");
    EXPECT_EQ(rows[UInt32Le], u"255 / 0x000000FF");
    EXPECT_EQ(rows[UInt32Be], u"4278190080 / 0xFF000000");
    EXPECT_EQ(rows[UInt64Le], u"72057594037928191 / 0x01000000000000FF");
    EXPECT_EQ(rows[UInt64Be], u"18374686479671623681 / 0xFF00000000000001");
}

TEST(InspectorRows, TheThirtyTwoBitOneShowsEightDigits)
{
    EXPECT_EQ(Build({0x01, 0x00, 0x00, 0x00})[UInt32Le], u"1 / 0x00000001");
    EXPECT_EQ(Build({0x00, 0x00, 0x00, 0x01})[UInt32Be], u"1 / 0x00000001");
}

TEST(InspectorRows, TheLargestNumbersAreUnsigned)
{
    const Rows rows = Build(Bytes(8, 0xFF));
    EXPECT_EQ(rows[UInt64Le], u"18446744073709551615 / 0xFFFFFFFFFFFFFFFF");
    EXPECT_EQ(rows[UInt32Be], u"4294967295 / 0xFFFFFFFF");
    EXPECT_EQ(rows[Binary], u"0b1111_1111");
}

TEST(InspectorRows, ZeroShowsAsZero)
{
    const Rows rows = Build(Bytes(8, 0x00));
    EXPECT_EQ(rows[Binary], u"0b0000_0000");
    EXPECT_EQ(rows[UInt64Be], u"0 / 0x0000000000000000");
}

TEST(InspectorRows, SevenBytesLeaveTheSixtyFourBitRowsUnavailable)
{
    const Rows rows = Build(Bytes(7, 0x11));
    EXPECT_EQ(rows[UInt32Le], u"286331153 / 0x11111111");
    EXPECT_EQ(rows[UInt64Le], Unavailable);
    EXPECT_EQ(rows[UInt64Be], Unavailable);
}

// The rows of random snapshots against integers read by shifting, and the decimal by the library.
TEST(InspectorRows, NumberRowsAgreeWithAPlainReadOfRandomBytes)
{
    std::mt19937_64 random(3);
    const auto hex = [](std::uint64_t value, int digits) {
        std::u16string text(static_cast<std::size_t>(digits), u'0');
        for (int i = digits - 1; i >= 0; --i, value >>= 4) {
            text[static_cast<std::size_t>(i)] = u"0123456789ABCDEF"[value & 0xF];
        }
        return text;
    };
    const auto expected = [&](std::uint64_t value, int byteCount) {
        const std::string decimal = std::to_string(value);
        return std::u16string(decimal.begin(), decimal.end()) + u" / 0x" + hex(value, byteCount * 2);
    };
    for (int sample = 0; sample < 500; ++sample) {
        Bytes bytes(static_cast<std::size_t>(random() % 12));
        for (std::uint8_t& byte : bytes) {
            byte = static_cast<std::uint8_t>(random());
        }
        const Rows rows = Build(bytes);
        const std::size_t widths[] = {1, 2, 2, 4, 4, 8, 8};
        for (std::size_t index = 0; index < std::size(widths); ++index) {
            const std::size_t width = widths[index];
            const bool bigEndian = index == 2 || index == 4 || index == 6;
            const std::size_t row = UInt8 + index;
            if (bytes.size() < width) {
                EXPECT_EQ(rows[row], Unavailable) << row;
                continue;
            }
            std::uint64_t value = 0;
            for (std::size_t i = 0; i < width; ++i) {
                value |= std::uint64_t{bytes[i]} << (8 * (bigEndian ? width - 1 - i : i));
            }
            EXPECT_EQ(rows[row], expected(value, static_cast<int>(width))) << row;
        }
    }
}

TEST(InspectorRows, TheUnavailableTextIsPassedThroughAsGiven)
{
    InspectorRequest request;
    EXPECT_EQ(BuildInspectorRows(request, u"\u2014"), Rows(12, u"\u2014"));
    EXPECT_EQ(BuildInspectorRows(request, u""), Rows(12, u""));
}

// --- UTF-8 ---

TEST(InspectorRows, Utf8ShowsOneCharacterWithItsCodePoints)
{
    EXPECT_EQ(Build(Utf8Bytes("Abc"))[Utf8], u"A (U+0041)");
    EXPECT_EQ(Build(Utf8Bytes(" x"))[Utf8], u"Space (U+0020)");
    EXPECT_EQ(Build(Utf8Bytes("\xC2\xA0x"))[Utf8], u"NBSP (U+00A0)");
    EXPECT_EQ(Build(Utf8Bytes("\xE3\x80\x80x"))[Utf8], u"Ideographic Space (U+3000)");
    EXPECT_EQ(Build(Utf8Bytes("\xE3\x81\x82"))[Utf8], u"\u3042 (U+3042)");
    EXPECT_EQ(Build(Utf8Bytes("\xF0\x9F\x98\x80!"))[Utf8], u"\U0001F600 (U+1F600)");
}

TEST(InspectorRows, Utf8JoinsCombiningMarksToTheirBase)
{
    EXPECT_EQ(Build(Utf8Bytes("e\xCC\x81x"))[Utf8], u"e\u0301 (U+0065 U+0301)");
    // Thai consonant with a vowel above and a tone mark.
    EXPECT_EQ(Build(Utf8Bytes("\xE0\xB8\x81\xE0\xB8\xB1\xE0\xB9\x88\xE0\xB8\x82"))[Utf8],
        u"\u0E01\u0E31\u0E48 (U+0E01 U+0E31 U+0E48)");
    // A thumbs-up with a skin tone.
    EXPECT_EQ(Build(Utf8Bytes("\xF0\x9F\x91\x8D\xF0\x9F\x8F\xBD"))[Utf8], u"\U0001F44D\U0001F3FD (U+1F44D U+1F3FD)");
    // Devanagari KA with a virama, which the text column's table would not join.
    EXPECT_EQ(Build(Utf8Bytes("\xE0\xA4\x95\xE0\xA5\x8D"))[Utf8], u"\u0915\u094D (U+0915 U+094D)");
}

TEST(InspectorRows, Utf8LeavesCharactersInTheTableGapsApart)
{
    // ALEF followed by the maqaf, which stands in a gap of the table.
    EXPECT_EQ(Build(Utf8Bytes("\xD7\x90\xD6\xBE"))[Utf8], u"\u05D0 (U+05D0)");
    // ALEF followed by a point that is in it.
    EXPECT_EQ(Build(Utf8Bytes("\xD7\x90\xD6\xB8"))[Utf8], u"\u05D0\u05B8 (U+05D0 U+05B8)");
}

TEST(InspectorRows, Utf8RejectsBrokenFirstCharacters)
{
    EXPECT_EQ(Build({0xC0, 0x80})[Utf8], Unavailable);             // overlong NUL
    EXPECT_EQ(Build({0xE0, 0x80, 0x80})[Utf8], Unavailable);       // overlong
    EXPECT_EQ(Build({0x81, 0x41})[Utf8], Unavailable);             // continuation byte first
    EXPECT_EQ(Build({0xF8, 0x88, 0x80, 0x80})[Utf8], Unavailable); // no such length
    EXPECT_EQ(Build({0xED, 0xA0, 0x80})[Utf8], Unavailable);       // a surrogate
    EXPECT_EQ(Build({0xF4, 0x90, 0x80, 0x80})[Utf8], Unavailable); // above U+10FFFF
    EXPECT_EQ(Build({0xC3, 0x41})[Utf8], Unavailable);             // no continuation
    EXPECT_EQ(Build({0xC3, 0x00})[Utf8], Unavailable);             // a NUL as continuation
}

TEST(InspectorRows, Utf8StopsJoiningAtABrokenMark)
{
    EXPECT_EQ(Build({'e', 0xCC, 0x00})[Utf8], u"e (U+0065)");
    EXPECT_EQ(Build({'e', 0xCC})[Utf8], u"e (U+0065)");
    EXPECT_EQ(Build({'e', 0x00, 0xCC, 0x81})[Utf8], u"e (U+0065)");
}

TEST(InspectorRows, Utf8ALoneMarkStandsAlone)
{
    EXPECT_EQ(Build(Utf8Bytes("\xCC\x81\xCC\x81"))[Utf8], u"\u0301\u0301 (U+0301 U+0301)");
}

// --- UTF-16 ---

TEST(InspectorRows, Utf16LeShowsTheFirstCharacterOfText)
{
    const Bytes bytes = Utf16LeBytes(u"Little endian text, plainly written.");
    ASSERT_TRUE(LooksLikeUtf16Text(FirstBytes(bytes, 32)));
    const Rows rows = Build(bytes);
    EXPECT_EQ(rows[Utf16Le], u"L (U+004C)");
    EXPECT_EQ(rows[Utf16Be], Unavailable);
}

TEST(InspectorRows, Utf16JoinsASurrogatePair)
{
    const Bytes bytes = Utf16LeBytes(u"\U0001F600 smiles at the text that follows it.");
    ASSERT_TRUE(LooksLikeUtf16Text(FirstBytes(bytes, 32)));
    EXPECT_EQ(Build(bytes)[Utf16Le], u"\U0001F600 (U+1F600)");

    const Bytes big = Utf16BeBytes(u"\U0001F600 smiles at the text that follows it.");
    EXPECT_EQ(Build(big)[Utf16Be], u"\U0001F600 (U+1F600)");
}

TEST(InspectorRows, Utf16RejectsBrokenSurrogates)
{
    std::u16string lowFirst = u"? and some text that goes on after it.";
    lowFirst[0] = 0xDE00;
    Bytes bytes = Utf16LeBytes(lowFirst);
    ASSERT_TRUE(LooksLikeUtf16Text(FirstBytes(bytes, 32)));
    EXPECT_EQ(Build(bytes)[Utf16Le], Unavailable);

    std::u16string highAlone = u"?A and some text that goes on after it.";
    highAlone[0] = 0xD83D;
    bytes = Utf16LeBytes(highAlone);
    ASSERT_TRUE(LooksLikeUtf16Text(FirstBytes(bytes, 32)));
    EXPECT_EQ(Build(bytes)[Utf16Le], Unavailable);
}

TEST(InspectorRows, Utf16AHighSurrogateNeedsFourBytes)
{
    EXPECT_EQ(Build({0x3D, 0xD8})[Utf16Le], Unavailable);
    EXPECT_EQ(Build({0x3D, 0xD8, 0x00})[Utf16Le], Unavailable);
}

TEST(InspectorRows, Utf16AZeroUnitIsUnavailable)
{
    // Text follows, so the text test passes; the first unit alone makes the row unavailable.
    const std::u16string text = std::u16string(1, u'\0') + u"and the text that follows it.";
    const Bytes little = Utf16LeBytes(text);
    ASSERT_TRUE(LooksLikeUtf16Text(FirstBytes(little, 32)));
    EXPECT_EQ(Build(little)[Utf16Le], Unavailable);

    const Bytes big = Utf16BeBytes(text);
    ASSERT_TRUE(LooksLikeUtf16Text(Swapped(FirstBytes(big, 32))));
    EXPECT_EQ(Build(big)[Utf16Be], Unavailable);

    EXPECT_EQ(Build({0x00, 0x00})[Utf16Le], Unavailable);
}

TEST(InspectorRows, Utf16RowsAreUnavailableForBinaryData)
{
    std::mt19937 random(11);
    int shown = 0;
    for (int sample = 0; sample < 200; ++sample) {
        Bytes bytes(96);
        for (std::uint8_t& byte : bytes) {
            byte = static_cast<std::uint8_t>(random());
        }
        const Rows rows = Build(bytes);
        shown += rows[Utf16Le] != Unavailable ? 1 : 0;
        shown += rows[Utf16Be] != Unavailable ? 1 : 0;
    }
    EXPECT_LT(shown, 20); // most binary data is no text
}

TEST(InspectorRows, Utf16NeedsTwoBytes)
{
    const Rows rows = Build({0x41});
    EXPECT_EQ(rows[Utf16Le], Unavailable);
    EXPECT_EQ(rows[Utf16Be], Unavailable);
}

// --- The current encoding ---

TEST(InspectorRows, CurrentEncodingShowsTheCharacterAndItsBytes)
{
    EXPECT_EQ(Build({0x20, 0x41}, TextEncoding::Ascii)[CurrentEncoding], u"Space (20)");
    EXPECT_EQ(Build({0x41, 0x42}, TextEncoding::Ascii)[CurrentEncoding], u"A (41)");
    EXPECT_EQ(Build({0x82, 0xA0, 0x41}, TextEncoding::ShiftJis)[CurrentEncoding], u"\u3042 (82A0)");
    EXPECT_EQ(Build({0xB0, 0xA1}, TextEncoding::EucKr)[CurrentEncoding], u"\uAC00 (B0A1)");
    EXPECT_EQ(Build({0xA4, 0x40}, TextEncoding::Big5)[CurrentEncoding], u"\u4E00 (A440)");
}

TEST(InspectorRows, CurrentEncodingJoinsThaiMarksToTheirBase)
{
    EXPECT_EQ(Build({0xA1, 0xD1, 0xE8, 0xA2}, TextEncoding::Tis620)[CurrentEncoding], u"\u0E01\u0E31\u0E48 (A1D1E8)");
}

TEST(InspectorRows, CurrentEncodingIsUnavailableForTheUnicodeEncodings)
{
    for (TextEncoding encoding : {TextEncoding::Utf8, TextEncoding::Utf16Le, TextEncoding::Utf16Be}) {
        EXPECT_EQ(Build(Utf8Bytes("A text"), encoding)[CurrentEncoding], Unavailable);
    }
}

TEST(InspectorRows, CurrentEncodingIsUnavailableForControls)
{
    EXPECT_EQ(Build({0x0A, 0x41}, TextEncoding::Ascii)[CurrentEncoding], Unavailable);
    EXPECT_EQ(Build({0x81}, TextEncoding::ShiftJis)[CurrentEncoding], Unavailable); // a lead with no trail
}

TEST(InspectorRows, TheOffsetPlaysNoPart)
{
    InspectorRequest a;
    a.bytes = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    InspectorRequest b = a;
    b.offset = 0xFFFFFFFFFFull;
    EXPECT_EQ(BuildInspectorRows(a, Unavailable), BuildInspectorRows(b, Unavailable));
}

} // namespace
} // namespace tlm
