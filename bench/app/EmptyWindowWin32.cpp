// tolmo_empty_window: the least a Win32 program does to show a window: register a class, create an
// overlapped window titled "Empty", show it and run the message loop until it is closed. The
// start-up benchmark measures tolmo.exe against it under the same Wine.
#include <windows.h>

namespace {

LRESULT CALLBACK EmptyWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_DESTROY) {
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int)
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = &EmptyWindowProc;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    windowClass.lpszClassName = L"Tolmo.EmptyWindow";
    if (!RegisterClassW(&windowClass))
        return 1;
    HWND window = CreateWindowExW(0, windowClass.lpszClassName, L"Empty", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, instance, nullptr);
    if (!window)
        return 1;
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}
