#include "HexViewFixture.h"

#include "hexview/HexView.h"

#include <gtest/gtest.h>

namespace tlm::test {
namespace {

using HexViewTheme = HexViewFixture;

TEST_F(HexViewTheme, StartsWithCoolSlate)
{
    const HexView fresh;
    EXPECT_EQ(fresh.GetTheme(), Theme::CoolSlate);
}

TEST_F(HexViewTheme, ChangeIsStoredAndRedrawn)
{
    Open(Iota(32));
    view.SetTheme(Theme::Black);
    EXPECT_EQ(view.GetTheme(), Theme::Black);
    EXPECT_EQ(host.redraws, 1);
}

TEST_F(HexViewTheme, SameThemeAsksForNoRedraw)
{
    Open(Iota(32));
    view.SetTheme(Theme::CoolSlate);
    EXPECT_EQ(host.redraws, 0);
    view.SetTheme(Theme::DarkBlue);
    host.ClearLog();
    view.SetTheme(Theme::DarkBlue);
    EXPECT_EQ(host.redraws, 0);
}

TEST_F(HexViewTheme, UnknownValueIsKeptAsGiven)
{
    view.SetTheme(static_cast<Theme>(7));
    EXPECT_EQ(view.GetTheme(), static_cast<Theme>(7));
    EXPECT_EQ(host.redraws, 1);
}

TEST_F(HexViewTheme, ChangeTellsTheParentNothing)
{
    Open(Iota(32));
    view.SetTheme(Theme::Light);
    EXPECT_TRUE(host.posted.empty());
    EXPECT_TRUE(host.sent.empty());
}

TEST_F(HexViewTheme, NewDocumentKeepsTheTheme)
{
    view.SetTheme(Theme::DarkBlue);
    Open(Iota(32));
    EXPECT_EQ(view.GetTheme(), Theme::DarkBlue);
}

} // namespace
} // namespace tlm::test
