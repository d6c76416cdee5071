#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tlm {

// Boyer-Moore-Horspool over one pattern: a table of 256 shifts built once, and a candidate confirmed
// by comparing the pattern without its last byte. Where the processor has SSE2 (every x86-64), most
// windows are first tested 32 at a time on their first and last byte.
class HorspoolSearcher {
public:
    static constexpr std::size_t NotFound = static_cast<std::size_t>(-1);

    // The pattern must not be empty and must outlive the searcher.
    explicit HorspoolSearcher(const std::vector<std::uint8_t>& pattern);

    // The first index at or after `from` where the pattern lies wholly inside `data`, or NotFound.
    std::size_t FindFirst(const std::uint8_t* data, std::size_t length, std::size_t from) const;

private:
    const std::vector<std::uint8_t>& pattern;
    std::array<std::size_t, 256> shifts{};
};

} // namespace tlm
