#include "inspector/CodePointForm.h"
#include "inspector/InspectorCombiningMarks.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

TEST(CodePointForm, ALetterShowsItselfAndItsCodePoint)
{
    EXPECT_EQ(FormatCodePointForm(u"A"), u"A (U+0041)");
}

TEST(CodePointForm, NamedCharactersShowTheirNames)
{
    EXPECT_EQ(FormatCodePointForm(u"\t"), u"TAB (U+0009)");
    EXPECT_EQ(FormatCodePointForm(u"\n"), u"LF (U+000A)");
    EXPECT_EQ(FormatCodePointForm(u"\v"), u"VT (U+000B)");
    EXPECT_EQ(FormatCodePointForm(u"\f"), u"FF (U+000C)");
    EXPECT_EQ(FormatCodePointForm(u"\r"), u"CR (U+000D)");
    EXPECT_EQ(FormatCodePointForm(u" "), u"Space (U+0020)");
    EXPECT_EQ(FormatCodePointForm(u"\u0085"), u"NEL (U+0085)");
    EXPECT_EQ(FormatCodePointForm(u"\u00A0"), u"NBSP (U+00A0)");
    EXPECT_EQ(FormatCodePointForm(u"\u3000"), u"Ideographic Space (U+3000)");
    EXPECT_FALSE(CodePointName(U'\u2028').has_value());
    EXPECT_FALSE(CodePointName(U'\0').has_value());
}

TEST(CodePointForm, OnlyTheFirstCodePointIsLookedUpForAName)
{
    EXPECT_EQ(FormatCodePointForm(u"\n\u0301"), u"LF (U+000A U+0301)");
    EXPECT_EQ(FormatCodePointForm(u"a "), u"a  (U+0061 U+0020)");
}

TEST(CodePointForm, ACombinedCharacterListsEveryCodePoint)
{
    EXPECT_EQ(FormatCodePointForm(u"e\u0301"), u"e\u0301 (U+0065 U+0301)");
}

TEST(CodePointForm, CodePointsBeyondTheBasicPlaneJoinTheirSurrogates)
{
    EXPECT_EQ(FormatCodePointForm(u"\U0001F600"), u"\U0001F600 (U+1F600)");
    EXPECT_EQ(FormatCodePointForm(u"\U000E0100"), u"\U000E0100 (U+E0100)");
    EXPECT_EQ(FormatCodePointForm(u"\U0010FFFF"), u"\U0010FFFF (U+10FFFF)");
}

TEST(CodePointForm, EmptyTextStaysEmpty)
{
    EXPECT_EQ(FormatCodePointForm(u""), u"");
}

TEST(CodePointForm, ABrokenFirstSurrogateGivesTheTextAsItIs)
{
    const std::u16string lonelyHigh{char16_t(0xD83D)};
    const std::u16string lonelyLow{char16_t(0xDE00), u'A'};
    EXPECT_EQ(FormatCodePointForm(lonelyHigh), lonelyHigh);
    EXPECT_EQ(FormatCodePointForm(lonelyLow), lonelyLow);
}

TEST(CodePointForm, ALaterBrokenSurrogateEndsTheList)
{
    const std::u16string text{u'A', char16_t(0xD83D), u'B'};
    EXPECT_EQ(FormatCodePointForm(text), text + u" (U+0041)");
}

TEST(CodePointForm, LabelOfABrokenOrEmptyTextIsTheTextItself)
{
    EXPECT_EQ(CharacterLabel(u""), u"");
    const std::u16string broken{char16_t(0xDC00)};
    EXPECT_EQ(CharacterLabel(broken), broken);
    EXPECT_EQ(CharacterLabel(u" x"), u"Space");
}

TEST(InspectorCombiningMarks, RangeEndsAreIncluded)
{
    for (char32_t c : {0x0300, 0x036F, 0x0483, 0x0489, 0x05BF, 0x05C7, 0x0670, 0x09D7, 0x0B57, 0x0E31, 0x0E4E,
             0x200D, 0x20FF, 0x3099, 0x309A, 0xFE0F, 0xFE2F, 0x1F3FB, 0x1F3FF, 0xE0100, 0xE01EF}) {
        EXPECT_TRUE(IsInspectorCombiningMark(c)) << std::hex << static_cast<std::uint32_t>(c);
    }
}

TEST(InspectorCombiningMarks, TheGapsBetweenRangesStayOut)
{
    // Letters and signs between the marks: the Hebrew maqaf, paseq, sof pasuq and nun hafukha, an Arabic
    // digit, the Devanagari om, Thai letters, the joiner's neighbours, Latin letters and the emoji.
    for (char32_t c : {0x02FF, 0x0370, 0x0482, 0x048A, 0x05BE, 0x05C0, 0x05C3, 0x05C6, 0x0660, 0x0950, 0x0E30,
             0x0E2F, 0x0E4F, 0x200C, 0x200E, 0x1F3FA, 0x1F400, 0x0041, 0x1F600, 0xE01F0}) {
        EXPECT_FALSE(IsInspectorCombiningMark(c)) << std::hex << static_cast<std::uint32_t>(c);
    }
}

} // namespace
} // namespace tlm
