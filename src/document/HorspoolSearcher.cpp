#include "document/HorspoolSearcher.h"

#include <bit>
#include <cstring>

#if defined(__SSE2__) || defined(_M_X64) || defined(_M_AMD64)
#include <emmintrin.h>
#define TOLMO_SEARCH_WITH_SSE2 1
#endif

namespace tlm {

namespace {

#if defined(TOLMO_SEARCH_WITH_SSE2)
// Tests 32 windows a step for the pattern's first and last byte at once, and compares the rest only
// where both agree. Gives the first match, or where the scalar search should take over: the first
// window of the last, incomplete step.
std::size_t ScanThirtyTwoWindowsAtATime(const std::uint8_t* data, std::size_t lastCandidate, std::size_t candidate,
    const std::vector<std::uint8_t>& pattern, bool& found)
{
    const std::size_t patternLength = pattern.size();
    const __m128i first = _mm_set1_epi8(static_cast<char>(pattern[0]));
    const __m128i last = _mm_set1_epi8(static_cast<char>(pattern[patternLength - 1]));
    const std::uint8_t* windowEnds = data + patternLength - 1;
    const auto load = [](const std::uint8_t* at) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at)); };
    while (candidate + 32 <= lastCandidate + 1) {
        const __m128i lowMatches = _mm_and_si128(
            _mm_cmpeq_epi8(load(data + candidate), first), _mm_cmpeq_epi8(load(windowEnds + candidate), last));
        const __m128i highMatches = _mm_and_si128(
            _mm_cmpeq_epi8(load(data + candidate + 16), first), _mm_cmpeq_epi8(load(windowEnds + candidate + 16), last));
        auto mask = static_cast<std::uint32_t>(_mm_movemask_epi8(lowMatches))
            | (static_cast<std::uint32_t>(_mm_movemask_epi8(highMatches)) << 16);
        while (mask != 0) {
            const std::size_t window = candidate + static_cast<std::size_t>(std::countr_zero(mask));
            if (std::memcmp(data + window + 1, pattern.data() + 1, patternLength - 2) == 0) {
                found = true;
                return window;
            }
            mask &= mask - 1;
        }
        candidate += 32;
    }
    return candidate;
}
#endif

} // namespace

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
    const std::size_t lastCandidate = length - patternLength;
    const std::uint8_t lastByte = pattern[patternLength - 1];
    if (patternLength == 1) {
        const void* hit = std::memchr(data + from, lastByte, lastCandidate - from + 1);
        return hit == nullptr ? NotFound : static_cast<std::size_t>(static_cast<const std::uint8_t*>(hit) - data);
    }
    std::size_t candidate = from;
#if defined(TOLMO_SEARCH_WITH_SSE2)
    bool found = false;
    candidate = ScanThirtyTwoWindowsAtATime(data, lastCandidate, candidate, pattern, found);
    if (found) {
        return candidate;
    }
#endif
    const std::uint8_t firstByte = pattern[0];
    const std::uint8_t* windowEnds = data + patternLength - 1;
    while (candidate <= lastCandidate) {
        // A window whose last byte differs from the pattern's cannot match, and the shift of any other
        // byte only lands on such a window again; so go straight to the next window that ends in the
        // pattern's last byte, which memchr finds many bytes at a time.
        const void* hit = std::memchr(windowEnds + candidate, lastByte, lastCandidate - candidate + 1);
        if (hit == nullptr) {
            return NotFound;
        }
        candidate = static_cast<std::size_t>(static_cast<const std::uint8_t*>(hit) - windowEnds);
        if (data[candidate] == firstByte && std::memcmp(data + candidate, pattern.data(), patternLength - 1) == 0) {
            return candidate;
        }
        candidate += shifts[lastByte];
    }
    return NotFound;
}

} // namespace tlm
