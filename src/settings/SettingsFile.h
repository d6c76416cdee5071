#pragma once

#include "settings/AppSettings.h"

#include <string>

namespace tlm {

inline constexpr std::u16string_view SettingsFileName = u"tolmo.settings.json";

// Stamps the current version into `settings` and writes the whole file, replacing the old one in one
// step. A failure is not shown to anyone: it answers false and, when asked, leaves its text in `error`.
bool SaveSettings(AppSettings& settings, const std::u16string& path, std::u16string* error = nullptr);

} // namespace tlm
