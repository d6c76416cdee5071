#pragma once

#include "document/BlockList.h"

#include <cstdint>
#include <optional>
#include <set>

namespace tlm {

// The file offsets hidden by deletions, kept as disjoint, non-touching intervals with running counts,
// so that counting deletions below an offset and finding the n-th surviving byte cost a logarithm.
class DeletedOffsets {
public:
    // Offsets [start, end).
    struct Interval {
        std::uint64_t start = 0;
        std::uint64_t end = 0;
        std::uint64_t Weight() const { return end - start; }
    };

    bool Empty() const { return intervals.Empty(); }
    // The number of deleted offsets.
    std::uint64_t Count() const { return intervals.TotalWeight(); }
    std::size_t IntervalCount() const { return intervals.Size(); }

    bool Contains(std::uint64_t offset) const;
    // Adds one offset; gives false when it was already there.
    bool Insert(std::uint64_t offset);
    void Clear() { intervals.Clear(); }

    // Deleted offsets below `offset`.
    std::uint64_t CountBelow(std::uint64_t offset) const;
    // Deleted offsets in [first, last).
    std::uint64_t CountIn(std::uint64_t first, std::uint64_t last) const;
    // The smallest offset p at or after `first` that is not deleted and has `n` surviving offsets in
    // [first, p).
    std::uint64_t NthSurvivorFrom(std::uint64_t first, std::uint64_t n) const;
    // The first interval that ends after `offset`: the one holding it, or the next one.
    std::optional<Interval> IntervalEndingAfter(std::uint64_t offset) const;
    // True when the deletions are exactly the last Count() offsets before `fileSize`.
    bool IsTailOf(std::uint64_t fileSize) const;

    template <typename Visit>
    void ForEachInterval(Visit visit) const
    {
        intervals.ForEach(visit);
    }

    std::set<std::uint64_t> ToSet() const;

private:
    using Intervals = BlockList<Interval>;

    Intervals::Found FirstEndingAfter(std::uint64_t offset) const;

    Intervals intervals;
};

} // namespace tlm
