#include "document/HorspoolSearcher.h"

#include <cstring>

namespace tlm {

HorspoolSearcher::HorspoolSearcher(const std::vector<std::uint8_t>& searched)
    : pattern(searched)
{
    const std::size_t length = pattern.size();
    shifts.fill(length);
    for (std::size_t i = 0; i + 1 < length; ++i) {
        shifts[pattern[i]] = length - 1 - i;
    }
}

std::size_t HorspoolSearcher::FindFirst(const std::uint8_t* data, std::size_t length, std::size_t from) const
{
    const std::size_t patternLength = pattern.size();
    if (length < patternLength || from > length - patternLength) {
        return NotFound;
    }
    const std::uint8_t lastByte = pattern[patternLength - 1];
    const std::size_t lastCandidate = length - patternLength;
    std::size_t candidate = from;
    while (candidate <= lastCandidate) {
        // Windows whose last byte differs from the pattern's cannot match, and the Horspool shift of any
        // other byte only lands on such a window again; so go straight to the next window that ends in
        // the pattern's last byte, which memchr finds many bytes at a time.
        const std::uint8_t* end = data + candidate + patternLength - 1;
        const void* hit = std::memchr(end, lastByte, lastCandidate - candidate + 1);
        if (hit == nullptr) {
            return NotFound;
        }
        candidate = static_cast<std::size_t>(static_cast<const std::uint8_t*>(hit) - data) - (patternLength - 1);
        if (std::memcmp(data + candidate, pattern.data(), patternLength - 1) == 0) {
            return candidate;
        }
        candidate += shifts[lastByte];
    }
    return NotFound;
}

} // namespace tlm
