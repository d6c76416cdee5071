#include "app/CommandId.h"

#include "settings/Localizer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

namespace tlm {
namespace {

TEST(CommandId, FixedCommandsRunFrom1001To1033)
{
    EXPECT_EQ(ToNumber(CommandId::FileOpen), 1001u);
    EXPECT_EQ(ToNumber(CommandId::ViewEncodingIndicIsciiDevanagari), 1018u);
    EXPECT_EQ(ToNumber(CommandId::SettingsAnalysisStructView), 1031u);
    EXPECT_EQ(ToNumber(CommandId::HelpAbout), 1033u);
    EXPECT_FALSE(IsFixedCommand(1000));
    EXPECT_TRUE(IsFixedCommand(1001));
    EXPECT_TRUE(IsFixedCommand(1033));
    EXPECT_FALSE(IsFixedCommand(1034));
}

TEST(CommandId, FixedCommandsHaveTheirNamesAndMenuKeys)
{
    EXPECT_EQ(CommandName(CommandId::FileOpen), u"FileOpen");
    EXPECT_EQ(CommandMenuKey(CommandId::FileOpen), "menu.file.open");
    EXPECT_EQ(CommandName(CommandId::EditReadOnly), u"EditReadOnly");
    EXPECT_EQ(CommandMenuKey(CommandId::EditReadOnly), "menu.edit.readonly");
    EXPECT_EQ(CommandName(CommandId::ViewEncodingVietnameseWindows1258), u"ViewEncodingVietnameseWindows1258");
    EXPECT_EQ(CommandMenuKey(CommandId::ViewEncodingIndicIsciiDevanagari), "menu.view.encoding.iscii_devanagari");
    EXPECT_EQ(CommandName(CommandId::ViewEncodingClearFavorites), u"ViewEncodingClearFavorites");
    EXPECT_EQ(CommandMenuKey(CommandId::ViewEncodingAddFavorite), "menu.view.encoding.favorite.add_current");
    EXPECT_EQ(CommandName(CommandId::ViewThemeCoolSlate), u"ViewThemeCoolSlate");
    EXPECT_EQ(CommandMenuKey(CommandId::ViewZoomReset), "menu.view.zoom.reset");
    EXPECT_EQ(CommandName(CommandId::SettingsAnalysisDataInspector), u"SettingsAnalysisDataInspector");
    EXPECT_EQ(CommandMenuKey(CommandId::SettingsAnalysisStructView), "menu.settings.analysis.struct_view");
    EXPECT_EQ(CommandName(CommandId::FileExit), u"FileExit");
    EXPECT_EQ(CommandMenuKey(CommandId::HelpAbout), "menu.help.about");
}

TEST(CommandId, NumbersOutsideTheFixedCommandsHaveNoNameOrKey)
{
    EXPECT_TRUE(CommandName(static_cast<CommandId>(1000)).empty());
    EXPECT_TRUE(CommandMenuKey(static_cast<CommandId>(1034)).empty());
    EXPECT_TRUE(CommandMenuKey(static_cast<CommandId>(4000)).empty());
}

TEST(CommandId, EveryFixedCommandHasADistinctNameAndKey)
{
    std::set<std::u16string> names;
    std::set<std::string> keys;
    for (std::uint32_t id = 1001; id <= 1033; ++id) {
        names.emplace(CommandName(static_cast<CommandId>(id)));
        keys.emplace(CommandMenuKey(static_cast<CommandId>(id)));
    }
    EXPECT_EQ(names.size(), 33u);
    EXPECT_EQ(keys.size(), 33u);
    EXPECT_FALSE(names.contains(u""));
    EXPECT_FALSE(keys.contains(""));
}

TEST(CommandId, EveryMenuKeyHasAnEnglishText)
{
    Localizer localizer(std::filesystem::path(TOLMO_SOURCE_DIR).u16string());
    localizer.SetLanguage(u"en-US");
    for (std::uint32_t id = 1001; id <= 1033; ++id) {
        const std::string_view key = CommandMenuKey(static_cast<CommandId>(id));
        EXPECT_NE(localizer.Tr(key), std::u16string(key.begin(), key.end())) << key;
    }
}

TEST(CommandIdRange, TheThreeRangesHaveTheirBasesAndCounts)
{
    EXPECT_EQ(RecentFileCommands.base, 4000);
    EXPECT_EQ(RecentFileCommands.count_, 16);
    EXPECT_EQ(FavoriteCommands.base, 1200);
    EXPECT_EQ(FavoriteCommands.count_, 3);
    EXPECT_EQ(LanguageCommands.base, 1300);
    EXPECT_EQ(LanguageCommands.count_, 16);
}

TEST(CommandIdRange, AtAddsTheIndexToTheBase)
{
    EXPECT_EQ(RecentFileCommands.At(0), 4000u);
    EXPECT_EQ(RecentFileCommands.At(15), 4015u);
    EXPECT_EQ(FavoriteCommands.At(2), 1202u);
    EXPECT_EQ(LanguageCommands.At(9), 1309u);
}

TEST(CommandIdRange, ContainsExactlyItsNumbers)
{
    EXPECT_FALSE(FavoriteCommands.Contains(1199));
    EXPECT_TRUE(FavoriteCommands.Contains(1200));
    EXPECT_TRUE(FavoriteCommands.Contains(1202));
    EXPECT_FALSE(FavoriteCommands.Contains(1203));
    EXPECT_TRUE(RecentFileCommands.Contains(4015));
    EXPECT_FALSE(RecentFileCommands.Contains(4016));
    EXPECT_FALSE(LanguageCommands.Contains(1033));
}

TEST(CommandIdRange, IndexOfGivesBackTheIndex)
{
    EXPECT_EQ(RecentFileCommands.IndexOf(4007), 7u);
    EXPECT_EQ(LanguageCommands.IndexOf(1300), 0u);
    EXPECT_EQ(LanguageCommands.IndexOf(1315), 15u);
    EXPECT_EQ(FavoriteCommands.IndexOf(FavoriteCommands.At(2)), 2u);
}

TEST(CommandIdRangeDeathTest, AtWithAnIndexNotBelowTheCountStopsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(static_cast<void>(FavoriteCommands.At(3)), "index < count_");
    EXPECT_DEATH(static_cast<void>(RecentFileCommands.At(16)), "index < count_");
    EXPECT_DEATH(static_cast<void>(CommandIdRange{10, 0}.At(0)), "index < count_");
}

TEST(CommandId, DynamicCommandsAreNamedByTheirIndex)
{
    EXPECT_EQ(RecentFileCommandName(0), u"FileRecent0");
    EXPECT_EQ(RecentFileCommandName(15), u"FileRecent15");
    EXPECT_EQ(FavoriteCommandName(2), u"EncodingFavorite2");
    EXPECT_EQ(LanguageCommandName(0), u"LanguageSystem");
    EXPECT_EQ(LanguageCommandName(1), u"Language1");
    EXPECT_EQ(LanguageCommandName(15), u"Language15");
}

} // namespace
} // namespace tlm
