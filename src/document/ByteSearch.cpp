#include "document/ByteSearch.h"

#include "document/HorspoolSearcher.h"

#include <algorithm>

namespace tlm {

namespace {

SearchResult FoundAt(std::uint64_t offset)
{
    return SearchResult{SearchStatus::Found, offset, true};
}

SearchResult NotFoundResult()
{
    return SearchResult{SearchStatus::NotFound, 0, false};
}

SearchResult CancelledResult()
{
    return SearchResult{SearchStatus::Cancelled, 0, false};
}

// Reports progress and asks whether to go on.
bool ReportAndContinue(const KeepGoingCallback& keepGoing, const ProgressCallback& progress, std::uint64_t done,
    std::uint64_t total)
{
    if (progress) {
        progress(done, total);
    }
    return !keepGoing || keepGoing();
}

} // namespace

SearchResult SearchForward(const IReadOnlyDocument* document, const std::vector<std::uint8_t>& pattern,
    std::uint64_t start, const KeepGoingCallback& keepGoing, const ProgressCallback& progress)
{
    if (document == nullptr || !document->IsOpen() || pattern.empty()) {
        return NotFoundResult();
    }
    const std::uint64_t size = document->GetSize();
    if (start >= size || pattern.size() > size) {
        return NotFoundResult();
    }
    const HorspoolSearcher searcher(pattern);
    const std::size_t overlap = pattern.size() - 1;
    // The last pattern-length-minus-one bytes seen, so a match across the seam of two blocks is whole.
    std::vector<std::uint8_t> carry;
    std::vector<std::uint8_t> seam;
    std::uint64_t pos = start;
    for (;;) {
        if (!ReportAndContinue(keepGoing, progress, pos, size)) {
            return CancelledResult();
        }
        const ByteBlock block = document->Read(pos, std::min(size - pos, SearchBlockSize));
        if (block.bytes.empty()) {
            break;
        }
        // Carry and block joined stand at `base`; no match may begin before `start`.
        const std::uint64_t base = pos - carry.size();
        const std::size_t from = start > base ? static_cast<std::size_t>(start - base) : 0;
        if (carry.size() + block.bytes.size() >= pattern.size()) {
            // Matches that begin in the carry lie within the carry and the first bytes of the block.
            if (from < carry.size()) {
                seam.assign(carry.begin(), carry.end());
                seam.insert(seam.end(), block.bytes.begin(),
                    block.bytes.begin() + static_cast<std::ptrdiff_t>(std::min(overlap, block.bytes.size())));
                const std::size_t hit = searcher.FindFirst(seam.data(), seam.size(), from);
                if (hit != HorspoolSearcher::NotFound && hit < carry.size()) {
                    return FoundAt(base + hit);
                }
            }
            const std::size_t inBlock = from > carry.size() ? from - carry.size() : 0;
            const std::size_t hit = searcher.FindFirst(block.bytes.data(), block.bytes.size(), inBlock);
            if (hit != HorspoolSearcher::NotFound) {
                return FoundAt(pos + hit);
            }
        }
        if (block.bytes.size() >= overlap) {
            carry.assign(block.bytes.end() - static_cast<std::ptrdiff_t>(overlap), block.bytes.end());
        } else {
            carry.insert(carry.end(), block.bytes.begin(), block.bytes.end());
            carry.erase(carry.begin(), carry.end() - static_cast<std::ptrdiff_t>(std::min(overlap, carry.size())));
        }
        pos += block.bytes.size();
        if (pos >= size) {
            break;
        }
    }
    if (progress) {
        progress(size, size);
    }
    return NotFoundResult();
}

SearchResult SearchBackward(const IReadOnlyDocument* document, const std::vector<std::uint8_t>& pattern,
    std::uint64_t start, const KeepGoingCallback& keepGoing, const ProgressCallback& progress)
{
    if (document == nullptr || !document->IsOpen() || pattern.empty()) {
        return NotFoundResult();
    }
    const std::uint64_t size = document->GetSize();
    if (pattern.size() > size) {
        return NotFoundResult();
    }
    const HorspoolSearcher searcher(pattern);
    std::uint64_t last = std::min<std::uint64_t>(size - pattern.size(), start);
    for (;;) {
        const std::uint64_t done = last < size ? size - last - 1 : 0;
        if (!ReportAndContinue(keepGoing, progress, done, size)) {
            return CancelledResult();
        }
        const std::uint64_t count = std::min<std::uint64_t>(last + 1, SearchBlockSize);
        const std::uint64_t first = last + 1 - count;
        // The block reaches pattern-length-minus-one bytes further, so a match across the seam with the
        // block read before is whole.
        const ByteBlock block = document->Read(first, count + pattern.size() - 1);
        if (block.bytes.size() >= pattern.size()) {
            const std::size_t lastCandidate = static_cast<std::size_t>(
                std::min<std::uint64_t>(count - 1, block.bytes.size() - pattern.size()));
            const std::size_t searchedLength = lastCandidate + pattern.size();
            std::size_t found = HorspoolSearcher::NotFound;
            for (std::size_t hit = searcher.FindFirst(block.bytes.data(), searchedLength, 0);
                 hit != HorspoolSearcher::NotFound; hit = searcher.FindFirst(block.bytes.data(), searchedLength, hit + 1)) {
                found = hit;
            }
            if (found != HorspoolSearcher::NotFound) {
                return FoundAt(first + found);
            }
        }
        if (first == 0) {
            break;
        }
        last = first - 1;
    }
    if (progress) {
        progress(size, size);
    }
    return NotFoundResult();
}

} // namespace tlm
