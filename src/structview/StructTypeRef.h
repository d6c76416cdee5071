#pragma once

#include <cstdint>
#include <string>

namespace tlm {

// A type as the pattern wrote it, before layout gives it a size.
struct StructTypeRef {
    std::u16string rawName;        // the type words joined by one blank, in the case written
    std::u16string normalizedName; // rawName through NormalizeTypeName
    std::uint32_t pointerDepth = 0;
    bool isSigned = false;
};

} // namespace tlm
