#pragma once

#include "document/IReadOnlyDocument.h"
#include "document/PlatformFile.h"

#include <cstdint>
#include <string>

namespace tlm {

// A plain random-access view of one file on disk: no mapping, no cache, no read-ahead. Every Read is
// one seek and one read. The length is taken once at Open and not refreshed while the file is open.
class FileViewModel final : public IReadOnlyDocument {
public:
    FileViewModel() = default;
    ~FileViewModel() override;
    FileViewModel(const FileViewModel&) = delete;
    FileViewModel& operator=(const FileViewModel&) = delete;
    FileViewModel(FileViewModel&& other) noexcept;
    FileViewModel& operator=(FileViewModel&& other) noexcept;

    bool IsOpen() const override;
    std::uint64_t GetSize() const override;
    std::u16string GetPath() const override;
    ByteBlock Read(std::uint64_t offset, std::uint64_t count) const override;

    // Read into the caller's memory, which must hold the low 32 bits of `count` bytes: the number of
    // bytes read, under the same rules as Read (zero on failure or past the end).
    std::uint32_t ReadInto(std::uint64_t offset, std::uint64_t count, std::uint8_t* destination) const;

    // Drops any file open before, also when the new one cannot be opened.
    bool Open(const std::u16string& path);
    void Close();

private:
    FileHandle handle = InvalidFileHandle;
    std::uint64_t size = 0;
    std::u16string path;
};

} // namespace tlm
