#pragma once

// The Windows side of the hex view: the "Tolmo.HexView" child window. It only translates messages into
// HexView's handlers, fills the view's host with Win32 calls, and executes the portable paint list with
// Direct2D and DirectWrite. Included by Windows code only.

#include "hexview/HexView.h"

#include <windows.h>

namespace tlm {

class HexViewGraphics;

class HexViewWindow {
public:
    static constexpr wchar_t ClassName[] = L"Tolmo.HexView";

    // The view whose logic this window drives; it must outlive the window.
    explicit HexViewWindow(HexView& view);
    HexViewWindow(const HexViewWindow&) = delete;
    HexViewWindow& operator=(const HexViewWindow&) = delete;
    ~HexViewWindow();

    // Registers the class; false when the system refuses (an existing class counts as success).
    static bool RegisterWindowClass(HINSTANCE instance);

    // Creates the child (both scroll bars, tab stop) at 0, 0, 100 by 100 with `controlId`; null on failure.
    // Fills the view's host and text measurer.
    HWND Create(HWND parent, HINSTANCE instance, int controlId);
    HWND Handle() const { return window; }
    HexView& View() { return view; }

    // Drops the render target and text format; they come back at the next paint.
    void ReleaseGraphics();

private:
    static LRESULT CALLBACK WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

    HexView& view;
    HWND window = nullptr;
    HexViewGraphics* graphics = nullptr; // Direct2D and DirectWrite resources, made lazily
};

} // namespace tlm
