#include "settings/AppSettings.h"

#include <gtest/gtest.h>

#include <string>

namespace tlm {
namespace {

std::u16string NumberedPath(int number)
{
    std::u16string path = u"/data/file";
    for (char c : std::to_string(number))
        path.push_back(static_cast<char16_t>(c));
    return path + u".bin";
}

TEST(AppSettings, DefaultsAreTheDocumentedOnes)
{
    const AppSettings settings;
    EXPECT_TRUE(settings.dataInspectorVisible);
    EXPECT_FALSE(settings.structViewVisible);
    EXPECT_EQ(settings.byteArrayFormat, ByteArrayFormat::Hex);
    EXPECT_EQ(settings.endian, StructEndian::Little);
    EXPECT_EQ(settings.numericBase, NumericBase::Hex);
    EXPECT_EQ(settings.appVersion, u"");
    EXPECT_EQ(settings.encoding, TextEncoding::Ascii);
    EXPECT_TRUE(settings.encodingFavorites.empty());
    EXPECT_EQ(settings.theme, Theme::CoolSlate);
    EXPECT_EQ(settings.language, u"system");
    EXPECT_EQ(settings.fontFamily, u"Consolas");
    EXPECT_EQ(settings.fontSize, 12.0f);
    EXPECT_FALSE(settings.fontBold);
    EXPECT_FALSE(settings.fontItalic);
    EXPECT_TRUE(settings.recentFiles.empty());
    EXPECT_TRUE(settings.searchHistory.empty());
}

TEST(AppSettings, EnumeratorsHaveTheirStoredNumbers)
{
    EXPECT_EQ(static_cast<std::uint32_t>(Theme::Light), 0u);
    EXPECT_EQ(static_cast<std::uint32_t>(Theme::CoolSlate), 1u);
    EXPECT_EQ(static_cast<std::uint32_t>(Theme::DarkBlue), 2u);
    EXPECT_EQ(static_cast<std::uint32_t>(Theme::Black), 3u);
    EXPECT_EQ(static_cast<std::uint32_t>(ByteArrayFormat::Ascii), 1u);
    EXPECT_EQ(static_cast<std::uint32_t>(StructEndian::Big), 1u);
    EXPECT_EQ(static_cast<std::uint32_t>(NumericBase::Dec), 1u);
}

TEST(AppSettings, ResetRestoresEveryDefaultWithTheGivenVersionAndNormalisedLanguage)
{
    AppSettings settings;
    settings.dataInspectorVisible = false;
    settings.structViewVisible = true;
    settings.byteArrayFormat = ByteArrayFormat::Ascii;
    settings.endian = StructEndian::Big;
    settings.numericBase = NumericBase::Dec;
    settings.encoding = TextEncoding::Big5;
    settings.encodingFavorites = {TextEncoding::Utf8};
    settings.theme = Theme::Black;
    settings.fontFamily = u"Courier New";
    settings.fontSize = 20.0f;
    settings.fontBold = true;
    settings.fontItalic = true;
    settings.recentFiles = {u"a"};
    settings.searchHistory = {{u"text", u"b"}};

    ResetSettings(settings, u"v2.00", u"de");

    AppSettings expected;
    expected.appVersion = u"v2.00";
    expected.language = u"de-DE";
    EXPECT_EQ(settings, expected);
}

TEST(AppSettings, ResetWithAnUnknownLanguageGivesSystem)
{
    AppSettings settings;
    ResetSettings(settings, u"v2.00", u"Klingon");
    EXPECT_EQ(settings.language, u"system");
}

TEST(AppSettings, SeventeenthRecentFilePushesOutTheOldest)
{
    AppSettings settings;
    for (int number = 1; number <= 16; ++number)
        ASSERT_TRUE(AddRecentFile(settings, NumberedPath(number)));
    ASSERT_EQ(settings.recentFiles.size(), 16u);
    EXPECT_EQ(settings.recentFiles.back(), NumberedPath(1));

    ASSERT_TRUE(AddRecentFile(settings, NumberedPath(17)));

    ASSERT_EQ(settings.recentFiles.size(), 16u);
    EXPECT_EQ(settings.recentFiles.front(), NumberedPath(17));
    EXPECT_EQ(settings.recentFiles.back(), NumberedPath(2));
}

TEST(AppSettings, OpeningARecentFileAgainMovesItToTheFrontWithoutADuplicate)
{
    AppSettings settings;
    AddRecentFile(settings, u"/data/a.bin");
    AddRecentFile(settings, u"/data/b.bin");
    AddRecentFile(settings, u"/data/c.bin");

    ASSERT_TRUE(AddRecentFile(settings, u"/data/a.bin"));

    EXPECT_EQ(settings.recentFiles, (std::vector<std::u16string>{u"/data/a.bin", u"/data/c.bin", u"/data/b.bin"}));
}

TEST(AppSettings, ARecentFileSpelledDifferentlyStillReplacesItsEntry)
{
    AppSettings settings;
    AddRecentFile(settings, u"/data/a.bin");
    AddRecentFile(settings, u"/data/b.bin");
    AddRecentFile(settings, u"/data/./x/../a.bin");
    EXPECT_EQ(settings.recentFiles, (std::vector<std::u16string>{u"/data/./x/../a.bin", u"/data/b.bin"}));
}

TEST(AppSettings, AnEmptyRecentFileIsIgnored)
{
    AppSettings settings;
    AddRecentFile(settings, u"/data/a.bin");
    EXPECT_FALSE(AddRecentFile(settings, u""));
    EXPECT_EQ(settings.recentFiles, std::vector<std::u16string>{u"/data/a.bin"});
}

TEST(AppSettings, SearchHistoryPutsTheNewestFirstWithoutDuplicates)
{
    AppSettings settings;
    AddSearchHistory(settings, u"text", u"alpha");
    AddSearchHistory(settings, u"hex", u"00 FF");
    ASSERT_TRUE(AddSearchHistory(settings, u"text", u"alpha"));
    EXPECT_EQ(settings.searchHistory,
        (std::vector<SearchHistoryEntry>{{u"text", u"alpha"}, {u"hex", u"00 FF"}}));
}

TEST(AppSettings, SearchHistoryKeepsTheSameQueryOfAnotherKind)
{
    AppSettings settings;
    AddSearchHistory(settings, u"text", u"41");
    AddSearchHistory(settings, u"hex", u"41");
    EXPECT_EQ(settings.searchHistory, (std::vector<SearchHistoryEntry>{{u"hex", u"41"}, {u"text", u"41"}}));
}

TEST(AppSettings, SearchHistoryKeepsSixteen)
{
    AppSettings settings;
    for (int number = 1; number <= 20; ++number)
        AddSearchHistory(settings, u"text", NumberedPath(number));
    ASSERT_EQ(settings.searchHistory.size(), 16u);
    EXPECT_EQ(settings.searchHistory.front().query, NumberedPath(20));
    EXPECT_EQ(settings.searchHistory.back().query, NumberedPath(5));
}

TEST(AppSettings, SearchHistoryIgnoresAnEmptyKindOrQuery)
{
    AppSettings settings;
    EXPECT_FALSE(AddSearchHistory(settings, u"", u"alpha"));
    EXPECT_FALSE(AddSearchHistory(settings, u"text", u""));
    EXPECT_TRUE(settings.searchHistory.empty());
}

} // namespace
} // namespace tlm
