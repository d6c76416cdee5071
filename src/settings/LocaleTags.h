#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tlm {

// The locale variables a POSIX program reads for its messages; an unset variable is empty.
struct LocaleEnvironment {
    std::string language;   // LANGUAGE: a colon-separated list of preferences
    std::string lcAll;      // LC_ALL
    std::string lcMessages; // LC_MESSAGES
    std::string lang;       // LANG
};

// "ll_CC.UTF-8@modifier" as a language tag "ll-CC": the code set and the modifier go, '_' becomes '-'.
std::u16string LanguageTagFromLocale(std::string_view locale);

// The user's languages in order of preference: the entries of LANGUAGE, then the messages locale,
// which is the first of LC_ALL, LC_MESSAGES and LANG that is set.
std::vector<std::u16string> PreferredLanguagesFromEnvironment(const LocaleEnvironment& environment);

} // namespace tlm
