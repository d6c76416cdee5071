#pragma once

#include "settings/AppSettings.h"

#include <string>

namespace tlm {

class Localizer;

// What start-up learns about the settings.
struct SettingsStartup {
    AppSettings settings;
    bool loaded = false;    // the file existed and was read
    bool wrote = false;     // the file was (re)written
    std::u16string error;   // why something failed; shown to no one
};

// Reads the settings at start-up and hands their language to `localizer`. A file that reads gets the
// font defaults for an empty family or a size not above zero, and is rewritten only when it carries
// another version. A missing or unreadable file is replaced by the defaults at once. When even the test
// for the file fails, the program runs on the defaults and leaves the file alone.
SettingsStartup LoadOrCreateSettings(const std::u16string& path, Localizer& localizer);

} // namespace tlm
