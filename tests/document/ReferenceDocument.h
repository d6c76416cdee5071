#pragma once

#include "document/FileViewModel.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <unordered_map>
#include <vector>

namespace tlm::test {

// The overlay exactly as first designed, kept here to check the optimized EditableDocument against:
// plain ordered containers, linear walks over runs and deletions, one position resolution per byte.
class ReferenceDocument {
public:
    struct Resolved {
        bool inRun = false;
        std::uint64_t offset = 0;
        std::uint64_t indexInRun = 0;
        bool valid = false;
    };

    FileViewModel file;
    std::map<std::uint64_t, std::vector<std::uint8_t>> insertedRuns;
    std::set<std::uint64_t> deletedOffsets;
    std::unordered_map<std::uint64_t, std::uint8_t> overwrites;

    std::uint64_t GetEditedSize() const;
    bool IsModified() const;
    std::uint64_t CountDeletedIn(std::uint64_t first, std::uint64_t last) const;
    std::uint64_t SkipDeleted(std::uint64_t first, std::uint64_t last, std::uint64_t n) const;
    Resolved ResolvePosition(std::uint64_t v) const;
    std::optional<std::uint8_t> ReadByteAt(std::uint64_t v) const;
    std::vector<std::uint8_t> Read(std::uint64_t offset, std::uint64_t count) const;
    bool OverwriteByte(std::uint64_t v, std::uint8_t value);
    bool InsertByte(std::uint64_t v, std::uint8_t value);
    bool DeleteByte(std::uint64_t v);
    bool SavesViaTemporaryFile() const;
};

} // namespace tlm::test
