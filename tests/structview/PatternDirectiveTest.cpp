#include "PatternLoadSupport.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

using namespace tlm::test;

constexpr std::u16string_view OneStruct = u"struct S { int x; };\n";

TEST(PatternDirective, DefaultsApplyWithoutDirectives)
{
    const auto file = LoadPattern(OneStruct);
    EXPECT_EQ(file.sizeofShort, 2u);
    EXPECT_EQ(file.sizeofInt, 4u);
    EXPECT_EQ(file.sizeofLong, 8u);
    EXPECT_EQ(file.sizeofLongLong, 8u);
    EXPECT_EQ(file.sizeofFloat, 4u);
    EXPECT_EQ(file.sizeofDouble, 8u);
    EXPECT_EQ(file.pointerSize, 8u);
    EXPECT_EQ(file.memberAlign, 8u);
}

TEST(PatternDirective, EveryDirectiveStoresItsValue)
{
    const auto file = LoadPattern(u"@sizeof_short 4 @sizeof_int 8 @sizeof_long 4 @sizeof_long_long 16\n"
                                  u"@sizeof_float 8 @sizeof_double 16 @pointer_size 2 @member_align 4\n"
                                  u"struct S { int x; };");
    EXPECT_EQ(file.sizeofShort, 4u);
    EXPECT_EQ(file.sizeofInt, 8u);
    EXPECT_EQ(file.sizeofLong, 4u);
    EXPECT_EQ(file.sizeofLongLong, 16u);
    EXPECT_EQ(file.sizeofFloat, 8u);
    EXPECT_EQ(file.sizeofDouble, 16u);
    EXPECT_EQ(file.pointerSize, 2u);
    EXPECT_EQ(file.memberAlign, 4u);
}

TEST(PatternDirective, SemicolonAfterADirectiveIsAnUnsupportedTopLevelDeclaration)
{
    EXPECT_EQ(LoadPatternError(u"@sizeof_int 4;\nstruct S { int x; };"),
        u"Line 1, Col 14: Unsupported top-level declaration.\r\n@sizeof_int 4;\r\n             ^");
}

TEST(PatternDirective, ValueOutsideTheSetIsRefusedWithTheCaretUnderTheAt)
{
    EXPECT_EQ(LoadPatternError(u"struct S { int x; };\n  @sizeof_int 3\n"),
        u"Line 2, Col 3: Directive value is not allowed.\r\n  @sizeof_int 3\r\n  ^");
}

TEST(PatternDirective, UnknownDirectiveWithANumberIsAValueNotAllowed)
{
    EXPECT_EQ(LoadPatternError(u"@bogus 4"), Positioned(1, 1, u"Directive value is not allowed.", u"@bogus 4"));
}

TEST(PatternDirective, UnknownDirectiveWithoutANumberExpectsANumber)
{
    EXPECT_EQ(LoadPatternError(u"@bogus x"), Positioned(1, 8, u"Expected numeric directive value.", u"@bogus x"));
}

TEST(PatternDirective, NumberBeyondSixtyFourBitsIsAnInvalidDirectiveNumber)
{
    EXPECT_EQ(LoadPatternError(u"@sizeof_int 99999999999999999999"),
        Positioned(1, 13, u"Invalid directive number.", u"@sizeof_int 99999999999999999999"));
}

TEST(PatternDirective, MemberAlignTakesZeroButNotOne)
{
    EXPECT_EQ(LoadPattern(u"@member_align 0\nstruct S { int x; };").memberAlign, 0u);
    EXPECT_EQ(LoadPatternError(u"@member_align 1\nstruct S { int x; };"),
        Positioned(1, 1, u"Directive value is not allowed.", u"@member_align 1"));
}

TEST(PatternDirective, AllowedSetsAreExact)
{
    EXPECT_EQ(LoadPatternError(u"@member_align 2"), Positioned(1, 1, u"Directive value is not allowed.", u"@member_align 2"));
    EXPECT_EQ(LoadPatternError(u"@member_align 16"), Positioned(1, 1, u"Directive value is not allowed.", u"@member_align 16"));
    EXPECT_EQ(LoadPatternError(u"@sizeof_double 2"), Positioned(1, 1, u"Directive value is not allowed.", u"@sizeof_double 2"));
    EXPECT_EQ(LoadPatternError(u"@sizeof_double 12"), Positioned(1, 1, u"Directive value is not allowed.", u"@sizeof_double 12"));
    EXPECT_EQ(LoadPatternError(u"@sizeof_float 1"), Positioned(1, 1, u"Directive value is not allowed.", u"@sizeof_float 1"));
    EXPECT_EQ(LoadPatternError(u"@sizeof_int 16"), Positioned(1, 1, u"Directive value is not allowed.", u"@sizeof_int 16"));
    EXPECT_EQ(LoadPatternError(u"@pointer_size 0"), Positioned(1, 1, u"Directive value is not allowed.", u"@pointer_size 0"));
    EXPECT_EQ(LoadPattern(u"@sizeof_float 2 @sizeof_long_long 16 @pointer_size 1 struct S { char c; };").sizeofFloat, 2u);
}

TEST(PatternDirective, DirectiveNamesAreCaseInsensitive)
{
    const auto file = LoadPattern(u"@SIZEOF_INT 2 @Pointer_Size 4 struct S { int x; };");
    EXPECT_EQ(file.sizeofInt, 2u);
    EXPECT_EQ(file.pointerSize, 4u);
}

TEST(PatternDirective, CapitalisedEntryStructBehavesAsLowerCase)
{
    const std::u16string structs = u"struct Foo { int a; };\nstruct Bar { char b; };\n";
    const auto upper = LoadPattern(structs + u"@Entry Struct Foo");
    const auto lower = LoadPattern(structs + u"@entry struct Foo");
    EXPECT_EQ(upper.entryStructName, u"Foo");
    EXPECT_FALSE(upper.entryIsImplicit);
    EXPECT_EQ(lower.entryStructName, upper.entryStructName);
    EXPECT_EQ(LoadPattern(structs + u"@ENTRY foo").entryStructName, u"Foo");
}

TEST(PatternDirective, DirectiveGivenTwiceTakesItsLastValue)
{
    const auto file = LoadPattern(u"@sizeof_int 2\nstruct A { int x; };\nstruct B { int y; };\n@entry A\n@sizeof_int 8\n@entry B");
    EXPECT_EQ(file.sizeofInt, 8u);
    EXPECT_EQ(file.entryStructName, u"B");
    // Sizes apply after the whole file is read, so the later value sizes the earlier struct.
    EXPECT_EQ(file.structs[0].size, 8u);
}

TEST(PatternDirective, AtWithoutANameExpectsADirectiveName)
{
    EXPECT_EQ(LoadPatternError(u"struct S { int x; };\n @ 4"), Positioned(2, 2, u"Expected directive name.", u" @ 4"));
    EXPECT_EQ(LoadPatternError(u"@"), Positioned(1, 1, u"Expected directive name.", u"@"));
}

TEST(PatternDirective, EntryStructWithoutANameIsRefusedAtTheNextToken)
{
    EXPECT_EQ(LoadPatternError(u"@entry struct ;"), Positioned(1, 15, u"Expected struct name after @entry struct.", u"@entry struct ;"));
    EXPECT_EQ(LoadPatternError(u"@entry struct"), Positioned(1, 14, u"Expected struct name after @entry struct.", u"@entry struct"));
}

TEST(PatternDirective, EntryWithoutANameIsRefusedAtTheNextToken)
{
    EXPECT_EQ(LoadPatternError(u"@entry 5"), Positioned(1, 8, u"Expected type name after @entry.", u"@entry 5"));
    EXPECT_EQ(LoadPatternError(u"@entry\n"), u"Line 2, Col 1: Expected type name after @entry.");
}

TEST(PatternDirective, ErrorOnAnEmptyLineHasNoQuotedLineAndNoCaret)
{
    EXPECT_EQ(LoadPatternError(u"struct A { int x; }\n\n"), u"Line 3, Col 1: Expected ';' after struct declaration.");
}

TEST(PatternDirective, DirectivesMayFollowTheStructsTheyAffect)
{
    const auto file = LoadPattern(u"struct S { short a; long b; };\n@sizeof_short 4\n@sizeof_long 4\n");
    EXPECT_EQ(file.structs[0].size, 8u);
    EXPECT_EQ(file.structs[0].members[1].offset, 4u);
}

} // namespace
} // namespace tlm
