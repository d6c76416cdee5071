#include "document/ParentPath.h"

#include "document/PlatformFile.h"

namespace tlm {

namespace {

bool IsSeparator(char16_t c)
{
    return c == u'\\' || c == u'/';
}

bool IsDriveLetter(char16_t c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

// Length of the root name: "C:", or "\\server" (also "\\?" and "\\." of device paths).
std::size_t RootNameLength(const std::u16string& path)
{
    if (path.size() >= 2 && IsDriveLetter(path[0]) && path[1] == u':') {
        return 2;
    }
    if (path.size() >= 3 && IsSeparator(path[0]) && IsSeparator(path[1]) && !IsSeparator(path[2])) {
        std::size_t end = 2;
        while (end < path.size() && !IsSeparator(path[end])) {
            ++end;
        }
        return end;
    }
    return 0;
}

} // namespace

std::u16string ParentPath(const std::u16string& path)
{
    std::size_t relativeStart = RootNameLength(path);
    while (relativeStart < path.size() && IsSeparator(path[relativeStart])) {
        ++relativeStart;
    }
    std::size_t end = path.size();
    while (end > relativeStart && !IsSeparator(path[end - 1])) {
        --end;
    }
    while (end > relativeStart && IsSeparator(path[end - 1])) {
        --end;
    }
    return path.substr(0, end);
}

std::u16string JoinPath(const std::u16string& folder, const std::u16string& name)
{
    if (folder.empty() || IsSeparator(folder.back())) {
        return folder + name;
    }
    return folder + PreferredPathSeparator + name;
}

} // namespace tlm
