#include "app/LanguageMenuTable.h"

namespace tlm {

std::span<const LanguageEntry> LanguageMenuRows()
{
    // The settings catalogue keeps the same fifteen rows in menu order; one table serves both.
    return LanguageCatalogue();
}

std::optional<std::u16string> LanguageSettingForCommandIndex(std::size_t index)
{
    if (index == 0)
        return std::u16string(SystemLanguageSetting);
    const std::span<const LanguageEntry> rows = LanguageMenuRows();
    if (index > rows.size())
        return std::nullopt;
    return std::u16string(rows[index - 1].code);
}

std::u16string ShortLanguageLabel(std::u16string_view code)
{
    for (const LanguageEntry& row : LanguageMenuRows()) {
        if (row.code == code)
            return std::u16string(row.displayName.substr(0, row.displayName.find(u" (")));
    }
    return std::u16string(code);
}

std::u16string SystemLanguageMenuLabel(std::u16string_view systemText, std::u16string_view languageSetting,
                                       std::u16string_view resolvedCode)
{
    std::u16string label(systemText);
    if (languageSetting == SystemLanguageSetting) {
        label += u" (";
        label += ShortLanguageLabel(resolvedCode);
        label += u")";
    }
    return label;
}

} // namespace tlm
