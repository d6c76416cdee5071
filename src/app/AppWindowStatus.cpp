#include "app/AppWindow.h"

#include "app/StatusText.h"
#include "app/WindowTitle.h"

namespace tlm {

MenuItem AppWindow::BuildMenu()
{
    MenuBarState state;
    state.isCommandEnabled = [this](std::uint32_t id) { return IsCommandEnabled(id); };
    state.translate = [this](std::string_view key) { return Tr(key); };
    state.busy = Busy();
    state.recentFiles = settings.recentFiles;
    state.favorites = settings.encodingFavorites;
    state.currentEncoding = currentEncoding;
    state.theme = hexView.GetTheme();
    state.languageSetting = settings.language;
    state.resolvedLanguage = localizer.EffectiveLanguage();
    state.editingEnabled = hexView.IsEditingEnabled();
    state.inspectorOn = settings.dataInspectorVisible;
    state.structViewOn = settings.structViewVisible;
    return BuildMenuBar(state);
}

void AppWindow::RebuildMenu()
{
    if (!platform.installMenu) {
        return;
    }
    // Building a bar of menus is slow on some systems, and one the same as the bar standing changes
    // nothing for the user.
    MenuItem bar = BuildMenu();
    if (installedMenu && *installedMenu == bar) {
        return;
    }
    platform.installMenu(bar);
    installedMenu = std::move(bar);
}

void AppWindow::UpdateTitle()
{
    if (windowExists && platform.setTitle) {
        platform.setTitle(ComposeWindowTitle(Tr("app.title"), document));
    }
}

std::u16string AppWindow::BuildStatusText()
{
    StatusTextInputs inputs;
    inputs.overrideActive = readOnlyWarning.Active();
    inputs.overrideText = readOnlyWarning.Text();
    inputs.saveActive = saveFlow.Progress().active;
    inputs.saveText = saveFlow.Progress().text;
    inputs.searchActive = searchProgress.active;
    inputs.searchText = searchProgress.text;
    inputs.fileOpen = document.IsOpen();
    inputs.fileSize = document.GetSize();
    inputs.caret = hexView.State().caretOffset;
    inputs.encoding = currentEncoding;
    inputs.editingEnabled = hexView.IsEditingEnabled();
    inputs.insertMode = hexView.State().insertMode == HexEditMode::Insert;
    inputs.modified = document.IsModified();
    inputs.zoom = hexView.Metrics().zoom;
    return tlm::BuildStatusText(inputs, [this](std::string_view key) { return Tr(key); });
}

void AppWindow::RefreshStatusBar()
{
    statusText = BuildStatusText();
    if (platform.setStatusText) {
        platform.setStatusText(statusText);
    }
}

void AppWindow::ReportSearchProgress(std::uint64_t processed, std::uint64_t total)
{
    const std::uint64_t now = platform.tickCount ? platform.tickCount() : 0;
    if (!searchProgress.Report(processed, total, now, Tr("status.searching"))) {
        return;
    }
    RefreshStatusBar();
    if (platform.updateStatusBarNow) {
        platform.updateStatusBarNow();
    }
    if (platform.pumpMessages) {
        platform.pumpMessages();
    }
}

void AppWindow::EndSearchProgress()
{
    searchProgress.Reset();
    RefreshStatusBar();
}

StatusBarColors AppWindow::StatusColors() const
{
    return StatusBarColorsFor(hexView.GetTheme(), readOnlyWarning.Active());
}

void AppWindow::ApplyStatusBarTheme()
{
    if (platform.colourStatusBar) {
        platform.colourStatusBar(hexView.GetTheme());
    }
}

} // namespace tlm
