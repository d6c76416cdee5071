#include "document/DeletedOffsets.h"

namespace tlm {

DeletedOffsets::Intervals::Found DeletedOffsets::FirstEndingAfter(std::uint64_t offset) const
{
    return intervals.FindFirstNot([offset](const Interval& interval, std::uint64_t) { return interval.end <= offset; });
}

bool DeletedOffsets::Contains(std::uint64_t offset) const
{
    const Intervals::Found found = FirstEndingAfter(offset);
    return !intervals.IsEnd(found.position) && intervals.At(found.position).start <= offset;
}

bool DeletedOffsets::Insert(std::uint64_t offset)
{
    const Intervals::Found found = FirstEndingAfter(offset);
    const Intervals::Position next = found.position;
    const bool hasNext = !intervals.IsEnd(next);
    if (hasNext && intervals.At(next).start <= offset) {
        return false;
    }
    const bool joinsNext = hasNext && intervals.At(next).start == offset + 1;
    const bool hasPrevious = next != intervals.Begin();
    const Intervals::Position previous = hasPrevious ? intervals.Previous(next) : next;
    const bool joinsPrevious = hasPrevious && intervals.At(previous).end == offset;
    if (joinsPrevious && joinsNext) {
        const std::uint64_t end = intervals.At(next).end;
        intervals.Erase(next);
        // Erasing can only have removed an emptied block after `previous`, so its position holds.
        intervals.Update(previous, [end](Interval& interval) { interval.end = end; });
    } else if (joinsPrevious) {
        intervals.Update(previous, [](Interval& interval) { ++interval.end; });
    } else if (joinsNext) {
        intervals.Update(next, [](Interval& interval) { --interval.start; });
    } else {
        intervals.Insert(next, Interval{offset, offset + 1});
    }
    return true;
}

std::uint64_t DeletedOffsets::CountBelow(std::uint64_t offset) const
{
    const Intervals::Found found = FirstEndingAfter(offset);
    std::uint64_t count = found.weightBefore;
    if (!intervals.IsEnd(found.position)) {
        const Interval& interval = intervals.At(found.position);
        if (interval.start < offset) {
            count += offset - interval.start;
        }
    }
    return count;
}

std::uint64_t DeletedOffsets::CountIn(std::uint64_t first, std::uint64_t last) const
{
    if (last <= first || Empty()) {
        return 0;
    }
    return CountBelow(last) - CountBelow(first);
}

std::uint64_t DeletedOffsets::NthSurvivorFrom(std::uint64_t first, std::uint64_t n) const
{
    if (Empty()) {
        return first + n;
    }
    // Surviving offsets below p number p - CountBelow(p); look for the one whose number is `target`.
    const std::uint64_t target = first - CountBelow(first) + n;
    const Intervals::Found found = intervals.FindFirstNot(
        [target](const Interval& interval, std::uint64_t weightBefore) { return interval.start - weightBefore <= target; });
    // Every interval in front of found.position starts at or before the target's place: the target
    // lies after all of them.
    return target + found.weightBefore;
}

std::optional<DeletedOffsets::Interval> DeletedOffsets::IntervalEndingAfter(std::uint64_t offset) const
{
    const Intervals::Found found = FirstEndingAfter(offset);
    if (intervals.IsEnd(found.position)) {
        return std::nullopt;
    }
    return intervals.At(found.position);
}

bool DeletedOffsets::IsTailOf(std::uint64_t fileSize) const
{
    return intervals.Size() == 1 && intervals.At(intervals.Begin()).end == fileSize;
}

std::set<std::uint64_t> DeletedOffsets::ToSet() const
{
    std::set<std::uint64_t> offsets;
    intervals.ForEach([&](const Interval& interval) {
        for (std::uint64_t offset = interval.start; offset < interval.end; ++offset) {
            offsets.insert(offsets.end(), offset);
        }
    });
    return offsets;
}

} // namespace tlm
