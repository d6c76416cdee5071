#include "settings/Localizer.h"

#include "settings/LanguageCatalogue.h"
#include "settings/SystemLanguages.h"
#include "document/WholeFile.h"

namespace tlm {

namespace {

std::u16string Widen(std::string_view key)
{
    std::u16string wide;
    wide.reserve(key.size());
    for (char c : key)
        wide.push_back(static_cast<char16_t>(static_cast<unsigned char>(c)));
    return wide;
}

const std::u16string* Find(const StringTable& table, std::string_view key)
{
    const auto found = table.find(std::string(key));
    return found == table.end() ? nullptr : &found->second;
}

} // namespace

Localizer::Localizer(std::u16string baseDirectory, SystemLanguageSource systemLanguages)
    : baseDirectory(std::move(baseDirectory))
    , systemLanguages(systemLanguages ? std::move(systemLanguages) : SystemLanguageSource(PreferredUiLanguages))
{
}

std::u16string Localizer::EffectiveLanguage() const
{
    if (!effectiveLanguage) {
        std::u16string language = NormalizeLanguage(languageSetting);
        if (language == u"system")
            language = ResolveSystemLanguage(systemLanguages());
        effectiveLanguage = std::move(language);
    }
    return *effectiveLanguage;
}

const StringTable& Localizer::LoadStringTable(const std::u16string& code)
{
    if (const auto loaded = tables.find(code); loaded != tables.end())
        return loaded->second;
    const std::optional<std::string> bytes = ReadWholeFile(StringTablePath(baseDirectory, code));
    return tables.emplace(code, bytes ? ParseStringTable(*bytes) : StringTable{}).first->second;
}

std::u16string Localizer::Tr(std::string_view key)
{
    if (const std::u16string* text = Find(LoadStringTable(EffectiveLanguage()), key))
        return *text;
    if (const std::u16string* text = Find(LoadStringTable(std::u16string(FallbackLanguage)), key))
        return *text;
    return Widen(key);
}

std::u16string StringTablePath(const std::u16string& baseDirectory, const std::u16string& code)
{
    const auto base = PathFromText(baseDirectory);
    const auto name = PathFromText(code + u".txt");
    if (!base || !name)
        return {};
    return (*base / "resources" / "strings" / *name).u16string();
}

} // namespace tlm
