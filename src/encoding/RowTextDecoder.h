#pragma once

#include "encoding/TextEncoding.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tlm {

class IReadOnlyDocument;

// One character decoded at a position: its text and the number of bytes it took (at least 1).
struct DecodedCharacter {
    std::u16string text;
    std::size_t consumed = 0;
};

// The text column of one row: one cell per byte of `rowBytes`. A cell is empty when a character that
// began to its left covers it, and "." when its byte cannot be shown. Bytes around the row are read from
// `document` (which may be null) where a character may cross the row's edges, never past its end.
std::vector<std::u16string> DecodeRowText(const IReadOnlyDocument* document, std::uint64_t rowOffset,
    std::span<const std::uint8_t> rowBytes, TextEncoding encoding);

// The same from the row's own bytes alone, with no document to look around in.
std::vector<std::u16string> DecodeRowTextDetached(std::span<const std::uint8_t> rowBytes, TextEncoding encoding);

// The one character that starts at the first byte, for the inspector. Nothing for UTF-8 and UTF-16,
// which the inspector shows in rows of their own, and nothing for empty input.
std::optional<DecodedCharacter> DecodeCharacterAt(TextEncoding encoding, std::span<const std::uint8_t> bytes);

} // namespace tlm
