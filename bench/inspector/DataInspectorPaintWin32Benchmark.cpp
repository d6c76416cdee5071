// Times real paints of the data inspector's window: the window as the program makes it, owned by a
// plain top-level window, with twelve values of new random bytes and a picked row before each of 100
// repaints, each forced through RedrawWindow, which returns once WM_PAINT has drawn. Building the
// portable paint list is timed apart, so the share of Direct2D and DirectWrite shows. Prints median
// and spread in milliseconds.
#include "inspector/DataInspectorWindow.h"
#include "inspector/DataInspectorWindowWin32.h"
#include "inspector/InspectorRows.h"

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <random>
#include <vector>

namespace tlm {
namespace {

constexpr wchar_t OwnerClassName[] = L"Tolmo.InspectorPaintBenchmark";
constexpr int Repaints = 100;
constexpr int WarmUpPaints = 5;

void PumpPendingMessages()
{
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

double MillisecondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void PrintSpread(const char* what, std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    const auto at = [&times](double fraction) {
        return times[static_cast<std::size_t>(fraction * static_cast<double>(times.size() - 1) + 0.5)];
    };
    std::printf("  %-22s median %7.3f ms   p10 %7.3f   p90 %7.3f   min %7.3f   max %7.3f\n", what, at(0.5), at(0.1),
        at(0.9), times.front(), times.back());
}

std::vector<std::u16string> RandomRows(std::mt19937_64& random)
{
    InspectorRequest request;
    for (int i = 0; i < 96; ++i) {
        request.bytes.push_back(static_cast<std::uint8_t>(random()));
    }
    return BuildInspectorRows(request, u"Not available");
}

InspectorLabels EnglishLabels()
{
    InspectorLabels labels;
    labels.title = u"Data Inspector";
    labels.nameColumnTitle = u"Name";
    labels.valueColumnTitle = u"Value";
    labels.rowNames = {u"Binary", u"UInt8", u"UInt16 LE", u"UInt16 BE", u"UInt32 LE", u"UInt32 BE", u"UInt64 LE",
        u"UInt64 BE", u"UTF-8", u"UTF-16 LE", u"UTF-16 BE", u"Encoding"};
    return labels;
}

int Run()
{
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSW ownerClass{};
    ownerClass.lpfnWndProc = DefWindowProcW;
    ownerClass.hInstance = instance;
    ownerClass.lpszClassName = OwnerClassName;
    if (RegisterClassW(&ownerClass) == 0) {
        std::printf("cannot register the owner's class\n");
        return 1;
    }
    const HWND owner = CreateWindowExW(0, OwnerClassName, L"Inspector paint timing", WS_OVERLAPPEDWINDOW, 0, 0, 600,
        640, nullptr, nullptr, instance, nullptr);
    DataInspectorWindowWin32 inspector;
    if (owner == nullptr || !inspector.Show(owner, instance, EnglishLabels(), Theme::CoolSlate)) {
        std::printf("cannot create the windows\n");
        return 1;
    }
    ShowWindow(owner, SW_SHOWNOACTIVATE);
    SetWindowPos(inspector.Handle(), nullptr, 601, 0, 520, 640, SWP_NOZORDER | SWP_NOACTIVATE);
    ShowWindow(inspector.Handle(), SW_SHOWNOACTIVATE);
    // The fonts are read on a thread of their own; nothing is drawn until they are known.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!inspector.FontsReady() && std::chrono::steady_clock::now() < deadline) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
        PumpPendingMessages();
    }
    PumpPendingMessages();
    if (!inspector.FontsReady()) {
        std::printf("the fonts were not ready in time\n");
        return 1;
    }

    RECT client{};
    GetClientRect(inspector.Handle(), &client);
    const InspectorClientSize size{client.right - client.left, client.bottom - client.top};
    std::mt19937_64 random(5);
    InspectorPaint paint;
    std::vector<double> paintTimes;
    std::vector<double> listTimes;
    for (int i = 0; i < WarmUpPaints + Repaints; ++i) {
        inspector.Logic().SetValues(RandomRows(random));
        inspector.Logic().OnLeftButtonDown(300, 38 + 36 * (i % 12) + 10);
        PumpPendingMessages();

        auto start = std::chrono::steady_clock::now();
        RedrawWindow(inspector.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        const double paintTime = MillisecondsSince(start);

        start = std::chrono::steady_clock::now();
        BuildInspectorPaint(inspector.Logic(), size, paint);
        const double listTime = MillisecondsSince(start);
        if (i >= WarmUpPaints) {
            paintTimes.push_back(paintTime);
            listTimes.push_back(listTime);
        }
    }
    std::printf("inspector: %d repaints of a client area %ld x %ld at %u dpi, %zu drawing operations\n", Repaints,
        client.right, client.bottom, inspector.Logic().Dpi(), paint.operations.size());
    PrintSpread("whole paint", paintTimes);
    PrintSpread("building the list", listTimes);

    inspector.Destroy();
    DestroyWindow(owner);
    PumpPendingMessages();
    return 0;
}

} // namespace
} // namespace tlm

int main()
{
    return tlm::Run();
}
