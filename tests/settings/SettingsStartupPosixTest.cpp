#include "settings/Localizer.h"
#include "settings/SettingsStartup.h"

#include "ScratchFolder.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

namespace fs = std::filesystem;

TEST(SettingsStartupPosix, WhenTheFileCannotBeTestedTheDefaultsServeAndNothingIsWritten)
{
    // A symbolic link to itself makes every path through it fail with "too many levels of links".
    test::ScratchFolder scratch;
    fs::create_symlink("loop", scratch.File("loop"));
    const std::u16string path = test::PathText(scratch.File("loop") / "tolmo.settings.json");
    Localizer localizer{u"", [] { return std::vector<std::u16string>{}; }};

    const SettingsStartup startup = LoadOrCreateSettings(path, localizer);

    AppSettings defaults;
    defaults.appVersion = u"v2.00";
    EXPECT_FALSE(startup.loaded);
    EXPECT_FALSE(startup.wrote);
    EXPECT_EQ(startup.settings, defaults);
    EXPECT_TRUE(startup.error.starts_with(u"exists: "));
    EXPECT_EQ(localizer.LanguageSetting(), u"system");
    std::vector<fs::path> entries(fs::directory_iterator(scratch.Path()), fs::directory_iterator{});
    EXPECT_EQ(entries.size(), 1u);
}

} // namespace
} // namespace tlm
