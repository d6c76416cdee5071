#include "ReferenceDocument.h"

#include <algorithm>

namespace tlm::test {

std::uint64_t ReferenceDocument::GetEditedSize() const
{
    std::uint64_t runs = 0;
    for (const auto& [anchor, bytes] : insertedRuns) {
        runs += bytes.size();
    }
    return file.GetSize() + runs - deletedOffsets.size();
}

bool ReferenceDocument::IsModified() const
{
    return !insertedRuns.empty() || !deletedOffsets.empty() || !overwrites.empty();
}

std::uint64_t ReferenceDocument::CountDeletedIn(std::uint64_t first, std::uint64_t last) const
{
    std::uint64_t count = 0;
    for (auto it = deletedOffsets.lower_bound(first); it != deletedOffsets.end() && *it < last; ++it) {
        ++count;
    }
    return count;
}

std::uint64_t ReferenceDocument::SkipDeleted(std::uint64_t first, std::uint64_t last, std::uint64_t n) const
{
    const std::uint64_t t = first + n;
    std::uint64_t p = t;
    if (deletedOffsets.empty() || CountDeletedIn(first, last) == 0) {
        return t;
    }
    if (t >= last) {
        return last;
    }
    for (;;) {
        const std::uint64_t c = CountDeletedIn(first, p + 1);
        if (c + t == p && deletedOffsets.count(p) == 0) {
            return p;
        }
        p = c + t;
        if (p >= last) {
            return last;
        }
    }
}

ReferenceDocument::Resolved ReferenceDocument::ResolvePosition(std::uint64_t v) const
{
    Resolved result;
    if (v >= GetEditedSize()) {
        return result;
    }
    std::uint64_t viewBase = 0;
    std::uint64_t fileBase = 0;
    for (const auto& [a, bytes] : insertedRuns) {
        const std::uint64_t runStart = (a - fileBase) + viewBase - CountDeletedIn(fileBase, a);
        if (v < runStart) {
            result.offset = SkipDeleted(fileBase, a, v - viewBase);
            result.valid = true;
            return result;
        }
        viewBase = runStart + bytes.size();
        if (v < viewBase) {
            result.inRun = true;
            result.offset = a;
            result.indexInRun = v - runStart;
            result.valid = true;
            return result;
        }
        fileBase = a;
    }
    const std::uint64_t fileSize = file.GetSize();
    const std::uint64_t limit = (fileSize - fileBase) + viewBase - CountDeletedIn(fileBase, fileSize);
    if (v >= limit) {
        return result;
    }
    result.offset = SkipDeleted(fileBase, fileSize, v - viewBase);
    result.valid = true;
    return result;
}

std::optional<std::uint8_t> ReferenceDocument::ReadByteAt(std::uint64_t v) const
{
    const Resolved position = ResolvePosition(v);
    if (!position.valid) {
        return std::nullopt;
    }
    if (position.inRun) {
        return insertedRuns.at(position.offset).at(position.indexInRun);
    }
    const ByteBlock block = file.Read(position.offset, 1);
    if (block.bytes.empty()) {
        return std::nullopt;
    }
    const auto overwrite = overwrites.find(position.offset);
    return overwrite != overwrites.end() ? overwrite->second : block.bytes[0];
}

std::vector<std::uint8_t> ReferenceDocument::Read(std::uint64_t offset, std::uint64_t count) const
{
    const std::uint64_t size = GetEditedSize();
    if (offset >= size || count == 0) {
        return {};
    }
    count = std::min(count, size - offset);
    if (insertedRuns.empty() && deletedOffsets.empty()) {
        std::vector<std::uint8_t> bytes = file.Read(offset, count).bytes;
        for (const auto& [at, value] : overwrites) {
            if (at >= offset && at - offset < bytes.size()) {
                bytes[at - offset] = value;
            }
        }
        return bytes;
    }
    std::vector<std::uint8_t> bytes;
    bytes.reserve(count);
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::optional<std::uint8_t> byte = ReadByteAt(offset + i);
        if (!byte) {
            break;
        }
        bytes.push_back(*byte);
    }
    return bytes;
}

bool ReferenceDocument::OverwriteByte(std::uint64_t v, std::uint8_t value)
{
    if (!file.IsOpen() || v >= GetEditedSize()) {
        return false;
    }
    const Resolved position = ResolvePosition(v);
    if (!position.valid) {
        return false;
    }
    if (position.inRun) {
        const auto run = insertedRuns.find(position.offset);
        if (run == insertedRuns.end() || position.indexInRun >= run->second.size()) {
            return false;
        }
        run->second[position.indexInRun] = value;
        return true;
    }
    const ByteBlock original = file.Read(position.offset, 1);
    if (original.bytes.empty()) {
        return false;
    }
    if (original.bytes[0] != value) {
        overwrites[position.offset] = value;
    } else {
        overwrites.erase(position.offset);
    }
    return true;
}

bool ReferenceDocument::InsertByte(std::uint64_t v, std::uint8_t value)
{
    if (!file.IsOpen() || v > GetEditedSize()) {
        return false;
    }
    if (v == GetEditedSize()) {
        insertedRuns[file.GetSize()].push_back(value);
        return true;
    }
    const Resolved position = ResolvePosition(v);
    if (!position.valid) {
        return false;
    }
    std::vector<std::uint8_t>& run = insertedRuns[position.offset];
    const std::uint64_t index = position.inRun ? std::min<std::uint64_t>(position.indexInRun, run.size()) : run.size();
    run.insert(run.begin() + static_cast<std::ptrdiff_t>(index), value);
    return true;
}

bool ReferenceDocument::DeleteByte(std::uint64_t v)
{
    if (!file.IsOpen() || v >= GetEditedSize()) {
        return false;
    }
    const Resolved position = ResolvePosition(v);
    if (!position.valid) {
        return false;
    }
    if (!position.inRun) {
        if (deletedOffsets.count(position.offset) == 0) {
            deletedOffsets.insert(position.offset);
        }
        overwrites.erase(position.offset);
        return true;
    }
    const auto run = insertedRuns.find(position.offset);
    if (run == insertedRuns.end() || position.indexInRun >= run->second.size()) {
        return false;
    }
    run->second.erase(run->second.begin() + static_cast<std::ptrdiff_t>(position.indexInRun));
    if (run->second.empty()) {
        insertedRuns.erase(run);
    }
    return true;
}

bool ReferenceDocument::SavesViaTemporaryFile() const
{
    const std::uint64_t fileSize = file.GetSize();
    if (insertedRuns.size() > 1 || (insertedRuns.size() == 1 && insertedRuns.begin()->first != fileSize)) {
        return true;
    }
    if (!deletedOffsets.empty()) {
        std::uint64_t expected = fileSize - deletedOffsets.size();
        for (const std::uint64_t offset : deletedOffsets) {
            if (offset != expected++) {
                return true;
            }
        }
    }
    const std::u16string path = file.GetPath();
    return path.starts_with(u"\\\\") || path.starts_with(u"//");
}

} // namespace tlm::test
