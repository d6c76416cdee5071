#include "cli/AllHits.h"

#include "document/HorspoolSearcher.h"

#include <algorithm>
#include <cstring>

namespace tlm {

namespace {

// Large enough that a system call costs nothing beside the scan, small enough to keep the whole
// program within a few megabytes however big the file.
constexpr std::size_t BlockBytes = 2 * 1024 * 1024;
// Going backward the hits of a block are held until it is done, four bytes each: a smaller block keeps
// that list small too when every byte is a hit.
constexpr std::size_t BackwardBlockBytes = 1024 * 1024;

// Reads `count` bytes at `offset` into `destination`; the number that came.
std::size_t ReadFully(const FileViewModel& file, std::uint64_t offset, std::size_t count, std::uint8_t* destination)
{
    std::size_t done = 0;
    while (done < count) {
        const std::uint32_t got = file.ReadInto(offset + done, count - done, destination + done);
        if (got == 0) {
            break;
        }
        done += got;
    }
    return done;
}

void ForwardHits(const FileViewModel& file, const std::vector<std::uint8_t>& pattern, std::uint64_t from,
    const std::function<void(std::uint64_t)>& hit, const std::function<void(std::uint64_t, std::uint64_t)>& progress)
{
    const std::uint64_t size = file.GetSize();
    const HorspoolSearcher searcher(pattern);
    const std::size_t overlap = pattern.size() - 1;
    std::vector<std::uint8_t> buffer(BlockBytes + overlap);
    // The first `kept` bytes of the buffer are the end of the block before: a match that began there and
    // runs into this block is whole only now.
    std::size_t kept = 0;
    for (std::uint64_t pos = from; pos < size;) {
        const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(BlockBytes, size - pos));
        const std::size_t got = ReadFully(file, pos, wanted, buffer.data() + kept);
        const std::size_t length = kept + got;
        const std::uint64_t base = pos - kept;
        for (std::size_t found = searcher.FindFirst(buffer.data(), length, 0); found != HorspoolSearcher::NotFound;
             found = searcher.FindFirst(buffer.data(), length, found + 1)) {
            hit(base + found);
        }
        if (got < wanted) {
            break;
        }
        kept = std::min(overlap, length);
        std::memmove(buffer.data(), buffer.data() + length - kept, kept);
        pos += got;
        if (progress) {
            progress(pos - from, size - from);
        }
    }
}

void BackwardHits(const FileViewModel& file, const std::vector<std::uint8_t>& pattern, std::uint64_t from,
    const std::function<void(std::uint64_t)>& hit, const std::function<void(std::uint64_t, std::uint64_t)>& progress)
{
    const std::uint64_t size = file.GetSize();
    if (pattern.size() > size) {
        return;
    }
    const HorspoolSearcher searcher(pattern);
    const std::uint64_t highest = std::min<std::uint64_t>(from, size - pattern.size());
    std::vector<std::uint8_t> buffer(BackwardBlockBytes + pattern.size() - 1);
    // Offsets within one block, found rising and given out falling.
    std::vector<std::uint32_t> found;
    for (std::uint64_t last = highest;;) {
        const std::uint64_t count = std::min<std::uint64_t>(last + 1, BackwardBlockBytes);
        const std::uint64_t first = last + 1 - count;
        const std::size_t length = ReadFully(file, first, static_cast<std::size_t>(count + pattern.size() - 1), buffer.data());
        found.clear();
        for (std::size_t at = searcher.FindFirst(buffer.data(), length, 0); at != HorspoolSearcher::NotFound && at < count;
             at = searcher.FindFirst(buffer.data(), length, at + 1)) {
            found.push_back(static_cast<std::uint32_t>(at));
        }
        for (auto at = found.rbegin(); at != found.rend(); ++at) {
            hit(first + *at);
        }
        if (progress) {
            progress(highest + 1 - first, highest + 1);
        }
        if (first == 0) {
            break;
        }
        last = first - 1;
    }
}

} // namespace

void ForEachHit(const FileViewModel& file, const std::vector<std::uint8_t>& pattern, std::uint64_t from, bool backward,
    const std::function<void(std::uint64_t)>& hit, const std::function<void(std::uint64_t, std::uint64_t)>& progress)
{
    if (!file.IsOpen() || pattern.empty()) {
        return;
    }
    if (backward) {
        BackwardHits(file, pattern, from, hit, progress);
    } else {
        ForwardHits(file, pattern, from, hit, progress);
    }
}

} // namespace tlm
