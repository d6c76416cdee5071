#pragma once

// The Windows side of the data inspector: the "Tolmo.DataInspectorWindow" pop-up owned by the main
// window. It decides nothing: messages become DataInspectorWindow calls, and its paint list is drawn
// with Direct2D and DirectWrite. Included by Windows code only.

#include "inspector/DataInspectorWindow.h"

#include <windows.h>

#include <memory>

namespace tlm {

class DataInspectorGraphics;

class DataInspectorWindowWin32 {
public:
    static constexpr wchar_t ClassName[] = L"Tolmo.DataInspectorWindow";

    DataInspectorWindowWin32();
    DataInspectorWindowWin32(const DataInspectorWindowWin32&) = delete;
    DataInspectorWindowWin32& operator=(const DataInspectorWindowWin32&) = delete;
    ~DataInspectorWindowWin32();

    // Creates the window owned by `parent`, or, when it stands, takes the texts and the theme and
    // repaints. False when the class or the window cannot be made.
    bool Show(HWND parent, HINSTANCE instance, const InspectorLabels& labels, Theme theme);
    // Destroys the window and its drawing resources; the logic and its state stay.
    void Destroy();

    HWND Handle() const { return window; }
    DataInspectorWindow& Logic() { return logic; }
    const DataInspectorWindow& Logic() const { return logic; }

    // Whether the text engine has been ready to draw since the window was made.
    bool FontsReady() const { return fontsReady; }

private:
    static bool RegisterWindowClass(HINSTANCE instance);
    static LRESULT CALLBACK WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

    DataInspectorHost MakeHost();
    InspectorClientSize ClientSize() const;
    void Paint();
    void OnSize(WPARAM kind);

    // Posted to this window when the text engine is ready to draw.
    static constexpr UINT FontsReadyMessage = WM_USER + 1;

    DataInspectorWindow logic;
    HWND window = nullptr;
    HWND parent = nullptr;
    std::unique_ptr<DataInspectorGraphics> graphics; // made with the first window, kept for later ones
    InspectorPaint paint;                            // reused from paint to paint
    bool fontsReady = false;
};

} // namespace tlm
