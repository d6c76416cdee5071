#include "app/AppWindow.h"

#include "app/CallIfSet.h"
#include "app/LanguageMenuTable.h"
#include "encoding/EncodingFavorites.h"

namespace tlm {

namespace {

constexpr float ZoomStepUp = 0.1f;
constexpr float ZoomStepDown = -0.1f;

} // namespace

void AppWindow::RegisterDefault(std::uint32_t id, std::u16string name, std::function<void()> action)
{
    commands.Register(id, Command{std::move(name), [this] { return !Busy(); }, std::move(action)});
}

void AppWindow::RegisterCommands()
{
    for (std::size_t index = 0; index < static_cast<std::size_t>(RecentFileCommands.count_); ++index) {
        commands.Register(RecentFileCommands.At(index),
            Command{RecentFileCommandName(index),
                [this, index] { return !Busy() && index < settings.recentFiles.size(); },
                [this, index] { OpenRecentFile(index); }});
    }
    for (std::size_t index = 0; index < static_cast<std::size_t>(FavoriteCommands.count_); ++index) {
        commands.Register(FavoriteCommands.At(index),
            Command{FavoriteCommandName(index),
                [this, index] { return !Busy() && index < settings.encodingFavorites.size(); },
                [this, index] { SelectFavorite(index); }});
    }
    for (std::size_t index = 0; index < static_cast<std::size_t>(LanguageCommands.count_); ++index) {
        if (!LanguageSettingForCommandIndex(index)) {
            continue;
        }
        RegisterDefault(LanguageCommands.At(index), LanguageCommandName(index), [this, index] { SetLanguage(index); });
    }

    const auto id = [](CommandId command) { return ToNumber(command); };
    const auto name = [](CommandId command) { return std::u16string(CommandName(command)); };
    const auto register_ = [&](CommandId command, std::function<void()> action) {
        RegisterDefault(id(command), name(command), std::move(action));
    };
    const auto openAndIdle = [this] { return !Busy() && document.IsOpen(); };

    register_(CommandId::FileOpen, [this] { ShowOpenDialog(); });
    commands.Register(id(CommandId::FileSave), Command{name(CommandId::FileSave), openAndIdle, [this] { SaveFile(); }});
    commands.Register(id(CommandId::FileClose), Command{name(CommandId::FileClose), openAndIdle, [this] { CloseFile(); }});
    register_(CommandId::EditReadOnly, [this] { ToggleReadOnly(); });
    // Without a file both stay enabled and return at once: there is nothing to search or go to.
    register_(CommandId::ViewFind, [this] { FindNext(); });
    register_(CommandId::ViewGoTo, [this] { GoTo(); });
    for (std::uint32_t value = 0; value < TextEncodingCount; ++value) {
        const auto encodingCommand = static_cast<CommandId>(id(CommandId::ViewEncodingAscii) + value);
        register_(encodingCommand, [this, value] { SetEncoding(static_cast<TextEncoding>(value)); });
    }
    commands.Register(id(CommandId::ViewEncodingAddFavorite),
        Command{name(CommandId::ViewEncodingAddFavorite),
            [this] { return CanAddFavorite(settings.encodingFavorites, currentEncoding, Busy()); },
            [this] { AddCurrentFavorite(); }});
    commands.Register(id(CommandId::ViewEncodingRemoveFavorite),
        Command{name(CommandId::ViewEncodingRemoveFavorite),
            [this] { return CanRemoveFavorite(settings.encodingFavorites, currentEncoding, Busy()); },
            [this] { RemoveCurrentFavorite(); }});
    commands.Register(id(CommandId::ViewEncodingClearFavorites),
        Command{name(CommandId::ViewEncodingClearFavorites),
            [this] { return CanClearFavorites(settings.encodingFavorites, Busy()); },
            [this] { ClearAllFavorites(); }});
    for (std::uint32_t value = 0; value <= static_cast<std::uint32_t>(Theme::Black); ++value) {
        const auto themeCommand = static_cast<CommandId>(id(CommandId::ViewThemeLight) + value);
        register_(themeCommand, [this, value] { SetTheme(static_cast<Theme>(value)); });
    }
    register_(CommandId::ViewZoomOut, [this] { StepZoom(ZoomStepDown); });
    register_(CommandId::ViewZoomIn, [this] { StepZoom(ZoomStepUp); });
    register_(CommandId::ViewZoomReset, [this] { ResetZoom(); });
    register_(CommandId::SettingsFont, [this] { ShowFontDialog(); });
    register_(CommandId::SettingsAnalysisDataInspector, [this] { ToggleInspector(); });
    register_(CommandId::SettingsAnalysisStructView, [this] { ToggleStructView(); });
    register_(CommandId::FileExit, [this] { Exit(); });
    register_(CommandId::HelpAbout, [this] { ShowAboutDialog(); });
}

bool AppWindow::IsCommandEnabled(std::uint32_t id) const
{
    return commands.IsEnabled(id);
}

bool AppWindow::ExecuteCommand(std::uint32_t id)
{
    return commands.Execute(id);
}

void AppWindow::SetEncoding(TextEncoding encoding)
{
    currentEncoding = encoding;
    hexView.SetEncoding(encoding);
    settings.encoding = encoding;
    SaveSettings();
    RebuildMenu();
    RefreshStatusBar();
    // The inspector shows the character at the caret in this encoding.
    RequestInspectorRefresh();
}

void AppWindow::SelectFavorite(std::size_t index)
{
    if (index < settings.encodingFavorites.size()) {
        SetEncoding(settings.encodingFavorites[index]);
    }
}

void AppWindow::AddCurrentFavorite()
{
    if (AddFavorite(settings.encodingFavorites, currentEncoding)) {
        SaveSettings();
        RebuildMenu();
    }
}

void AppWindow::RemoveCurrentFavorite()
{
    if (RemoveFavorite(settings.encodingFavorites, currentEncoding)) {
        SaveSettings();
        RebuildMenu();
    }
}

void AppWindow::ClearAllFavorites()
{
    if (ClearFavorites(settings.encodingFavorites)) {
        SaveSettings();
        RebuildMenu();
    }
}

void AppWindow::SetTheme(Theme theme)
{
    hexView.SetTheme(theme);
    settings.theme = theme;
    SaveSettings();
    ApplyStatusBarTheme();
    CallIfSet(platform.themeAnalysisWindows, theme);
    RebuildMenu();
    RefreshStatusBar();
    RequestStructRefresh();
}

void AppWindow::StepZoom(float step)
{
    hexView.StepZoom(step);
    RebuildMenu();
}

void AppWindow::ResetZoom()
{
    hexView.ResetZoom();
    RebuildMenu();
}

void AppWindow::SetLanguage(std::size_t index)
{
    const std::optional<std::u16string> code = LanguageSettingForCommandIndex(index);
    if (!code) {
        return;
    }
    localizer.SetLanguage(*code);
    settings.language = localizer.LanguageSetting();
    SaveSettings();
    RebuildMenu();
    UpdateTitle();
    RefreshStatusBar();
    CallIfSet(platform.relabelAnalysisWindows);
    RequestInspectorRefresh();
    RequestStructRefresh();
}

void AppWindow::ToggleReadOnly()
{
    // The view clears a half-typed byte, repaints and tells this window that its state changed.
    hexView.ToggleEditing();
    RebuildMenu();
    RefreshStatusBar();
}

void AppWindow::ToggleInspector()
{
    SetInspectorVisible(!settings.dataInspectorVisible);
}

void AppWindow::ToggleStructView()
{
    SetStructViewVisible(!settings.structViewVisible);
}

} // namespace tlm
