#include "cli/ShortLookBackRowText.h"

#include "encoding/DoubleByteDecoder.h"
#include "encoding/RowDecodeBuffer.h"
#include "encoding/ShiftJisDecoder.h"

#include <algorithm>
#include <array>

namespace tlm {

namespace {

// Tried in turn: text falls into step within a few characters, and a long run of bytes that are lead
// and trail at once needs the full look-back whatever is tried first.
constexpr std::array<std::uint64_t, 3> ShortLookBacks{16, 64, 256};

// What the core reads for a row, with `lookBack` bytes in front of it and the usual one behind.
RowDecodeBuffer ShortBuffer(std::span<const std::uint8_t> bytes, std::uint64_t bytesOffset, std::uint64_t fileSize,
    std::uint64_t rowOffset, std::size_t rowLength, std::uint64_t lookBack)
{
    const std::uint64_t first = rowOffset - lookBack;
    const std::uint64_t end = std::min<std::uint64_t>(rowOffset + rowLength + DoubleByteLookAhead, fileSize);
    const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(first - bytesOffset);
    RowDecodeBuffer buffer;
    buffer.bytes.assign(begin, begin + static_cast<std::ptrdiff_t>(end - first));
    buffer.rowBegin = static_cast<std::size_t>(lookBack);
    buffer.rowEnd = buffer.rowBegin + rowLength;
    return buffer;
}

} // namespace

std::optional<std::vector<std::u16string>> ShortLookBackRowText(TextEncoding encoding, std::span<const std::uint8_t> bytes,
    std::uint64_t bytesOffset, std::uint64_t fileSize, std::uint64_t rowOffset, std::size_t rowLength)
{
    const bool shiftJis = encoding == TextEncoding::ShiftJis;
    const DoubleByteScheme* scheme = shiftJis ? &ShiftJisScheme() : DoubleByteSchemeFor(encoding);
    const std::uint64_t rowEnd = std::min<std::uint64_t>(rowOffset + rowLength + DoubleByteLookAhead, fileSize);
    if (scheme == nullptr || rowLength == 0 || rowEnd > bytesOffset + bytes.size()) {
        return std::nullopt;
    }
    for (const std::uint64_t lookBack : ShortLookBacks) {
        if (rowOffset < lookBack || rowOffset - lookBack < bytesOffset) {
            break;
        }
        const RowDecodeBuffer far = ShortBuffer(bytes, bytesOffset, fileSize, rowOffset, rowLength, lookBack);
        const RowDecodeBuffer near = ShortBuffer(bytes, bytesOffset, fileSize, rowOffset, rowLength, lookBack - 1);
        // Both as offsets in the file: one byte apart at the start, they must agree at the row.
        const std::uint64_t farStart = rowOffset - lookBack + FindDoubleByteRowStart(*scheme, far);
        const std::uint64_t nearStart = rowOffset - (lookBack - 1) + FindDoubleByteRowStart(*scheme, near);
        if (farStart == nearStart) {
            std::vector<std::u16string> cells = shiftJis ? DecodeShiftJisRow(far) : DecodeDoubleByteRow(*scheme, far);
            cells.resize(rowLength);
            return cells;
        }
    }
    return std::nullopt;
}

} // namespace tlm
