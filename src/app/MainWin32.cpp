#include "app/AppWindow.h"
#include "app/AppWindowWin32.h"
#include "app/StartupPath.h"

#include <windows.h>
#include <shellapi.h>

#include <optional>
#include <string>
#include <vector>

namespace {

// The split command line, released with LocalFree whatever happens to the run.
class ArgumentVector {
public:
    ArgumentVector() : arguments(CommandLineToArgvW(GetCommandLineW(), &count)) {}
    ArgumentVector(const ArgumentVector&) = delete;
    ArgumentVector& operator=(const ArgumentVector&) = delete;
    ~ArgumentVector() { LocalFree(arguments); }

    std::vector<std::u16string> ToList() const
    {
        std::vector<std::u16string> list;
        if (!arguments)
            return list;
        for (int index = 0; index < count; ++index) {
            const std::wstring_view argument(arguments[index]);
            list.emplace_back(argument.begin(), argument.end());
        }
        return list;
    }

private:
    int count = 0;
    LPWSTR* arguments = nullptr;
};

int RunMessageLoop(const tlm::AppWindowWin32& windows)
{
    MSG message{};
    // GetMessageW answers -1 only for a bad window filter, which a null filter cannot be; stop rather
    // than spin should it ever happen.
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (windows.Accelerators() && TranslateAcceleratorW(windows.Window(), windows.Accelerators(), &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int)
{
    // Before any window exists: the awareness cannot change afterwards. A refusal changes nothing.
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);

    // Declared first so that it is released last, after the application has gone.
    const ArgumentVector arguments;
    tlm::AppWindow app;
    // Its windows go before the application: whatever is left of them is torn down first.
    tlm::AppWindowWin32 windows(app, instance);
    if (!app.Create(tlm::TakeStartupPath(arguments.ToList())))
        return -1;
    return RunMessageLoop(windows);
}
