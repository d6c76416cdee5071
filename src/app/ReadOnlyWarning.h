#pragma once

#include "app/AppHost.h"

#include <string>
#include <string_view>

namespace tlm {

// The red status text shown when an edit key is refused because the file is read-only. It lasts
// 900 ms after the last refused key: each refusal restarts the timer, so a repeat extends it.
class ReadOnlyWarning {
public:
    static constexpr unsigned TimerId = 1;
    static constexpr unsigned DurationMs = 900;

    // A key was refused: show `text` (the localised warning), restart the timer, beep, repaint.
    void OnBlocked(AppHost& host, std::u16string_view text);
    // A timer fired. True when it was this warning's timer, which then ends the warning.
    bool OnTimer(AppHost& host, unsigned timerId);

    bool Active() const { return active; }
    const std::u16string& Text() const { return text; }

private:
    bool active = false;
    std::u16string text;
};

} // namespace tlm
