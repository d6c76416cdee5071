#include "structview/StructRows.h"

#include "structview/DecimalText.h"
#include "structview/StructValueText.h"

#include <algorithm>
#include <bitset>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tlm {

namespace {

constexpr char16_t HexDigits[] = u"0123456789ABCDEF";

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
    if (member.isFlexibleArray) {
        text += u"[]";
    } else if (member.elementCount >= 2) {
        text += u'[';
        text += DecimalText(member.elementCount);
        text += u']';
    }
    if (IsStructField(member)) {
        text += u" (";
        text += DecimalText(member.totalSize);
        text += u" bytes)";
    }
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

// The structs that the entry's struct fields name, found in one walk over the file's structs, so that
// an entry with many fields of distinct types costs one walk rather than one per field. A cheap key of
// length and three characters rejects most names before the hash lookup.
class NamedStructs {
public:
    NamedStructs(const StructPatternFile& patternFile, const std::vector<ResolvedMember>& members)
    {
        const std::size_t reachable = std::min(members.size(), MaxStructRows);
        for (std::size_t i = 0; i < reachable; ++i) {
            if (IsStructField(members[i]) && found.try_emplace(members[i].structName, nullptr).second)
                filter.set(FilterKey(members[i].structName));
        }
        std::size_t missing = found.size();
        for (const ResolvedStruct& candidate : patternFile.structs) {
            if (missing == 0)
                break;
            if (!filter.test(FilterKey(candidate.name)))
                continue;
            const auto slot = found.find(candidate.name);
            if (slot != found.end() && slot->second == nullptr) {
                slot->second = &candidate;
                --missing;
            }
        }
    }

    const ResolvedStruct* Find(const std::u16string& name) const
    {
        const auto slot = found.find(name);
        return slot == found.end() ? nullptr : slot->second;
    }

private:
    static constexpr std::size_t FilterBits = 4096;

    static std::size_t FilterKey(std::u16string_view name)
    {
        if (name.empty())
            return 0;
        const std::size_t key = name.size() * 0x9E37u + name.front() * 0x85EBu + name[name.size() / 2] * 0xC2B3u
            + name.back() * 0x27D5u;
        return (key ^ (key >> 12)) % FilterBits;
    }

    std::unordered_map<std::u16string_view, const ResolvedStruct*> found;
    std::bitset<FilterBits> filter;
};

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

void AddMemberRows(RowSink& sink, const NamedStructs& nestedStructs, const ResolvedMember& member)
{
    if (member.isPadding) {
        sink.Add(member.name, member.offset, sink.Value(member), SizeText(member));
        return;
    }
    if (IsStructField(member)) {
        sink.Add(member.name + u" : " + member.structName, member.offset, {}, SizeText(member));
        if (sink.Truncated())
            return;
        if (const ResolvedStruct* nested = nestedStructs.Find(member.structName))
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
    const NamedStructs nestedStructs(patternFile, entry->members);
    RowSink sink(request, entry->members.size());
    for (const ResolvedMember& member : entry->members) {
        AddMemberRows(sink, nestedStructs, member);
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
