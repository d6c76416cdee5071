#include "app/AppWindow.h"

#include "app/CallIfSet.h"
#include "app/FileFlow.h"

namespace tlm {

bool AppWindow::OpenFile(const std::u16string& path)
{
    if (path.empty()) {
        return false;
    }
    // The old file goes before the new one is known to be good.
    document.Close();
    if (!document.file.Open(path)) {
        if (platform.messageBox) {
            platform.messageBox(Tr("error.open_failed"), Tr("app.title"), MessageBoxKind::Stop);
        }
        // Nothing is open now: the view, the title and the menu must not go on showing the old file.
        hexView.SetDocument(&document);
        RebuildMenu();
        UpdateTitle();
        RefreshStatusBar();
        return false;
    }
    hexView.SetDocument(&document);
    AddRecentFile(path);
    RebuildMenu();
    UpdateTitle();
    RefreshStatusBar();
    RequestInspectorRefresh();
    RequestStructRefresh();
    return true;
}

void AppWindow::AddRecentFile(const std::u16string& path)
{
    if (path.empty()) {
        return;
    }
    tlm::AddRecentFile(settings, path);
    SaveSettings();
}

void AppWindow::ShowOpenDialog()
{
    if (!ConfirmSaveChanges()) {
        return;
    }
    const std::optional<std::u16string> chosen =
        platform.chooseFileToOpen ? platform.chooseFileToOpen(Tr("dialog.open.title")) : std::nullopt;
    if (chosen) {
        OpenFile(*chosen);
    }
}

void AppWindow::OpenRecentFile(std::size_t index)
{
    if (index >= settings.recentFiles.size() || !ConfirmSaveChanges()) {
        return;
    }
    // A copy: opening moves the path to the front of the very list it comes from.
    const std::u16string path = settings.recentFiles[index];
    OpenFile(path);
}

void AppWindow::OpenInNewInstance(const std::u16string& path)
{
    AppHost host = FlowHost();
    tlm::OpenInNewInstance(host, path, Tr("error.open_new_instance_failed"), Tr("app.title"));
}

void AppWindow::OnDropFiles(const std::vector<std::u16string>& paths)
{
    DropFiles(paths, document.IsOpen(), [this](const std::u16string& path) { return OpenFile(path); },
        [this](const std::u16string& path) { OpenInNewInstance(path); });
}

bool AppWindow::ConfirmSaveChanges()
{
    AppHost host = FlowHost();
    return tlm::ConfirmSaveChanges(host, document.IsOpen(), document.IsModified(), Tr("confirm.save_changes"),
        Tr("app.title"), [this] { return SaveFile(); });
}

bool AppWindow::SaveFile()
{
    AppHost host = FlowHost();
    const SaveTexts texts{Tr("status.saving"), Tr("error.save_failed"), Tr("app.title")};
    const bool saved = saveFlow.Run(host, document.IsOpen(),
        [this](const ProgressCallback& progress) { return document.Save(progress); },
        [this] { return document.LastError(); }, texts);
    // A save that could not open the file again leaves nothing open; the view follows.
    if (!document.IsOpen()) {
        hexView.SetDocument(&document);
    }
    return saved;
}

void AppWindow::CloseFile()
{
    if (!ConfirmSaveChanges()) {
        return;
    }
    document.Close();
    hexView.SetDocument(&document);
    RebuildMenu();
    UpdateTitle();
    RefreshStatusBar();
    RequestInspectorRefresh();
    RequestStructRefresh();
}

void AppWindow::Exit()
{
    if (ConfirmSaveChanges() && windowExists) {
        CallIfSet(platform.destroyWindow);
    }
}

} // namespace tlm
