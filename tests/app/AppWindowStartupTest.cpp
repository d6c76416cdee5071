// The application's start-up and teardown: the order of the steps, what fails it, the settings it
// loads and writes, the file named on the command line, and the workers it starts and stops.
#include "AppWindowFixture.h"

#include "app/StartupPath.h"
#include "settings/SettingsFile.h"

#include <thread>

namespace tlm::test {
namespace {

using AppWindowStartupTest = AppWindowFixture;

std::size_t IndexOf(const std::vector<std::string>& calls, std::string_view name, std::size_t from = 0)
{
    for (std::size_t index = from; index < calls.size(); ++index) {
        if (calls[index] == name) {
            return index;
        }
    }
    return calls.size();
}

std::size_t LastIndexBefore(const std::vector<std::string>& calls, std::string_view name, std::size_t end)
{
    std::size_t found = calls.size();
    for (std::size_t index = 0; index < end && index < calls.size(); ++index) {
        if (calls[index] == name) {
            found = index;
        }
    }
    return found;
}

TEST_F(AppWindowStartupTest, StartUpRunsItsStepsInOrder)
{
    ASSERT_TRUE(Start());
    const std::vector<std::string> steps{"executableFolder", "settingsPath", "initCommonControls",
        "registerHexViewClass", "registerMainClass", "createMainWindow", "createStatusBar", "createHexView",
        "layoutChildren", "colourStatusBar", "setTitle", "setStatusText", "createMainWindow done", "sizeAndCentre",
        "createAccelerators", "showWindow"};
    EXPECT_EQ(CallsAmong(steps), steps);
}

TEST_F(AppWindowStartupTest, TheAnalysisWindowsArePlacedOnceMoreAfterTheMainWindowIsShown)
{
    ASSERT_TRUE(Start());
    const std::vector<std::string> calls = CallsAmong({"showWindow", "placeAnalysisWindows"});
    ASSERT_GE(calls.size(), 2u);
    EXPECT_EQ(calls[calls.size() - 2], "showWindow");
    EXPECT_EQ(calls.back(), "placeAnalysisWindows");
}

TEST_F(AppWindowStartupTest, TheSettingsAreLoadedBeforeAnyClassIsRegistered)
{
    bool writtenBeforeRegistration = false;
    onCall = [&](const std::string& name) {
        if (name == "registerHexViewClass") {
            writtenBeforeRegistration = std::filesystem::exists(std::filesystem::path(SettingsFile()))
                && app.Settings().appVersion == SettingsVersion;
        }
    };
    ASSERT_TRUE(Start());
    EXPECT_TRUE(writtenBeforeRegistration);
}

TEST_F(AppWindowStartupTest, TheMenuStandsBeforeTheChildrenAndFollowsTheAnalysisSwitchesWhenTheyAreLaidOut)
{
    AppSettings stored;
    stored.dataInspectorVisible = false;
    stored.structViewVisible = true;
    std::optional<MenuItem> barWhenLaidOut;
    onCall = [&](const std::string& name) {
        if (name == "layoutChildren" && !barWhenLaidOut && menu) {
            barWhenLaidOut = *menu;
        }
    };
    ASSERT_TRUE(StartWith(stored));
    EXPECT_LT(IndexOf(calls, "installMenu"), IndexOf(calls, "createStatusBar"));
    // The switches are applied before the children are laid out, and the bar then standing shows them.
    ASSERT_TRUE(barWhenLaidOut);
    EXPECT_EQ(*barWhenLaidOut, app.BuildMenu());
}

TEST_F(AppWindowStartupTest, AMenuLikeTheOneStandingIsNotBuiltAgain)
{
    ASSERT_TRUE(Start());
    calls.clear();
    app.RebuildMenu();
    EXPECT_FALSE(Called("installMenu"));
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewThemeBlack)));
    EXPECT_TRUE(Called("installMenu"));
    EXPECT_TRUE(Item(CommandId::ViewThemeBlack).checked);
}

TEST_F(AppWindowStartupTest, TheStoredEncodingThemeAndFontAreGivenToTheView)
{
    AppSettings stored;
    stored.encoding = TextEncoding::ShiftJis;
    stored.theme = Theme::DarkBlue;
    stored.fontFamily = u"Courier New";
    stored.fontSize = 14.0f;
    stored.fontBold = true;
    ASSERT_TRUE(StartWith(stored));
    EXPECT_EQ(app.CurrentEncoding(), TextEncoding::ShiftJis);
    EXPECT_EQ(app.View().Encoding(), TextEncoding::ShiftJis);
    EXPECT_EQ(app.View().GetTheme(), Theme::DarkBlue);
    EXPECT_EQ(app.View().Font().family, u"Courier New");
    EXPECT_TRUE(app.View().Font().bold);
    EXPECT_FALSE(app.View().Font().italic);
    ASSERT_FALSE(statusBarThemes.empty());
    EXPECT_EQ(statusBarThemes.back(), Theme::DarkBlue);
    EXPECT_TRUE(Item(CommandId::ViewEncodingJapaneseShiftJis).checked);
    EXPECT_TRUE(Item(CommandId::ViewThemeDarkBlue).checked);
}

TEST_F(AppWindowStartupTest, TheStoredAnalysisSwitchesOpenTheirWindows)
{
    AppSettings stored;
    stored.dataInspectorVisible = false;
    stored.structViewVisible = true;
    ASSERT_TRUE(StartWith(stored));
    EXPECT_FALSE(inspectorWindow);
    EXPECT_TRUE(structViewWindow);
    EXPECT_FALSE(Item(CommandId::SettingsAnalysisDataInspector).checked);
    EXPECT_TRUE(Item(CommandId::SettingsAnalysisStructView).checked);
}

TEST_F(AppWindowStartupTest, ACommandLineFileOpensDuringCreationBeforeSizingWorkersAndShowing)
{
    const std::u16string path = WriteFile("named.bin", {1, 2, 3});
    const std::u16string fileTitle = AppTitle() + u" - named.bin";
    std::optional<bool> titledDuringCreation;
    std::optional<bool> openAtSizing;
    std::optional<bool> requestWaitingAtSizing;
    std::optional<std::size_t> resultsAtSizing;
    onCall = [&](const std::string& name) {
        if (name == "setTitle" && titles.back() == fileTitle && !titledDuringCreation) {
            titledDuringCreation = Called("createMainWindow") && !Called("createMainWindow done") && !shown;
        }
        if (name == "sizeAndCentre") {
            openAtSizing = app.Document().IsOpen();
            requestWaitingAtSizing = app.Inspector().HasPendingRequest();
            resultsAtSizing = results.PostedCount(AppMessage::InspectorResult);
        }
    };
    ASSERT_TRUE(Start(path));
    EXPECT_EQ(titledDuringCreation, std::optional<bool>(true));
    EXPECT_EQ(openAtSizing, std::optional<bool>(true));
    // The workers have not started yet: the request made for the file waits in its slot.
    EXPECT_EQ(requestWaitingAtSizing, std::optional<bool>(true));
    EXPECT_EQ(resultsAtSizing, std::optional<std::size_t>(0));
    EXPECT_EQ(app.Document().GetPath(), path);
    EXPECT_EQ(LastTitle(), fileTitle);
    EXPECT_TRUE(shown);
}

TEST_F(AppWindowStartupTest, AFailedCommandLineOpenShowsTheStopBoxWhileTheWindowIsStillHidden)
{
    std::optional<bool> shownAtBox;
    std::optional<bool> sizedAtBox;
    onCall = [&](const std::string& name) {
        if (name == "messageBox") {
            shownAtBox = shown;
            sizedAtBox = Called("sizeAndCentre");
        }
    };
    ASSERT_TRUE(Start(folder.File("missing.bin")));
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, Tr("error.open_failed"));
    EXPECT_EQ(boxes[0].caption, AppTitle());
    EXPECT_EQ(boxes[0].kind, MessageBoxKind::Stop);
    EXPECT_EQ(shownAtBox, std::optional<bool>(false));
    EXPECT_EQ(sizedAtBox, std::optional<bool>(false));
    // The program goes on with no file.
    EXPECT_TRUE(shown);
    EXPECT_FALSE(app.Document().IsOpen());
    EXPECT_EQ(LastTitle(), AppTitle());
    EXPECT_EQ(LastStatus(), Tr("status.no_file"));
}

TEST_F(AppWindowStartupTest, AMainClassThatCannotBeRegisteredEndsStartUp)
{
    registerMainClassWorks = false;
    EXPECT_FALSE(Start());
    EXPECT_FALSE(Called("createMainWindow"));
    EXPECT_FALSE(shown);
}

TEST_F(AppWindowStartupTest, AMainWindowThatCannotBeCreatedEndsStartUp)
{
    createMainWindowWorks = false;
    EXPECT_FALSE(Start());
    EXPECT_FALSE(Called("sizeAndCentre"));
    EXPECT_FALSE(Called("createAccelerators"));
    EXPECT_FALSE(shown);
}

TEST_F(AppWindowStartupTest, AnAcceleratorTableThatCannotBeCreatedEndsStartUpWithTheWindowStanding)
{
    createAcceleratorsWorks = false;
    EXPECT_FALSE(Start());
    EXPECT_TRUE(Called("sizeAndCentre"));
    EXPECT_FALSE(shown);
    EXPECT_TRUE(windowStands);
    EXPECT_FALSE(Called("destroyWindow"));
}

TEST_F(AppWindowStartupTest, AHexViewClassThatCannotBeRegisteredDoesNotStopStartUp)
{
    registerHexViewClassWorks = false;
    EXPECT_TRUE(Start());
    EXPECT_TRUE(Called("registerMainClass"));
    EXPECT_TRUE(shown);
}

TEST_F(AppWindowStartupTest, StartedWithNoArgumentShowsTheTitleAloneAndTheNoFileStatus)
{
    const std::vector<std::u16string> arguments{u"tolmo.exe"};
    ASSERT_TRUE(Start(TakeStartupPath(arguments)));
    EXPECT_NE(AppTitle(), u"app.title");
    EXPECT_EQ(LastTitle(), AppTitle());
    EXPECT_EQ(LastStatus(), Tr("status.no_file"));
    EXPECT_EQ(app.StatusText(), Tr("status.no_file"));
    EXPECT_FALSE(app.Document().IsOpen());
    EXPECT_TRUE(boxes.empty());
}

TEST_F(AppWindowStartupTest, StartedWithAnEmptyArgumentBehavesAsWithNone)
{
    const std::vector<std::u16string> arguments{u"tolmo.exe", u""};
    ASSERT_TRUE(Start(TakeStartupPath(arguments)));
    EXPECT_EQ(LastTitle(), AppTitle());
    EXPECT_EQ(LastStatus(), Tr("status.no_file"));
    EXPECT_TRUE(boxes.empty());
    EXPECT_TRUE(app.Settings().recentFiles.empty());
}

TEST_F(AppWindowStartupTest, StartedWithThreeArgumentsTheThirdIsIgnored)
{
    const std::u16string second = WriteFile("second.bin", {1});
    const std::u16string third = WriteFile("third.bin", {2});
    const std::vector<std::u16string> arguments{u"tolmo.exe", second, third};
    ASSERT_TRUE(Start(TakeStartupPath(arguments)));
    EXPECT_EQ(app.Document().GetPath(), second);
    EXPECT_EQ(app.Settings().recentFiles, std::vector<std::u16string>{second});
    EXPECT_TRUE(processes.empty());
    EXPECT_EQ(LastTitle(), AppTitle() + u" - second.bin");
}

TEST_F(AppWindowStartupTest, AWorkAreaFiveHundredPixelsWideGivesAWindowFourHundredWide)
{
    monitorWorkArea = ScreenRect{0, 0, 500, 900};
    ASSERT_TRUE(Start());
    ASSERT_TRUE(placement.has_value());
    EXPECT_EQ(placement->width, 400);
    EXPECT_EQ(placement->left, 50);
}

TEST_F(AppWindowStartupTest, SettingsWithFontSizeZeroOpenWithTwelveAndAreNotRewrittenForThat)
{
    AppSettings stored;
    stored.fontSize = 0.0f;
    ASSERT_TRUE(SaveSettings(stored, SettingsFile()));
    const std::string before = ReadFileText(SettingsFile());
    ASSERT_NE(before.find("\"size\": 0"), std::string::npos);
    ASSERT_TRUE(Start());
    EXPECT_EQ(app.Settings().fontSize, DefaultFontSize);
    EXPECT_EQ(ReadFileText(SettingsFile()), before);
}

TEST_F(AppWindowStartupTest, SettingsWithAnotherVersionAreRewrittenWithTheCurrentOne)
{
    AppSettings stored;
    stored.theme = Theme::Black;
    ASSERT_TRUE(SaveSettings(stored, SettingsFile()));
    const std::string current = ReadFileText(SettingsFile());
    std::string older = current;
    const std::string version(SettingsVersion.begin(), SettingsVersion.end());
    older.replace(older.find(version), version.size(), "v1.50");
    WriteFileText(SettingsFile(), older);
    ASSERT_TRUE(Start());
    EXPECT_EQ(app.Settings().appVersion, SettingsVersion);
    EXPECT_EQ(ReadFileText(SettingsFile()), current);
    EXPECT_EQ(app.Settings().theme, Theme::Black);
}

TEST_F(AppWindowStartupTest, AMissingSettingsFileIsWrittenWithTheDefaultsAtOnce)
{
    std::optional<bool> writtenAtControls;
    onCall = [&](const std::string& name) {
        if (name == "initCommonControls") {
            writtenAtControls = std::filesystem::exists(std::filesystem::path(SettingsFile()));
        }
    };
    ASSERT_TRUE(Start());
    EXPECT_EQ(writtenAtControls, std::optional<bool>(true));
    AppSettings defaults;
    ResetSettings(defaults, SettingsVersion, SystemLanguageSetting);
    EXPECT_EQ(StoredSettings(), defaults);
    EXPECT_EQ(app.Settings(), defaults);
}

TEST_F(AppWindowStartupTest, AnUnreadableSettingsFileIsReplacedByTheDefaults)
{
    WriteFileText(SettingsFile(), "");
    ASSERT_TRUE(Start());
    AppSettings defaults;
    ResetSettings(defaults, SettingsVersion, SystemLanguageSetting);
    EXPECT_EQ(StoredSettings(), defaults);
}

TEST_F(AppWindowStartupTest, TheLanguageFilesAreReadFromTheProgramsFolder)
{
    ASSERT_TRUE(Start());
    EXPECT_EQ(app.Strings().BaseDirectory(), RepositoryRoot());
    Localizer english(RepositoryRoot());
    english.SetLanguage(u"en-US");
    EXPECT_EQ(AppTitle(), english.Tr("app.title"));
    EXPECT_EQ(Tr("status.no_file"), english.Tr("status.no_file"));
}

TEST_F(AppWindowStartupTest, WithoutTheProgramsFolderTheCurrentFolderServesAndNothingIsShown)
{
    executableFolderAnswer.reset();
    currentFolderAnswer = RepositoryRoot();
    ASSERT_TRUE(Start());
    EXPECT_EQ(app.Strings().BaseDirectory(), RepositoryRoot());
    EXPECT_TRUE(boxes.empty());
}

TEST_F(AppWindowStartupTest, WithoutAnyFolderTheBaseIsEmptyAndStartUpGoesOn)
{
    executableFolderAnswer.reset();
    currentFolderAnswer.reset();
    ASSERT_TRUE(Start());
    EXPECT_TRUE(app.Strings().BaseDirectory().empty());
    EXPECT_TRUE(boxes.empty());
    EXPECT_TRUE(shown);
}

TEST_F(AppWindowStartupTest, ASecondStartSucceedsBesideTheFirst)
{
    ASSERT_TRUE(Start());
    AppWindow second;
    second.Strings() = Localizer({}, [this] { return systemLanguages; });
    AppPlatform platform = MakePlatform();
    bool secondShown = false;
    platform.createMainWindow = [&second] {
        second.OnCreate();
        return true;
    };
    platform.createHexView = [&second] {
        second.View().SetHost(HexViewHost{});
        return true;
    };
    platform.showWindow = [&secondShown] { secondShown = true; };
    platform.installMenu = {};
    second.SetPlatform(platform);
    EXPECT_TRUE(second.Create(std::nullopt));
    EXPECT_TRUE(secondShown);
    EXPECT_EQ(CallCount("registerMainClass"), 2u);
}

TEST_F(AppWindowStartupTest, TheWorkersStartAfterTheWindowIsSizedAndBeforeTheAccelerators)
{
    std::optional<bool> waitingAtSizing;
    std::optional<bool> answeredBeforeAccelerators;
    onCall = [&](const std::string& name) {
        if (name == "sizeAndCentre") {
            waitingAtSizing = app.Inspector().HasPendingRequest()
                && results.PostedCount(AppMessage::InspectorResult) == 0;
        }
        if (name == "createAccelerators") {
            answeredBeforeAccelerators = results.WaitForPosted(AppMessage::InspectorResult, 1);
        }
    };
    ASSERT_TRUE(Start());
    EXPECT_EQ(waitingAtSizing, std::optional<bool>(true));
    EXPECT_EQ(answeredBeforeAccelerators, std::optional<bool>(true));
}

TEST_F(AppWindowStartupTest, DestroyStopsTheWorkersAndTearsDownInOrder)
{
    ASSERT_TRUE(Start());
    ASSERT_TRUE(results.WaitForPosted(AppMessage::InspectorResult, 1));
    DeliverResults();
    ClearRecords();
    std::optional<bool> inspectorStoppedFirst;
    onCall = [&](const std::string& name) {
        if (name != "destroyInspectorWindow" || inspectorStoppedFirst) {
            return;
        }
        // A stopped worker never takes a new request from its slot.
        inspectorStoppedFirst = false;
        app.OnAppMessage(AppMessage::ViewChanged, 0, 0);
        const bool submitted = app.Inspector().HasPendingRequest();
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        inspectorStoppedFirst = submitted && app.Inspector().HasPendingRequest();
    };
    app.OnDestroy();
    EXPECT_EQ(inspectorStoppedFirst, std::optional<bool>(true));
    const std::vector<std::string> steps{
        "destroyInspectorWindow", "destroyStructViewWindow", "destroyAccelerators", "removeMenu", "postQuit"};
    EXPECT_EQ(CallsAmong(steps), steps);
    EXPECT_TRUE(quitPosted);
    EXPECT_FALSE(menu.has_value());
}

TEST_F(AppWindowStartupTest, AfterDestructionTheTitleIsNoLongerSet)
{
    ASSERT_TRUE(Start());
    app.OnDestroy();
    ClearRecords();
    app.UpdateTitle();
    EXPECT_FALSE(Called("setTitle"));
}

} // namespace
} // namespace tlm::test
