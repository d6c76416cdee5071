#pragma once

// The Windows side of AppWindow: the "Tolmo.MainWindow" class and procedure, its status bar, menu bar
// and accelerators, and the platform operations AppWindow asks for. It decides nothing: messages become
// AppWindow calls and AppWindow's calls become Win32 calls. Included by Windows code only.

#include "app/AppWindow.h"
#include "hexview/HexViewWin32.h"
#include "inspector/DataInspectorWindowWin32.h"
#include "structview/StructViewWindowWin32.h"

#include <windows.h>
#include <shellapi.h>

#include <optional>
#include <string>

namespace tlm {

class AppWindowWin32 {
public:
    static constexpr wchar_t ClassName[] = L"Tolmo.MainWindow";
    static constexpr int HexViewControlId = 2001;

    // Gives `app` its platform; both must outlive the run of the message loop.
    AppWindowWin32(AppWindow& app, HINSTANCE instance);
    AppWindowWin32(const AppWindowWin32&) = delete;
    AppWindowWin32& operator=(const AppWindowWin32&) = delete;
    ~AppWindowWin32();

    HWND Window() const { return window; }
    HACCEL Accelerators() const { return accelerators; }

private:
    static LRESULT CALLBACK MainWindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

    AppPlatform MakePlatform();
    bool RegisterMainClass();
    bool CreateMainWindow();
    bool CreateStatusBar();
    bool CreateHexView();
    void SizeAndCentre();
    bool CreateAccelerators();
    void ShowMainWindow();
    void EnableHexView(bool enabled);
    void DestroyMainWindow();
    void InstallMenu(const MenuItem& bar);
    void RemoveMenu();
    void DestroyAccelerators();
    void SetStatusText(const std::u16string& text);
    void ColourStatusBar(Theme theme);
    void LayoutChildren();
    bool DrawStatusPane(const DRAWITEMSTRUCT& item);
    void OnDropFiles(HDROP drop);
    void OnDpiChanged(WPARAM wParam, const RECT* suggested);
    MessageBoxResult ShowMessageBox(const std::u16string& text, const std::u16string& caption, MessageBoxKind kind);
    std::optional<std::u16string> ChooseFileToOpen(const std::u16string& title);
    bool EnsureInspectorWindow();
    void PlaceInspectorWindow();
    InspectorLabels InspectorTexts();
    std::optional<std::u16string> ChooseStructPattern(const std::u16string& title, const std::u16string& folder);
    bool EnsureStructViewWindow();

    AppWindow& app;
    HINSTANCE instance = nullptr;
    HWND window = nullptr;
    HWND statusBar = nullptr;
    HACCEL accelerators = nullptr;
    HMENU menu = nullptr;
    bool viewHadFocus = false; // the view held the focus when a save disabled it
    HexViewWindow hexViewWindow;
    DataInspectorWindowWin32 inspectorWindow; // outlives its window: width, splitter and pick stay
    StructViewWindowWin32 structViewWindow;
};

} // namespace tlm
