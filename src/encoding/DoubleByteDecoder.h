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

// The code page and the lead and trail tests of a double-byte encoding. The tests are tables because the
// look-back scan asks them for thousands of bytes a row. Windows-949, EUC-KR, Big5 and GBK share the
// engine below; Shift_JIS walks a row its own way but finds where to start with the same scan.
struct DoubleByteScheme {
    std::uint32_t codePage = 0;
    std::array<bool, 256> lead{};
    std::array<bool, 256> trail{};

    bool IsLead(std::uint8_t byte) const { return lead[byte]; }
    bool IsTrail(std::uint8_t byte) const { return trail[byte]; }
};

// Fills the tables from the two tests.
constexpr DoubleByteScheme MakeDoubleByteScheme(
    std::uint32_t codePage, bool (*isLead)(std::uint8_t), bool (*isTrail)(std::uint8_t))
{
    DoubleByteScheme scheme;
    scheme.codePage = codePage;
    for (int byte = 0; byte < 256; ++byte) {
        scheme.lead[byte] = isLead(static_cast<std::uint8_t>(byte));
        scheme.trail[byte] = isTrail(static_cast<std::uint8_t>(byte));
    }
    return scheme;
}

// The scheme of `encoding` when it is one of the four that share the engine, else nothing.
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

// The same for the row that starts at `rowStart` in `bytes`, which begin where the scan begins; only
// the row's first byte is looked at behind its start.
std::size_t FindDoubleByteRowStart(const DoubleByteScheme& scheme, std::span<const std::uint8_t> bytes, std::size_t rowStart);

// The text column of the row in `buffer`, walking from the scan's result. An invalid pair costs one
// step, so its second byte gets a chance as a first byte.
std::vector<std::u16string> DecodeDoubleByteRow(const DoubleByteScheme& scheme, const RowDecodeBuffer& buffer);

} // namespace tlm
