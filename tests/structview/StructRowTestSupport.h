#pragma once

// Resolved members and patterns written out by hand, so that row building is tested apart from the
// loader. Offsets, sizes and kinds are what layout would give for the declaration in each comment.
#include "structview/StructEvalRequest.h"
#include "structview/StructPatternFile.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tlm::test {

// `uint32_t name;` and the like: one element of `size` bytes.
inline ResolvedMember Scalar(std::u16string name, std::u16string typeName, std::uint64_t offset, std::uint64_t size,
    ResolvedValueKind kind = ResolvedValueKind::Integer)
{
    ResolvedMember member;
    member.name = std::move(name);
    member.normalizedTypeName = typeName;
    member.typeName = std::move(typeName);
    member.kind = kind;
    member.offset = offset;
    member.elementSize = size;
    member.totalSize = size;
    member.elementCount = 1;
    member.isSigned = !member.normalizedTypeName.starts_with(u"uint") && !member.normalizedTypeName.starts_with(u"unsigned");
    return member;
}

// `type name[count];`
inline ResolvedMember Array(std::u16string name, std::u16string typeName, std::uint64_t offset,
    std::uint64_t elementSize, std::uint64_t count)
{
    ResolvedMember member = Scalar(std::move(name), std::move(typeName), offset, elementSize);
    member.elementCount = count;
    member.totalSize = elementSize * count;
    return member;
}

// `type name[];`
inline ResolvedMember Flexible(std::u16string name, std::u16string typeName, std::uint64_t offset,
    std::uint64_t elementSize)
{
    ResolvedMember member = Scalar(std::move(name), std::move(typeName), offset, elementSize);
    member.elementCount = 0;
    member.totalSize = 0;
    member.isFlexibleArray = true;
    return member;
}

// `type* name;` with the pattern's pointer size.
inline ResolvedMember Pointer(std::u16string name, std::u16string typeName, std::uint64_t offset,
    std::uint64_t pointerSize)
{
    ResolvedMember member = Scalar(std::move(name), std::move(typeName), offset, pointerSize);
    member.isPointer = true;
    member.isSigned = false;
    return member;
}

// The gap layout fills before a member or at the end of a struct.
inline ResolvedMember Padding(std::uint64_t offset, std::uint64_t count)
{
    ResolvedMember member;
    member.name = u"<padding>";
    member.typeName = u"padding";
    member.normalizedTypeName = u"padding";
    member.kind = ResolvedValueKind::Aggregate;
    member.offset = offset;
    member.elementSize = 1;
    member.elementCount = count;
    member.totalSize = count;
    member.isPadding = true;
    return member;
}

// `StructName name;` or `StructName name[count];`
inline ResolvedMember StructField(std::u16string name, std::u16string structName, std::uint64_t offset,
    std::uint64_t structSize, std::uint64_t count = 1)
{
    ResolvedMember member = Array(std::move(name), structName, offset, structSize, count);
    member.structName = std::move(structName);
    member.kind = ResolvedValueKind::Aggregate;
    member.isSigned = true;
    return member;
}

inline ResolvedStruct Struct(std::u16string name, std::vector<ResolvedMember> members, std::uint64_t size)
{
    ResolvedStruct resolved;
    resolved.name = std::move(name);
    resolved.members = std::move(members);
    resolved.size = size;
    resolved.alignment = 1;
    return resolved;
}

// A pattern with the default directive values; the first struct is the entry unless told otherwise.
inline std::shared_ptr<StructPatternFile> Pattern(std::vector<ResolvedStruct> structs, std::u16string entry = {})
{
    auto file = std::make_shared<StructPatternFile>();
    file->sizeofShort = 2;
    file->sizeofInt = 4;
    file->sizeofLong = 8;
    file->sizeofLongLong = 8;
    file->sizeofFloat = 4;
    file->sizeofDouble = 8;
    file->pointerSize = 8;
    file->memberAlign = 8;
    file->entryIsImplicit = entry.empty();
    file->entryStructName = entry.empty() && !structs.empty() ? structs.front().name : entry;
    file->structs = std::move(structs);
    return file;
}

inline StructEvalRequest Request(std::shared_ptr<const StructPatternFile> pattern, std::vector<std::uint8_t> bytes,
    std::uint64_t baseOffset = 0)
{
    StructEvalRequest request;
    request.baseOffset = baseOffset;
    request.bytes = std::move(bytes);
    request.patternFile = std::move(pattern);
    request.unavailableText = u"n/a";
    return request;
}

} // namespace tlm::test
