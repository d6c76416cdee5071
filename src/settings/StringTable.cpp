#include "settings/StringTable.h"

#include "settings/LenientUtf8.h"

namespace tlm {

namespace {

bool IsTrimmed(char16_t c)
{
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

std::u16string_view Trim(std::u16string_view text)
{
    while (!text.empty() && IsTrimmed(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsTrimmed(text.back()))
        text.remove_suffix(1);
    return text;
}

void AddLine(StringTable& table, std::u16string_view line)
{
    if (line.empty() || line.front() == u'#')
        return;
    const std::size_t equals = line.find(u'=');
    if (equals == std::u16string_view::npos)
        return;
    std::string key = NarrowStringKey(Trim(line.substr(0, equals)));
    table.try_emplace(std::move(key), Trim(line.substr(equals + 1)));
}

} // namespace

std::string NarrowStringKey(std::u16string_view key)
{
    std::string narrow;
    narrow.reserve(key.size());
    for (char16_t c : key)
        narrow.push_back(c > 127 ? '?' : static_cast<char>(c));
    return narrow;
}

StringTable ParseStringTable(std::string_view bytes)
{
    const std::u16string text = Utf8ToUtf16Lenient(bytes);
    const std::u16string_view all = text;
    StringTable table;
    std::size_t start = 0;
    while (start <= all.size()) {
        std::size_t end = all.find(u'\n', start);
        if (end == std::u16string_view::npos)
            end = all.size();
        AddLine(table, all.substr(start, end - start));
        start = end + 1;
    }
    return table;
}

} // namespace tlm
