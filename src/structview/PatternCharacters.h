#pragma once

namespace tlm {

// Character classes of the pattern language, on single UTF-16 code units. They follow the wide
// character classes of the platform's C library for the scripts in common use, without depending on
// the process locale: ASCII exactly, and beyond it the letters and blanks of the main alphabets.
// Digits are the ASCII digits only, so that every Number token is a plain decimal literal.
// ASCII is decided here, inline, since patterns are nearly all ASCII and the tokenizer asks for
// every character; the tables for the rest live in the source file.
bool IsPatternSpaceBeyondAscii(char16_t c);
bool IsPatternLetterBeyondAscii(char16_t c);
char16_t LowerPatternCharacterBeyondAscii(char16_t c);

inline bool IsPatternSpace(char16_t c)
{
    if (c < 0x80)
        return c == u' ' || (c >= 0x09 && c <= 0x0D);
    return IsPatternSpaceBeyondAscii(c);
}

inline bool IsPatternLetter(char16_t c)
{
    if (c < 0x80)
        return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
    return IsPatternLetterBeyondAscii(c);
}

inline bool IsPatternDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

inline bool IsPatternLetterOrDigit(char16_t c)
{
    return IsPatternLetter(c) || IsPatternDigit(c);
}

// Simple one-to-one lower-casing of the cased alphabets (Latin, Greek, Cyrillic, Armenian,
// Georgian, full-width Latin); anything else is returned unchanged.
inline char16_t LowerPatternCharacter(char16_t c)
{
    if (c < 0x80)
        return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 0x20) : c;
    return LowerPatternCharacterBeyondAscii(c);
}

} // namespace tlm
