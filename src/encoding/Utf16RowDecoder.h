#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tlm {

// The UTF-16 text column of a row from its own bytes: rows start at even offsets and so, it is assumed,
// do the code units. Each unit shows in the cell of its first byte; the second byte's cell stays empty.
std::vector<std::u16string> DecodeUtf16Row(std::span<const std::uint8_t> rowBytes, bool bigEndian);

} // namespace tlm
