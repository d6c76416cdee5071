#pragma once

#include "app/AppHost.h"
#include "app/AppMessage.h"
#include "app/AppPlatform.h"
#include "app/CommandTable.h"
#include "app/ProgressThrottle.h"
#include "app/ReadOnlyWarning.h"
#include "app/SaveFlow.h"
#include "app/StatusBarColors.h"
#include "document/EditableDocument.h"
#include "encoding/TextEncoding.h"
#include "hexview/HexView.h"
#include "inspector/InspectorWorker.h"
#include "settings/AppSettings.h"
#include "settings/Localizer.h"
#include "structview/StructPatternFile.h"
#include "structview/StructWorker.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tlm {

// The application: the main window's logic and everything it owns for the whole run. The entry
// function keeps one as a local value; it is never copied. It reaches the system only through its
// platform, so the whole start-up, every command and every file flow run natively in tests.
//
// The Windows side (AppWindowWin32) creates the windows and translates their messages into the On...
// calls below; the hex view's own window drives View().
class AppWindow {
public:
    AppWindow();
    AppWindow(const AppWindow&) = delete;
    AppWindow& operator=(const AppWindow&) = delete;
    ~AppWindow();

    void SetPlatform(AppPlatform platform);

    // Start-up: settings, classes, the main window (whose creation runs OnCreate and opens `path`),
    // size and place, the workers, the accelerators, then shown. False when the window cannot stand.
    bool Create(std::optional<std::u16string> path);
    // The body of the main window's creation.
    void OnCreate();

    // The main window's messages.
    bool ExecuteCommand(std::uint32_t id); // false sends the message on to the default handler
    bool OnAppMessage(AppMessage message, std::uintptr_t wParam, std::intptr_t lParam);
    bool OnTimer(unsigned timerId); // false for a timer that is not the window's
    void OnClose();
    void OnDestroy();
    void OnDropFiles(const std::vector<std::u16string>& paths);
    void OnDpiChanged(std::uint32_t dpi);
    void OnSize();
    void OnMove();

    // The steps of the file flows, also reached through the commands.
    bool OpenFile(const std::u16string& path);
    void ShowOpenDialog();
    void OpenRecentFile(std::size_t index);
    void OpenInNewInstance(const std::u16string& path);
    bool SaveFile();
    bool ConfirmSaveChanges();
    void CloseFile();
    void Exit();

    // Find and go to.
    void FindNext();
    void RunSearchRequest(const SearchDialogResult& request, SearchDirection direction, SearchDialog& dialog,
        TextEncoding encoding);
    void GoTo();
    void ShowFontDialog();
    void ShowAboutDialog();

    // What the window shows.
    void RebuildMenu();
    void UpdateTitle();
    void RefreshStatusBar();
    void ApplyStatusBarTheme();
    std::u16string BuildStatusText();
    MenuItem BuildMenu();
    // Progress of a search the find flow runs on this thread: throttled as a save's, shown in the
    // status bar with messages pumped. The end of the search shows the file again.
    void ReportSearchProgress(std::uint64_t processed, std::uint64_t total);
    void EndSearchProgress();
    const std::u16string& StatusText() const { return statusText; }
    StatusBarColors StatusColors() const;

    bool IsCommandEnabled(std::uint32_t id) const;
    bool Busy() const { return saveFlow.Busy(); }

    // The objects the windows draw and the tests look at.
    HexView& View() { return hexView; }
    const HexView& View() const { return hexView; }
    EditableDocument& Document() { return document; }
    const AppSettings& Settings() const { return settings; }
    Localizer& Strings() { return localizer; }
    const std::u16string& SettingsPath() const { return settingsPath; }
    TextEncoding CurrentEncoding() const { return currentEncoding; }
    const InspectorWorker& Inspector() const { return inspectorWorker; }
    const StructWorker& StructRows() const { return structWorker; }
    // The loaded pattern's path, kept also when its last load failed so that a reload can try again.
    const std::u16string& StructPatternPath() const { return structPatternPath; }
    bool StructPatternLoaded() const { return structPattern != nullptr; }
    StructValueFormat CurrentStructFormat() const;
    const CommandTable& Commands() const { return commands; }

    std::u16string Tr(std::string_view key) { return localizer.Tr(key); }

private:
    void LoadSettings();
    void SaveSettings();
    void RegisterCommands();
    void RegisterDefault(std::uint32_t id, std::u16string name, std::function<void()> action);
    void ApplyStoredAnalysisSwitches();
    void AddRecentFile(const std::u16string& path);

    // Command actions.
    void SetEncoding(TextEncoding encoding);
    void SelectFavorite(std::size_t index);
    void AddCurrentFavorite();
    void RemoveCurrentFavorite();
    void ClearAllFavorites();
    void SetTheme(Theme theme);
    void StepZoom(float step);
    void ResetZoom();
    void SetLanguage(std::size_t index);
    void ToggleReadOnly();
    void ToggleInspector();
    void ToggleStructView();

    // Message handlers.
    void OnViewChanged();
    void OnReadOnlyBlocked();
    void OnInspectorResult(std::intptr_t lParam);
    void OnStructResult(std::intptr_t lParam);
    void OnInspectorClosed();
    void OnStructViewClosed();

    // The analysis windows and their workers.
    void SetInspectorVisible(bool visible);
    void SetStructViewVisible(bool visible);
    void RequestInspectorRefresh();
    void RequestStructRefresh();

    // The struct view's pattern: opened, reloaded, closed; and its rows refreshed on this thread.
    void OpenStructPattern();
    bool LoadStructPattern(const std::u16string& path);
    void ReloadStructPattern();
    void ClearStructPattern();
    void ApplyStructValueFormat(std::uintptr_t choice);
    void RefreshStructNow();
    bool ShowStructFailure();
    StructEvalRequest StructSnapshot();
    void StartWorkers();
    void StopWorkers();

    AppHost FlowHost();

    AppPlatform platform;
    std::u16string statusText;
    CommandTable commands;
    ReadOnlyWarning readOnlyWarning;
    SaveFlow saveFlow;
    ProgressThrottle searchProgress;
    Localizer localizer;
    AppSettings settings;
    EditableDocument document;
    TextEncoding currentEncoding = TextEncoding::Ascii;
    std::uint32_t byteArrayFormat = 0;
    std::uint32_t endianFormat = 0;
    std::uint32_t numericBaseFormat = 0;
    std::shared_ptr<const StructPatternFile> structPattern;
    std::u16string structPatternPath;
    std::u16string structPatternName; // the file name shown as the definition
    std::optional<std::u16string> structLoadError; // the last load's failure, shown until the next load
    HexView hexView;
    std::optional<std::u16string> pendingOpenPath;
    std::u16string settingsPath;
    InspectorWorker inspectorWorker;
    StructWorker structWorker;
    bool windowExists = false;
    std::optional<MenuItem> installedMenu; // the bar the window shows, as last handed over
};

} // namespace tlm
