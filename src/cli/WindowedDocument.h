#pragma once

#include "document/FileViewModel.h"

#include <cstdint>
#include <vector>

namespace tlm {

// A file seen through one window of its bytes held in memory. Reads inside the window are copies;
// reads outside it go to the file. A dump decodes millions of rows, and each row's decoder looks at
// the bytes around it: this keeps that from costing a system call a row.
class WindowedDocument final : public IReadOnlyDocument {
public:
    explicit WindowedDocument(const FileViewModel& file);

    bool IsOpen() const override;
    std::uint64_t GetSize() const override;
    std::u16string GetPath() const override;
    ByteBlock Read(std::uint64_t offset, std::uint64_t count) const override;

    // Loads [first, first + count) clipped to the file; false when the file gave fewer bytes.
    bool Load(std::uint64_t first, std::uint64_t count);
    std::uint64_t WindowStart() const { return windowStart; }
    const std::vector<std::uint8_t>& WindowBytes() const { return window; }

private:
    const FileViewModel& file;
    std::uint64_t windowStart = 0;
    std::vector<std::uint8_t> window;
};

} // namespace tlm
