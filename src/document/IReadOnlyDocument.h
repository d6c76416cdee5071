#pragma once

#include "document/ByteBlock.h"

#include <cstdint>
#include <string>

namespace tlm {

// What a viewer needs of a document. Offsets count bytes from the start of what it shows.
class IReadOnlyDocument {
public:
    virtual ~IReadOnlyDocument() = default;
    virtual bool IsOpen() const = 0;
    virtual std::uint64_t GetSize() const = 0;
    virtual std::u16string GetPath() const = 0;
    virtual ByteBlock Read(std::uint64_t offset, std::uint64_t count) const = 0;
};

} // namespace tlm
