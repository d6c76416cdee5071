#include "structview/StructPatternLoader.h"

#include "encoding/Utf8.h"
#include "document/WholeFile.h"
#include "structview/DefinitionError.h"
#include "structview/PatternCharacters.h"
#include "structview/PatternDeclaration.h"
#include "structview/PatternNames.h"
#include "structview/PatternNumber.h"
#include "structview/PatternToken.h"
#include "structview/PatternTokenizer.h"
#include "structview/StructTypeRef.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tlm {
namespace {

// Layout recurses once per level of struct embedding; this keeps the stack small on any input. Real
// formats nest a handful of levels. The refusal names the limit, so the two change together.
constexpr std::size_t MaxStructNesting = 128;
constexpr std::u16string_view NestingLimitText = u"Structs are embedded more than 128 levels deep, at: ";

// A typedef chain longer than this is refused rather than walked for every member that uses it.
constexpr std::size_t MaxTypedefChain = 256;

struct ParsedMember {
    std::u16string name;
    StructTypeRef type;
    std::uint64_t arrayCount = 1; // 0 for a flexible array
    bool isFlexibleArray = false;
    std::uint32_t line = 1;
    std::uint32_t column = 1;
};

struct ParsedStruct {
    std::u16string tagName;
    std::u16string aliasName;
    std::vector<ParsedMember> members;
};

struct ParseState {
    std::vector<PatternToken> tokens;
    std::uint64_t position = 0;
    std::u16string sourceText;
    std::uint64_t sizeofShort = 2;
    std::uint64_t sizeofInt = 4;
    std::uint64_t sizeofLong = 8;
    std::uint64_t sizeofLongLong = 8;
    std::uint64_t sizeofFloat = 4;
    std::uint64_t sizeofDouble = 8;
    std::uint64_t pointerSize = 8;
    std::uint64_t memberAlign = 8;
    bool hasEntry = false;
    std::u16string entryName;
    std::vector<ParsedStruct> structs;
    std::unordered_map<std::u16string, StructTypeRef> typedefs;
    std::unordered_map<std::u16string, std::size_t> structNames;
    std::u16string error;
};

struct ResolvedStructInfo {
    std::uint64_t size = 0;
    std::uint64_t alignment = 0;
};

struct ResolvedTypeInfo {
    std::uint64_t size = 0;
    std::uint64_t alignment = 0;
    ResolvedValueKind kind = ResolvedValueKind::Integer;
    std::u16string structName;
    bool isSigned = false;
};

using StructResolveFunction = std::function<std::optional<ResolvedStructInfo>(std::size_t)>;

// ---- Tokens ----

const PatternToken& Current(const ParseState& state)
{
    return state.tokens[static_cast<std::size_t>(state.position)];
}

// Never moves past the End token, so Current is always valid.
void Advance(ParseState& state)
{
    if (state.position + 1 < state.tokens.size())
        ++state.position;
}

bool IsSymbol(const PatternToken& token, char16_t symbol)
{
    return token.kind == TokenKind::Symbol && token.text.size() == 1 && token.text[0] == symbol;
}

// An identifier holds no white space, so its normalised form is its lower-case form; comparing
// character by character spares building that form for every identifier at top level.
bool IsKeyword(const PatternToken& token, std::u16string_view keyword)
{
    if (token.kind != TokenKind::Identifier || token.text.size() != keyword.size())
        return false;
    for (std::size_t i = 0; i < keyword.size(); ++i) {
        if (LowerPatternCharacter(token.text[i]) != keyword[i])
            return false;
    }
    return true;
}

bool MatchKeyword(ParseState& state, std::u16string_view keyword)
{
    if (!IsKeyword(Current(state), keyword))
        return false;
    Advance(state);
    return true;
}

bool Fail(ParseState& state, std::u16string message)
{
    state.error = std::move(message);
    return false;
}

bool FailAt(ParseState& state, const PatternToken& token, std::u16string_view message)
{
    state.error = FormatDefinitionError(state.sourceText, token.line, token.column, message);
    return false;
}

// The tokens from `start` up to the current one, which is not included.
std::span<const PatternToken> TokensFrom(const ParseState& state, std::uint64_t start)
{
    return std::span<const PatternToken>(state.tokens).subspan(static_cast<std::size_t>(start),
        static_cast<std::size_t>(state.position - start));
}

// ---- Directives ----

struct DirectiveRule {
    std::u16string_view name;
    std::uint64_t ParseState::*field;
    std::array<std::uint64_t, 5> allowed;
    std::size_t allowedCount;
};

const DirectiveRule DirectiveRules[] = {
    {u"sizeof_short", &ParseState::sizeofShort, {1, 2, 4, 8}, 4},
    {u"sizeof_int", &ParseState::sizeofInt, {1, 2, 4, 8}, 4},
    {u"sizeof_long", &ParseState::sizeofLong, {1, 2, 4, 8}, 4},
    {u"sizeof_long_long", &ParseState::sizeofLongLong, {1, 2, 4, 8, 16}, 5},
    {u"sizeof_float", &ParseState::sizeofFloat, {2, 4, 8, 16}, 4},
    {u"sizeof_double", &ParseState::sizeofDouble, {4, 8, 16}, 3},
    {u"pointer_size", &ParseState::pointerSize, {1, 2, 4, 8, 16}, 5},
    {u"member_align", &ParseState::memberAlign, {0, 4, 8}, 3},
};

const DirectiveRule* FindDirectiveRule(std::u16string_view name)
{
    for (const DirectiveRule& rule : DirectiveRules) {
        if (rule.name == name)
            return &rule;
    }
    return nullptr;
}

// An unknown name has no allowed values, so it fails here as a value that is not allowed.
bool IsAllowedDirectiveValue(std::u16string_view name, std::uint64_t value)
{
    const DirectiveRule* rule = FindDirectiveRule(name);
    if (rule == nullptr)
        return false;
    const auto allowedEnd = rule->allowed.begin() + static_cast<std::ptrdiff_t>(rule->allowedCount);
    return std::find(rule->allowed.begin(), allowedEnd, value) != allowedEnd;
}

bool StoreDirectiveValue(ParseState& state, std::u16string_view name, std::uint64_t value)
{
    const DirectiveRule* rule = FindDirectiveRule(name);
    if (rule == nullptr)
        return Fail(state, u"Unknown directive.");
    state.*(rule->field) = value;
    return true;
}

bool ParseEntryDirective(ParseState& state)
{
    std::u16string name;
    if (MatchKeyword(state, u"struct")) {
        if (Current(state).kind != TokenKind::Identifier)
            return FailAt(state, Current(state), u"Expected struct name after @entry struct.");
        name = u"struct " + Current(state).text;
    } else {
        if (Current(state).kind != TokenKind::Identifier)
            return FailAt(state, Current(state), u"Expected type name after @entry.");
        name = Current(state).text;
    }
    Advance(state);
    state.entryName = std::move(name);
    state.hasEntry = true;
    return true;
}

bool ParseDirective(ParseState& state)
{
    if (!IsSymbol(Current(state), u'@'))
        return Fail(state, u"Expected '@' for directive.");
    const PatternToken& at = Current(state);
    Advance(state);
    if (Current(state).kind != TokenKind::Identifier)
        return FailAt(state, at, u"Expected directive name.");
    const std::u16string name = NormalizeTypeName(Current(state).text);
    Advance(state);
    if (name == u"entry")
        return ParseEntryDirective(state);
    const PatternToken& valueToken = Current(state);
    if (valueToken.kind != TokenKind::Number)
        return FailAt(state, valueToken, u"Expected numeric directive value.");
    std::uint64_t value = 0;
    if (!ParseUnsigned(valueToken.text, value))
        return FailAt(state, valueToken, u"Invalid directive number.");
    Advance(state);
    if (!IsAllowedDirectiveValue(name, value))
        return FailAt(state, at, u"Directive value is not allowed.");
    return StoreDirectiveValue(state, name, value);
}

// ---- Names ----

bool RegisterStructName(ParseState& state, const std::u16string& name, std::size_t index)
{
    if (name.empty())
        return true;
    std::u16string key = NormalizeTypeName(name);
    if (state.structNames.contains(key))
        return Fail(state, u"Duplicate struct type name: " + name);
    if (!key.starts_with(u"struct "))
        state.structNames.try_emplace(u"struct " + key, index);
    state.structNames.emplace(std::move(key), index);
    return true;
}

bool RegisterTypedef(ParseState& state, const std::u16string& name, const StructTypeRef& type)
{
    if (name.empty())
        return true;
    std::u16string key = NormalizeTypeName(name);
    if (state.typedefs.contains(key))
        return Fail(state, u"Duplicate typedef name: " + name);
    state.typedefs.emplace(std::move(key), type);
    return true;
}

// ---- Declarations ----

bool ParseStructBody(ParseState& state, ParsedStruct& parsedStruct)
{
    while (true) {
        if (Current(state).kind == TokenKind::End)
            return Fail(state, u"Expected '}' to close struct body.");
        if (IsSymbol(Current(state), u'}')) {
            Advance(state);
            return true;
        }
        const std::uint64_t start = state.position;
        while (!IsSymbol(Current(state), u';') && Current(state).kind != TokenKind::End) {
            if (IsSymbol(Current(state), u'{'))
                return FailAt(state, Current(state), u"Inline nested struct declarations are not supported.");
            Advance(state);
        }
        if (!IsSymbol(Current(state), u';'))
            return FailAt(state, Current(state), u"Expected ';' after member declaration.");
        const auto declaration = TokensFrom(state, start);
        Advance(state);
        ParsedMember member;
        std::u16string error;
        if (!ParseDeclaration(declaration, member.type, member.name, member.arrayCount, member.isFlexibleArray, error))
            return FailAt(state, declaration.empty() ? Current(state) : declaration.front(), error);
        if (!declaration.empty()) {
            member.line = declaration.front().line;
            member.column = declaration.front().column;
        }
        parsedStruct.members.push_back(std::move(member));
    }
}

bool ParseStructDeclaration(ParseState& state, bool inTypedef)
{
    const PatternToken& keyword = Current(state);
    if (!MatchKeyword(state, u"struct"))
        return FailAt(state, keyword, u"Expected 'struct'.");
    ParsedStruct parsed;
    if (Current(state).kind == TokenKind::Identifier) {
        parsed.tagName = Current(state).text;
        Advance(state);
    }
    if (IsSymbol(Current(state), u'{')) {
        Advance(state);
        if (!ParseStructBody(state, parsed))
            return false;
        // A name after the closing brace is another name of the type, with or without typedef.
        if (Current(state).kind == TokenKind::Identifier) {
            parsed.aliasName = Current(state).text;
            Advance(state);
        }
        if (!IsSymbol(Current(state), u';'))
            return FailAt(state, Current(state), u"Expected ';' after struct declaration.");
        Advance(state);
        state.structs.push_back(std::move(parsed));
        const std::size_t index = state.structs.size() - 1;
        const ParsedStruct& added = state.structs.back();
        return RegisterStructName(state, added.tagName, index) && RegisterStructName(state, added.aliasName, index);
    }
    if (!inTypedef || parsed.tagName.empty())
        return FailAt(state, keyword, u"Unsupported struct declaration.");
    if (Current(state).kind != TokenKind::Identifier)
        return FailAt(state, Current(state), u"Expected typedef alias name.");
    const std::u16string alias = Current(state).text;
    Advance(state);
    if (!IsSymbol(Current(state), u';'))
        return FailAt(state, Current(state), u"Expected ';' after typedef.");
    Advance(state);
    // The tag may be defined later; it is looked up only at layout.
    StructTypeRef type;
    type.rawName = u"struct " + parsed.tagName;
    type.normalizedName = NormalizeTypeName(type.rawName);
    return RegisterTypedef(state, alias, type);
}

bool ParseTypedef(ParseState& state)
{
    const PatternToken& keyword = Current(state);
    if (!MatchKeyword(state, u"typedef"))
        return FailAt(state, keyword, u"Expected 'typedef'.");
    if (IsKeyword(Current(state), u"struct"))
        return ParseStructDeclaration(state, true);
    const std::uint64_t start = state.position;
    while (!IsSymbol(Current(state), u';') && Current(state).kind != TokenKind::End)
        Advance(state);
    if (!IsSymbol(Current(state), u';'))
        return FailAt(state, Current(state), u"Expected ';' after typedef declaration.");
    const auto declaration = TokensFrom(state, start);
    Advance(state);
    StructTypeRef type;
    std::u16string name;
    std::uint64_t arrayCount = 1;
    bool isFlexibleArray = false;
    std::u16string error;
    if (!ParseDeclaration(declaration, type, name, arrayCount, isFlexibleArray, error))
        return FailAt(state, declaration.empty() ? keyword : declaration.front(), error);
    if (arrayCount != 1 || isFlexibleArray)
        return FailAt(state, keyword, u"Typedef arrays are not supported.");
    return RegisterTypedef(state, name, type);
}

bool ParseTopLevel(ParseState& state)
{
    const PatternToken& token = Current(state);
    if (IsSymbol(token, u'@'))
        return ParseDirective(state);
    if (IsKeyword(token, u"typedef"))
        return ParseTypedef(state);
    if (IsKeyword(token, u"struct"))
        return ParseStructDeclaration(state, false);
    return FailAt(state, token, u"Unsupported top-level declaration.");
}

// ---- Types ----

struct BuiltinType {
    std::u16string_view name;
    std::uint64_t ParseState::*sizeField; // null for a fixed width
    std::uint64_t fixedSize;
};

const BuiltinType BuiltinTypes[] = {
    {u"char", nullptr, 1},
    {u"signed char", nullptr, 1},
    {u"unsigned char", nullptr, 1},
    {u"int8_t", nullptr, 1},
    {u"uint8_t", nullptr, 1},
    {u"short", &ParseState::sizeofShort, 0},
    {u"signed short", &ParseState::sizeofShort, 0},
    {u"unsigned short", &ParseState::sizeofShort, 0},
    {u"int16_t", nullptr, 2},
    {u"uint16_t", nullptr, 2},
    {u"int", &ParseState::sizeofInt, 0},
    {u"signed int", &ParseState::sizeofInt, 0},
    {u"unsigned int", &ParseState::sizeofInt, 0},
    {u"int32_t", nullptr, 4},
    {u"uint32_t", nullptr, 4},
    {u"long", &ParseState::sizeofLong, 0},
    {u"signed long", &ParseState::sizeofLong, 0},
    {u"unsigned long", &ParseState::sizeofLong, 0},
    {u"long long", &ParseState::sizeofLongLong, 0},
    {u"signed long long", &ParseState::sizeofLongLong, 0},
    {u"unsigned long long", &ParseState::sizeofLongLong, 0},
    {u"int64_t", nullptr, 8},
    {u"uint64_t", nullptr, 8},
    {u"float", &ParseState::sizeofFloat, 0},
    {u"double", &ParseState::sizeofDouble, 0},
    {u"void", nullptr, 0},
};

std::optional<ResolvedTypeInfo> BuiltinTypeInfo(const ParseState& state, const std::u16string& normalizedName)
{
    for (const BuiltinType& builtin : BuiltinTypes) {
        if (builtin.name != normalizedName)
            continue;
        ResolvedTypeInfo info;
        info.size = builtin.sizeField != nullptr ? state.*(builtin.sizeField) : builtin.fixedSize;
        info.alignment = std::max<std::uint64_t>(info.size, 1);
        info.kind = normalizedName == u"float" ? ResolvedValueKind::Float
            : normalizedName == u"double"      ? ResolvedValueKind::Double
                                               : ResolvedValueKind::Integer;
        info.isSigned = IsSignedTypeName(normalizedName);
        return info;
    }
    return std::nullopt;
}

ResolvedTypeInfo PointerTypeInfo(const ParseState& state)
{
    ResolvedTypeInfo info;
    info.size = state.pointerSize;
    info.alignment = std::max<std::uint64_t>(state.pointerSize, 1);
    info.kind = ResolvedValueKind::Integer;
    info.isSigned = false;
    return info;
}

bool IsBuiltinTypeName(const std::u16string& normalizedName)
{
    return std::any_of(std::begin(BuiltinTypes), std::end(BuiltinTypes),
        [&](const BuiltinType& builtin) { return builtin.name == normalizedName; });
}

constexpr std::u16string_view TypedefCycleText = u"Typedef refers back to itself: ";
constexpr std::u16string_view TypedefChainText = u"Typedef chain is too long: ";

bool IsTypedefWalkError(std::u16string_view error)
{
    return error.starts_with(TypedefCycleText) || error.starts_with(TypedefChainText);
}

// Follows typedefs from `typeRef` to the type they finally name, adding up pointers on the way. A
// pointer or a built-in name ends the walk early, as resolution would. Gives nothing, with `error`
// set, for a cycle of typedefs or a chain too long to follow.
const StructTypeRef* FollowTypedefs(const ParseState& state, const StructTypeRef& typeRef, std::uint64_t& pointerDepth,
    std::u16string& error)
{
    const StructTypeRef* current = &typeRef;
    pointerDepth = typeRef.pointerDepth;
    std::size_t followed = 0;
    while (pointerDepth == 0 && !IsBuiltinTypeName(current->normalizedName)) {
        const auto found = state.typedefs.find(current->normalizedName);
        if (found == state.typedefs.end())
            break;
        // Without a cycle no chain can be longer than the number of typedefs.
        if (followed >= state.typedefs.size()) {
            error = std::u16string(TypedefCycleText) + typeRef.rawName;
            return nullptr;
        }
        if (followed >= MaxTypedefChain) {
            error = std::u16string(TypedefChainText) + typeRef.rawName;
            return nullptr;
        }
        ++followed;
        current = &found->second;
        pointerDepth += current->pointerDepth;
    }
    return current;
}

std::u16string StructTypeName(const ParsedStruct& parsed)
{
    return parsed.aliasName.empty() ? parsed.tagName : parsed.aliasName;
}

// Resolves the type that a typedef walk ended at, with the pointers gathered on the way.
std::optional<ResolvedTypeInfo> ResolveTypeTarget(const ParseState& state, const StructTypeRef* target,
    std::uint64_t pointerDepth, const StructResolveFunction& resolveStruct, std::u16string& error)
{
    if (pointerDepth > 0)
        return PointerTypeInfo(state);
    if (auto builtin = BuiltinTypeInfo(state, target->normalizedName))
        return builtin;
    const auto found = state.structNames.find(target->normalizedName);
    if (found == state.structNames.end()) {
        error = u"Unknown type: " + target->rawName;
        return std::nullopt;
    }
    const auto nested = resolveStruct(found->second);
    if (!nested) {
        if (error.empty())
            error = u"Failed to resolve struct size for type: " + target->rawName;
        return std::nullopt;
    }
    ResolvedTypeInfo info;
    info.size = nested->size;
    info.alignment = std::max<std::uint64_t>(nested->alignment, 1);
    info.kind = ResolvedValueKind::Aggregate;
    info.structName = StructTypeName(state.structs[found->second]);
    info.isSigned = target->isSigned;
    return info;
}

std::optional<ResolvedTypeInfo> ResolveTypeRef(const ParseState& state, const StructTypeRef& typeRef,
    const StructResolveFunction& resolveStruct, std::u16string& error)
{
    std::uint64_t pointerDepth = 0;
    const StructTypeRef* target = FollowTypedefs(state, typeRef, pointerDepth, error);
    if (target == nullptr)
        return std::nullopt;
    return ResolveTypeTarget(state, target, pointerDepth, resolveStruct, error);
}

// ---- Layout ----

bool RoundUp(std::uint64_t value, std::uint64_t alignment, std::uint64_t& rounded)
{
    const std::uint64_t remainder = value % alignment;
    if (remainder == 0) {
        rounded = value;
        return true;
    }
    const std::uint64_t step = alignment - remainder;
    if (value > std::numeric_limits<std::uint64_t>::max() - step)
        return false;
    rounded = value + step;
    return true;
}

ResolvedMember PaddingMember(std::uint64_t offset, std::uint64_t gap)
{
    ResolvedMember padding;
    padding.name = u"<padding>";
    padding.typeName = u"padding";
    padding.normalizedTypeName = u"padding";
    padding.kind = ResolvedValueKind::Aggregate;
    padding.offset = offset;
    padding.elementSize = 1;
    padding.elementCount = gap;
    padding.totalSize = gap;
    padding.isPadding = true;
    return padding;
}

// Lays out each struct once, on first use, remembering results and which structs are in progress.
class StructLayouts {
public:
    explicit StructLayouts(ParseState& state)
        : results(state.structs.size()), state(state), marks(state.structs.size(), Unvisited),
          resolveStruct([this](std::size_t index) { return Resolve(index); })
    {
    }
    // The resolver function holds this object's address.
    StructLayouts(const StructLayouts&) = delete;
    StructLayouts& operator=(const StructLayouts&) = delete;

    std::optional<ResolvedStructInfo> Resolve(std::size_t index)
    {
        if (index >= state.structs.size())
            return std::nullopt;
        if (marks[index] == Done)
            return ResolvedStructInfo{results[index].size, results[index].alignment};
        if (marks[index] == InProgress) {
            error = u"Direct recursive struct embedding is not allowed.";
            return std::nullopt;
        }
        if (depth >= MaxStructNesting) {
            nestingLimitError = std::u16string(NestingLimitText) + StructTypeName(state.structs[index]);
            return std::nullopt;
        }
        ++depth;
        auto info = LayOut(index);
        --depth;
        return info;
    }

    std::u16string error;
    // Set when the nesting limit stopped layout; it is reported instead of the texts that every
    // level on the way out puts in its place, which would not say what went wrong.
    std::u16string nestingLimitError;
    std::vector<ResolvedStruct> results;

private:
    enum Mark : std::uint8_t { Unvisited, InProgress, Done };

    ParseState& state;
    std::vector<Mark> marks;
    StructResolveFunction resolveStruct;
    std::size_t depth = 0;

    bool FailAtMember(const ParsedMember& member, std::u16string_view message)
    {
        error = FormatDefinitionError(state.sourceText, member.line, member.column, message);
        return false;
    }

    std::optional<ResolvedStructInfo> LayOut(std::size_t index)
    {
        marks[index] = InProgress;
        ParsedStruct& parsed = state.structs[index];
        ResolvedStruct laidOut;
        laidOut.members.reserve(parsed.members.size() + 1);
        laidOut.name = StructTypeName(parsed);
        if (laidOut.name.empty())
            laidOut.name = u"<anonymous>";
        std::uint64_t offset = 0;
        std::uint64_t alignment = 1;
        for (std::size_t i = 0; i < parsed.members.size(); ++i) {
            ParsedMember& member = parsed.members[i];
            if (member.isFlexibleArray && i + 1 != parsed.members.size()) {
                FailAtMember(member, u"Flexible array member must be the last member.");
                return std::nullopt;
            }
            if (!AddMember(member, laidOut, offset, alignment))
                return std::nullopt;
        }
        if (state.memberAlign != 0) {
            std::uint64_t rounded = 0;
            if (!RoundUp(offset, alignment, rounded)) {
                FailAtMember(parsed.members.back(), u"Struct is too large for a 64-bit size.");
                return std::nullopt;
            }
            if (rounded != offset)
                laidOut.members.push_back(PaddingMember(offset, rounded - offset));
            offset = rounded;
        }
        laidOut.size = offset;
        laidOut.alignment = alignment;
        results[index] = std::move(laidOut);
        marks[index] = Done;
        return ResolvedStructInfo{results[index].size, results[index].alignment};
    }

    // Each struct is laid out once, so its parsed members give their texts up to the result.
    bool AddMember(ParsedMember& member, ResolvedStruct& laidOut, std::uint64_t& offset, std::uint64_t& alignment)
    {
        std::u16string typeError;
        auto type = ResolveTypeRef(state, member.type, resolveStruct, typeError);
        if (!type) {
            // A refused typedef walk is this member's own problem, so it can point at the member.
            if (IsTypedefWalkError(typeError))
                return FailAtMember(member, typeError);
            error = typeError;
            return false;
        }
        const std::uint64_t effective = state.memberAlign == 0 ? 1 : std::min(type->alignment, state.memberAlign);
        alignment = std::max(alignment, effective);
        std::uint64_t aligned = 0;
        if (!RoundUp(offset, effective, aligned))
            return FailAtMember(member, u"Struct is too large for a 64-bit size.");
        if (aligned != offset)
            laidOut.members.push_back(PaddingMember(offset, aligned - offset));

        ResolvedMember resolved;
        resolved.name = std::move(member.name);
        resolved.typeName = std::move(member.type.rawName);
        resolved.normalizedTypeName = std::move(member.type.normalizedName);
        resolved.structName = std::move(type->structName);
        resolved.kind = type->kind;
        resolved.offset = aligned;
        resolved.elementSize = type->size;
        resolved.isFlexibleArray = member.isFlexibleArray;
        resolved.isPointer = member.type.pointerDepth > 0;
        resolved.isSigned = type->isSigned;
        if (!member.isFlexibleArray) {
            resolved.elementCount = member.arrayCount;
            if (type->size != 0 && member.arrayCount > std::numeric_limits<std::uint64_t>::max() / type->size)
                return FailAtMember(member, u"Array is too large for a 64-bit size.");
            resolved.totalSize = type->size * member.arrayCount;
        }
        if (resolved.totalSize == 0 && !resolved.isPointer && !resolved.isFlexibleArray)
            return FailAtMember(member, u"Unsupported zero-sized member type: " + resolved.name);
        if (aligned > std::numeric_limits<std::uint64_t>::max() - resolved.totalSize)
            return FailAtMember(member, u"Struct is too large for a 64-bit size.");
        offset = aligned + resolved.totalSize;
        laidOut.members.push_back(std::move(resolved));
        return true;
    }
};

bool ResolveStructs(ParseState& state, StructPatternFile& patternFile, std::u16string& error)
{
    StructLayouts layouts(state);
    for (std::size_t index = 0; index < state.structs.size(); ++index) {
        if (!layouts.Resolve(index)) {
            error = layouts.nestingLimitError.empty() ? layouts.error : layouts.nestingLimitError;
            return false;
        }
    }
    patternFile.sizeofShort = state.sizeofShort;
    patternFile.sizeofInt = state.sizeofInt;
    patternFile.sizeofLong = state.sizeofLong;
    patternFile.sizeofLongLong = state.sizeofLongLong;
    patternFile.sizeofFloat = state.sizeofFloat;
    patternFile.sizeofDouble = state.sizeofDouble;
    patternFile.pointerSize = state.pointerSize;
    patternFile.memberAlign = state.memberAlign;
    patternFile.structs = std::move(layouts.results);
    return true;
}

bool ChooseEntry(const ParseState& state, StructPatternFile& patternFile, std::u16string& error)
{
    if (!state.hasEntry) {
        if (patternFile.structs.size() >= 2) {
            error = u"@entry is required when multiple structs are defined.";
            return false;
        }
        patternFile.entryStructName = patternFile.structs.front().name;
        patternFile.entryIsImplicit = true;
        return true;
    }
    const auto found = state.structNames.find(NormalizeTypeName(state.entryName));
    if (found == state.structNames.end()) {
        error = u"@entry refers to an undefined struct.";
        return false;
    }
    patternFile.entryStructName = patternFile.structs[found->second].name;
    patternFile.entryIsImplicit = false;
    return true;
}

// Sizes the name maps once for the whole file rather than letting them grow a step at a time.
void ReserveNameMaps(ParseState& state)
{
    std::size_t structCount = 0;
    std::size_t typedefCount = 0;
    for (const PatternToken& token : state.tokens) {
        structCount += IsKeyword(token, u"struct") ? 1 : 0;
        typedefCount += IsKeyword(token, u"typedef") ? 1 : 0;
    }
    state.structNames.reserve(structCount * 2);
    state.typedefs.reserve(typedefCount);
}

bool ParseAll(ParseState& state)
{
    ReserveNameMaps(state);
    while (Current(state).kind != TokenKind::End) {
        if (!ParseTopLevel(state))
            return false;
    }
    return true;
}

bool LoadDecodedText(std::u16string text, StructPatternFile& patternFile, std::u16string& error)
{
    ParseState state;
    state.sourceText = std::move(text);
    state.tokens = TokenizeDefinition(state.sourceText, state.error);
    if (state.tokens.empty()) {
        error = state.error;
        return false;
    }
    if (!ParseAll(state)) {
        error = state.error;
        return false;
    }
    if (state.structs.empty()) {
        error = u"No struct definition was found.";
        return false;
    }
    StructPatternFile loaded;
    if (!ResolveStructs(state, loaded, error) || !ChooseEntry(state, loaded, error))
        return false;
    patternFile = std::move(loaded);
    return true;
}

// Pattern files are nearly always plain ASCII, which widens without the decoder's checks.
std::optional<std::u16string> DecodeDefinitionBytes(std::string_view bytes)
{
    const bool ascii = std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    if (!ascii)
        return Utf8ToUtf16(bytes);
    std::u16string text(bytes.size(), u'\0');
    std::transform(bytes.begin(), bytes.end(), text.begin(), [](char c) { return static_cast<char16_t>(c); });
    return text;
}

} // namespace

bool LoadStructPatternText(std::u16string_view text, StructPatternFile& patternFile, std::u16string& error)
{
    return LoadDecodedText(std::u16string(text), patternFile, error);
}

bool LoadStructPatternBytes(std::string_view bytes, StructPatternFile& patternFile, std::u16string& error)
{
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    auto text = DecodeDefinitionBytes(bytes);
    if (!text) {
        error = u"Definition file must be UTF-8.";
        return false;
    }
    return LoadDecodedText(std::move(*text), patternFile, error);
}

bool LoadStructPatternFile(const std::u16string& path, StructPatternFile& patternFile, std::u16string& error)
{
    const auto bytes = ReadWholeFile(path);
    if (!bytes) {
        error = u"Failed to open definition file.";
        return false;
    }
    return LoadStructPatternBytes(*bytes, patternFile, error);
}

} // namespace tlm
