#pragma once

#include "structview/PatternToken.h"
#include "structview/StructTypeRef.h"

#include <cstdint>
#include <span>
#include <string>

namespace tlm {

// Splits the tokens of one member or typedef declaration, its ';' excluded, into type, name and
// array count (1 without brackets; 0 with the flexible flag for "[]"). The name is the last
// identifier, which is what lets "type name[count]" work without a type grammar. On failure `error`
// holds an unpositioned text; the caller positions it.
bool ParseDeclaration(std::span<const PatternToken> tokens, StructTypeRef& type, std::u16string& name,
    std::uint64_t& arrayCount, bool& isFlexibleArray, std::u16string& error);

} // namespace tlm
