#pragma once

#include "document/IEditableDocument.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tlm::test {

// An editable document held in memory, with switches to make its edits fail and a log of deletions.
class MemoryDocument final : public IEditableDocument {
public:
    MemoryDocument() = default;
    explicit MemoryDocument(std::vector<std::uint8_t> initial)
        : bytes(std::move(initial))
    {
    }

    bool IsOpen() const override { return open; }
    std::uint64_t GetSize() const override { return open ? bytes.size() : 0; }
    std::u16string GetPath() const override { return open ? u"memory" : u""; }

    ByteBlock Read(std::uint64_t offset, std::uint64_t count) const override
    {
        ByteBlock block{offset, {}};
        ++reads;
        if (!open || offset >= bytes.size()) {
            return block;
        }
        const std::uint64_t available = std::min<std::uint64_t>(count, bytes.size() - offset);
        block.bytes.assign(bytes.begin() + static_cast<std::ptrdiff_t>(offset),
            bytes.begin() + static_cast<std::ptrdiff_t>(offset + available));
        return block;
    }

    bool OverwriteByte(std::uint64_t offset, std::uint8_t value) override
    {
        if (!open || failEdits || offset >= bytes.size()) {
            return false;
        }
        bytes[offset] = value;
        modified = true;
        return true;
    }

    bool InsertByte(std::uint64_t offset, std::uint8_t value) override
    {
        if (!open || failEdits || offset > bytes.size()) {
            return false;
        }
        bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(offset), value);
        modified = true;
        return true;
    }

    bool DeleteByte(std::uint64_t offset) override
    {
        if (!open || failEdits || offset >= bytes.size() || (failDeleteAt && *failDeleteAt == offset)) {
            return false;
        }
        deletions.push_back(offset);
        bytes.erase(bytes.begin() + static_cast<std::ptrdiff_t>(offset));
        modified = true;
        return true;
    }

    bool IsModified() const override { return modified; }
    std::uint64_t GetEditedSize() const override { return GetSize(); }

    std::vector<std::uint8_t> bytes;
    bool open = true;
    bool modified = false;
    bool failEdits = false;
    std::optional<std::uint64_t> failDeleteAt;
    std::vector<std::uint64_t> deletions;
    mutable int reads = 0;
};

// A read-only document of any size whose every byte is `fill`; nothing is stored.
class SizedDocument final : public IReadOnlyDocument {
public:
    explicit SizedDocument(std::uint64_t size, std::uint8_t fill = 0)
        : size(size)
        , fill(fill)
    {
    }

    bool IsOpen() const override { return true; }
    std::uint64_t GetSize() const override { return size; }
    std::u16string GetPath() const override { return u"sized"; }

    ByteBlock Read(std::uint64_t offset, std::uint64_t count) const override
    {
        ByteBlock block{offset, {}};
        if (offset < size) {
            block.bytes.assign(static_cast<std::size_t>(std::min<std::uint64_t>(count, size - offset)), fill);
        }
        return block;
    }

    std::uint64_t size;
    std::uint8_t fill;
};

} // namespace tlm::test
