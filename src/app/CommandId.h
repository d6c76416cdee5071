#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tlm {

// The fixed command numbers. They are what WM_COMMAND carries, so they never change.
enum class CommandId : std::uint32_t {
    FileOpen = 1001,
    FileSave = 1002,
    FileClose = 1003,
    EditReadOnly = 1004,
    ViewFind = 1005,
    ViewGoTo = 1006,
    ViewEncodingAscii = 1007,
    ViewEncodingUtf8 = 1008,
    ViewEncodingUtf16Le = 1009,
    ViewEncodingUtf16Be = 1010,
    ViewEncodingJapaneseShiftJis = 1011,
    ViewEncodingKoreanWindows949 = 1012,
    ViewEncodingKoreanEucKr = 1013,
    ViewEncodingChineseBig5 = 1014,
    ViewEncodingChineseGbk = 1015,
    ViewEncodingThaiTis620 = 1016,
    ViewEncodingVietnameseWindows1258 = 1017,
    ViewEncodingIndicIsciiDevanagari = 1018,
    ViewEncodingAddFavorite = 1019,
    ViewEncodingRemoveFavorite = 1020,
    ViewEncodingClearFavorites = 1021,
    ViewThemeLight = 1022,
    ViewThemeCoolSlate = 1023,
    ViewThemeDarkBlue = 1024,
    ViewThemeBlack = 1025,
    ViewZoomOut = 1026,
    ViewZoomIn = 1027,
    ViewZoomReset = 1028,
    SettingsFont = 1029,
    SettingsAnalysisDataInspector = 1030,
    SettingsAnalysisStructView = 1031,
    FileExit = 1032,
    HelpAbout = 1033,
};

constexpr std::uint32_t ToNumber(CommandId id) { return static_cast<std::uint32_t>(id); }

inline constexpr CommandId FirstFixedCommand = CommandId::FileOpen;
inline constexpr CommandId LastFixedCommand = CommandId::HelpAbout;

// True for 1001 to 1033.
bool IsFixedCommand(std::uint32_t id);

// The fixed command's name ("FileOpen"); empty for a number outside 1001 to 1033.
std::u16string_view CommandName(CommandId id);

// Key of the fixed command's menu label ("menu.file.open"); empty for a number outside 1001 to 1033.
std::string_view CommandMenuKey(CommandId id);

// One range of numbers handed out at run time: recent files, favourites, languages.
struct CommandIdRange {
    int base = 0;
    int count_ = 0;

    // The number of entry `index`. An index not below `count_` is a programming error: it writes
    // "index < count_" to standard error and aborts, in every build type.
    std::uint32_t At(std::size_t index) const;
    bool Contains(std::uint32_t id) const;
    std::size_t IndexOf(std::uint32_t id) const; // only for an id the range contains
};

inline constexpr CommandIdRange RecentFileCommands{4000, 16};
inline constexpr CommandIdRange FavoriteCommands{1200, 3};
inline constexpr CommandIdRange LanguageCommands{1300, 16};

// Names of the dynamic commands: "FileRecent<index>", "EncodingFavorite<index>", and "LanguageSystem"
// for language index 0 but "Language<index>" for the rows 1 to 15.
std::u16string RecentFileCommandName(std::size_t index);
std::u16string FavoriteCommandName(std::size_t index);
std::u16string LanguageCommandName(std::size_t index);

// A user action: its name, when it may run (empty: always) and what it does.
struct Command {
    std::u16string name;
    std::function<bool()> canExecute;
    std::function<void()> execute;
};

} // namespace tlm
