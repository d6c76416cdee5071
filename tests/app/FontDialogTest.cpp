#include "app/FontDialog.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

using Names = std::vector<std::u16string>;

TEST(FontDialogTest, OnlyNamedHorizontalFixedPitchFamiliesAreOffered)
{
    const Names families = FixedPitchFamilies({{u"Consolas", false}, {u"Arial", true}, {u"", false},
        {u"@MS Gothic", false}, {u"MS Gothic", false}});
    EXPECT_EQ(families, (Names{u"Consolas", u"MS Gothic"}));
}

TEST(FontDialogTest, FamiliesDifferingOnlyInCaseAreOfferedOnce)
{
    const Names families = FixedPitchFamilies({{u"Courier New", false}, {u"COURIER NEW", false}, {u"Consolas", false}});
    EXPECT_EQ(families, (Names{u"Consolas", u"Courier New"}));
}

TEST(FontDialogTest, NoFixedPitchFamilyGivesAnEmptyList)
{
    EXPECT_TRUE(FixedPitchFamilies({{u"Arial", true}, {u"@Gothic", false}}).empty());
}

TEST(FontDialogTest, TwelvePointFourSelectsTwelve)
{
    EXPECT_EQ(FontDialogSizes[InitialSizeIndex(12.4f)], 12);
}

TEST(FontDialogTest, SevenSelectsEightAndOkSetsEight)
{
    const std::size_t index = InitialSizeIndex(7.0f);
    EXPECT_EQ(FontDialogSizes[index], 8);
    FontDialog dialog;
    dialog.families = {u"Consolas"};
    dialog.size = 7.0f;
    ASSERT_TRUE(dialog.Accept(0, std::u16string(u"8"), false, false));
    EXPECT_EQ(dialog.size, 8.0f);
}

TEST(FontDialogTest, ASizeBetweenOfferedOnesSelectsTheFirst)
{
    EXPECT_EQ(InitialSizeIndex(15.0f), 0u);
    EXPECT_EQ(InitialSizeIndex(30.0f), 0u);
}

TEST(FontDialogTest, TheCurrentFamilyIsFoundWithoutRegardToCase)
{
    EXPECT_EQ(InitialFamilyIndex({u"Consolas", u"Courier New"}, u"courier new"), 1u);
}

TEST(FontDialogTest, AVanishedFamilyShowsTheFirst)
{
    EXPECT_EQ(InitialFamilyIndex({u"Consolas", u"Courier New"}, u"Gone Mono"), 0u);
}

TEST(FontDialogTest, OkTakesTheChosenFamilySizeAndStyle)
{
    FontDialog dialog;
    dialog.families = {u"Consolas", u"Courier New"};
    ASSERT_TRUE(dialog.Accept(1, u"16", true, true));
    EXPECT_EQ(dialog.family, u"Courier New");
    EXPECT_EQ(dialog.size, 16.0f);
    EXPECT_TRUE(dialog.bold);
    EXPECT_TRUE(dialog.italic);
    EXPECT_TRUE(dialog.accepted);
    EXPECT_TRUE(dialog.closed);
}

TEST(FontDialogTest, OkWithoutAFamilySelectedDoesNothing)
{
    FontDialog dialog;
    dialog.families = {u"Consolas"};
    EXPECT_FALSE(dialog.Accept(std::nullopt, u"12", false, false));
    EXPECT_FALSE(dialog.accepted);
    EXPECT_FALSE(dialog.closed);
}

TEST(FontDialogTest, CancelClosesWithoutAccepting)
{
    FontDialog dialog;
    dialog.Cancel();
    EXPECT_TRUE(dialog.closed);
    EXPECT_FALSE(dialog.accepted);
}

TEST(FontDialogTest, AtItsFirstSizeTheButtonsStandInTheBottomRightCorner)
{
    const FontDialogLayout layout = LayOutFontDialog(620, 320);
    EXPECT_EQ(layout.familyBox, (DialogRect{102, 12, 506, 240}));
    EXPECT_EQ(layout.okButton, (DialogRect{380, 282, 108, 26}));
    EXPECT_EQ(layout.cancelButton, (DialogRect{500, 282, 108, 26}));
}

TEST(FontDialogTest, AResizedDialogKeepsItsButtonsInTheCornerAndTheFamilyBoxAtLeast260)
{
    const FontDialogLayout layout = LayOutFontDialog(360, 220);
    EXPECT_EQ(layout.okButton, (DialogRect{120, 182, 108, 26}));
    EXPECT_EQ(layout.cancelButton, (DialogRect{240, 182, 108, 26}));
    EXPECT_EQ(layout.familyBox.width, 260);
    const FontDialogLayout wide = LayOutFontDialog(1000, 600);
    EXPECT_EQ(wide.cancelButton, (DialogRect{880, 562, 108, 26}));
    EXPECT_EQ(wide.familyBox.width, 886);
}

} // namespace
} // namespace tlm
