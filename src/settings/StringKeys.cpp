#include "settings/StringKeys.h"

#include <algorithm>
#include <array>

namespace tlm {

namespace {

constexpr std::array<std::string_view, 136> Keys{
    // About dialog
    "about.homepage_label",
    "about.license_heading",
    "about.version_label",
    // Window title
    "app.title",
    // Questions
    "confirm.save_changes",
    // Dialogs
    "dialog.about.title",
    "dialog.common.cancel",
    "dialog.common.close",
    "dialog.common.ok",
    "dialog.font.bold",
    "dialog.font.family",
    "dialog.font.italic",
    "dialog.font.size",
    "dialog.font.title",
    "dialog.goto.prompt",
    "dialog.goto.title",
    "dialog.open.title",
    "dialog.search.next",
    "dialog.search.previous",
    "dialog.search.query",
    "dialog.search.title",
    "dialog.search.type",
    "dialog.search.type.hex",
    "dialog.search.type.text",
    "dialog.struct_definition.title",
    // Error messages
    "error.font_not_monospace",
    "error.goto_invalid",
    "error.open_failed",
    "error.open_new_instance_failed",
    "error.save_failed",
    "error.search_invalid_hex",
    "error.search_invalid_text",
    "error.search_not_found",
    "error.search_too_long",
    // Data inspector
    "inspector.data.column.name",
    "inspector.data.column.value",
    "inspector.data.row.binary",
    "inspector.data.row.current_encoding_char",
    "inspector.data.row.uint16_be",
    "inspector.data.row.uint16_le",
    "inspector.data.row.uint32_be",
    "inspector.data.row.uint32_le",
    "inspector.data.row.uint64_be",
    "inspector.data.row.uint64_le",
    "inspector.data.row.uint8_dec",
    "inspector.data.row.utf16be",
    "inspector.data.row.utf16le",
    "inspector.data.row.utf8",
    "inspector.data.title",
    "inspector.data.value.unavailable",
    // Menus
    "menu.edit",
    "menu.edit.readonly",
    "menu.file",
    "menu.file.close",
    "menu.file.exit",
    "menu.file.more_recent",
    "menu.file.open",
    "menu.file.save",
    "menu.help",
    "menu.help.about",
    "menu.settings",
    "menu.settings.analysis",
    "menu.settings.analysis.data_inspector",
    "menu.settings.analysis.struct_view",
    "menu.settings.font",
    "menu.view",
    "menu.view.encoding",
    "menu.view.encoding.ascii",
    "menu.view.encoding.big5",
    "menu.view.encoding.chinese",
    "menu.view.encoding.euckr",
    "menu.view.encoding.favorite",
    "menu.view.encoding.favorite.add_current",
    "menu.view.encoding.favorite.clear",
    "menu.view.encoding.favorite.remove_current",
    "menu.view.encoding.gbk",
    "menu.view.encoding.indic",
    "menu.view.encoding.iscii_devanagari",
    "menu.view.encoding.japanese",
    "menu.view.encoding.korean",
    "menu.view.encoding.shiftjis",
    "menu.view.encoding.thai",
    "menu.view.encoding.tis620",
    "menu.view.encoding.utf16be",
    "menu.view.encoding.utf16le",
    "menu.view.encoding.utf8",
    "menu.view.encoding.vietnamese",
    "menu.view.encoding.windows1258",
    "menu.view.encoding.windows949",
    "menu.view.find",
    "menu.view.goto",
    "menu.view.language",
    "menu.view.language.system",
    "menu.view.theme",
    "menu.view.theme.black",
    "menu.view.theme.coolslate",
    "menu.view.theme.darkblue",
    "menu.view.theme.light",
    "menu.view.zoom",
    "menu.view.zoom.in",
    "menu.view.zoom.out",
    "menu.view.zoom.reset",
    // Status bar
    "status.encoding",
    "status.mode",
    "status.mode.insert",
    "status.mode.overwrite",
    "status.modified",
    "status.no_file",
    "status.offset",
    "status.readonly",
    "status.readonly_blocked",
    "status.saving",
    "status.searching",
    "status.zoom",
    // Struct view
    "structview.close.button",
    "structview.column.name",
    "structview.column.offset",
    "structview.column.size",
    "structview.column.type",
    "structview.column.value",
    "structview.empty.message",
    "structview.error.prefix",
    "structview.header.definition",
    "structview.info.button",
    "structview.open.button",
    "structview.reload.button",
    "structview.title",
    "structview.valueformat.bytearray",
    "structview.valueformat.bytearray.ascii",
    "structview.valueformat.bytearray.hex",
    "structview.valueformat.endian",
    "structview.valueformat.endian.big",
    "structview.valueformat.endian.little",
    "structview.valueformat.numericbase",
    "structview.valueformat.numericbase.dec",
    "structview.valueformat.numericbase.hex",
};

} // namespace

std::span<const std::string_view> AllStringKeys()
{
    return Keys;
}

bool IsStringKey(std::string_view key)
{
    return std::find(Keys.begin(), Keys.end(), key) != Keys.end();
}

} // namespace tlm
