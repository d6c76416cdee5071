#include "settings/SettingsFile.h"

#include "settings/SettingsWriter.h"
#include "document/WholeFile.h"

namespace tlm {

bool SaveSettings(AppSettings& settings, const std::u16string& path, std::u16string* error)
{
    settings.appVersion = std::u16string(SettingsVersion);
    if (ReplaceWholeFile(path, SerializeSettings(settings)))
        return true;
    if (error)
        *error = u"Failed to open settings file for writing: " + path;
    return false;
}

} // namespace tlm
