#include "settings/LocaleTags.h"

namespace tlm {

std::u16string LanguageTagFromLocale(std::string_view locale)
{
    const std::string_view name = locale.substr(0, locale.find_first_of(".@"));
    std::u16string tag;
    tag.reserve(name.size());
    for (char c : name)
        tag.push_back(c == '_' ? u'-' : static_cast<char16_t>(static_cast<unsigned char>(c)));
    return tag;
}

std::vector<std::u16string> PreferredLanguagesFromEnvironment(const LocaleEnvironment& environment)
{
    std::vector<std::u16string> tags;
    std::string_view list = environment.language;
    while (!list.empty()) {
        const std::size_t colon = list.find(':');
        const std::string_view entry = list.substr(0, colon);
        if (!entry.empty())
            tags.push_back(LanguageTagFromLocale(entry));
        list = colon == std::string_view::npos ? std::string_view{} : list.substr(colon + 1);
    }
    for (const std::string* variable : {&environment.lcAll, &environment.lcMessages, &environment.lang}) {
        if (!variable->empty()) {
            tags.push_back(LanguageTagFromLocale(*variable));
            break;
        }
    }
    return tags;
}

} // namespace tlm
