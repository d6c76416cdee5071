#include "encoding/BaseAndMarkDecoder.h"
#include "encoding/RowTextDecoder.h"
#include "encoding/TextServices.h"

#include "CheckedDocument.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace tlm {
namespace {

using test::CheckedDocument;
using Bytes = std::vector<std::uint8_t>;
using Cells = std::vector<std::u16string>;

Bytes Join(std::initializer_list<Bytes> parts)
{
    Bytes joined;
    for (const Bytes& part : parts) {
        joined.insert(joined.end(), part.begin(), part.end());
    }
    return joined;
}

Bytes Repeat(std::uint8_t byte, std::size_t count)
{
    return Bytes(count, byte);
}

Bytes RepeatPair(std::uint8_t first, std::uint8_t second, std::size_t count)
{
    Bytes pairs;
    for (std::size_t i = 0; i < count; ++i) {
        pairs.insert(pairs.end(), {first, second});
    }
    return pairs;
}

Cells RowOf(const CheckedDocument& document, std::uint64_t offset, TextEncoding encoding)
{
    const Bytes row = document.RowAt(offset);
    return DecodeRowText(&document, offset, row, encoding);
}

Cells RowOf(const Bytes& content, std::uint64_t offset, TextEncoding encoding)
{
    const CheckedDocument document(content);
    return RowOf(document, offset, encoding);
}

Cells Detached(const Bytes& bytes, TextEncoding encoding)
{
    return DecodeRowTextDetached(bytes, encoding);
}

std::vector<TextEncoding> AllEncodings()
{
    std::vector<TextEncoding> encodings;
    for (std::uint32_t value = 0; value < TextEncodingCount; ++value) {
        encodings.push_back(static_cast<TextEncoding>(value));
    }
    return encodings;
}

// --- ASCII ---

TEST(RowTextDecoder, AsciiShowsPrintableBytesAndFillsTheRest)
{
    EXPECT_EQ(RowOf(Bytes{0x41, 0x20, 0x7E, 0x7F, 0x1F, 0x80, 0xFF}, 0, TextEncoding::Ascii),
        (Cells{u"A", u" ", u"~", u".", u".", u".", u"."}));
}

TEST(RowTextDecoder, UnknownEncodingValueActsAsAscii)
{
    const auto unknown = static_cast<TextEncoding>(12);
    const Bytes bytes{0x41, 0xB1, 0x00};
    EXPECT_EQ(RowOf(bytes, 0, unknown), (Cells{u"A", u".", u"."}));
    EXPECT_EQ(Detached(bytes, static_cast<TextEncoding>(0xFFFFFFFF)), (Cells{u"A", u".", u"."}));
}

// --- UTF-8 ---

TEST(RowTextDecoder, Utf8RowStartingInsideAThreeByteCharacterLeavesItsCellsEmpty)
{
    // The euro sign E2 82 AC starts in the last cell of row 0 and runs two bytes into row 1.
    const CheckedDocument document(Join({Repeat('a', 15), {0xE2, 0x82, 0xAC}, Repeat('b', 14)}));
    const Cells above = RowOf(document, 0, TextEncoding::Utf8);
    EXPECT_EQ(above[15], u"\u20AC");
    const Cells row = RowOf(document, 16, TextEncoding::Utf8);
    EXPECT_EQ(row[0], u"");
    EXPECT_EQ(row[1], u"");
    EXPECT_EQ(row[2], u"b");
}

TEST(RowTextDecoder, Utf8FourByteCharacterInTheLastCellIsCompleteThere)
{
    const CheckedDocument document(Join({Repeat('a', 15), {0xF0, 0x9F, 0x98, 0x80}, Repeat('b', 13)}));
    EXPECT_EQ(RowOf(document, 0, TextEncoding::Utf8)[15], u"\U0001F600");
    const Cells next = RowOf(document, 16, TextEncoding::Utf8);
    EXPECT_EQ(next[0], u"");
    EXPECT_EQ(next[1], u"");
    EXPECT_EQ(next[2], u"");
    EXPECT_EQ(next[3], u"b");
}

TEST(RowTextDecoder, Utf8TruncatedSequenceAtTheEndShowsAFillerInEachCell)
{
    EXPECT_EQ(RowOf(Bytes{'a', 'b', 0xE2, 0x82}, 0, TextEncoding::Utf8), (Cells{u"a", u"b", u".", u"."}));
    EXPECT_EQ(RowOf(Bytes{0xF0, 0x9F, 0x98}, 0, TextEncoding::Utf8), (Cells{u".", u".", u"."}));
}

TEST(RowTextDecoder, Utf8OverlongNulShowsTwoFillers)
{
    EXPECT_EQ(RowOf(Bytes{0xC0, 0x80}, 0, TextEncoding::Utf8), (Cells{u".", u"."}));
}

TEST(RowTextDecoder, Utf8LoneCombiningMarkAtOffsetZeroGetsItsOwnCell)
{
    EXPECT_EQ(RowOf(Bytes{0xCC, 0x81, 'a'}, 0, TextEncoding::Utf8), (Cells{u"\u0301", u"", u"a"}));
}

TEST(RowTextDecoder, Utf8CombiningMarkJoinsItsBaseEvenAfterAFiller)
{
    // a, an invalid byte, then U+0301: the mark still stacks on the a two cells to its left.
    EXPECT_EQ(RowOf(Bytes{'a', 0xFF, 0xCC, 0x81, 'b'}, 0, TextEncoding::Utf8), (Cells{u"a\u0301", u".", u"", u"", u"b"}));
}

TEST(RowTextDecoder, Utf8MarkByThePlatformClassesJoinsItsBase)
{
    // Thai mai han-akat is a non-spacing mark outside the fixed table.
    EXPECT_EQ(RowOf(Bytes{0xE0, 0xB8, 0x81, 0xE0, 0xB8, 0xB1}, 0, TextEncoding::Utf8),
        (Cells{u"\u0E01\u0E31", u"", u"", u"", u"", u""}));
}

TEST(RowTextDecoder, Utf8JoinerAndSupplementaryVariationSelectorJoinTheirBase)
{
    EXPECT_EQ(RowOf(Bytes{'a', 0xE2, 0x80, 0x8D, 0xF3, 0xA0, 0x84, 0x80, 'b'}, 0, TextEncoding::Utf8),
        (Cells{u"a\u200D\U000E0100", u"", u"", u"", u"", u"", u"", u"", u"b"}));
}

TEST(RowTextDecoder, Utf8MarkWhoseBaseIsInTheRowAboveGetsItsOwnCell)
{
    const CheckedDocument document(Join({Repeat('a', 16), {0xCC, 0x81}, Repeat('b', 4)}));
    EXPECT_EQ(RowOf(document, 0, TextEncoding::Utf8)[15], u"a");
    EXPECT_EQ(RowOf(document, 16, TextEncoding::Utf8), (Cells{u"\u0301", u"", u"b", u"b", u"b", u"b"}));
}

TEST(RowTextDecoder, Utf8ShowsC1ControlsButNotC0ControlsOrDelete)
{
    EXPECT_EQ(RowOf(Bytes{0xC2, 0x85, 0x09, 0x7F, 'a'}, 0, TextEncoding::Utf8), (Cells{u"\u0085", u"", u".", u".", u"a"}));
}

TEST(RowTextDecoder, Utf8EncodedSurrogateShowsAFillerPerByte)
{
    EXPECT_EQ(RowOf(Bytes{0xED, 0xA0, 0x80}, 0, TextEncoding::Utf8), (Cells{u".", u".", u"."}));
}

TEST(RowTextDecoder, Utf8ReadsAtMostThreeBytesAroundTheRow)
{
    const CheckedDocument document(Repeat('x', 64));
    RowOf(document, 32, TextEncoding::Utf8);
    EXPECT_EQ(document.lowestRead, 29u);
    EXPECT_EQ(document.highestReadEnd, 51u);
}

// --- UTF-16 ---

TEST(RowTextDecoder, Utf16LeShowsUnitsButNotSurrogatesOrMarks)
{
    EXPECT_EQ(RowOf(Bytes{0x41, 0x00}, 0, TextEncoding::Utf16Le), (Cells{u"A", u""}));
    EXPECT_EQ(RowOf(Bytes{0x3D, 0xD8, 0x00, 0xDE}, 0, TextEncoding::Utf16Le), (Cells{u".", u"", u".", u""}));
    EXPECT_EQ(RowOf(Bytes{0x01, 0x03}, 0, TextEncoding::Utf16Le), (Cells{u".", u""}));
}

TEST(RowTextDecoder, Utf16BeReadsTheHighByteFirst)
{
    EXPECT_EQ(RowOf(Bytes{0x00, 0x41, 0x30, 0x42}, 0, TextEncoding::Utf16Be), (Cells{u"A", u"", u"\u3042", u""}));
}

TEST(RowTextDecoder, Utf16LastOddByteIsAFiller)
{
    EXPECT_EQ(RowOf(Bytes{0x41, 0x00, 0x42}, 0, TextEncoding::Utf16Le), (Cells{u"A", u"", u"."}));
}

TEST(RowTextDecoder, Utf16RefusesC0ControlsNoncharactersAndTheJoinerButShowsC1)
{
    EXPECT_EQ(Detached(Bytes{0x0A, 0x00, 0xFE, 0xFF, 0xFF, 0xFF, 0x0D, 0x20, 0x85, 0x00, 0xFD, 0xFF}, TextEncoding::Utf16Le),
        (Cells{u".", u"", u".", u"", u".", u"", u".", u"", u"\u0085", u"", u"\uFFFD", u""}));
}

TEST(RowTextDecoder, Utf16UsesOnlyTheRowsOwnBytes)
{
    const CheckedDocument document(Repeat(0x41, 64));
    RowOf(document, 16, TextEncoding::Utf16Le);
    EXPECT_EQ(document.reads, 0);
}

// --- Shift_JIS ---

TEST(RowTextDecoder, ShiftJisLoneHalfWidthKatakanaAndLeadAtTheEnd)
{
    EXPECT_EQ(RowOf(Bytes{0xB1}, 0, TextEncoding::ShiftJis), (Cells{u"\uFF71"}));
    EXPECT_EQ(RowOf(Bytes{'a', 0x81}, 0, TextEncoding::ShiftJis), (Cells{u"a", u"."}));
}

TEST(RowTextDecoder, ShiftJisPairCrossingTheRowEndShowsInItsLeadCell)
{
    const CheckedDocument document(Join({Repeat('a', 15), {0x82, 0xA0}, Repeat('b', 3)}));
    EXPECT_EQ(RowOf(document, 0, TextEncoding::ShiftJis)[15], u"\u3042");
    EXPECT_EQ(RowOf(document, 16, TextEncoding::ShiftJis), (Cells{u"", u"b", u"b", u"b"}));
}

TEST(RowTextDecoder, ShiftJisUndecodablePairIsSteppedOverAsAPair)
{
    // 85 40 is well formed but has no character in code page 932.
    EXPECT_EQ(RowOf(Bytes{0x85, 0x40, 'a'}, 0, TextEncoding::ShiftJis), (Cells{u".", u"", u"a"}));
}

TEST(RowTextDecoder, ShiftJisLeadWithABadTrailIsAFillerAndTheTrailStandsAlone)
{
    EXPECT_EQ(RowOf(Bytes{0x82, 0x20, 'a'}, 0, TextEncoding::ShiftJis), (Cells{u".", u" ", u"a"}));
}

TEST(RowTextDecoder, ShiftJisRowInsideARunOfPairsWhoseTrailsAreLeadsStartsInStep)
{
    // 88 9F is one character, and 9F is a lead too: the byte in front of row 16 would pair with the
    // row's first byte.
    const Cells row = RowOf(RepeatPair(0x88, 0x9F, 20), 16, TextEncoding::ShiftJis);
    ASSERT_EQ(row.size(), 16u);
    for (std::size_t i = 0; i < row.size(); ++i) {
        EXPECT_EQ(row[i], i % 2 == 0 ? u"\u4E9C" : u"") << i;
    }
}

TEST(RowTextDecoder, ShiftJisRowStartingOnATrailThatIsALeadLeavesItsFirstCellEmpty)
{
    const CheckedDocument document(Join({{'a'}, RepeatPair(0x88, 0x9F, 10), Repeat('b', 2)}));
    EXPECT_EQ(RowOf(document, 0, TextEncoding::ShiftJis)[15], u"\u4E9C");
    const Cells row = RowOf(document, 16, TextEncoding::ShiftJis);
    EXPECT_EQ(row, (Cells{u"", u"\u4E9C", u"", u"\u4E9C", u"", u"b", u"b"}));
}

TEST(RowTextDecoder, ShiftJisHalfWidthKatakanaInFrontOfARowAreSingleCharacters)
{
    // B1 may follow a lead as its trail, but it is no lead itself: the scan steps over it alone.
    const CheckedDocument document(Join({Repeat(0xB1, 15), {0x88, 0x9F}, {0xB1, 0xB1}}));
    EXPECT_EQ(RowOf(document, 0, TextEncoding::ShiftJis)[14], u"\uFF71");
    EXPECT_EQ(RowOf(document, 0, TextEncoding::ShiftJis)[15], u"\u4E9C");
    EXPECT_EQ(RowOf(document, 16, TextEncoding::ShiftJis), (Cells{u"", u"\uFF71", u"\uFF71"}));
}

TEST(RowTextDecoder, ShiftJisUndecodablePairAcrossTheRowStartCoversTheRowsFirstCell)
{
    const CheckedDocument document(Join({Repeat('a', 15), {0x85, 0x40}, Repeat('b', 2)}));
    EXPECT_EQ(RowOf(document, 0, TextEncoding::ShiftJis)[15], u".");
    EXPECT_EQ(RowOf(document, 16, TextEncoding::ShiftJis), (Cells{u"", u"b", u"b"}));
}

TEST(RowTextDecoder, ShiftJisScanLooksNoFurtherThan4096BytesBackAndOneByteAhead)
{
    const CheckedDocument document(Repeat(0x88, 10000));
    const Cells row = RowOf(document, 8192, TextEncoding::ShiftJis);
    EXPECT_EQ(document.lowestRead, 8192u - 4096u);
    EXPECT_EQ(document.highestReadEnd, 8192u + 17u);
    EXPECT_EQ(row.size(), 16u);
}

// --- Windows-949, EUC-KR, Big5, GBK ---

TEST(RowTextDecoder, GbkRowAtAMultipleOfSixteenStartsAtALead)
{
    Bytes content;
    for (int i = 0; i < 64; ++i) {
        content.insert(content.end(), {0x81, 0x40});
    }
    const Cells row = RowOf(content, 48, TextEncoding::Gbk);
    ASSERT_EQ(row.size(), 16u);
    for (std::size_t i = 0; i < row.size(); ++i) {
        EXPECT_EQ(row[i], i % 2 == 0 ? u"\u4E02" : u"") << i;
    }
}

TEST(RowTextDecoder, GbkPairStraddlingTheRowStartBelongsToTheRowAbove)
{
    Bytes content{'a'};
    for (int i = 0; i < 20; ++i) {
        content.insert(content.end(), {0x81, 0x40});
    }
    const CheckedDocument document(content);
    EXPECT_EQ(RowOf(document, 0, TextEncoding::Gbk)[15], u"\u4E02");
    const Cells row = RowOf(document, 16, TextEncoding::Gbk);
    EXPECT_EQ(row[0], u"");
    EXPECT_EQ(row[1], u"\u4E02");
    EXPECT_EQ(row[2], u"");
}

TEST(RowTextDecoder, Windows949LeadAtTheEndIsAFiller)
{
    EXPECT_EQ(RowOf(Bytes{'a', 'b', 0xC7}, 0, TextEncoding::Windows949), (Cells{u"a", u"b", u"."}));
}

TEST(RowTextDecoder, DoubleByteInvalidPairCostsOneStep)
{
    // C6 53 has a lead and a valid trail but no character in code page 949: the S gets its own chance.
    EXPECT_EQ(RowOf(Bytes{0xC6, 0x53, 'a'}, 0, TextEncoding::Windows949), (Cells{u".", u"S", u"a"}));
}

TEST(RowTextDecoder, DoubleByteHighSingleByteIsAFiller)
{
    EXPECT_EQ(RowOf(Bytes{0x80, 'a'}, 0, TextEncoding::Gbk), (Cells{u".", u"a"}));
    EXPECT_EQ(RowOf(Bytes{0x90, 'a'}, 0, TextEncoding::EucKr), (Cells{u".", u"a"}));
}

TEST(RowTextDecoder, DoubleByteDecodesEachCodePage)
{
    EXPECT_EQ(RowOf(Bytes{0xB0, 0xA1}, 0, TextEncoding::EucKr), (Cells{u"\uAC00", u""}));
    EXPECT_EQ(RowOf(Bytes{0xB0, 0xA1}, 0, TextEncoding::Windows949), (Cells{u"\uAC00", u""}));
    EXPECT_EQ(RowOf(Bytes{0x8C, 0x63}, 0, TextEncoding::Windows949), (Cells{u"\uB620", u""}));
    EXPECT_EQ(RowOf(Bytes{0xA4, 0xA4}, 0, TextEncoding::Big5), (Cells{u"\u4E2D", u""}));
    EXPECT_EQ(RowOf(Bytes{0xD6, 0xD0}, 0, TextEncoding::Gbk), (Cells{u"\u4E2D", u""}));
}

TEST(RowTextDecoder, DoubleByteScanLooksNoFurtherThan4096BytesBack)
{
    const CheckedDocument document(Repeat(0xB0, 10000));
    const Cells row = RowOf(document, 8192, TextEncoding::EucKr);
    EXPECT_EQ(document.lowestRead, 8192u - 4096u);
    EXPECT_EQ(document.highestReadEnd, 8192u + 17u);
    EXPECT_EQ(row.size(), 16u);
}

// --- TIS-620 and Windows-1258 ---

TEST(RowTextDecoder, Tis620GapByteIsAFillerWithoutAConversion)
{
    EXPECT_FALSE(IsTis620Byte(0xDB));
    EXPECT_EQ(RowOf(Bytes{0xDB}, 0, TextEncoding::Tis620), (Cells{u"."}));
    // Code page 874 would make a euro sign of 0x80; the gap check turns it away before any conversion.
    ASSERT_EQ(MultiByteToUtf16(874, Bytes{0x80}, true), std::u16string(u"\u20AC"));
    EXPECT_EQ(RowOf(Bytes{0x80}, 0, TextEncoding::Tis620), (Cells{u"."}));
}

TEST(RowTextDecoder, Tis620MarkAtTheRowStartWithItsBaseAboveLeavesAnEmptyCell)
{
    // Ko kai (A1) in the last cell of row 0, mai han-akat (D1) in the first cell of row 1.
    const CheckedDocument document(Join({Repeat('a', 15), {0xA1, 0xD1}, Repeat('b', 2)}));
    EXPECT_EQ(RowOf(document, 0, TextEncoding::Tis620)[15], u"\u0E01\u0E31");
    EXPECT_EQ(RowOf(document, 16, TextEncoding::Tis620), (Cells{u"", u"b", u"b"}));
    EXPECT_EQ(RowOf(Bytes{0xD1, 0xA1}, 0, TextEncoding::Tis620), (Cells{u".", u"\u0E01"}));
}

TEST(RowTextDecoder, Tis620MarksStackOnTheirBase)
{
    EXPECT_EQ(RowOf(Bytes{0xA1, 0xD1, 0xE8, 0xA2}, 0, TextEncoding::Tis620),
        (Cells{u"\u0E01\u0E31\u0E48", u"", u"", u"\u0E02"}));
}

TEST(RowTextDecoder, Windows1258ToneMarkStacksOnItsBase)
{
    EXPECT_EQ(RowOf(Bytes{'a', 0xEC, 'b'}, 0, TextEncoding::Windows1258), (Cells{u"a\u0301", u"", u"b"}));
}

TEST(RowTextDecoder, Windows1258MarkAfterAFillerIsAFiller)
{
    // A C1 control clears the base, so the tone mark after it has nothing to stand on.
    EXPECT_EQ(RowOf(Bytes{'a', 0x81, 0xEC}, 0, TextEncoding::Windows1258), (Cells{u"a", u".", u"."}));
}

TEST(RowTextDecoder, MarkBehindTheRowStacksOnTheRowsLastBase)
{
    const CheckedDocument document(Join({Repeat('a', 16), {0xEC, 0xEC, 'b'}}));
    EXPECT_EQ(RowOf(document, 0, TextEncoding::Windows1258)[15], u"a\u0301\u0301");
    EXPECT_EQ(RowOf(document, 16, TextEncoding::Windows1258), (Cells{u"", u"", u"b"}));
}

TEST(RowTextDecoder, BaseAndMarkReadsAtMostFourBytesAroundTheRow)
{
    const CheckedDocument document(Repeat('x', 64));
    RowOf(document, 32, TextEncoding::Tis620);
    EXPECT_EQ(document.lowestRead, 28u);
    EXPECT_EQ(document.highestReadEnd, 52u);
}

// --- ISCII Devanagari ---

TEST(RowTextDecoder, IsciiFourByteSyllableShowsInItsFirstCell)
{
    // KA, virama, SSA, sign AA: one syllable.
    EXPECT_EQ(RowOf(Bytes{0xB3, 0xE8, 0xD6, 0xDA, 'a'}, 0, TextEncoding::IsciiDevanagari),
        (Cells{u"\u0915\u094D\u0937\u093E", u"", u"", u"", u"a"}));
}

TEST(RowTextDecoder, IsciiSyllableCrossingTheRowStartBelongsToTheRowAbove)
{
    const CheckedDocument document(Join({Repeat('a', 14), {0xB3, 0xE8, 0xD6, 0xDA}, Repeat('b', 2)}));
    EXPECT_EQ(RowOf(document, 0, TextEncoding::IsciiDevanagari)[14], u"\u0915\u094D\u0937\u093E");
    EXPECT_EQ(RowOf(document, 16, TextEncoding::IsciiDevanagari), (Cells{u"", u"", u"b", u"b"}));
}

TEST(RowTextDecoder, IsciiUnmappedByteAndLoneSignAreFillers)
{
    // A0 has no mapping; a lone virama is a dependent sign with no letter.
    EXPECT_EQ(RowOf(Bytes{0xA0, 0xE8, 'a'}, 0, TextEncoding::IsciiDevanagari), (Cells{u".", u".", u"a"}));
}

TEST(RowTextDecoder, IsciiReadsAtMostSevenBytesAroundTheRow)
{
    const CheckedDocument document(Repeat('x', 64));
    RowOf(document, 32, TextEncoding::IsciiDevanagari);
    EXPECT_EQ(document.lowestRead, 25u);
    EXPECT_EQ(document.highestReadEnd, 55u);
}

// --- Every encoding ---

TEST(RowTextDecoder, ShortLastRowHasOneCellPerByteAndNothingPastTheEndIsRead)
{
    const CheckedDocument document(Join({Repeat(0xB0, 30), {0xE2, 0x82, 0xF0, 0x81, 0xA1, 0xE8, 0xD1}}));
    for (TextEncoding encoding : AllEncodings()) {
        const Cells row = RowOf(document, 32, encoding);
        EXPECT_EQ(row.size(), 5u) << static_cast<int>(encoding);
        EXPECT_LE(document.highestReadEnd, document.bytes.size());
    }
    EXPECT_EQ(document.outOfRangeReads, 0);
}

TEST(RowTextDecoder, WithoutADocumentOnlyTheRowIsUsed)
{
    const Bytes row{0x82, 0xA0, 'a'};
    EXPECT_EQ(DecodeRowText(nullptr, 16, row, TextEncoding::ShiftJis), (Cells{u"\u3042", u"", u"a"}));
    EXPECT_EQ(DecodeRowText(nullptr, 16, Bytes{0xD1}, TextEncoding::Tis620), (Cells{u"."}));
}

TEST(RowTextDecoder, EmptyRowHasNoCells)
{
    const CheckedDocument document(Repeat('a', 8));
    for (TextEncoding encoding : AllEncodings()) {
        EXPECT_TRUE(DecodeRowText(&document, 8, {}, encoding).empty());
        EXPECT_TRUE(DecodeRowTextDetached({}, encoding).empty());
    }
}

// --- Detached rows ---

TEST(RowTextDecoder, DetachedDoubleByteAndUtf8RowsActAsAscii)
{
    const Bytes bytes{0x82, 0xA0, 0xC3, 0xA9, 'a'};
    for (TextEncoding encoding : {TextEncoding::Utf8, TextEncoding::ShiftJis, TextEncoding::Windows949, TextEncoding::EucKr,
             TextEncoding::Big5, TextEncoding::Gbk}) {
        EXPECT_EQ(Detached(bytes, encoding), (Cells{u".", u".", u".", u".", u"a"})) << static_cast<int>(encoding);
    }
}

TEST(RowTextDecoder, DetachedMarkWithoutABaseIsAFiller)
{
    EXPECT_EQ(Detached(Bytes{0xD1, 0xA1, 0xD1}, TextEncoding::Tis620), (Cells{u".", u"\u0E01\u0E31", u""}));
    EXPECT_EQ(Detached(Bytes{0xEC, 'a', 0xEC}, TextEncoding::Windows1258), (Cells{u".", u"a\u0301", u""}));
}

TEST(RowTextDecoder, DetachedIsciiAndUtf16FollowTheirRowRules)
{
    EXPECT_EQ(Detached(Bytes{0xB3, 0xE9, 'a'}, TextEncoding::IsciiDevanagari), (Cells{u"\u0958", u"", u"a"}));
    EXPECT_EQ(Detached(Bytes{0x00, 0x41}, TextEncoding::Utf16Be), (Cells{u"A", u""}));
}

// --- One character for the inspector ---

TEST(DecodeCharacterAt, AsciiGivesPrintableAndSpaceButNotControlsOrHighBytes)
{
    const auto at = [](std::uint8_t byte) { return DecodeCharacterAt(TextEncoding::Ascii, Bytes{byte, 'x'}); };
    ASSERT_TRUE(at('A'));
    EXPECT_EQ(at('A')->text, u"A");
    EXPECT_EQ(at('A')->consumed, 1u);
    EXPECT_EQ(at(' ')->text, u" ");
    EXPECT_FALSE(at(0x00));
    EXPECT_FALSE(at(0x7F));
    EXPECT_FALSE(at(0x80));
}

TEST(DecodeCharacterAt, UnicodeEncodingsAndEmptyInputGiveNothing)
{
    for (TextEncoding encoding : {TextEncoding::Utf8, TextEncoding::Utf16Le, TextEncoding::Utf16Be}) {
        EXPECT_FALSE(DecodeCharacterAt(encoding, Bytes{'a', 0x00}));
    }
    for (TextEncoding encoding : AllEncodings()) {
        EXPECT_FALSE(DecodeCharacterAt(encoding, {}));
    }
}

TEST(DecodeCharacterAt, DoubleByteCharactersTakeTwoBytes)
{
    const auto sjis = DecodeCharacterAt(TextEncoding::ShiftJis, Bytes{0x82, 0xA0, 'a'});
    ASSERT_TRUE(sjis);
    EXPECT_EQ(sjis->text, u"\u3042");
    EXPECT_EQ(sjis->consumed, 2u);
    const auto katakana = DecodeCharacterAt(TextEncoding::ShiftJis, Bytes{0xB1, 0xB1});
    ASSERT_TRUE(katakana);
    EXPECT_EQ(katakana->consumed, 1u);
    EXPECT_FALSE(DecodeCharacterAt(TextEncoding::ShiftJis, Bytes{0x81}));
    const auto big5 = DecodeCharacterAt(TextEncoding::Big5, Bytes{0xA4, 0xA4});
    ASSERT_TRUE(big5);
    EXPECT_EQ(big5->text, u"\u4E2D");
    EXPECT_EQ(big5->consumed, 2u);
    EXPECT_FALSE(DecodeCharacterAt(TextEncoding::Gbk, Bytes{0x81}));
    EXPECT_FALSE(DecodeCharacterAt(TextEncoding::EucKr, Bytes{0xC8}));
    EXPECT_FALSE(DecodeCharacterAt(TextEncoding::Windows949, Bytes{0x0A}));
}

TEST(DecodeCharacterAt, ThaiBaseTakesItsMarks)
{
    const auto character = DecodeCharacterAt(TextEncoding::Tis620, Bytes{0xA1, 0xD1, 0xE8, 0xA2});
    ASSERT_TRUE(character);
    EXPECT_EQ(character->text, u"\u0E01\u0E31\u0E48");
    EXPECT_EQ(character->consumed, 3u);
    EXPECT_FALSE(DecodeCharacterAt(TextEncoding::Tis620, Bytes{0xD1, 0xA1}));
    EXPECT_FALSE(DecodeCharacterAt(TextEncoding::Tis620, Bytes{0xDB}));
}

TEST(DecodeCharacterAt, VietnameseBaseTakesItsToneMark)
{
    const auto character = DecodeCharacterAt(TextEncoding::Windows1258, Bytes{'a', 0xEC, 'b'});
    ASSERT_TRUE(character);
    EXPECT_EQ(character->text, u"a\u0301");
    EXPECT_EQ(character->consumed, 2u);
    EXPECT_FALSE(DecodeCharacterAt(TextEncoding::Windows1258, Bytes{0xEC, 'a'}));
}

TEST(DecodeCharacterAt, IsciiTakesTheLongestSyllablePastAFailedLength)
{
    const auto syllable = DecodeCharacterAt(TextEncoding::IsciiDevanagari, Bytes{0xB3, 0xE8, 0xD6, 0xDA, 0xB3});
    ASSERT_TRUE(syllable);
    EXPECT_EQ(syllable->text, u"\u0915\u094D\u0937\u093E");
    EXPECT_EQ(syllable->consumed, 4u);
    // KA then a script switch (EF 42) that yields no text: the three bytes still make the one letter.
    const auto switched = DecodeCharacterAt(TextEncoding::IsciiDevanagari, Bytes{0xB3, 0xEF, 0x42});
    ASSERT_TRUE(switched);
    EXPECT_EQ(switched->text, u"\u0915");
    EXPECT_EQ(switched->consumed, 3u);
}

} // namespace
} // namespace tlm
