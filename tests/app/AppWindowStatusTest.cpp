// The title and the status text in every state, the status bar's colours, the red read-only warning
// on its 900 ms timer, search progress, and the window messages that only refresh or lay out.
#include "AppWindowFixture.h"

#include "encoding/EncodingCatalogue.h"
#include "hexview/VirtualKey.h"

namespace tlm::test {
namespace {

using AppWindowStatusTest = AppWindowFixture;

constexpr std::uint64_t FourGiB = std::uint64_t{1} << 32;

constexpr StatusBarColors WarningColours{RgbColor{180, 32, 32}, RgbColor{255, 255, 255}};

bool Contains(const std::u16string& text, const std::u16string& part)
{
    return text.find(part) != std::u16string::npos;
}

std::uint32_t ThemeCommand(Theme theme)
{
    return ToNumber(CommandId::ViewThemeLight) + static_cast<std::uint32_t>(theme);
}

class AppWindowWarningTest : public AppWindowFixture {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Start());
        OpenFile(WriteFile("locked.bin", {1, 2, 3}));
        fileStatus = app.StatusText();
    }

    // A hexadecimal digit typed while the file is read-only.
    void PressRefusedKey()
    {
        EXPECT_TRUE(app.View().OnChar(u'5'));
        EXPECT_EQ(viewPosts, std::vector<AppMessage>{AppMessage::ReadOnlyBlocked});
        DeliverViewMessages();
    }

    std::u16string fileStatus;
};

TEST_F(AppWindowStatusTest, WithNoFileTheStatusSaysSoAndTheTitleIsTheProgramsAlone)
{
    ASSERT_TRUE(Start());
    EXPECT_EQ(app.StatusText(), Tr("status.no_file"));
    EXPECT_EQ(LastStatus(), app.StatusText());
    EXPECT_EQ(LastTitle(), AppTitle());
}

TEST_F(AppWindowStatusTest, AnOpenFileShowsOffsetEncodingReadOnlyAndZoom)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("status.bin", {1, 2, 3}));
    EXPECT_EQ(app.StatusText(),
        Tr("status.offset") + u": 0x00000000  " + Tr("status.encoding") + u": " + EncodingDisplayName(TextEncoding::Ascii)
            + u"  " + Tr("status.readonly") + u"  " + Tr("status.zoom") + u": 100%");
}

TEST_F(AppWindowStatusTest, WhileEditingTheStatusShowsTheModeInsteadOfReadOnly)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("mode.bin", {1, 2, 3}));
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::EditReadOnly)));
    DeliverViewMessages();
    const std::u16string overwrite = Tr("status.mode") + u": " + Tr("status.mode.overwrite");
    EXPECT_TRUE(Contains(app.StatusText(), overwrite));
    EXPECT_FALSE(Contains(app.StatusText(), Tr("status.readonly")));
    app.View().OnKeyDown(VirtualKey::Insert, false);
    DeliverViewMessages();
    EXPECT_TRUE(Contains(LastStatus(), Tr("status.mode") + u": " + Tr("status.mode.insert")));
}

TEST_F(AppWindowStatusTest, AChangedFileAddsModifiedBeforeTheZoom)
{
    ASSERT_TRUE(Start());
    OpenModified("changed.bin", {1, 2, 3});
    EXPECT_TRUE(Contains(app.StatusText(),
        Tr("status.mode.overwrite") + u"  " + Tr("status.modified") + u"  " + Tr("status.zoom") + u": 100%"));
}

TEST_F(AppWindowStatusTest, TheCaretOffsetIsShownOnceTheViewsMessageArrives)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("caret.bin", std::vector<std::uint8_t>(64, 7)));
    app.View().OnKeyDown(VirtualKey::Down, false);
    app.View().OnKeyDown(VirtualKey::Right, false);
    EXPECT_TRUE(Contains(app.StatusText(), u": 0x00000000  "));
    DeliverViewMessages();
    EXPECT_TRUE(Contains(app.StatusText(), u": 0x00000011  "));
    EXPECT_EQ(LastStatus(), app.StatusText());
}

TEST_F(AppWindowStatusTest, AFileOfExactlyFourGibibytesShowsASixteenDigitOffset)
{
    ASSERT_TRUE(Start());
    const std::u16string path = folder.File("large.bin");
    ASSERT_TRUE(WriteSparseFile(path, FourGiB));
    OpenFile(path);
    ASSERT_EQ(app.Document().GetSize(), FourGiB);
    EXPECT_EQ(app.StatusText().rfind(Tr("status.offset") + u": 0x0000000000000000  ", 0), 0u);
}

TEST_F(AppWindowStatusTest, AFileOneByteBelowFourGibibytesShowsAnEightDigitOffset)
{
    ASSERT_TRUE(Start());
    const std::u16string path = folder.File("below.bin");
    ASSERT_TRUE(WriteSparseFile(path, FourGiB - 1));
    OpenFile(path);
    EXPECT_EQ(app.StatusText().rfind(Tr("status.offset") + u": 0x00000000  ", 0), 0u);
}

TEST_F(AppWindowStatusTest, TheTitleFollowsTheFileThroughEveryState)
{
    ASSERT_TRUE(Start());
    EXPECT_EQ(LastTitle(), AppTitle());
    OpenModified("titled.bin", {1, 2});
    DeliverViewMessages();
    app.OnAppMessage(AppMessage::ViewChanged, 0, 0);
    EXPECT_EQ(LastTitle(), AppTitle() + u" - titled.bin *");
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileSave)));
    EXPECT_EQ(LastTitle(), AppTitle() + u" - titled.bin");
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileClose)));
    EXPECT_EQ(LastTitle(), AppTitle());
}

TEST_F(AppWindowStatusTest, TheStatusBarColoursFollowTheTheme)
{
    ASSERT_TRUE(Start());
    const std::pair<Theme, StatusBarColors> expected[] = {
        {Theme::Light, StatusBarColors{std::nullopt, RgbColor{32, 32, 32}}},
        {Theme::CoolSlate, StatusBarColors{RgbColor{30, 34, 40}, RgbColor{232, 235, 239}}},
        {Theme::DarkBlue, StatusBarColors{RgbColor{13, 27, 42}, RgbColor{230, 237, 243}}},
        {Theme::Black, StatusBarColors{RgbColor{17, 17, 17}, RgbColor{243, 243, 243}}},
    };
    for (const auto& [theme, colours] : expected) {
        ASSERT_TRUE(app.ExecuteCommand(ThemeCommand(theme)));
        EXPECT_EQ(app.StatusColors(), colours) << static_cast<int>(theme);
        EXPECT_EQ(statusBarThemes.back(), theme);
    }
}

TEST_F(AppWindowWarningTest, ARefusedKeyShowsTheRedWarningForNineHundredMilliseconds)
{
    ClearRecords();
    PressRefusedKey();
    EXPECT_EQ(app.StatusText(), Tr("status.readonly_blocked"));
    EXPECT_EQ(LastStatus(), Tr("status.readonly_blocked"));
    EXPECT_EQ(app.StatusColors(), WarningColours);
    EXPECT_EQ(beeps, 1);
    EXPECT_EQ(CallsAmong({"killTimer 1", "setTimer 1 900", "beep", "setStatusText"}),
        (std::vector<std::string>{"killTimer 1", "setTimer 1 900", "beep", "setStatusText"}));
}

TEST_F(AppWindowWarningTest, TheWarningEndsNineHundredMillisecondsAfterTheKey)
{
    PressRefusedKey();
    AdvanceClock(899);
    EXPECT_EQ(app.StatusText(), Tr("status.readonly_blocked"));
    AdvanceClock(1);
    EXPECT_EQ(app.StatusText(), fileStatus);
    EXPECT_EQ(LastStatus(), fileStatus);
    EXPECT_EQ(app.StatusColors(), StatusBarColorsFor(app.View().GetTheme(), false));
    EXPECT_TRUE(timerDeadlines.empty());
}

TEST_F(AppWindowWarningTest, TwoKeysWithinNineHundredMillisecondsExtendTheWarningAndBeepTwice)
{
    PressRefusedKey();
    AdvanceClock(500);
    PressRefusedKey();
    AdvanceClock(899);
    EXPECT_EQ(app.StatusText(), Tr("status.readonly_blocked"));
    EXPECT_EQ(app.StatusColors(), WarningColours);
    AdvanceClock(1);
    EXPECT_EQ(app.StatusText(), fileStatus);
    EXPECT_EQ(beeps, 2);
    EXPECT_EQ(CallCount("timer 1"), 1u);
}

TEST_F(AppWindowWarningTest, TheWarningIsWhiteOnRedInEveryTheme)
{
    for (Theme theme : {Theme::Light, Theme::CoolSlate, Theme::DarkBlue, Theme::Black}) {
        ASSERT_TRUE(app.ExecuteCommand(ThemeCommand(theme)));
        PressRefusedKey();
        EXPECT_EQ(app.StatusColors(), WarningColours) << static_cast<int>(theme);
        AdvanceClock(900);
    }
}

TEST_F(AppWindowWarningTest, AViewChangeWhileTheWarningShowsKeepsIt)
{
    PressRefusedKey();
    // A change of the view while the warning shows does not hide it.
    app.OnAppMessage(AppMessage::ViewChanged, 0, 0);
    EXPECT_EQ(LastStatus(), Tr("status.readonly_blocked"));
}

TEST_F(AppWindowStatusTest, OnlyTimerOneIsTheWindows)
{
    ASSERT_TRUE(Start());
    EXPECT_FALSE(app.OnTimer(2));
    EXPECT_FALSE(app.OnTimer(0));
}

TEST_F(AppWindowStatusTest, ASearchProgressOfTotalZeroShowsOneHundredPercent)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("search.bin", {1, 2}));
    app.ReportSearchProgress(0, 0);
    EXPECT_EQ(app.StatusText(), Tr("status.searching") + u" 100%");
    EXPECT_EQ(LastStatus(), app.StatusText());
    EXPECT_EQ(CallsAmong({"setStatusText", "updateStatusBarNow", "pumpMessages"}),
        (std::vector<std::string>{"setStatusText", "updateStatusBarNow", "pumpMessages"}));
}

TEST_F(AppWindowStatusTest, SearchProgressIsThrottledLikeASaves)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("search.bin", {1, 2}));
    app.ReportSearchProgress(0, 200);
    app.ReportSearchProgress(20, 200);
    EXPECT_EQ(app.StatusText(), Tr("status.searching") + u" 0%");
    now += 50;
    app.ReportSearchProgress(30, 200);
    EXPECT_EQ(app.StatusText(), Tr("status.searching") + u" 15%");
    EXPECT_EQ(pumps, 2);
}

TEST_F(AppWindowStatusTest, TheEndOfASearchShowsTheFileAgain)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("search.bin", {1, 2}));
    const std::u16string fileStatus = app.StatusText();
    app.ReportSearchProgress(1, 2);
    app.EndSearchProgress();
    EXPECT_EQ(app.StatusText(), fileStatus);
    EXPECT_EQ(LastStatus(), fileStatus);
}

TEST_F(AppWindowStatusTest, AZoomChangedMessageRefreshesTheStatusAlone)
{
    ASSERT_TRUE(Start());
    ClearRecords();
    EXPECT_TRUE(app.OnAppMessage(AppMessage::ZoomChanged, 0, 0));
    EXPECT_EQ(calls, std::vector<std::string>{"setStatusText"});
}

TEST_F(AppWindowStatusTest, AViewChangedMessageUpdatesTitleAndStatus)
{
    ASSERT_TRUE(Start());
    ClearRecords();
    EXPECT_TRUE(app.OnAppMessage(AppMessage::ViewChanged, 0, 0));
    EXPECT_EQ(CallsAmong({"setTitle", "setStatusText"}), (std::vector<std::string>{"setTitle", "setStatusText"}));
}

TEST_F(AppWindowStatusTest, TheMessagesBetweenZoomChangedAndInspectorResultAreNotTheWindows)
{
    ASSERT_TRUE(Start());
    for (std::uint32_t value = 0x8004; value <= 0x8009; ++value) {
        EXPECT_FALSE(app.OnAppMessage(static_cast<AppMessage>(value), 0, 0)) << value;
    }
}

TEST_F(AppWindowStatusTest, ADpiChangeRemeasuresTheViewAndLaysOutAgain)
{
    ASSERT_TRUE(Start());
    ClearRecords();
    app.OnDpiChanged(144);
    EXPECT_EQ(app.View().Metrics().dpi, 144u);
    EXPECT_EQ(CallsAmong({"layoutChildren", "placeAnalysisWindows", "setStatusText"}),
        (std::vector<std::string>{"layoutChildren", "placeAnalysisWindows", "setStatusText"}));
    app.OnDpiChanged(0);
    EXPECT_EQ(app.View().Metrics().dpi, 96u);
}

TEST_F(AppWindowStatusTest, SizingLaysOutTheChildrenAndMovingPlacesTheAnalysisWindows)
{
    ASSERT_TRUE(Start());
    ClearRecords();
    app.OnSize();
    EXPECT_EQ(calls, (std::vector<std::string>{"layoutChildren", "placeAnalysisWindows"}));
    ClearRecords();
    app.OnMove();
    EXPECT_EQ(calls, std::vector<std::string>{"placeAnalysisWindows"});
}

} // namespace
} // namespace tlm::test
