#include "structview/PatternTokenizer.h"

#include "structview/DefinitionError.h"
#include "structview/PatternCharacters.h"

#include <cstddef>
#include <cstdint>

namespace tlm {
namespace {

// The symbol set is searched the way wcschr would search it, terminator included, so a NUL in the
// text becomes a symbol that the parser refuses with its own words.
bool IsSymbolCharacter(char16_t c)
{
    return c == u'\0' || std::u16string_view(u"@{}[];,*").find(c) != std::u16string_view::npos;
}

class Scanner {
public:
    explicit Scanner(std::u16string_view text) : text(text) {}

    bool Run(std::vector<PatternToken>& tokens, std::u16string& error)
    {
        while (index < text.size()) {
            if (!Step(tokens, error))
                return false;
        }
        tokens.push_back(PatternToken{TokenKind::End, {}, line, column});
        return true;
    }

private:
    std::u16string_view text;
    std::size_t index = 0;
    std::uint32_t line = 1;
    std::uint32_t column = 1;

    char16_t At(std::size_t i) const { return i < text.size() ? text[i] : char16_t{0xFFFF}; }

    bool StartsComment(char16_t second) const { return text[index] == u'/' && At(index + 1) == second; }

    void NewLine()
    {
        ++line;
        column = 1;
    }

    bool Step(std::vector<PatternToken>& tokens, std::u16string& error)
    {
        const char16_t c = text[index];
        if (c == u'\r') {
            ++index;
        } else if (c == u'\n') {
            ++index;
            NewLine();
        } else if (IsPatternSpace(c)) {
            ++index;
            ++column;
        } else if (StartsComment(u'/')) {
            SkipLineComment();
        } else if (StartsComment(u'*')) {
            if (!SkipBlockComment()) {
                error = u"Unterminated block comment.";
                return false;
            }
        } else if (c == u'_' || IsPatternLetter(c)) {
            tokens.push_back(Take(TokenKind::Identifier, [](char16_t x) { return x == u'_' || IsPatternLetterOrDigit(x); }));
        } else if (IsPatternDigit(c)) {
            tokens.push_back(Take(TokenKind::Number, IsPatternDigit));
        } else if (IsSymbolCharacter(c)) {
            tokens.push_back(PatternToken{TokenKind::Symbol, std::u16string(1, c), line, column});
            ++index;
            ++column;
        } else {
            error = FormatDefinitionError(text, line, column, u"Unexpected character in definition file.");
            return false;
        }
        return true;
    }

    template <typename Predicate>
    PatternToken Take(TokenKind kind, Predicate belongs)
    {
        const std::size_t start = index;
        while (index < text.size() && belongs(text[index]))
            ++index;
        PatternToken token{kind, std::u16string(text.substr(start, index - start)), line, column};
        column += static_cast<std::uint32_t>(index - start);
        return token;
    }

    // Up to, not including, the next LF; a CR inside counts as a column like any other character.
    void SkipLineComment()
    {
        index += 2;
        column += 2;
        while (index < text.size() && text[index] != u'\n') {
            ++index;
            ++column;
        }
    }

    bool SkipBlockComment()
    {
        index += 2;
        column += 2;
        while (index < text.size()) {
            if (text[index] == u'\n') {
                ++index;
                NewLine();
            } else if (text[index] == u'*' && At(index + 1) == u'/') {
                index += 2;
                column += 2;
                return true;
            } else {
                ++index;
                ++column;
            }
        }
        return false;
    }
};

} // namespace

std::vector<PatternToken> TokenizeDefinition(std::u16string_view text, std::u16string& error)
{
    std::vector<PatternToken> tokens;
    // Patterns average about five characters a token, blanks included; this spares most regrowth.
    tokens.reserve(text.size() / 5 + 1);
    if (!Scanner(text).Run(tokens, error))
        tokens.clear();
    return tokens;
}

} // namespace tlm
