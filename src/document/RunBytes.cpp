#include "document/RunBytes.h"

#include <algorithm>

namespace tlm {

RunBytes::Chunks::Found RunBytes::Locate(std::uint64_t index) const
{
    const Chunks::Found after = chunks.FindFirstNot(
        [index](const Chunk&, std::uint64_t weightBefore) { return weightBefore <= index; });
    const Chunks::Position position = chunks.Previous(after.position);
    return {position, after.weightBefore - chunks.At(position).Weight()};
}

std::uint8_t RunBytes::At(std::uint64_t index) const
{
    const Chunks::Found found = Locate(index);
    return chunks.At(found.position).bytes[index - found.weightBefore];
}

void RunBytes::Set(std::uint64_t index, std::uint8_t value)
{
    const Chunks::Found found = Locate(index);
    chunks.Update(found.position, [&](Chunk& chunk) { chunk.bytes[index - found.weightBefore] = value; });
}

void RunBytes::Insert(std::uint64_t index, std::uint8_t value)
{
    if (index == Length()) {
        // Appending, the common case while typing: fill the last chunk, then start a new one.
        if (!chunks.Empty() && chunks.At(chunks.Last()).bytes.size() < ChunkCapacity) {
            chunks.Update(chunks.Last(), [&](Chunk& chunk) { chunk.bytes.push_back(value); });
            return;
        }
        Chunk chunk;
        chunk.bytes.reserve(64);
        chunk.bytes.push_back(value);
        chunks.Insert(chunks.End(), std::move(chunk));
        return;
    }
    const Chunks::Found found = Locate(index);
    const std::size_t inChunk = static_cast<std::size_t>(index - found.weightBefore);
    if (chunks.At(found.position).bytes.size() < ChunkCapacity) {
        chunks.Update(found.position, [&](Chunk& chunk) {
            chunk.bytes.insert(chunk.bytes.begin() + static_cast<std::ptrdiff_t>(inChunk), value);
        });
        return;
    }
    // Full: move the upper half into a chunk of its own after this one, then insert.
    Chunk upper;
    chunks.Update(found.position, [&](Chunk& chunk) {
        const auto half = chunk.bytes.begin() + static_cast<std::ptrdiff_t>(chunk.bytes.size() / 2);
        upper.bytes.assign(half, chunk.bytes.end());
        chunk.bytes.erase(half, chunk.bytes.end());
    });
    const std::size_t lowerSize = chunks.At(found.position).bytes.size();
    const Chunks::Position upperPosition = chunks.Insert(chunks.Next(found.position), std::move(upper));
    if (inChunk <= lowerSize) {
        // The lower chunk's position may have moved if the insertion split a block; find it again.
        const Chunks::Found lower = Locate(found.weightBefore);
        chunks.Update(lower.position, [&](Chunk& chunk) {
            chunk.bytes.insert(chunk.bytes.begin() + static_cast<std::ptrdiff_t>(inChunk), value);
        });
    } else {
        chunks.Update(upperPosition, [&](Chunk& chunk) {
            chunk.bytes.insert(chunk.bytes.begin() + static_cast<std::ptrdiff_t>(inChunk - lowerSize), value);
        });
    }
}

void RunBytes::Erase(std::uint64_t index)
{
    const Chunks::Found found = Locate(index);
    if (chunks.At(found.position).bytes.size() == 1) {
        chunks.Erase(found.position);
        return;
    }
    chunks.Update(found.position, [&](Chunk& chunk) {
        chunk.bytes.erase(chunk.bytes.begin() + static_cast<std::ptrdiff_t>(index - found.weightBefore));
        // Give memory back when a chunk has mostly emptied.
        if (chunk.bytes.capacity() > 256 && chunk.bytes.size() < chunk.bytes.capacity() / 4) {
            chunk.bytes.shrink_to_fit();
        }
    });
}

void RunBytes::CopyTo(std::uint64_t index, std::uint64_t count, std::vector<std::uint8_t>& out) const
{
    if (count == 0) {
        return;
    }
    const Chunks::Found found = Locate(index);
    Chunks::Position position = found.position;
    std::uint64_t inChunk = index - found.weightBefore;
    while (count > 0 && !chunks.IsEnd(position)) {
        const std::vector<std::uint8_t>& bytes = chunks.At(position).bytes;
        const std::uint64_t take = std::min<std::uint64_t>(count, bytes.size() - inChunk);
        out.insert(out.end(), bytes.begin() + static_cast<std::ptrdiff_t>(inChunk),
            bytes.begin() + static_cast<std::ptrdiff_t>(inChunk + take));
        count -= take;
        inChunk = 0;
        position = chunks.Next(position);
    }
}

std::vector<std::uint8_t> RunBytes::ToVector() const
{
    std::vector<std::uint8_t> bytes;
    bytes.reserve(static_cast<std::size_t>(Length()));
    CopyTo(0, Length(), bytes);
    return bytes;
}

} // namespace tlm
