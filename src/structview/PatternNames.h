#pragma once

#include <string>
#include <string_view>

namespace tlm {

// The form in which every name and keyword of a pattern is compared: trimmed of blanks, tabs, CR and
// LF, lower-cased, and with each run of white space turned into one blank. The language is thus
// case-insensitive throughout.
std::u16string NormalizeTypeName(std::u16string_view text);

// Whether values of a type read as signed, from its normalised name: unsigned for names beginning
// with "uint" or "unsigned" and for float, double and void; signed for everything else, structs and
// typedef names included.
bool IsSignedTypeName(std::u16string_view normalizedName);

} // namespace tlm
