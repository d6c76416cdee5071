#pragma once

// The font dialog's window, "Tolmo.FontDialog", and the enumeration of the screen's font families.
// Included by Windows code only.

#include "app/FontDialog.h"

#include <windows.h>

#include <vector>

namespace tlm {

// Every family of the screen for every character set, as the system names them.
std::vector<FontFamilyFace> EnumerateFontFamilies();

class FontDialogWin32 {
public:
    static constexpr wchar_t ClassName[] = L"Tolmo.FontDialog";

    static void Run(HWND owner, HINSTANCE instance, FontDialog& state);

private:
    explicit FontDialogWin32(FontDialog& state) : state(state) {}

    static LRESULT CALLBACK WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    void CreateControls();
    void Layout();
    void Accept();

    FontDialog& state;
    HWND window = nullptr;
    HWND familyBox = nullptr;
    HWND sizeBox = nullptr;
    HWND boldBox = nullptr;
    HWND italicBox = nullptr;
    HWND okButton = nullptr;
    HWND cancelButton = nullptr;
};

} // namespace tlm
