#include "encoding/TextServices.h"

#include <gtest/gtest.h>

#include <vector>

namespace tlm {
namespace {

using Bytes = std::vector<std::uint8_t>;

std::optional<std::u16string> Decode(std::uint32_t codePage, const Bytes& bytes, bool strict)
{
    return MultiByteToUtf16(codePage, bytes, strict);
}

std::optional<MultiByteText> Encode(std::uint32_t codePage, std::u16string_view text, bool exactOnly)
{
    return Utf16ToMultiByte(codePage, text, exactOnly);
}

constexpr std::uint32_t AllCodePages[] = {874, 932, 936, 949, 950, 1258, 51949, 57002, 65001};

// Decoding

TEST(TextServicesDecoding, EmptyInputIsEmptyTextInEveryPage)
{
    for (const std::uint32_t codePage : AllCodePages) {
        EXPECT_EQ(Decode(codePage, {}, true), std::u16string()) << codePage;
        EXPECT_EQ(Decode(codePage, {}, false), std::u16string()) << codePage;
    }
}

TEST(TextServicesDecoding, UnknownCodePageGivesNothing)
{
    EXPECT_FALSE(Decode(1252, {0x41}, false));
    EXPECT_FALSE(Decode(0, {0x41}, true));
}

TEST(TextServicesDecoding, AsciiIsItselfInEveryPage)
{
    for (const std::uint32_t codePage : AllCodePages) {
        EXPECT_EQ(Decode(codePage, {0x41, 0x7A, 0x20, 0x30}, true), std::u16string(u"Az 0")) << codePage;
    }
}

TEST(TextServicesDecoding, SingleBytesInThePrivateUseAreaFailWhenStrict)
{
    for (const std::uint8_t byte : {0xA0, 0xFD, 0xFE, 0xFF}) {
        EXPECT_FALSE(Decode(932, {byte}, true)) << int(byte);
    }
    for (const std::uint8_t byte : {0xDB, 0xDC, 0xDD, 0xDE, 0xFC, 0xFD, 0xFE, 0xFF}) {
        EXPECT_FALSE(Decode(874, {byte}, true)) << int(byte);
    }
    EXPECT_FALSE(Decode(936, {0xFF}, true));
    EXPECT_FALSE(Decode(51949, {0xFF}, true));
}

TEST(TextServicesDecoding, SingleBytesInThePrivateUseAreaDecodeWithoutStrict)
{
    EXPECT_EQ(Decode(932, {0xA0}, false), std::u16string(u"\uF8F0"));
    EXPECT_EQ(Decode(932, {0xFF}, false), std::u16string(u"\uF8F3"));
    EXPECT_EQ(Decode(874, {0xDB}, false), std::u16string(u"\uF8C1"));
}

TEST(TextServicesDecoding, UserDefinedPairsSucceedWhenStrict)
{
    EXPECT_EQ(Decode(932, {0xF0, 0x40}, true), std::u16string(u"\uE000"));
    EXPECT_EQ(Decode(932, {0xF9, 0xFC}, true), std::u16string(u"\uE757"));
}

TEST(TextServicesDecoding, OneInvalidSequenceFailsTheWholeStrictCall)
{
    EXPECT_FALSE(Decode(932, {0x41, 0x82, 0xA0, 0xA0, 0x42}, true));
    EXPECT_EQ(Decode(932, {0x41, 0x82, 0xA0, 0xA0, 0x42}, false), std::u16string(u"A\u3042\uF8F0B"));
}

TEST(TextServicesDecoding, LeadByteAsLastByteFailsWhenStrict)
{
    EXPECT_FALSE(Decode(932, {0x41, 0x82}, true));
    EXPECT_FALSE(Decode(936, {0x81}, true));
    EXPECT_FALSE(Decode(949, {0xC7}, true));
    EXPECT_FALSE(Decode(950, {0xA4}, true));
    EXPECT_FALSE(Decode(51949, {0xB0}, true));
}

TEST(TextServicesDecoding, LeadByteAsLastByteIsOneDefaultCharacterWithoutStrict)
{
    EXPECT_EQ(Decode(932, {0x41, 0x82}, false), std::u16string(u"A\u30FB"));
    EXPECT_EQ(Decode(936, {0x81}, false), std::u16string(u"?"));
    EXPECT_EQ(Decode(51949, {0xB0}, false), std::u16string(u"?"));
}

TEST(TextServicesDecoding, UnmappedPairFailsWhenStrict)
{
    EXPECT_FALSE(Decode(932, {0x81, 0x20}, true));
    EXPECT_FALSE(Decode(936, {0x81, 0x7F}, true));
    EXPECT_FALSE(Decode(949, {0xC7, 0x20}, true));
    EXPECT_FALSE(Decode(51949, {0xB0, 0x41}, true));
}

TEST(TextServicesDecoding, UnmappedPairIsOneDefaultCharacterWithoutStrict)
{
    // The byte after a lead byte belongs to it even when the pair means nothing.
    EXPECT_EQ(Decode(932, {0x81, 0x20, 0x41}, false), std::u16string(u"\u30FBA"));
    EXPECT_EQ(Decode(936, {0x81, 0x7F}, false), std::u16string(u"?"));
    EXPECT_EQ(Decode(949, {0xC7, 0x0A}, false), std::u16string(u"?"));
}

TEST(TextServicesDecoding, LeadByteBeforeNulIsALoneLeadByte)
{
    // A NUL is never swallowed as a trail byte.
    EXPECT_EQ(Decode(932, {0x82, 0x00, 0x41}, false), std::u16string(u"\u30FB\0A", 3));
    EXPECT_EQ(Decode(936, {0x81, 0x00}, false), std::u16string(u"?\0", 2));
    EXPECT_FALSE(Decode(932, {0x82, 0x00}, true));
    EXPECT_FALSE(Decode(949, {0xB0, 0x00}, true));
}

TEST(TextServicesDecoding, PairListedAsTheDefaultCharacterFailsWhenStrict)
{
    EXPECT_FALSE(Decode(932, {0x85, 0x40}, true));
    EXPECT_EQ(Decode(932, {0x85, 0x40}, false), std::u16string(u"\u30FB"));
    // The default character's own bytes are no failure.
    EXPECT_EQ(Decode(932, {0x81, 0x45}, true), std::u16string(u"\u30FB"));
}

TEST(TextServicesDecoding, DefaultByteItselfSucceedsWhenStrict)
{
    for (const std::uint32_t codePage : {874u, 932u, 936u, 949u, 950u, 1258u, 51949u}) {
        EXPECT_EQ(Decode(codePage, {0x3F}, true), std::u16string(u"?")) << codePage;
    }
}

TEST(TextServicesDecoding, Windows1258DecodesEveryByteAndUndefinedOnesToC1Controls)
{
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_TRUE(Decode(1258, {static_cast<std::uint8_t>(byte)}, true)) << byte;
    }
    EXPECT_EQ(Decode(1258, {0x81, 0x8A, 0x9E}, true), std::u16string(u"\u0081\u008A\u009E"));
    EXPECT_EQ(Decode(1258, {0x80, 0xFE}, true), std::u16string(u"\u20AC\u20AB"));
}

TEST(TextServicesDecoding, ShiftJisMixesHalfWidthKatakanaAndPairs)
{
    EXPECT_EQ(Decode(932, {0xB1, 0x82, 0xA0, 0x5C, 0xDF}, true), std::u16string(u"\uFF71\u3042\\\uFF9F"));
}

TEST(TextServicesDecoding, EucKrBytesBelowA0StandForThemselves)
{
    for (int byte = 0; byte < 0xA0; ++byte) {
        EXPECT_EQ(Decode(51949, {static_cast<std::uint8_t>(byte)}, true), std::u16string(1, static_cast<char16_t>(byte))) << byte;
    }
    EXPECT_FALSE(Decode(51949, {0xA0}, true));
    EXPECT_EQ(Decode(51949, {0xA0}, false), std::u16string(u"?"));
}

TEST(TextServicesDecoding, EucKrRefusesTheUnifiedHangulCodeExtension)
{
    // 0x81 0x41 is a syllable in 949 only: in EUC-KR 0x81 is a byte of its own.
    EXPECT_EQ(Decode(949, {0x81, 0x41}, true), std::u16string(u"\uAC02"));
    EXPECT_EQ(Decode(51949, {0x81, 0x41}, true), std::u16string(u"\u0081A"));
}

// Encoding

TEST(TextServicesEncoding, EmptyTextGivesNothing)
{
    for (const std::uint32_t codePage : AllCodePages) {
        EXPECT_FALSE(Encode(codePage, u"", true)) << codePage;
        EXPECT_FALSE(Encode(codePage, u"", false)) << codePage;
    }
}

TEST(TextServicesEncoding, UnknownCodePageGivesNothing)
{
    EXPECT_FALSE(Encode(1252, u"A", false));
}

TEST(TextServicesEncoding, ExactCharactersKeepTheirBytes)
{
    const std::optional<MultiByteText> text = Encode(932, u"A\u3042\uFF71", true);
    ASSERT_TRUE(text);
    EXPECT_EQ(text->bytes, (Bytes{0x41, 0x82, 0xA0, 0xB1}));
    EXPECT_FALSE(text->usedDefaultChar);
}

TEST(TextServicesEncoding, BestFitIsWrittenWithoutExactOnly)
{
    const std::optional<MultiByteText> text = Encode(932, u"\u00A5", false);
    ASSERT_TRUE(text);
    EXPECT_EQ(text->bytes, Bytes{0x5C});
    EXPECT_FALSE(text->usedDefaultChar);
}

TEST(TextServicesEncoding, BestFitBecomesTheDefaultByteWithExactOnly)
{
    const std::optional<MultiByteText> text = Encode(932, u"a\u00A5b", true);
    ASSERT_TRUE(text);
    EXPECT_EQ(text->bytes, (Bytes{0x61, 0x3F, 0x62}));
    EXPECT_TRUE(text->usedDefaultChar);
}

TEST(TextServicesEncoding, UnmappableCharacterReportsTheDefaultInBothModes)
{
    for (const bool exactOnly : {true, false}) {
        const std::optional<MultiByteText> text = Encode(874, u"\u3042", exactOnly);
        ASSERT_TRUE(text);
        EXPECT_EQ(text->bytes, Bytes{0x3F});
        EXPECT_TRUE(text->usedDefaultChar);
    }
}

TEST(TextServicesEncoding, QuestionMarkItselfIsNoDefault)
{
    for (const std::uint32_t codePage : {874u, 932u, 936u, 949u, 950u, 1258u, 51949u}) {
        const std::optional<MultiByteText> text = Encode(codePage, u"?", true);
        ASSERT_TRUE(text);
        EXPECT_EQ(text->bytes, Bytes{0x3F});
        EXPECT_FALSE(text->usedDefaultChar) << codePage;
    }
}

TEST(TextServicesEncoding, EuroSignInThaiAndVietnamese)
{
    EXPECT_EQ(Encode(874, u"\u20AC", true)->bytes, Bytes{0x80});
    EXPECT_EQ(Encode(1258, u"\u20AC", true)->bytes, Bytes{0x80});
}

TEST(TextServicesEncoding, HiraganaHasNoThaiForm)
{
    EXPECT_TRUE(Encode(874, u"\u3042", true)->usedDefaultChar);
    EXPECT_FALSE(Encode(932, u"\u3042", true)->usedDefaultChar);
}

TEST(TextServicesEncoding, SupplementaryCharacterBecomesOneDefaultBytePerUnit)
{
    const std::optional<MultiByteText> text = Encode(936, u"\U0001F600", false);
    ASSERT_TRUE(text);
    EXPECT_EQ(text->bytes, (Bytes{0x3F, 0x3F}));
    EXPECT_TRUE(text->usedDefaultChar);
}

TEST(TextServicesEncoding, EucKrBestFitIsRefusedWithExactOnly)
{
    // U+00C0 has only the best fit 'A' in EUC-KR.
    EXPECT_EQ(Encode(51949, u"\u00C0", false)->bytes, Bytes{0x41});
    EXPECT_FALSE(Encode(51949, u"\u00C0", false)->usedDefaultChar);
    EXPECT_TRUE(Encode(51949, u"\u00C0", true)->usedDefaultChar);
    EXPECT_EQ(Encode(51949, u"\uAC00", true)->bytes, (Bytes{0xB0, 0xA1}));
}

TEST(TextServicesEncoding, EncodedTextDecodesBack)
{
    const std::u16string text = u"Tolmo \u65E5\u672C\u8A9E \uFF8A\uFF9D";
    const std::optional<MultiByteText> encoded = Encode(932, text, true);
    ASSERT_TRUE(encoded);
    EXPECT_FALSE(encoded->usedDefaultChar);
    EXPECT_EQ(Decode(932, encoded->bytes, true), text);
}

// UTF-8

TEST(TextServicesUtf8, DecodesEveryLength)
{
    EXPECT_EQ(Decode(65001, {0x41, 0xC3, 0xA9, 0xE3, 0x81, 0x82, 0xF0, 0x9F, 0x98, 0x80}, true),
              std::u16string(u"A\u00E9\u3042\U0001F600"));
}

TEST(TextServicesUtf8, RefusesOverlongFormsWhenStrict)
{
    EXPECT_FALSE(Decode(65001, {0xC0, 0x80}, true));
    EXPECT_FALSE(Decode(65001, {0xE0, 0x80, 0xAF}, true));
    EXPECT_FALSE(Decode(65001, {0xF0, 0x80, 0x80, 0xAF}, true));
}

TEST(TextServicesUtf8, RefusesSurrogatesWhenStrict)
{
    EXPECT_FALSE(Decode(65001, {0xED, 0xA0, 0x80}, true));
    EXPECT_FALSE(Decode(65001, {0xED, 0xB0, 0x80}, true));
}

TEST(TextServicesUtf8, RefusesValuesAboveTheLastPlaneWhenStrict)
{
    EXPECT_FALSE(Decode(65001, {0xF4, 0x90, 0x80, 0x80}, true));
    EXPECT_TRUE(Decode(65001, {0xF4, 0x8F, 0xBF, 0xBF}, true));
}

TEST(TextServicesUtf8, RefusesCutSequencesAndStrayContinuationsWhenStrict)
{
    EXPECT_FALSE(Decode(65001, {0xE3, 0x81}, true));
    EXPECT_FALSE(Decode(65001, {0x80}, true));
}

TEST(TextServicesUtf8, IllFormedBytesBecomeReplacementCharactersWithoutStrict)
{
    // Bytes that can start no sequence each give one replacement character.
    EXPECT_EQ(Decode(65001, {0x41, 0xC0, 0x80, 0x42}, false), std::u16string(u"A\uFFFD\uFFFDB"));
    EXPECT_EQ(Decode(65001, {0x80, 0xBF, 0xFF}, false), std::u16string(u"\uFFFD\uFFFD\uFFFD"));
    EXPECT_EQ(Decode(65001, {0xED, 0xA0, 0x80}, false), std::u16string(u"\uFFFD\uFFFD\uFFFD"));
    EXPECT_EQ(Decode(65001, {0xF4, 0x90, 0x80, 0x80}, false), std::u16string(u"\uFFFD\uFFFD\uFFFD\uFFFD"));
}

TEST(TextServicesUtf8, CutSequenceIsOneReplacementCharacterWithoutStrict)
{
    EXPECT_EQ(Decode(65001, {0xE3, 0x81, 0x41}, false), std::u16string(u"\uFFFDA"));
    EXPECT_EQ(Decode(65001, {0xE3, 0x81, 0xE3, 0x81, 0x82}, false), std::u16string(u"\uFFFD\u3042"));
    EXPECT_EQ(Decode(65001, {0xF0, 0x9F, 0x98}, false), std::u16string(u"\uFFFD"));
}

TEST(TextServicesUtf8, EncodesSupplementaryCharactersInFourBytes)
{
    const std::optional<MultiByteText> text = Encode(65001, u"a\U0001F600", true);
    ASSERT_TRUE(text);
    EXPECT_EQ(text->bytes, (Bytes{0x61, 0xF0, 0x9F, 0x98, 0x80}));
    EXPECT_FALSE(text->usedDefaultChar);
}

TEST(TextServicesUtf8, LoneSurrogateBecomesReplacementCharacterAndIsReported)
{
    const std::optional<MultiByteText> text = Encode(65001, u"\xD800x", false);
    ASSERT_TRUE(text);
    EXPECT_EQ(text->bytes, (Bytes{0xEF, 0xBF, 0xBD, 0x78}));
    EXPECT_TRUE(text->usedDefaultChar);
}

// Character classes

TEST(TextServicesClasses, ControlAndFormatCharactersAreControls)
{
    for (const char16_t unit : {0x0000, 0x0009, 0x001F, 0x007F, 0x0085, 0x009F, 0x00AD, 0x200B, 0x200E, 0x2060, 0xFEFF}) {
        EXPECT_TRUE(IsControl(unit)) << std::hex << unsigned(unit);
    }
}

TEST(TextServicesClasses, AddedControlsAreControls)
{
    for (const char16_t unit : {0x070F, 0x200C, 0x200F, 0x202A, 0x202E, 0x206A, 0x206F, 0xFFF9, 0xFFFB}) {
        EXPECT_TRUE(IsControl(unit)) << std::hex << unsigned(unit);
    }
}

TEST(TextServicesClasses, LettersSpacesAndMarksAreNoControls)
{
    for (const char16_t unit : {0x0020, 0x0041, 0x00A0, 0x0301, 0x3000, 0x3042, 0xFFFD}) {
        EXPECT_FALSE(IsControl(unit)) << std::hex << unsigned(unit);
    }
}

TEST(TextServicesClasses, NonSpacingMarksAreCombining)
{
    for (const char16_t unit : {0x0300, 0x0301, 0x0E31, 0x0E48, 0x093C, 0x094D, 0x3099, 0x309A, 0xFE20}) {
        EXPECT_TRUE(IsCombining(unit)) << std::hex << unsigned(unit);
    }
}

TEST(TextServicesClasses, ModifierLettersAndSpacingAccentsAreCombining)
{
    // Modifier letters by name; the spacing accents take the flag of their combining partner.
    for (const char16_t unit : {0x02C6, 0x02DC, 0x00A8, 0x00AF, 0x00B4, 0x00B8}) {
        EXPECT_TRUE(IsCombining(unit)) << std::hex << unsigned(unit);
    }
}

TEST(TextServicesClasses, AddedCodePointsAreCombining)
{
    for (const char16_t unit : {0x005E, 0x0060, 0x00B7, 0x00C0, 0x00C5, 0x00D8, 0x00E9, 0x00F8, 0x00FF, 0x06DE, 0x302E}) {
        EXPECT_TRUE(IsCombining(unit)) << std::hex << unsigned(unit);
    }
}

TEST(TextServicesClasses, PrecomposedCharacterTakesTheClassOfItsFirstComponent)
{
    EXPECT_TRUE(IsCombining(0x0374));   // GREEK NUMERAL SIGN, canonically MODIFIER LETTER PRIME
    EXPECT_FALSE(IsCombining(0x1EA0));  // A with dot below starts with A
    EXPECT_FALSE(IsCombining(0x0958));  // DEVANAGARI LETTER QA starts with KA
}

TEST(TextServicesClasses, PlainLettersAreNotCombining)
{
    for (const char16_t unit : {0x0041, 0x00C6, 0x00D7, 0x0E01, 0x0915, 0x3042, 0xAC00}) {
        EXPECT_FALSE(IsCombining(unit)) << std::hex << unsigned(unit);
    }
}

TEST(TextServicesClasses, SurrogatesAndPrivateUseHaveNoClass)
{
    for (const char16_t unit : {0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0xE000, 0xF8FF}) {
        EXPECT_FALSE(IsControl(unit)) << std::hex << unsigned(unit);
        EXPECT_FALSE(IsCombining(unit)) << std::hex << unsigned(unit);
    }
}

// UTF-16 detection

Bytes Utf16Le(std::u16string_view text)
{
    Bytes bytes;
    for (const char16_t unit : text) {
        bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
    }
    return bytes;
}

TEST(TextServicesUtf16Detection, FewerThanTwoBytesAreNoText)
{
    EXPECT_FALSE(LooksLikeUtf16Text(Bytes{}));
    EXPECT_FALSE(LooksLikeUtf16Text(Bytes{0x41}));
    EXPECT_FALSE(LooksLikeUtf16Text(Bytes{0x00}));
}

TEST(TextServicesUtf16Detection, LatinTextPassesTheStatistics)
{
    EXPECT_TRUE(LooksLikeUtf16Text(Utf16Le(u"A")));
    EXPECT_TRUE(LooksLikeUtf16Text(Utf16Le(u"Tolmo")));
}

TEST(TextServicesUtf16Detection, OddLengthWithTrailingZeroDropsIt)
{
    EXPECT_TRUE(LooksLikeUtf16Text(Bytes{0x41, 0x00, 0x00}));
    EXPECT_FALSE(LooksLikeUtf16Text(Bytes{0x41, 0x00, 0x42}));
}

TEST(TextServicesUtf16Detection, HalfNarrowUnitsAreNotEnough)
{
    EXPECT_FALSE(LooksLikeUtf16Text(Utf16Le(u"A\u3042")));
    EXPECT_TRUE(LooksLikeUtf16Text(Utf16Le(u"AB\u3042")));
}

TEST(TextServicesUtf16Detection, WideTextNeedsASpacingControl)
{
    EXPECT_FALSE(LooksLikeUtf16Text(Utf16Le(u"\u65E5\u672C\u8A9E")));
    EXPECT_TRUE(LooksLikeUtf16Text(Utf16Le(u"\u65E5\u672C\u3000\u8A9E")));
    for (const char16_t control : {u'\r', u'\n', u'\t', u' '}) {
        EXPECT_TRUE(LooksLikeUtf16Text(Utf16Le(std::u16string(u"\u65E5\u672C\u8A9E") + control)));
    }
}

TEST(TextServicesUtf16Detection, BinaryDataIsNoText)
{
    EXPECT_FALSE(LooksLikeUtf16Text(Bytes{0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0}));
    EXPECT_FALSE(LooksLikeUtf16Text(Bytes{0x4D, 0x5A, 0x90, 0x8F, 0x03, 0xA0, 0xE8, 0x77}));
}

TEST(TextServicesUtf16Detection, OnlyTheFirst256UnitsCount)
{
    std::u16string text(255, u'\u8A9E');
    EXPECT_TRUE(LooksLikeUtf16Text(Utf16Le(text + u'\n')));
    text += u'\u8A9E';
    EXPECT_FALSE(LooksLikeUtf16Text(Utf16Le(text + u'\n')));
}

// Shift_JIS lead bytes

TEST(TextServicesShiftJis, LeadBytesAreTheTwoPublishedRanges)
{
    for (const std::uint8_t byte : {0x81, 0x82, 0x9F, 0xE0, 0xEF, 0xFC}) {
        EXPECT_TRUE(IsShiftJisLeadByte(byte)) << int(byte);
    }
    for (const std::uint8_t byte : {0x00, 0x41, 0x80, 0xA0, 0xB1, 0xDF, 0xFD, 0xFF}) {
        EXPECT_FALSE(IsShiftJisLeadByte(byte)) << int(byte);
    }
}

} // namespace
} // namespace tlm
