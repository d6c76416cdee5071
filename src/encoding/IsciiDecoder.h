#pragma once

#include "encoding/RowDecodeBuffer.h"
#include "encoding/RowTextDecoder.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tlm {

// An ISCII syllable is at most eight bytes, so that much around a row is enough to finish one.
inline constexpr std::size_t IsciiLongestSyllable = 8;
inline constexpr std::uint64_t IsciiLookBack = IsciiLongestSyllable - 1;
inline constexpr std::uint64_t IsciiLookAhead = IsciiLongestSyllable - 1;

// The number of UTF-16 units at the start of `units` that form one Devanagari orthographic syllable:
// a letter with its signs, joined through viramas to the letters that follow. 0 when the text is empty
// or starts with a dependent sign.
std::size_t DevanagariClusterLength(std::u16string_view units);

// The longest run of up to eight bytes at the start of `bytes` that decodes to exactly one syllable.
std::optional<DecodedCharacter> DecodeIsciiSyllable(std::span<const std::uint8_t> bytes);

// The ISCII text column of the row in `buffer`: each syllable in the cell of its first byte.
std::vector<std::u16string> DecodeIsciiRow(const RowDecodeBuffer& buffer);

} // namespace tlm
