// Feeds arbitrary bytes to the struct pattern loader: decoding, tokenizer, parser and layout. Any
// answer is fine; a crash, a hang or a layout that contradicts itself is not.
#include "structview/StructPatternLoader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

void Require(bool condition)
{
    if (!condition)
        std::abort();
}

void CheckLayout(const tlm::ResolvedStruct& resolved, std::uint64_t memberAlign)
{
    std::uint64_t end = 0;
    for (std::size_t i = 0; i < resolved.members.size(); ++i) {
        const tlm::ResolvedMember& member = resolved.members[i];
        Require(member.offset >= end);
        Require(member.offset <= resolved.size);
        Require(member.totalSize <= resolved.size - member.offset);
        if (member.isFlexibleArray) {
            Require(member.totalSize == 0 && member.elementCount == 0);
            Require(i + 1 == resolved.members.size() || resolved.members[i + 1].isPadding);
        } else {
            Require(member.totalSize == member.elementSize * member.elementCount);
        }
        if (member.isPadding)
            Require(member.totalSize > 0 && member.name == u"<padding>");
        if (memberAlign == 0)
            Require(!member.isPadding);
        end = member.offset + member.totalSize;
    }
    Require(resolved.alignment >= 1);
    if (memberAlign != 0)
        Require(resolved.size % resolved.alignment == 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    tlm::StructPatternFile patternFile;
    std::u16string error;
    const bool loaded = tlm::LoadStructPatternBytes(std::string_view(reinterpret_cast<const char*>(data), size),
        patternFile, error);
    if (!loaded) {
        Require(!error.empty());
        Require(patternFile.structs.empty());
        return 0;
    }
    Require(error.empty());
    Require(!patternFile.structs.empty());
    bool entryFound = false;
    for (const tlm::ResolvedStruct& resolved : patternFile.structs) {
        CheckLayout(resolved, patternFile.memberAlign);
        entryFound = entryFound || resolved.name == patternFile.entryStructName;
    }
    Require(entryFound);
    return 0;
}
