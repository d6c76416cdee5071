#include "encoding/RowDecodeBuffer.h"

#include "document/IReadOnlyDocument.h"

#include <algorithm>

namespace tlm {

RowDecodeBuffer ReadRowDecodeBuffer(const IReadOnlyDocument* document, std::uint64_t rowOffset,
    std::span<const std::uint8_t> rowBytes, std::uint64_t lookBack, std::uint64_t lookAhead)
{
    if (document == nullptr) {
        return DetachedRowDecodeBuffer(rowBytes);
    }
    const std::uint64_t size = document->GetSize();
    const std::uint64_t rowEnd = rowOffset + rowBytes.size();
    const std::uint64_t readStart = std::min(rowOffset - std::min(rowOffset, lookBack), size);
    const std::uint64_t wantedEnd = rowEnd + std::min(lookAhead, UINT64_MAX - rowEnd);
    const std::uint64_t readEnd = std::min(wantedEnd, size);
    if (readStart >= readEnd) {
        return DetachedRowDecodeBuffer(rowBytes);
    }
    // One read covers the row too; the row's cells still come from the bytes the caller holds.
    const ByteBlock block = document->Read(readStart, readEnd - readStart);
    const std::uint64_t got = block.offset == readStart ? std::min<std::uint64_t>(block.bytes.size(), readEnd - readStart) : 0;
    const std::uint64_t front = rowOffset - readStart;
    const bool haveFront = got >= front;

    RowDecodeBuffer buffer;
    buffer.bytes.reserve(static_cast<std::size_t>(readEnd - readStart) + rowBytes.size());
    if (haveFront) {
        buffer.bytes.assign(block.bytes.begin(), block.bytes.begin() + static_cast<std::ptrdiff_t>(front));
    }
    buffer.rowBegin = buffer.bytes.size();
    buffer.bytes.insert(buffer.bytes.end(), rowBytes.begin(), rowBytes.end());
    buffer.rowEnd = buffer.bytes.size();
    const std::uint64_t behindStart = rowEnd - readStart;
    if (haveFront && rowEnd < readEnd && got > behindStart) {
        buffer.bytes.insert(buffer.bytes.end(), block.bytes.begin() + static_cast<std::ptrdiff_t>(behindStart),
            block.bytes.begin() + static_cast<std::ptrdiff_t>(got));
    }
    return buffer;
}

RowDecodeBuffer DetachedRowDecodeBuffer(std::span<const std::uint8_t> rowBytes)
{
    RowDecodeBuffer buffer;
    buffer.bytes.assign(rowBytes.begin(), rowBytes.end());
    buffer.rowBegin = 0;
    buffer.rowEnd = buffer.bytes.size();
    return buffer;
}

} // namespace tlm
