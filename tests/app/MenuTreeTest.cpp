#include "app/MenuTree.h"

#include "app/CommandId.h"
#include "encoding/EncodingCatalogue.h"
#include "encoding/EncodingFavorites.h"
#include "settings/Localizer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace tlm {
namespace {

std::u16string KeyAsLabel(std::string_view key)
{
    return std::u16string(key.begin(), key.end());
}

std::string Narrow(const std::u16string& text)
{
    std::string narrow;
    for (char16_t c : text)
        narrow += c < 0x80 ? static_cast<char>(c) : '?';
    return narrow;
}

// A state whose labels are the keys themselves and where every command is enabled.
MenuBarState PlainState()
{
    MenuBarState state;
    state.translate = KeyAsLabel;
    state.isCommandEnabled = [](std::uint32_t) { return true; };
    state.languageSetting = u"system";
    state.resolvedLanguage = u"en-US";
    return state;
}

// One line a child: the number of a command, "-" for a separator, "[label]" for a popup.
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
        case MenuItem::Kind::Popup: {
            // Appended piece by piece, which keeps GCC's overlap warning quiet.
            std::string title = "[";
            title += Narrow(item.label);
            title += ']';
            shape.push_back(std::move(title));
            break;
        }
        }
    }
    return shape;
}

const MenuItem& PopupIn(const MenuItem& menu, std::string_view key)
{
    for (const MenuItem& item : menu.children) {
        if (item.kind == MenuItem::Kind::Popup && item.label == KeyAsLabel(key))
            return item;
    }
    ADD_FAILURE() << "no popup " << key;
    static const MenuItem none;
    return none;
}

const MenuItem* FindCommand(const MenuItem& menu, std::uint32_t id)
{
    for (const MenuItem& item : menu.children) {
        if (item.kind == MenuItem::Kind::Command && item.id == id)
            return &item;
        if (item.kind == MenuItem::Kind::Popup) {
            if (const MenuItem* found = FindCommand(item, id))
                return found;
        }
    }
    return nullptr;
}

const MenuItem& Command(const MenuItem& bar, std::uint32_t id)
{
    const MenuItem* item = FindCommand(bar, id);
    if (item == nullptr) {
        ADD_FAILURE() << "no command " << id;
        static const MenuItem none;
        return none;
    }
    return *item;
}

const MenuItem& Command(const MenuItem& bar, CommandId id)
{
    return Command(bar, ToNumber(id));
}

const MenuItem& FileMenu(const MenuItem& bar) { return PopupIn(bar, "menu.file"); }
const MenuItem& SettingsMenu(const MenuItem& bar) { return PopupIn(bar, "menu.settings"); }
const MenuItem& EncodingMenu(const MenuItem& bar) { return PopupIn(SettingsMenu(bar), "menu.view.encoding"); }
const MenuItem& LanguageMenu(const MenuItem& bar) { return PopupIn(SettingsMenu(bar), "menu.view.language"); }

std::vector<std::u16string> Paths(std::size_t count)
{
    std::vector<std::u16string> paths;
    for (std::size_t i = 0; i < count; ++i)
        paths.push_back(u"C:\\data\\file" + KeyAsLabel(std::to_string(i)) + u".bin");
    return paths;
}

std::set<std::uint32_t> CheckedIds(const MenuItem& menu)
{
    std::set<std::uint32_t> checked;
    for (const MenuItem& item : menu.children) {
        if (item.kind == MenuItem::Kind::Command && item.checked)
            checked.insert(item.id);
        if (item.kind == MenuItem::Kind::Popup)
            checked.merge(CheckedIds(item));
    }
    return checked;
}

// Language items checked anywhere in the bar, found by number since labels may be translated.
std::set<std::uint32_t> CheckedLanguageIds(const MenuItem& bar)
{
    std::set<std::uint32_t> checked = CheckedIds(bar);
    std::erase_if(checked, [](std::uint32_t id) { return !LanguageCommands.Contains(id); });
    return checked;
}

Localizer EnglishStrings(std::u16string setting)
{
    Localizer localizer(std::filesystem::path(TOLMO_SOURCE_DIR).u16string(),
                        [] { return std::vector<std::u16string>{u"en-US"}; });
    localizer.SetLanguage(setting);
    return localizer;
}

// The menu state as the application gives it, with labels from a real localizer.
MenuBarState LocalizedState(Localizer& localizer, std::u16string setting, std::u16string resolved)
{
    MenuBarState state = PlainState();
    state.translate = [&localizer](std::string_view key) { return localizer.Tr(key); };
    state.languageSetting = std::move(setting);
    state.resolvedLanguage = std::move(resolved);
    return state;
}

using Lines = std::vector<std::string>;

TEST(MenuTree, TheBarHoldsFileEditViewSettingsHelpInOrder)
{
    EXPECT_EQ(Shape(BuildMenuBar(PlainState())),
              (Lines{"[menu.file]", "[menu.edit]", "[menu.view]", "[menu.settings]", "[menu.help]"}));
}

TEST(MenuTree, WithNoRecentFilesTheFileMenuShowsOpenSaveCloseSeparatorExit)
{
    EXPECT_EQ(Shape(FileMenu(BuildMenuBar(PlainState()))), (Lines{"1001", "1002", "1003", "-", "1032"}));
}

TEST(MenuTree, RecentFilesStandBetweenTwoSeparators)
{
    MenuBarState state = PlainState();
    state.recentFiles = Paths(2);
    EXPECT_EQ(Shape(FileMenu(BuildMenuBar(state))), (Lines{"1001", "1002", "1003", "-", "4000", "4001", "-", "1032"}));
}

TEST(MenuTree, RecentFileItemsReadTheirNumberABlankAndTheFullPath)
{
    MenuBarState state = PlainState();
    state.recentFiles = {u"C:\\one.bin", u"D:\\deep\\dir\\two words.dat"};
    const MenuItem bar = BuildMenuBar(state);
    EXPECT_EQ(Command(bar, 4000).label, u"1 C:\\one.bin");
    EXPECT_EQ(Command(bar, 4001).label, u"2 D:\\deep\\dir\\two words.dat");
}

TEST(MenuTree, WithEightRecentFilesThereIsNoMoreRecentPopup)
{
    MenuBarState state = PlainState();
    state.recentFiles = Paths(8);
    EXPECT_EQ(Shape(FileMenu(BuildMenuBar(state))),
              (Lines{"1001", "1002", "1003", "-", "4000", "4001", "4002", "4003", "4004", "4005", "4006", "4007", "-",
                     "1032"}));
}

TEST(MenuTree, WithNineRecentFilesTheMoreRecentPopupHoldsItemNineAlone)
{
    MenuBarState state = PlainState();
    state.recentFiles = Paths(9);
    const MenuItem bar = BuildMenuBar(state);
    const MenuItem& file = FileMenu(bar);
    EXPECT_EQ(Shape(file), (Lines{"1001", "1002", "1003", "-", "4000", "4001", "4002", "4003", "4004", "4005", "4006",
                                  "4007", "[menu.file.more_recent]", "-", "1032"}));
    const MenuItem& more = PopupIn(file, "menu.file.more_recent");
    EXPECT_EQ(Shape(more), (Lines{"4008"}));
    EXPECT_EQ(more.children[0].label, u"9 " + state.recentFiles[8]);
}

TEST(MenuTree, WithSixteenRecentFilesTheMoreRecentPopupHoldsNineToSixteen)
{
    MenuBarState state = PlainState();
    state.recentFiles = Paths(16);
    const MenuItem bar = BuildMenuBar(state);
    const MenuItem& more = PopupIn(FileMenu(bar), "menu.file.more_recent");
    EXPECT_EQ(Shape(more), (Lines{"4008", "4009", "4010", "4011", "4012", "4013", "4014", "4015"}));
    EXPECT_EQ(more.children[7].label, u"16 " + state.recentFiles[15]);
}

TEST(MenuTree, RecentFilesBeyondTheCommandRangeAreLeftOut)
{
    MenuBarState state = PlainState();
    state.recentFiles = Paths(20);
    const MenuItem bar = BuildMenuBar(state);
    const MenuItem& more = PopupIn(FileMenu(bar), "menu.file.more_recent");
    EXPECT_EQ(Shape(more), (Lines{"4008", "4009", "4010", "4011", "4012", "4013", "4014", "4015"}));
}

TEST(MenuTree, RecentFileItemsFollowTheEnableRule)
{
    MenuBarState state = PlainState();
    state.recentFiles = Paths(3);
    state.isCommandEnabled = [](std::uint32_t id) { return id != 4001; };
    const MenuItem bar = BuildMenuBar(state);
    EXPECT_TRUE(Command(bar, 4000).enabled);
    EXPECT_FALSE(Command(bar, 4001).enabled);
    EXPECT_TRUE(Command(bar, 4002).enabled);
}

TEST(MenuTree, TheEditMenuHoldsReadOnlyCheckedWhileEditingIsOff)
{
    MenuBarState state = PlainState();
    state.editingEnabled = false;
    const MenuItem readOnlyBar = BuildMenuBar(state);
    EXPECT_EQ(Shape(PopupIn(readOnlyBar, "menu.edit")), (Lines{"1004"}));
    EXPECT_TRUE(Command(readOnlyBar, CommandId::EditReadOnly).checked);

    state.editingEnabled = true;
    EXPECT_FALSE(Command(BuildMenuBar(state), CommandId::EditReadOnly).checked);
}

TEST(MenuTree, TheViewMenuHoldsFindGoToASeparatorAndTheZoomPopup)
{
    const MenuItem bar = BuildMenuBar(PlainState());
    const MenuItem& view = PopupIn(bar, "menu.view");
    EXPECT_EQ(Shape(view), (Lines{"1005", "1006", "-", "[menu.view.zoom]"}));
    EXPECT_EQ(Shape(PopupIn(view, "menu.view.zoom")), (Lines{"1026", "1027", "-", "1028"}));
}

TEST(MenuTree, TheSettingsMenuHoldsFourPopupsASeparatorAndFont)
{
    EXPECT_EQ(Shape(SettingsMenu(BuildMenuBar(PlainState()))),
              (Lines{"[menu.view.encoding]", "[menu.view.theme]", "[menu.view.language]", "[menu.settings.analysis]",
                     "-", "1029"}));
}

TEST(MenuTree, TheHelpMenuHoldsAbout)
{
    EXPECT_EQ(Shape(PopupIn(BuildMenuBar(PlainState()), "menu.help")), (Lines{"1033"}));
}

TEST(MenuTree, WithoutFavoritesTheEncodingMenuStartsWithASeparator)
{
    EXPECT_EQ(Shape(EncodingMenu(BuildMenuBar(PlainState()))),
              (Lines{"-", "[menu.view.encoding.favorite]", "-", "1007", "1008", "1009", "1010", "-",
                     "[menu.view.encoding.japanese]", "[menu.view.encoding.korean]", "[menu.view.encoding.chinese]",
                     "[menu.view.encoding.thai]", "[menu.view.encoding.vietnamese]", "[menu.view.encoding.indic]"}));
}

TEST(MenuTree, TheEncodingGroupPopupsHoldTheirEncodings)
{
    const MenuItem bar = BuildMenuBar(PlainState());
    const MenuItem& encoding = EncodingMenu(bar);
    EXPECT_EQ(Shape(PopupIn(encoding, "menu.view.encoding.japanese")), (Lines{"1011"}));
    EXPECT_EQ(Shape(PopupIn(encoding, "menu.view.encoding.korean")), (Lines{"1012", "1013"}));
    EXPECT_EQ(Shape(PopupIn(encoding, "menu.view.encoding.chinese")), (Lines{"1014", "1015"}));
    EXPECT_EQ(Shape(PopupIn(encoding, "menu.view.encoding.thai")), (Lines{"1016"}));
    EXPECT_EQ(Shape(PopupIn(encoding, "menu.view.encoding.vietnamese")), (Lines{"1017"}));
    EXPECT_EQ(Shape(PopupIn(encoding, "menu.view.encoding.indic")), (Lines{"1018"}));
}

TEST(MenuTree, EncodingItemsAreLabelledByTheirMenuKeys)
{
    const MenuItem bar = BuildMenuBar(PlainState());
    EXPECT_EQ(Command(bar, CommandId::ViewEncodingUtf16Be).label, u"menu.view.encoding.utf16be");
    EXPECT_EQ(Command(bar, CommandId::ViewEncodingKoreanEucKr).label, u"menu.view.encoding.euckr");
    EXPECT_EQ(Command(bar, CommandId::ViewEncodingIndicIsciiDevanagari).label, u"menu.view.encoding.iscii_devanagari");
}

TEST(MenuTree, TheFavoritesPopupHoldsAddRemoveAndClear)
{
    EXPECT_EQ(Shape(PopupIn(EncodingMenu(BuildMenuBar(PlainState())), "menu.view.encoding.favorite")),
              (Lines{"1019", "1020", "1021"}));
}

TEST(MenuTree, FavoritesLeadTheEncodingMenuWithStarLabelsAndTheirNumbers)
{
    MenuBarState state = PlainState();
    state.favorites = {TextEncoding::ShiftJis, TextEncoding::Utf8};
    const MenuItem bar = BuildMenuBar(state);
    const MenuItem& encoding = EncodingMenu(bar);
    const Lines shape = Shape(encoding);
    EXPECT_EQ(Lines(shape.begin(), shape.begin() + 4), (Lines{"1200", "1201", "-", "[menu.view.encoding.favorite]"}));
    EXPECT_EQ(encoding.children[0].label, u"★ Shift_JIS");
    EXPECT_EQ(encoding.children[1].label, u"★ " + EncodingDisplayName(TextEncoding::Utf8));
}

TEST(MenuTree, OnlyThreeFavoritesAreShown)
{
    MenuBarState state = PlainState();
    state.favorites = {TextEncoding::Big5, TextEncoding::Gbk, TextEncoding::Tis620, TextEncoding::EucKr};
    const Lines shape = Shape(EncodingMenu(BuildMenuBar(state)));
    EXPECT_EQ(Lines(shape.begin(), shape.begin() + 4), (Lines{"1200", "1201", "1202", "-"}));
}

TEST(MenuTree, AFavoriteIsCheckedWhenItIsTheCurrentEncoding)
{
    MenuBarState state = PlainState();
    state.favorites = {TextEncoding::Gbk, TextEncoding::Big5};
    state.currentEncoding = TextEncoding::Big5;
    const MenuItem bar = BuildMenuBar(state);
    EXPECT_FALSE(Command(bar, 1200).checked);
    EXPECT_TRUE(Command(bar, 1201).checked);
    EXPECT_TRUE(Command(bar, CommandId::ViewEncodingChineseBig5).checked);
}

TEST(MenuTree, FavoriteItemsFollowTheEnableRule)
{
    MenuBarState state = PlainState();
    state.favorites = {TextEncoding::Gbk, TextEncoding::Big5};
    state.isCommandEnabled = [](std::uint32_t id) { return id != 1201; };
    const MenuItem bar = BuildMenuBar(state);
    EXPECT_TRUE(Command(bar, 1200).enabled);
    EXPECT_FALSE(Command(bar, 1201).enabled);
}

TEST(MenuTree, WithThreeFavoritesAddFavoriteIsGreyedForEveryEncoding)
{
    const std::vector<TextEncoding> favorites{TextEncoding::Utf8, TextEncoding::ShiftJis, TextEncoding::Big5};
    for (std::uint32_t value = 0; value < TextEncodingCount; ++value) {
        MenuBarState state = PlainState();
        state.favorites = favorites;
        state.currentEncoding = static_cast<TextEncoding>(value);
        state.isCommandEnabled = [&state](std::uint32_t id) {
            if (id == ToNumber(CommandId::ViewEncodingAddFavorite))
                return CanAddFavorite(state.favorites, state.currentEncoding, state.busy);
            return true;
        };
        EXPECT_FALSE(Command(BuildMenuBar(state), CommandId::ViewEncodingAddFavorite).enabled) << value;
    }
}

TEST(MenuTree, ExactlyTheCurrentEncodingIsChecked)
{
    for (std::uint32_t value = 0; value < TextEncodingCount; ++value) {
        MenuBarState state = PlainState();
        state.currentEncoding = static_cast<TextEncoding>(value);
        const std::set<std::uint32_t> checked = CheckedIds(EncodingMenu(BuildMenuBar(state)));
        EXPECT_EQ(checked, (std::set<std::uint32_t>{1007 + value}));
    }
}

TEST(MenuTree, TheThemeMenuChecksTheCurrentTheme)
{
    for (std::uint32_t value = 0; value < 4; ++value) {
        MenuBarState state = PlainState();
        state.theme = static_cast<Theme>(value);
        const MenuItem bar = BuildMenuBar(state);
        const MenuItem& theme = PopupIn(SettingsMenu(bar), "menu.view.theme");
        EXPECT_EQ(Shape(theme), (Lines{"1022", "1023", "1024", "1025"}));
        EXPECT_EQ(CheckedIds(theme), (std::set<std::uint32_t>{1022 + value}));
    }
}

TEST(MenuTree, AnUnknownThemeChecksLight)
{
    MenuBarState state = PlainState();
    state.theme = static_cast<Theme>(9);
    EXPECT_EQ(CheckedIds(PopupIn(SettingsMenu(BuildMenuBar(state)), "menu.view.theme")),
              (std::set<std::uint32_t>{1022}));
}

TEST(MenuTree, TheAnalysisMenuChecksTheSwitchesThatAreOn)
{
    MenuBarState state = PlainState();
    const auto analysis = [&state] {
        return CheckedIds(PopupIn(SettingsMenu(BuildMenuBar(state)), "menu.settings.analysis"));
    };
    EXPECT_EQ(Shape(PopupIn(SettingsMenu(BuildMenuBar(state)), "menu.settings.analysis")), (Lines{"1030", "1031"}));
    EXPECT_TRUE(analysis().empty());
    state.inspectorOn = true;
    EXPECT_EQ(analysis(), (std::set<std::uint32_t>{1030}));
    state.inspectorOn = false;
    state.structViewOn = true;
    EXPECT_EQ(analysis(), (std::set<std::uint32_t>{1031}));
}

TEST(MenuTree, TheLanguageMenuHoldsTheSystemItemAndTheFifteenRows)
{
    const MenuItem bar = BuildMenuBar(PlainState());
    const MenuItem& language = LanguageMenu(bar);
    Lines expected;
    for (int id = 1300; id <= 1315; ++id)
        expected.push_back(std::to_string(id));
    EXPECT_EQ(Shape(language), expected);
    EXPECT_EQ(language.children[1].label, u"English");
    EXPECT_EQ(language.children[2].label, u"日本語 (Japanese)");
    EXPECT_EQ(language.children[4].label, u"Deutsch (German)");
    EXPECT_EQ(language.children[15].label, u"繁體中文 (Traditional Chinese)");
}

TEST(MenuTree, WithTheSystemLanguageItsItemCarriesTheResolvedLanguageAndIsChecked)
{
    Localizer localizer = EnglishStrings(u"system");
    const MenuItem bar = BuildMenuBar(LocalizedState(localizer, u"system", u"de-DE"));
    const MenuItem& system = Command(bar, 1300);
    EXPECT_EQ(system.label, localizer.Tr("menu.view.language.system") + u" (Deutsch)");
    EXPECT_EQ(CheckedLanguageIds(bar), (std::set<std::uint32_t>{1300}));
}

TEST(MenuTree, WithGermanChosenTheSystemItemHasNoBracketAndRowFourIsChecked)
{
    Localizer localizer = EnglishStrings(u"de-DE");
    const MenuItem bar = BuildMenuBar(LocalizedState(localizer, u"de-DE", u"de-DE"));
    EXPECT_EQ(Command(bar, 1300).label, localizer.Tr("menu.view.language.system"));
    EXPECT_EQ(Command(bar, 1304).label, u"Deutsch (German)");
    EXPECT_EQ(CheckedLanguageIds(bar), (std::set<std::uint32_t>{1304}));
}

TEST(MenuTree, TheKoreanRowKeepsItsWordingAndTheSystemItemShowsItsNameAlone)
{
    Localizer localizer = EnglishStrings(u"system");
    const MenuItem bar = BuildMenuBar(LocalizedState(localizer, u"system", u"ko-KR"));
    EXPECT_EQ(Command(bar, 1309).label, u"한국어 (Korea)");
    EXPECT_EQ(Command(bar, 1300).label, localizer.Tr("menu.view.language.system") + u" (한국어)");
}

TEST(MenuTree, AnUnknownResolvedCodeStandsAsItIsInTheSystemItem)
{
    MenuBarState state = PlainState();
    state.resolvedLanguage = u"xx-YY";
    EXPECT_EQ(Command(BuildMenuBar(state), 1300).label, u"menu.view.language.system (xx-YY)");
}

TEST(MenuTree, ALanguageRowIsCheckedOnlyWhenItsCodeMatchesExactly)
{
    MenuBarState state = PlainState();
    state.languageSetting = u"de-de";
    EXPECT_TRUE(CheckedIds(LanguageMenu(BuildMenuBar(state))).empty());
}

TEST(MenuTree, LabelsComeFromTheLocalizer)
{
    Localizer localizer = EnglishStrings(u"en-US");
    const MenuItem bar = BuildMenuBar(LocalizedState(localizer, u"en-US", u"en-US"));
    EXPECT_EQ(bar.children[0].label, localizer.Tr("menu.file"));
    EXPECT_EQ(Command(bar, CommandId::FileOpen).label, localizer.Tr("menu.file.open"));
    EXPECT_EQ(Command(bar, CommandId::ViewZoomReset).label, localizer.Tr("menu.view.zoom.reset"));
    EXPECT_NE(Command(bar, CommandId::FileOpen).label, u"menu.file.open");
}

TEST(MenuTree, PlainItemsAreGreyedWhereTheRuleSaysNo)
{
    MenuBarState state = PlainState();
    state.isCommandEnabled = [](std::uint32_t id) { return id != ToNumber(CommandId::FileSave); };
    const MenuItem bar = BuildMenuBar(state);
    EXPECT_FALSE(Command(bar, CommandId::FileSave).enabled);
    EXPECT_TRUE(Command(bar, CommandId::FileOpen).enabled);
}

void ExpectAllGreyed(const MenuItem& menu)
{
    for (const MenuItem& item : menu.children) {
        if (item.kind == MenuItem::Kind::Separator)
            continue;
        EXPECT_FALSE(item.enabled) << Narrow(item.label) << " " << item.id;
        if (item.kind == MenuItem::Kind::Popup)
            ExpectAllGreyed(item);
    }
}

void ExpectNoneGreyed(const MenuItem& menu)
{
    for (const MenuItem& item : menu.children) {
        EXPECT_TRUE(item.enabled) << Narrow(item.label) << " " << item.id;
        if (item.kind == MenuItem::Kind::Popup)
            ExpectNoneGreyed(item);
    }
}

TEST(MenuTree, WhileASaveRunsEveryPlainItemAndEveryPopupTitleIsGreyed)
{
    MenuBarState state = PlainState();
    state.busy = true;
    state.recentFiles = Paths(12);
    state.favorites = {TextEncoding::Utf8};
    // The application's rules all start with "not busy".
    state.isCommandEnabled = [&state](std::uint32_t) { return !state.busy; };
    ExpectAllGreyed(BuildMenuBar(state));
}

TEST(MenuTree, WhenIdleWithEverythingAllowedNothingIsGreyed)
{
    MenuBarState state = PlainState();
    state.recentFiles = Paths(12);
    state.favorites = {TextEncoding::Utf8};
    ExpectNoneGreyed(BuildMenuBar(state));
}

TEST(MenuTree, ABusyFlagAloneGreysThePopupTitlesButLeavesPlainItemsToTheRule)
{
    MenuBarState state = PlainState();
    state.busy = true;
    const MenuItem bar = BuildMenuBar(state);
    EXPECT_FALSE(bar.children[0].enabled);
    EXPECT_TRUE(Command(bar, CommandId::FileOpen).enabled);
}

} // namespace
} // namespace tlm
