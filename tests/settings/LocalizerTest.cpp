#include "settings/Localizer.h"

#include "ScratchFolder.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

namespace fs = std::filesystem;

// A program folder of its own with whatever language files a test writes.
class LocalizerTest : public ::testing::Test {
protected:
    LocalizerTest() { fs::create_directories(StringsFolder()); }

    fs::path StringsFolder() const { return scratch.Path() / "resources" / "strings"; }
    void WriteLanguage(std::string_view code, std::string_view text) const
    {
        test::WriteBytes(StringsFolder() / (std::string(code) + ".txt"), text);
    }
    Localizer Make(std::vector<std::u16string> systemTags = {}) const
    {
        return Localizer(scratch.Text(), [tags = std::move(systemTags)] { return tags; });
    }

    test::ScratchFolder scratch;
};

TEST_F(LocalizerTest, TranslatesFromTheChosenLanguage)
{
    WriteLanguage("de-DE", "menu.file=&Datei\n");
    WriteLanguage("en-US", "menu.file=&File\n");
    Localizer localizer = Make();
    localizer.SetLanguage(u"de-DE");
    EXPECT_EQ(localizer.Tr("menu.file"), u"&Datei");
}

TEST_F(LocalizerTest, SettingDeSelectsGermanThroughThePrimarySubtag)
{
    WriteLanguage("de-DE", "menu.file=&Datei\n");
    Localizer localizer = Make();
    localizer.SetLanguage(u"de");
    EXPECT_EQ(localizer.EffectiveLanguage(), u"de-DE");
    EXPECT_EQ(localizer.Tr("menu.file"), u"&Datei");
}

TEST_F(LocalizerTest, AValueMayHoldAnEqualsSign)
{
    WriteLanguage("en-US", "error.goto_invalid=Enter an offset such as 0x10 = 16.\n");
    Localizer localizer = Make();
    localizer.SetLanguage(u"en-US");
    EXPECT_EQ(localizer.Tr("error.goto_invalid"), u"Enter an offset such as 0x10 = 16.");
}

TEST_F(LocalizerTest, AMissingLanguageFileFallsBackKeyByKeyToEnglishAndThenToTheKey)
{
    WriteLanguage("en-US", "menu.file=&File\n");
    Localizer localizer = Make();
    localizer.SetLanguage(u"hu-HU");
    EXPECT_EQ(localizer.Tr("menu.file"), u"&File");
    EXPECT_EQ(localizer.Tr("menu.unknown"), u"menu.unknown");
}

TEST_F(LocalizerTest, AKeyMissingFromOneFileComesFromEnglish)
{
    WriteLanguage("fr-FR", "menu.file=&Fichier\n");
    WriteLanguage("en-US", "menu.file=&File\nmenu.edit=&Edit\n");
    Localizer localizer = Make();
    localizer.SetLanguage(u"fr-FR");
    EXPECT_EQ(localizer.Tr("menu.file"), u"&Fichier");
    EXPECT_EQ(localizer.Tr("menu.edit"), u"&Edit");
}

TEST_F(LocalizerTest, WithoutAnyFileTheKeyItselfIsShown)
{
    Localizer localizer = Make();
    EXPECT_EQ(localizer.Tr("status.no_file"), u"status.no_file");
}

TEST_F(LocalizerTest, SystemFollowsTheUsersPreferredLanguages)
{
    WriteLanguage("ko-KR", "menu.file=\xED\x8C\x8C\xEC\x9D\xBC(&F)\n");
    Localizer localizer = Make({u"xx-XX", u"ko-KR"});
    EXPECT_EQ(localizer.LanguageSetting(), u"system");
    EXPECT_EQ(localizer.EffectiveLanguage(), u"ko-KR");
    EXPECT_EQ(localizer.Tr("menu.file"), u"파일(&F)");
}

TEST_F(LocalizerTest, TheSystemIsAskedOncePerSettingNotOncePerText)
{
    WriteLanguage("en-US", "menu.file=&File\nmenu.edit=&Edit\n");
    int asked = 0;
    Localizer localizer(scratch.Text(), [&asked] {
        ++asked;
        return std::vector<std::u16string>{u"en-US"};
    });
    localizer.Tr("menu.file");
    localizer.Tr("menu.edit");
    localizer.Tr("menu.file");
    EXPECT_EQ(asked, 1);
    localizer.SetLanguage(u"de-DE");
    localizer.SetLanguage(u"system");
    localizer.Tr("menu.file");
    EXPECT_EQ(asked, 2);
}

TEST_F(LocalizerTest, SystemWithoutAKnownLanguageIsEnglish)
{
    Localizer localizer = Make({u"C"});
    EXPECT_EQ(localizer.EffectiveLanguage(), u"en-US");
}

TEST_F(LocalizerTest, AnUnknownSettingCountsAsSystem)
{
    Localizer localizer = Make({u"pl-PL"});
    localizer.SetLanguage(u"Klingon");
    EXPECT_EQ(localizer.EffectiveLanguage(), u"pl-PL");
}

TEST_F(LocalizerTest, ATableIsReadOnceAndKeptForTheRun)
{
    WriteLanguage("it-IT", "menu.file=&File (it)\n");
    Localizer localizer = Make();
    localizer.SetLanguage(u"it-IT");
    EXPECT_EQ(localizer.Tr("menu.file"), u"&File (it)");
    WriteLanguage("it-IT", "menu.file=changed\n");
    EXPECT_EQ(localizer.Tr("menu.file"), u"&File (it)");
}

TEST_F(LocalizerTest, AMissingFileIsRememberedAsAnEmptyTable)
{
    Localizer localizer = Make();
    EXPECT_TRUE(localizer.LoadStringTable(u"es-ES").empty());
    WriteLanguage("es-ES", "menu.file=&Archivo\n");
    EXPECT_TRUE(localizer.LoadStringTable(u"es-ES").empty());
}

TEST_F(LocalizerTest, ChangingTheLanguageSwitchesTables)
{
    WriteLanguage("de-DE", "menu.file=&Datei\n");
    WriteLanguage("es-ES", "menu.file=&Archivo\n");
    Localizer localizer = Make();
    localizer.SetLanguage(u"de-DE");
    EXPECT_EQ(localizer.Tr("menu.file"), u"&Datei");
    localizer.SetLanguage(u"es-ES");
    EXPECT_EQ(localizer.Tr("menu.file"), u"&Archivo");
}

TEST_F(LocalizerTest, TheFileLiesUnderResourcesStringsOfTheBaseFolder)
{
    const Localizer localizer = Make();
    EXPECT_EQ(StringTablePath(scratch.Text(), u"ja-JP"), test::PathText(StringsFolder() / "ja-JP.txt"));
    EXPECT_EQ(localizer.BaseDirectory(), scratch.Text());
}

TEST_F(LocalizerTest, ABaseFolderWithNonAsciiLettersIsRead)
{
    const fs::path base = scratch.Path() / fs::path(u"Программы 日本");
    fs::create_directories(base / "resources" / "strings");
    test::WriteBytes(base / "resources" / "strings" / "en-US.txt", "app.title=Tolmo\n");
    Localizer localizer(test::PathText(base), [] { return std::vector<std::u16string>{}; });
    EXPECT_EQ(localizer.Tr("app.title"), u"Tolmo");
}

} // namespace
} // namespace tlm
