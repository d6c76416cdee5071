#include "app/MenuBarWin32.h"

#include "app/CommandId.h"

#include <gtest/gtest.h>

#include <string>

namespace tlm {
namespace {

MenuItem CommandItem(std::uint32_t id, std::u16string label, bool enabled = true, bool checked = false)
{
    MenuItem item;
    item.kind = MenuItem::Kind::Command;
    item.id = id;
    item.label = std::move(label);
    item.enabled = enabled;
    item.checked = checked;
    return item;
}

MenuItem SeparatorItem()
{
    MenuItem item;
    item.kind = MenuItem::Kind::Separator;
    return item;
}

MenuItem PopupItem(std::u16string label, std::vector<MenuItem> children, bool enabled = true)
{
    MenuItem item;
    item.kind = MenuItem::Kind::Popup;
    item.label = std::move(label);
    item.enabled = enabled;
    item.children = std::move(children);
    return item;
}

std::wstring Label(HMENU menu, int position)
{
    wchar_t buffer[256] = {};
    GetMenuStringW(menu, static_cast<UINT>(position), buffer, 256, MF_BYPOSITION);
    return buffer;
}

bool Has(HMENU menu, int position, UINT flag)
{
    return (GetMenuState(menu, static_cast<UINT>(position), MF_BYPOSITION) & flag) != 0;
}

// Destroys the bar at the end of a test, with every popup under it.
struct OwnedMenu {
    HMENU menu;
    ~OwnedMenu()
    {
        if (menu != nullptr)
            DestroyMenu(menu);
    }
};

TEST(MenuBarWin32, TheRootsChildrenBecomeTheBarsPopups)
{
    MenuItem bar = PopupItem(u"", {PopupItem(u"&File", {CommandItem(1001, u"&Open...")}),
                                   PopupItem(u"&Help", {CommandItem(1033, u"&About")})});
    OwnedMenu built{BuildWin32MenuBar(bar)};
    ASSERT_NE(built.menu, nullptr);
    ASSERT_EQ(GetMenuItemCount(built.menu), 2);
    EXPECT_EQ(Label(built.menu, 0), L"&File");
    EXPECT_EQ(Label(built.menu, 1), L"&Help");
    HMENU help = GetSubMenu(built.menu, 1);
    ASSERT_NE(help, nullptr);
    EXPECT_EQ(GetMenuItemID(help, 0), 1033u);
    EXPECT_EQ(Label(help, 0), L"&About");
}

TEST(MenuBarWin32, ItemsKeepTheirGreyingAndCheckMarks)
{
    MenuItem bar = PopupItem(u"", {PopupItem(u"Edit", {CommandItem(1004, u"Read-only", true, true),
                                                       CommandItem(1002, u"Save", false, false), SeparatorItem(),
                                                       CommandItem(1003, u"Close")})});
    OwnedMenu built{BuildWin32MenuBar(bar)};
    ASSERT_NE(built.menu, nullptr);
    HMENU edit = GetSubMenu(built.menu, 0);
    ASSERT_EQ(GetMenuItemCount(edit), 4);
    EXPECT_TRUE(Has(edit, 0, MF_CHECKED));
    EXPECT_FALSE(Has(edit, 0, MF_GRAYED));
    EXPECT_TRUE(Has(edit, 1, MF_GRAYED));
    EXPECT_FALSE(Has(edit, 1, MF_CHECKED));
    EXPECT_TRUE(Has(edit, 2, MF_SEPARATOR));
    EXPECT_FALSE(Has(edit, 3, MF_GRAYED | MF_CHECKED));
}

TEST(MenuBarWin32, PopupTitlesAreGreyedWhenDisabled)
{
    MenuItem bar = PopupItem(u"", {PopupItem(u"File", {CommandItem(1001, u"Open", false)}, false)});
    OwnedMenu built{BuildWin32MenuBar(bar)};
    ASSERT_NE(built.menu, nullptr);
    EXPECT_TRUE(Has(built.menu, 0, MF_GRAYED));
    EXPECT_TRUE(Has(GetSubMenu(built.menu, 0), 0, MF_GRAYED));
}

TEST(MenuBarWin32, NestedPopupsAreBuiltToAnyDepth)
{
    MenuBarState state;
    state.recentFiles.assign(16, u"C:\\x.bin");
    OwnedMenu built{BuildWin32MenuBar(BuildMenuBar(state))};
    ASSERT_NE(built.menu, nullptr);
    ASSERT_EQ(GetMenuItemCount(built.menu), 5);
    HMENU file = GetSubMenu(built.menu, 0);
    // Open, Save, Close, separator, 8 recent files, more, separator, Exit.
    ASSERT_EQ(GetMenuItemCount(file), 15);
    HMENU more = GetSubMenu(file, 12);
    ASSERT_NE(more, nullptr);
    ASSERT_EQ(GetMenuItemCount(more), 8);
    EXPECT_EQ(GetMenuItemID(more, 7), RecentFileCommands.At(15));
    EXPECT_EQ(Label(more, 7), L"16 C:\\x.bin");
}

TEST(MenuBarWin32, UnicodeLabelsArriveIntact)
{
    MenuItem bar = PopupItem(u"", {PopupItem(u"Language", {CommandItem(1309, u"한국어 (Korea)"),
                                                           CommandItem(1200, u"★ Shift_JIS")})});
    OwnedMenu built{BuildWin32MenuBar(bar)};
    ASSERT_NE(built.menu, nullptr);
    HMENU language = GetSubMenu(built.menu, 0);
    EXPECT_EQ(Label(language, 0), L"\uD55C\uAD6D\uC5B4 (Korea)");
    EXPECT_EQ(Label(language, 1), L"\u2605 Shift_JIS");
}

} // namespace
} // namespace tlm
