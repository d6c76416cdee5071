#pragma once

#include "encoding/TextEncoding.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tlm {

// The text cells of one row of a double-byte encoding (Shift_JIS, Windows-949, EUC-KR, Big5, GBK),
// decoded by the core's own row decoder from a few bytes in front of the row (16, 64 or 256) instead of
// 4,096, when that provably gives the same cells; nothing when it might not, or for any other encoding.
//
// Why it is the same: the resynchronising scan walks forward from the start of its look-back one or two
// bytes a step, so a walk that starts 4,096 bytes back passes through the byte N or the byte N - 1 in
// front of the row, and from there it is the walk that starts at that byte. When the walks from those two
// bytes find the same row start, so does the long one, and the row decodes the same from there.
//
// `bytes` holds the file from `bytesOffset` on and must reach one byte behind the row, or the file's end.
std::optional<std::vector<std::u16string>> ShortLookBackRowText(TextEncoding encoding, std::span<const std::uint8_t> bytes,
    std::uint64_t bytesOffset, std::uint64_t fileSize, std::uint64_t rowOffset, std::size_t rowLength);

} // namespace tlm
