#include "AppWindowFixture.h"

#include <gtest/gtest.h>

namespace tlm::test {
namespace {

using AppWindowDialogsTest = AppWindowFixture;

TEST_F(AppWindowDialogsTest, TheFontDialogOffersTheFixedPitchFamiliesAndTheCurrentFont)
{
    AppSettings stored;
    stored.fontFamily = u"Courier New";
    stored.fontSize = 12.4f;
    stored.fontBold = true;
    ASSERT_TRUE(StartWith(stored));
    fontFaces = {{u"Consolas", false}, {u"Arial", true}, {u"courier new", false}, {u"Courier New", false}};
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsFont)));
    ASSERT_EQ(openedFontDialogs.size(), 1u);
    const FontDialog& dialog = openedFontDialogs[0];
    EXPECT_EQ(dialog.families, (std::vector<std::u16string>{u"Consolas", u"courier new"}));
    EXPECT_EQ(dialog.family, u"Courier New");
    EXPECT_NEAR(dialog.size, 12.4f, 0.01f);
    EXPECT_TRUE(dialog.bold);
    EXPECT_FALSE(dialog.italic);
    EXPECT_EQ(dialog.title, Tr("dialog.font.title"));
    EXPECT_EQ(dialog.okLabel, Tr("dialog.common.ok"));
    EXPECT_EQ(dialog.cancelLabel, Tr("dialog.common.cancel"));
}

TEST_F(AppWindowDialogsTest, NoFixedPitchFamilyShowsTheErrorAndNoDialog)
{
    ASSERT_TRUE(Start());
    fontFaces = {{u"Arial", true}};
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsFont)));
    EXPECT_FALSE(Called("runFontDialog"));
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, Tr("error.font_not_monospace"));
    EXPECT_EQ(boxes[0].caption, AppTitle());
    EXPECT_EQ(boxes[0].kind, MessageBoxKind::Stop);
}

TEST_F(AppWindowDialogsTest, AnAcceptedFontReachesTheViewAndTheSettings)
{
    ASSERT_TRUE(Start());
    const float rowBefore = app.View().Metrics().rowHeight;
    fontScript = [](FontDialog& dialog) { dialog.Accept(1, u"20", true, true); };
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsFont)));
    EXPECT_EQ(app.View().Font().family, u"Courier New");
    EXPECT_TRUE(app.View().Font().bold);
    EXPECT_TRUE(app.View().Font().italic);
    EXPECT_GT(app.View().Metrics().rowHeight, rowBefore);
    const AppSettings stored = StoredSettings();
    EXPECT_EQ(stored.fontFamily, u"Courier New");
    EXPECT_EQ(stored.fontSize, 20.0f);
    EXPECT_TRUE(stored.fontBold);
    EXPECT_TRUE(stored.fontItalic);
}

TEST_F(AppWindowDialogsTest, ACancelledFontDialogChangesNothing)
{
    ASSERT_TRUE(Start());
    const std::string before = ReadFileText(SettingsFile());
    fontScript = [](FontDialog& dialog) { dialog.Cancel(); };
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsFont)));
    EXPECT_EQ(app.View().Font().family, u"Consolas");
    EXPECT_EQ(ReadFileText(SettingsFile()), before);
}

TEST_F(AppWindowDialogsTest, AFamilyThatVanishedSinceTheSettingsWereWrittenStillOpensTheDialog)
{
    AppSettings stored;
    stored.fontFamily = u"Gone Mono";
    ASSERT_TRUE(StartWith(stored));
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsFont)));
    ASSERT_EQ(openedFontDialogs.size(), 1u);
    EXPECT_EQ(InitialFamilyIndex(openedFontDialogs[0].families, openedFontDialogs[0].family), 0u);
}

TEST_F(AppWindowDialogsTest, TheAboutDialogShowsTheLocalisedTexts)
{
    ASSERT_TRUE(Start());
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::HelpAbout)));
    ASSERT_EQ(openedAboutDialogs.size(), 1u);
    const AboutDialog& dialog = openedAboutDialogs[0];
    EXPECT_EQ(dialog.title, Tr("dialog.about.title"));
    EXPECT_EQ(dialog.versionLine, Tr("about.version_label") + u" v2.00");
    EXPECT_EQ(dialog.homepageLabel, Tr("about.homepage_label"));
    EXPECT_EQ(dialog.licenseHeading, Tr("about.license_heading"));
    EXPECT_EQ(dialog.closeLabel, Tr("dialog.common.close"));
}

} // namespace
} // namespace tlm::test
