#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tlm {

// How a resolved member's bytes are read. Pointers are integers; structs and padding are aggregates.
enum class ResolvedValueKind : std::uint32_t {
    Integer = 0,
    Float = 1,
    Double = 2,
    Aggregate = 3,
};

// One member of a resolved struct, with its place inside the struct.
struct ResolvedMember {
    std::u16string name;
    std::u16string typeName;
    std::u16string normalizedTypeName;
    std::u16string structName; // set only for a struct member
    ResolvedValueKind kind = ResolvedValueKind::Integer;
    std::uint64_t offset = 0;       // from the start of the struct
    std::uint64_t elementSize = 0;
    std::uint64_t totalSize = 0;    // elementSize times elementCount; 0 for a flexible array
    std::uint64_t elementCount = 0; // 0 for a flexible array
    bool isFlexibleArray = false;
    bool isPadding = false;
    bool isPointer = false;
    bool isSigned = false;
};

struct ResolvedStruct {
    std::u16string name;
    std::vector<ResolvedMember> members;
    std::uint64_t size = 0;
    std::uint64_t alignment = 0;
};

// A loaded pattern: the type sizes its directives chose, the entry struct and every struct laid out.
// Immutable once loaded; requests in flight share it.
struct StructPatternFile {
    std::uint64_t sizeofShort = 0;
    std::uint64_t sizeofInt = 0;
    std::uint64_t sizeofLong = 0;
    std::uint64_t sizeofLongLong = 0;
    std::uint64_t sizeofFloat = 0;
    std::uint64_t sizeofDouble = 0;
    std::uint64_t pointerSize = 0;
    std::uint64_t memberAlign = 0;
    std::u16string entryStructName;
    bool entryIsImplicit = false;
    std::vector<ResolvedStruct> structs; // in order of declaration
};

} // namespace tlm
