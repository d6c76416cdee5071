#include "structview/PatternDeclaration.h"

#include "structview/PatternNames.h"
#include "structview/PatternNumber.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace tlm {
namespace {

bool IsSymbol(const PatternToken& token, char16_t symbol)
{
    return token.kind == TokenKind::Symbol && token.text.size() == 1 && token.text[0] == symbol;
}

std::optional<std::size_t> LastIdentifier(std::span<const PatternToken> tokens)
{
    for (std::size_t i = tokens.size(); i > 0; --i) {
        if (tokens[i - 1].kind == TokenKind::Identifier)
            return i - 1;
    }
    return std::nullopt;
}

// The tokens after the name: nothing, "[]" or "[count]".
bool ParseArraySuffix(std::span<const PatternToken> suffix, std::uint64_t& arrayCount, bool& isFlexibleArray,
    std::u16string& error)
{
    arrayCount = 1;
    isFlexibleArray = false;
    if (suffix.empty())
        return true;
    if (!IsSymbol(suffix[0], u'[')) {
        error = u"Unexpected tokens after declaration name.";
        return false;
    }
    if (suffix.size() >= 2 && IsSymbol(suffix[1], u']')) {
        if (suffix.size() > 2) {
            error = u"Unexpected tokens after flexible array declaration.";
            return false;
        }
        arrayCount = 0;
        isFlexibleArray = true;
        return true;
    }
    if (suffix.size() >= 3 && suffix[1].kind == TokenKind::Number && IsSymbol(suffix[2], u']')) {
        if (!ParseUnsigned(suffix[1].text, arrayCount)) {
            error = u"Invalid array count.";
            return false;
        }
        if (suffix.size() > 3) {
            error = u"Unexpected tokens after array declaration.";
            return false;
        }
        return true;
    }
    error = u"Invalid array declaration.";
    return false;
}

// The tokens before the name: type words and stars, in any order.
bool ParseTypeWords(std::span<const PatternToken> prefix, StructTypeRef& type, std::u16string& error)
{
    type = StructTypeRef{};
    for (const PatternToken& token : prefix) {
        if (IsSymbol(token, u'*')) {
            ++type.pointerDepth;
        } else if (token.kind == TokenKind::Identifier) {
            if (!type.rawName.empty())
                type.rawName += u' ';
            type.rawName += token.text;
        } else {
            error = u"Unsupported declaration syntax.";
            return false;
        }
    }
    if (type.rawName.empty()) {
        error = u"Type specifier was not found.";
        return false;
    }
    type.normalizedName = NormalizeTypeName(type.rawName);
    type.isSigned = IsSignedTypeName(type.normalizedName);
    return true;
}

} // namespace

bool ParseDeclaration(std::span<const PatternToken> tokens, StructTypeRef& type, std::u16string& name,
    std::uint64_t& arrayCount, bool& isFlexibleArray, std::u16string& error)
{
    if (tokens.empty()) {
        error = u"Empty declaration.";
        return false;
    }
    if (std::any_of(tokens.begin(), tokens.end(), [](const PatternToken& token) { return IsSymbol(token, u','); })) {
        error = u"Multiple declarators are not supported in v1.";
        return false;
    }
    const auto nameIndex = LastIdentifier(tokens);
    if (!nameIndex) {
        error = u"Declaration name was not found.";
        return false;
    }
    if (!ParseArraySuffix(tokens.subspan(*nameIndex + 1), arrayCount, isFlexibleArray, error))
        return false;
    if (!ParseTypeWords(tokens.first(*nameIndex), type, error))
        return false;
    name = tokens[*nameIndex].text;
    return true;
}

} // namespace tlm
