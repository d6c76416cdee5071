#pragma once

#include "encoding/TextEncoding.h"
#include "settings/AppSettings.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tlm {

// Reads a settings file's text into `settings`, changing only the fields whose keys it finds; the
// others keep their values. A leading UTF-8 byte order mark is dropped. False for empty text. Never
// fails on malformed text: what cannot be read is left as it was.
bool ParseSettings(std::string_view text, AppSettings& settings);

// Reads the file at `path` as ParseSettings does; false when it cannot be read or is empty.
bool LoadSettings(const std::u16string& path, AppSettings& settings);

// The "encoding" object: a common name, or a charset's language and code that belong together.
std::optional<TextEncoding> ReadEncoding(std::string_view text);

// The favourites array: each name through the alias lists, repeats dropped, at most three kept.
std::optional<std::vector<TextEncoding>> ReadEncodingFavorites(std::string_view text);

// The search history array: every object with both a kind and a query.
std::optional<std::vector<SearchHistoryEntry>> ReadSearchHistory(std::string_view text);

} // namespace tlm
