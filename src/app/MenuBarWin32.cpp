#include "app/MenuBarWin32.h"

namespace tlm {

namespace {

static_assert(sizeof(wchar_t) == sizeof(char16_t), "Windows wide text is UTF-16");

const wchar_t* WideText(const std::u16string& text)
{
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

bool AppendItems(HMENU menu, const std::vector<MenuItem>& items);

// False only when a handle could not be created; a failed attach just drops the popup.
bool AppendPopup(HMENU menu, const MenuItem& item)
{
    HMENU popup = CreatePopupMenu();
    if (popup == nullptr)
        return false;
    if (!AppendItems(popup, item.children)) {
        DestroyMenu(popup);
        return false;
    }
    const UINT flags = MF_POPUP | MF_STRING | (item.enabled ? MF_ENABLED : MF_GRAYED);
    if (!AppendMenuW(menu, flags, reinterpret_cast<UINT_PTR>(popup), WideText(item.label)))
        DestroyMenu(popup);
    return true;
}

void AppendCommand(HMENU menu, const MenuItem& item)
{
    const UINT flags = MF_STRING | (item.enabled ? MF_ENABLED : MF_GRAYED) | (item.checked ? MF_CHECKED : MF_UNCHECKED);
    AppendMenuW(menu, flags, item.id, WideText(item.label));
}

bool AppendItems(HMENU menu, const std::vector<MenuItem>& items)
{
    for (const MenuItem& item : items) {
        switch (item.kind) {
        case MenuItem::Kind::Separator:
            AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
            break;
        case MenuItem::Kind::Command:
            AppendCommand(menu, item);
            break;
        case MenuItem::Kind::Popup:
            if (!AppendPopup(menu, item))
                return false;
            break;
        }
    }
    return true;
}

} // namespace

HMENU BuildWin32MenuBar(const MenuItem& bar)
{
    HMENU menu = CreateMenu();
    if (menu == nullptr)
        return nullptr;
    // Destroying the bar also destroys every popup already attached to it.
    if (!AppendItems(menu, bar.children)) {
        DestroyMenu(menu);
        return nullptr;
    }
    return menu;
}

} // namespace tlm
