#include "settings/Localizer.h"
#include "settings/SettingsFile.h"
#include "settings/SettingsReader.h"
#include "settings/SettingsStartup.h"
#include "settings/SettingsWriter.h"

#include "ScratchFolder.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

namespace fs = std::filesystem;

class SettingsStartupTest : public ::testing::Test {
protected:
    std::u16string SettingsPath() const { return test::PathText(scratch.File("tolmo.settings.json")); }
    std::string FileBytes() const { return test::ReadBytes(scratch.File("tolmo.settings.json")); }
    void WriteFile(std::string_view bytes) const { test::WriteBytes(scratch.File("tolmo.settings.json"), bytes); }

    AppSettings Stamped() const
    {
        AppSettings settings;
        settings.appVersion = u"v2.00";
        return settings;
    }

    test::ScratchFolder scratch;
    Localizer localizer{u"", [] { return std::vector<std::u16string>{}; }};
};

TEST_F(SettingsStartupTest, AMissingFileIsCreatedWithTheDefaults)
{
    const SettingsStartup startup = LoadOrCreateSettings(SettingsPath(), localizer);

    EXPECT_FALSE(startup.loaded);
    EXPECT_TRUE(startup.wrote);
    EXPECT_EQ(startup.settings, Stamped());
    EXPECT_EQ(FileBytes(), SerializeSettings(Stamped()));
    EXPECT_EQ(localizer.LanguageSetting(), u"system");
}

TEST_F(SettingsStartupTest, AnEmptyFileIsReplacedByTheDefaults)
{
    WriteFile("");
    const SettingsStartup startup = LoadOrCreateSettings(SettingsPath(), localizer);
    EXPECT_FALSE(startup.loaded);
    EXPECT_TRUE(startup.wrote);
    EXPECT_EQ(FileBytes(), SerializeSettings(Stamped()));
}

TEST_F(SettingsStartupTest, AnUnreadableFileIsReplacedByTheDefaults)
{
    // A folder where the file should be cannot be read as one; the write that follows fails too, and
    // the program goes on with the defaults.
    fs::create_directory(scratch.File("tolmo.settings.json"));
    const SettingsStartup startup = LoadOrCreateSettings(SettingsPath(), localizer);
    EXPECT_FALSE(startup.loaded);
    EXPECT_FALSE(startup.wrote);
    EXPECT_EQ(startup.settings, Stamped());
    EXPECT_EQ(startup.error, u"Failed to open settings file for writing: " + SettingsPath());
}

TEST_F(SettingsStartupTest, AFileThatReadsIsTakenAndItsLanguageGivenToTheLocalizer)
{
    AppSettings stored = Stamped();
    stored.language = u"it-IT";
    stored.theme = Theme::Light;
    stored.recentFiles = {u"/x.bin"};
    const std::string text = SerializeSettings(stored);
    WriteFile(text);

    const SettingsStartup startup = LoadOrCreateSettings(SettingsPath(), localizer);

    EXPECT_TRUE(startup.loaded);
    EXPECT_FALSE(startup.wrote);
    EXPECT_EQ(startup.settings, stored);
    EXPECT_EQ(localizer.LanguageSetting(), u"it-IT");
    EXPECT_EQ(FileBytes(), text);
}

TEST_F(SettingsStartupTest, FontSizeZeroOpensWithTwelveAndIsNotRewrittenForThatAlone)
{
    AppSettings stored = Stamped();
    stored.fontSize = 0.0f;
    const std::string text = SerializeSettings(stored);
    ASSERT_NE(text.find("\"size\": 0,"), std::string::npos);
    WriteFile(text);

    const SettingsStartup startup = LoadOrCreateSettings(SettingsPath(), localizer);

    EXPECT_TRUE(startup.loaded);
    EXPECT_EQ(startup.settings.fontSize, 12.0f);
    EXPECT_FALSE(startup.wrote);
    EXPECT_EQ(FileBytes(), text);
}

TEST_F(SettingsStartupTest, AnEmptyFontFamilyOpensWithConsolas)
{
    AppSettings stored = Stamped();
    stored.fontFamily.clear();
    WriteFile(SerializeSettings(stored));
    const SettingsStartup startup = LoadOrCreateSettings(SettingsPath(), localizer);
    EXPECT_EQ(startup.settings.fontFamily, u"Consolas");
    EXPECT_FALSE(startup.wrote);
}

TEST_F(SettingsStartupTest, AnotherVersionIsRewrittenWithV200)
{
    AppSettings stored = Stamped();
    stored.appVersion = u"v1.07";
    stored.theme = Theme::Black;
    WriteFile(SerializeSettings(stored));

    const SettingsStartup startup = LoadOrCreateSettings(SettingsPath(), localizer);

    EXPECT_TRUE(startup.loaded);
    EXPECT_TRUE(startup.wrote);
    EXPECT_EQ(startup.settings.appVersion, u"v2.00");
    AppSettings expected = stored;
    expected.appVersion = u"v2.00";
    EXPECT_EQ(FileBytes(), SerializeSettings(expected));
}

TEST_F(SettingsStartupTest, AFileWithoutAVersionIsRewrittenWithV200)
{
    WriteFile(R"({"theme": "Light"})");
    const SettingsStartup startup = LoadOrCreateSettings(SettingsPath(), localizer);
    EXPECT_TRUE(startup.wrote);
    AppSettings expected = Stamped();
    expected.theme = Theme::Light;
    EXPECT_EQ(FileBytes(), SerializeSettings(expected));
}

TEST_F(SettingsStartupTest, SaveStampsTheVersionAndWritesTheWholeFile)
{
    AppSettings settings;
    settings.appVersion = u"old";
    settings.fontSize = 16.0f;
    ASSERT_TRUE(SaveSettings(settings, SettingsPath()));
    EXPECT_EQ(settings.appVersion, u"v2.00");
    EXPECT_EQ(FileBytes(), SerializeSettings(settings));
}

TEST_F(SettingsStartupTest, SaveReplacesALongerFileWhole)
{
    WriteFile(std::string(10000, 'x'));
    AppSettings settings;
    ASSERT_TRUE(SaveSettings(settings, SettingsPath()));
    EXPECT_EQ(FileBytes(), SerializeSettings(settings));
}

TEST_F(SettingsStartupTest, AFailedSaveIsSilentAndLeavesItsTextForNoOne)
{
    AppSettings settings;
    const std::u16string path = test::PathText(scratch.File("missing") / "folder" / "tolmo.settings.json");
    std::u16string error;
    EXPECT_FALSE(SaveSettings(settings, path, &error));
    EXPECT_EQ(error, u"Failed to open settings file for writing: " + path);
    EXPECT_FALSE(SaveSettings(settings, path));
    EXPECT_TRUE(fs::is_empty(scratch.Path()));
}

} // namespace
} // namespace tlm
