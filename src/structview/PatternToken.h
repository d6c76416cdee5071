#pragma once

#include <cstdint>
#include <string>

namespace tlm {

enum class TokenKind : std::uint32_t {
    Identifier = 0, // a letter or '_', then letters, digits or '_'
    Number = 1,     // decimal digits only
    Symbol = 2,     // one character of "@{}[];,*"
    End = 3,        // always the last token; empty text
};

// One lexical token of a pattern file. Positions are 1-based and count UTF-16 code units.
struct PatternToken {
    TokenKind kind = TokenKind::End;
    std::u16string text;
    std::uint32_t line = 1;
    std::uint32_t column = 1;
};

} // namespace tlm
