#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tlm {

// The progress shown during a save or a search: at most 20 status updates a second, but 0 and 100
// percent as soon as they change.
struct ProgressThrottle {
    bool active = false;
    std::u16string text;
    std::int64_t lastPercent = -1;
    std::uint64_t lastTick = 0;

    // Takes one report; `nowTick` is a millisecond clock (GetTickCount64), `word` the localised
    // "status.saving" or "status.searching". The percent is processed*100/total, 100 for a total of
    // 0, never above 100. A repeated percent within 100 ms and one of 1 to 99 within 50 ms of the last
    // shown are dropped. True when `text` was set to "<word> <percent>%" and the status bar is to be
    // refreshed and messages pumped; false when the report is dropped. Marks the progress active.
    bool Report(std::uint64_t processed, std::uint64_t total, std::uint64_t nowTick, std::u16string_view word);
    // Back to no progress: inactive, no text, no last percent, tick 0.
    void Reset();
};

} // namespace tlm
