// Builds struct rows for random snapshots. The input's first bytes pick a fixed pattern, describe a
// pattern of their own (members with any offsets, sizes, kinds and flags, struct fields naming real or
// missing structs, cycles included), or hold pattern text for the loader; then come the base offset,
// the value format, and the snapshot bytes. Checks the row cap, the closing row, empty types, offset
// texts and that the same request gives the same rows.
#include "structview/StructInfoText.h"
#include "structview/StructPatternLoader.h"
#include "structview/StructRows.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace tlm;

void Require(bool condition)
{
    if (!condition)
        std::abort();
}

// Takes bytes from the front of the input; past its end every read gives zero.
class InputReader {
public:
    explicit InputReader(std::span<const std::uint8_t> input)
        : input(input)
    {
    }

    std::uint8_t Byte()
    {
        if (at >= input.size())
            return 0;
        return input[at++];
    }

    std::uint64_t Number(std::size_t bytes)
    {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < bytes; ++i)
            value = (value << 8) | Byte();
        return value;
    }

    // Mostly small numbers, sometimes anything.
    std::uint64_t Size()
    {
        const std::uint8_t form = Byte();
        if (form < 200)
            return form % 24;
        if (form < 250)
            return Number(2);
        return Number(8);
    }

    std::string_view Text(std::size_t length)
    {
        const std::size_t taken = std::min(length, input.size() - std::min(at, input.size()));
        const std::string_view text(reinterpret_cast<const char*>(input.data()) + at, taken);
        at += taken;
        return text;
    }

    std::vector<std::uint8_t> Rest() const
    {
        if (at >= input.size())
            return {};
        return std::vector<std::uint8_t>(input.begin() + static_cast<std::ptrdiff_t>(at), input.end());
    }

private:
    std::span<const std::uint8_t> input;
    std::size_t at = 0;
};

const char16_t* const TypeNames[] = {u"char", u"uint8_t", u"int", u"float", u"double", u"long long", u"padding",
    u"unsigned char", u"int8_t", u"S0", u"", u"signed char"};
const char16_t* const StructNames[] = {u"S0", u"S1", u"S2", u"S3", u"Missing", u""};

ResolvedMember RandomMember(InputReader& reader)
{
    ResolvedMember member;
    const std::uint8_t flags = reader.Byte();
    member.name = (flags & 0x80) != 0 ? std::u16string() : u"m" + std::u16string(1, static_cast<char16_t>(u'a' + flags % 26));
    member.typeName = TypeNames[reader.Byte() % std::size(TypeNames)];
    member.normalizedTypeName = member.typeName;
    member.kind = static_cast<ResolvedValueKind>(reader.Byte() % 4);
    member.offset = reader.Size();
    member.elementSize = reader.Size();
    member.elementCount = reader.Size();
    member.totalSize = member.elementSize * member.elementCount;
    member.isFlexibleArray = (flags & 0x01) != 0;
    member.isPadding = (flags & 0x02) != 0;
    member.isPointer = (flags & 0x04) != 0;
    member.isSigned = (flags & 0x08) != 0;
    if ((flags & 0x10) != 0) {
        member.structName = StructNames[reader.Byte() % std::size(StructNames)];
        member.kind = ResolvedValueKind::Aggregate;
        member.elementCount = (flags & 0x20) != 0 ? 1 : member.elementCount;
        member.totalSize = member.elementSize * member.elementCount;
    }
    if (member.isFlexibleArray) {
        member.elementCount = 0;
        member.totalSize = 0;
    }
    return member;
}

std::shared_ptr<StructPatternFile> RandomPattern(InputReader& reader)
{
    auto file = std::make_shared<StructPatternFile>();
    const std::size_t structCount = 1 + reader.Byte() % 4;
    for (std::size_t s = 0; s < structCount; ++s) {
        ResolvedStruct resolved;
        resolved.name = StructNames[s];
        std::size_t memberCount = reader.Byte();
        if (memberCount > 240)
            memberCount = 300 + memberCount; // past the row cap
        for (std::size_t m = 0; m < memberCount; ++m)
            resolved.members.push_back(RandomMember(reader));
        file->structs.push_back(std::move(resolved));
    }
    file->entryStructName = StructNames[reader.Byte() % std::size(StructNames)];
    file->entryIsImplicit = (reader.Byte() & 1) != 0;
    return file;
}

ResolvedMember Fixed(std::u16string name, std::u16string type, std::uint64_t offset, std::uint64_t size,
    std::uint64_t count, ResolvedValueKind kind = ResolvedValueKind::Integer)
{
    ResolvedMember member;
    member.name = std::move(name);
    member.normalizedTypeName = type;
    member.typeName = std::move(type);
    member.kind = kind;
    member.offset = offset;
    member.elementSize = size;
    member.elementCount = count;
    member.totalSize = size * count;
    return member;
}

// struct Inner { char tag[3]; <padding 1>; float f; char rest[]; };
// struct Outer { uint16_t a; <padding 2>; Inner in; double d; Inner many[2]; uint64_t* p; };
std::shared_ptr<StructPatternFile> FixedPattern()
{
    auto file = std::make_shared<StructPatternFile>();
    ResolvedMember padding = Fixed(u"<padding>", u"padding", 3, 1, 1, ResolvedValueKind::Aggregate);
    padding.isPadding = true;
    ResolvedMember rest = Fixed(u"rest", u"char", 8, 1, 0);
    rest.isFlexibleArray = true;
    ResolvedStruct inner {u"Inner",
        {Fixed(u"tag", u"char", 0, 1, 3), padding, Fixed(u"f", u"float", 4, 4, 1, ResolvedValueKind::Float), rest}, 8,
        4};
    ResolvedMember outerPadding = padding;
    outerPadding.offset = 2;
    outerPadding.elementCount = outerPadding.totalSize = 2;
    ResolvedMember in = Fixed(u"in", u"Inner", 4, 8, 1, ResolvedValueKind::Aggregate);
    in.structName = u"Inner";
    ResolvedMember many = Fixed(u"many", u"Inner", 24, 8, 2, ResolvedValueKind::Aggregate);
    many.structName = u"Inner";
    ResolvedMember pointer = Fixed(u"p", u"uint64_t", 40, 8, 1);
    pointer.isPointer = true;
    ResolvedStruct outer {u"Outer",
        {Fixed(u"a", u"uint16_t", 0, 2, 1), outerPadding, in,
            Fixed(u"d", u"double", 16, 8, 1, ResolvedValueKind::Double), many, pointer},
        48, 8};
    file->structs = {inner, outer};
    return file;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    InputReader reader(std::span<const std::uint8_t>(data, size));
    const std::uint8_t mode = reader.Byte();
    std::shared_ptr<StructPatternFile> pattern;
    if (mode % 3 == 0) {
        pattern = FixedPattern();
        pattern->entryStructName = (mode & 8) != 0 ? u"Outer" : u"Inner";
    } else if (mode % 3 == 1) {
        pattern = RandomPattern(reader);
    } else {
        // Pattern text of the given length, then the data.
        pattern = std::make_shared<StructPatternFile>();
        std::u16string error;
        if (!LoadStructPatternBytes(reader.Text(reader.Number(2)), *pattern, error))
            return 0;
    }
    StructEvalRequest request;
    request.baseOffset = reader.Number(8);
    const std::uint8_t format = reader.Byte();
    request.valueFormat = StructValueFormat {format & 3u, (format >> 2) & 3u, (format >> 4) & 3u};
    request.unavailableText = (format & 0x40) != 0 ? std::u16string() : u"unavailable";
    request.bytes = reader.Rest();
    request.patternFile = pattern;

    const std::vector<StructRow> rows = BuildStructRows(request);
    Require(rows.size() <= MaxStructRows + 1);
    if (rows.size() == MaxStructRows + 1)
        Require(rows.back().name == u"..." && rows.back().value == u"..." && rows.back().offset == u"...");
    for (std::size_t i = 0; i < rows.size(); ++i) {
        Require(rows[i].type.empty());
        if (i < MaxStructRows) {
            Require(rows[i].offset.starts_with(u"0x") && rows[i].offset.size() >= 3 && rows[i].offset.size() <= 18);
            Require(!rows[i].size.empty());
        }
    }
    Require(BuildStructRows(request) == rows);
    for (const ResolvedStruct& resolved : pattern->structs)
        (void)EndsInFlexibleArray(*pattern, resolved);
    Require(BuildStructInfoText(*pattern).starts_with(u"entry = "));
    return 0;
}
