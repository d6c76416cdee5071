#include "structview/DefinitionError.h"

#include "structview/DecimalText.h"

#include <cstddef>

namespace tlm {
namespace {

// The text of line `line` without its line end; empty when there is no such line.
std::u16string_view SourceLine(std::u16string_view text, std::int64_t line)
{
    if (line < 1)
        return {};
    std::size_t start = 0;
    for (std::int64_t found = 1; found < line; ++found) {
        const std::size_t feed = text.find(u'\n', start);
        if (feed == std::u16string_view::npos)
            return {};
        start = feed + 1;
    }
    const std::size_t end = text.find_first_of(u"\r\n", start);
    return text.substr(start, end == std::u16string_view::npos ? std::u16string_view::npos : end - start);
}

} // namespace

std::u16string FormatDefinitionError(std::u16string_view sourceText, std::int64_t line, std::int64_t column,
    std::u16string_view message)
{
    std::u16string result = u"Line " + SignedDecimalText(line) + u", Col " + SignedDecimalText(column) + u": ";
    result += message;
    const std::u16string_view quoted = SourceLine(sourceText, line);
    if (quoted.empty())
        return result;
    result += u"\r\n";
    result += quoted;
    result += u"\r\n";
    if (column > 1)
        result.append(static_cast<std::size_t>(column - 1), u' ');
    result += u'^';
    return result;
}

} // namespace tlm
