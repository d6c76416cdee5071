#pragma once

// The about dialog's window, "Tolmo.AboutDialog". Included by Windows code only.

#include "app/AboutDialog.h"

#include <windows.h>

namespace tlm {

class AboutDialogWin32 {
public:
    static constexpr wchar_t ClassName[] = L"Tolmo.AboutDialog";

    static void Run(HWND owner, HINSTANCE instance, AboutDialog& state);

private:
    explicit AboutDialogWin32(AboutDialog& state) : state(state) {}

    static LRESULT CALLBACK WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    void CreateControls();
    int LabelWidth(const std::u16string& text) const;

    AboutDialog& state;
    HWND window = nullptr;
    HWND link = nullptr;
    HWND notice = nullptr;
    HWND closeButton = nullptr;
};

} // namespace tlm
