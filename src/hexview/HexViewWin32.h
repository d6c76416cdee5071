#pragma once

// The Windows side of the hex view: the "Tolmo.HexView" child window. It only translates messages into
// HexView's handlers, fills the view's host and text measurer with Win32 and DirectWrite calls, and
// executes the portable paint list with Direct2D. Included by Windows code only.

#include "hexview/DirectWriteStartWin32.h"
#include "hexview/HexView.h"
#include "hexview/HexViewPaint.h"

#include <windows.h>

#include <memory>

namespace tlm {

class HexViewGraphics;

class HexViewWindow {
public:
    static constexpr wchar_t ClassName[] = L"Tolmo.HexView";

    // The view whose logic this window drives; it must outlive the window.
    explicit HexViewWindow(HexView& view);
    HexViewWindow(const HexViewWindow&) = delete;
    HexViewWindow& operator=(const HexViewWindow&) = delete;
    // Destroys the window if it still exists and leaves the view without host and measurer.
    ~HexViewWindow();

    // Registers the class; false when the system refuses (an existing class counts as success).
    static bool RegisterWindowClass(HINSTANCE instance);

    // Creates the child (both scroll bars, tab stop) at 0, 0, 100 by 100 with `controlId`; null on failure.
    // Fills the view's host and text measurer, then lets the view take the window's DPI and measure its
    // font. The parent receives the view's AppMessage notifications and places the child with MoveWindow.
    HWND Create(HWND parent, HINSTANCE instance, int controlId);
    HWND Handle() const { return window; }
    HexView& View() { return view; }

    // Drops the render target and text format; they come back at the next paint.
    void ReleaseGraphics();

private:
    static LRESULT CALLBACK WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

    HexViewHost MakeHost();
    TextMeasurer MakeMeasurer();
    void RequestRedraw() const;
    void Paint();
    std::int32_t TrackPosition(int bar) const;

    // Posted to this window when the fonts are known and the view can be measured.
    static constexpr UINT FontsReadyMessage = WM_USER + 1;

    HexView& view;
    HWND window = nullptr;
    DirectWriteStart directWrite; // before the graphics, which take their factory from it
    std::unique_ptr<HexViewGraphics> graphics; // Direct2D and DirectWrite resources, made lazily
    HexViewPaint paint;                        // kept between paints so that its storage is reused
};

} // namespace tlm
