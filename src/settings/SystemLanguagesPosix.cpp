#include "settings/SystemLanguages.h"

#include "settings/LocaleTags.h"

#include <cstdlib>

namespace tlm {

namespace {

std::string Variable(const char* name)
{
    const char* value = std::getenv(name);
    return value ? std::string(value) : std::string();
}

} // namespace

std::vector<std::u16string> PreferredUiLanguages()
{
    LocaleEnvironment environment;
    environment.language = Variable("LANGUAGE");
    environment.lcAll = Variable("LC_ALL");
    environment.lcMessages = Variable("LC_MESSAGES");
    environment.lang = Variable("LANG");
    return PreferredLanguagesFromEnvironment(environment);
}

} // namespace tlm
