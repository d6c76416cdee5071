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

// Everything the menu bar is drawn from. `isCommandEnabled` is the application's rule for a number;
// `translate` is the localizer's lookup.
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

// The whole bar: File, Edit, View, Settings, Help, with every popup, separator and check mark.
MenuItem BuildMenuBar(const MenuBarState& state);

} // namespace tlm
