#include "settings/ExecutableFolder.h"
#include "settings/SettingsPath.h"
#include "settings/SystemLanguages.h"

#include "ScratchFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace tlm {
namespace {

namespace fs = std::filesystem;

// Sets an environment variable for one test and puts the old value back.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const char* value) : name(name)
    {
        if (const char* old = std::getenv(name))
            previous = old;
        if (value)
            ::setenv(name, value, 1);
        else
            ::unsetenv(name);
    }
    ~ScopedVariable()
    {
        if (previous)
            ::setenv(name, previous->c_str(), 1);
        else
            ::unsetenv(name);
    }

private:
    const char* name;
    std::optional<std::string> previous;
};

TEST(SettingsPathPosix, ExecutableFolderHoldsThisProgram)
{
    std::u16string error;
    const auto folder = ExecutableFolder(error);
    ASSERT_TRUE(folder.has_value());
    EXPECT_TRUE(fs::exists(fs::path(*folder) / "tolmo_settings_tests"));
}

TEST(SettingsPathPosix, SettingsGoUnderXdgConfigHome)
{
    test::ScratchFolder scratch;
    const std::string config = (scratch.Path() / "config").string();
    ScopedVariable variable("XDG_CONFIG_HOME", config.c_str());

    EXPECT_EQ(ResolveSettingsPath(), test::PathText(scratch.Path() / "config" / "tolmo" / "tolmo.settings.json"));
}

TEST(SettingsPathPosix, SettingsGoUnderHomeWithoutXdgConfigHome)
{
    test::ScratchFolder scratch;
    const std::string home = scratch.Path().string();
    ScopedVariable noConfig("XDG_CONFIG_HOME", nullptr);
    ScopedVariable variable("HOME", home.c_str());

    EXPECT_EQ(ResolveSettingsPath(), test::PathText(scratch.Path() / ".config" / "tolmo" / "tolmo.settings.json"));
}

TEST(SettingsPathPosix, PreferredLanguagesComeFromTheLocaleVariables)
{
    ScopedVariable language("LANGUAGE", "pt_BR:de");
    ScopedVariable all("LC_ALL", nullptr);
    ScopedVariable messages("LC_MESSAGES", "fr_FR.UTF-8");
    ScopedVariable lang("LANG", "C.UTF-8");

    EXPECT_EQ(PreferredUiLanguages(), (std::vector<std::u16string>{u"pt-BR", u"de", u"fr-FR"}));
}

} // namespace
} // namespace tlm
