#pragma once

#include "encoding/TextEncoding.h"

#include <optional>
#include <string_view>

namespace tlm {

// An encoding named on the command line by any of its display names or aliases, in any spelling that
// normalises to one. Unlike the settings file, an unknown name is refused rather than taken as ASCII.
std::optional<TextEncoding> ParseCliEncoding(std::string_view name);

} // namespace tlm
