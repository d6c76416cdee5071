#include "structview/StructSnapshotSize.h"

#include "structview/StructRows.h"

#include <algorithm>

namespace tlm {

namespace {

const ResolvedStruct* EntryStruct(const StructPatternFile& patternFile)
{
    for (const ResolvedStruct& candidate : patternFile.structs) {
        if (candidate.name == patternFile.entryStructName) {
            return &candidate;
        }
    }
    return nullptr;
}

} // namespace

std::uint64_t StructSnapshotSize(const StructPatternFile& patternFile)
{
    const ResolvedStruct* entry = EntryStruct(patternFile);
    if (!entry) {
        return 0;
    }
    if (entry->size >= MaxStructSnapshotBytes) {
        return MaxStructSnapshotBytes;
    }
    const std::uint64_t tail = EndsInFlexibleArray(patternFile, *entry) ? FlexibleArrayTail : 0;
    return std::min(entry->size + tail, MaxStructSnapshotBytes);
}

} // namespace tlm
