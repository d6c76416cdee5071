#pragma once

#include "document/IReadOnlyDocument.h"
#include "document/ProgressCallback.h"

#include <cstdint>
#include <vector>

namespace tlm {

enum class SearchStatus : std::uint32_t {
    Found = 0,
    NotFound = 1,
    Cancelled = 2,
};

struct SearchResult {
    SearchStatus status = SearchStatus::NotFound;
    std::uint64_t offset = 0;
    bool hasOffset = false;
};

// Searches read the document one block at a time.
inline constexpr std::uint64_t SearchBlockSize = 1048576;

// The first match of `pattern` that begins at or after `start`. Progress is reported and cancel asked
// once a block, before its read. Case always counts: the pattern is bytes.
SearchResult SearchForward(const IReadOnlyDocument* document, const std::vector<std::uint8_t>& pattern,
    std::uint64_t start, const KeepGoingCallback& keepGoing = {}, const ProgressCallback& progress = {});

// The match with the highest start offset not above `start`; a `start` past the end is clamped.
SearchResult SearchBackward(const IReadOnlyDocument* document, const std::vector<std::uint8_t>& pattern,
    std::uint64_t start, const KeepGoingCallback& keepGoing = {}, const ProgressCallback& progress = {});

} // namespace tlm
