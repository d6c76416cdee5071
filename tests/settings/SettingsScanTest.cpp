#include "settings/SettingsScan.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

using Strings = std::vector<std::string>;

TEST(SettingsScan, StringValueIsReadAfterTheKeyAndColon)
{
    EXPECT_EQ(FindStringValue(R"({"a": "one", "b" :  "two"})", "b", 0), "two");
}

TEST(SettingsScan, StringValueDecodesTheShortEscapes)
{
    EXPECT_EQ(FindStringValue(R"({"a": "1\b2\f3\n4\r5\t6"})", "a", 0), "1\b2\f3\n4\r5\t6");
}

TEST(SettingsScan, OtherEscapedCharactersStandForThemselves)
{
    EXPECT_EQ(FindStringValue(R"({"a": "\u0041 \" \\ \/ \x"})", "a", 0), "u0041 \" \\ / x");
}

TEST(SettingsScan, AValueThatIsNotAStringTakesTheNextString)
{
    EXPECT_EQ(FindStringValue(R"({"a": 3, "b": "next"})", "a", 0), "b");
}

TEST(SettingsScan, StringValueIsSearchedFromTheStartPosition)
{
    const std::string_view text = R"({"x": {"k": "inner"}, "y": {"k": "other"}})";
    EXPECT_EQ(FindStringValue(text, "k", 0), "inner");
    EXPECT_EQ(FindStringValue(text, "k", text.find("\"y\"")), "other");
}

TEST(SettingsScan, AnUnclosedStringGivesNothing)
{
    EXPECT_FALSE(FindStringValue(R"({"a": "open)", "a", 0).has_value());
    EXPECT_FALSE(FindStringValue(R"({"a": "open\)", "a", 0).has_value());
    EXPECT_FALSE(FindStringValue(R"({"a" "x"})", "a", 0).has_value());
    EXPECT_FALSE(FindStringValue(R"({"b": "x"})", "a", 0).has_value());
}

TEST(SettingsScan, ObjectStartIsTheBraceAfterTheKey)
{
    const std::string_view text = R"({"font": {"size": 3}})";
    EXPECT_EQ(FindObjectStart(text, "font", 0), text.find("{\"size"));
}

TEST(SettingsScan, ObjectWhoseBracesDoNotBalanceIsNotFound)
{
    EXPECT_FALSE(FindObjectStart(R"({"font": {"size": {3})", "font", 0).has_value());
}

TEST(SettingsScan, BracesInsideStringsDoNotCount)
{
    const std::string_view text = R"({"font": {"family": "}{}"}})";
    EXPECT_EQ(FindObjectStart(text, "font", 0), text.find("{\"family"));
    EXPECT_FALSE(FindObjectStart(R"({"font": {"family": "}")", "font", 0).has_value());
}

TEST(SettingsScan, BoolIsExactlyTrueOrFalseAfterWhiteSpace)
{
    EXPECT_EQ(FindBoolValue("{\"v\":\n\t true}", "v", 0), true);
    EXPECT_EQ(FindBoolValue(R"({"v": false})", "v", 0), false);
    EXPECT_FALSE(FindBoolValue(R"({"v": True})", "v", 0).has_value());
    EXPECT_FALSE(FindBoolValue(R"({"v": "true"})", "v", 0).has_value());
    EXPECT_FALSE(FindBoolValue(R"({"v": 1})", "v", 0).has_value());
}

TEST(SettingsScan, NumberIsTheRunOfDigitsSignsAndPoints)
{
    EXPECT_EQ(FindNumberValue(R"({"size": 10.5,})", "size", 0), 10.5f);
    EXPECT_EQ(FindNumberValue(R"({"size":+7})", "size", 0), 7.0f);
    EXPECT_EQ(FindNumberValue(R"({"size": -3})", "size", 0), -3.0f);
    EXPECT_EQ(FindNumberValue(R"({"size": .5})", "size", 0), 0.5f);
}

TEST(SettingsScan, AnExponentLetterEndsTheNumber)
{
    EXPECT_EQ(FindNumberValue(R"({"size": 1e+07})", "size", 0), 1.0f);
    EXPECT_EQ(FindNumberValue(R"({"size": 2.5E3})", "size", 0), 2.5f);
}

TEST(SettingsScan, AnEmptyRunGivesNothing)
{
    EXPECT_FALSE(FindNumberValue(R"({"size": "12"})", "size", 0).has_value());
    EXPECT_FALSE(FindNumberValue(R"({"size": ,})", "size", 0).has_value());
    EXPECT_FALSE(FindNumberValue(R"({"size":)", "size", 0).has_value());
}

TEST(SettingsScan, ARunWithoutALeadingNumberGivesNothing)
{
    EXPECT_FALSE(FindNumberValue(R"({"size": +-.})", "size", 0).has_value());
    EXPECT_FALSE(FindNumberValue(R"({"size": +-1})", "size", 0).has_value());
    EXPECT_FALSE(FindNumberValue(R"({"size": --1})", "size", 0).has_value());
    EXPECT_FALSE(FindNumberValue(R"({"size": ++1})", "size", 0).has_value());
    EXPECT_FALSE(FindNumberValue(R"({"size": .})", "size", 0).has_value());
    EXPECT_FALSE(FindNumberValue(R"({"size": -.})", "size", 0).has_value());
    EXPECT_FALSE(FindNumberValue(R"({"size": 1)" + std::string(60, '0') + "}", "size", 0).has_value());
}

TEST(SettingsScan, ARunConvertsAsFarAsItsLeadingNumberGoes)
{
    EXPECT_EQ(FindNumberValue(R"({"size": 1.2.3})", "size", 0), 1.2f);
    EXPECT_EQ(FindNumberValue(R"({"size": 12-3})", "size", 0), 12.0f);
    EXPECT_EQ(FindNumberValue(R"({"size": +9+})", "size", 0), 9.0f);
    EXPECT_EQ(FindNumberValue(R"({"size": -4.5.})", "size", 0), -4.5f);
    EXPECT_EQ(FindNumberValue(R"({"size": 7.})", "size", 0), 7.0f);
}

TEST(SettingsScan, TopLevelStringSkipsNestedMembers)
{
    const std::string_view text =
        R"({"encoding": {"charset": {"language": "japanese"}}, "list": ["language"], "language": "de-DE"})";
    EXPECT_EQ(FindTopLevelStringValue(text, "language"), "de-DE");
    EXPECT_EQ(FindStringValue(text, "language", 0), "japanese");
}

TEST(SettingsScan, TopLevelStringSkipsScalarsAndMissingKeysGiveNothing)
{
    EXPECT_EQ(FindTopLevelStringValue(R"({"a": 12, "b": true, "c": "x"})", "c"), "x");
    EXPECT_FALSE(FindTopLevelStringValue(R"({"a": {"c": "x"}})", "c").has_value());
    EXPECT_FALSE(FindTopLevelStringValue(R"({"c": 5})", "c").has_value());
    EXPECT_FALSE(FindTopLevelStringValue(R"("c": "x")", "c").has_value());
    EXPECT_FALSE(FindTopLevelStringValue(R"({"a": {"c": "x")", "c").has_value());
}

TEST(SettingsScan, StringArrayEndsAtTheFirstClosingBracket)
{
    EXPECT_EQ(ReadStringArray(R"({"r": ["a", "b]c", "d"]})", "r", 0), Strings{"a"});
    EXPECT_EQ(ReadStringArray(R"({"r": ["a", "b"]})", "r", 0), (Strings{"a", "b"}));
    EXPECT_EQ(ReadStringArray(R"({"r": []})", "r", 0), Strings{});
    EXPECT_FALSE(ReadStringArray(R"({"r": "x"})", "r", 0).has_value());
}

TEST(SettingsScan, BalancedArrayKeepsBracketsInsideStrings)
{
    EXPECT_EQ(FindBalancedArray(R"({"r": ["a]", ["b"]], "s": 1})", "r", 0), R"("a]", ["b"])");
    EXPECT_FALSE(FindBalancedArray(R"({"r": ["a")", "r", 0).has_value());
}

TEST(SettingsScan, ObjectsAreFoundOutsideStrings)
{
    const auto objects = ObjectsIn(R"({"k": "{"}, "{x}", {"q": {"n": 1}})");
    ASSERT_EQ(objects.size(), 2u);
    EXPECT_EQ(objects[0], R"({"k": "{"})");
    EXPECT_EQ(objects[1], R"({"q": {"n": 1}})");
}

TEST(SettingsScan, StartBeyondTheTextFindsNothing)
{
    EXPECT_FALSE(FindStringValue(R"({"a": "b"})", "a", 100).has_value());
    EXPECT_FALSE(FindObjectStart(R"({"a": {}})", "a", 100).has_value());
}

} // namespace
} // namespace tlm
