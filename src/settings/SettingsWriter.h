#pragma once

#include "settings/AppSettings.h"

#include <string>
#include <string_view>

namespace tlm {

// '"' and '\' get a backslash; bytes 8, 9, 10, 12 and 13 become \b \t \n \f \r; other bytes below 32
// become \u and four upper-case hexadecimal digits; every other byte passes as it is.
std::string EscapeJsonString(std::string_view bytes);

// The font size as a default stream prints a float: six significant digits, classic locale.
std::string FormatFontSize(float size);

// The settings file's text: a fixed template, two blanks per level, every line ended by CR LF.
std::string SerializeSettings(const AppSettings& settings);

} // namespace tlm
