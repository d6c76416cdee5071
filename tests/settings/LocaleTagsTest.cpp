#include "settings/LanguageCatalogue.h"
#include "settings/LocaleTags.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

using Tags = std::vector<std::u16string>;

TEST(LocaleTags, LocaleNamesBecomeLanguageTags)
{
    EXPECT_EQ(LanguageTagFromLocale("de_DE.UTF-8@euro"), u"de-DE");
    EXPECT_EQ(LanguageTagFromLocale("ja_JP.eucJP"), u"ja-JP");
    EXPECT_EQ(LanguageTagFromLocale("be_BY@latin"), u"be-BY");
    EXPECT_EQ(LanguageTagFromLocale("pt"), u"pt");
    EXPECT_EQ(LanguageTagFromLocale("C.UTF-8"), u"C");
}

TEST(LocaleTags, LanguageListComesFirstThenTheMessagesLocale)
{
    LocaleEnvironment environment;
    environment.language = "uk:ru_RU::en";
    environment.lang = "de_DE.UTF-8";
    EXPECT_EQ(PreferredLanguagesFromEnvironment(environment), (Tags{u"uk", u"ru-RU", u"en", u"de-DE"}));
}

TEST(LocaleTags, LcAllOverridesLcMessagesWhichOverridesLang)
{
    LocaleEnvironment environment;
    environment.lcAll = "fr_FR.UTF-8";
    environment.lcMessages = "it_IT.UTF-8";
    environment.lang = "es_ES.UTF-8";
    EXPECT_EQ(PreferredLanguagesFromEnvironment(environment), Tags{u"fr-FR"});
    environment.lcAll.clear();
    EXPECT_EQ(PreferredLanguagesFromEnvironment(environment), Tags{u"it-IT"});
    environment.lcMessages.clear();
    EXPECT_EQ(PreferredLanguagesFromEnvironment(environment), Tags{u"es-ES"});
}

TEST(LocaleTags, TheCLocaleResolvesToEnglish)
{
    LocaleEnvironment environment;
    environment.lcAll = "C";
    environment.lang = "de_DE.UTF-8";
    EXPECT_EQ(ResolveSystemLanguage(PreferredLanguagesFromEnvironment(environment)), u"en-US");
    environment.lcAll = "POSIX";
    EXPECT_EQ(ResolveSystemLanguage(PreferredLanguagesFromEnvironment(environment)), u"en-US");
}

TEST(LocaleTags, NothingSetGivesNoTags)
{
    EXPECT_TRUE(PreferredLanguagesFromEnvironment({}).empty());
}

TEST(LocaleTags, ATraditionalChineseLocaleSelectsTraditionalChinese)
{
    LocaleEnvironment environment;
    environment.lang = "zh_TW.Big5";
    EXPECT_EQ(ResolveSystemLanguage(PreferredLanguagesFromEnvironment(environment)), u"zh-TW");
}

} // namespace
} // namespace tlm
