#pragma once

#include "encoding/RowDecodeBuffer.h"
#include "encoding/RowTextDecoder.h"
#include "encoding/TextEncoding.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tlm {

// The single-byte encodings whose marks stack on a base character: TIS-620 and Windows-1258.
// A base with a few marks is looked for this far around a row.
inline constexpr std::uint64_t BaseAndMarkLookBack = 4;
inline constexpr std::uint64_t BaseAndMarkLookAhead = 4;

// TIS-620 bytes: ASCII and the Thai letters, signs and digits. Code page 874 also fills some of the gaps
// with Windows extensions, which are kept out so the view shows what TIS-620 defines.
bool IsTis620Byte(std::uint8_t byte);

// The text of one byte of `encoding` (TIS-620 or Windows-1258), or nothing when it is no text.
std::optional<std::u16string> DecodeBaseAndMarkByte(TextEncoding encoding, std::uint8_t byte);

// A base character followed by the marks that stack on it, or nothing when the first byte is no
// text or is itself a mark.
std::optional<DecodedCharacter> DecodeBaseWithMarks(TextEncoding encoding, std::span<const std::uint8_t> bytes);

// The text column of the row in `buffer`, with each mark drawn in its base's cell. A mark at the row's
// start whose base stands in the row above leaves its cell empty rather than showing a filler.
std::vector<std::u16string> DecodeBaseAndMarkRow(TextEncoding encoding, const RowDecodeBuffer& buffer);

} // namespace tlm
