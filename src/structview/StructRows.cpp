#include "structview/StructRows.h"

#include "structview/StructValueText.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace tlm {

namespace {

constexpr char16_t HexDigits[] = u"0123456789ABCDEF";

std::u16string DecimalText(std::uint64_t value)
{
    const std::string digits = std::to_string(value);
    return std::u16string(digits.begin(), digits.end());
}

// "0x" and upper-case hexadecimal without leading zeros.
std::u16string OffsetText(std::uint64_t offset)
{
    std::u16string digits;
    do {
        digits.push_back(HexDigits[offset & 0x0F]);
        offset >>= 4;
    } while (offset != 0);
    std::reverse(digits.begin(), digits.end());
    return u"0x" + digits;
}

std::u16string SizeText(const ResolvedMember& member)
{
    if (member.isFlexibleArray)
        return DecimalText(member.elementSize) + u"+";
    return DecimalText(member.totalSize);
}

bool IsStructField(const ResolvedMember& member)
{
    return !member.structName.empty() && member.kind == ResolvedValueKind::Aggregate && member.elementCount == 1;
}

// Stands in for a missing name: the type with its array suffix, and a struct's size.
std::u16string BuildMemberTypeText(const ResolvedMember& member)
{
    std::u16string text = member.typeName;
    if (member.isPadding)
        return text;
    if (member.isFlexibleArray)
        text += u"[]";
    else if (member.elementCount >= 2)
        text += u"[" + DecimalText(member.elementCount) + u"]";
    if (IsStructField(member))
        text += u" (" + DecimalText(member.totalSize) + u" bytes)";
    return text;
}

const ResolvedStruct* FindStruct(const StructPatternFile& patternFile, const std::u16string& name)
{
    for (const ResolvedStruct& candidate : patternFile.structs) {
        if (candidate.name == name)
            return &candidate;
    }
    return nullptr;
}

// Collects rows up to the cap; once a row is refused every loop stops and the result gets its closing row.
class RowSink {
public:
    RowSink(const StructEvalRequest& request, std::size_t expectedRows)
        : request(request)
        , unavailableText(request.unavailableText.empty() ? std::u16string(u"-") : request.unavailableText)
    {
        rows.reserve(std::min(expectedRows, MaxStructRows + 1));
    }

    bool Truncated() const { return truncated; }

    void Add(std::u16string name, std::uint64_t offset, std::u16string value, std::u16string size)
    {
        if (rows.size() == MaxStructRows) {
            truncated = true;
            return;
        }
        rows.push_back(StructRow {std::move(name), OffsetText(request.baseOffset + offset), {}, std::move(value),
            std::move(size)});
    }

    std::u16string Value(const ResolvedMember& member) const
    {
        return FormatMemberValue(member, request, unavailableText);
    }

    std::vector<StructRow> Finish()
    {
        if (truncated)
            rows.push_back(StructRow {u"...", u"...", {}, u"...", u"..."});
        return std::move(rows);
    }

private:
    const StructEvalRequest& request;
    std::u16string unavailableText;
    std::vector<StructRow> rows;
    bool truncated = false;
};

void AddNestedRows(RowSink& sink, const ResolvedMember& parent, const ResolvedStruct& nested)
{
    for (const ResolvedMember& child : nested.members) {
        ResolvedMember placed = child;
        placed.offset = parent.offset + child.offset;
        sink.Add(u"  " + child.name, placed.offset, sink.Value(placed), SizeText(child));
        if (sink.Truncated())
            return;
    }
}

void AddMemberRows(RowSink& sink, const StructPatternFile& patternFile, const ResolvedMember& member)
{
    if (member.isPadding) {
        sink.Add(member.name, member.offset, sink.Value(member), SizeText(member));
        return;
    }
    if (IsStructField(member)) {
        sink.Add(member.name + u" : " + member.structName, member.offset, {}, SizeText(member));
        if (sink.Truncated())
            return;
        if (const ResolvedStruct* nested = FindStruct(patternFile, member.structName))
            AddNestedRows(sink, member, *nested);
        return;
    }
    sink.Add(member.name.empty() ? BuildMemberTypeText(member) : member.name, member.offset, sink.Value(member),
        SizeText(member));
}

} // namespace

std::vector<StructRow> BuildStructRows(const StructEvalRequest& request)
{
    if (!request.patternFile)
        return {};
    const StructPatternFile& patternFile = *request.patternFile;
    const ResolvedStruct* entry = FindStruct(patternFile, patternFile.entryStructName);
    if (entry == nullptr)
        return {};
    RowSink sink(request, entry->members.size());
    for (const ResolvedMember& member : entry->members) {
        AddMemberRows(sink, patternFile, member);
        if (sink.Truncated())
            break;
    }
    return sink.Finish();
}

bool EndsInFlexibleArray(const StructPatternFile& patternFile, const ResolvedStruct& resolvedStruct)
{
    // Layout refuses a struct that embeds itself, but a pattern built by other means might not;
    // more steps than there are structs can only be a cycle.
    const ResolvedStruct* current = &resolvedStruct;
    for (std::size_t steps = 0; steps <= patternFile.structs.size(); ++steps) {
        if (current->members.empty())
            return false;
        const ResolvedMember& last = current->members.back();
        if (last.isFlexibleArray)
            return true;
        if (!IsStructField(last))
            return false;
        current = FindStruct(patternFile, last.structName);
        if (current == nullptr)
            return false;
    }
    return false;
}

} // namespace tlm
