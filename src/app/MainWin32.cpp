#include "app/AppWindow.h"
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

std::optional<std::wstring> StartupPath(const ArgumentVector& arguments)
{
    const std::optional<std::u16string> path = tlm::TakeStartupPath(arguments.ToList());
    if (!path)
        return std::nullopt;
    return std::wstring(path->begin(), path->end());
}

int RunMessageLoop(const tlm::AppWindow& app)
{
    MSG message{};
    // GetMessageW answers -1 only for a bad window filter, which a null filter cannot be; stop rather
    // than spin should it ever happen.
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (app.Accelerators() && TranslateAcceleratorW(app.Window(), app.Accelerators(), &message))
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
    if (!app.Create(instance, StartupPath(arguments)))
        return -1;
    return RunMessageLoop(app);
}
