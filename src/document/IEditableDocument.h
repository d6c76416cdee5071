#pragma once

#include "document/IReadOnlyDocument.h"

#include <cstdint>

namespace tlm {

// A document whose shown bytes can be changed one at a time.
class IEditableDocument : public IReadOnlyDocument {
public:
    virtual bool OverwriteByte(std::uint64_t offset, std::uint8_t value) = 0;
    virtual bool InsertByte(std::uint64_t offset, std::uint8_t value) = 0;
    virtual bool DeleteByte(std::uint64_t offset) = 0;
    virtual bool IsModified() const = 0;
    virtual std::uint64_t GetEditedSize() const = 0;
};

} // namespace tlm
