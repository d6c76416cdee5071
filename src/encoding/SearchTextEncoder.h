#pragma once

#include "encoding/TextEncoding.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tlm {

// The bytes of a text query in `encoding`. Nothing when the query is empty, the encoding unknown,
// or a character has no exact form in the encoding: a query is never approximated.
std::optional<std::vector<std::uint8_t>> EncodeSearchText(std::u16string_view query, TextEncoding encoding);

} // namespace tlm
