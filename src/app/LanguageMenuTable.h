#pragma once

#include "settings/AppSettings.h"
#include "settings/LanguageCatalogue.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tlm {

// The language menu's rows 1 to 15, in menu order: code and label. Row n has the number
// LanguageCommands.At(n); number 1300 (index 0) is the system item, which is no row of this table.
// The labels are the languages' own names and are never translated.
std::span<const LanguageEntry> LanguageMenuRows();

// The language setting a language command stands for: "system" for index 0, the row's code for 1 to
// 15, nothing beyond.
std::optional<std::u16string> LanguageSettingForCommandIndex(std::size_t index);

// The table's label for a code compared exactly, cut in front of its first " ("; a code the table
// does not know stands as it is. "ko-KR" gives "한국어", "en-US" gives "English".
std::u16string ShortLanguageLabel(std::u16string_view code);

// Label of the system item: the translated `systemText`, followed by " (<short label of
// resolvedCode>)" only while the setting is "system".
std::u16string SystemLanguageMenuLabel(std::u16string_view systemText, std::u16string_view languageSetting,
                                       std::u16string_view resolvedCode);

} // namespace tlm
