// The command table as the application fills it, its enable rules, and what each action does to the
// view, the stored settings, the menu and the status bar.
#include "AppWindowFixture.h"

#include "encoding/EncodingCatalogue.h"
#include "encoding/EncodingFavorites.h"
#include "settings/SettingsReader.h"

namespace tlm::test {
namespace {

using AppWindowCommandsTest = AppWindowFixture;

std::u16string Numbered(std::u16string_view prefix, std::size_t index)
{
    std::u16string name(prefix);
    for (char c : std::to_string(index)) {
        name += static_cast<char16_t>(c);
    }
    return name;
}

std::uint32_t EncodingCommand(TextEncoding encoding)
{
    return ToNumber(CommandId::ViewEncodingAscii) + static_cast<std::uint32_t>(encoding);
}

std::uint32_t ThemeCommand(Theme theme)
{
    return ToNumber(CommandId::ViewThemeLight) + static_cast<std::uint32_t>(theme);
}

bool Contains(const std::u16string& text, const std::u16string& part)
{
    return text.find(part) != std::u16string::npos;
}

std::vector<std::u16string> Paths(std::size_t count)
{
    std::vector<std::u16string> paths;
    for (std::size_t index = 0; index < count; ++index) {
        paths.push_back(Numbered(u"recent-", index) + u".bin");
    }
    return paths;
}

TEST_F(AppWindowCommandsTest, EveryFixedCommandIsRegisteredWithItsName)
{
    ASSERT_TRUE(Start());
    for (std::uint32_t id = ToNumber(FirstFixedCommand); id <= ToNumber(LastFixedCommand); ++id) {
        const Command* command = app.Commands().Find(id);
        ASSERT_NE(command, nullptr) << id;
        EXPECT_EQ(command->name, CommandName(static_cast<CommandId>(id))) << id;
        EXPECT_FALSE(command->name.empty()) << id;
        EXPECT_TRUE(command->execute) << id;
    }
}

TEST_F(AppWindowCommandsTest, TheRecentFileRangeIsRegisteredWithItsNames)
{
    ASSERT_TRUE(Start());
    for (std::size_t index = 0; index < 16; ++index) {
        const Command* command = app.Commands().Find(4000 + static_cast<std::uint32_t>(index));
        ASSERT_NE(command, nullptr) << index;
        EXPECT_EQ(command->name, Numbered(u"FileRecent", index));
    }
}

TEST_F(AppWindowCommandsTest, TheFavouriteRangeIsRegisteredWithItsNames)
{
    ASSERT_TRUE(Start());
    for (std::size_t index = 0; index < 3; ++index) {
        const Command* command = app.Commands().Find(1200 + static_cast<std::uint32_t>(index));
        ASSERT_NE(command, nullptr) << index;
        EXPECT_EQ(command->name, Numbered(u"EncodingFavorite", index));
    }
}

TEST_F(AppWindowCommandsTest, TheLanguageRangeIsRegisteredWithItsNames)
{
    ASSERT_TRUE(Start());
    const Command* system = app.Commands().Find(1300);
    ASSERT_NE(system, nullptr);
    EXPECT_EQ(system->name, u"LanguageSystem");
    for (std::size_t row = 1; row <= 15; ++row) {
        const Command* command = app.Commands().Find(1300 + static_cast<std::uint32_t>(row));
        ASSERT_NE(command, nullptr) << row;
        EXPECT_EQ(command->name, Numbered(u"Language", row));
    }
}

TEST_F(AppWindowCommandsTest, TheTableHoldsTheFixedAndDynamicCommandsAlone)
{
    ASSERT_TRUE(Start());
    EXPECT_EQ(app.Commands().Size(), 33u + 16u + 3u + 16u);
    for (std::uint32_t outside : {0u, 1000u, 1034u, 1203u, 1316u, 2001u, 3999u, 4016u}) {
        EXPECT_EQ(app.Commands().Find(outside), nullptr) << outside;
    }
}

TEST_F(AppWindowCommandsTest, AnUnknownNumberIsNeitherEnabledNorExecuted)
{
    ASSERT_TRUE(Start());
    ClearRecords();
    for (std::uint32_t outside : {0u, 1034u, 1203u, 1316u, 4016u}) {
        EXPECT_FALSE(app.IsCommandEnabled(outside)) << outside;
        EXPECT_FALSE(app.ExecuteCommand(outside)) << outside;
    }
    EXPECT_TRUE(calls.empty());
}

TEST_F(AppWindowCommandsTest, SaveAndCloseAreEnabledOnlyWhileAFileIsOpen)
{
    ASSERT_TRUE(Start());
    EXPECT_FALSE(app.IsCommandEnabled(ToNumber(CommandId::FileSave)));
    EXPECT_FALSE(app.IsCommandEnabled(ToNumber(CommandId::FileClose)));
    OpenFile(WriteFile("open.bin", {1, 2}));
    EXPECT_TRUE(app.IsCommandEnabled(ToNumber(CommandId::FileSave)));
    EXPECT_TRUE(app.IsCommandEnabled(ToNumber(CommandId::FileClose)));
}

TEST_F(AppWindowCommandsTest, ADisabledCommandIsNotExecuted)
{
    ASSERT_TRUE(Start());
    ClearRecords();
    EXPECT_FALSE(app.ExecuteCommand(ToNumber(CommandId::FileSave)));
    EXPECT_FALSE(app.ExecuteCommand(ToNumber(CommandId::FileClose)));
    EXPECT_FALSE(app.ExecuteCommand(4000));
    EXPECT_FALSE(app.ExecuteCommand(1200));
    EXPECT_TRUE(calls.empty());
}

TEST_F(AppWindowCommandsTest, WithoutAFileTheOtherFixedCommandsAreEnabled)
{
    ASSERT_TRUE(Start());
    for (std::uint32_t id = ToNumber(FirstFixedCommand); id <= ToNumber(LastFixedCommand); ++id) {
        const auto command = static_cast<CommandId>(id);
        if (command == CommandId::FileSave || command == CommandId::FileClose
            || command == CommandId::ViewEncodingRemoveFavorite || command == CommandId::ViewEncodingClearFavorites) {
            continue;
        }
        EXPECT_TRUE(app.IsCommandEnabled(id)) << id;
    }
}

TEST_F(AppWindowCommandsTest, RecentCommandsAreEnabledBelowTheNumberOfRecentFiles)
{
    AppSettings stored;
    stored.recentFiles = Paths(3);
    ASSERT_TRUE(StartWith(stored));
    for (std::uint32_t index = 0; index < 16; ++index) {
        EXPECT_EQ(app.IsCommandEnabled(4000 + index), index < 3) << index;
    }
}

TEST_F(AppWindowCommandsTest, FavouriteCommandsAreEnabledBelowTheNumberOfFavourites)
{
    AppSettings stored;
    stored.encodingFavorites = {TextEncoding::Big5, TextEncoding::Gbk};
    ASSERT_TRUE(StartWith(stored));
    EXPECT_TRUE(app.IsCommandEnabled(1200));
    EXPECT_TRUE(app.IsCommandEnabled(1201));
    EXPECT_FALSE(app.IsCommandEnabled(1202));
}

TEST_F(AppWindowCommandsTest, TheFavouriteItemsFollowTheCurrentEncodingAndTheList)
{
    AppSettings stored;
    stored.encodingFavorites = {TextEncoding::Utf8};
    ASSERT_TRUE(StartWith(stored));
    const auto add = ToNumber(CommandId::ViewEncodingAddFavorite);
    const auto remove = ToNumber(CommandId::ViewEncodingRemoveFavorite);
    const auto clear = ToNumber(CommandId::ViewEncodingClearFavorites);
    EXPECT_TRUE(app.IsCommandEnabled(add));
    EXPECT_FALSE(app.IsCommandEnabled(remove));
    EXPECT_TRUE(app.IsCommandEnabled(clear));
    ASSERT_TRUE(app.ExecuteCommand(EncodingCommand(TextEncoding::Utf8)));
    EXPECT_FALSE(app.IsCommandEnabled(add));
    EXPECT_TRUE(app.IsCommandEnabled(remove));
    EXPECT_TRUE(app.IsCommandEnabled(clear));
}

TEST_F(AppWindowCommandsTest, TheLanguageCommandsAreEnabledWhileIdle)
{
    ASSERT_TRUE(Start());
    for (std::uint32_t index = 0; index <= 15; ++index) {
        EXPECT_TRUE(app.IsCommandEnabled(1300 + index)) << index;
    }
}

TEST_F(AppWindowCommandsTest, AnEncodingCommandSetsTheViewTheStoredEncodingAndTheMenuCheck)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("text.bin", {0x41, 0x42}));
    ASSERT_TRUE(app.ExecuteCommand(EncodingCommand(TextEncoding::Utf8)));
    EXPECT_EQ(app.CurrentEncoding(), TextEncoding::Utf8);
    EXPECT_EQ(app.View().Encoding(), TextEncoding::Utf8);
    EXPECT_EQ(app.Settings().encoding, TextEncoding::Utf8);
    EXPECT_EQ(StoredSettings().encoding, TextEncoding::Utf8);
    EXPECT_TRUE(Called("installMenu"));
    EXPECT_TRUE(Item(CommandId::ViewEncodingUtf8).checked);
    EXPECT_FALSE(Item(CommandId::ViewEncodingAscii).checked);
    EXPECT_TRUE(Contains(LastStatus(), EncodingDisplayName(TextEncoding::Utf8)));
}

TEST_F(AppWindowCommandsTest, EveryEncodingCommandSelectsItsEncoding)
{
    ASSERT_TRUE(Start());
    for (std::uint32_t value = TextEncodingCount; value-- > 0;) {
        const auto encoding = static_cast<TextEncoding>(value);
        ASSERT_TRUE(app.ExecuteCommand(EncodingCommand(encoding))) << value;
        EXPECT_EQ(app.View().Encoding(), encoding) << value;
        EXPECT_EQ(StoredSettings().encoding, encoding) << value;
        EXPECT_TRUE(Item(EncodingCommand(encoding)).checked) << value;
    }
}

TEST_F(AppWindowCommandsTest, AFavouriteCommandSelectsItsStoredEncoding)
{
    AppSettings stored;
    stored.encodingFavorites = {TextEncoding::Big5, TextEncoding::Gbk};
    ASSERT_TRUE(StartWith(stored));
    ASSERT_TRUE(app.ExecuteCommand(1201));
    EXPECT_EQ(app.View().Encoding(), TextEncoding::Gbk);
    EXPECT_EQ(StoredSettings().encoding, TextEncoding::Gbk);
    EXPECT_TRUE(Item(1201).checked);
    EXPECT_FALSE(Item(1200).checked);
    EXPECT_TRUE(Item(CommandId::ViewEncodingChineseGbk).checked);
}

TEST_F(AppWindowCommandsTest, AddFavouriteAppendsTheCurrentEncodingAndSaves)
{
    AppSettings stored;
    stored.encodingFavorites = {TextEncoding::Utf8};
    ASSERT_TRUE(StartWith(stored));
    ASSERT_TRUE(app.ExecuteCommand(EncodingCommand(TextEncoding::Utf16Be)));
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewEncodingAddFavorite)));
    const std::vector<TextEncoding> expected{TextEncoding::Utf8, TextEncoding::Utf16Be};
    EXPECT_EQ(app.Settings().encodingFavorites, expected);
    EXPECT_EQ(StoredSettings().encodingFavorites, expected);
    EXPECT_EQ(Item(1201).label, FavoriteMenuLabel(TextEncoding::Utf16Be));
    EXPECT_TRUE(Item(1201).checked);
    EXPECT_FALSE(app.IsCommandEnabled(ToNumber(CommandId::ViewEncodingAddFavorite)));
}

TEST_F(AppWindowCommandsTest, RemoveFavouriteTakesTheCurrentEncodingOut)
{
    AppSettings stored;
    stored.encodingFavorites = {TextEncoding::Utf8, TextEncoding::EucKr, TextEncoding::Tis620};
    stored.encoding = TextEncoding::EucKr;
    ASSERT_TRUE(StartWith(stored));
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewEncodingRemoveFavorite)));
    const std::vector<TextEncoding> expected{TextEncoding::Utf8, TextEncoding::Tis620};
    EXPECT_EQ(app.Settings().encodingFavorites, expected);
    EXPECT_EQ(StoredSettings().encodingFavorites, expected);
    EXPECT_EQ(FindItem(1202), nullptr);
    EXPECT_FALSE(app.IsCommandEnabled(ToNumber(CommandId::ViewEncodingRemoveFavorite)));
}

TEST_F(AppWindowCommandsTest, ClearFavouritesEmptiesTheList)
{
    AppSettings stored;
    stored.encodingFavorites = {TextEncoding::Utf8, TextEncoding::EucKr};
    ASSERT_TRUE(StartWith(stored));
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewEncodingClearFavorites)));
    EXPECT_TRUE(app.Settings().encodingFavorites.empty());
    EXPECT_TRUE(StoredSettings().encodingFavorites.empty());
    EXPECT_EQ(FindItem(1200), nullptr);
    EXPECT_FALSE(app.IsCommandEnabled(ToNumber(CommandId::ViewEncodingClearFavorites)));
}

TEST_F(AppWindowCommandsTest, WithThreeFavouritesAddIsGreyedForEveryEncoding)
{
    AppSettings stored;
    stored.encodingFavorites = {TextEncoding::Utf8, TextEncoding::EucKr, TextEncoding::Tis620};
    ASSERT_TRUE(StartWith(stored));
    const auto add = ToNumber(CommandId::ViewEncodingAddFavorite);
    for (std::uint32_t value = 0; value < TextEncodingCount; ++value) {
        ASSERT_TRUE(app.ExecuteCommand(EncodingCommand(static_cast<TextEncoding>(value))));
        EXPECT_FALSE(Item(add).enabled) << value;
        EXPECT_FALSE(app.ExecuteCommand(add)) << value;
    }
    EXPECT_EQ(app.Settings().encodingFavorites.size(), 3u);
}

TEST_F(AppWindowCommandsTest, AThemeCommandStoresTheThemeAndRecoloursTheStatusBar)
{
    ASSERT_TRUE(Start());
    ClearRecords();
    ASSERT_TRUE(app.ExecuteCommand(ThemeCommand(Theme::Black)));
    EXPECT_EQ(app.View().GetTheme(), Theme::Black);
    EXPECT_EQ(app.Settings().theme, Theme::Black);
    EXPECT_EQ(StoredSettings().theme, Theme::Black);
    EXPECT_EQ(statusBarThemes, std::vector<Theme>{Theme::Black});
    EXPECT_EQ(analysisThemes, std::vector<Theme>{Theme::Black});
    EXPECT_TRUE(Item(CommandId::ViewThemeBlack).checked);
    EXPECT_FALSE(Item(CommandId::ViewThemeCoolSlate).checked);
    EXPECT_TRUE(Called("setStatusText"));
}

TEST_F(AppWindowCommandsTest, TheZoomCommandsChangeTheViewAndTheStatusButAreNotStored)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("zoom.bin", {1, 2, 3}));
    const std::string storedBefore = ReadFileText(SettingsFile());
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewZoomIn)));
    EXPECT_NEAR(app.View().Metrics().zoom, 1.1f, 0.0001f);
    EXPECT_TRUE(Contains(LastStatus(), Tr("status.zoom") + u": 110%"));
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewZoomIn)));
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewZoomOut)));
    EXPECT_NEAR(app.View().Metrics().zoom, 1.1f, 0.0001f);
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewZoomReset)));
    EXPECT_EQ(app.View().Metrics().zoom, 1.0f);
    EXPECT_TRUE(Contains(LastStatus(), Tr("status.zoom") + u": 100%"));
    EXPECT_EQ(ReadFileText(SettingsFile()), storedBefore);
    ASSERT_TRUE(menu);
    EXPECT_EQ(*menu, app.BuildMenu());
}

TEST_F(AppWindowCommandsTest, ALanguageCommandAppliesAtOnce)
{
    ASSERT_TRUE(Start());
    ClearRecords();
    Localizer german(RepositoryRoot());
    german.SetLanguage(u"de-DE");
    Localizer english(RepositoryRoot());
    english.SetLanguage(u"en-US");
    ASSERT_NE(german.Tr("menu.file"), english.Tr("menu.file"));
    const std::uint64_t requestsBefore = app.Inspector().CurrentGeneration();
    ASSERT_TRUE(app.ExecuteCommand(1304));
    // The inspector's texts are in the language too, so it is asked again.
    EXPECT_GT(app.Inspector().CurrentGeneration(), requestsBefore);
    EXPECT_EQ(app.Settings().language, u"de-DE");
    EXPECT_EQ(StoredSettings().language, u"de-DE");
    ASSERT_FALSE(Bar().children.empty());
    EXPECT_EQ(Bar().children[0].label, german.Tr("menu.file"));
    EXPECT_EQ(Item(CommandId::FileOpen).label, german.Tr("menu.file.open"));
    EXPECT_TRUE(Item(1304).checked);
    EXPECT_EQ(LastTitle(), german.Tr("app.title"));
    EXPECT_EQ(LastStatus(), german.Tr("status.no_file"));
    EXPECT_GT(relabels, 0);
}

TEST_F(AppWindowCommandsTest, TheSystemLanguageCommandStoresSystem)
{
    AppSettings stored;
    stored.language = u"de-DE";
    ASSERT_TRUE(StartWith(stored));
    ASSERT_TRUE(app.ExecuteCommand(1300));
    EXPECT_EQ(app.Settings().language, SystemLanguageSetting);
    EXPECT_EQ(StoredSettings().language, SystemLanguageSetting);
    EXPECT_TRUE(Item(1300).checked);
    EXPECT_FALSE(Item(1304).checked);
}

TEST_F(AppWindowCommandsTest, TheReadOnlyToggleChecksTheEditItemAndChangesTheStatus)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("toggle.bin", {1, 2, 3}));
    EXPECT_TRUE(Item(CommandId::EditReadOnly).checked);
    EXPECT_TRUE(Contains(app.StatusText(), Tr("status.readonly")));
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::EditReadOnly)));
    EXPECT_TRUE(app.View().IsEditingEnabled());
    EXPECT_FALSE(Item(CommandId::EditReadOnly).checked);
    EXPECT_TRUE(Contains(LastStatus(), Tr("status.mode") + u": " + Tr("status.mode.overwrite")));
    EXPECT_FALSE(Contains(LastStatus(), Tr("status.readonly")));
    // The view tells the window too, as for any change of its state.
    EXPECT_EQ(viewPosts, std::vector<AppMessage>{AppMessage::ViewChanged});
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::EditReadOnly)));
    EXPECT_FALSE(app.View().IsEditingEnabled());
    EXPECT_TRUE(Item(CommandId::EditReadOnly).checked);
}

TEST_F(AppWindowCommandsTest, TheReadOnlyStateIsNotStored)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("toggle.bin", {1, 2, 3}));
    const std::string storedBefore = ReadFileText(SettingsFile());
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::EditReadOnly)));
    EXPECT_EQ(ReadFileText(SettingsFile()), storedBefore);
}

TEST_F(AppWindowCommandsTest, ARecentItemReopensItsFile)
{
    ASSERT_TRUE(Start());
    const std::u16string first = WriteFile("first.bin", {1});
    const std::u16string second = WriteFile("second.bin", {2});
    OpenFile(first);
    OpenFile(second);
    ASSERT_EQ(app.Settings().recentFiles, (std::vector<std::u16string>{second, first}));
    ASSERT_TRUE(app.ExecuteCommand(4001));
    EXPECT_EQ(app.Document().GetPath(), first);
    EXPECT_EQ(app.Settings().recentFiles, (std::vector<std::u16string>{first, second}));
    EXPECT_EQ(LastTitle(), AppTitle() + u" - first.bin");
    EXPECT_TRUE(boxes.empty());
}

TEST_F(AppWindowCommandsTest, ARecentItemAsksAboutUnsavedChangesFirst)
{
    ASSERT_TRUE(Start());
    const std::u16string other = WriteFile("other.bin", {9});
    OpenFile(other);
    const std::u16string edited = OpenModified("edited.bin", {1, 2});
    answers = {MessageBoxResult::Cancel};
    ASSERT_TRUE(app.ExecuteCommand(4001));
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].kind, MessageBoxKind::YesNoCancelExclamation);
    EXPECT_EQ(app.Document().GetPath(), edited);
    EXPECT_TRUE(app.Document().IsModified());
}

TEST_F(AppWindowCommandsTest, ExitAsksAboutChangesAndDestroysTheWindow)
{
    ASSERT_TRUE(Start());
    const std::u16string path = OpenModified("exit.bin", {1, 2});
    answers = {MessageBoxResult::No};
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileExit)));
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, Tr("confirm.save_changes"));
    EXPECT_TRUE(Called("destroyWindow"));
    EXPECT_TRUE(quitPosted);
    EXPECT_EQ(ReadFileBytes(path), (std::vector<std::uint8_t>{1, 2}));
}

TEST_F(AppWindowCommandsTest, ExitCancelledKeepsTheWindow)
{
    ASSERT_TRUE(Start());
    OpenModified("exit.bin", {1, 2});
    answers = {MessageBoxResult::Cancel};
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileExit)));
    EXPECT_FALSE(Called("destroyWindow"));
    EXPECT_TRUE(windowStands);
    EXPECT_TRUE(app.Document().IsModified());
}

TEST_F(AppWindowCommandsTest, ExitWithoutChangesAsksNothing)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("clean.bin", {1}));
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileExit)));
    EXPECT_TRUE(boxes.empty());
    EXPECT_TRUE(Called("destroyWindow"));
}

TEST_F(AppWindowCommandsTest, CtrlFWithNoOpenFileDoesNothingVisible)
{
    ASSERT_TRUE(Start());
    ClearRecords();
    EXPECT_TRUE(app.IsCommandEnabled(ToNumber(CommandId::ViewFind)));
    EXPECT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewFind)));
    EXPECT_TRUE(calls.empty());
    EXPECT_TRUE(viewPosts.empty());
}

TEST_F(AppWindowCommandsTest, GoToWithNoOpenFileDoesNothingVisible)
{
    ASSERT_TRUE(Start());
    ClearRecords();
    EXPECT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewGoTo)));
    EXPECT_TRUE(calls.empty());
}

TEST_F(AppWindowCommandsTest, FindAndGoToOpenTheirDialogsWhileAFileIsOpen)
{
    ASSERT_TRUE(Start());
    OpenFile(WriteFile("find.bin", {1, 2, 3}));
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewFind)));
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewGoTo)));
    EXPECT_EQ(CallsAmong({"runSearchDialog", "runPrompt"}), (std::vector<std::string>{"runSearchDialog", "runPrompt"}));
}

TEST_F(AppWindowCommandsTest, FontAndAboutOpenTheirDialogs)
{
    ASSERT_TRUE(Start());
    ClearRecords();
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsFont)));
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::HelpAbout)));
    EXPECT_EQ(CallsAmong({"runFontDialog", "runAboutDialog"}),
        (std::vector<std::string>{"runFontDialog", "runAboutDialog"}));
}

TEST_F(AppWindowCommandsTest, TheInspectorCommandSwitchesItsWindowAndStoresTheSwitch)
{
    ASSERT_TRUE(Start());
    ASSERT_TRUE(inspectorWindow);
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsAnalysisDataInspector)));
    EXPECT_FALSE(inspectorWindow);
    EXPECT_FALSE(app.Settings().dataInspectorVisible);
    EXPECT_FALSE(StoredSettings().dataInspectorVisible);
    EXPECT_FALSE(Item(CommandId::SettingsAnalysisDataInspector).checked);
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsAnalysisDataInspector)));
    EXPECT_TRUE(inspectorWindow);
    EXPECT_TRUE(StoredSettings().dataInspectorVisible);
    EXPECT_TRUE(Item(CommandId::SettingsAnalysisDataInspector).checked);
}

TEST_F(AppWindowCommandsTest, TheStructViewCommandShowsItsWindowWithTheEmptyMessage)
{
    ASSERT_TRUE(Start());
    ASSERT_FALSE(structViewWindow);
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsAnalysisStructView)));
    EXPECT_TRUE(structViewWindow);
    EXPECT_TRUE(StoredSettings().structViewVisible);
    EXPECT_TRUE(Item(CommandId::SettingsAnalysisStructView).checked);
    ASSERT_FALSE(structMessages.empty());
    EXPECT_EQ(structMessages.back(), Tr("structview.empty.message"));
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::SettingsAnalysisStructView)));
    EXPECT_FALSE(structViewWindow);
    EXPECT_FALSE(StoredSettings().structViewVisible);
}

} // namespace
} // namespace tlm::test
