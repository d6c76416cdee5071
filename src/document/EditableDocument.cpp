#include "document/EditableDocument.h"

#include "document/PlatformFile.h"
#include "document/TemporaryFile.h"
#include "document/WriteAll.h"

#include <algorithm>
#include <utility>

namespace tlm {

namespace {

// A rewrite holds one chunk of the file in memory at a time.
constexpr std::uint64_t CopyChunkSize = 1048576;
// The largest single file read while gathering view bytes: far below the 32-bit limit of one read.
constexpr std::uint64_t LargestFileRead = std::uint64_t{1} << 30;
// A read result is reserved up to this much in advance; larger results grow as they fill.
constexpr std::uint64_t LargestReservation = std::uint64_t{64} << 20;

using SortedOverwrites = std::vector<std::pair<std::uint64_t, std::uint8_t>>;

SortedOverwrites SortOverwrites(const std::unordered_map<std::uint64_t, std::uint8_t>& overwrites)
{
    SortedOverwrites sorted(overwrites.begin(), overwrites.end());
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

void Report(const ProgressCallback& progress, std::uint64_t done, std::uint64_t total)
{
    if (progress) {
        progress(done, total);
    }
}

// Network paths are never written in place.
bool IsNetworkPath(const std::u16string& path)
{
    return path.starts_with(u"\\\\") || path.starts_with(u"//");
}

// Writes a run's bytes at `offset`, piece by piece.
bool WriteRun(FileHandle handle, std::uint64_t offset, const RunBytes& run)
{
    return run.ForEachPiece([&](const std::uint8_t* bytes, std::size_t length) {
        if (!WriteAll(handle, offset, bytes, length)) {
            return false;
        }
        offset += length;
        return true;
    });
}

} // namespace

bool EditableDocument::IsOpen() const
{
    return file.IsOpen();
}

std::uint64_t EditableDocument::GetSize() const
{
    return GetEditedSize();
}

std::u16string EditableDocument::GetPath() const
{
    return file.GetPath();
}

std::uint64_t EditableDocument::GetEditedSize() const
{
    return file.GetSize() + insertedRuns.TotalLength() - deletedOffsets.Count();
}

bool EditableDocument::IsModified() const
{
    return !insertedRuns.Empty() || !deletedOffsets.Empty() || !overwrites.empty();
}

std::uint64_t EditableDocument::CountDeletedIn(std::uint64_t first, std::uint64_t last) const
{
    return deletedOffsets.CountIn(first, last);
}

std::uint64_t EditableDocument::SkipDeleted(std::uint64_t first, std::uint64_t last, std::uint64_t n) const
{
    const std::uint64_t target = first + n;
    if (deletedOffsets.Empty() || CountDeletedIn(first, last) == 0) {
        return target;
    }
    if (target >= last) {
        return last;
    }
    return std::min(deletedOffsets.NthSurvivorFrom(first, n), last);
}

ResolvedPosition EditableDocument::ResolvePosition(std::uint64_t viewOffset) const
{
    ResolvedPosition position;
    if (viewOffset >= GetEditedSize()) {
        return position;
    }
    // A run's first view offset: the surviving file bytes and the runs in front of its anchor.
    const auto runStart = [this](const InsertedRuns::Run& run, std::uint64_t runsBefore) {
        return run.anchor - deletedOffsets.CountBelow(run.anchor) + runsBefore;
    };
    const auto after = insertedRuns.FindFirstNot([&](const InsertedRuns::Run& run, std::uint64_t runsBefore) {
        return runStart(run, runsBefore) <= viewOffset;
    });
    std::uint64_t fileBase = 0;
    std::uint64_t viewBase = 0;
    if (after.position != insertedRuns.Begin()) {
        const InsertedRuns::Run& run = insertedRuns.At(insertedRuns.Previous(after.position));
        const std::uint64_t length = run.bytes.Length();
        const std::uint64_t start = runStart(run, after.weightBefore - length);
        if (viewOffset < start + length) {
            position.inRun = true;
            position.offset = run.anchor;
            position.indexInRun = viewOffset - start;
            position.valid = true;
            return position;
        }
        fileBase = run.anchor;
        viewBase = start + length;
    }
    std::uint64_t last = 0;
    if (!insertedRuns.IsEnd(after.position)) {
        last = insertedRuns.At(after.position).anchor;
    } else {
        const std::uint64_t fileSize = file.GetSize();
        const std::uint64_t limit = (fileSize - fileBase) + viewBase - CountDeletedIn(fileBase, fileSize);
        if (viewOffset >= limit) {
            return position;
        }
        last = fileSize;
    }
    position.offset = SkipDeleted(fileBase, last, viewOffset - viewBase);
    position.valid = true;
    return position;
}

std::optional<std::uint8_t> EditableDocument::ReadByteAt(std::uint64_t viewOffset) const
{
    const ResolvedPosition position = ResolvePosition(viewOffset);
    if (!position.valid) {
        return std::nullopt;
    }
    if (position.inRun) {
        const InsertedRuns::Run* run = insertedRuns.Find(position.offset);
        if (run == nullptr || position.indexInRun >= run->bytes.Length()) {
            return std::nullopt;
        }
        return run->bytes.At(position.indexInRun);
    }
    const ByteBlock block = file.Read(position.offset, 1);
    if (block.bytes.empty()) {
        return std::nullopt;
    }
    if (const auto overwrite = overwrites.find(position.offset); overwrite != overwrites.end()) {
        return overwrite->second;
    }
    return block.bytes[0];
}

ByteBlock EditableDocument::Read(std::uint64_t offset, std::uint64_t count) const
{
    ByteBlock block;
    block.offset = offset;
    const std::uint64_t size = GetEditedSize();
    if (offset >= size || count == 0) {
        return block;
    }
    count = std::min(count, size - offset);
    if (insertedRuns.Empty() && deletedOffsets.Empty()) {
        // View offsets are file offsets: one read, then the overwrites that fall inside it.
        block.bytes = file.Read(offset, count).bytes;
        ApplyOverwrites({FileSpan{offset, 0, block.bytes.size()}}, block.bytes);
        return block;
    }
    block.bytes.reserve(static_cast<std::size_t>(std::min(count, LargestReservation)));
    ReadPieces(offset, count, block.bytes);
    return block;
}

bool EditableDocument::AppendFileBytes(std::uint64_t fileOffset, std::uint64_t count, std::vector<std::uint8_t>& out,
    std::vector<FileSpan>& spans) const
{
    while (count > 0) {
        const std::uint64_t request = std::min(count, LargestFileRead);
        // Straight into the result: no second buffer per block.
        const std::size_t at = out.size();
        out.resize(at + static_cast<std::size_t>(request));
        const std::uint32_t read = file.ReadInto(fileOffset, request, out.data() + at);
        out.resize(at + read);
        if (read != 0) {
            spans.push_back(FileSpan{fileOffset, at, read});
        }
        if (read != request) {
            return false;
        }
        fileOffset += request;
        count -= request;
    }
    return true;
}

void EditableDocument::ApplyOverwrites(const std::vector<FileSpan>& spans, std::vector<std::uint8_t>& out) const
{
    if (overwrites.empty() || spans.empty()) {
        return;
    }
    std::uint64_t spanBytes = 0;
    for (const FileSpan& span : spans) {
        spanBytes += span.length;
    }
    if (overwrites.size() <= spanBytes) {
        // Fewer overwrites than bytes: place each overwrite. Spans come in increasing file order.
        for (const auto& [offset, value] : overwrites) {
            auto span = std::upper_bound(spans.begin(), spans.end(), offset,
                [](std::uint64_t fileOffset, const FileSpan& candidate) { return fileOffset < candidate.fileOffset; });
            if (span == spans.begin()) {
                continue;
            }
            --span;
            if (offset - span->fileOffset < span->length) {
                out[span->outIndex + static_cast<std::size_t>(offset - span->fileOffset)] = value;
            }
        }
        return;
    }
    for (const FileSpan& span : spans) {
        for (std::size_t i = 0; i < span.length; ++i) {
            if (const auto overwrite = overwrites.find(span.fileOffset + i); overwrite != overwrites.end()) {
                out[span.outIndex + i] = overwrite->second;
            }
        }
    }
}

// Gathers the view bytes piece by piece: whole file spans between edits and whole run pieces, so a
// read costs about the number of edits it crosses rather than its length.
void EditableDocument::ReadPieces(std::uint64_t offset, std::uint64_t count, std::vector<std::uint8_t>& out) const
{
    const ResolvedPosition start = ResolvePosition(offset);
    if (!start.valid) {
        return;
    }
    const std::uint64_t fileSize = file.GetSize();
    std::vector<FileSpan> spans;
    std::uint64_t remaining = count;
    // The next file offset to show, and the first run not yet shown (its anchor is above `fileOffset`,
    // or equal when it stands before that byte).
    std::uint64_t fileOffset = start.offset;
    InsertedRuns::Position nextRun;
    if (start.inRun) {
        const InsertedRuns::Position runPosition = insertedRuns.LowerBound(start.offset);
        const RunBytes& run = insertedRuns.At(runPosition).bytes;
        const std::uint64_t take = std::min(remaining, run.Length() - start.indexInRun);
        run.CopyTo(start.indexInRun, take, out);
        remaining -= take;
        nextRun = insertedRuns.Next(runPosition);
    } else {
        nextRun = insertedRuns.LowerBound(start.offset + 1);
    }
    while (remaining > 0) {
        const bool hasRun = !insertedRuns.IsEnd(nextRun);
        if (hasRun && insertedRuns.At(nextRun).anchor == fileOffset) {
            const RunBytes& run = insertedRuns.At(nextRun).bytes;
            const std::uint64_t take = std::min(remaining, run.Length());
            run.CopyTo(0, take, out);
            remaining -= take;
            nextRun = insertedRuns.Next(nextRun);
            continue;
        }
        const std::optional<DeletedOffsets::Interval> gap = deletedOffsets.IntervalEndingAfter(fileOffset);
        if (gap && gap->start <= fileOffset) {
            // Skip the deleted bytes, stopping at a run that stands among them.
            fileOffset = hasRun ? std::min(gap->end, insertedRuns.At(nextRun).anchor) : gap->end;
            continue;
        }
        if (fileOffset >= fileSize) {
            break;
        }
        std::uint64_t stop = fileSize;
        if (hasRun) {
            stop = std::min(stop, insertedRuns.At(nextRun).anchor);
        }
        if (gap) {
            stop = std::min(stop, gap->start);
        }
        const std::uint64_t take = std::min(stop - fileOffset, remaining);
        if (!AppendFileBytes(fileOffset, take, out, spans)) {
            break;
        }
        fileOffset += take;
        remaining -= take;
    }
    ApplyOverwrites(spans, out);
}

bool EditableDocument::OverwriteByte(std::uint64_t offset, std::uint8_t value)
{
    if (!IsOpen() || offset >= GetEditedSize()) {
        return false;
    }
    const ResolvedPosition position = ResolvePosition(offset);
    if (!position.valid) {
        return false;
    }
    if (position.inRun) {
        return insertedRuns.SetByte(position.offset, position.indexInRun, value);
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

bool EditableDocument::InsertByte(std::uint64_t offset, std::uint8_t value)
{
    const std::uint64_t size = GetEditedSize();
    if (!IsOpen() || offset > size) {
        return false;
    }
    if (offset == size) {
        const std::uint64_t anchor = file.GetSize();
        const InsertedRuns::Run* run = insertedRuns.Find(anchor);
        insertedRuns.InsertByte(anchor, run ? run->bytes.Length() : 0, value);
        return true;
    }
    const ResolvedPosition position = ResolvePosition(offset);
    if (!position.valid) {
        return false;
    }
    const InsertedRuns::Run* run = insertedRuns.Find(position.offset);
    const std::uint64_t length = run ? run->bytes.Length() : 0;
    // Typing before a file byte extends the run standing there, in order.
    const std::uint64_t index = position.inRun ? std::min(position.indexInRun, length) : length;
    insertedRuns.InsertByte(position.offset, index, value);
    return true;
}

bool EditableDocument::DeleteByte(std::uint64_t offset)
{
    if (!IsOpen() || offset >= GetEditedSize()) {
        return false;
    }
    const ResolvedPosition position = ResolvePosition(offset);
    if (!position.valid) {
        return false;
    }
    if (position.inRun) {
        return insertedRuns.EraseByte(position.offset, position.indexInRun);
    }
    deletedOffsets.Insert(position.offset);
    overwrites.erase(position.offset);
    return true;
}

void EditableDocument::ClearEdits()
{
    insertedRuns.Clear();
    deletedOffsets.Clear();
    overwrites.clear();
}

void EditableDocument::Close()
{
    ClearEdits();
    lastError.clear();
    file.Close();
}

void EditableDocument::FailWithSystemError(std::uint32_t error)
{
    if (lastError.empty()) {
        lastError = FormatSystemError(error);
    }
}

// After a save the file is opened again; when that fails, the document stays closed and says why.
bool EditableDocument::Reopen(const std::u16string& path)
{
    if (file.Open(path)) {
        return true;
    }
    FailWithSystemError(LastSystemError());
    return false;
}

bool EditableDocument::SavesViaTemporaryFile() const
{
    const std::uint64_t fileSize = file.GetSize();
    if (insertedRuns.RunCount() > 1
        || (insertedRuns.RunCount() == 1 && insertedRuns.At(insertedRuns.Begin()).anchor != fileSize)) {
        return true;
    }
    if (!deletedOffsets.Empty() && !deletedOffsets.IsTailOf(fileSize)) {
        return true;
    }
    return IsNetworkPath(file.GetPath());
}

bool EditableDocument::Save(const ProgressCallback& progress)
{
    lastError.clear();
    if (!IsOpen()) {
        lastError = u"No file is open.";
        return false;
    }
    if (!IsModified()) {
        return true;
    }
    const std::u16string path = file.GetPath();
    return SavesViaTemporaryFile() ? SaveViaTemporaryFile(path, progress) : SaveInPlace(path, progress);
}

// Overwrites, an appended run and a cut tail keep every other byte where it is: write just those.
// The run goes to its edited position (the original end less the cut tail) and the file then ends at
// the edited size, so the file holds exactly what was shown also when both are pending at once.
bool EditableDocument::SaveInPlace(const std::u16string& path, const ProgressCallback& progress)
{
    const std::uint64_t total = std::max<std::uint64_t>(GetEditedSize(), 1);
    const std::uint64_t fileSize = file.GetSize();
    const FileHandle target = OpenFileForWriting(path);
    if (!IsValidFileHandle(target)) {
        FailWithSystemError(LastSystemError());
        return false;
    }
    const auto fail = [&] {
        FailWithSystemError(LastSystemError());
        CloseFile(target);
        return false;
    };
    const SortedOverwrites sorted = SortOverwrites(overwrites);
    std::vector<std::uint8_t> group;
    for (std::size_t first = 0; first < sorted.size();) {
        const std::uint64_t start = sorted[first].first;
        group.clear();
        std::size_t next = first;
        while (next < sorted.size() && sorted[next].first == start + group.size()) {
            group.push_back(sorted[next].second);
            ++next;
        }
        if (!WriteAll(target, start, group.data(), group.size())) {
            return fail();
        }
        Report(progress, std::min(total, start + group.size()), total);
        first = next;
    }
    if (!insertedRuns.Empty()) {
        // Any deletions here are the file's tail, so the run starts right behind the bytes that stay.
        const std::uint64_t runOffset = fileSize - deletedOffsets.Count();
        const InsertedRuns::Run* run = insertedRuns.Find(fileSize);
        if (run == nullptr || !WriteRun(target, runOffset, run->bytes)) {
            return fail();
        }
        Report(progress, total, total);
    }
    if (!deletedOffsets.Empty()) {
        if (!SetFileEnd(target, GetEditedSize())) {
            return fail();
        }
        Report(progress, total, total);
    }
    if (!FlushFile(target)) {
        return fail();
    }
    ClearEdits();
    CloseFile(target);
    file.Close();
    return Reopen(path);
}

// Writes the whole edited view into `target` from its start, in file order: each run before the byte
// at its anchor, deleted bytes skipped, overwritten bytes in batches, the rest copied in chunks.
bool EditableDocument::WriteEditedFile(FileHandle target, std::uint64_t total, const ProgressCallback& progress)
{
    const std::uint64_t fileSize = file.GetSize();
    const SortedOverwrites sorted = SortOverwrites(overwrites);
    std::size_t nextOverwrite = 0;
    InsertedRuns::Position nextRun = insertedRuns.Begin();
    std::uint64_t pos = 0;
    std::uint64_t written = 0;
    std::vector<std::uint8_t> batch;
    const auto fail = [&] {
        FailWithSystemError(LastSystemError());
        return false;
    };
    const auto wrote = [&](std::uint64_t count) {
        written += count;
        Report(progress, std::min(total, written), total);
    };
    for (;;) {
        while (!insertedRuns.IsEnd(nextRun) && insertedRuns.At(nextRun).anchor == pos) {
            const RunBytes& run = insertedRuns.At(nextRun).bytes;
            if (!WriteRun(target, written, run)) {
                return fail();
            }
            wrote(run.Length());
            nextRun = insertedRuns.Next(nextRun);
        }
        const std::optional<DeletedOffsets::Interval> gap = deletedOffsets.IntervalEndingAfter(pos);
        while (nextOverwrite < sorted.size() && sorted[nextOverwrite].first < pos) {
            ++nextOverwrite;
        }
        if (pos >= fileSize) {
            return true;
        }
        const bool hasRun = !insertedRuns.IsEnd(nextRun);
        const std::uint64_t runAnchor = hasRun ? insertedRuns.At(nextRun).anchor : fileSize;
        if (gap && gap->start <= pos) {
            pos = std::min(gap->end, runAnchor);
            continue;
        }
        // Bytes up to here need no other care than their overwrites.
        const std::uint64_t plainEnd = std::min({fileSize, runAnchor, gap ? gap->start : fileSize});
        if (nextOverwrite < sorted.size() && sorted[nextOverwrite].first == pos) {
            batch.clear();
            while (nextOverwrite < sorted.size() && sorted[nextOverwrite].first == pos + batch.size()
                && sorted[nextOverwrite].first < plainEnd) {
                batch.push_back(sorted[nextOverwrite].second);
                ++nextOverwrite;
            }
            if (!WriteAll(target, written, batch.data(), batch.size())) {
                return fail();
            }
            pos += batch.size();
            wrote(batch.size());
            continue;
        }
        std::uint64_t copyEnd = plainEnd;
        if (nextOverwrite < sorted.size()) {
            copyEnd = std::min(copyEnd, sorted[nextOverwrite].first);
        }
        if (copyEnd <= pos) {
            return fail();
        }
        while (pos < copyEnd) {
            const std::uint64_t request = std::min(copyEnd - pos, CopyChunkSize);
            SetLastSystemError(0);
            const ByteBlock block = file.Read(pos, request);
            if (block.bytes.size() != request) {
                if (LastSystemError() == 0) {
                    // The file came back shorter than when it was opened.
                    SetLastSystemError(EndOfFileError());
                }
                return fail();
            }
            if (!WriteAll(target, written, block.bytes.data(), block.bytes.size())) {
                return fail();
            }
            pos += request;
            wrote(request);
        }
    }
}

// Anything that moves bytes: write the whole edited file beside the target, then put it in its place.
bool EditableDocument::SaveViaTemporaryFile(const std::u16string& path, const ProgressCallback& progress)
{
    const std::uint64_t total = std::max<std::uint64_t>(GetEditedSize(), 1);
    const std::optional<TemporaryFile> temporary = CreateUniqueTemporaryFile(path);
    if (!temporary) {
        lastError = FormatSystemError(LastSystemError());
        return false;
    }
    bool complete = WriteEditedFile(temporary->handle, total, progress);
    if (complete && !FlushFile(temporary->handle)) {
        FailWithSystemError(LastSystemError());
        complete = false;
    }
    CloseFile(temporary->handle);
    if (!complete) {
        RemoveFile(temporary->path);
        return false;
    }
    file.Close();
    if (!ReplaceFileWith(path, temporary->path) && !MoveFileOver(temporary->path, path)) {
        lastError = FormatSystemError(LastSystemError());
        RemoveFile(temporary->path);
        file.Open(path);
        return false;
    }
    ClearEdits();
    return Reopen(path);
}

} // namespace tlm
