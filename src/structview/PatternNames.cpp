#include "structview/PatternNames.h"

#include "structview/PatternCharacters.h"

#include <cstddef>

namespace tlm {
namespace {

bool IsTrimmed(char16_t c)
{
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

} // namespace

std::u16string NormalizeTypeName(std::u16string_view text)
{
    std::size_t first = 0;
    std::size_t last = text.size();
    while (first < last && IsTrimmed(text[first]))
        ++first;
    while (last > first && IsTrimmed(text[last - 1]))
        --last;
    // Never longer than the trimmed text, so it is written in place and cut to length at the end.
    std::u16string normalized(last - first, u' ');
    std::size_t length = 0;
    bool inSpace = false;
    for (std::size_t i = first; i < last; ++i) {
        const char16_t c = text[i];
        if (IsPatternSpace(c)) {
            if (!inSpace)
                normalized[length++] = u' ';
            inSpace = true;
        } else {
            normalized[length++] = LowerPatternCharacter(c);
            inSpace = false;
        }
    }
    normalized.resize(length);
    return normalized;
}

bool IsSignedTypeName(std::u16string_view normalizedName)
{
    if (normalizedName.starts_with(u"uint") || normalizedName.starts_with(u"unsigned"))
        return false;
    return normalizedName != u"float" && normalizedName != u"double" && normalizedName != u"void";
}

} // namespace tlm
