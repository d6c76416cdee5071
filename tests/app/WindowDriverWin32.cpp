// tolmo_window_driver: drives the program's windows from outside for the end-to-end test.
//
//   tolmo_window_driver wait CLASS TITLE TIMEOUT_MS
//       Waits for a visible top-level window of that class and exact title. Prints its screen
//       rectangle as "left top width height", then on a second line the text of a message box
//       (empty for other windows).
//   tolmo_window_driver close CLASS TITLE TIMEOUT_MS
//       Waits for the window as above and posts it WM_CLOSE, as the close button would.
//   tolmo_window_driver dismiss TITLE TIMEOUT_MS
//       Waits for a message box with that caption and presses its OK button.
//
// Exit code 0 on success, 1 when no such window appeared in time, 2 for a bad command line.
#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string>

namespace {

constexpr wchar_t MessageBoxClass[] = L"#32770";
// Message boxes keep their text in a static control of this id.
constexpr int MessageBoxTextId = 0xFFFF;
constexpr DWORD PollInterval = 50;

struct Search {
    const wchar_t* className = nullptr;
    const wchar_t* title = nullptr;
    HWND found = nullptr;
};

std::wstring TextOf(HWND window)
{
    const int length = GetWindowTextLengthW(window);
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), length + 1)));
    return text;
}

std::wstring ClassOf(HWND window)
{
    wchar_t name[256] = {};
    GetClassNameW(window, name, 256);
    return name;
}

BOOL CALLBACK MatchWindow(HWND window, LPARAM parameter)
{
    auto* search = reinterpret_cast<Search*>(parameter);
    if (IsWindowVisible(window) && ClassOf(window) == search->className && TextOf(window) == search->title) {
        search->found = window;
        return FALSE;
    }
    return TRUE;
}

HWND WaitForWindow(const wchar_t* className, const wchar_t* title, DWORD timeout)
{
    const ULONGLONG deadline = GetTickCount64() + timeout;
    for (;;) {
        Search search{className, title, nullptr};
        EnumWindows(&MatchWindow, reinterpret_cast<LPARAM>(&search));
        if (search.found)
            return search.found;
        if (GetTickCount64() >= deadline)
            return nullptr;
        Sleep(PollInterval);
    }
}

void PrintUtf8Line(const std::wstring& text)
{
    std::string utf8;
    if (!text.empty()) {
        const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0,
                                             nullptr, nullptr);
        utf8.resize(static_cast<std::size_t>(size));
        WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), utf8.data(), size, nullptr,
                            nullptr);
    }
    std::fwrite(utf8.data(), 1, utf8.size(), stdout);
    std::fputc('\n', stdout);
}

std::wstring MessageBoxText(HWND window)
{
    HWND text = GetDlgItem(window, MessageBoxTextId);
    return text ? TextOf(text) : std::wstring();
}

int NotFound(const wchar_t* className, const wchar_t* title)
{
    std::fwprintf(stderr, L"tolmo_window_driver: no visible window of class %ls titled \"%ls\"\n", className, title);
    return 1;
}

int Wait(const wchar_t* className, const wchar_t* title, DWORD timeout)
{
    HWND window = WaitForWindow(className, title, timeout);
    if (!window)
        return NotFound(className, title);
    RECT rect{};
    GetWindowRect(window, &rect);
    std::printf("%ld %ld %ld %ld\n", rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
    PrintUtf8Line(MessageBoxText(window));
    return 0;
}

int Close(const wchar_t* className, const wchar_t* title, DWORD timeout)
{
    HWND window = WaitForWindow(className, title, timeout);
    if (!window)
        return NotFound(className, title);
    return PostMessageW(window, WM_CLOSE, 0, 0) ? 0 : 1;
}

int Dismiss(const wchar_t* title, DWORD timeout)
{
    HWND box = WaitForWindow(MessageBoxClass, title, timeout);
    if (!box)
        return NotFound(MessageBoxClass, title);
    return PostMessageW(box, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0) ? 0 : 1;
}

DWORD ParseTimeout(const wchar_t* text)
{
    return static_cast<DWORD>(std::wcstoul(text, nullptr, 10));
}

int Usage()
{
    std::fputs("usage: tolmo_window_driver wait|close CLASS TITLE TIMEOUT_MS | dismiss TITLE TIMEOUT_MS\n", stderr);
    return 2;
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    // Same coordinates as the program, which is per-monitor aware.
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    if (argc < 2)
        return Usage();
    const std::wstring command = argv[1];
    if (command == L"wait" && argc == 5)
        return Wait(argv[2], argv[3], ParseTimeout(argv[4]));
    if (command == L"close" && argc == 5)
        return Close(argv[2], argv[3], ParseTimeout(argv[4]));
    if (command == L"dismiss" && argc == 4)
        return Dismiss(argv[2], ParseTimeout(argv[3]));
    return Usage();
}
