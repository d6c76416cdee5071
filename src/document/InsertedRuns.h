#pragma once

#include "document/BlockList.h"
#include "document/RunBytes.h"

#include <cstdint>
#include <map>
#include <vector>

namespace tlm {

// Runs of inserted bytes keyed by their anchor, the file offset before which each stands (the file
// size means after the last byte). Keeps the total length and the length of all runs in front of an
// anchor at hand. No run is ever empty.
class InsertedRuns {
public:
    struct Run {
        std::uint64_t anchor = 0;
        RunBytes bytes;
        std::uint64_t Weight() const { return bytes.Length(); }
    };
    using Runs = BlockList<Run>;
    using Position = Runs::Position;

    bool Empty() const { return runs.Empty(); }
    std::size_t RunCount() const { return runs.Size(); }
    std::uint64_t TotalLength() const { return runs.TotalWeight(); }

    const Run* Find(std::uint64_t anchor) const;
    // Inserts a byte at `index` of the run at `anchor`, creating the run when there is none.
    void InsertByte(std::uint64_t anchor, std::uint64_t index, std::uint8_t value);
    // Both give false when there is no run at `anchor` or no byte at `index`.
    bool SetByte(std::uint64_t anchor, std::uint64_t index, std::uint8_t value);
    bool EraseByte(std::uint64_t anchor, std::uint64_t index);
    void Clear() { runs.Clear(); }

    // The first run whose anchor is at or after `anchor`.
    Position LowerBound(std::uint64_t anchor) const;
    // The first run for which `before(run, lengthOfRunsInFront)` fails; it must hold for a prefix.
    template <typename Predicate>
    Runs::Found FindFirstNot(Predicate before) const
    {
        return runs.FindFirstNot(before);
    }

    Position Begin() const { return runs.Begin(); }
    Position Next(Position position) const { return runs.Next(position); }
    Position Previous(Position position) const { return runs.Previous(position); }
    bool IsEnd(Position position) const { return runs.IsEnd(position); }
    const Run& At(Position position) const { return runs.At(position); }

    template <typename Visit>
    void ForEachRun(Visit visit) const
    {
        runs.ForEach(visit);
    }

    std::map<std::uint64_t, std::vector<std::uint8_t>> ToMap() const;

private:
    // The run at exactly `anchor`, or End().
    Position Locate(std::uint64_t anchor) const;

    Runs runs;
};

} // namespace tlm
