#include "settings/LanguageCatalogue.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

TEST(LanguageCatalogue, HoldsTheFifteenLanguagesInMenuOrder)
{
    const std::pair<std::u16string_view, std::u16string_view> expected[] = {
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
    const auto catalogue = LanguageCatalogue();
    ASSERT_EQ(catalogue.size(), std::size(expected));
    for (std::size_t i = 0; i < catalogue.size(); ++i) {
        EXPECT_EQ(catalogue[i].code, expected[i].first);
        EXPECT_EQ(catalogue[i].displayName, expected[i].second);
    }
}

TEST(LanguageCatalogue, WholeCodeMatchesIgnoringCase)
{
    EXPECT_EQ(MatchCatalogLanguage(u"ZH-tw"), u"zh-TW");
    EXPECT_EQ(MatchCatalogLanguage(u"pt-BR"), u"pt-BR");
}

TEST(LanguageCatalogue, SettingDeSelectsGermanThroughThePrimarySubtag)
{
    EXPECT_EQ(MatchCatalogLanguage(u"de"), u"de-DE");
    EXPECT_EQ(NormalizeLanguage(u"de"), u"de-DE");
}

TEST(LanguageCatalogue, PrimarySubtagTakesTheFirstRowOfThatLanguage)
{
    EXPECT_EQ(MatchCatalogLanguage(u"zh-HK"), u"zh-CN");
    EXPECT_EQ(MatchCatalogLanguage(u"pt-PT"), u"pt-BR");
    EXPECT_EQ(MatchCatalogLanguage(u"EN-gb"), u"en-US");
    EXPECT_EQ(MatchCatalogLanguage(u"sr-Latn-RS"), std::nullopt);
}

TEST(LanguageCatalogue, UnknownTagsMatchNothing)
{
    EXPECT_EQ(MatchCatalogLanguage(u""), std::nullopt);
    EXPECT_EQ(MatchCatalogLanguage(u"C"), std::nullopt);
    EXPECT_EQ(MatchCatalogLanguage(u"en_US"), std::nullopt);
    EXPECT_EQ(MatchCatalogLanguage(u"-US"), std::nullopt);
}

TEST(LanguageCatalogue, NormaliseGivesSystemForEmptyAndSystemInAnyCase)
{
    EXPECT_EQ(NormalizeLanguage(u""), u"system");
    EXPECT_EQ(NormalizeLanguage(u"system"), u"system");
    EXPECT_EQ(NormalizeLanguage(u"System"), u"system");
    EXPECT_EQ(NormalizeLanguage(u"SYSTEM"), u"system");
}

TEST(LanguageCatalogue, NormaliseKnowsTheTwoOldNames)
{
    EXPECT_EQ(NormalizeLanguage(u"English"), u"en-US");
    EXPECT_EQ(NormalizeLanguage(u"Japanese"), u"ja-JP");
}

TEST(LanguageCatalogue, NormaliseGivesSystemForWhatMatchesNothing)
{
    EXPECT_EQ(NormalizeLanguage(u"Klingon"), u"system");
    EXPECT_EQ(NormalizeLanguage(u"xx-YY"), u"system");
}

TEST(LanguageCatalogue, NormaliseGivesTheCatalogueSpelling)
{
    EXPECT_EQ(NormalizeLanguage(u"uk-ua"), u"uk-UA");
}

TEST(LanguageCatalogue, SystemLanguageIsTheFirstPreferredTagTheCatalogueKnows)
{
    const std::vector<std::u16string> preferred{u"gsw-CH", u"fr-CA", u"de-DE"};
    EXPECT_EQ(ResolveSystemLanguage(preferred), u"fr-FR");
}

TEST(LanguageCatalogue, SystemLanguageIsEnglishWhenNothingMatches)
{
    EXPECT_EQ(ResolveSystemLanguage({}), u"en-US");
    const std::vector<std::u16string> preferred{u"C", u"POSIX", u"sw-KE"};
    EXPECT_EQ(ResolveSystemLanguage(preferred), u"en-US");
}

} // namespace
} // namespace tlm
