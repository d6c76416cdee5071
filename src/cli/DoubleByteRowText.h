#pragma once

#include "encoding/DoubleByteDecoder.h"
#include "encoding/RowDecodeBuffer.h"
#include "encoding/TextEncoding.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tlm {

// The lead and trail tests of a double-byte encoding (Shift_JIS, Windows-949, EUC-KR, Big5, GBK);
// nothing for the others.
const DoubleByteScheme* DoubleByteSchemeOf(TextEncoding encoding);

// Where the row at `rowOffset` starts decoding, as the hex view finds it: the row's offset, or one byte
// before it when a pair reaches over. `bytes` holds the file from `bytesOffset` on and reaches from the
// view's look-back in front of the row to the row's first byte.
std::uint64_t DoubleByteRowStart(const DoubleByteScheme& scheme, std::span<const std::uint8_t> bytes,
    std::uint64_t bytesOffset, std::uint64_t rowOffset);

// The text cells of that row, from the core's row decoder given the row from its start on. `bytes` must
// also reach one byte behind the row, or the file's end.
std::vector<std::u16string> DoubleByteRowText(TextEncoding encoding, std::span<const std::uint8_t> bytes,
    std::uint64_t bytesOffset, std::uint64_t fileSize, std::uint64_t rowOffset, std::size_t rowLength);

// The core's row decoder of the encoding over `buffer`, whose row starts at a character boundary.
std::vector<std::u16string> DecodeDoubleByteBuffer(TextEncoding encoding, const RowDecodeBuffer& buffer);

} // namespace tlm
