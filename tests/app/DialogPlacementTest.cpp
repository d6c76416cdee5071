#include "app/DialogPlacement.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

TEST(DialogPlacementTest, ADialogIsCentredOnItsOwner)
{
    EXPECT_EQ(CentreOnOwner(ScreenRect{100, 50, 900, 650}, 360, 132), (DialogRect{320, 284, 360, 132}));
}

TEST(DialogPlacementTest, ADialogLargerThanItsOwnerSitsAtTheOwnersTopLeft)
{
    EXPECT_EQ(CentreOnOwner(ScreenRect{100, 50, 400, 150}, 620, 320), (DialogRect{100, 50, 620, 320}));
}

} // namespace
} // namespace tlm
