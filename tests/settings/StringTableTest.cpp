#include "settings/StringTable.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

TEST(StringTable, ReadsKeyValueLines)
{
    const StringTable table = ParseStringTable("menu.file=&File\nmenu.edit=&Edit\n");
    EXPECT_EQ(table.size(), 2u);
    EXPECT_EQ(table.at("menu.file"), u"&File");
    EXPECT_EQ(table.at("menu.edit"), u"&Edit");
}

TEST(StringTable, AValueMayHoldAnEqualsSignOnlyTheFirstSplits)
{
    const StringTable table = ParseStringTable("status.formula=a=b==c\n");
    EXPECT_EQ(table.at("status.formula"), u"a=b==c");
}

TEST(StringTable, KeyAndValueLoseBlanksTabsAndCarriageReturns)
{
    const StringTable table = ParseStringTable(" \tkey \t=  \tvalue with\tinner tab \t\r\n");
    EXPECT_EQ(table.at("key"), u"value with\tinner tab");
}

TEST(StringTable, OnlyAVeryFirstHashMakesAComment)
{
    const StringTable table = ParseStringTable("#menu.file=Comment\n #menu.edit=Kept\nmenu.view=#Not a comment\n");
    EXPECT_EQ(table.count("#menu.file"), 0u);
    EXPECT_EQ(table.count("menu.file"), 0u);
    EXPECT_EQ(table.at("#menu.edit"), u"Kept");
    EXPECT_EQ(table.at("menu.view"), u"#Not a comment");
}

TEST(StringTable, LinesWithoutEqualsAndEmptyLinesAreSkipped)
{
    const StringTable table = ParseStringTable("\n\r\njust text\nkey=value");
    EXPECT_EQ(table.size(), 1u);
    EXPECT_EQ(table.at("key"), u"value");
}

TEST(StringTable, TheFirstLineWithAKeyWins)
{
    const StringTable table = ParseStringTable("key=first\nkey=second\n  key = third\n");
    EXPECT_EQ(table.at("key"), u"first");
}

TEST(StringTable, ThereAreNoEscapesOrContinuations)
{
    const StringTable table = ParseStringTable("a=line\\nbreak\\\nb=next\n");
    EXPECT_EQ(table.at("a"), u"line\\nbreak\\");
    EXPECT_EQ(table.at("b"), u"next");
}

TEST(StringTable, AnEmptyValueIsKept)
{
    const StringTable table = ParseStringTable("a=\nb=  \n");
    EXPECT_EQ(table.at("a"), u"");
    EXPECT_EQ(table.at("b"), u"");
}

TEST(StringTable, ValuesAreDecodedFromUtf8)
{
    const StringTable table = ParseStringTable("menu.file=\xE3\x83\x95\xE3\x82\xA1\xE3\x82\xA4\xE3\x83\xAB(&F)\n");
    EXPECT_EQ(table.at("menu.file"), u"ファイル(&F)");
}

TEST(StringTable, AByteOrderMarkBelongsToTheFirstLine)
{
    const StringTable table = ParseStringTable("\xEF\xBB\xBFmenu.file=&File\nmenu.edit=&Edit\n");
    EXPECT_EQ(table.count("menu.file"), 0u);
    EXPECT_EQ(table.at("?menu.file"), u"&File");
    EXPECT_EQ(table.at("menu.edit"), u"&Edit");
}

TEST(StringTable, AByteOrderMarkHidesAFirstLineComment)
{
    const StringTable table = ParseStringTable("\xEF\xBB\xBF# heading=x\n");
    EXPECT_EQ(table.at("?# heading"), u"x");
}

TEST(StringTable, KeyCharactersAbove127BecomeQuestionMarks)
{
    EXPECT_EQ(NarrowStringKey(u"a\u00E9b\u65E5"), "a?b?");
    EXPECT_EQ(NarrowStringKey(u"\U0001F600"), "??");
    const StringTable table = ParseStringTable("cl\xC3\xA9=value\n");
    EXPECT_EQ(table.at("cl?"), u"value");
}

TEST(StringTable, InvalidUtf8BecomesReplacementCharacters)
{
    const StringTable table = ParseStringTable("key=a\xC3(b\n");
    EXPECT_EQ(table.at("key"), u"a\uFFFD(b");
}

TEST(StringTable, NothingReadableGivesAnEmptyTable)
{
    EXPECT_TRUE(ParseStringTable("").empty());
    EXPECT_TRUE(ParseStringTable(std::string_view("\0\0\0", 3)).empty());
}

} // namespace
} // namespace tlm
