#pragma once

#include "encoding/TextEncoding.h"
#include "settings/Theme.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tlm {

// One entry of the menu bar as the platform is to build it. The bar itself is a popup whose children
// are the top-level popups.
struct MenuItem {
    enum class Kind { Command, Separator, Popup };

    Kind kind = Kind::Command;
    std::u16string label;
    std::uint32_t id = 0; // commands only
    bool enabled = true;  // popups: false while busy (greyed title)
    bool checked = false;
    std::vector<MenuItem> children; // popups only

    friend bool operator==(const MenuItem&, const MenuItem&) = default;
};

// Everything the menu bar is drawn from. `isCommandEnabled` is the application's rule for a number
// (empty: every command enabled); `translate` is the localizer's lookup (empty: the key itself).
// Only the first 16 recent files and the first 3 favourites have command numbers, so only they show.
struct MenuBarState {
    std::function<bool(std::uint32_t id)> isCommandEnabled;
    std::function<std::u16string(std::string_view key)> translate;
    bool busy = false;
    std::vector<std::u16string> recentFiles;
    std::vector<TextEncoding> favorites;
    TextEncoding currentEncoding = TextEncoding::Ascii;
    Theme theme = Theme::CoolSlate;
    std::u16string languageSetting;   // "system" or a code, as stored
    std::u16string resolvedLanguage;  // the code the localizer resolved
    bool editingEnabled = false;      // Edit > Read-only is checked when this is false
    bool inspectorOn = false;
    bool structViewOn = false;
};

// The whole bar: File, Edit, View, Settings, Help, with every popup, separator and check mark. The
// returned item is the bar itself (a popup without label); plain items are greyed where
// `isCommandEnabled` says no, popup titles while `busy`. Recent files read "<index+1> <path>", eight
// a level, the rest under "menu.file.more_recent"; favourites read "★ <display name>" with the
// numbers 1200 on; the language items are 1300 (system) and 1301 to 1315.
MenuItem BuildMenuBar(const MenuBarState& state);

} // namespace tlm
