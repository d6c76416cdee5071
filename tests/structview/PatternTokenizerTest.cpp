#include "structview/PatternTokenizer.h"

#include "structview/DefinitionError.h"
#include "structview/PatternCharacters.h"
#include "structview/PatternNames.h"
#include "structview/PatternNumber.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tlm {
namespace {

struct Spot {
    TokenKind kind;
    std::u16string text;
    std::uint32_t line;
    std::uint32_t column;

    bool operator==(const Spot&) const = default;
};

std::vector<Spot> Spots(const std::vector<PatternToken>& tokens)
{
    std::vector<Spot> spots;
    for (const PatternToken& token : tokens)
        spots.push_back(Spot{token.kind, token.text, token.line, token.column});
    return spots;
}

std::vector<PatternToken> Tokenize(std::u16string_view text)
{
    std::u16string error;
    auto tokens = TokenizeDefinition(text, error);
    EXPECT_EQ(error, u"");
    return tokens;
}

std::u16string TokenizeError(std::u16string_view text)
{
    std::u16string error;
    const auto tokens = TokenizeDefinition(text, error);
    EXPECT_TRUE(tokens.empty());
    return error;
}

TEST(PatternTokenizer, KindsTextsAndPositions)
{
    const auto spots = Spots(Tokenize(u"struct A {\n  int x[4];\n};"));
    const std::vector<Spot> expected = {
        {TokenKind::Identifier, u"struct", 1, 1},
        {TokenKind::Identifier, u"A", 1, 8},
        {TokenKind::Symbol, u"{", 1, 10},
        {TokenKind::Identifier, u"int", 2, 3},
        {TokenKind::Identifier, u"x", 2, 7},
        {TokenKind::Symbol, u"[", 2, 8},
        {TokenKind::Number, u"4", 2, 9},
        {TokenKind::Symbol, u"]", 2, 10},
        {TokenKind::Symbol, u";", 2, 11},
        {TokenKind::Symbol, u"}", 3, 1},
        {TokenKind::Symbol, u";", 3, 2},
        {TokenKind::End, u"", 3, 3},
    };
    EXPECT_EQ(spots, expected);
}

TEST(PatternTokenizer, EmptyTextGivesOnlyTheEndToken)
{
    const auto spots = Spots(Tokenize(u""));
    EXPECT_EQ(spots, (std::vector<Spot>{{TokenKind::End, u"", 1, 1}}));
}

TEST(PatternTokenizer, CrlfAndLfGiveTheSameLinesAndColumnsOutsideComments)
{
    const auto lf = Spots(Tokenize(u"struct A {\n\tint x;\n};\n@entry A\n"));
    const auto crlf = Spots(Tokenize(u"struct A {\r\n\tint x;\r\n};\r\n@entry A\r\n"));
    EXPECT_EQ(lf, crlf);
    EXPECT_EQ(lf[3].line, 2u);
    EXPECT_EQ(lf[3].column, 2u); // a tab is one column
}

TEST(PatternTokenizer, CarriageReturnInsideACommentCountsOneColumn)
{
    // The CR before the LF ends neither comment; in the block comment it sits on line 1.
    const auto lineComment = Tokenize(u"// a\r\nx /* b\r */ y");
    ASSERT_EQ(lineComment.size(), 3u);
    EXPECT_EQ(lineComment[0].line, 2u);
    EXPECT_EQ(lineComment[0].column, 1u);
    EXPECT_EQ(lineComment[1].text, u"y");
    EXPECT_EQ(lineComment[1].column, 12u);
    EXPECT_EQ(Tokenize(u"x /* b */ y")[1].column, 11u);
}

TEST(PatternTokenizer, SlashAtTheEndOfTheTextIsAnUnexpectedCharacter)
{
    EXPECT_EQ(TokenizeError(u"struct A {};\n/"),
        u"Line 2, Col 1: Unexpected character in definition file.\r\n/\r\n^");
}

TEST(PatternTokenizer, LoneSlashIsAnUnexpectedCharacter)
{
    EXPECT_EQ(TokenizeError(u"int a / b"), u"Line 1, Col 7: Unexpected character in definition file.\r\nint a / b\r\n      ^");
}

TEST(PatternTokenizer, BlockCommentOpenedByTheLastTwoCharactersIsUnterminated)
{
    EXPECT_EQ(TokenizeError(u"struct A { int x; };\n/*"), u"Unterminated block comment.");
}

TEST(PatternTokenizer, BlockCommentsDoNotNest)
{
    // The first "*/" closes the comment; the second is a star and a lone slash.
    const auto tokens = Tokenize(u"/* /* */ x *");
    ASSERT_EQ(tokens.size(), 3u);
    EXPECT_EQ(tokens[0].text, u"x");
    EXPECT_EQ(tokens[1].text, u"*");
    EXPECT_EQ(TokenizeError(u"/* /* */ x */"), u"Line 1, Col 13: Unexpected character in definition file.\r\n/* /* */ x */\r\n            ^");
}

TEST(PatternTokenizer, BlockCommentsSideBySideLeaveLaterColumnsCorrect)
{
    const auto tokens = Tokenize(u"/* */ /* */ int x;");
    ASSERT_EQ(tokens.size(), 4u);
    EXPECT_EQ(tokens[0].column, 13u);
    EXPECT_EQ(tokens[1].column, 17u);
    EXPECT_EQ(tokens[2].column, 18u);
}

TEST(PatternTokenizer, BlockCommentAcrossLinesRestartsTheColumn)
{
    const auto tokens = Tokenize(u"/* a\n bc */x");
    ASSERT_EQ(tokens.size(), 2u);
    EXPECT_EQ(tokens[0].line, 2u);
    EXPECT_EQ(tokens[0].column, 7u);
}

TEST(PatternTokenizer, HexadecimalLooksLikeANumberThenAnIdentifier)
{
    const auto spots = Spots(Tokenize(u"0x10"));
    const std::vector<Spot> expected = {
        {TokenKind::Number, u"0", 1, 1},
        {TokenKind::Identifier, u"x10", 1, 2},
        {TokenKind::End, u"", 1, 5},
    };
    EXPECT_EQ(spots, expected);
}

TEST(PatternTokenizer, LettersBeyondAsciiAreIdentifierCharacters)
{
    const auto tokens = Tokenize(u"größe_1 Имя 名前");
    ASSERT_EQ(tokens.size(), 4u);
    EXPECT_EQ(tokens[0].text, u"größe_1");
    EXPECT_EQ(tokens[1].text, u"Имя");
    EXPECT_EQ(tokens[2].text, u"名前");
    EXPECT_EQ(tokens[2].column, 13u);
}

TEST(PatternTokenizer, NulCharacterBecomesASymbol)
{
    const std::u16string text(u"a\0b", 3);
    const auto tokens = Tokenize(text);
    ASSERT_EQ(tokens.size(), 4u);
    EXPECT_EQ(tokens[1].kind, TokenKind::Symbol);
    EXPECT_EQ(tokens[1].text, std::u16string(1, u'\0'));
}

TEST(PatternTokenizer, UnexpectedCharacterIsPositionedAtTheCharacter)
{
    EXPECT_EQ(TokenizeError(u"struct A {\n  int x = 1;\n};"),
        u"Line 2, Col 9: Unexpected character in definition file.\r\n  int x = 1;\r\n        ^");
}

TEST(PatternTokenizer, AllSymbolsAreSingleCharacters)
{
    const auto tokens = Tokenize(u"@{}[];,**");
    ASSERT_EQ(tokens.size(), 10u);
    for (std::size_t i = 0; i < 9; ++i) {
        EXPECT_EQ(tokens[i].kind, TokenKind::Symbol);
        EXPECT_EQ(tokens[i].column, i + 1);
    }
}

TEST(NormalizeTypeName, TrimsLowerCasesAndFoldsWhiteSpace)
{
    EXPECT_EQ(NormalizeTypeName(u" \t Unsigned \t\u3000 LONG\r\n"), u"unsigned long");
    EXPECT_EQ(NormalizeTypeName(u"UINT32_T"), u"uint32_t");
    EXPECT_EQ(NormalizeTypeName(u"ÄÖÜ ΣΙΓΜΑ Жук"), u"äöü σιγμα жук");
    EXPECT_EQ(NormalizeTypeName(u""), u"");
    EXPECT_EQ(NormalizeTypeName(u"  \r\n "), u"");
}

TEST(NormalizeTypeName, KeepsOtherWhiteSpaceAtTheEndsAsOneBlank)
{
    // Only blank, tab, CR and LF are trimmed; an ideographic space at an end stays as a blank.
    EXPECT_EQ(NormalizeTypeName(u"\u3000int"), u" int");
}

TEST(PatternCharacters, ClassesBeyondAscii)
{
    EXPECT_TRUE(IsPatternSpace(u'\u00A0'));
    EXPECT_TRUE(IsPatternSpace(u'\u3000'));
    EXPECT_TRUE(IsPatternSpace(u'\v'));
    EXPECT_FALSE(IsPatternSpace(u'\u200B'));
    for (const char16_t letter : std::u16string_view(u"éÆßŁЖжΩאب中アあ한ก"))
        EXPECT_TRUE(IsPatternLetter(letter)) << static_cast<int>(letter);
    for (const char16_t other : std::u16string_view(u"€×÷§©«¿\u0660\U0001F600"))
        EXPECT_FALSE(IsPatternLetter(other)) << static_cast<int>(other);
    EXPECT_FALSE(IsPatternDigit(u'\u0663'));
    EXPECT_FALSE(IsPatternDigit(u'\uFF11'));
    EXPECT_EQ(LowerPatternCharacter(u'Ÿ'), u'ÿ');
    EXPECT_EQ(LowerPatternCharacter(u'Ł'), u'ł');
    EXPECT_EQ(LowerPatternCharacter(u'Ё'), u'ё');
    EXPECT_EQ(LowerPatternCharacter(u'Ա'), u'ա');
    EXPECT_EQ(LowerPatternCharacter(u'Ｚ'), u'ｚ');
    EXPECT_EQ(LowerPatternCharacter(u'ẞ'), u'ẞ');
    EXPECT_EQ(LowerPatternCharacter(u'×'), u'×');
    EXPECT_EQ(LowerPatternCharacter(u'中'), u'中');
}

TEST(ParseUnsigned, ReadsTheWholeRangeAndRefusesOverflow)
{
    std::uint64_t value = 7;
    EXPECT_TRUE(ParseUnsigned(u"0", value));
    EXPECT_EQ(value, 0u);
    EXPECT_TRUE(ParseUnsigned(u"18446744073709551615", value));
    EXPECT_EQ(value, 18446744073709551615ull);
    EXPECT_FALSE(ParseUnsigned(u"18446744073709551616", value));
    EXPECT_FALSE(ParseUnsigned(u"99999999999999999999", value));
    EXPECT_FALSE(ParseUnsigned(u"", value));
    EXPECT_FALSE(ParseUnsigned(u"1x", value));
    EXPECT_EQ(value, 18446744073709551615ull);
}

TEST(FormatDefinitionError, QuotesTheLineWithACaretUnderTheColumn)
{
    EXPECT_EQ(FormatDefinitionError(u"a\n\tbcd\r\ne", 2, 3, u"Bad."), u"Line 2, Col 3: Bad.\r\n\tbcd\r\n  ^");
}

TEST(FormatDefinitionError, ErrorOnAnEmptyLineHasNoQuotedLineAndNoCaret)
{
    EXPECT_EQ(FormatDefinitionError(u"a\n\nb", 2, 1, u"Bad."), u"Line 2, Col 1: Bad.");
    EXPECT_EQ(FormatDefinitionError(u"a\r\n\r\nb", 2, 1, u"Bad."), u"Line 2, Col 1: Bad.");
}

TEST(FormatDefinitionError, LineOutsideTheTextGivesNoQuotedLine)
{
    EXPECT_EQ(FormatDefinitionError(u"abc", 0, 1, u"Bad."), u"Line 0, Col 1: Bad.");
    EXPECT_EQ(FormatDefinitionError(u"abc", 2, 1, u"Bad."), u"Line 2, Col 1: Bad.");
    EXPECT_EQ(FormatDefinitionError(u"abc", -3, -1, u"Bad."), u"Line -3, Col -1: Bad.");
}

TEST(FormatDefinitionError, ColumnBelowOnePutsTheCaretFirst)
{
    EXPECT_EQ(FormatDefinitionError(u"abc", 1, 0, u"Bad."), u"Line 1, Col 0: Bad.\r\nabc\r\n^");
}

} // namespace
} // namespace tlm
