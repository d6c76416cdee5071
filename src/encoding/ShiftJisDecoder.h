#pragma once

#include "encoding/DoubleByteDecoder.h"
#include "encoding/RowDecodeBuffer.h"
#include "encoding/RowTextDecoder.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tlm {

// A Shift_JIS row is read as far around itself as the other double-byte encodings: a trail byte of
// Shift_JIS is often also a lead byte, so the byte in front of a row does not tell where a pair starts.
inline constexpr std::uint64_t ShiftJisLookBack = DoubleByteLookBack;
inline constexpr std::uint64_t ShiftJisLookAhead = DoubleByteLookAhead;

bool IsShiftJisTrailByte(std::uint8_t byte);

// The lead and trail tests of code page 932, for the resynchronising scan. The half-width katakana
// (0xA1 to 0xDF) are neither leads nor pairs, so the scan steps over them one byte at a time.
const DoubleByteScheme& ShiftJisScheme();

// The character at the start of `bytes`. A single byte of 0x80 or above is allowed: the half-width
// katakana live there.
std::optional<DecodedCharacter> DecodeShiftJisCharacter(std::span<const std::uint8_t> bytes);

// The Shift_JIS text column of the row in `buffer`, walking from the character boundary that the
// resynchronising scan finds at or before the row's start.
std::vector<std::u16string> DecodeShiftJisRow(const RowDecodeBuffer& buffer);

} // namespace tlm
