#pragma once

#include <string_view>

namespace tlm {

// The program's own English texts. The command-line program carries them rather than reading the
// language files: a script that checks its messages must see the same words on every machine, and the
// program must work copied alone onto a server.
inline constexpr std::string_view SearchInvalidTextMessage =
    "The search text is empty or cannot be represented exactly in the current encoding.";
inline constexpr std::string_view SearchInvalidHexMessage =
    "The hexadecimal bytes are not valid. Enter each byte as two hexadecimal digits, for example 4A 6F.";
inline constexpr std::string_view SearchTooLongMessage = "The search pattern must be between 1 and 4,096 bytes long.";
inline constexpr std::string_view SearchNotFoundMessage = "No match was found.";
inline constexpr std::string_view OpenFailedMessage = "The file could not be opened.";
inline constexpr std::string_view SaveFailedMessage = "The file could not be saved.";
inline constexpr std::u16string_view UnavailableText = u"Not available";
inline constexpr std::string_view StructErrorPrefix = "Error";

} // namespace tlm
