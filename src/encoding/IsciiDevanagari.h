#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "encoding/TextServices.h"

namespace tlm {

// ISCII-91 in its Devanagari script, code page 57002. It has no table: a few byte pairs (a nukta after
// certain letters, two viramas, the EXT and ATR codes) form one character, so it is converted by rule.

// Fails on the first byte without a character: 0xA0, 0xD9 (INV), 0xEB-0xEE, 0xFB-0xFF, an EXT byte
// not followed by its two known codes, and an ATR byte not followed by an attribute.
std::optional<std::u16string> DecodeIsciiDevanagari(std::span<const std::uint8_t> bytes);

// A character without a form is written as '?' and reported through usedDefaultChar.
MultiByteText EncodeIsciiDevanagari(std::u16string_view text);

} // namespace tlm
