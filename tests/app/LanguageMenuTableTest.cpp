#include "app/LanguageMenuTable.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tlm {
namespace {

TEST(LanguageMenuTable, HoldsTheFifteenRowsInMenuOrder)
{
    const std::vector<std::pair<std::u16string, std::u16string>> expected{
        {u"en-US", u"English"},
        {u"ja-JP", u"日本語 (Japanese)"},
        {u"be-BY", u"Беларуская (Belarusian)"},
        {u"de-DE", u"Deutsch (German)"},
        {u"es-ES", u"Español (Spanish)"},
        {u"fr-FR", u"Français (French)"},
        {u"hu-HU", u"Magyar (Hungarian)"},
        {u"it-IT", u"Italiano (Italian)"},
        {u"ko-KR", u"한국어 (Korea)"},
        {u"pl-PL", u"Polski (Polish)"},
        {u"pt-BR", u"Português (Portuguese)"},
        {u"ru-RU", u"Русский (Russian)"},
        {u"uk-UA", u"Українська (Ukrainian)"},
        {u"zh-CN", u"简体中文 (Simplified Chinese)"},
        {u"zh-TW", u"繁體中文 (Traditional Chinese)"},
    };
    std::vector<std::pair<std::u16string, std::u16string>> rows;
    for (const LanguageEntry& row : LanguageMenuRows())
        rows.emplace_back(row.code, row.displayName);
    EXPECT_EQ(rows, expected);
}

TEST(LanguageMenuTable, IndexZeroStandsForTheSystemSetting)
{
    EXPECT_EQ(LanguageSettingForCommandIndex(0), u"system");
}

TEST(LanguageMenuTable, RowIndexesGiveTheirCodes)
{
    EXPECT_EQ(LanguageSettingForCommandIndex(1), u"en-US");
    EXPECT_EQ(LanguageSettingForCommandIndex(4), u"de-DE");
    EXPECT_EQ(LanguageSettingForCommandIndex(15), u"zh-TW");
}

TEST(LanguageMenuTable, IndexesPastTheTableGiveNothing)
{
    EXPECT_EQ(LanguageSettingForCommandIndex(16), std::nullopt);
}

TEST(LanguageMenuTable, ShortLabelIsCutInFrontOfTheFirstBracket)
{
    EXPECT_EQ(ShortLanguageLabel(u"ko-KR"), u"한국어");
    EXPECT_EQ(ShortLanguageLabel(u"zh-CN"), u"简体中文");
    EXPECT_EQ(ShortLanguageLabel(u"de-DE"), u"Deutsch");
}

TEST(LanguageMenuTable, ShortLabelOfALabelWithoutBracketIsTheWholeLabel)
{
    EXPECT_EQ(ShortLanguageLabel(u"en-US"), u"English");
}

TEST(LanguageMenuTable, AnUnknownCodeStandsAsItIs)
{
    EXPECT_EQ(ShortLanguageLabel(u"xx-YY"), u"xx-YY");
    EXPECT_EQ(ShortLanguageLabel(u"de-de"), u"de-de");
}

TEST(LanguageMenuTable, TheSystemLabelCarriesTheResolvedLanguageOnlyWhileTheSettingIsSystem)
{
    EXPECT_EQ(SystemLanguageMenuLabel(u"System", u"system", u"ja-JP"), u"System (日本語)");
    EXPECT_EQ(SystemLanguageMenuLabel(u"System", u"ja-JP", u"ja-JP"), u"System");
}

} // namespace
} // namespace tlm
