#pragma once

#include <cstdint>

namespace tlm {

// Classes of a UTF-16 unit of the Basic Multilingual Plane, generated from the Unicode character data.
inline constexpr std::uint8_t ControlClass = 1;   // control or format character
inline constexpr std::uint8_t CombiningClass = 2; // non-spacing mark or diacritic

std::uint8_t CharacterClassOf(char16_t unit);

} // namespace tlm
