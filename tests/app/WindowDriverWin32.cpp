// tolmo_window_driver: looks at and drives the program's windows from another process, as a user or
// an accessibility tool could, for the end-to-end cases. Titles are matched exactly, and an empty
// TITLE matches any; every wait polls the window list until its condition holds or TIMEOUT_MS has
// passed.
//
//   wait CLASS TITLE TIMEOUT_MS
//       Waits for a visible top-level window of that class and title. Prints its screen rectangle
//       as "left top width height", then on a second line the text of a message box (empty for
//       other windows), each of its line breaks written as the two characters "\n".
//   wait-gone CLASS TITLE TIMEOUT_MS
//       Waits until no visible top-level window of that class and title is left.
//   wait-focus CLASS TITLE CHILD_CLASS TIMEOUT_MS
//       Waits until the window is the foreground window, its thread is in no menu, and the
//       keyboard focus of that thread is on a window of CHILD_CLASS. Keys sent then reach it.
//   wait-idle CLASS TITLE TIMEOUT_MS
//       Waits until the thread of the window is in no menu and takes its input: a message sent to
//       the window comes back, so everything queued before has been handled.
//   close CLASS TITLE TIMEOUT_MS
//       Waits for the window and posts it WM_CLOSE, as the close button would.
//   repaint CLASS TITLE TIMEOUT_MS [TIMES]
//       Waits for the window and marks all of it and its children for painting again, as a window
//       that covered it and went away would, and waits until they have been painted; TIMES times
//       (default once). With an empty TITLE, every visible window of the class.
//   dismiss TITLE TIMEOUT_MS
//       Waits for a message box with that caption and presses its OK button.
//   buttons TITLE TIMEOUT_MS
//       Waits for a message box with that caption and prints its buttons, one a line, in the order
//       of their ids: "id text", the text without the access key's ampersand.
//   click-button TITLE BUTTON TIMEOUT_MS
//       Waits for a message box with that caption and clicks the button whose text, without the
//       ampersand, is BUTTON.
//   owner TITLE TIMEOUT_MS
//       Waits for a message box with that caption and prints its owner window as
//       "visible|hidden CLASS TITLE" ("none" without an owner).
//   windows CLASS
//       Prints every top-level window of the class, hidden ones too, one a line:
//       "visible|hidden left top width height TITLE".
//   children CLASS TITLE TIMEOUT_MS
//       Prints every child window of the window: "CLASS id visible|hidden left top width height",
//       the rectangle being the child's client area on the screen.
//   control CLASS TITLE ID TIMEOUT_MS
//       Waits for the window and prints its child control ID as "enabled|disabled TEXT", the text
//       read with WM_GETTEXT.
//   menu CLASS TITLE TIMEOUT_MS
//       Prints the window's menu bar as a tree, two blanks of indent a level, one item a line:
//       "text [id N] [checked] [greyed] [separator]". Exit code 3 when the menu cannot be read
//       from another process (Wine refuses that).
//   reference-menu CLASS TITLE TIMEOUT_MS ITEM...
//       Shows a window titled "Tolmo reference menu" of the same width as the given one, whose
//       menu bar holds the ITEMs, without taking the activation. Prints two lines, "target L T W H"
//       and "reference L T W H": where the menu bar of each stands on the screen, so that both can
//       be photographed and compared. Runs until it gets WM_CLOSE or TIMEOUT_MS has passed.
//   process CLASS TITLE TIMEOUT_MS
//       Prints the process id of the window and its working set in bytes.
//   launch CLASS TITLE TIMEOUT_MS PROGRAM [ARGUMENT]
//       Starts PROGRAM (with ARGUMENT quoted as its one argument) and prints the milliseconds from
//       the start of its process to the moment a visible top-level window of that class and title
//       stands; the program is left running.
//   lock PATH
//       Opens the file for reading and writing while letting others only read it, locks all of
//       it, prints "locked", and holds both until its standard input ends: another program that
//       keeps a file to itself for a while.
//
// Exit code 0 on success, 1 when no such window appeared in time, 2 for a bad command line,
// 3 when a menu cannot be read.
#include <windows.h>
#include <psapi.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr wchar_t MessageBoxClass[] = L"#32770";
// Message boxes keep their text in a static control of this id.
constexpr int MessageBoxTextId = 0xFFFF;
constexpr DWORD PollInterval = 50;
constexpr wchar_t ReferenceClass[] = L"Tolmo.ReferenceMenu";
constexpr wchar_t ReferenceTitle[] = L"Tolmo reference menu";

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

std::wstring WithoutAmpersands(const std::wstring& text)
{
    std::wstring plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'&' && i + 1 < text.size())
            ++i;
        plain += text[i];
    }
    return plain;
}

std::string Utf8(const std::wstring& text)
{
    std::string utf8;
    if (!text.empty()) {
        const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0,
                                             nullptr, nullptr);
        utf8.resize(static_cast<std::size_t>(size));
        WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), utf8.data(), size, nullptr,
                            nullptr);
    }
    return utf8;
}

void PrintUtf8Line(const std::wstring& text)
{
    const std::string utf8 = Utf8(text);
    std::fwrite(utf8.data(), 1, utf8.size(), stdout);
    std::fputc('\n', stdout);
}

void PrintRect(const char* label, const RECT& rect)
{
    if (label)
        std::printf("%s ", label);
    std::printf("%ld %ld %ld %ld\n", rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
}

struct Search {
    const wchar_t* className = nullptr;
    const wchar_t* title = nullptr;
    bool visibleOnly = true;
    std::vector<HWND> found;
};

BOOL CALLBACK MatchWindow(HWND window, LPARAM parameter)
{
    auto* search = reinterpret_cast<Search*>(parameter);
    if (search->visibleOnly && !IsWindowVisible(window))
        return TRUE;
    if (ClassOf(window) != search->className)
        return TRUE;
    if (search->title && *search->title && TextOf(window) != search->title)
        return TRUE;
    search->found.push_back(window);
    return TRUE;
}

std::vector<HWND> FindWindows(const wchar_t* className, const wchar_t* title, bool visibleOnly)
{
    Search search{className, title, visibleOnly, {}};
    EnumWindows(&MatchWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// Polls until condition() holds or the time is up; true when it held.
template <typename Condition>
bool WaitUntil(DWORD timeout, Condition condition)
{
    const ULONGLONG deadline = GetTickCount64() + timeout;
    for (;;) {
        if (condition())
            return true;
        if (GetTickCount64() >= deadline)
            return false;
        Sleep(PollInterval);
    }
}

HWND WaitForWindow(const wchar_t* className, const wchar_t* title, DWORD timeout)
{
    HWND window = nullptr;
    WaitUntil(timeout, [&] {
        const auto found = FindWindows(className, title, true);
        window = found.empty() ? nullptr : found.front();
        return window != nullptr;
    });
    return window;
}

std::wstring MessageBoxText(HWND window)
{
    HWND control = GetDlgItem(window, MessageBoxTextId);
    const std::wstring text = control ? TextOf(control) : std::wstring();
    // One line, so that a reader takes the whole text from the second line of the output.
    std::wstring line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n')
            continue;
        if (text[i] == L'\r' || text[i] == L'\n')
            line += L"\\n";
        else
            line += text[i];
    }
    return line;
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
    PrintRect(nullptr, rect);
    PrintUtf8Line(MessageBoxText(window));
    return 0;
}

int WaitGone(const wchar_t* className, const wchar_t* title, DWORD timeout)
{
    if (WaitUntil(timeout, [&] { return FindWindows(className, title, true).empty(); }))
        return 0;
    std::fwprintf(stderr, L"tolmo_window_driver: a window of class %ls titled \"%ls\" is still there\n", className,
                  title);
    return 1;
}

bool InMenu(const GUITHREADINFO& info)
{
    return (info.flags & (GUI_INMENUMODE | GUI_POPUPMENUMODE | GUI_SYSTEMMENUMODE)) != 0 || info.hwndMenuOwner;
}

int WaitFocus(const wchar_t* className, const wchar_t* title, const wchar_t* childClass, DWORD timeout)
{
    HWND window = WaitForWindow(className, title, timeout);
    if (!window)
        return NotFound(className, title);
    const DWORD thread = GetWindowThreadProcessId(window, nullptr);
    const bool ready = WaitUntil(timeout, [&] {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        if (GetForegroundWindow() != window || !GetGUIThreadInfo(thread, &info) || InMenu(info))
            return false;
        return info.hwndFocus && ClassOf(info.hwndFocus) == childClass;
    });
    if (ready)
        return 0;
    std::fwprintf(stderr, L"tolmo_window_driver: the keyboard focus did not reach a %ls in \"%ls\"\n", childClass,
                  title);
    return 1;
}

int WaitIdle(const wchar_t* className, const wchar_t* title, DWORD timeout)
{
    HWND window = WaitForWindow(className, title, timeout);
    if (!window)
        return NotFound(className, title);
    const DWORD thread = GetWindowThreadProcessId(window, nullptr);
    const bool ready = WaitUntil(timeout, [&] {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        if (!GetGUIThreadInfo(thread, &info) || InMenu(info))
            return false;
        // A sent message is handled only between the window's own messages, after those queued.
        DWORD_PTR answer = 0;
        return SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, PollInterval * 4, &answer) != 0;
    });
    if (ready)
        return 0;
    std::fwprintf(stderr, L"tolmo_window_driver: \"%ls\" did not become idle\n", title);
    return 1;
}

int Close(const wchar_t* className, const wchar_t* title, DWORD timeout)
{
    HWND window = WaitForWindow(className, title, timeout);
    if (!window)
        return NotFound(className, title);
    return PostMessageW(window, WM_CLOSE, 0, 0) ? 0 : 1;
}

BOOL CALLBACK AddChild(HWND child, LPARAM parameter)
{
    reinterpret_cast<std::vector<HWND>*>(parameter)->push_back(child);
    return TRUE;
}

// True when nothing of the window or its children waits to be painted.
bool Painted(HWND window)
{
    std::vector<HWND> windows{window};
    EnumChildWindows(window, &AddChild, reinterpret_cast<LPARAM>(&windows));
    return std::none_of(windows.begin(), windows.end(), [](HWND each) {
        RECT dirty{};
        return IsWindow(each) && GetUpdateRect(each, &dirty, FALSE);
    });
}

int Repaint(const wchar_t* className, const wchar_t* title, DWORD timeout, int times)
{
    std::vector<HWND> windows;
    if (*title) {
        if (HWND window = WaitForWindow(className, title, timeout))
            windows.push_back(window);
    } else {
        windows = FindWindows(className, nullptr, true);
    }
    if (windows.empty())
        return NotFound(className, title);
    for (int round = 0; round < times; ++round) {
        for (HWND window : windows)
            RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN);
        // Each round is painted before the next is asked for, so that each is a paint of its own.
        if (!WaitUntil(timeout, [&] { return std::all_of(windows.begin(), windows.end(), Painted); })) {
            std::fwprintf(stderr, L"tolmo_window_driver: \"%ls\" was not painted in time\n", title);
            return 1;
        }
    }
    return 0;
}

int Dismiss(const wchar_t* title, DWORD timeout)
{
    HWND box = WaitForWindow(MessageBoxClass, title, timeout);
    if (!box)
        return NotFound(MessageBoxClass, title);
    return PostMessageW(box, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0) ? 0 : 1;
}

std::vector<std::pair<int, HWND>> ButtonsOf(HWND box)
{
    std::vector<std::pair<int, HWND>> buttons;
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (_wcsicmp(ClassOf(child).c_str(), L"Button") == 0 && IsWindowVisible(child))
            buttons.emplace_back(GetDlgCtrlID(child), child);
    }
    std::sort(buttons.begin(), buttons.end(),
              [](const auto& left, const auto& right) { return left.first < right.first; });
    return buttons;
}

int Buttons(const wchar_t* title, DWORD timeout)
{
    HWND box = WaitForWindow(MessageBoxClass, title, timeout);
    if (!box)
        return NotFound(MessageBoxClass, title);
    for (const auto& [id, button] : ButtonsOf(box)) {
        std::printf("%d ", id);
        PrintUtf8Line(WithoutAmpersands(TextOf(button)));
    }
    return 0;
}

int ClickButton(const wchar_t* title, const wchar_t* text, DWORD timeout)
{
    HWND box = WaitForWindow(MessageBoxClass, title, timeout);
    if (!box)
        return NotFound(MessageBoxClass, title);
    for (const auto& [id, button] : ButtonsOf(box)) {
        if (WithoutAmpersands(TextOf(button)) == text)
            return PostMessageW(button, BM_CLICK, 0, 0) ? 0 : 1;
    }
    std::fwprintf(stderr, L"tolmo_window_driver: the box \"%ls\" has no button \"%ls\"\n", title, text);
    return 1;
}

int Owner(const wchar_t* title, DWORD timeout)
{
    HWND box = WaitForWindow(MessageBoxClass, title, timeout);
    if (!box)
        return NotFound(MessageBoxClass, title);
    HWND owner = GetWindow(box, GW_OWNER);
    if (!owner) {
        std::puts("none");
        return 0;
    }
    std::printf("%s ", IsWindowVisible(owner) ? "visible" : "hidden");
    PrintUtf8Line(ClassOf(owner) + L" " + TextOf(owner));
    return 0;
}

int Windows(const wchar_t* className)
{
    for (HWND window : FindWindows(className, nullptr, false)) {
        RECT rect{};
        GetWindowRect(window, &rect);
        std::printf("%s %ld %ld %ld %ld ", IsWindowVisible(window) ? "visible" : "hidden", rect.left, rect.top,
                    rect.right - rect.left, rect.bottom - rect.top);
        PrintUtf8Line(TextOf(window));
    }
    return 0;
}

BOOL CALLBACK PrintChild(HWND child, LPARAM)
{
    RECT client{};
    GetClientRect(child, &client);
    POINT origin{0, 0};
    ClientToScreen(child, &origin);
    std::printf("%s %d %s %ld %ld %ld %ld\n", Utf8(ClassOf(child)).c_str(), GetDlgCtrlID(child),
                IsWindowVisible(child) ? "visible" : "hidden", origin.x, origin.y, client.right, client.bottom);
    return TRUE;
}

int Children(const wchar_t* className, const wchar_t* title, DWORD timeout)
{
    HWND window = WaitForWindow(className, title, timeout);
    if (!window)
        return NotFound(className, title);
    EnumChildWindows(window, &PrintChild, 0);
    return 0;
}

bool PrintMenu(HMENU menu, int depth)
{
    const int count = GetMenuItemCount(menu);
    if (count < 0)
        return false;
    for (int i = 0; i < count; ++i) {
        wchar_t text[512] = {};
        MENUITEMINFOW item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_STRING;
        item.dwTypeData = text;
        item.cch = 511;
        if (!GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &item))
            return false;
        std::string line(static_cast<std::size_t>(depth) * 2, ' ');
        line += Utf8(text);
        if (item.fType & MFT_SEPARATOR)
            line += " [separator]";
        else if (!item.hSubMenu)
            line += " [id " + std::to_string(item.wID) + "]";
        if (item.fState & MFS_CHECKED)
            line += " [checked]";
        if (item.fState & MFS_GRAYED)
            line += " [greyed]";
        std::puts(line.c_str());
        if (item.hSubMenu && !PrintMenu(item.hSubMenu, depth + 1))
            return false;
    }
    return true;
}

int Menu(const wchar_t* className, const wchar_t* title, DWORD timeout)
{
    HWND window = WaitForWindow(className, title, timeout);
    if (!window)
        return NotFound(className, title);
    HMENU menu = GetMenu(window);
    if (!menu || !PrintMenu(menu, 0)) {
        std::fwprintf(stderr, L"tolmo_window_driver: the menu of \"%ls\" cannot be read from here (error %lu)\n",
                      title, GetLastError());
        return 3;
    }
    return 0;
}

LRESULT CALLBACK ReferenceProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_DESTROY) {
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

int ReferenceMenu(const wchar_t* className, const wchar_t* title, DWORD timeout, int count, wchar_t** items)
{
    HWND target = WaitForWindow(className, title, timeout);
    if (!target)
        return NotFound(className, title);
    RECT targetRect{};
    GetWindowRect(target, &targetRect);

    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = &ReferenceProc;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    windowClass.lpszClassName = ReferenceClass;
    RegisterClassW(&windowClass);

    HMENU bar = CreateMenu();
    for (int i = 0; i < count; ++i) {
        // Popups, like the program's top-level items, so that both are drawn alike.
        HMENU popup = CreatePopupMenu();
        AppendMenuW(popup, MF_STRING, 1, L"-");
        AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), items[i]);
    }
    // Above the target when there is room, else below it, never over it.
    const int width = targetRect.right - targetRect.left;
    const int height = 120;
    const int top = targetRect.top >= height ? 0 : GetSystemMetrics(SM_CYSCREEN) - height;
    HWND reference = CreateWindowExW(WS_EX_NOACTIVATE, ReferenceClass, ReferenceTitle, WS_OVERLAPPEDWINDOW,
                                     targetRect.left, top, width, height, nullptr, bar, windowClass.hInstance,
                                     nullptr);
    if (!reference)
        return 1;
    ShowWindow(reference, SW_SHOWNOACTIVATE);
    UpdateWindow(reference);
    DrawMenuBar(reference);

    MENUBARINFO info{};
    info.cbSize = sizeof info;
    if (!GetMenuBarInfo(reference, OBJID_MENU, 0, &info))
        return 1;
    POINT referenceOrigin{0, 0};
    ClientToScreen(reference, &referenceOrigin);
    POINT targetOrigin{0, 0};
    ClientToScreen(target, &targetOrigin);
    // The same frame style puts the bar at the same place above the client area of either window.
    RECT onTarget = info.rcBar;
    OffsetRect(&onTarget, targetOrigin.x - referenceOrigin.x, targetOrigin.y - referenceOrigin.y);
    PrintRect("target", onTarget);
    PrintRect("reference", info.rcBar);
    std::fflush(stdout);

    SetTimer(reference, 1, timeout, nullptr);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (message.message == WM_TIMER && message.hwnd == reference) {
            DestroyWindow(reference);
            continue;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}

int Process(const wchar_t* className, const wchar_t* title, DWORD timeout)
{
    HWND window = WaitForWindow(className, title, timeout);
    if (!window)
        return NotFound(className, title);
    DWORD processId = 0;
    GetWindowThreadProcessId(window, &processId);
    SIZE_T workingSet = 0;
    if (HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION | PROCESS_VM_READ, FALSE, processId)) {
        PROCESS_MEMORY_COUNTERS counters{};
        counters.cb = sizeof counters;
        if (GetProcessMemoryInfo(process, &counters, sizeof counters))
            workingSet = counters.WorkingSetSize;
        CloseHandle(process);
    }
    std::printf("%lu %llu\n", processId, static_cast<unsigned long long>(workingSet));
    return 0;
}

int Lock(const wchar_t* path)
{
    HANDLE file = CreateFileW(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        std::fwprintf(stderr, L"tolmo_window_driver: cannot open %ls (error %lu)\n", path, GetLastError());
        return 1;
    }
    OVERLAPPED whole{};
    if (!LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, MAXDWORD, MAXDWORD, &whole)) {
        std::fwprintf(stderr, L"tolmo_window_driver: cannot lock %ls (error %lu)\n", path, GetLastError());
        CloseHandle(file);
        return 1;
    }
    std::puts("locked");
    std::fflush(stdout);
    char buffer[256];
    DWORD got = 0;
    while (ReadFile(GetStdHandle(STD_INPUT_HANDLE), buffer, sizeof buffer, &got, nullptr) && got > 0) {
    }
    UnlockFileEx(file, 0, MAXDWORD, MAXDWORD, &whole);
    CloseHandle(file);
    return 0;
}

int Launch(const wchar_t* className, const wchar_t* title, DWORD timeout, const wchar_t* program,
           const wchar_t* argument)
{
    std::wstring commandLine = L"\"" + std::wstring(program) + L"\"";
    if (argument)
        commandLine += L" \"" + std::wstring(argument) + L"\"";
    // The program gets the null device for its standard handles, not this program's: whoever
    // reads this program's output to its end must not wait for the program too.
    for (DWORD which : {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE})
        SetHandleInformation(GetStdHandle(which), HANDLE_FLAG_INHERIT, 0);
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE nothing = CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                 &inheritable, OPEN_EXISTING, 0, nullptr);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = nothing;
    startup.hStdOutput = nothing;
    startup.hStdError = nothing;
    PROCESS_INFORMATION process{};
    LARGE_INTEGER frequency{};
    LARGE_INTEGER started{};
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&started);
    const BOOL created = CreateProcessW(program, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                         &startup, &process);
    CloseHandle(nothing);
    if (!created) {
        std::fwprintf(stderr, L"tolmo_window_driver: cannot start %ls (error %lu)\n", program, GetLastError());
        return 1;
    }
    CloseHandle(process.hThread);
    // A short step: this is a measurement.
    const ULONGLONG deadline = GetTickCount64() + timeout;
    bool shown = false;
    while (!(shown = !FindWindows(className, title, true).empty()) && GetTickCount64() < deadline)
        Sleep(1);
    LARGE_INTEGER now{};
    QueryPerformanceCounter(&now);
    CloseHandle(process.hProcess);
    if (!shown)
        return NotFound(className, title);
    std::printf("%.1f\n", 1000.0 * static_cast<double>(now.QuadPart - started.QuadPart) /
                              static_cast<double>(frequency.QuadPart));
    return 0;
}

// One control of a window by its id: whether it takes input, and its text as WM_GETTEXT gives it
// (which reaches across processes, where GetWindowTextW does not for a control).
int Control(const wchar_t* className, const wchar_t* title, int id, DWORD timeout)
{
    HWND window = WaitForWindow(className, title, timeout);
    if (!window)
        return NotFound(className, title);
    HWND control = GetDlgItem(window, id);
    if (!control) {
        std::fwprintf(stderr, L"tolmo_window_driver: \"%ls\" has no control %d\n", title, id);
        return 1;
    }
    DWORD_PTR length = 0;
    SendMessageTimeoutW(control, WM_GETTEXTLENGTH, 0, 0, SMTO_ABORTIFHUNG, 5000, &length);
    std::wstring text(length + 1, L'\0');
    DWORD_PTR copied = 0;
    SendMessageTimeoutW(control, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()), SMTO_ABORTIFHUNG,
                        5000, &copied);
    text.resize(copied);
    std::printf("%s ", IsWindowEnabled(control) ? "enabled" : "disabled");
    PrintUtf8Line(text);
    return 0;
}

DWORD ParseTimeout(const wchar_t* text)
{
    return static_cast<DWORD>(std::wcstoul(text, nullptr, 10));
}

int Usage()
{
    std::fputs("usage: tolmo_window_driver wait|wait-gone|wait-idle|close|repaint|children|menu|process CLASS TITLE TIMEOUT_MS\n"
               "       tolmo_window_driver wait-focus CLASS TITLE CHILD_CLASS TIMEOUT_MS\n"
               "       tolmo_window_driver dismiss|buttons|owner TITLE TIMEOUT_MS\n"
               "       tolmo_window_driver click-button TITLE BUTTON TIMEOUT_MS\n"
               "       tolmo_window_driver control CLASS TITLE ID TIMEOUT_MS\n"
               "       tolmo_window_driver windows CLASS | lock PATH\n"
               "       tolmo_window_driver launch CLASS TITLE TIMEOUT_MS PROGRAM [ARGUMENT]\n"
               "       tolmo_window_driver reference-menu CLASS TITLE TIMEOUT_MS ITEM...\n",
               stderr);
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
    if (command == L"wait-gone" && argc == 5)
        return WaitGone(argv[2], argv[3], ParseTimeout(argv[4]));
    if (command == L"wait-focus" && argc == 6)
        return WaitFocus(argv[2], argv[3], argv[4], ParseTimeout(argv[5]));
    if (command == L"wait-idle" && argc == 5)
        return WaitIdle(argv[2], argv[3], ParseTimeout(argv[4]));
    if (command == L"close" && argc == 5)
        return Close(argv[2], argv[3], ParseTimeout(argv[4]));
    if (command == L"repaint" && (argc == 5 || argc == 6))
        return Repaint(argv[2], argv[3], ParseTimeout(argv[4]), argc == 6 ? _wtoi(argv[5]) : 1);
    if (command == L"dismiss" && argc == 4)
        return Dismiss(argv[2], ParseTimeout(argv[3]));
    if (command == L"buttons" && argc == 4)
        return Buttons(argv[2], ParseTimeout(argv[3]));
    if (command == L"click-button" && argc == 5)
        return ClickButton(argv[2], argv[3], ParseTimeout(argv[4]));
    if (command == L"owner" && argc == 4)
        return Owner(argv[2], ParseTimeout(argv[3]));
    if (command == L"windows" && argc == 3)
        return Windows(argv[2]);
    if (command == L"children" && argc == 5)
        return Children(argv[2], argv[3], ParseTimeout(argv[4]));
    if (command == L"menu" && argc == 5)
        return Menu(argv[2], argv[3], ParseTimeout(argv[4]));
    if (command == L"reference-menu" && argc >= 6)
        return ReferenceMenu(argv[2], argv[3], ParseTimeout(argv[4]), argc - 5, argv + 5);
    if (command == L"process" && argc == 5)
        return Process(argv[2], argv[3], ParseTimeout(argv[4]));
    if (command == L"launch" && (argc == 6 || argc == 7))
        return Launch(argv[2], argv[3], ParseTimeout(argv[4]), argv[5], argc == 7 ? argv[6] : nullptr);
    if (command == L"control" && argc == 6)
        return Control(argv[2], argv[3], _wtoi(argv[4]), ParseTimeout(argv[5]));
    if (command == L"lock" && argc == 3)
        return Lock(argv[2]);
    return Usage();
}
