#pragma once

#include "encoding/TextEncoding.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tlm {

// The most bytes one search may look for.
inline constexpr std::size_t MaxSearchPatternBytes = 4096;
// A hex query of 4,096 bytes written as pairs with one separator between them.
inline constexpr std::uint32_t HexQueryLimit = 12287;

// What the user typed without the blanks, tabs, carriage returns and line feeds at either end.
std::u16string_view TrimQuery(std::u16string_view text);

// The bytes of a hex query: blanks anywhere are dropped, the rest must be pairs of hexadecimal
// digits. Nothing when no digit is left, a digit is unpaired or a pair is not hexadecimal.
std::optional<std::vector<std::uint8_t>> ParseHexQuery(std::u16string_view text);

// An offset typed in hexadecimal, with or without a leading "0x"; nothing when it is empty, holds
// anything but hexadecimal digits or does not fit 64 bits.
std::optional<std::uint64_t> ParseGoToOffset(std::u16string_view text);

// The offset in upper-case hexadecimal without padding or prefix, as the go-to prompt starts.
std::u16string FormatGoToOffset(std::uint64_t offset);

// The length limit of a text query: encodings whose characters may take several bytes of a
// double-byte or UTF-16 form get half of what the others get, so no query passes 4,096 bytes by much.
std::uint32_t TextQueryLimit(TextEncoding encoding);

} // namespace tlm
