#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The settings reader is not a JSON parser: it looks keys up in the raw text. These scans are its
// pieces. Every position is a byte offset into `text`; a key is given without its quotes.
namespace tlm {

// The string after `"key"` found from `start`: the next ':' and then the next '"'. A value that is not
// a string therefore yields the next string of the file. \b \f \n \r \t are decoded; any other
// escaped character stands for itself, so "\u0041" reads as "u0041".
std::optional<std::string> FindStringValue(std::string_view text, std::string_view key, std::size_t start);

// Position of the first '{' after `"key"` found from `start`, provided its braces balance (braces
// inside strings do not count).
std::optional<std::size_t> FindObjectStart(std::string_view text, std::string_view key, std::size_t start);

// After `"key"`, the ':' and white space: exactly "true" or "false".
std::optional<bool> FindBoolValue(std::string_view text, std::string_view key, std::size_t start);

// After `"key"`, the ':' and white space: the run of digits, '+', '-' and '.' as a float. Anything else
// ends the run, an exponent letter too. The run converts as a float conversion reads it, the longest
// number at its start ("1.2.3" is 1.2); nothing when no number starts it ("+-.", ".") or it is out of
// a float's range.
std::optional<float> FindNumberValue(std::string_view text, std::string_view key, std::size_t start);

// The string value of the member `key` of the outermost object; members of nested objects are skipped,
// so a key that also appears deeper is found only at the top.
std::optional<std::string> FindTopLevelStringValue(std::string_view text, std::string_view key);

// The strings between the '[' after `"key"` and the next ']'. A ']' inside a string therefore ends the
// list, and the string it cuts is lost.
std::optional<std::vector<std::string>> ReadStringArray(std::string_view text, std::string_view key,
    std::size_t start);

// The inside of the array after `"key"`, up to its matching ']' (brackets inside strings do not count).
std::optional<std::string_view> FindBalancedArray(std::string_view text, std::string_view key, std::size_t start);

// Every string of `text`, in order.
std::vector<std::string> StringsIn(std::string_view text);

// Every balanced {...} of `text` not inside a string, each with its braces.
std::vector<std::string_view> ObjectsIn(std::string_view text);

// Converts the number at the start of a run of digits, signs and points; the rest of the run is ignored.
std::optional<float> ParseDecimalRun(std::string_view run);

} // namespace tlm
