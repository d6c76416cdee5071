#pragma once

#include <span>
#include <string_view>

namespace tlm {

// Every key the program asks the Localizer for. This list is the one place that names them: the
// language files are checked against it, so a key added to the program is added here first.
std::span<const std::string_view> AllStringKeys();

bool IsStringKey(std::string_view key);

} // namespace tlm
