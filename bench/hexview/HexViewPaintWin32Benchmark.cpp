// Times real paints of the hex view window: a maximised top-level window holds the view over a generated
// file, and each of 100 repaints at a random place is forced through RedrawWindow, which returns once
// WM_PAINT has drawn. Building the portable paint list at the same place is timed apart, so the share of
// Direct2D and DirectWrite shows. Run once in ASCII and once in Shift_JIS. Prints median and spread in
// milliseconds.
#include "MixedScriptFile.h"

#include "document/EditableDocument.h"
#include "hexview/HexView.h"
#include "hexview/HexViewPaint.h"
#include "hexview/HexViewWin32.h"

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <random>
#include <vector>

namespace tlm {
namespace {

constexpr wchar_t FrameClassName[] = L"Tolmo.PaintBenchmark";
constexpr std::uint64_t FileSize = 64ull * 1024 * 1024;
constexpr int Repaints = 100;
constexpr int WarmUpPaints = 5;
constexpr int HexViewControlId = 2001;

HWND hexViewWindow = nullptr;

LRESULT CALLBACK FrameProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_SIZE:
        if (hexViewWindow != nullptr) {
            MoveWindow(hexViewWindow, 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE);
        }
        return 0;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcW(hwnd, message, wParam, lParam);
    }
}

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

// Median, the 10th and 90th percentiles and the extremes of a set of times.
void PrintSpread(const char* what, std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    const auto at = [&times](double fraction) {
        return times[static_cast<std::size_t>(fraction * static_cast<double>(times.size() - 1) + 0.5)];
    };
    std::printf("  %-22s median %7.3f ms   p10 %7.3f   p90 %7.3f   min %7.3f   max %7.3f\n", what, at(0.5), at(0.1),
        at(0.9), times.front(), times.back());
}

// A random place on each repaint, with the caret on screen and a selection across a few rows.
void MoveSomewhere(HexView& view, std::mt19937_64& random, std::uint64_t rows, std::int32_t visibleRows)
{
    const std::uint64_t topRow = random() % (rows - static_cast<std::uint64_t>(visibleRows));
    view.MoveCaretTo(topRow * 16 + 37);
    view.OnVerticalScroll(ScrollCommand::ThumbTrack, static_cast<std::int32_t>(topRow));
    view.SelectRange(topRow * 16 + 100, topRow * 16 + 180);
}

void TimeEncoding(const char* name, TextEncoding encoding, HexView& view, HWND hexWindow)
{
    view.SetEncoding(encoding);
    PumpPendingMessages();
    const std::uint64_t rows = FileSize / 16;
    const std::int32_t visibleRows = VisibleRowCount(view.Metrics(), view.Client());
    std::mt19937_64 random(7);
    HexViewPaint paint;
    std::vector<double> paintTimes;
    std::vector<double> listTimes;
    for (int i = 0; i < WarmUpPaints + Repaints; ++i) {
        MoveSomewhere(view, random, rows, visibleRows);
        PumpPendingMessages();

        auto start = std::chrono::steady_clock::now();
        RedrawWindow(hexWindow, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        const double paintTime = MillisecondsSince(start);

        start = std::chrono::steady_clock::now();
        BuildPaint(view, paint);
        const double listTime = MillisecondsSince(start);
        if (i >= WarmUpPaints) {
            paintTimes.push_back(paintTime);
            listTimes.push_back(listTime);
        }
    }
    std::printf("%s: %d repaints of %d rows, %zu drawing operations in the last\n", name, Repaints, visibleRows,
        paint.operations.size());
    PrintSpread("whole paint", paintTimes);
    PrintSpread("building the list", listTimes);
}

int Run()
{
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    const bench::MixedScriptFile file("tolmo-hexview-paint-win32-bench.bin", FileSize);
    EditableDocument document;
    if (!file.ok || !document.file.Open(file.path.u16string())) {
        std::printf("cannot make or open the benchmark file\n");
        return 1;
    }

    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSW frameClass{};
    frameClass.lpfnWndProc = FrameProc;
    frameClass.hInstance = instance;
    frameClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    frameClass.lpszClassName = FrameClassName;
    if (RegisterClassW(&frameClass) == 0 || !HexViewWindow::RegisterWindowClass(instance)) {
        std::printf("cannot register the window classes\n");
        return 1;
    }
    const HWND frame = CreateWindowExW(0, FrameClassName, L"Hex view paint timing", WS_OVERLAPPEDWINDOW,
        CW_USEDEFAULT, CW_USEDEFAULT, 800, 600, nullptr, nullptr, instance, nullptr);
    HexView view;
    HexViewWindow hexView(view);
    hexViewWindow = frame != nullptr ? hexView.Create(frame, instance, HexViewControlId) : nullptr;
    if (hexViewWindow == nullptr) {
        std::printf("cannot create the windows\n");
        return 1;
    }
    ShowWindow(frame, SW_SHOWMAXIMIZED);
    UpdateWindow(frame);
    view.SetDocument(&document);
    // The fonts are read on a thread of their own; the view has cells to time only once they are known.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (view.Metrics().hexWidth <= 0.0f && std::chrono::steady_clock::now() < deadline) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
        PumpPendingMessages();
    }
    PumpPendingMessages();
    if (view.Metrics().hexWidth <= 0.0f) {
        std::printf("the fonts were not ready in time\n");
        return 1;
    }

    RECT client{};
    GetClientRect(hexViewWindow, &client);
    std::printf("client %ld x %ld pixels at %u dpi, row height %.2f, cells %.2f and %.2f wide\n", client.right,
        client.bottom, view.Metrics().dpi, view.Metrics().rowHeight, view.Metrics().hexCellWidth,
        view.Metrics().textCellWidth);
    TimeEncoding("ASCII", TextEncoding::Ascii, view, hexViewWindow);
    TimeEncoding("Shift_JIS", TextEncoding::ShiftJis, view, hexViewWindow);

    view.SetDocument(nullptr);
    DestroyWindow(frame);
    hexViewWindow = nullptr;
    PumpPendingMessages();
    return 0;
}

} // namespace
} // namespace tlm

int main()
{
    return tlm::Run();
}
