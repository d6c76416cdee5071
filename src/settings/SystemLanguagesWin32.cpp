#include "settings/SystemLanguages.h"

#include <windows.h>

namespace tlm {

std::vector<std::u16string> PreferredUiLanguages()
{
    ULONG count = 0;
    ULONG length = 0;
    if (!GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, nullptr, &length) || length == 0)
        return {};
    std::wstring buffer(length, L'\0');
    if (!GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, buffer.data(), &length))
        return {};
    // The answer is a list of names, each ended by a null, the whole list by one more.
    std::vector<std::u16string> tags;
    std::size_t start = 0;
    while (start < buffer.size() && buffer[start] != L'\0') {
        const std::size_t end = buffer.find(L'\0', start);
        const std::size_t stop = end == std::wstring::npos ? buffer.size() : end;
        tags.emplace_back(buffer.begin() + static_cast<std::ptrdiff_t>(start),
            buffer.begin() + static_cast<std::ptrdiff_t>(stop));
        start = stop + 1;
    }
    return tags;
}

} // namespace tlm
