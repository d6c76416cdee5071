#pragma once

#include "settings/AppSettings.h"

#include <string>
#include <string_view>

namespace tlm {

class Localizer;

// The application's settings together with the file they live in: every change that the program
// remembers goes through here and is written at once.
class SettingsStore {
public:
    SettingsStore() = default;
    explicit SettingsStore(std::u16string path) : path(std::move(path)) {}

    const std::u16string& Path() const { return path; }
    AppSettings& Settings() { return settings; }
    const AppSettings& Settings() const { return settings; }

    // Start-up: reads the file or writes the defaults (see LoadOrCreateSettings). Answers whether the
    // file was written.
    bool LoadOrCreate(Localizer& localizer);

    // Writes the whole record with the current version. A failure is kept in LastError and nothing
    // else happens: the program never stops for its settings.
    bool Save();

    // The record's list operations followed by a save; each answers whether the file was written. An
    // empty path, kind or query changes and writes nothing.
    bool AddRecentFile(std::u16string_view file);
    bool AddSearchHistory(std::u16string_view kind, std::u16string_view query);

    const std::u16string& LastError() const { return lastError; }

private:
    std::u16string path;
    AppSettings settings;
    std::u16string lastError;
};

} // namespace tlm
