#pragma once

#include "inspector/InspectorRequest.h"

#include <string>
#include <vector>

namespace tlm {

// The twelve values of the inspector, in the order of its rows: binary, the unsigned integers of 8 to
// 64 bits in both byte orders, the character as UTF-8, UTF-16 LE and BE, and in the current encoding.
// What cannot be shown is `unavailableText`.
std::vector<std::u16string> BuildInspectorRows(const InspectorRequest& request, const std::u16string& unavailableText);

} // namespace tlm
