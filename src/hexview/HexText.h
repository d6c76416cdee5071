#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace tlm {

char16_t UpperHexDigit(std::uint8_t value); // value 0 to 15

// The value of one hexadecimal digit, either case; only the ASCII forms count, not full-width ones.
std::optional<std::uint8_t> HexDigitValue(char16_t character);

// Two upper-case hexadecimal digits.
std::u16string FormatHexByte(std::uint8_t byte);

// The bytes as two upper-case digits each, one blank between them and none at the ends: "DE AD BE".
std::u16string FormatBytesAsHex(std::span<const std::uint8_t> bytes);

// The offset column's text: upper-case hexadecimal, eight digits or sixteen when `wide`, then ":".
std::u16string FormatRowOffset(std::uint64_t rowOffset, bool wide);

} // namespace tlm
