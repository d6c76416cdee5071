#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace tlm {

// The texts of one language file, by key.
using StringTable = std::unordered_map<std::string, std::u16string>;

// Reads the lines of a language file given as its UTF-8 bytes. A line is "key=value": the first '='
// splits, key and value lose blanks, tabs, CR and LF at both ends, and the first line with a key wins.
// An empty line, a line whose very first character is '#' and a line without '=' are skipped. There
// are no escapes. A byte order mark is text like any other and so belongs to the first line's key.
StringTable ParseStringTable(std::string_view bytes);

// A key as the table stores it: each character above 127 becomes '?'.
std::string NarrowStringKey(std::u16string_view key);

} // namespace tlm
