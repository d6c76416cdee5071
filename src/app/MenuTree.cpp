#include "app/MenuTree.h"

#include "app/CommandId.h"
#include "app/LanguageMenuTable.h"
#include "encoding/EncodingCatalogue.h"
#include "encoding/EncodingFavorites.h"

#include <algorithm>

namespace tlm {

namespace {

// Recent files shown per level; the rest go one level down under "more recent files".
constexpr std::size_t RecentFilesPerLevel = 8;

std::u16string Decimal(std::size_t value)
{
    std::u16string digits;
    do {
        digits.insert(digits.begin(), static_cast<char16_t>(u'0' + value % 10));
        value /= 10;
    } while (value != 0);
    return digits;
}

class MenuBuilder {
public:
    explicit MenuBuilder(const MenuBarState& state) : state(state) {}

    MenuItem Bar() const;

private:
    std::u16string Tr(std::string_view key) const
    {
        return state.translate ? state.translate(key) : std::u16string(key.begin(), key.end());
    }

    bool Enabled(std::uint32_t id) const { return !state.isCommandEnabled || state.isCommandEnabled(id); }

    MenuItem Item(std::uint32_t id, std::u16string label, bool checked = false) const
    {
        MenuItem item;
        item.kind = MenuItem::Kind::Command;
        item.label = std::move(label);
        item.id = id;
        item.enabled = Enabled(id);
        item.checked = checked;
        return item;
    }

    MenuItem Item(CommandId id, bool checked = false) const
    {
        return Item(ToNumber(id), Tr(CommandMenuKey(id)), checked);
    }

    static MenuItem Separator()
    {
        MenuItem item;
        item.kind = MenuItem::Kind::Separator;
        item.enabled = true;
        return item;
    }

    MenuItem Popup(std::string_view key, std::vector<MenuItem> children) const
    {
        MenuItem item;
        item.kind = MenuItem::Kind::Popup;
        item.label = Tr(key);
        item.enabled = !state.busy;
        item.children = std::move(children);
        return item;
    }

    MenuItem EncodingItem(TextEncoding encoding) const
    {
        const auto id = ToNumber(CommandId::ViewEncodingAscii) + static_cast<std::uint32_t>(encoding);
        return Item(id, Tr(EncodingMenuKey(encoding)), state.currentEncoding == encoding);
    }

    void AppendRecentFiles(std::vector<MenuItem>& menu, std::size_t first) const;
    MenuItem FileMenu() const;
    MenuItem EditMenu() const;
    MenuItem ViewMenu() const;
    MenuItem ZoomMenu() const;
    MenuItem EncodingMenu() const;
    MenuItem FavoritesMenu() const;
    MenuItem EncodingGroupMenu(EncodingGroup group) const;
    MenuItem ThemeMenu() const;
    MenuItem LanguageMenu() const;
    MenuItem AnalysisMenu() const;
    MenuItem SettingsMenu() const;
    MenuItem HelpMenu() const;

    const MenuBarState& state;
};

void MenuBuilder::AppendRecentFiles(std::vector<MenuItem>& menu, std::size_t first) const
{
    // The command range has room for the stored maximum only; anything past it is not shown.
    const std::size_t count = std::min(state.recentFiles.size(), static_cast<std::size_t>(RecentFileCommands.count_));
    const std::size_t end = std::min(count, first + RecentFilesPerLevel);
    for (std::size_t index = first; index < end; ++index)
        menu.push_back(Item(RecentFileCommands.At(index), Decimal(index + 1) + u" " + state.recentFiles[index]));
    if (end < count) {
        std::vector<MenuItem> more;
        AppendRecentFiles(more, end);
        menu.push_back(Popup("menu.file.more_recent", std::move(more)));
    }
}

MenuItem MenuBuilder::FileMenu() const
{
    std::vector<MenuItem> items{Item(CommandId::FileOpen), Item(CommandId::FileSave), Item(CommandId::FileClose)};
    if (!state.recentFiles.empty()) {
        items.push_back(Separator());
        AppendRecentFiles(items, 0);
    }
    items.push_back(Separator());
    items.push_back(Item(CommandId::FileExit));
    return Popup("menu.file", std::move(items));
}

MenuItem MenuBuilder::EditMenu() const
{
    return Popup("menu.edit", {Item(CommandId::EditReadOnly, !state.editingEnabled)});
}

MenuItem MenuBuilder::ZoomMenu() const
{
    return Popup("menu.view.zoom",
                 {Item(CommandId::ViewZoomOut), Item(CommandId::ViewZoomIn), Separator(), Item(CommandId::ViewZoomReset)});
}

MenuItem MenuBuilder::ViewMenu() const
{
    return Popup("menu.view", {Item(CommandId::ViewFind), Item(CommandId::ViewGoTo), Separator(), ZoomMenu()});
}

MenuItem MenuBuilder::FavoritesMenu() const
{
    return Popup("menu.view.encoding.favorite",
                 {Item(CommandId::ViewEncodingAddFavorite), Item(CommandId::ViewEncodingRemoveFavorite),
                  Item(CommandId::ViewEncodingClearFavorites)});
}

MenuItem MenuBuilder::EncodingGroupMenu(EncodingGroup group) const
{
    std::vector<MenuItem> items;
    for (std::uint32_t value = 0; value < TextEncodingCount; ++value) {
        const auto encoding = static_cast<TextEncoding>(value);
        if (EncodingGroupOf(encoding) == group)
            items.push_back(EncodingItem(encoding));
    }
    return Popup(EncodingGroupMenuKey(group), std::move(items));
}

MenuItem MenuBuilder::EncodingMenu() const
{
    std::vector<MenuItem> items;
    const std::size_t favorites = std::min(state.favorites.size(), static_cast<std::size_t>(FavoriteCommands.count_));
    for (std::size_t index = 0; index < favorites; ++index) {
        const TextEncoding encoding = state.favorites[index];
        items.push_back(Item(FavoriteCommands.At(index), FavoriteMenuLabel(encoding), encoding == state.currentEncoding));
    }
    items.push_back(Separator());
    items.push_back(FavoritesMenu());
    items.push_back(Separator());
    for (TextEncoding encoding : {TextEncoding::Ascii, TextEncoding::Utf8, TextEncoding::Utf16Le, TextEncoding::Utf16Be})
        items.push_back(EncodingItem(encoding));
    items.push_back(Separator());
    for (EncodingGroup group : {EncodingGroup::Japanese, EncodingGroup::Korean, EncodingGroup::Chinese,
                                EncodingGroup::Thai, EncodingGroup::Vietnamese, EncodingGroup::Indic})
        items.push_back(EncodingGroupMenu(group));
    return Popup("menu.view.encoding", std::move(items));
}

MenuItem MenuBuilder::ThemeMenu() const
{
    // Any theme outside the four acts as Light, so Light carries the check then.
    const Theme shown = static_cast<std::uint32_t>(state.theme) <= static_cast<std::uint32_t>(Theme::Black)
                            ? state.theme
                            : Theme::Light;
    std::vector<MenuItem> items;
    for (CommandId id : {CommandId::ViewThemeLight, CommandId::ViewThemeCoolSlate, CommandId::ViewThemeDarkBlue,
                         CommandId::ViewThemeBlack}) {
        const auto theme = static_cast<Theme>(ToNumber(id) - ToNumber(CommandId::ViewThemeLight));
        items.push_back(Item(id, theme == shown));
    }
    return Popup("menu.view.theme", std::move(items));
}

MenuItem MenuBuilder::LanguageMenu() const
{
    const bool followsSystem = state.languageSetting == SystemLanguageSetting;
    std::vector<MenuItem> items{Item(LanguageCommands.At(0),
                                     SystemLanguageMenuLabel(Tr("menu.view.language.system"), state.languageSetting,
                                                             state.resolvedLanguage),
                                     followsSystem)};
    const std::span<const LanguageEntry> rows = LanguageMenuRows();
    for (std::size_t row = 1; row <= rows.size(); ++row) {
        const LanguageEntry& entry = rows[row - 1];
        items.push_back(Item(LanguageCommands.At(row), std::u16string(entry.displayName),
                             entry.code == state.languageSetting));
    }
    return Popup("menu.view.language", std::move(items));
}

MenuItem MenuBuilder::AnalysisMenu() const
{
    return Popup("menu.settings.analysis", {Item(CommandId::SettingsAnalysisDataInspector, state.inspectorOn),
                                            Item(CommandId::SettingsAnalysisStructView, state.structViewOn)});
}

MenuItem MenuBuilder::SettingsMenu() const
{
    return Popup("menu.settings", {EncodingMenu(), ThemeMenu(), LanguageMenu(), AnalysisMenu(), Separator(),
                                   Item(CommandId::SettingsFont)});
}

MenuItem MenuBuilder::HelpMenu() const
{
    return Popup("menu.help", {Item(CommandId::HelpAbout)});
}

MenuItem MenuBuilder::Bar() const
{
    MenuItem bar;
    bar.kind = MenuItem::Kind::Popup;
    bar.enabled = true;
    bar.children = {FileMenu(), EditMenu(), ViewMenu(), SettingsMenu(), HelpMenu()};
    return bar;
}

} // namespace

MenuItem BuildMenuBar(const MenuBarState& state)
{
    return MenuBuilder(state).Bar();
}

} // namespace tlm
