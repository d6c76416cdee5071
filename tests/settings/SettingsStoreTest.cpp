#include "settings/Localizer.h"
#include "settings/SettingsReader.h"
#include "settings/SettingsStore.h"
#include "settings/SettingsWriter.h"

#include "ScratchFolder.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

class SettingsStoreTest : public ::testing::Test {
protected:
    std::u16string FilePath() const { return test::PathText(scratch.File("tolmo.settings.json")); }
    AppSettings FileContent() const
    {
        AppSettings read;
        EXPECT_TRUE(LoadSettings(FilePath(), read));
        return read;
    }

    test::ScratchFolder scratch;
    Localizer localizer{u"", [] { return std::vector<std::u16string>{}; }};
};

TEST_F(SettingsStoreTest, StartUpCreatesTheFileAndGivesTheLanguage)
{
    SettingsStore store(FilePath());
    EXPECT_TRUE(store.LoadOrCreate(localizer));
    EXPECT_EQ(store.Settings().appVersion, u"v2.00");
    EXPECT_EQ(FileContent(), store.Settings());
    EXPECT_EQ(localizer.LanguageSetting(), u"system");
}

TEST_F(SettingsStoreTest, StartUpKeepsAStoredRecord)
{
    AppSettings stored;
    stored.appVersion = u"v2.00";
    stored.language = u"ja-JP";
    stored.encoding = TextEncoding::ShiftJis;
    test::WriteBytes(scratch.File("tolmo.settings.json"), SerializeSettings(stored));
    SettingsStore store(FilePath());
    EXPECT_FALSE(store.LoadOrCreate(localizer));
    EXPECT_EQ(store.Settings(), stored);
    EXPECT_EQ(localizer.LanguageSetting(), u"ja-JP");
}

TEST_F(SettingsStoreTest, AChangedValueIsWrittenBySave)
{
    SettingsStore store(FilePath());
    store.Settings().theme = Theme::Black;
    ASSERT_TRUE(store.Save());
    EXPECT_EQ(FileContent().theme, Theme::Black);
    EXPECT_EQ(FileContent().appVersion, u"v2.00");
}

TEST_F(SettingsStoreTest, OpeningAFileRemembersItAtOnce)
{
    SettingsStore store(FilePath());
    ASSERT_TRUE(store.AddRecentFile(u"/data/a.bin"));
    EXPECT_EQ(FileContent().recentFiles, std::vector<std::u16string>{u"/data/a.bin"});
}

TEST_F(SettingsStoreTest, ASearchIsRememberedAtOnce)
{
    SettingsStore store(FilePath());
    ASSERT_TRUE(store.AddSearchHistory(u"hex", u"CA FE"));
    EXPECT_EQ(FileContent().searchHistory, (std::vector<SearchHistoryEntry>{{u"hex", u"CA FE"}}));
}

TEST_F(SettingsStoreTest, IgnoredEntriesWriteNothing)
{
    SettingsStore store(FilePath());
    EXPECT_FALSE(store.AddRecentFile(u""));
    EXPECT_FALSE(store.AddSearchHistory(u"text", u""));
    EXPECT_FALSE(std::filesystem::exists(scratch.File("tolmo.settings.json")));
}

TEST_F(SettingsStoreTest, AFailedSaveIsKeptAsTheLastErrorAndTheRecordStays)
{
    const std::u16string path = test::PathText(scratch.File("missing") / "tolmo.settings.json");
    SettingsStore store(path);
    EXPECT_FALSE(store.AddRecentFile(u"/data/a.bin"));
    EXPECT_EQ(store.Settings().recentFiles, std::vector<std::u16string>{u"/data/a.bin"});
    EXPECT_EQ(store.LastError(), u"Failed to open settings file for writing: " + path);
}

TEST_F(SettingsStoreTest, ASuccessfulSaveClearsTheLastError)
{
    std::filesystem::create_directory(scratch.File("later"));
    const std::u16string path = test::PathText(scratch.File("later") / "sub" / "tolmo.settings.json");
    SettingsStore store(path);
    EXPECT_FALSE(store.Save());
    EXPECT_FALSE(store.LastError().empty());
    std::filesystem::create_directory(scratch.File("later") / "sub");
    EXPECT_TRUE(store.Save());
    EXPECT_TRUE(store.LastError().empty());
}

} // namespace
} // namespace tlm
