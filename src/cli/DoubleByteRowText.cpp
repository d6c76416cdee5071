#include "cli/DoubleByteRowText.h"

#include "encoding/ShiftJisDecoder.h"

#include <algorithm>

namespace tlm {

const DoubleByteScheme* DoubleByteSchemeOf(TextEncoding encoding)
{
    return encoding == TextEncoding::ShiftJis ? &ShiftJisScheme() : DoubleByteSchemeFor(encoding);
}

std::uint64_t DoubleByteRowStart(const DoubleByteScheme& scheme, std::span<const std::uint8_t> bytes,
    std::uint64_t bytesOffset, std::uint64_t rowOffset)
{
    const std::uint64_t scanFirst = rowOffset - std::min(rowOffset, DoubleByteLookBack);
    const auto scanned = bytes.subspan(static_cast<std::size_t>(scanFirst - bytesOffset),
        static_cast<std::size_t>(rowOffset + 1 - scanFirst));
    return scanFirst + FindDoubleByteRowStart(scheme, scanned, static_cast<std::size_t>(rowOffset - scanFirst));
}

std::vector<std::u16string> DoubleByteRowText(TextEncoding encoding, std::span<const std::uint8_t> bytes,
    std::uint64_t bytesOffset, std::uint64_t fileSize, std::uint64_t rowOffset, std::size_t rowLength)
{
    const DoubleByteScheme& scheme = *DoubleByteSchemeOf(encoding);
    // Given from its start, the row's buffer needs nothing further in front: the decoder's own scan then
    // starts where the long one ends.
    const std::uint64_t first = DoubleByteRowStart(scheme, bytes, bytesOffset, rowOffset);
    const std::uint64_t end = std::min<std::uint64_t>(rowOffset + rowLength + DoubleByteLookAhead, fileSize);
    const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(first - bytesOffset);
    RowDecodeBuffer buffer;
    buffer.bytes.assign(begin, begin + static_cast<std::ptrdiff_t>(end - first));
    buffer.rowBegin = static_cast<std::size_t>(rowOffset - first);
    buffer.rowEnd = buffer.rowBegin + rowLength;
    return DecodeDoubleByteBuffer(encoding, buffer);
}

std::vector<std::u16string> DecodeDoubleByteBuffer(TextEncoding encoding, const RowDecodeBuffer& buffer)
{
    return encoding == TextEncoding::ShiftJis ? DecodeShiftJisRow(buffer)
                                              : DecodeDoubleByteRow(*DoubleByteSchemeOf(encoding), buffer);
}

} // namespace tlm
