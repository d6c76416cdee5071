#pragma once

#include "encoding/TextEncoding.h"
#include "settings/ProductVersion.h"
#include "settings/Theme.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tlm {

// How the struct view prints byte arrays.
enum class ByteArrayFormat : std::uint32_t { Hex = 0, Ascii = 1 };

// Byte order the struct view reads multi-byte values in.
enum class StructEndian : std::uint32_t { Little = 0, Big = 1 };

// Base the struct view prints integers in.
enum class NumericBase : std::uint32_t { Hex = 0, Dec = 1 };

// One remembered query of the find dialog; `kind` is "text" or "hex".
struct SearchHistoryEntry {
    std::u16string kind;
    std::u16string query;

    friend bool operator==(const SearchHistoryEntry&, const SearchHistoryEntry&) = default;
};

inline constexpr std::u16string_view SettingsVersion = ProductVersion;
inline constexpr std::u16string_view SystemLanguageSetting = u"system";
inline constexpr std::u16string_view DefaultFontFamily = u"Consolas";
inline constexpr float DefaultFontSize = 12.0f;
inline constexpr std::size_t MaxRecentFiles = 16;
inline constexpr std::size_t MaxSearchHistory = 16;

// Everything the program remembers between runs; written whole after each change.
struct AppSettings {
    bool dataInspectorVisible = true;
    bool structViewVisible = false;
    ByteArrayFormat byteArrayFormat = ByteArrayFormat::Hex;
    StructEndian endian = StructEndian::Little;
    NumericBase numericBase = NumericBase::Hex;
    std::u16string appVersion;
    TextEncoding encoding = TextEncoding::Ascii;
    std::vector<TextEncoding> encodingFavorites;
    Theme theme = Theme::CoolSlate;
    std::u16string language = std::u16string(SystemLanguageSetting);
    std::u16string fontFamily = std::u16string(DefaultFontFamily);
    float fontSize = DefaultFontSize;
    bool fontBold = false;
    bool fontItalic = false;
    std::vector<std::u16string> recentFiles;
    std::vector<SearchHistoryEntry> searchHistory;

    friend bool operator==(const AppSettings&, const AppSettings&) = default;
};

// Every field back to its default, with `version` and the normalised `language`.
void ResetSettings(AppSettings& settings, std::u16string_view version, std::u16string_view language);

// Puts `path` at the front of the recent files without a duplicate and keeps sixteen. Answers false
// when the path is empty and nothing happened; true means the caller saves.
bool AddRecentFile(AppSettings& settings, std::u16string_view path);

// Puts the query at the front of the history without a duplicate and keeps sixteen. Answers false when
// either part is empty and nothing happened; true means the caller saves.
bool AddSearchHistory(AppSettings& settings, std::u16string_view kind, std::u16string_view query);

} // namespace tlm
