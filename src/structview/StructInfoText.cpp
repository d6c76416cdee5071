#include "structview/StructInfoText.h"

#include "structview/DecimalText.h"

#include <cstdint>
#include <string_view>

namespace tlm {

namespace {

void AddLine(std::u16string& text, std::u16string_view name, std::uint64_t value)
{
    text += u"\r\n";
    text += name;
    text += u" = ";
    text += DecimalText(value);
}

} // namespace

std::u16string BuildStructInfoText(const StructPatternFile& patternFile)
{
    std::u16string text = u"entry = " + patternFile.entryStructName;
    if (patternFile.entryIsImplicit)
        text += u" (implicit)";
    AddLine(text, u"sizeof_short", patternFile.sizeofShort);
    AddLine(text, u"sizeof_int", patternFile.sizeofInt);
    AddLine(text, u"sizeof_long", patternFile.sizeofLong);
    AddLine(text, u"sizeof_long_long", patternFile.sizeofLongLong);
    AddLine(text, u"sizeof_float", patternFile.sizeofFloat);
    AddLine(text, u"sizeof_double", patternFile.sizeofDouble);
    AddLine(text, u"pointer_size", patternFile.pointerSize);
    AddLine(text, u"member_align", patternFile.memberAlign);
    return text;
}

} // namespace tlm
