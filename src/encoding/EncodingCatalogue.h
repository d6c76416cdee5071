#pragma once

#include "encoding/TextEncoding.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tlm {

// The language submenu an encoding belongs to; Common sits directly in the encoding menu.
enum class EncodingGroup : std::uint32_t { Common, Japanese, Korean, Chinese, Thai, Vietnamese, Indic };

// Fixed, unlocalised name shown to the user ("Shift_JIS"); an unknown value shows as "ASCII".
std::u16string EncodingDisplayName(TextEncoding encoding);

// The code of a charset encoding as written to the settings file ("cp932", "euc-kr"); empty for 0 to 3.
std::string EncodingCode(TextEncoding encoding);

// The name of a common encoding as written to the settings file ("ascii", "utf8"); empty for 4 to 11.
std::string EncodingCommonName(TextEncoding encoding);

// The name that stands for an encoding in a favourites list: the common name or the code.
std::string EncodingWrittenName(TextEncoding encoding);

// The language written beside a charset code ("japanese"); empty for the common encodings.
std::string EncodingLanguage(TextEncoding encoding);

EncodingGroup EncodingGroupOf(TextEncoding encoding);

// Localised-label key of the encoding's menu item, such as "menu.view.encoding.shiftjis".
std::string_view EncodingMenuKey(TextEncoding encoding);

// Localised-label key of a group's submenu; empty for Common.
std::string_view EncodingGroupMenuKey(EncodingGroup group);

// Windows code page behind the encoding; 0 where the bytes are decoded directly.
std::uint32_t EncodingCodePage(TextEncoding encoding);

// Keeps only ASCII letters and digits, lower-cased; every other byte is dropped.
std::string NormalizeEncodingName(std::string_view name);

// Looks a name up among every alias regardless of language; anything unknown is Ascii.
TextEncoding EncodingFromName(std::string_view name);

// A code counts only under its own language; nothing when the pair does not belong together.
std::optional<TextEncoding> EncodingFromCharset(std::string_view language, std::string_view code);

} // namespace tlm
