#pragma once

#include "settings/StringTable.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tlm {

// Where the Localizer learns the user's languages when the setting is "system".
using SystemLanguageSource = std::function<std::vector<std::u16string>()>;

// User-interface texts by key, from one file per language under the program's folder
// ("resources/strings/<code>.txt"), each read on first use and kept for the run.
class Localizer {
public:
    explicit Localizer(std::u16string baseDirectory = {}, SystemLanguageSource systemLanguages = {});

    void SetBaseDirectory(std::u16string directory) { baseDirectory = std::move(directory); }
    const std::u16string& BaseDirectory() const { return baseDirectory; }

    void SetLanguage(std::u16string_view setting)
    {
        languageSetting = std::u16string(setting);
        effectiveLanguage.reset();
    }
    const std::u16string& LanguageSetting() const { return languageSetting; }

    // The catalogue code whose file answers first: the setting, or the system's choice for "system".
    // The system is asked once per setting: every text looked up needs the answer.
    std::u16string EffectiveLanguage() const;

    // The table of a language, read from its file the first time; a missing file gives an empty table.
    const StringTable& LoadStringTable(const std::u16string& code);

    // The text for `key` in the effective language, else in English, else the key itself.
    std::u16string Tr(std::string_view key);

private:
    std::u16string baseDirectory;
    std::u16string languageSetting = u"system";
    mutable std::optional<std::u16string> effectiveLanguage;
    std::unordered_map<std::u16string, StringTable> tables;
    SystemLanguageSource systemLanguages;
};

// Path of a language's file under a base directory.
std::u16string StringTablePath(const std::u16string& baseDirectory, const std::u16string& code);

} // namespace tlm
