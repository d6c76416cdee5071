#include "hexview/ThemePalette.h"

#include <cstdint>

namespace tlm {

namespace {

// A colour written as 0xRRGGBB with its alpha in hundredths, as designers give them.
constexpr RgbaColor Rgb(std::uint32_t rgb, float alpha)
{
    return {static_cast<float>((rgb >> 16) & 0xFF) / 255.0f, static_cast<float>((rgb >> 8) & 0xFF) / 255.0f,
        static_cast<float>(rgb & 0xFF) / 255.0f, alpha};
}

constexpr ThemePalette LightPalette{
    Rgb(0xF6F4EF, 1.00f),
    Rgb(0x202020, 1.00f),
    Rgb(0x5F6B76, 1.00f),
    Rgb(0x9FC5E8, 0.75f),
    Rgb(0x9FC5E8, 0.75f),
    Rgb(0x1B1B1B, 1.00f),
};

constexpr ThemePalette CoolSlatePalette{
    Rgb(0x1E2228, 1.00f),
    Rgb(0xE8EBEF, 1.00f),
    Rgb(0xAAB4C3, 1.00f),
    Rgb(0x6EA8FE, 0.32f),
    Rgb(0x5B8DEF, 0.40f),
    Rgb(0xC2D6FF, 1.00f),
};

constexpr ThemePalette DarkBluePalette{
    Rgb(0x0D1B2A, 1.00f),
    Rgb(0xE6EDF3, 1.00f),
    Rgb(0x8FB7E2, 1.00f),
    Rgb(0x2F81F7, 0.38f),
    Rgb(0x1F6FEB, 0.45f),
    Rgb(0x9EC1FF, 1.00f),
};

constexpr ThemePalette BlackPalette{
    Rgb(0x111111, 1.00f),
    Rgb(0xF3F3F3, 1.00f),
    Rgb(0xB9B9B9, 1.00f),
    Rgb(0x5A5A5A, 0.55f),
    Rgb(0x707070, 0.48f),
    Rgb(0xF3F3F3, 1.00f),
};

} // namespace

ThemePalette PaletteFor(Theme theme)
{
    switch (theme) {
    case Theme::CoolSlate:
        return CoolSlatePalette;
    case Theme::DarkBlue:
        return DarkBluePalette;
    case Theme::Black:
        return BlackPalette;
    case Theme::Light:
        break;
    }
    return LightPalette;
}

} // namespace tlm
