#include "app/DialogWin32.h"

#include "app/DialogPlacement.h"

#include <vector>

namespace tlm {

namespace {

// The size of NONCLIENTMETRICSW without the padded border width of later systems, which every
// version accepts.
constexpr UINT NonClientMetricsSize = 504;

HFONT MakeDialogFont()
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = NonClientMetricsSize;
    if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, NonClientMetricsSize, &metrics, 0)) {
        if (HFONT font = CreateFontIndirectW(&metrics.lfMessageFont)) {
            return font;
        }
    }
    return static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
}

BOOL CALLBACK SetChildFont(HWND child, LPARAM font)
{
    SendMessageW(child, WM_SETFONT, static_cast<WPARAM>(font), TRUE);
    return TRUE;
}

} // namespace

HFONT DialogFont()
{
    // Made on first use and never freed: every dialog of the run shares it.
    static const HFONT font = MakeDialogFont();
    return font;
}

bool RegisterDialogClass(HINSTANCE instance, const wchar_t* className, WNDPROC procedure, HBRUSH background,
    bool& registered)
{
    if (registered) {
        return true;
    }
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof(windowClass);
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = background;
    windowClass.lpszClassName = className;
    registered = RegisterClassExW(&windowClass) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
    return registered;
}

SIZE OuterSizeForClient(int width, int height, DWORD style, DWORD exStyle)
{
    RECT rect{0, 0, width, height};
    AdjustWindowRectEx(&rect, style, FALSE, exStyle);
    return SIZE{rect.right - rect.left, rect.bottom - rect.top};
}

HWND CreateDialogWindow(HWND owner, HINSTANCE instance, const wchar_t* className, const std::u16string& title,
    DWORD style, DWORD exStyle, SIZE outer, void* parameter)
{
    RECT ownerRect{};
    if (!owner || !GetWindowRect(owner, &ownerRect)) {
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &ownerRect, 0);
    }
    const DialogRect place = CentreOnOwner(
        ScreenRect{ownerRect.left, ownerRect.top, ownerRect.right, ownerRect.bottom}, outer.cx, outer.cy);
    return CreateWindowExW(exStyle, className, WideText(title), style, place.left, place.top, place.width, place.height,
        owner, nullptr, instance, parameter);
}

void RunModalLoop(HWND owner, HWND dialog, const bool& closed, const std::function<void()>& initialFocus,
    const std::function<void()>& afterMessage)
{
    if (owner) {
        EnableWindow(owner, FALSE);
    }
    ShowWindow(dialog, SW_SHOW);
    UpdateWindow(dialog);
    if (initialFocus && !closed) {
        initialFocus();
    }
    MSG message{};
    while (!closed && GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (!IsWindow(dialog) || !IsDialogMessageW(dialog, &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        if (afterMessage) {
            afterMessage();
        }
    }
    if (owner) {
        EnableWindow(owner, TRUE);
        SetActiveWindow(owner);
        SetForegroundWindow(owner);
        SetFocus(owner);
    }
    if (IsWindow(dialog)) {
        DestroyWindow(dialog);
    }
}

void DestroyDialogWindow(HWND dialog)
{
    if (HWND owner = GetWindow(dialog, GW_OWNER)) {
        EnableWindow(owner, TRUE);
    }
    DestroyWindow(dialog);
}

void ApplyDialogFont(HWND window)
{
    const HFONT font = DialogFont();
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    EnumChildWindows(window, &SetChildFont, reinterpret_cast<LPARAM>(font));
}

HWND CreateControl(HWND parent, const wchar_t* className, const std::u16string& text, DWORD style, DWORD exStyle,
    int left, int top, int width, int height, int id)
{
    return CreateWindowExW(exStyle, className, WideText(text), WS_CHILD | WS_VISIBLE | style, left, top, width, height,
        parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
        reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(parent, GWLP_HINSTANCE)), nullptr);
}

std::u16string WindowText(HWND window)
{
    const int length = GetWindowTextLengthW(window);
    if (length <= 0) {
        return {};
    }
    std::vector<wchar_t> buffer(static_cast<std::size_t>(length) + 1);
    const int copied = GetWindowTextW(window, buffer.data(), length + 1);
    return std::u16string(reinterpret_cast<const char16_t*>(buffer.data()), static_cast<std::size_t>(copied > 0 ? copied : 0));
}

} // namespace tlm
