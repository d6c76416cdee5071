#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace tlm {

// The platform operations the application's portable logic asks for. The Win32 program fills them
// with real calls; tests fill them with recorders and scripted answers. An empty function means the
// operation does nothing.
struct AppHost {
    std::function<void(unsigned id, unsigned milliseconds)> setTimer;
    std::function<void(unsigned id)> killTimer;
    // MessageBeep with the exclamation sound.
    std::function<void()> beep;
    // Repaints the status bar from the window's current status state.
    std::function<void()> refreshStatusBar;
};

} // namespace tlm
