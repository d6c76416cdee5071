#include "settings/SettingsScan.h"

#include <charconv>
#include <system_error>

namespace tlm {

namespace {

constexpr std::size_t NotFound = std::string_view::npos;

// The white space of the classic locale.
bool IsSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Position just behind `"key"`, searched from `start`.
std::size_t FindKey(std::string_view text, std::string_view key, std::size_t start)
{
    if (start > text.size())
        return NotFound;
    std::string quoted;
    quoted.reserve(key.size() + 2);
    quoted.push_back('"');
    quoted.append(key);
    quoted.push_back('"');
    const std::size_t found = text.find(quoted, start);
    return found == NotFound ? NotFound : found + quoted.size();
}

// Position of the first character of the value behind `"key"` and its ':', white space skipped.
std::size_t FindValueStart(std::string_view text, std::string_view key, std::size_t start)
{
    const std::size_t afterKey = FindKey(text, key, start);
    if (afterKey == NotFound)
        return NotFound;
    const std::size_t colon = text.find(':', afterKey);
    if (colon == NotFound)
        return NotFound;
    std::size_t position = colon + 1;
    while (position < text.size() && IsSpace(text[position]))
        ++position;
    return position;
}

char Unescaped(char c)
{
    switch (c) {
    case 'b': return '\b';
    case 'f': return '\f';
    case 'n': return '\n';
    case 'r': return '\r';
    case 't': return '\t';
    default: return c;
    }
}

struct QuotedString {
    std::string value;
    std::size_t end = 0; // just behind the closing quote
};

// Reads the string whose opening quote is at `quote`; nothing when it is not closed.
std::optional<QuotedString> ReadQuoted(std::string_view text, std::size_t quote)
{
    QuotedString result;
    std::size_t position = quote + 1;
    while (position < text.size()) {
        const char c = text[position];
        if (c == '"') {
            result.end = position + 1;
            return result;
        }
        if (c == '\\') {
            if (position + 1 >= text.size())
                return std::nullopt;
            result.value.push_back(Unescaped(text[position + 1]));
            position += 2;
            continue;
        }
        result.value.push_back(c);
        ++position;
    }
    return std::nullopt;
}

// Position just behind the string whose opening quote is at `quote`, or NotFound when it is not closed.
std::size_t SkipString(std::string_view text, std::size_t quote)
{
    std::size_t position = quote + 1;
    while (position < text.size()) {
        if (text[position] == '\\')
            position += 2;
        else if (text[position] == '"')
            return position + 1;
        else
            ++position;
    }
    return NotFound;
}

// Position of the `close` that balances the `open` at `position`, strings excepted.
std::size_t MatchingClose(std::string_view text, std::size_t position, char open, char close)
{
    std::size_t depth = 0;
    while (position < text.size()) {
        const char c = text[position];
        if (c == '"') {
            position = SkipString(text, position);
            if (position == NotFound)
                return NotFound;
            continue;
        }
        if (c == open) {
            ++depth;
        } else if (c == close) {
            if (--depth == 0)
                return position;
        }
        ++position;
    }
    return NotFound;
}

std::size_t SkipSpaceAndCommas(std::string_view text, std::size_t position)
{
    while (position < text.size() && (IsSpace(text[position]) || text[position] == ','))
        ++position;
    return position;
}

std::size_t SkipSpace(std::string_view text, std::size_t position)
{
    while (position < text.size() && IsSpace(text[position]))
        ++position;
    return position;
}

// Position just behind the value that starts at `position`, or NotFound when it does not end.
std::size_t SkipValue(std::string_view text, std::size_t position)
{
    const char c = text[position];
    if (c == '"')
        return SkipString(text, position);
    if (c == '{' || c == '[') {
        const std::size_t close = MatchingClose(text, position, c, c == '{' ? '}' : ']');
        return close == NotFound ? NotFound : close + 1;
    }
    while (position < text.size() && text[position] != ',' && text[position] != '}')
        ++position;
    return position;
}

} // namespace

std::optional<std::string> FindStringValue(std::string_view text, std::string_view key, std::size_t start)
{
    const std::size_t afterKey = FindKey(text, key, start);
    if (afterKey == NotFound)
        return std::nullopt;
    const std::size_t colon = text.find(':', afterKey);
    if (colon == NotFound)
        return std::nullopt;
    const std::size_t quote = text.find('"', colon + 1);
    if (quote == NotFound)
        return std::nullopt;
    auto quoted = ReadQuoted(text, quote);
    if (!quoted)
        return std::nullopt;
    return std::move(quoted->value);
}

std::optional<std::size_t> FindObjectStart(std::string_view text, std::string_view key, std::size_t start)
{
    const std::size_t afterKey = FindKey(text, key, start);
    if (afterKey == NotFound)
        return std::nullopt;
    const std::size_t brace = text.find('{', afterKey);
    if (brace == NotFound || MatchingClose(text, brace, '{', '}') == NotFound)
        return std::nullopt;
    return brace;
}

std::optional<bool> FindBoolValue(std::string_view text, std::string_view key, std::size_t start)
{
    const std::size_t position = FindValueStart(text, key, start);
    if (position == NotFound)
        return std::nullopt;
    const std::string_view rest = text.substr(position);
    if (rest.starts_with("true"))
        return true;
    if (rest.starts_with("false"))
        return false;
    return std::nullopt;
}

std::optional<float> FindNumberValue(std::string_view text, std::string_view key, std::size_t start)
{
    const std::size_t position = FindValueStart(text, key, start);
    if (position == NotFound)
        return std::nullopt;
    std::size_t end = position;
    while (end < text.size() && (IsDigit(text[end]) || text[end] == '+' || text[end] == '-' || text[end] == '.'))
        ++end;
    return ParseDecimalRun(text.substr(position, end - position));
}

std::optional<float> ParseDecimalRun(std::string_view run)
{
    // A float conversion reads one optional sign and then the longest number it can, and ignores what
    // follows: "1.2.3" is 1.2 and "12-3" is 12. from_chars knows no leading '+', so that sign is taken
    // here, and a second sign behind it leaves nothing to convert.
    std::string_view number = run;
    if (!number.empty() && number.front() == '+') {
        number.remove_prefix(1);
        if (!number.empty() && (number.front() == '+' || number.front() == '-'))
            return std::nullopt;
    }
    float value = 0.0f;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error != std::errc{} || end == number.data())
        return std::nullopt;
    return value;
}

std::optional<std::string> FindTopLevelStringValue(std::string_view text, std::string_view key)
{
    const std::size_t open = text.find('{');
    if (open == NotFound)
        return std::nullopt;
    std::size_t position = open + 1;
    for (;;) {
        position = SkipSpaceAndCommas(text, position);
        if (position >= text.size() || text[position] != '"')
            return std::nullopt;
        auto name = ReadQuoted(text, position);
        if (!name)
            return std::nullopt;
        position = SkipSpace(text, name->end);
        if (position >= text.size() || text[position] != ':')
            return std::nullopt;
        position = SkipSpace(text, position + 1);
        if (position >= text.size())
            return std::nullopt;
        if (text[position] == '"' && name->value == key) {
            auto value = ReadQuoted(text, position);
            if (!value)
                return std::nullopt;
            return std::move(value->value);
        }
        position = SkipValue(text, position);
        if (position == NotFound)
            return std::nullopt;
    }
}

std::optional<std::vector<std::string>> ReadStringArray(std::string_view text, std::string_view key,
    std::size_t start)
{
    const std::size_t afterKey = FindKey(text, key, start);
    if (afterKey == NotFound)
        return std::nullopt;
    const std::size_t open = text.find('[', afterKey);
    if (open == NotFound)
        return std::nullopt;
    const std::size_t close = text.find(']', open + 1);
    if (close == NotFound)
        return std::nullopt;
    return StringsIn(text.substr(open + 1, close - open - 1));
}

std::optional<std::string_view> FindBalancedArray(std::string_view text, std::string_view key, std::size_t start)
{
    const std::size_t afterKey = FindKey(text, key, start);
    if (afterKey == NotFound)
        return std::nullopt;
    const std::size_t open = text.find('[', afterKey);
    if (open == NotFound)
        return std::nullopt;
    const std::size_t close = MatchingClose(text, open, '[', ']');
    if (close == NotFound)
        return std::nullopt;
    return text.substr(open + 1, close - open - 1);
}

std::vector<std::string> StringsIn(std::string_view text)
{
    std::vector<std::string> strings;
    std::size_t position = text.find('"');
    while (position != NotFound) {
        auto quoted = ReadQuoted(text, position);
        if (!quoted)
            break;
        strings.push_back(std::move(quoted->value));
        position = text.find('"', quoted->end);
    }
    return strings;
}

std::vector<std::string_view> ObjectsIn(std::string_view text)
{
    std::vector<std::string_view> objects;
    std::size_t position = 0;
    while (position < text.size()) {
        const char c = text[position];
        if (c == '"') {
            position = SkipString(text, position);
            if (position == NotFound)
                break;
            continue;
        }
        if (c == '{') {
            const std::size_t close = MatchingClose(text, position, '{', '}');
            if (close == NotFound)
                break;
            objects.push_back(text.substr(position, close - position + 1));
            position = close + 1;
            continue;
        }
        ++position;
    }
    return objects;
}

} // namespace tlm
