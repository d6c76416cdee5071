#pragma once

#include "cli/CliStreams.h"

#include <cstdint>

namespace tlm {

// A one-line bar on standard error, "[#####.....]  42%", redrawn in place when the percentage moves.
// It shows only when standard error is a terminal and the work is long enough to need it, and it
// erases itself when the work ends, so what remains on the terminal is the command's own output.
class ProgressBar {
public:
    static constexpr std::uint64_t ShownFrom = 64ull * 1024 * 1024;
    static constexpr int Width = 40;

    ProgressBar(CliStreams& streams, std::uint64_t total);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void Update(std::uint64_t done);
    void Finish();
    bool Shown() const { return enabled; }

private:
    CliStreams& streams;
    std::uint64_t total = 0;
    bool enabled = false;
    bool drawn = false;
    int lastPercent = -1;
};

} // namespace tlm
