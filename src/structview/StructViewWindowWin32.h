#pragma once

// The Windows side of the struct view: the "Tolmo.StructViewWindow" class, its buttons and read-only
// edits, fonts, scroll bars, value-format menu and clipboard. It translates messages into calls on the
// portable StructViewWindow and draws its paint list with GDI. Included by Windows code only.

#include "structview/StructViewWindow.h"

#include <windows.h>

#include <array>

namespace tlm {

class StructViewWindowWin32 {
public:
    static constexpr wchar_t ClassName[] = L"Tolmo.StructViewWindow";

    StructViewWindowWin32() = default;
    StructViewWindowWin32(const StructViewWindowWin32&) = delete;
    StructViewWindowWin32& operator=(const StructViewWindowWin32&) = delete;
    ~StructViewWindowWin32();

    // Creates the window, hidden, owned by `owner`, when it does not stand yet. False when it cannot.
    bool Ensure(HWND owner, HINSTANCE instance);
    void Destroy();
    HWND Handle() const { return window; }
    StructViewWindow& View() { return view; }

    // Beside the owner's left edge at its height; hidden while the owner is minimised.
    void PlaceBeside(HWND mainWindow);
    // Whether the window, or a control in it, holds the activation or the focus.
    bool HoldsActivation() const;
    void RestoreActivation();

private:
    static LRESULT CALLBACK WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK EditProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
        DWORD_PTR data);
    LRESULT HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

    StructViewHost MakeHost();
    void OnCreate();
    void CreateControls();
    void BuildFonts();
    void ReleaseFonts();
    void UpdateControls();
    void UpdateScrollBars();
    void Paint();
    void CopyToClipboard(const std::u16string& text);
    void OpenFormatMenu(int x, int y);
    int MeasureInfoText(int width);
    void ClientSizeChanged();
    HBRUSH BackgroundBrush();

    StructViewWindow view;
    HWND window = nullptr;
    HWND owner = nullptr;
    HINSTANCE instance = nullptr;
    UINT dpi = 96;
    int storedWidth = StructViewDefaultWidth;
    std::array<HWND, 4> buttons{};
    HWND infoEdit = nullptr;
    HWND messageEdit = nullptr;
    HFONT mainFont = nullptr;
    HFONT secondaryFont = nullptr;
    HBRUSH backgroundBrush = nullptr;
    COLORREF backgroundBrushColour = 0;
};

} // namespace tlm
