#pragma once

#include "document/BlockList.h"

#include <cstdint>
#include <vector>

namespace tlm {

// The bytes of one inserted run, kept in chunks of a few KiB so that inserting or removing a byte
// anywhere in a long run moves only one chunk.
class RunBytes {
public:
    std::uint64_t Length() const { return chunks.TotalWeight(); }
    bool Empty() const { return chunks.Empty(); }

    std::uint8_t At(std::uint64_t index) const;
    void Set(std::uint64_t index, std::uint8_t value);
    // `index` may equal the length, which appends.
    void Insert(std::uint64_t index, std::uint8_t value);
    void Erase(std::uint64_t index);

    // Appends bytes [index, index + count) of the run to `out`; both must lie inside the run.
    void CopyTo(std::uint64_t index, std::uint64_t count, std::vector<std::uint8_t>& out) const;

    // Visits the bytes as contiguous pieces in order.
    template <typename Visit>
    bool ForEachPiece(Visit visit) const
    {
        bool ok = true;
        chunks.ForEach([&](const Chunk& chunk) {
            if (ok) {
                ok = visit(chunk.bytes.data(), chunk.bytes.size());
            }
        });
        return ok;
    }

    std::vector<std::uint8_t> ToVector() const;

private:
    struct Chunk {
        std::vector<std::uint8_t> bytes;
        std::uint64_t Weight() const { return bytes.size(); }
    };
    using Chunks = BlockList<Chunk>;

    static constexpr std::size_t ChunkCapacity = 4096;

    // The chunk holding byte `index`, and the index of its first byte.
    Chunks::Found Locate(std::uint64_t index) const;

    Chunks chunks;
};

} // namespace tlm
