#include "settings/SettingsStore.h"

#include "settings/SettingsFile.h"
#include "settings/SettingsStartup.h"

namespace tlm {

bool SettingsStore::LoadOrCreate(Localizer& localizer)
{
    SettingsStartup startup = LoadOrCreateSettings(path, localizer);
    settings = std::move(startup.settings);
    lastError = std::move(startup.error);
    return startup.wrote;
}

bool SettingsStore::Save()
{
    std::u16string error;
    if (SaveSettings(settings, path, &error)) {
        lastError.clear();
        return true;
    }
    lastError = std::move(error);
    return false;
}

bool SettingsStore::AddRecentFile(std::u16string_view file)
{
    return tlm::AddRecentFile(settings, file) && Save();
}

bool SettingsStore::AddSearchHistory(std::u16string_view kind, std::u16string_view query)
{
    return tlm::AddSearchHistory(settings, kind, query) && Save();
}

} // namespace tlm
