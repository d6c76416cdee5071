#pragma once

#include "encoding/RowDecodeBuffer.h"
#include "encoding/RowTextDecoder.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tlm {

// Shift_JIS looks back one byte only: enough when a row starts on the trail byte of a pair.
inline constexpr std::uint64_t ShiftJisLookBack = 1;
inline constexpr std::uint64_t ShiftJisLookAhead = 1;

bool IsShiftJisTrailByte(std::uint8_t byte);

// The character at the start of `bytes`. A single byte of 0x80 or above is allowed: the half-width
// katakana live there.
std::optional<DecodedCharacter> DecodeShiftJisCharacter(std::span<const std::uint8_t> bytes);

// The Shift_JIS text column of the row in `buffer`, walking from the buffer's start.
std::vector<std::u16string> DecodeShiftJisRow(const RowDecodeBuffer& buffer);

} // namespace tlm
