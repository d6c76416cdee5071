#pragma once

namespace tlm {

// Character classes of the pattern language, on single UTF-16 code units. They follow the wide
// character classes of the platform's C library for the scripts in common use, without depending on
// the process locale: ASCII exactly, and beyond it the letters and blanks of the main alphabets.
// Digits are the ASCII digits only, so that every Number token is a plain decimal literal.
bool IsPatternSpace(char16_t c);
bool IsPatternLetter(char16_t c);
bool IsPatternDigit(char16_t c);
bool IsPatternLetterOrDigit(char16_t c);

// Simple one-to-one lower-casing of the cased alphabets (Latin, Greek, Cyrillic, Armenian,
// Georgian, full-width Latin); anything else is returned unchanged.
char16_t LowerPatternCharacter(char16_t c);

} // namespace tlm
