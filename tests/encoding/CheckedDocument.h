#pragma once

#include "document/IReadOnlyDocument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

namespace tlm::test {

// A document in memory that fails the running test when it is asked for a byte past its end, and
// remembers the lowest and highest offsets it was asked for.
class CheckedDocument final : public IReadOnlyDocument {
public:
    explicit CheckedDocument(std::vector<std::uint8_t> content)
        : bytes(std::move(content))
    {
    }

    bool IsOpen() const override { return true; }
    std::uint64_t GetSize() const override { return bytes.size(); }
    std::u16string GetPath() const override { return u"checked"; }

    ByteBlock Read(std::uint64_t offset, std::uint64_t count) const override
    {
        ++reads;
        if (offset > bytes.size() || count > bytes.size() - offset) {
            ADD_FAILURE() << "read of " << count << " bytes at " << offset << " past the end at " << bytes.size();
            outOfRangeReads += 1;
        }
        ByteBlock block{offset, {}};
        if (offset >= bytes.size()) {
            return block;
        }
        const std::uint64_t available = std::min<std::uint64_t>(count, bytes.size() - offset);
        lowestRead = std::min(lowestRead, offset);
        highestReadEnd = std::max(highestReadEnd, offset + available);
        block.bytes.assign(bytes.begin() + static_cast<std::ptrdiff_t>(offset),
            bytes.begin() + static_cast<std::ptrdiff_t>(offset + available));
        return block;
    }

    // The bytes of the row at `offset`: sixteen, or fewer at the end.
    std::vector<std::uint8_t> RowAt(std::uint64_t offset, std::size_t width = 16) const
    {
        const std::size_t begin = static_cast<std::size_t>(std::min<std::uint64_t>(offset, bytes.size()));
        const std::size_t end = std::min(bytes.size(), begin + width);
        return {bytes.begin() + static_cast<std::ptrdiff_t>(begin), bytes.begin() + static_cast<std::ptrdiff_t>(end)};
    }

    std::vector<std::uint8_t> bytes;
    mutable int reads = 0;
    mutable int outOfRangeReads = 0;
    mutable std::uint64_t lowestRead = std::numeric_limits<std::uint64_t>::max();
    mutable std::uint64_t highestReadEnd = 0;
};

} // namespace tlm::test
