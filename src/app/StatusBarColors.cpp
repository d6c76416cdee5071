#include "app/StatusBarColors.h"

namespace tlm {

StatusBarColors StatusBarColorsFor(Theme theme, bool overrideActive)
{
    if (overrideActive)
        return {RgbColor{180, 32, 32}, RgbColor{255, 255, 255}};
    switch (theme) {
    case Theme::CoolSlate:
        return {RgbColor{30, 34, 40}, RgbColor{232, 235, 239}};
    case Theme::DarkBlue:
        return {RgbColor{13, 27, 42}, RgbColor{230, 237, 243}};
    case Theme::Black:
        return {RgbColor{17, 17, 17}, RgbColor{243, 243, 243}};
    case Theme::Light:
    default:
        return {std::nullopt, RgbColor{32, 32, 32}};
    }
}

} // namespace tlm
