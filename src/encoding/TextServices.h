#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tlm {

// Text services of the code pages the program uses (874, 932, 936, 949, 950, 1258, 51949, 57002, 65001),
// served from the program's own tables so a file looks the same on every machine. Their results follow
// the Windows conversion and classification services that the rest of the program was written against.

// Decodes bytes of `codePage`. With `strict`, input that is invalid in the page fails the whole call;
// without it, invalid input decodes to the page's default character. Empty input gives empty text.
// ISCII (57002) has a single mode: a byte without a character fails the call whatever `strict` says.
std::optional<std::u16string> MultiByteToUtf16(std::uint32_t codePage, std::span<const std::uint8_t> bytes, bool strict);

struct MultiByteText {
    std::vector<std::uint8_t> bytes;
    bool usedDefaultChar = false; // a character had no exact form and the default byte stands for it
};

// Encodes text into `codePage`. With `exactOnly`, a character whose bytes would not decode back to it
// (a one-way "best fit") is written as the default byte and reported through usedDefaultChar.
// Nothing when the page is unknown or the text is empty.
std::optional<MultiByteText> Utf16ToMultiByte(std::uint32_t codePage, std::u16string_view text, bool exactOnly);

// Character classes of one UTF-16 unit. A surrogate has no class.
bool IsControl(char16_t unit);   // a control or format character
bool IsCombining(char16_t unit); // a non-spacing mark or a diacritic

// Whether the bytes look like UTF-16 text (little-endian units): the ASCII, statistics and controls tests.
bool LooksLikeUtf16Text(std::span<const std::uint8_t> bytes);

// Lead byte of a two-byte Shift_JIS (code page 932) character.
bool IsShiftJisLeadByte(std::uint8_t byte);

} // namespace tlm
