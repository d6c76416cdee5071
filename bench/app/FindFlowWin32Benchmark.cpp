// Times the find flow as the program runs it, on Windows (or Wine): the request of the find dialog
// through AppWindow with the real message pump, the real Esc poll and a real status bar showing the
// progress, against the bare forward search over the same file in the same run. Then the time from
// Esc pressed (injected with SendInput) to the end of a search over a large sparse file.
//   tolmo_find_flow_benchmark FILE SPARSE_FILE [RUNS]
// FILE should end in the bytes 12 34 56 78 9A BC DE F0 and hold them nowhere else; it is best in the
// page cache. Prints medians in milliseconds and GB/s; nothing passes or fails.

#include "app/AppWindow.h"
#include "app/MessagePumpWin32.h"
#include "document/ByteSearch.h"

#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double Milliseconds(Clock::time_point from, Clock::time_point to)
{
    return std::chrono::duration<double, std::milli>(to - from).count();
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0.0 : values[values.size() / 2];
}

void PressEscape(bool down)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = VK_ESCAPE;
    input.ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
    SendInput(1, &input, sizeof(input));
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    if (argc < 3) {
        std::fputs("usage: tolmo_find_flow_benchmark FILE SPARSE_FILE [RUNS]\n", stderr);
        return 2;
    }
    const std::u16string path(reinterpret_cast<const char16_t*>(argv[1]));
    const std::u16string sparsePath(reinterpret_cast<const char16_t*>(argv[2]));
    const int runs = argc > 3 ? std::max(1, _wtoi(argv[3])) : 5;

    INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_BAR_CLASSES};
    InitCommonControlsEx(&controls);
    HWND frame = CreateWindowExW(0, L"STATIC", L"Tolmo find benchmark", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 640,
        200, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    HWND status = CreateWindowExW(0, STATUSCLASSNAMEW, nullptr, WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, frame, nullptr,
        GetModuleHandleW(nullptr), nullptr);
    SetForegroundWindow(frame);

    tlm::AppWindow app;
    tlm::AppPlatform platform;
    int statusUpdates = 0;
    int boxes = 0;
    platform.setStatusText = [&](const std::u16string& text) {
        ++statusUpdates;
        SendMessageW(status, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(text.c_str()));
    };
    platform.updateStatusBarNow = [&] { UpdateWindow(status); };
    platform.pumpMessages = [] { tlm::PumpMessages(); };
    platform.tickCount = [] { return static_cast<std::uint64_t>(GetTickCount64()); };
    platform.escapeKeyDown = [] { return (GetAsyncKeyState(VK_ESCAPE) & 0x8000) != 0; };
    double requestMilliseconds = 0;
    Clock::time_point requestEnded;
    std::function<void()> duringRequest;
    platform.runSearchDialog = [&](tlm::SearchDialog& dialog, const tlm::SearchDialogCallback& callback) {
        tlm::SearchDialogControls dialogControls;
        dialogControls.messageBox = [&](const std::u16string&, const std::u16string&, tlm::MessageBoxKind) {
            ++boxes;
            return tlm::MessageBoxResult::Ok;
        };
        dialog.SetControls(std::move(dialogControls));
        dialog.type = tlm::SearchTypeHex;
        dialog.query = u"12 34 56 78 9A BC DE F0";
        dialog.pendingDirection = static_cast<std::uint32_t>(tlm::SearchDirection::Next);
        std::thread helper;
        if (duringRequest) {
            helper = std::thread(duringRequest);
        }
        const auto started = Clock::now();
        dialog.RunPendingRequest(callback);
        requestEnded = Clock::now();
        requestMilliseconds = Milliseconds(started, requestEnded);
        if (helper.joinable()) {
            helper.join();
        }
    };
    app.SetPlatform(platform);

    if (!app.OpenFile(path)) {
        std::fputs("cannot open FILE\n", stderr);
        return 1;
    }
    const std::uint64_t size = app.Document().GetSize();
    const std::vector<std::uint8_t> pattern{0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0};
    std::vector<double> bare;
    std::vector<double> flow;
    for (int run = 0; run < runs; ++run) {
        const auto started = Clock::now();
        const tlm::SearchResult result = tlm::SearchForward(&app.Document(), pattern, 0);
        bare.push_back(Milliseconds(started, Clock::now()));
        if (result.status != tlm::SearchStatus::Found || result.offset != size - pattern.size()) {
            std::fputs("FILE must end in the pattern and hold it nowhere else\n", stderr);
            return 1;
        }
        app.View().MoveCaretTo(0);
        statusUpdates = 0;
        app.FindNext();
        flow.push_back(requestMilliseconds);
        const auto selection = app.View().Selection();
        if (boxes != 0 || !selection || selection->first != size - pattern.size()) {
            std::fputs("the flow did not find the pattern at the end\n", stderr);
            return 1;
        }
    }
    const double gigabytes = static_cast<double>(size) / 1e9;
    std::printf("search of %.2f GB, median of %d: bare SearchForward %.0f ms (%.2f GB/s), through the find flow "
                "with pump and status bar %.0f ms (%.2f GB/s, %d status updates in the last): flow/bare %.0f%%\n",
        gigabytes, runs, Median(bare), gigabytes / Median(bare) * 1000, Median(flow), gigabytes / Median(flow) * 1000,
        statusUpdates, 100.0 * Median(bare) / Median(flow));

    if (!app.OpenFile(sparsePath)) {
        std::fputs("cannot open SPARSE_FILE\n", stderr);
        return 1;
    }
    std::vector<double> escToEnd;
    std::atomic<bool> pressed{false};
    Clock::time_point pressedAt;
    for (int run = 0; run < 10; ++run) {
        pressed = false;
        duringRequest = [&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            pressedAt = Clock::now();
            pressed = true;
            PressEscape(true);
        };
        app.View().MoveCaretTo(0);
        const int boxesBefore = boxes;
        app.FindNext();
        const Clock::time_point ended = requestEnded;
        PressEscape(false);
        if (!pressed || boxes != boxesBefore) {
            std::fputs("the search ended before Esc or was not cancelled\n", stderr);
            return 1;
        }
        escToEnd.push_back(Milliseconds(pressedAt, ended));
        // The key must be seen up before the next run starts.
        while (GetAsyncKeyState(VK_ESCAPE) & 0x8000) {
            tlm::PumpMessages();
            Sleep(1);
        }
    }
    duringRequest = {};
    std::printf("Esc to the end of a search over %.2f GB sparse, median of 10: %.1f ms (min %.1f, max %.1f)\n",
        static_cast<double>(app.Document().GetSize()) / 1e9, Median(escToEnd),
        *std::min_element(escToEnd.begin(), escToEnd.end()), *std::max_element(escToEnd.begin(), escToEnd.end()));
    DestroyWindow(frame);
    return 0;
}
