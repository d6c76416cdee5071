#include "app/AppWindowWin32.h"

#include "app/AcceleratorTable.h"
#include "app/AboutDialogWin32.h"
#include "app/AppResources.h"
#include "app/FontDialogWin32.h"
#include "app/InspectorPlacement.h"
#include "app/MenuBarWin32.h"
#include "app/MessagePumpWin32.h"
#include "app/PromptDialogWin32.h"
#include "app/SearchDialogWin32.h"
#include "app/StructTimingLogWin32.h"
#include "app/WindowPlacement.h"
#include "hexview/SystemLibraryWin32.h"
#include "settings/ExecutableFolder.h"
#include "settings/SettingsPath.h"

#include <commctrl.h>
#include <commdlg.h>
#include <shellapi.h>

#include <string_view>
#include <utility>
#include <vector>

namespace tlm {

namespace {

static_assert(sizeof(wchar_t) == sizeof(char16_t), "Windows wide text is UTF-16");

const wchar_t* Wide(const std::u16string& text)
{
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

std::u16string FromWide(const wchar_t* text, std::size_t length)
{
    return std::u16string(reinterpret_cast<const char16_t*>(text), length);
}

std::u16string FromWide(const wchar_t* text)
{
    return FromWide(text, std::wcslen(text));
}

// Paths of up to 32767 characters and the null behind them.
constexpr DWORD LongPathBuffer = 32768;

ScreenRect ToScreenRect(const RECT& rect)
{
    return ScreenRect{rect.left, rect.top, rect.right, rect.bottom};
}

std::optional<ScreenRect> MonitorWorkArea(HWND window)
{
    HMONITOR monitor = MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST);
    if (!monitor) {
        return std::nullopt;
    }
    MONITORINFO info{};
    info.cbSize = sizeof(info);
    if (!GetMonitorInfoW(monitor, &info)) {
        return std::nullopt;
    }
    return ToScreenRect(info.rcWork);
}

ScreenRect SystemWorkArea()
{
    RECT area{};
    if (!SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0)) {
        return ScreenRect{};
    }
    return ToScreenRect(area);
}

COLORREF ToColorRef(const RgbColor& colour)
{
    return RGB(colour.red, colour.green, colour.blue);
}

std::optional<std::u16string> ExecutablePath()
{
    std::vector<wchar_t> buffer(MAX_PATH);
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
        if (length == 0) {
            return std::nullopt;
        }
        if (length < buffer.size()) {
            return FromWide(buffer.data(), length);
        }
        if (buffer.size() >= LongPathBuffer) {
            return std::nullopt;
        }
        buffer.resize(buffer.size() * 2);
    }
}

bool StartProcess(const std::u16string& application, const std::u16string& commandLine)
{
    // CreateProcessW may write into the command line, so it gets a private copy.
    std::wstring line(commandLine.begin(), commandLine.end());
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(Wide(application), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
            &process)) {
        return false;
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

} // namespace

AppWindowWin32::AppWindowWin32(AppWindow& application, HINSTANCE moduleInstance)
    : app(application)
    , instance(moduleInstance)
    , hexViewWindow(application.View())
{
    app.SetPlatform(MakePlatform());
}

AppWindowWin32::~AppWindowWin32()
{
    // The path taken when start-up failed with the window standing: its teardown runs now.
    if (window) {
        DestroyMainWindow();
    }
    DestroyAccelerators();
    if (menu) {
        DestroyMenu(std::exchange(menu, nullptr));
    }
    // Nothing of this object may be reached once it is gone.
    app.SetPlatform(AppPlatform{});
}

AppPlatform AppWindowWin32::MakePlatform()
{
    AppPlatform platform;
    platform.executableFolder = [] {
        std::u16string error;
        return ExecutableFolder(error);
    };
    platform.currentFolder = [] { return CurrentFolder(); };
    platform.settingsPath = [] { return ResolveSettingsPath(); };
    platform.initCommonControls = [] {
        INITCOMMONCONTROLSEX controls{};
        controls.dwSize = sizeof(controls);
        controls.dwICC = ICC_BAR_CLASSES | ICC_LINK_CLASS;
        InitCommonControlsEx(&controls);
    };
    platform.registerHexViewClass = [this] { return HexViewWindow::RegisterWindowClass(instance); };
    platform.registerMainClass = [this] { return RegisterMainClass(); };
    platform.createMainWindow = [this] { return CreateMainWindow(); };
    platform.createStatusBar = [this] { return CreateStatusBar(); };
    platform.createHexView = [this] { return CreateHexView(); };
    platform.sizeAndCentre = [this] { SizeAndCentre(); };
    platform.createAccelerators = [this] { return CreateAccelerators(); };
    platform.showWindow = [this] { ShowMainWindow(); };
    platform.postToMainWindow = [this](std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam) {
        return window && PostMessageW(window, message, wParam, lParam) != FALSE;
    };

    platform.setTitle = [this](const std::u16string& title) {
        if (window) {
            SetWindowTextW(window, Wide(title));
        }
    };
    platform.destroyWindow = [this] { DestroyMainWindow(); };
    platform.layoutChildren = [this] { LayoutChildren(); };
    platform.installMenu = [this](const MenuItem& bar) { InstallMenu(bar); };
    platform.removeMenu = [this] { RemoveMenu(); };
    platform.destroyAccelerators = [this] { DestroyAccelerators(); };
    platform.setStatusText = [this](const std::u16string& text) { SetStatusText(text); };
    platform.colourStatusBar = [this](Theme theme) { ColourStatusBar(theme); };
    platform.updateStatusBarNow = [this] {
        if (statusBar) {
            UpdateWindow(statusBar);
        }
    };
    platform.enableHexView = [this](bool enabled) { EnableHexView(enabled); };
    platform.postQuit = [] { PostQuitMessage(0); };

    platform.setTimer = [this](unsigned id, unsigned milliseconds) {
        if (window) {
            SetTimer(window, id, milliseconds, nullptr);
        }
    };
    platform.killTimer = [this](unsigned id) {
        if (window) {
            KillTimer(window, id);
        }
    };
    platform.beep = [] { MessageBeep(MB_ICONEXCLAMATION); };
    platform.messageBox = [this](const std::u16string& text, const std::u16string& caption, MessageBoxKind kind) {
        return ShowMessageBox(text, caption, kind);
    };
    platform.chooseFileToOpen = [this](const std::u16string& title) { return ChooseFileToOpen(title); };
    platform.executablePath = [] { return ExecutablePath(); };
    platform.createProcess = [](const std::u16string& application, const std::u16string& commandLine) {
        return StartProcess(application, commandLine);
    };
    platform.pumpMessages = [] { PumpMessages(); };
    platform.tickCount = [] { return static_cast<std::uint64_t>(GetTickCount64()); };

    platform.ensureInspectorWindow = [this] { return EnsureInspectorWindow(); };
    platform.destroyInspectorWindow = [this] { inspectorWindow.Destroy(); };
    platform.showInspectorValues = [this](std::vector<std::u16string> values) {
        inspectorWindow.Logic().SetValues(std::move(values));
    };
    platform.runPrompt = [this](const std::u16string& title, const std::u16string& prompt, const std::u16string& text) {
        return PromptDialogWin32::Run(window, instance, title, prompt, text);
    };
    platform.runSearchDialog = [this](SearchDialog& dialog, const SearchDialogCallback& callback) {
        SearchDialogWin32::Run(window, instance, dialog, callback);
    };
    platform.escapeKeyDown = [] { return (GetAsyncKeyState(VK_ESCAPE) & 0x8000) != 0; };
    platform.focusHexView = [this] {
        if (hexViewWindow.Handle()) {
            SetFocus(hexViewWindow.Handle());
        }
    };
    platform.fontFamilies = [] { return EnumerateFontFamilies(); };
    platform.runFontDialog = [this](FontDialog& dialog) { FontDialogWin32::Run(window, instance, dialog); };
    platform.runAboutDialog = [this](AboutDialog& dialog) { AboutDialogWin32::Run(window, instance, dialog); };
    platform.folderExists = [](const std::u16string& folder) {
        const DWORD attributes = GetFileAttributesW(Wide(folder));
        return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    };
    platform.ensureStructViewWindow = [this] { return EnsureStructViewWindow(); };
    platform.destroyStructViewWindow = [this] { structViewWindow.Destroy(); };
    platform.showStructMessage = [this](const std::u16string& message) {
        structViewWindow.View().ShowMessage(message);
    };
    platform.showStructRows = [this](const std::u16string& name, std::vector<StructRow> rows,
                                  const std::u16string& infoText) {
        structViewWindow.View().ShowRows(name, std::move(rows), infoText);
        StructTimingLog::Instance().RowsShown();
    };
    platform.showStructError = [this](const std::u16string& error) { structViewWindow.View().ShowError(error); };
    platform.setStructValueFormat = [this](const StructValueFormat& format) {
        structViewWindow.View().SetValueFormat(format);
    };
    platform.chooseStructPattern = [this](const std::u16string& title, const std::u16string& folder) {
        return ChooseStructPattern(title, folder);
    };
    platform.structViewHasActivation = [this] { return structViewWindow.HoldsActivation(); };
    platform.restoreStructViewActivation = [this] { structViewWindow.RestoreActivation(); };

    // The analysis windows' shared hooks.
    platform.placeAnalysisWindows = [this] {
        PlaceInspectorWindow();
        structViewWindow.PlaceBeside(window);
    };
    platform.themeAnalysisWindows = [this](Theme theme) {
        inspectorWindow.Logic().SetTheme(theme);
        structViewWindow.View().SetTheme(theme);
        if (HWND structView = structViewWindow.Handle()) {
            RedrawWindow(structView, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
        }
    };
    platform.relabelAnalysisWindows = [this] {
        if (inspectorWindow.Handle()) {
            inspectorWindow.Logic().SetLabels(InspectorTexts());
        }
        structViewWindow.View().SetLabels(LoadStructViewLabels([this](std::string_view key) { return app.Tr(key); }));
    };
    return platform;
}

bool AppWindowWin32::RegisterMainClass()
{
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof(windowClass);
    windowClass.lpfnWndProc = &AppWindowWin32::MainWindowProc;
    windowClass.hInstance = instance;
    windowClass.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(TOLMO_ICON_APP));
    windowClass.hIconSm = LoadIconW(instance, MAKEINTRESOURCEW(TOLMO_ICON_APP));
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_WINDOW + 1));
    windowClass.lpszClassName = ClassName;
    return RegisterClassExW(&windowClass) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

bool AppWindowWin32::CreateMainWindow()
{
    const std::u16string title = app.Tr("app.title");
    HWND created = CreateWindowExW(0, ClassName, Wide(title), WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
        CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, instance, this);
    if (!created) {
        return false;
    }
    window = created;
    return true;
}

bool AppWindowWin32::CreateStatusBar()
{
    statusBar = CreateWindowExW(0, STATUSCLASSNAMEW, nullptr, WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0, 0,
        window, nullptr, instance, nullptr);
    return statusBar != nullptr;
}

bool AppWindowWin32::CreateHexView()
{
    return hexViewWindow.Create(window, instance, HexViewControlId) != nullptr;
}

void AppWindowWin32::SizeAndCentre()
{
    RECT current{};
    if (!window || !GetWindowRect(window, &current)) {
        return;
    }
    const ScreenRect workArea = ChooseWorkArea(MonitorWorkArea(window), &SystemWorkArea);
    const WindowPlacement placement =
        PlaceMainWindow(workArea, current.right - current.left, current.bottom - current.top);
    SetWindowPos(window, nullptr, placement.left, placement.top, placement.width, placement.height,
        SWP_NOZORDER | SWP_NOACTIVATE);
}

bool AppWindowWin32::CreateAccelerators()
{
    std::vector<ACCEL> table;
    for (const AcceleratorKey& key : AcceleratorKeys()) {
        ACCEL entry{};
        entry.fVirt = FCONTROL | FVIRTKEY;
        entry.key = static_cast<WORD>(key.virtualKey);
        entry.cmd = static_cast<WORD>(key.command);
        table.push_back(entry);
    }
    accelerators = CreateAcceleratorTableW(table.data(), static_cast<int>(table.size()));
    return accelerators != nullptr;
}

void AppWindowWin32::EnableHexView(bool enabled)
{
    HWND view = hexViewWindow.Handle();
    if (!view) {
        return;
    }
    if (!enabled) {
        // A disabled window loses the keyboard focus, and nothing gives it back by itself.
        viewHadFocus = GetFocus() == view;
        EnableWindow(view, FALSE);
        return;
    }
    EnableWindow(view, TRUE);
    if (viewHadFocus && (GetFocus() == nullptr || GetFocus() == window)) {
        SetFocus(view);
    }
    viewHadFocus = false;
}

void AppWindowWin32::ShowMainWindow()
{
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
}

void AppWindowWin32::DestroyMainWindow()
{
    // The window is forgotten before it goes, so nothing reached during its teardown uses it again.
    if (window) {
        DestroyWindow(std::exchange(window, nullptr));
    }
}

void AppWindowWin32::InstallMenu(const MenuItem& bar)
{
    if (!window) {
        return;
    }
    HMENU built = BuildWin32MenuBar(bar);
    if (!built) {
        return; // the old bar stays
    }
    SetMenu(window, nullptr);
    if (menu) {
        DestroyMenu(menu);
    }
    menu = SetMenu(window, built) ? built : nullptr;
    if (!menu) {
        DestroyMenu(built);
    }
    DrawMenuBar(window);
}

void AppWindowWin32::RemoveMenu()
{
    if (window) {
        SetMenu(window, nullptr);
    }
    if (menu) {
        DestroyMenu(std::exchange(menu, nullptr));
    }
}

void AppWindowWin32::DestroyAccelerators()
{
    if (accelerators) {
        DestroyAcceleratorTable(std::exchange(accelerators, nullptr));
    }
}

void AppWindowWin32::SetStatusText(const std::u16string&)
{
    if (!statusBar) {
        return;
    }
    // The pane is owner-drawn from AppWindow's own text, which outlives every paint of it.
    SendMessageW(statusBar, SB_SETTEXTW, 0 | SBT_OWNERDRAW, reinterpret_cast<LPARAM>(app.StatusText().c_str()));
    InvalidateRect(statusBar, nullptr, FALSE);
}

void AppWindowWin32::ColourStatusBar(Theme theme)
{
    if (!statusBar) {
        return;
    }
    const StatusBarColors colours = StatusBarColorsFor(theme, false);
    const COLORREF background = colours.background ? ToColorRef(*colours.background) : CLR_DEFAULT;
    SendMessageW(statusBar, SB_SETBKCOLOR, 0, static_cast<LPARAM>(background));
    InvalidateRect(statusBar, nullptr, TRUE);
    UpdateWindow(statusBar);
}

void AppWindowWin32::LayoutChildren()
{
    if (!window || !hexViewWindow.Handle()) {
        return;
    }
    RECT client{};
    GetClientRect(window, &client);
    int statusHeight = 0;
    if (statusBar) {
        // The bar sizes and places itself along the bottom edge when told the parent changed.
        SendMessageW(statusBar, WM_SIZE, 0, 0);
        RECT bar{};
        if (GetWindowRect(statusBar, &bar)) {
            statusHeight = bar.bottom - bar.top;
        }
    }
    const int width = client.right - client.left;
    const int height = std::max(static_cast<int>(client.bottom - client.top) - statusHeight, 0);
    MoveWindow(hexViewWindow.Handle(), 0, 0, width, height, TRUE);
}

bool AppWindowWin32::DrawStatusPane(const DRAWITEMSTRUCT& item)
{
    if (!statusBar || item.hwndItem != statusBar) {
        return false;
    }
    const StatusBarColors colours = app.StatusColors();
    HBRUSH owned = colours.background ? CreateSolidBrush(ToColorRef(*colours.background)) : nullptr;
    RECT area = item.rcItem;
    FillRect(item.hDC, &area, owned ? owned : GetSysColorBrush(COLOR_BTNFACE));
    if (owned) {
        DeleteObject(owned);
    }
    const int oldMode = SetBkMode(item.hDC, TRANSPARENT);
    const COLORREF oldColour = SetTextColor(item.hDC, ToColorRef(colours.text));
    area.left += 6;
    const std::u16string& text = app.StatusText();
    DrawTextW(item.hDC, Wide(text), static_cast<int>(text.size()), &area,
        DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
    SetTextColor(item.hDC, oldColour);
    SetBkMode(item.hDC, oldMode);
    return true;
}

void AppWindowWin32::OnDropFiles(HDROP drop)
{
    std::vector<std::u16string> paths;
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT index = 0; index < count; ++index) {
        const UINT length = DragQueryFileW(drop, index, nullptr, 0);
        std::vector<wchar_t> buffer(static_cast<std::size_t>(length) + 1);
        const UINT copied = DragQueryFileW(drop, index, buffer.data(), length + 1);
        paths.push_back(FromWide(buffer.data(), copied));
    }
    app.OnDropFiles(paths);
    DragFinish(drop);
}

void AppWindowWin32::OnDpiChanged(WPARAM wParam, const RECT* suggested)
{
    if (window && suggested) {
        SetWindowPos(window, nullptr, suggested->left, suggested->top, suggested->right - suggested->left,
            suggested->bottom - suggested->top, SWP_NOZORDER | SWP_NOACTIVATE);
    }
    app.OnDpiChanged(HIWORD(wParam));
}

MessageBoxResult AppWindowWin32::ShowMessageBox(const std::u16string& text, const std::u16string& caption,
    MessageBoxKind kind)
{
    UINT style = MB_YESNOCANCEL | MB_ICONEXCLAMATION;
    if (kind == MessageBoxKind::Stop) {
        style = MB_OK | MB_ICONSTOP;
    } else if (kind == MessageBoxKind::Information) {
        style = MB_OK | MB_ICONINFORMATION;
    }
    switch (MessageBoxW(window, Wide(text), Wide(caption), style)) {
    case IDOK:
        return MessageBoxResult::Ok;
    case IDYES:
        return MessageBoxResult::Yes;
    case IDNO:
        return MessageBoxResult::No;
    default:
        return MessageBoxResult::Cancel;
    }
}

std::optional<std::u16string> AppWindowWin32::ChooseFileToOpen(const std::u16string& title)
{
    std::vector<wchar_t> buffer(LongPathBuffer, L'\0');
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof(dialog);
    dialog.hwndOwner = window;
    dialog.lpstrFile = buffer.data();
    dialog.nMaxFile = static_cast<DWORD>(buffer.size());
    dialog.lpstrTitle = Wide(title);
    dialog.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST;
    // The dialogs' library is loaded when first asked for: it brings a good part of the shell with it,
    // which the window need not wait for.
    const SystemLibrary dialogs(L"comdlg32.dll");
    const auto chooseFile = dialogs.Find<decltype(GetOpenFileNameW)>("GetOpenFileNameW");
    if (!chooseFile || !chooseFile(&dialog)) {
        return std::nullopt;
    }
    return FromWide(buffer.data());
}

InspectorLabels AppWindowWin32::InspectorTexts()
{
    return MakeInspectorLabels([this](std::string_view key) { return app.Tr(key); });
}

bool AppWindowWin32::EnsureInspectorWindow()
{
    if (inspectorWindow.Handle()) {
        return true;
    }
    if (!window || !inspectorWindow.Show(window, instance, InspectorTexts(), app.Settings().theme)) {
        return false;
    }
    PlaceInspectorWindow();
    return true;
}

void AppWindowWin32::PlaceInspectorWindow()
{
    const HWND inspector = inspectorWindow.Handle();
    RECT main{};
    if (!window || !inspector || !GetWindowRect(window, &main)) {
        return;
    }
    // Beside a main window that is not shown yet, or minimised, the inspector waits hidden.
    const bool mainAway = IsIconic(window) != FALSE || IsWindowVisible(window) == FALSE;
    const InspectorPlacementStep step = PlaceInspectorBeside(ToScreenRect(main), mainAway,
        IsZoomed(inspector) != FALSE, inspectorWindow.Logic().WindowWidth());
    if (step.move) {
        SetWindowPos(inspector, nullptr, step.move->left, step.move->top, step.move->width, step.move->height,
            SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
    }
    if (!step.show) {
        ShowWindow(inspector, SW_HIDE);
    } else if (!IsWindowVisible(inspector)) {
        // Shown again as it was left; the main window keeps the activation and the keys.
        ShowWindow(inspector, SW_SHOWNOACTIVATE);
    }
}

std::optional<std::u16string> AppWindowWin32::ChooseStructPattern(const std::u16string& title,
    const std::u16string& folder)
{
    std::vector<wchar_t> buffer(LongPathBuffer, L'\0');
    static constexpr wchar_t Filters[] = L"Tolmo Struct Pattern (*.tlpat)\0*.tlpat\0All Files (*.*)\0*.*\0";
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof(dialog);
    dialog.hwndOwner = structViewWindow.Handle() ? structViewWindow.Handle() : window;
    dialog.lpstrFilter = Filters;
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = buffer.data();
    dialog.nMaxFile = static_cast<DWORD>(buffer.size());
    dialog.lpstrInitialDir = folder.empty() ? nullptr : Wide(folder);
    dialog.lpstrTitle = Wide(title);
    dialog.lpstrDefExt = L"tlpat";
    dialog.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_NOCHANGEDIR;
    const SystemLibrary dialogs(L"comdlg32.dll");
    const auto chooseFile = dialogs.Find<decltype(GetOpenFileNameW)>("GetOpenFileNameW");
    if (!chooseFile || !chooseFile(&dialog)) {
        return std::nullopt;
    }
    return FromWide(buffer.data());
}

bool AppWindowWin32::EnsureStructViewWindow()
{
    if (structViewWindow.Handle()) {
        return true;
    }
    if (!window) {
        return false;
    }
    StructViewWindow& view = structViewWindow.View();
    view.SetLabels(LoadStructViewLabels([this](std::string_view key) { return app.Tr(key); }));
    view.SetTheme(app.Settings().theme);
    view.SetValueFormat(app.CurrentStructFormat());
    if (!structViewWindow.Ensure(window, instance)) {
        return false;
    }
    structViewWindow.PlaceBeside(window);
    return true;
}

LRESULT CALLBACK AppWindowWin32::MainWindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        if (auto* self = static_cast<AppWindowWin32*>(creation->lpCreateParams)) {
            if (self->window && self->window != hwnd) {
                DestroyWindow(std::exchange(self->window, nullptr));
            }
            self->window = hwnd;
            SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        }
    }
    auto* self = reinterpret_cast<AppWindowWin32*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (!self) {
        return DefWindowProcW(hwnd, message, wParam, lParam);
    }
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
    }
    return self->HandleMessage(hwnd, message, wParam, lParam);
}

LRESULT AppWindowWin32::HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE:
        app.OnCreate();
        DragAcceptFiles(hwnd, TRUE);
        return 0;
    case WM_DESTROY:
        app.OnDestroy();
        window = nullptr;
        return 0;
    case WM_MOVE:
        app.OnMove();
        return 0;
    case WM_SIZE:
        app.OnSize();
        return 0;
    case WM_SETFOCUS:
        if (hexViewWindow.Handle()) {
            SetFocus(hexViewWindow.Handle());
        }
        return 0;
    case WM_CLOSE:
        app.OnClose();
        return 0;
    case WM_DRAWITEM:
        if (DrawStatusPane(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam))) {
            return TRUE;
        }
        break;
    case WM_COMMAND:
        if (app.ExecuteCommand(LOWORD(wParam))) {
            return 0;
        }
        break;
    case WM_TIMER:
        if (app.OnTimer(static_cast<unsigned>(wParam))) {
            return 0;
        }
        break;
    case WM_DROPFILES:
        OnDropFiles(reinterpret_cast<HDROP>(wParam));
        return 0;
    case WM_DPICHANGED:
        OnDpiChanged(wParam, reinterpret_cast<const RECT*>(lParam));
        return 0;
    default:
        if (message == static_cast<UINT>(AppMessage::ViewChanged)) {
            StructTimingLog::Instance().CaretMoved(app.View().State().caretOffset);
        }
        if (IsAppMessage(message) && app.OnAppMessage(static_cast<AppMessage>(message), wParam, lParam)) {
            return 0;
        }
        break;
    }
    return DefWindowProcW(hwnd, message, wParam, lParam);
}

} // namespace tlm
