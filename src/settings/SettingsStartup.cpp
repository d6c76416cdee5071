#include "settings/SettingsStartup.h"

#include "settings/Localizer.h"
#include "settings/SettingsFile.h"
#include "settings/SettingsReader.h"
#include "document/WholeFile.h"

#include <system_error>

namespace tlm {

namespace {

std::u16string Widen(const std::string& text)
{
    return std::u16string(text.begin(), text.end());
}

// Whether the file exists; nothing when the system cannot tell, with the reason in `error`.
std::optional<bool> SettingsFileExists(const std::u16string& path, std::u16string& error)
{
    const auto file = PathFromText(path);
    if (!file) {
        error = u"exists: the settings path cannot name a file: " + path;
        return std::nullopt;
    }
    std::error_code code;
    const bool exists = std::filesystem::exists(*file, code);
    if (code) {
        error = u"exists: " + Widen(code.message()) + u": " + path;
        return std::nullopt;
    }
    return exists;
}

} // namespace

SettingsStartup LoadOrCreateSettings(const std::u16string& path, Localizer& localizer)
{
    SettingsStartup startup;
    AppSettings& settings = startup.settings;
    const std::optional<bool> exists = SettingsFileExists(path, startup.error);
    if (!exists) {
        ResetSettings(settings, SettingsVersion, SystemLanguageSetting);
        localizer.SetLanguage(settings.language);
        return startup;
    }
    if (*exists && LoadSettings(path, settings)) {
        startup.loaded = true;
        if (settings.fontFamily.empty())
            settings.fontFamily = std::u16string(DefaultFontFamily);
        if (!(settings.fontSize > 0.0f))
            settings.fontSize = DefaultFontSize;
        localizer.SetLanguage(settings.language);
        if (settings.appVersion != SettingsVersion)
            startup.wrote = SaveSettings(settings, path, &startup.error);
        return startup;
    }
    ResetSettings(settings, SettingsVersion, SystemLanguageSetting);
    localizer.SetLanguage(settings.language);
    startup.wrote = SaveSettings(settings, path, &startup.error);
    return startup;
}

} // namespace tlm
