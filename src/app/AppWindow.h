#pragma once

#include "document/EditableDocument.h"

#include <windows.h>

#include <optional>
#include <string>

namespace tlm {

// The application: the main window and everything it owns for the whole run. The entry function
// keeps one as a local value; it is never copied.
class AppWindow {
public:
    AppWindow() = default;
    AppWindow(const AppWindow&) = delete;
    AppWindow& operator=(const AppWindow&) = delete;
    ~AppWindow();

    // Registers the class, creates the main window (which opens `path` while it is being created),
    // sizes, centres and shows it. False when the window could not be made to stand.
    bool Create(HINSTANCE instance, std::optional<std::wstring> path);

    HWND Window() const { return window; }
    HACCEL Accelerators() const { return accelerators; }

private:
    static LRESULT CALLBACK MainWindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    void OnCreate();
    bool OpenFile(const std::wstring& path);
    void UpdateTitle();
    void SizeAndCentre();

    HINSTANCE instance = nullptr;
    HWND window = nullptr;
    HACCEL accelerators = nullptr;
    EditableDocument document;
    std::optional<std::wstring> pendingOpenPath;
};

} // namespace tlm
