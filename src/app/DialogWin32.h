#pragma once

// What the four dialogs share on Windows: their font, class registration, placement on the owner, the
// modal loop, and text conversion. Included by Windows code only.

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>

namespace tlm {

// The message font of the system, made once and kept for the whole run; the stock GUI font when the
// system does not give one.
HFONT DialogFont();

// Registers a dialog's class once per process; `registered` is that class's own flag. An existing
// class counts as registered.
bool RegisterDialogClass(HINSTANCE instance, const wchar_t* className, WNDPROC procedure, HBRUSH background,
    bool& registered);

// The window's outer size for a client area of `width` by `height` in the given styles.
SIZE OuterSizeForClient(int width, int height, DWORD style, DWORD exStyle);

// Creates the dialog centred on `owner` with `parameter` as its creation parameter; null on failure.
HWND CreateDialogWindow(HWND owner, HINSTANCE instance, const wchar_t* className, const std::u16string& title,
    DWORD style, DWORD exStyle, SIZE outer, void* parameter);

// Disables the owner, shows the dialog, runs its loop until `closed` is set or a quit message comes
// (which is not posted again), then gives the owner back its input and destroys the dialog if it still
// stands. `afterMessage` runs after each dispatched message.
void RunModalLoop(HWND owner, HWND dialog, const bool& closed, const std::function<void()>& initialFocus,
    const std::function<void()>& afterMessage = {});

// Destroys a dialog from its own handlers. The owner takes input again first, so that the system
// hands the activation back to it rather than to some other program's window.
void DestroyDialogWindow(HWND dialog);

// Sends the dialog font to the window and each of its children.
void ApplyDialogFont(HWND window);

HWND CreateControl(HWND parent, const wchar_t* className, const std::u16string& text, DWORD style, DWORD exStyle,
    int left, int top, int width, int height, int id);

std::u16string WindowText(HWND window);

inline const wchar_t* WideText(const std::u16string& text)
{
    static_assert(sizeof(wchar_t) == sizeof(char16_t), "Windows wide text is UTF-16");
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

// The object whose address a dialog's creation carried, kept in the window's user data.
template <typename Object>
Object* DialogObject(HWND window, UINT message, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    }
    return reinterpret_cast<Object*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

} // namespace tlm
