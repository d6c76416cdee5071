#include "settings/LanguageCatalogue.h"

#include <array>

namespace tlm {

namespace {

constexpr std::array<LanguageEntry, 15> Catalogue{{
    {u"en-US", u"English"},
    {u"ja-JP", u"日本語 (Japanese)"},
    {u"be-BY", u"Беларуская (Belarusian)"},
    {u"de-DE", u"Deutsch (German)"},
    {u"es-ES", u"Español (Spanish)"},
    {u"fr-FR", u"Français (French)"},
    {u"hu-HU", u"Magyar (Hungarian)"},
    {u"it-IT", u"Italiano (Italian)"},
    {u"ko-KR", u"한국어 (Korea)"},
    {u"pl-PL", u"Polski (Polish)"},
    {u"pt-BR", u"Português (Portuguese)"},
    {u"ru-RU", u"Русский (Russian)"},
    {u"uk-UA", u"Українська (Ukrainian)"},
    {u"zh-CN", u"简体中文 (Simplified Chinese)"},
    {u"zh-TW", u"繁體中文 (Traditional Chinese)"},
}};

char16_t AsciiLower(char16_t c)
{
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 0x20) : c;
}

bool EqualIgnoringAsciiCase(std::u16string_view left, std::u16string_view right)
{
    if (left.size() != right.size())
        return false;
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (AsciiLower(left[i]) != AsciiLower(right[i]))
            return false;
    }
    return true;
}

std::u16string_view PrimarySubtag(std::u16string_view tag)
{
    return tag.substr(0, tag.find(u'-'));
}

} // namespace

std::span<const LanguageEntry> LanguageCatalogue()
{
    return Catalogue;
}

std::optional<std::u16string> MatchCatalogLanguage(std::u16string_view tag)
{
    for (const LanguageEntry& entry : Catalogue) {
        if (EqualIgnoringAsciiCase(entry.code, tag))
            return std::u16string(entry.code);
    }
    const std::u16string_view primary = PrimarySubtag(tag);
    for (const LanguageEntry& entry : Catalogue) {
        if (EqualIgnoringAsciiCase(PrimarySubtag(entry.code), primary))
            return std::u16string(entry.code);
    }
    return std::nullopt;
}

std::u16string NormalizeLanguage(std::u16string_view text)
{
    if (text.empty() || EqualIgnoringAsciiCase(text, u"system"))
        return u"system";
    if (text == u"English")
        return u"en-US";
    if (text == u"Japanese")
        return u"ja-JP";
    return MatchCatalogLanguage(text).value_or(u"system");
}

std::u16string ResolveSystemLanguage(std::span<const std::u16string> preferredTags)
{
    for (const std::u16string& tag : preferredTags) {
        if (auto code = MatchCatalogLanguage(tag))
            return *code;
    }
    return std::u16string(FallbackLanguage);
}

} // namespace tlm
