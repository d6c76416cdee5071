#include "app/CommandId.h"

#include <array>
#include <cstdio>
#include <cstdlib>

namespace tlm {

namespace {

struct FixedCommandText {
    std::u16string_view name;
    std::string_view menuKey;
};

// In number order from 1001, so an id finds its row by subtraction.
constexpr std::array<FixedCommandText, 33> FixedCommands{{
    {u"FileOpen", "menu.file.open"},
    {u"FileSave", "menu.file.save"},
    {u"FileClose", "menu.file.close"},
    {u"EditReadOnly", "menu.edit.readonly"},
    {u"ViewFind", "menu.view.find"},
    {u"ViewGoTo", "menu.view.goto"},
    {u"ViewEncodingAscii", "menu.view.encoding.ascii"},
    {u"ViewEncodingUtf8", "menu.view.encoding.utf8"},
    {u"ViewEncodingUtf16Le", "menu.view.encoding.utf16le"},
    {u"ViewEncodingUtf16Be", "menu.view.encoding.utf16be"},
    {u"ViewEncodingJapaneseShiftJis", "menu.view.encoding.shiftjis"},
    {u"ViewEncodingKoreanWindows949", "menu.view.encoding.windows949"},
    {u"ViewEncodingKoreanEucKr", "menu.view.encoding.euckr"},
    {u"ViewEncodingChineseBig5", "menu.view.encoding.big5"},
    {u"ViewEncodingChineseGbk", "menu.view.encoding.gbk"},
    {u"ViewEncodingThaiTis620", "menu.view.encoding.tis620"},
    {u"ViewEncodingVietnameseWindows1258", "menu.view.encoding.windows1258"},
    {u"ViewEncodingIndicIsciiDevanagari", "menu.view.encoding.iscii_devanagari"},
    {u"ViewEncodingAddFavorite", "menu.view.encoding.favorite.add_current"},
    {u"ViewEncodingRemoveFavorite", "menu.view.encoding.favorite.remove_current"},
    {u"ViewEncodingClearFavorites", "menu.view.encoding.favorite.clear"},
    {u"ViewThemeLight", "menu.view.theme.light"},
    {u"ViewThemeCoolSlate", "menu.view.theme.coolslate"},
    {u"ViewThemeDarkBlue", "menu.view.theme.darkblue"},
    {u"ViewThemeBlack", "menu.view.theme.black"},
    {u"ViewZoomOut", "menu.view.zoom.out"},
    {u"ViewZoomIn", "menu.view.zoom.in"},
    {u"ViewZoomReset", "menu.view.zoom.reset"},
    {u"SettingsFont", "menu.settings.font"},
    {u"SettingsAnalysisDataInspector", "menu.settings.analysis.data_inspector"},
    {u"SettingsAnalysisStructView", "menu.settings.analysis.struct_view"},
    {u"FileExit", "menu.file.exit"},
    {u"HelpAbout", "menu.help.about"},
}};

const FixedCommandText* FixedCommandFor(CommandId id)
{
    if (!IsFixedCommand(ToNumber(id)))
        return nullptr;
    return &FixedCommands[ToNumber(id) - ToNumber(FirstFixedCommand)];
}

std::u16string Decimal(std::size_t value)
{
    std::u16string digits;
    do {
        digits.insert(digits.begin(), static_cast<char16_t>(u'0' + value % 10));
        value /= 10;
    } while (value != 0);
    return digits;
}

// Kept in Release builds too: a number past the range would run some other command.
[[noreturn]] void StopOnRangeOverflow()
{
    std::fputs("Assertion failed: index < count_\n", stderr);
    std::fflush(stderr);
    std::abort();
}

} // namespace

bool IsFixedCommand(std::uint32_t id)
{
    return id >= ToNumber(FirstFixedCommand) && id <= ToNumber(LastFixedCommand);
}

std::u16string_view CommandName(CommandId id)
{
    const FixedCommandText* text = FixedCommandFor(id);
    return text ? text->name : std::u16string_view{};
}

std::string_view CommandMenuKey(CommandId id)
{
    const FixedCommandText* text = FixedCommandFor(id);
    return text ? text->menuKey : std::string_view{};
}

std::uint32_t CommandIdRange::At(std::size_t index) const
{
    if (count_ <= 0 || index >= static_cast<std::size_t>(count_))
        StopOnRangeOverflow();
    return static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(index);
}

bool CommandIdRange::Contains(std::uint32_t id) const
{
    const auto first = static_cast<std::int64_t>(base);
    const auto value = static_cast<std::int64_t>(id);
    return value >= first && value < first + count_;
}

std::size_t CommandIdRange::IndexOf(std::uint32_t id) const
{
    return static_cast<std::size_t>(static_cast<std::int64_t>(id) - base);
}

std::u16string RecentFileCommandName(std::size_t index)
{
    return u"FileRecent" + Decimal(index);
}

std::u16string FavoriteCommandName(std::size_t index)
{
    return u"EncodingFavorite" + Decimal(index);
}

std::u16string LanguageCommandName(std::size_t index)
{
    return index == 0 ? std::u16string(u"LanguageSystem") : u"Language" + Decimal(index);
}

} // namespace tlm
