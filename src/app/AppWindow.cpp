#include "app/AppWindow.h"

#include "app/CallIfSet.h"
#include "settings/SettingsFile.h"
#include "settings/SettingsStartup.h"

#include <utility>

namespace tlm {

namespace {

// An empty step counts as done: only a refusal the platform reports stops the start-up.
bool Succeeds(const std::function<bool()>& step)
{
    return !step || step();
}

std::uint32_t FormatNumber(auto value)
{
    return static_cast<std::uint32_t>(value);
}

} // namespace

AppWindow::AppWindow()
    : inspectorWorker(&ComputeInspectorJob)
    , structWorker(&ComputeStructJob)
{
}

AppWindow::~AppWindow()
{
    // The workers go first: a result still travelling to a window that is gone is freed with them.
    StopWorkers();
}

void AppWindow::SetPlatform(AppPlatform newPlatform)
{
    platform = std::move(newPlatform);
}

AppHost AppWindow::FlowHost()
{
    AppHost host;
    host.setTimer = platform.setTimer;
    host.killTimer = platform.killTimer;
    host.beep = platform.beep;
    host.messageBox = platform.messageBox;
    host.executablePath = platform.executablePath;
    host.createProcess = platform.createProcess;
    host.enableHexView = platform.enableHexView;
    host.updateStatusBarNow = platform.updateStatusBarNow;
    host.pumpMessages = platform.pumpMessages;
    host.tickCount = platform.tickCount;
    host.refreshStatusBar = [this] { RefreshStatusBar(); };
    host.rebuildMenu = [this] { RebuildMenu(); };
    host.updateTitle = [this] { UpdateTitle(); };
    return host;
}

bool AppWindow::Create(std::optional<std::u16string> path)
{
    pendingOpenPath = std::move(path);

    // The language files lie beside the program; failing that, in the current folder. Why the
    // program's folder is unknown is not worth showing to anyone.
    std::optional<std::u16string> base = platform.executableFolder ? platform.executableFolder() : std::nullopt;
    if (!base && platform.currentFolder) {
        base = platform.currentFolder();
    }
    localizer.SetBaseDirectory(base.value_or(std::u16string()));
    settingsPath = platform.settingsPath ? platform.settingsPath() : std::u16string(SettingsFileName);

    // No window exists yet: nothing has touched the settings before this.
    LoadSettings();

    CallIfSet(platform.initCommonControls);
    // A view class that cannot be registered shows up later as a view that was not created.
    Succeeds(platform.registerHexViewClass);
    if (!Succeeds(platform.registerMainClass)) {
        return false;
    }
    if (!Succeeds(platform.createMainWindow)) {
        return false;
    }
    windowExists = true;
    CallIfSet(platform.sizeAndCentre);
    StartWorkers();
    if (!Succeeds(platform.createAccelerators)) {
        return false;
    }
    CallIfSet(platform.showWindow);
    // The analysis windows wait for the main window: they come beside it once it stands, so they
    // neither show on their own nor hold up its first appearance.
    CallIfSet(platform.placeAnalysisWindows);
    return true;
}

void AppWindow::LoadSettings()
{
    settings = LoadOrCreateSettings(settingsPath, localizer).settings;
}

void AppWindow::SaveSettings()
{
    // A settings file that cannot be written is not worth a word: the program runs on what it holds.
    tlm::SaveSettings(settings, settingsPath);
}

void AppWindow::OnCreate()
{
    windowExists = true;
    RegisterCommands();
    RebuildMenu();
    Succeeds(platform.createStatusBar);
    Succeeds(platform.createHexView);
    hexView.SetDocument(&document);

    currentEncoding = settings.encoding;
    byteArrayFormat = FormatNumber(settings.byteArrayFormat);
    endianFormat = FormatNumber(settings.endian);
    numericBaseFormat = FormatNumber(settings.numericBase);
    hexView.SetEncoding(currentEncoding);
    hexView.SetTheme(settings.theme);
    hexView.SetFont(settings.fontFamily, settings.fontSize, settings.fontBold, settings.fontItalic);

    ApplyStoredAnalysisSwitches();
    // Again: the switches and the language are final only now.
    RebuildMenu();

    CallIfSet(platform.layoutChildren);
    ApplyStatusBarTheme();
    CallIfSet(platform.placeAnalysisWindows);
    UpdateTitle();
    RefreshStatusBar();
    RequestInspectorRefresh();
    RequestStructRefresh();

    // The file named on the command line opens before the window is sized or shown, so a failure
    // shows its box while the main window is still hidden.
    if (pendingOpenPath) {
        const std::u16string path = std::move(*pendingOpenPath);
        pendingOpenPath.reset();
        OpenFile(path);
    }
}

void AppWindow::ApplyStoredAnalysisSwitches()
{
    SetInspectorVisible(settings.dataInspectorVisible);
    SetStructViewVisible(settings.structViewVisible);
}

bool AppWindow::OnAppMessage(AppMessage message, std::uintptr_t wParam, std::intptr_t lParam)
{
    switch (message) {
    case AppMessage::ViewChanged:
        OnViewChanged();
        return true;
    case AppMessage::ReadOnlyBlocked:
        OnReadOnlyBlocked();
        return true;
    case AppMessage::ZoomChanged:
        RefreshStatusBar();
        return true;
    case AppMessage::InspectorResult:
        OnInspectorResult(lParam);
        return true;
    case AppMessage::InspectorClosed:
        OnInspectorClosed();
        return true;
    case AppMessage::StructViewClosed:
        OnStructViewClosed();
        return true;
    case AppMessage::StructResult:
        OnStructResult(lParam);
        return true;
    case AppMessage::StructOpenPattern:
        OpenStructPattern();
        return true;
    case AppMessage::StructClearPattern:
        ClearStructPattern();
        return true;
    case AppMessage::StructReloadPattern:
        ReloadStructPattern();
        return true;
    case AppMessage::StructValueFormat:
        ApplyStructValueFormat(wParam);
        return true;
    }
    return false;
}

void AppWindow::OnViewChanged()
{
    UpdateTitle();
    RefreshStatusBar();
    RequestInspectorRefresh();
    RequestStructRefresh();
}

void AppWindow::OnReadOnlyBlocked()
{
    AppHost host = FlowHost();
    readOnlyWarning.OnBlocked(host, Tr("status.readonly_blocked"));
}

bool AppWindow::OnTimer(unsigned timerId)
{
    AppHost host = FlowHost();
    return readOnlyWarning.OnTimer(host, timerId);
}

void AppWindow::OnClose()
{
    // A save pumps messages: a close arriving meanwhile would pull the document from under it.
    if (Busy()) {
        return;
    }
    if (ConfirmSaveChanges()) {
        CallIfSet(platform.destroyWindow);
    }
}

void AppWindow::OnDestroy()
{
    inspectorWorker.Stop();
    CallIfSet(platform.destroyInspectorWindow);
    structWorker.Stop();
    CallIfSet(platform.destroyStructViewWindow);
    CallIfSet(platform.destroyAccelerators);
    CallIfSet(platform.removeMenu);
    installedMenu.reset();
    windowExists = false;
    CallIfSet(platform.postQuit);
}

void AppWindow::OnDpiChanged(std::uint32_t dpi)
{
    hexView.OnDpiChanged(dpi == 0 ? 96 : dpi);
    CallIfSet(platform.layoutChildren);
    CallIfSet(platform.placeAnalysisWindows);
    RefreshStatusBar();
}

void AppWindow::OnSize()
{
    CallIfSet(platform.layoutChildren);
    CallIfSet(platform.placeAnalysisWindows);
}

void AppWindow::OnMove()
{
    CallIfSet(platform.placeAnalysisWindows);
}

void AppWindow::StartWorkers()
{
    // Requests made while the window was being created wait in the slots until now.
    inspectorWorker.Start(platform.postToMainWindow, static_cast<std::uint32_t>(AppMessage::InspectorResult));
    structWorker.Start(platform.postToMainWindow, static_cast<std::uint32_t>(AppMessage::StructResult));
}

void AppWindow::StopWorkers()
{
    inspectorWorker.Stop();
    structWorker.Stop();
}

} // namespace tlm
