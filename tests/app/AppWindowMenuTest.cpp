// The menu bar as the application installs it: its shape, the recent files, the languages, the
// favourites, and the labels taken from the language files.
#include "AppWindowFixture.h"

#include "encoding/EncodingFavorites.h"

namespace tlm::test {
namespace {

using AppWindowMenuTest = AppWindowFixture;

// One entry a child: the number of a command, "-" for a separator, "popup" for a popup.
std::vector<std::string> Shape(const MenuItem& menu)
{
    std::vector<std::string> shape;
    for (const MenuItem& item : menu.children) {
        switch (item.kind) {
        case MenuItem::Kind::Command:
            shape.push_back(std::to_string(item.id));
            break;
        case MenuItem::Kind::Separator:
            shape.push_back("-");
            break;
        case MenuItem::Kind::Popup:
            shape.push_back("popup");
            break;
        }
    }
    return shape;
}

std::vector<std::u16string> RecentPaths(std::size_t count)
{
    std::vector<std::u16string> paths;
    for (std::size_t index = 0; index < count; ++index) {
        paths.push_back(u"recent-" + std::u16string(1, static_cast<char16_t>(u'a' + index)) + u".bin");
    }
    return paths;
}

std::vector<std::string> RecentIds(std::uint32_t first, std::uint32_t end)
{
    std::vector<std::string> ids;
    for (std::uint32_t index = first; index < end; ++index) {
        ids.push_back(std::to_string(4000 + index));
    }
    return ids;
}

std::vector<std::string> Joined(std::vector<std::vector<std::string>> parts)
{
    std::vector<std::string> joined;
    for (const auto& part : parts) {
        joined.insert(joined.end(), part.begin(), part.end());
    }
    return joined;
}

TEST_F(AppWindowMenuTest, TheBarHoldsFileEditViewSettingsAndHelpInTheLoadedLanguage)
{
    ASSERT_TRUE(Start());
    ASSERT_EQ(Bar().children.size(), 5u);
    const char* keys[] = {"menu.file", "menu.edit", "menu.view", "menu.settings", "menu.help"};
    for (std::size_t index = 0; index < 5; ++index) {
        EXPECT_EQ(Bar().children[index].kind, MenuItem::Kind::Popup);
        EXPECT_EQ(Bar().children[index].label, Tr(keys[index]));
        EXPECT_TRUE(Bar().children[index].enabled);
    }
    Localizer english(RepositoryRoot());
    english.SetLanguage(u"en-US");
    EXPECT_EQ(Bar().children[0].label, english.Tr("menu.file"));
    EXPECT_NE(Bar().children[0].label, u"menu.file");
}

TEST_F(AppWindowMenuTest, WithNoRecentFilesTheFileMenuIsOpenSaveCloseSeparatorExit)
{
    ASSERT_TRUE(Start());
    EXPECT_EQ(Shape(TopMenu("menu.file")), (std::vector<std::string>{"1001", "1002", "1003", "-", "1032"}));
}

TEST_F(AppWindowMenuTest, WithEightRecentFilesThereIsNoMoreRecentPopup)
{
    AppSettings stored;
    stored.recentFiles = RecentPaths(8);
    ASSERT_TRUE(StartWith(stored));
    EXPECT_EQ(Shape(TopMenu("menu.file")),
        Joined({{"1001", "1002", "1003", "-"}, RecentIds(0, 8), {"-", "1032"}}));
}

TEST_F(AppWindowMenuTest, WithNineRecentFilesTheMoreRecentPopupHoldsTheNinthAlone)
{
    AppSettings stored;
    stored.recentFiles = RecentPaths(9);
    ASSERT_TRUE(StartWith(stored));
    const MenuItem& file = TopMenu("menu.file");
    EXPECT_EQ(Shape(file), Joined({{"1001", "1002", "1003", "-"}, RecentIds(0, 8), {"popup", "-", "1032"}}));
    const MenuItem& more = PopupIn(file, "menu.file.more_recent");
    EXPECT_EQ(Shape(more), RecentIds(8, 9));
    ASSERT_EQ(more.children.size(), 1u);
    EXPECT_EQ(more.children[0].label, u"9 " + stored.recentFiles[8]);
}

TEST_F(AppWindowMenuTest, WithSixteenRecentFilesTheFileMenuShowsEightAndThePopupTheRest)
{
    AppSettings stored;
    stored.recentFiles = RecentPaths(16);
    ASSERT_TRUE(StartWith(stored));
    const MenuItem& more = PopupIn(TopMenu("menu.file"), "menu.file.more_recent");
    EXPECT_EQ(Shape(more), RecentIds(8, 16));
}

TEST_F(AppWindowMenuTest, ARecentItemReadsItsNumberABlankAndTheFullPath)
{
    ASSERT_TRUE(Start());
    const std::u16string path = WriteFile("shown.bin", {1});
    OpenFile(path);
    EXPECT_EQ(Item(4000).label, u"1 " + path);
    EXPECT_TRUE(Item(4000).enabled);
}

TEST_F(AppWindowMenuTest, TheEditMenuHoldsTheReadOnlyItemCheckedWhileEditingIsOff)
{
    ASSERT_TRUE(Start());
    EXPECT_EQ(Shape(TopMenu("menu.edit")), std::vector<std::string>{"1004"});
    EXPECT_TRUE(Item(CommandId::EditReadOnly).checked);
}

TEST_F(AppWindowMenuTest, TheViewMenuHoldsFindGoToAndTheZoomPopup)
{
    ASSERT_TRUE(Start());
    const MenuItem& view = TopMenu("menu.view");
    EXPECT_EQ(Shape(view), (std::vector<std::string>{"1005", "1006", "-", "popup"}));
    EXPECT_EQ(Shape(PopupIn(view, "menu.view.zoom")), (std::vector<std::string>{"1026", "1027", "-", "1028"}));
}

TEST_F(AppWindowMenuTest, TheSettingsMenuHoldsEncodingThemeLanguageAnalysisAndFont)
{
    ASSERT_TRUE(Start());
    const MenuItem& settings = TopMenu("menu.settings");
    EXPECT_EQ(Shape(settings), (std::vector<std::string>{"popup", "popup", "popup", "popup", "-", "1029"}));
    EXPECT_EQ(settings.children[0].label, Tr("menu.view.encoding"));
    EXPECT_EQ(settings.children[1].label, Tr("menu.view.theme"));
    EXPECT_EQ(settings.children[2].label, Tr("menu.view.language"));
    EXPECT_EQ(settings.children[3].label, Tr("menu.settings.analysis"));
    EXPECT_EQ(Shape(PopupIn(settings, "menu.settings.analysis")), (std::vector<std::string>{"1030", "1031"}));
    EXPECT_EQ(Shape(PopupIn(settings, "menu.view.theme")), (std::vector<std::string>{"1022", "1023", "1024", "1025"}));
}

TEST_F(AppWindowMenuTest, TheFavouritesComeFirstInTheEncodingMenuWithAStar)
{
    AppSettings stored;
    stored.encodingFavorites = {TextEncoding::Big5, TextEncoding::Utf8};
    stored.encoding = TextEncoding::Utf8;
    ASSERT_TRUE(StartWith(stored));
    const MenuItem& encoding = PopupIn(TopMenu("menu.settings"), "menu.view.encoding");
    EXPECT_EQ(Shape(encoding), (std::vector<std::string>{"1200", "1201", "-", "popup", "-", "1007", "1008", "1009",
                                   "1010", "-", "popup", "popup", "popup", "popup", "popup", "popup"}));
    EXPECT_EQ(encoding.children[0].label, FavoriteMenuLabel(TextEncoding::Big5));
    EXPECT_FALSE(encoding.children[0].checked);
    EXPECT_TRUE(encoding.children[1].checked);
    EXPECT_EQ(Shape(PopupIn(encoding, "menu.view.encoding.favorite")),
        (std::vector<std::string>{"1019", "1020", "1021"}));
    EXPECT_EQ(Shape(PopupIn(encoding, "menu.view.encoding.korean")), (std::vector<std::string>{"1012", "1013"}));
}

TEST_F(AppWindowMenuTest, WithTheLanguageSetToSystemItsItemCarriesTheResolvedLanguageAndIsChecked)
{
    systemLanguages = {u"fr-FR"};
    ASSERT_TRUE(Start());
    ASSERT_EQ(app.Settings().language, SystemLanguageSetting);
    EXPECT_EQ(Item(1300).label, Tr("menu.view.language.system") + u" (Français)");
    EXPECT_TRUE(Item(1300).checked);
    for (std::uint32_t row = 1; row <= 15; ++row) {
        EXPECT_FALSE(Item(1300 + row).checked) << row;
    }
}

TEST_F(AppWindowMenuTest, WithTheLanguageSetToGermanTheSystemItemCarriesNoBracketsAndRowFourIsChecked)
{
    AppSettings stored;
    stored.language = u"de-DE";
    ASSERT_TRUE(StartWith(stored));
    Localizer german(RepositoryRoot());
    german.SetLanguage(u"de-DE");
    EXPECT_EQ(Item(1300).label, german.Tr("menu.view.language.system"));
    EXPECT_FALSE(Item(1300).checked);
    EXPECT_EQ(Item(1304).label, u"Deutsch (German)");
    EXPECT_TRUE(Item(1304).checked);
    for (std::uint32_t row = 1; row <= 15; ++row) {
        EXPECT_EQ(Item(1300 + row).checked, row == 4) << row;
    }
}

TEST_F(AppWindowMenuTest, TheKoreanLabelKeepsItsWordingAndTheSystemItemShowsItsShortName)
{
    systemLanguages = {u"ko-KR"};
    ASSERT_TRUE(Start());
    EXPECT_EQ(Item(1309).label, u"한국어 (Korea)");
    EXPECT_EQ(Item(1300).label, Tr("menu.view.language.system") + u" (한국어)");
    Localizer korean(RepositoryRoot());
    korean.SetLanguage(u"ko-KR");
    EXPECT_EQ(Tr("menu.file"), korean.Tr("menu.file"));
}

TEST_F(AppWindowMenuTest, TheLanguageItemsAreTheFifteenRowsInOrder)
{
    ASSERT_TRUE(Start());
    const MenuItem& languages = PopupIn(TopMenu("menu.settings"), "menu.view.language");
    ASSERT_EQ(languages.children.size(), 16u);
    const std::u16string labels[] = {u"English", u"日本語 (Japanese)", u"Беларуская (Belarusian)", u"Deutsch (German)",
        u"Español (Spanish)", u"Français (French)", u"Magyar (Hungarian)", u"Italiano (Italian)", u"한국어 (Korea)",
        u"Polski (Polish)", u"Português (Portuguese)", u"Русский (Russian)", u"Українська (Ukrainian)",
        u"简体中文 (Simplified Chinese)", u"繁體中文 (Traditional Chinese)"};
    for (std::uint32_t row = 1; row <= 15; ++row) {
        EXPECT_EQ(languages.children[row].id, 1300 + row);
        EXPECT_EQ(languages.children[row].label, labels[row - 1]) << row;
    }
}

TEST_F(AppWindowMenuTest, TheMenuFollowsAFileOpeningAndClosing)
{
    ASSERT_TRUE(Start());
    EXPECT_FALSE(Item(CommandId::FileSave).enabled);
    OpenFile(WriteFile("menu.bin", {1}));
    EXPECT_TRUE(Item(CommandId::FileSave).enabled);
    EXPECT_TRUE(Item(CommandId::FileClose).enabled);
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::FileClose)));
    EXPECT_TRUE(Called("installMenu"));
    EXPECT_FALSE(Item(CommandId::FileSave).enabled);
    EXPECT_FALSE(Item(CommandId::FileClose).enabled);
}

TEST_F(AppWindowMenuTest, TheThemeItemIsCheckedByTheViewsTheme)
{
    ASSERT_TRUE(Start());
    EXPECT_TRUE(Item(CommandId::ViewThemeCoolSlate).checked);
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewThemeLight)));
    EXPECT_TRUE(Item(CommandId::ViewThemeLight).checked);
    EXPECT_FALSE(Item(CommandId::ViewThemeCoolSlate).checked);
}

} // namespace
} // namespace tlm::test
