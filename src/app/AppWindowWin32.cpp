#include "app/AppWindow.h"

#include "app/AppResources.h"
#include "app/WindowPlacement.h"
#include "app/WindowTitle.h"

#include <shellapi.h>

#include <utility>

namespace tlm {

namespace {

constexpr wchar_t MainWindowClass[] = L"Tolmo.MainWindow";

// English texts until the language files are wired in.
constexpr wchar_t ProgramTitle[] = L"Tolmo";
constexpr wchar_t OpenFailedText[] = L"The file could not be opened.";

// wchar_t is 16 bits wide on Windows, so both conversions copy code units one for one.
std::u16string ToU16(const std::wstring& text)
{
    return std::u16string(text.begin(), text.end());
}

std::wstring ToWide(const std::u16string& text)
{
    return std::wstring(text.begin(), text.end());
}

ScreenRect ToScreenRect(const RECT& rect)
{
    return ScreenRect{rect.left, rect.top, rect.right, rect.bottom};
}

std::optional<ScreenRect> MonitorWorkArea(HWND window)
{
    HMONITOR monitor = MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST);
    if (!monitor)
        return std::nullopt;
    MONITORINFO info{};
    info.cbSize = sizeof(info);
    if (!GetMonitorInfoW(monitor, &info))
        return std::nullopt;
    return ToScreenRect(info.rcWork);
}

ScreenRect SystemWorkArea()
{
    RECT area{};
    if (!SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0))
        return ScreenRect{};
    return ToScreenRect(area);
}

bool RegisterMainWindowClass(HINSTANCE instance, WNDPROC procedure)
{
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof(windowClass);
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = instance;
    windowClass.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(TOLMO_ICON_APP));
    windowClass.hIconSm = LoadIconW(instance, MAKEINTRESOURCEW(TOLMO_ICON_APP));
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_WINDOW + 1));
    windowClass.lpszClassName = MainWindowClass;
    return RegisterClassExW(&windowClass) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

} // namespace

AppWindow::~AppWindow()
{
    if (accelerators) {
        DestroyAcceleratorTable(accelerators);
        accelerators = nullptr;
    }
    if (window) {
        HWND standing = std::exchange(window, nullptr);
        DestroyWindow(standing);
    }
}

bool AppWindow::Create(HINSTANCE moduleInstance, std::optional<std::wstring> path)
{
    instance = moduleInstance;
    pendingOpenPath = std::move(path);

    if (!RegisterMainWindowClass(instance, &AppWindow::MainWindowProc))
        return false;

    HWND created = CreateWindowExW(0, MainWindowClass, ProgramTitle, WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                                   CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, instance, this);
    if (!created)
        return false;
    window = created;

    SizeAndCentre();
    // No accelerators exist yet, so the table stays null and the loop skips it.
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    return true;
}

LRESULT CALLBACK AppWindow::MainWindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        if (auto* self = static_cast<AppWindow*>(creation->lpCreateParams)) {
            if (self->window && self->window != hwnd)
                DestroyWindow(std::exchange(self->window, nullptr));
            self->window = hwnd;
            SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        }
    }
    auto* self = reinterpret_cast<AppWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (!self)
        return DefWindowProcW(hwnd, message, wParam, lParam);
    if (message == WM_NCDESTROY)
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
    return self->HandleMessage(hwnd, message, wParam, lParam);
}

LRESULT AppWindow::HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE:
        OnCreate();
        DragAcceptFiles(hwnd, TRUE);
        return 0;
    case WM_CLOSE:
        // Nothing can be edited yet, so there are no changes to ask about.
        if (window)
            DestroyWindow(std::exchange(window, nullptr));
        return 0;
    case WM_DESTROY:
        window = nullptr;
        PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcW(hwnd, message, wParam, lParam);
    }
}

void AppWindow::OnCreate()
{
    UpdateTitle();
    if (pendingOpenPath) {
        OpenFile(*pendingOpenPath);
        pendingOpenPath.reset();
    }
}

bool AppWindow::OpenFile(const std::wstring& path)
{
    if (path.empty())
        return false;
    // The old file goes before the new one is known to be good.
    document.Close();
    if (!document.file.Open(ToU16(path))) {
        MessageBoxW(window, OpenFailedText, ProgramTitle, MB_OK | MB_ICONSTOP);
        return false;
    }
    UpdateTitle();
    return true;
}

void AppWindow::UpdateTitle()
{
    if (!window)
        return;
    const std::u16string title = ComposeWindowTitle(ToU16(ProgramTitle), document);
    SetWindowTextW(window, ToWide(title).c_str());
}

void AppWindow::SizeAndCentre()
{
    RECT current{};
    if (!GetWindowRect(window, &current))
        return;
    const ScreenRect workArea = ChooseWorkArea(MonitorWorkArea(window), &SystemWorkArea);
    const WindowPlacement placement =
        PlaceMainWindow(workArea, current.right - current.left, current.bottom - current.top);
    SetWindowPos(window, nullptr, placement.left, placement.top, placement.width, placement.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace tlm
