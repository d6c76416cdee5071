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
    std::u16string normalized;
    normalized.reserve(last - first);
    bool inSpace = false;
    for (std::size_t i = first; i < last; ++i) {
        const char16_t c = text[i];
        if (IsPatternSpace(c)) {
            if (!inSpace)
                normalized.push_back(u' ');
            inSpace = true;
        } else {
            normalized.push_back(LowerPatternCharacter(c));
            inSpace = false;
        }
    }
    return normalized;
}

bool IsSignedTypeName(std::u16string_view normalizedName)
{
    if (normalizedName.starts_with(u"uint") || normalizedName.starts_with(u"unsigned"))
        return false;
    return normalizedName != u"float" && normalizedName != u"double" && normalizedName != u"void";
}

} // namespace tlm
