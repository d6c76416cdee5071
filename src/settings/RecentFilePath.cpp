#include "settings/RecentFilePath.h"

#include <vector>

namespace tlm {

namespace {

bool IsSeparator(char16_t c, PathStyle style)
{
    return c == u'/' || (style == PathStyle::Windows && c == u'\\');
}

// Simple upper-casing for the scripts whose letters come in pairs: Latin, Greek and Cyrillic. Other
// characters compare as they are, which only means two spellings are kept apart.
char16_t UpperCase(char16_t c)
{
    if (c >= u'a' && c <= u'z')
        return static_cast<char16_t>(c - 0x20);
    if ((c >= 0x00E0 && c <= 0x00FE && c != 0x00F7))
        return static_cast<char16_t>(c - 0x20);
    if (c == 0x00FF)
        return 0x0178;
    if (c >= 0x0100 && c <= 0x017F) {
        // Latin Extended-A pairs upper/lower on even/odd code points, except where the pairs shift.
        const bool shifted = (c >= 0x0139 && c <= 0x0148) || (c >= 0x0179 && c <= 0x017E);
        if (c == 0x0131 || c == 0x0138 || c == 0x0149 || c == 0x017F)
            return c;
        const bool lower = shifted ? (c % 2 == 0) : (c % 2 == 1);
        return lower ? static_cast<char16_t>(c - 1) : c;
    }
    if (c >= 0x03B1 && c <= 0x03C9 && c != 0x03C2)
        return static_cast<char16_t>(c - 0x20);
    if (c >= 0x0430 && c <= 0x044F)
        return static_cast<char16_t>(c - 0x20);
    if (c >= 0x0450 && c <= 0x045F)
        return static_cast<char16_t>(c - 0x50);
    return c;
}

// The part that ".." never climbs above: "/", "\", "C:", "C:\" or "\\" of a network path.
std::size_t RootLength(std::u16string_view path, PathStyle style)
{
    if (style == PathStyle::Windows) {
        if (path.size() >= 2 && IsSeparator(path[0], style) && IsSeparator(path[1], style))
            return 2;
        if (path.size() >= 2 && path[1] == u':')
            return path.size() >= 3 && IsSeparator(path[2], style) ? 3 : 2;
    }
    return !path.empty() && IsSeparator(path[0], style) ? 1 : 0;
}

} // namespace

std::u16string NormalizeRecentFilePath(std::u16string_view path, PathStyle style)
{
    const char16_t separator = style == PathStyle::Windows ? u'\\' : u'/';
    const std::size_t rootLength = RootLength(path, style);
    std::u16string root(path.substr(0, rootLength));
    for (char16_t& c : root) {
        if (IsSeparator(c, style))
            c = separator;
    }
    const bool rooted = !root.empty() && (root.back() == separator);

    std::vector<std::u16string_view> parts;
    std::size_t position = rootLength;
    while (position <= path.size()) {
        std::size_t end = position;
        while (end < path.size() && !IsSeparator(path[end], style))
            ++end;
        const std::u16string_view part = path.substr(position, end - position);
        if (part == u"..") {
            if (!parts.empty() && parts.back() != u"..")
                parts.pop_back();
            else if (!rooted)
                parts.push_back(part);
        } else if (!part.empty() && part != u".") {
            parts.push_back(part);
        }
        position = end + 1;
    }

    std::u16string normal = root;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (i > 0)
            normal.push_back(separator);
        normal.append(parts[i]);
    }
    if (style == PathStyle::Windows) {
        for (char16_t& c : normal)
            c = UpperCase(c);
    }
    return normal;
}

bool SameRecentFile(std::u16string_view left, std::u16string_view right, PathStyle style)
{
    return NormalizeRecentFilePath(left, style) == NormalizeRecentFilePath(right, style);
}

} // namespace tlm
