#include "hexview/ThemePalette.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace tlm::test {
namespace {

// Channels given as bytes, as the palette's colours are written.
void ExpectColor(const RgbaColor& color, std::uint8_t red, std::uint8_t green, std::uint8_t blue, float alpha)
{
    EXPECT_FLOAT_EQ(color.red, red / 255.0f);
    EXPECT_FLOAT_EQ(color.green, green / 255.0f);
    EXPECT_FLOAT_EQ(color.blue, blue / 255.0f);
    EXPECT_FLOAT_EQ(color.alpha, alpha);
}

TEST(ThemePalette, LightColors)
{
    const ThemePalette palette = PaletteFor(Theme::Light);
    ExpectColor(palette.background, 0xF6, 0xF4, 0xEF, 1.00f);
    ExpectColor(palette.text, 0x20, 0x20, 0x20, 1.00f);
    ExpectColor(palette.offsetText, 0x5F, 0x6B, 0x76, 1.00f);
    ExpectColor(palette.accent, 0x9F, 0xC5, 0xE8, 0.75f);
    ExpectColor(palette.selection, 0x9F, 0xC5, 0xE8, 0.75f);
    ExpectColor(palette.caret, 0x1B, 0x1B, 0x1B, 1.00f);
}

TEST(ThemePalette, CoolSlateColors)
{
    const ThemePalette palette = PaletteFor(Theme::CoolSlate);
    ExpectColor(palette.background, 0x1E, 0x22, 0x28, 1.00f);
    ExpectColor(palette.text, 0xE8, 0xEB, 0xEF, 1.00f);
    ExpectColor(palette.offsetText, 0xAA, 0xB4, 0xC3, 1.00f);
    ExpectColor(palette.accent, 0x6E, 0xA8, 0xFE, 0.32f);
    ExpectColor(palette.selection, 0x5B, 0x8D, 0xEF, 0.40f);
    ExpectColor(palette.caret, 0xC2, 0xD6, 0xFF, 1.00f);
}

TEST(ThemePalette, DarkBlueColors)
{
    const ThemePalette palette = PaletteFor(Theme::DarkBlue);
    ExpectColor(palette.background, 0x0D, 0x1B, 0x2A, 1.00f);
    ExpectColor(palette.text, 0xE6, 0xED, 0xF3, 1.00f);
    ExpectColor(palette.offsetText, 0x8F, 0xB7, 0xE2, 1.00f);
    ExpectColor(palette.accent, 0x2F, 0x81, 0xF7, 0.38f);
    ExpectColor(palette.selection, 0x1F, 0x6F, 0xEB, 0.45f);
    ExpectColor(palette.caret, 0x9E, 0xC1, 0xFF, 1.00f);
}

TEST(ThemePalette, BlackColors)
{
    const ThemePalette palette = PaletteFor(Theme::Black);
    ExpectColor(palette.background, 0x11, 0x11, 0x11, 1.00f);
    ExpectColor(palette.text, 0xF3, 0xF3, 0xF3, 1.00f);
    ExpectColor(palette.offsetText, 0xB9, 0xB9, 0xB9, 1.00f);
    ExpectColor(palette.accent, 0x5A, 0x5A, 0x5A, 0.55f);
    ExpectColor(palette.selection, 0x70, 0x70, 0x70, 0.48f);
    ExpectColor(palette.caret, 0xF3, 0xF3, 0xF3, 1.00f);
}

TEST(ThemePalette, UnknownThemeIsLight)
{
    EXPECT_EQ(PaletteFor(static_cast<Theme>(4)), PaletteFor(Theme::Light));
    EXPECT_EQ(PaletteFor(static_cast<Theme>(7)), PaletteFor(Theme::Light));
    EXPECT_EQ(PaletteFor(static_cast<Theme>(0xFFFFFFFFu)), PaletteFor(Theme::Light));
}

} // namespace
} // namespace tlm::test
