#include "settings/AppSettings.h"

#include "settings/LanguageCatalogue.h"
#include "settings/RecentFilePath.h"

#include <algorithm>

namespace tlm {

void ResetSettings(AppSettings& settings, std::u16string_view version, std::u16string_view language)
{
    settings = AppSettings{};
    settings.appVersion = std::u16string(version);
    settings.language = NormalizeLanguage(language);
}

bool AddRecentFile(AppSettings& settings, std::u16string_view path)
{
    if (path.empty())
        return false;
    std::erase_if(settings.recentFiles, [&](const std::u16string& entry) { return SameRecentFile(entry, path); });
    settings.recentFiles.insert(settings.recentFiles.begin(), std::u16string(path));
    if (settings.recentFiles.size() > MaxRecentFiles)
        settings.recentFiles.resize(MaxRecentFiles);
    return true;
}

bool AddSearchHistory(AppSettings& settings, std::u16string_view kind, std::u16string_view query)
{
    if (kind.empty() || query.empty())
        return false;
    SearchHistoryEntry entry{std::u16string(kind), std::u16string(query)};
    std::erase(settings.searchHistory, entry);
    settings.searchHistory.insert(settings.searchHistory.begin(), std::move(entry));
    if (settings.searchHistory.size() > MaxSearchHistory)
        settings.searchHistory.resize(MaxSearchHistory);
    return true;
}

} // namespace tlm
