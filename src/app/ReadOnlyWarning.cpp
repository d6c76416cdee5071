#include "app/ReadOnlyWarning.h"

#include "app/CallIfSet.h"

namespace tlm {

void ReadOnlyWarning::OnBlocked(AppHost& host, std::u16string_view warning)
{
    active = true;
    text.assign(warning);
    // Killing first makes a repeat restart the full duration instead of ending at the first deadline.
    CallIfSet(host.killTimer, TimerId);
    CallIfSet(host.setTimer, TimerId, DurationMs);
    CallIfSet(host.beep);
    CallIfSet(host.refreshStatusBar);
}

bool ReadOnlyWarning::OnTimer(AppHost& host, unsigned timerId)
{
    if (timerId != TimerId) {
        return false;
    }
    CallIfSet(host.killTimer, TimerId);
    active = false;
    text.clear();
    CallIfSet(host.refreshStatusBar);
    return true;
}

} // namespace tlm
