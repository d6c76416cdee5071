#include "PatternLoadSupport.h"

#include "structview/PatternDeclaration.h"
#include "structview/PatternTokenizer.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

using namespace tlm::test;

// The single member of `struct S { <member> };` after layout.
ResolvedMember OnlyMember(std::u16string_view member, std::u16string_view directives = u"")
{
    const auto file = LoadPattern(std::u16string(directives) + u"struct S { " + std::u16string(member) + u" };");
    if (file.structs.size() != 1 || file.structs[0].members.empty())
        return {};
    return file.structs[0].members.back();
}

// Loads `struct S {` + body + `};` on one line and gives the error.
std::u16string BodyError(std::u16string_view body)
{
    return LoadPatternError(u"struct S {\n" + std::u16string(body) + u"\n};");
}

struct Declared {
    StructTypeRef type;
    std::u16string name;
    std::uint64_t arrayCount = 99;
    bool isFlexibleArray = false;
    std::u16string error;
    bool parsed = false;
};

Declared Declare(std::u16string_view text)
{
    std::u16string tokenError;
    auto tokens = TokenizeDefinition(text, tokenError);
    EXPECT_FALSE(tokens.empty());
    tokens.pop_back(); // the End token
    Declared declared;
    declared.parsed = ParseDeclaration(tokens, declared.type, declared.name, declared.arrayCount,
        declared.isFlexibleArray, declared.error);
    return declared;
}

TEST(PatternGrammar, LoneSemicolonInABodyIsAnEmptyDeclarationAtTheTokenAfterIt)
{
    EXPECT_EQ(BodyError(u"  int x;\n  ;\n  int y;"), Positioned(4, 3, u"Empty declaration.", u"  int y;"));
}

TEST(PatternGrammar, CommaMeansMultipleDeclarators)
{
    EXPECT_EQ(BodyError(u"  int a, b;"), Positioned(2, 3, u"Multiple declarators are not supported in v1.", u"  int a, b;"));
}

TEST(PatternGrammar, IntAloneIsANameWithoutAType)
{
    EXPECT_EQ(BodyError(u"  int;"), Positioned(2, 3, u"Type specifier was not found.", u"  int;"));
}

TEST(PatternGrammar, StarWithoutATypeWordHasNoTypeSpecifier)
{
    EXPECT_EQ(BodyError(u"  * p;"), Positioned(2, 3, u"Type specifier was not found.", u"  * p;"));
}

TEST(PatternGrammar, StarBeforeAnArrayNameIsAnArrayOfPointers)
{
    const auto member = OnlyMember(u"int *p[4];");
    EXPECT_EQ(member.name, u"p");
    EXPECT_TRUE(member.isPointer);
    EXPECT_EQ(member.elementCount, 4u);
    EXPECT_EQ(member.elementSize, 8u);
    EXPECT_EQ(member.totalSize, 32u);
    EXPECT_EQ(member.kind, ResolvedValueKind::Integer);
}

TEST(PatternGrammar, ConstAfterTheStarIsATypeWordAndThePointerDecidesTheSize)
{
    const auto declared = Declare(u"int * const p");
    ASSERT_TRUE(declared.parsed);
    EXPECT_EQ(declared.type.rawName, u"int const");
    EXPECT_EQ(declared.type.pointerDepth, 1u);
    const auto member = OnlyMember(u"int * const p;", u"@pointer_size 2\n");
    EXPECT_EQ(member.typeName, u"int const");
    EXPECT_EQ(member.totalSize, 2u);
    EXPECT_TRUE(member.isPointer);
}

TEST(PatternGrammar, IdentifierInsideTheBracketsIsTakenAsTheName)
{
    const auto declared = Declare(u"int a[n]");
    EXPECT_FALSE(declared.parsed);
    EXPECT_EQ(declared.error, u"Unexpected tokens after declaration name.");
    EXPECT_EQ(BodyError(u"  int a[n];"), Positioned(2, 3, u"Unexpected tokens after declaration name.", u"  int a[n];"));
}

TEST(PatternGrammar, EmptyBracketsOnTheLastMemberMakeAFlexibleArray)
{
    const auto declared = Declare(u"int a[]");
    ASSERT_TRUE(declared.parsed);
    EXPECT_TRUE(declared.isFlexibleArray);
    EXPECT_EQ(declared.arrayCount, 0u);
    const auto file = LoadPattern(u"struct S { char n; int a[]; };");
    const auto& last = file.structs[0].members.back();
    EXPECT_EQ(last.name, u"a");
    EXPECT_TRUE(last.isFlexibleArray);
}

TEST(PatternGrammar, ZeroCountParsesWithoutTheFlexibleFlagAndIsRefusedAtLayout)
{
    const auto declared = Declare(u"int a[0]");
    ASSERT_TRUE(declared.parsed);
    EXPECT_EQ(declared.arrayCount, 0u);
    EXPECT_FALSE(declared.isFlexibleArray);
    EXPECT_EQ(BodyError(u"  int a[0];"), Positioned(2, 3, u"Unsupported zero-sized member type: a", u"  int a[0];"));
}

TEST(PatternGrammar, DigitStartingANameIsUnsupportedSyntax)
{
    EXPECT_EQ(BodyError(u"  int 3x;"), Positioned(2, 3, u"Unsupported declaration syntax.", u"  int 3x;"));
}

TEST(PatternGrammar, StructWithNeitherNameParsesAndIsEnteredInNoMap)
{
    const auto file = LoadPattern(u"struct { int a; };");
    ASSERT_EQ(file.structs.size(), 1u);
    EXPECT_EQ(file.structs[0].name, u"<anonymous>");
    EXPECT_EQ(file.entryStructName, u"<anonymous>");
    EXPECT_TRUE(file.entryIsImplicit);
    // Two of them do not collide, and neither can be named as the entry.
    EXPECT_EQ(LoadPattern(u"struct { int a; }; struct { int b; }; struct C { int c; }; @entry C").structs.size(), 3u);
    EXPECT_EQ(LoadPatternError(u"struct { int a; }; struct { int b; }; @entry anonymous"),
        u"@entry refers to an undefined struct.");
}

TEST(PatternGrammar, NestedStructBodyFailsAtTheInnerBrace)
{
    const std::u16string text = u"struct Foo { struct Bar { int a; } b; };";
    EXPECT_EQ(LoadPatternError(text), Positioned(1, 25, u"Inline nested struct declarations are not supported.", text));
}

TEST(PatternGrammar, SameTrailingNameOnTwoStructsIsADuplicate)
{
    EXPECT_EQ(LoadPatternError(u"struct A { int a; } x;\nstruct B { int b; } x;"), u"Duplicate struct type name: x");
}

TEST(PatternGrammar, BodyCutOffInsideAMemberExpectsItsSemicolon)
{
    EXPECT_EQ(LoadPatternError(u"struct A { int a"), Positioned(1, 17, u"Expected ';' after member declaration.", u"struct A { int a"));
}

TEST(PatternGrammar, BodyCutOffAfterAMemberExpectsTheClosingBrace)
{
    EXPECT_EQ(LoadPatternError(u"struct A { int a;\n"), u"Expected '}' to close struct body.");
}

TEST(PatternGrammar, AllFourStructFormsAreAccepted)
{
    const auto file = LoadPattern(u"struct A { int a; };\nstruct { int b; };\nstruct C { int c; } D;\nstruct { int e; } E;\n@entry E");
    ASSERT_EQ(file.structs.size(), 4u);
    EXPECT_EQ(file.structs[0].name, u"A");
    EXPECT_EQ(file.structs[1].name, u"<anonymous>");
    EXPECT_EQ(file.structs[2].name, u"D");
    EXPECT_EQ(file.structs[3].name, u"E");
    // The tag and "struct" followed by the tag both name the struct, and so does the alias.
    EXPECT_EQ(LoadPattern(u"struct C { int c; } D; struct X { C a; struct C b; D d; struct D e; }; @entry X").structs[1].size, 16u);
}

TEST(PatternGrammar, TypedefStructFormsAreAccepted)
{
    const auto file = LoadPattern(u"typedef struct Tag { int a; } Alias;\ntypedef struct { short s; } Anon;\n"
                                  u"typedef struct Later Fwd;\nstruct Later { char c; };\n"
                                  u"struct Use { Alias a; Anon b; Fwd c; Tag d; };\n@entry Use");
    const auto* use = FindStruct(file, u"Use");
    ASSERT_NE(use, nullptr);
    EXPECT_EQ(use->size, 12u);
    EXPECT_EQ(use->members[1].offset, 4u);
    EXPECT_EQ(use->members[2].offset, 6u);
    EXPECT_EQ(use->members[3].isPadding, true);
    EXPECT_EQ(use->members[4].offset, 8u);
    EXPECT_EQ(use->members[0].structName, u"Alias");
    EXPECT_EQ(use->members[2].typeName, u"Fwd");
    EXPECT_EQ(use->members[2].structName, u"Later");
}

TEST(PatternGrammar, TypedefStructWithTheSameTagAndAliasIsADuplicate)
{
    EXPECT_EQ(LoadPatternError(u"typedef struct Foo { int a; } Foo;"), u"Duplicate struct type name: Foo");
    EXPECT_EQ(LoadPatternError(u"typedef struct Foo { int a; } FOO;"), u"Duplicate struct type name: FOO");
}

TEST(PatternGrammar, ForwardDeclarationAndStructVariableAreUnsupported)
{
    EXPECT_EQ(LoadPatternError(u"struct Foo;"), Positioned(1, 1, u"Unsupported struct declaration.", u"struct Foo;"));
    EXPECT_EQ(LoadPatternError(u"  struct Foo x;"), Positioned(1, 3, u"Unsupported struct declaration.", u"  struct Foo x;"));
    EXPECT_EQ(LoadPatternError(u"typedef struct ;"), Positioned(1, 9, u"Unsupported struct declaration.", u"typedef struct ;"));
}

TEST(PatternGrammar, TypedefStructWithoutAnAliasOrSemicolonIsRefused)
{
    EXPECT_EQ(LoadPatternError(u"typedef struct Foo ;"), Positioned(1, 20, u"Expected typedef alias name.", u"typedef struct Foo ;"));
    EXPECT_EQ(LoadPatternError(u"typedef struct Alias;"), Positioned(1, 21, u"Expected typedef alias name.", u"typedef struct Alias;"));
    EXPECT_EQ(LoadPatternError(u"typedef struct Foo Bar Baz;"),
        Positioned(1, 24, u"Expected ';' after typedef.", u"typedef struct Foo Bar Baz;"));
}

TEST(PatternGrammar, StructWithoutItsSemicolonIsRefusedAtTheNextToken)
{
    EXPECT_EQ(LoadPatternError(u"struct A { int a; } B C;"), Positioned(1, 23, u"Expected ';' after struct declaration.", u"struct A { int a; } B C;"));
    // Any identifier after the brace is taken as the alias, even the keyword "struct".
    EXPECT_EQ(LoadPatternError(u"struct A { int a; } struct B { int b; };"),
        Positioned(1, 28, u"Expected ';' after struct declaration.", u"struct A { int a; } struct B { int b; };"));
}

TEST(PatternGrammar, TypedefDeclarationNeedsItsSemicolon)
{
    EXPECT_EQ(LoadPatternError(u"typedef int myint"), Positioned(1, 18, u"Expected ';' after typedef declaration.", u"typedef int myint"));
}

TEST(PatternGrammar, TypedefErrorsArePositionedAtTheFirstTokenOrTheKeyword)
{
    EXPECT_EQ(LoadPatternError(u"typedef ;"), Positioned(1, 1, u"Empty declaration.", u"typedef ;"));
    EXPECT_EQ(LoadPatternError(u"typedef  int a, b;"), Positioned(1, 10, u"Multiple declarators are not supported in v1.", u"typedef  int a, b;"));
}

TEST(PatternGrammar, TypedefArraysAreRefusedAtTheKeyword)
{
    EXPECT_EQ(LoadPatternError(u" typedef int a[2];"), Positioned(1, 2, u"Typedef arrays are not supported.", u" typedef int a[2];"));
    EXPECT_EQ(LoadPatternError(u"typedef int a[];"), Positioned(1, 1, u"Typedef arrays are not supported.", u"typedef int a[];"));
    EXPECT_EQ(LoadPatternError(u"typedef int a[0];"), Positioned(1, 1, u"Typedef arrays are not supported.", u"typedef int a[0];"));
}

TEST(PatternGrammar, TypedefArrayOfOneIsThePlainType)
{
    const auto member = OnlyMember(u"a x;", u"typedef int a[1];\n");
    EXPECT_EQ(member.elementCount, 1u);
    EXPECT_EQ(member.totalSize, 4u);
    EXPECT_EQ(member.typeName, u"a");
}

TEST(PatternGrammar, DuplicateTypedefIsRefusedWithoutPosition)
{
    EXPECT_EQ(LoadPatternError(u"typedef int a;\ntypedef char A;"), u"Duplicate typedef name: A");
}

TEST(PatternGrammar, TypedefMayShareANameWithAStructAndWins)
{
    const auto file = LoadPattern(u"struct Foo { double d; }; typedef char Foo; struct S { Foo f; struct Foo g; }; @entry S");
    const auto* s = FindStruct(file, u"S");
    ASSERT_NE(s, nullptr);
    EXPECT_EQ(s->members[0].totalSize, 1u);
    EXPECT_EQ(s->members[0].kind, ResolvedValueKind::Integer);
    EXPECT_EQ(s->members.back().structName, u"Foo");
}

TEST(PatternGrammar, StrayTokensAtTopLevelAreUnsupported)
{
    EXPECT_EQ(LoadPatternError(u";"), Positioned(1, 1, u"Unsupported top-level declaration.", u";"));
    EXPECT_EQ(LoadPatternError(u"int x;"), Positioned(1, 1, u"Unsupported top-level declaration.", u"int x;"));
    EXPECT_EQ(LoadPatternError(std::u16string(u"\0", 1)), Positioned(1, 1, u"Unsupported top-level declaration.", std::u16string(u"\0", 1)));
}

TEST(PatternGrammar, KeywordsAndTypeNamesAreCaseInsensitive)
{
    const auto file = LoadPattern(u"TYPEDEF UINT32_T Word;\nStruct S { word w; Unsigned CHAR c; }; @ENTRY STRUCT s");
    ASSERT_EQ(file.structs.size(), 1u);
    EXPECT_EQ(file.structs[0].size, 8u);
    EXPECT_EQ(file.structs[0].members[1].normalizedTypeName, u"unsigned char");
    EXPECT_EQ(file.structs[0].members[1].typeName, u"Unsigned CHAR");
}

TEST(PatternGrammar, ArraySuffixErrors)
{
    EXPECT_EQ(Declare(u"int a[] *").error, u"Unexpected tokens after flexible array declaration.");
    EXPECT_EQ(Declare(u"int a[] 5").error, u"Unexpected tokens after flexible array declaration.");
    // A later identifier becomes the name, which leaves the brackets among the type words.
    EXPECT_EQ(Declare(u"int a[] x").error, u"Unsupported declaration syntax.");
    EXPECT_EQ(Declare(u"int a[2][3]").error, u"Unexpected tokens after array declaration.");
    EXPECT_EQ(Declare(u"int a[99999999999999999999]").error, u"Invalid array count.");
    EXPECT_EQ(Declare(u"int a[2").error, u"Invalid array declaration.");
    EXPECT_EQ(Declare(u"int a[*]").error, u"Invalid array declaration.");
    EXPECT_EQ(Declare(u"int a;").error, u"Unexpected tokens after declaration name.");
    EXPECT_EQ(BodyError(u"  int a[2][3];"), Positioned(2, 3, u"Unexpected tokens after array declaration.", u"  int a[2][3];"));
}

TEST(PatternGrammar, DeclarationWithoutAnIdentifierHasNoName)
{
    EXPECT_EQ(Declare(u"* 4").error, u"Declaration name was not found.");
    EXPECT_EQ(BodyError(u"  *;"), Positioned(2, 3, u"Declaration name was not found.", u"  *;"));
}

TEST(PatternGrammar, StarsAnywhereBeforeTheNameCount)
{
    const auto declared = Declare(u"* char * * name");
    ASSERT_TRUE(declared.parsed);
    EXPECT_EQ(declared.type.rawName, u"char");
    EXPECT_EQ(declared.type.pointerDepth, 3u);
    EXPECT_EQ(declared.name, u"name");
    EXPECT_EQ(declared.arrayCount, 1u);
}

TEST(PatternGrammar, SignednessFollowsTheNormalisedName)
{
    EXPECT_TRUE(Declare(u"char c").type.isSigned);
    EXPECT_FALSE(Declare(u"UInt16_t c").type.isSigned);
    EXPECT_FALSE(Declare(u"unsigned long c").type.isSigned);
    EXPECT_FALSE(Declare(u"Float c").type.isSigned);
    EXPECT_FALSE(Declare(u"double c").type.isSigned);
    EXPECT_FALSE(Declare(u"void c").type.isSigned);
    EXPECT_TRUE(Declare(u"MyStruct c").type.isSigned);
    EXPECT_TRUE(Declare(u"long double c").type.isSigned);
}

TEST(PatternGrammar, MemberRemembersItsFirstTokenForLaterErrors)
{
    EXPECT_EQ(LoadPatternError(u"struct S {\n\t\tvoid   x;\n};"), Positioned(2, 3, u"Unsupported zero-sized member type: x", u"\t\tvoid   x;"));
}

} // namespace
} // namespace tlm
