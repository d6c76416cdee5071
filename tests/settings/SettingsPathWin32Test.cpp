#include "settings/ExecutableFolder.h"
#include "settings/SettingsPath.h"
#include "settings/SystemLanguages.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tlm {
namespace {

namespace fs = std::filesystem;

TEST(SettingsPathWin32, ExecutableFolderHoldsThisProgram)
{
    std::u16string error;
    const auto folder = ExecutableFolder(error);
    ASSERT_TRUE(folder.has_value());
    EXPECT_TRUE(fs::exists(fs::path(*folder) / "tolmo_settings_tests.exe"));
}

TEST(SettingsPathWin32, CurrentFolderIsKnown)
{
    const auto folder = CurrentFolder();
    ASSERT_TRUE(folder.has_value());
    EXPECT_TRUE(fs::equivalent(fs::path(*folder), fs::current_path()));
}

TEST(SettingsPathWin32, AnUnpackagedProgramKeepsItsSettingsInLocalAppDataTolmo)
{
    const std::u16string path = ResolveSettingsPath();
    EXPECT_TRUE(path.ends_with(u"\\Tolmo\\tolmo.settings.json")) << fs::path(path).string();
    EXPECT_TRUE(fs::is_directory(fs::path(path).parent_path()));
}

TEST(SettingsPathWin32, PreferredLanguagesAreTags)
{
    const std::vector<std::u16string> tags = PreferredUiLanguages();
    ASSERT_FALSE(tags.empty());
    for (const std::u16string& tag : tags)
        EXPECT_FALSE(tag.empty());
}

} // namespace
} // namespace tlm
