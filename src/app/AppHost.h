#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tlm {

enum class MessageBoxKind {
    Stop,                    // OK button, stop icon
    YesNoCancelExclamation,  // Yes, No and Cancel buttons, exclamation icon
    Information,             // OK button, information icon
};

enum class MessageBoxResult { Ok, Yes, No, Cancel };

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
    // A modal message box owned by the main window.
    std::function<MessageBoxResult(const std::u16string& text, const std::u16string& caption, MessageBoxKind kind)>
        messageBox;
    // The full path of the running executable, or nothing when it cannot be found.
    std::function<std::optional<std::u16string>()> executablePath;
    // Starts a process that is not waited for; false when it could not be started.
    std::function<bool(const std::u16string& application, const std::u16string& commandLine)> createProcess;
    // Builds the menu bar again from the window's state (greyed while busy).
    std::function<void()> rebuildMenu;
    std::function<void()> updateTitle;
    std::function<void(bool enabled)> enableHexView;
    // Paints the status bar at once instead of waiting for the next paint message.
    std::function<void()> updateStatusBarNow;
    // Handles the waiting messages and returns; a quit request is kept for the main loop.
    std::function<void()> pumpMessages;
    // A millisecond clock.
    std::function<std::uint64_t()> tickCount;
};

} // namespace tlm
