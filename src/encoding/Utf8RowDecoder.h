#pragma once

#include "encoding/RowDecodeBuffer.h"

#include <string>
#include <vector>

namespace tlm {

// How far around a row UTF-8 decoding reads: a character is at most four bytes.
inline constexpr std::uint64_t Utf8LookBack = 3;
inline constexpr std::uint64_t Utf8LookAhead = 3;

// The UTF-8 text column of the row in `buffer`, walking from the buffer's start. A combining mark joins
// the last base character in the row; one with no base there gets a cell of its own.
std::vector<std::u16string> DecodeUtf8Row(const RowDecodeBuffer& buffer);

} // namespace tlm
