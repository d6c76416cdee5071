#include "document/InsertedRuns.h"

namespace tlm {

InsertedRuns::Position InsertedRuns::LowerBound(std::uint64_t anchor) const
{
    return runs.FindFirstNot([anchor](const Run& run, std::uint64_t) { return run.anchor < anchor; }).position;
}

InsertedRuns::Position InsertedRuns::Locate(std::uint64_t anchor) const
{
    const Position position = LowerBound(anchor);
    if (runs.IsEnd(position) || runs.At(position).anchor != anchor) {
        return runs.End();
    }
    return position;
}

const InsertedRuns::Run* InsertedRuns::Find(std::uint64_t anchor) const
{
    const Position position = Locate(anchor);
    return runs.IsEnd(position) ? nullptr : &runs.At(position);
}

void InsertedRuns::InsertByte(std::uint64_t anchor, std::uint64_t index, std::uint8_t value)
{
    Position position = LowerBound(anchor);
    if (runs.IsEnd(position) || runs.At(position).anchor != anchor) {
        Run run;
        run.anchor = anchor;
        run.bytes.Insert(0, value);
        runs.Insert(position, std::move(run));
        return;
    }
    runs.Update(position, [&](Run& run) { run.bytes.Insert(index, value); });
}

bool InsertedRuns::SetByte(std::uint64_t anchor, std::uint64_t index, std::uint8_t value)
{
    const Position position = Locate(anchor);
    if (runs.IsEnd(position) || index >= runs.At(position).bytes.Length()) {
        return false;
    }
    runs.Update(position, [&](Run& run) { run.bytes.Set(index, value); });
    return true;
}

bool InsertedRuns::EraseByte(std::uint64_t anchor, std::uint64_t index)
{
    const Position position = Locate(anchor);
    if (runs.IsEnd(position) || index >= runs.At(position).bytes.Length()) {
        return false;
    }
    if (runs.At(position).bytes.Length() == 1) {
        runs.Erase(position);
        return true;
    }
    runs.Update(position, [&](Run& run) { run.bytes.Erase(index); });
    return true;
}

std::map<std::uint64_t, std::vector<std::uint8_t>> InsertedRuns::ToMap() const
{
    std::map<std::uint64_t, std::vector<std::uint8_t>> map;
    runs.ForEach([&](const Run& run) { map.emplace_hint(map.end(), run.anchor, run.bytes.ToVector()); });
    return map;
}

} // namespace tlm
