#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tlm {

// One user-interface language: its code, which names its string file, and the name its menu item shows.
struct LanguageEntry {
    std::u16string_view code;
    std::u16string_view displayName;
};

// The fifteen languages, in menu order; English first.
std::span<const LanguageEntry> LanguageCatalogue();

inline constexpr std::u16string_view FallbackLanguage = u"en-US";

// The catalogue code for a language tag: the whole code first, then the part before the first '-',
// both ignoring case, the first row winning. Nothing when no row fits.
std::optional<std::u16string> MatchCatalogLanguage(std::u16string_view tag);

// A catalogue code or "system" for whatever a settings file or a menu says.
std::u16string NormalizeLanguage(std::u16string_view text);

// The first of the user's preferred tags, in order, that the catalogue knows; otherwise English.
std::u16string ResolveSystemLanguage(std::span<const std::u16string> preferredTags);

} // namespace tlm
