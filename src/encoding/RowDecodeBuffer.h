#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace tlm {

class IReadOnlyDocument;

// The bytes one row is decoded from: the row's own bytes with what was read in front of and behind it.
// Only the row's bytes get cells; the others let characters that cross the row's edges come out whole.
struct RowDecodeBuffer {
    std::vector<std::uint8_t> bytes;
    std::size_t rowBegin = 0; // index of the row's first byte in `bytes`
    std::size_t rowEnd = 0;   // index just behind the row's last byte

    bool InRow(std::size_t index) const { return index >= rowBegin && index < rowEnd; }
    std::size_t CellOf(std::size_t index) const { return index - rowBegin; }
    std::size_t RowSize() const { return rowEnd - rowBegin; }
    std::span<const std::uint8_t> From(std::size_t index) const
    {
        return std::span<const std::uint8_t>(bytes).subspan(index);
    }
};

// Up to `lookBack` bytes in front of the row and `lookAhead` behind it, never past the document's end.
// With no document, or when the document cannot give the bytes around the row, only the row is used.
RowDecodeBuffer ReadRowDecodeBuffer(const IReadOnlyDocument* document, std::uint64_t rowOffset,
    std::span<const std::uint8_t> rowBytes, std::uint64_t lookBack, std::uint64_t lookAhead);

// The row's bytes alone.
RowDecodeBuffer DetachedRowDecodeBuffer(std::span<const std::uint8_t> rowBytes);

// What a cell shows for a byte that cannot be shown as text.
inline constexpr std::u16string_view FillerText = u".";

} // namespace tlm
