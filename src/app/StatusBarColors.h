#pragma once

#include "settings/Theme.h"

#include <cstdint>
#include <optional>

namespace tlm {

struct RgbColor {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend bool operator==(const RgbColor&, const RgbColor&) = default;
};

// Colours of the status bar's pane. An empty background means the system's button face colour
// (COLOR_BTNFACE), which the light theme and any unknown theme use.
struct StatusBarColors {
    std::optional<RgbColor> background;
    RgbColor text;

    friend bool operator==(const StatusBarColors&, const StatusBarColors&) = default;
};

// The pane's colours by theme; while the read-only warning shows, white on red in every theme.
StatusBarColors StatusBarColorsFor(Theme theme, bool overrideActive);

} // namespace tlm
