#include "app/AboutDialog.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

TEST(AboutDialogTest, AShortCloseLabelKeepsTheButton96Wide)
{
    EXPECT_EQ(AboutCloseButton(30), (DialogRect{412, 406, 96, 28}));
}

TEST(AboutDialogTest, ALongCloseLabelWidensTheButtonLeftward)
{
    const DialogRect button = AboutCloseButton(200);
    EXPECT_EQ(button.width, 236);
    EXPECT_EQ(button.left + button.width, 508);
    EXPECT_EQ(button.left, 272);
}

TEST(AboutDialogTest, TheTextsCarryTheLabelsAndTheVersion)
{
    const AboutDialog dialog = MakeAboutDialog(u"About", u"Version", u"Website:", u"License", u"Close");
    EXPECT_EQ(dialog.productLine, u"Binary Editor Tolmo");
    EXPECT_EQ(dialog.versionLine, u"Version v2.00");
    EXPECT_EQ(dialog.homepageLabel, u"Website:");
    EXPECT_EQ(dialog.licenseHeading, u"License");
    EXPECT_EQ(dialog.closeLabel, u"Close");
    EXPECT_FALSE(dialog.notice.empty());
    EXPECT_FALSE(dialog.homepageAddress.empty());
}

} // namespace
} // namespace tlm
