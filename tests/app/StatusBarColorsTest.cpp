#include "app/StatusBarColors.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

TEST(StatusBarColors, LightUsesTheButtonFaceWithDarkText)
{
    EXPECT_EQ(StatusBarColorsFor(Theme::Light, false), (StatusBarColors{std::nullopt, RgbColor{32, 32, 32}}));
}

TEST(StatusBarColors, CoolSlateHasItsColours)
{
    EXPECT_EQ(StatusBarColorsFor(Theme::CoolSlate, false),
              (StatusBarColors{RgbColor{30, 34, 40}, RgbColor{232, 235, 239}}));
}

TEST(StatusBarColors, DarkBlueHasItsColours)
{
    EXPECT_EQ(StatusBarColorsFor(Theme::DarkBlue, false),
              (StatusBarColors{RgbColor{13, 27, 42}, RgbColor{230, 237, 243}}));
}

TEST(StatusBarColors, BlackHasItsColours)
{
    EXPECT_EQ(StatusBarColorsFor(Theme::Black, false),
              (StatusBarColors{RgbColor{17, 17, 17}, RgbColor{243, 243, 243}}));
}

TEST(StatusBarColors, AnUnknownThemeActsAsLight)
{
    EXPECT_EQ(StatusBarColorsFor(static_cast<Theme>(4), false), StatusBarColorsFor(Theme::Light, false));
    EXPECT_EQ(StatusBarColorsFor(static_cast<Theme>(0xFFFFFFFF), false), StatusBarColorsFor(Theme::Light, false));
}

TEST(StatusBarColors, TheWarningIsWhiteOnRedInEveryTheme)
{
    const StatusBarColors warning{RgbColor{180, 32, 32}, RgbColor{255, 255, 255}};
    for (std::uint32_t theme = 0; theme < 6; ++theme)
        EXPECT_EQ(StatusBarColorsFor(static_cast<Theme>(theme), true), warning) << theme;
}

} // namespace
} // namespace tlm
