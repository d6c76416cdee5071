#pragma once

#include "encoding/RowDecodeBuffer.h"
#include "encoding/RowTextDecoder.h"
#include "encoding/TextEncoding.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tlm {

// The four double-byte encodings that share one engine: Windows-949, EUC-KR, Big5 and GBK. The lead and
// trail tests are tables because the look-back scan asks them for thousands of bytes a row.
struct DoubleByteScheme {
    std::uint32_t codePage = 0;
    std::array<bool, 256> lead{};
    std::array<bool, 256> trail{};

    bool IsLead(std::uint8_t byte) const { return lead[byte]; }
    bool IsTrail(std::uint8_t byte) const { return trail[byte]; }
};

// The scheme of `encoding`, or nothing when it is not one of the four.
const DoubleByteScheme* DoubleByteSchemeFor(TextEncoding encoding);

// How far the resynchronising scan looks in front of a row: a fixed bound that keeps painting
// constant-time, at the price of starting out of step inside a longer double-byte run.
inline constexpr std::uint64_t DoubleByteLookBack = 4096;
inline constexpr std::uint64_t DoubleByteLookAhead = 1;

// The character at the start of `bytes`: a lead byte with a valid trail byte, or a byte below 0x80.
std::optional<DecodedCharacter> DecodeDoubleByteCharacter(const DoubleByteScheme& scheme, std::span<const std::uint8_t> bytes);

// A character boundary at or before the row's start in `buffer`, found by stepping over characters
// from the buffer's start with the lead and trail tests alone.
std::size_t FindDoubleByteRowStart(const DoubleByteScheme& scheme, const RowDecodeBuffer& buffer);

// The text column of the row in `buffer`, walking from the scan's result. An invalid pair costs one
// step, so its second byte gets a chance as a first byte.
std::vector<std::u16string> DecodeDoubleByteRow(const DoubleByteScheme& scheme, const RowDecodeBuffer& buffer);

} // namespace tlm
