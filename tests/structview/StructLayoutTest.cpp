#include "PatternLoadSupport.h"

#include <gtest/gtest.h>

#include <vector>

namespace tlm {
namespace {

using namespace tlm::test;

struct Place {
    std::u16string name;
    std::uint64_t offset;
    std::uint64_t totalSize;

    bool operator==(const Place&) const = default;
};

std::vector<Place> Places(const ResolvedStruct& resolved)
{
    std::vector<Place> places;
    for (const ResolvedMember& member : resolved.members)
        places.push_back(Place{member.name, member.offset, member.totalSize});
    return places;
}

ResolvedStruct OnlyStruct(std::u16string_view text)
{
    const auto file = LoadPattern(text);
    return file.structs.size() == 1 ? file.structs[0] : ResolvedStruct{};
}

TEST(StructLayout, CharThenIntGetsThreeBytesOfPaddingBeforeTheInt)
{
    const auto s = OnlyStruct(u"struct S { char c; int i; };");
    EXPECT_EQ(Places(s), (std::vector<Place>{{u"c", 0, 1}, {u"<padding>", 1, 3}, {u"i", 4, 4}}));
    EXPECT_EQ(s.size, 8u);
    EXPECT_EQ(s.alignment, 4u);
    const ResolvedMember& padding = s.members[1];
    EXPECT_TRUE(padding.isPadding);
    EXPECT_EQ(padding.typeName, u"padding");
    EXPECT_EQ(padding.normalizedTypeName, u"padding");
    EXPECT_EQ(padding.kind, ResolvedValueKind::Aggregate);
    EXPECT_EQ(padding.elementSize, 1u);
    EXPECT_EQ(padding.elementCount, 3u);
}

TEST(StructLayout, IntThenCharEndsInTrailingPadding)
{
    const auto s = OnlyStruct(u"struct S { int i; char c; };");
    EXPECT_EQ(Places(s), (std::vector<Place>{{u"i", 0, 4}, {u"c", 4, 1}, {u"<padding>", 5, 3}}));
    EXPECT_EQ(s.size, 8u);
}

TEST(StructLayout, PackedLayoutHasNoPaddingAndAnUnroundedSize)
{
    const auto s = OnlyStruct(u"@member_align 0\nstruct S { char c; int i; };");
    EXPECT_EQ(Places(s), (std::vector<Place>{{u"c", 0, 1}, {u"i", 1, 4}}));
    EXPECT_EQ(s.size, 5u);
    EXPECT_EQ(s.alignment, 1u);
}

TEST(StructLayout, MemberAlignFourPutsADoubleAfterACharAtOffsetFour)
{
    const auto s = OnlyStruct(u"@member_align 4\nstruct S { char c; double d; };");
    EXPECT_EQ(Places(s), (std::vector<Place>{{u"c", 0, 1}, {u"<padding>", 1, 3}, {u"d", 4, 8}}));
    EXPECT_EQ(s.size, 12u);
    EXPECT_EQ(s.alignment, 4u);
}

TEST(StructLayout, FlexibleCharArrayAfterAnIntLeavesTheSizeAtFour)
{
    const auto s = OnlyStruct(u"struct S { int n; char data[]; };");
    EXPECT_EQ(s.size, 4u);
    ASSERT_EQ(s.members.size(), 2u);
    const ResolvedMember& data = s.members[1];
    EXPECT_TRUE(data.isFlexibleArray);
    EXPECT_EQ(data.offset, 4u);
    EXPECT_EQ(data.totalSize, 0u);
    EXPECT_EQ(data.elementCount, 0u);
    EXPECT_EQ(data.elementSize, 1u);
}

TEST(StructLayout, FlexibleIntArrayAfterACharGetsPaddingAndSizeFour)
{
    const auto s = OnlyStruct(u"struct S { char c; int data[]; };");
    EXPECT_EQ(Places(s), (std::vector<Place>{{u"c", 0, 1}, {u"<padding>", 1, 3}, {u"data", 4, 0}}));
    EXPECT_EQ(s.size, 4u);
}

TEST(StructLayout, FlexibleArrayAsTheOnlyMemberGivesSizeZero)
{
    const auto s = OnlyStruct(u"struct S { uint32_t data[]; };");
    EXPECT_EQ(s.size, 0u);
    EXPECT_EQ(s.alignment, 4u);
    EXPECT_EQ(Places(s), (std::vector<Place>{{u"data", 0, 0}}));
}

TEST(StructLayout, VoidPointerIsValidVoidIsRefusedFlexibleVoidPasses)
{
    const auto pointer = OnlyStruct(u"struct S { void* p; };");
    EXPECT_EQ(pointer.size, 8u);
    EXPECT_TRUE(pointer.members[0].isPointer);
    EXPECT_FALSE(pointer.members[0].isSigned);
    EXPECT_EQ(LoadPatternError(u"struct S { void x; };"),
        Positioned(1, 12, u"Unsupported zero-sized member type: x", u"struct S { void x; };"));
    const auto flexible = OnlyStruct(u"struct S { void x[]; };");
    EXPECT_EQ(flexible.size, 0u);
    EXPECT_EQ(flexible.members[0].elementSize, 0u);
}

TEST(StructLayout, UseMayPrecedeDefinition)
{
    const auto file = LoadPattern(u"struct B { A a; };\nstruct A { int x; };\n@entry B");
    ASSERT_EQ(file.structs.size(), 2u);
    EXPECT_EQ(file.structs[0].name, u"B");
    EXPECT_EQ(file.structs[0].size, 4u);
    EXPECT_EQ(file.structs[0].members[0].structName, u"A");
    EXPECT_EQ(file.structs[0].members[0].kind, ResolvedValueKind::Aggregate);
    EXPECT_EQ(file.entryStructName, u"B");
}

TEST(StructLayout, UnknownTypeInsideALaterStructIsReportedThroughItsUser)
{
    EXPECT_EQ(LoadPatternError(u"struct A { B b; };\nstruct B { Missing m; };"), u"Failed to resolve struct size for type: B");
}

TEST(StructLayout, UnknownTypeInAnEarlierStructIsReportedInItsOwnWords)
{
    EXPECT_EQ(LoadPatternError(u"struct B { Missing m; };\nstruct A { B b; };"), u"Unknown type: Missing");
}

TEST(StructLayout, TwoStructsWithoutEntryFailOnlyAfterBothResolved)
{
    EXPECT_EQ(LoadPatternError(u"struct A { int a; };\nstruct B { int b; };"), u"@entry is required when multiple structs are defined.");
    EXPECT_EQ(LoadPatternError(u"struct A { int a; };\nstruct B { Missing b; };"), u"Unknown type: Missing");
}

TEST(StructLayout, DirectRecursionIsReportedThroughTheStructName)
{
    EXPECT_EQ(LoadPatternError(u"struct A { A a; };"), u"Failed to resolve struct size for type: A");
    EXPECT_EQ(LoadPatternError(u"struct A { B b; };\nstruct B { struct A a; };"), u"Failed to resolve struct size for type: B");
}

TEST(StructLayout, PointerToItselfOrToNothingIsValid)
{
    const auto node = OnlyStruct(u"struct Node { Node* next; int value; };");
    EXPECT_EQ(node.size, 16u);
    const auto missing = OnlyStruct(u"@pointer_size 4\nstruct S { Missing* p; };");
    EXPECT_EQ(missing.size, 4u);
    EXPECT_EQ(missing.members[0].typeName, u"Missing");
    EXPECT_EQ(missing.members[0].kind, ResolvedValueKind::Integer);
}

TEST(StructLayout, FlexibleArrayBeforeTheLastMemberIsRefusedAtTheMember)
{
    EXPECT_EQ(LoadPatternError(u"struct S {\n  char data[];\n  int n;\n};"),
        Positioned(2, 3, u"Flexible array member must be the last member.", u"  char data[];"));
}

TEST(StructLayout, EmptyStructIsValidButNotAsAMember)
{
    const auto file = LoadPattern(u"struct E { };");
    EXPECT_EQ(file.structs[0].size, 0u);
    EXPECT_EQ(file.structs[0].alignment, 1u);
    EXPECT_TRUE(file.structs[0].members.empty());
    EXPECT_EQ(LoadPatternError(u"struct E { };\nstruct S { E e; };\n@entry S"),
        Positioned(2, 12, u"Unsupported zero-sized member type: e", u"struct S { E e; };"));
}

TEST(StructLayout, BuiltinSizesFollowTheDirectivesAndFixedWidthsDoNot)
{
    const auto s = OnlyStruct(u"@sizeof_short 8 @sizeof_int 2 @sizeof_long 1 @sizeof_long_long 4 @sizeof_float 2 "
                              u"@sizeof_double 4 @member_align 0\n"
                              u"struct S { short a; int b; long c; long long d; float e; double f; "
                              u"int16_t g; uint32_t h; int64_t i; unsigned char j; signed long long k; };");
    const std::vector<std::uint64_t> sizes = {8, 2, 1, 4, 2, 4, 2, 4, 8, 1, 4};
    ASSERT_EQ(s.members.size(), sizes.size());
    for (std::size_t i = 0; i < sizes.size(); ++i)
        EXPECT_EQ(s.members[i].totalSize, sizes[i]) << i;
}

TEST(StructLayout, OnlyTheListedSpellingsAreBuiltIn)
{
    EXPECT_EQ(LoadPatternError(u"struct S { short int x; };"), u"Unknown type: short int");
    EXPECT_EQ(LoadPatternError(u"struct S { unsigned x; };"), u"Unknown type: unsigned");
    EXPECT_EQ(LoadPatternError(u"struct S { bool x; };"), u"Unknown type: bool");
    EXPECT_EQ(LoadPatternError(u"struct S { const int x; };"), u"Unknown type: const int");
    EXPECT_EQ(LoadPatternError(u"struct S { size_t x; };"), u"Unknown type: size_t");
}

TEST(StructLayout, KindsAndSignednessOfBuiltins)
{
    const auto s = OnlyStruct(u"@member_align 0 struct S { float f; double d; char c; uint8_t u; unsigned long ul; };");
    EXPECT_EQ(s.members[0].kind, ResolvedValueKind::Float);
    EXPECT_EQ(s.members[1].kind, ResolvedValueKind::Double);
    EXPECT_EQ(s.members[2].kind, ResolvedValueKind::Integer);
    EXPECT_FALSE(s.members[0].isSigned);
    EXPECT_FALSE(s.members[1].isSigned);
    EXPECT_TRUE(s.members[2].isSigned);
    EXPECT_FALSE(s.members[3].isSigned);
    EXPECT_FALSE(s.members[4].isSigned);
}

TEST(StructLayout, SixteenByteLongLongAlignsToSixteenOnlyUpToMemberAlign)
{
    const auto capped = OnlyStruct(u"@sizeof_long_long 16\nstruct S { char c; long long x; };");
    EXPECT_EQ(capped.members.back().offset, 8u);
    EXPECT_EQ(capped.size, 24u);
    EXPECT_EQ(capped.alignment, 8u);
}

TEST(StructLayout, TypedefsResolveToTheirTargetWithPointersAdded)
{
    const auto file = LoadPattern(u"@pointer_size 4\ntypedef int* ip;\ntypedef ip alias;\ntypedef uint16_t word;\n"
                                  u"struct S { ip a; ip* b; word c; alias d; };");
    const auto& members = file.structs[0].members;
    EXPECT_EQ(members[0].totalSize, 4u);
    EXPECT_EQ(members[0].typeName, u"ip");
    EXPECT_FALSE(members[0].isPointer); // the member itself was written without a star
    EXPECT_EQ(members[1].totalSize, 4u);
    EXPECT_TRUE(members[1].isPointer);
    EXPECT_EQ(members[2].totalSize, 2u);
    EXPECT_FALSE(members[2].isSigned);
    EXPECT_EQ(members[4].totalSize, 4u);
}

TEST(StructLayout, TypedefOfAStructNamesTheStruct)
{
    const auto file = LoadPattern(u"typedef struct Point P;\nstruct Point { int x; int y; } PointAlias;\nstruct S { P p; char c; };\n@entry S");
    const auto* s = FindStruct(file, u"S");
    ASSERT_NE(s, nullptr);
    EXPECT_EQ(s->members[0].structName, u"PointAlias");
    EXPECT_EQ(s->members[0].typeName, u"P");
    EXPECT_EQ(s->members[0].totalSize, 8u);
    EXPECT_EQ(s->size, 12u);
}

TEST(StructLayout, ArraysOfStructsMultiplyTheSize)
{
    const auto file = LoadPattern(u"struct P { short x; char y; }; struct S { P points[3]; }; @entry S");
    const auto* s = FindStruct(file, u"S");
    ASSERT_NE(s, nullptr);
    EXPECT_EQ(s->members[0].elementSize, 4u);
    EXPECT_EQ(s->members[0].elementCount, 3u);
    EXPECT_EQ(s->members[0].totalSize, 12u);
    EXPECT_EQ(s->alignment, 2u);
}

TEST(StructLayout, TypedefCycleIsRefusedAtTheMemberThatUsesIt)
{
    EXPECT_EQ(LoadPatternError(u"typedef a b;\ntypedef b a;\nstruct S {\n  a x;\n};"),
        Positioned(4, 3, u"Typedef refers back to itself: a", u"  a x;"));
    EXPECT_EQ(LoadPatternError(u"typedef self self;\nstruct S { self x; };"),
        Positioned(2, 12, u"Typedef refers back to itself: self", u"struct S { self x; };"));
}

TEST(StructLayout, UnusedTypedefCycleIsHarmless)
{
    EXPECT_EQ(OnlyStruct(u"typedef a b;\ntypedef b a;\nstruct S { int x; };").size, 4u);
}

TEST(StructLayout, PointerThroughATypedefCycleNeedsNoTarget)
{
    EXPECT_EQ(OnlyStruct(u"typedef a b;\ntypedef b a;\nstruct S { a* x; };").size, 8u);
    EXPECT_EQ(OnlyStruct(u"typedef node* node;\nstruct S { node x; };").size, 8u);
}

TEST(StructLayout, EntryNamesTheStructByTagAliasOrStructKeyword)
{
    const std::u16string structs = u"struct Tag { int a; } Alias;\nstruct Other { char b; };\n";
    EXPECT_EQ(LoadPattern(structs + u"@entry Tag").entryStructName, u"Alias");
    EXPECT_EQ(LoadPattern(structs + u"@entry struct alias").entryStructName, u"Alias");
    EXPECT_EQ(LoadPattern(structs + u"@entry OTHER").entryStructName, u"Other");
}

TEST(StructLayout, EntryMustNameAStructNotATypedef)
{
    EXPECT_EQ(LoadPatternError(u"struct A { int a; };\ntypedef struct A T;\n@entry T"), u"@entry refers to an undefined struct.");
    EXPECT_EQ(LoadPatternError(u"struct A { int a; };\n@entry B"), u"@entry refers to an undefined struct.");
}

TEST(StructLayout, SingleStructIsTheImplicitEntry)
{
    const auto file = LoadPattern(u"struct Only { int a; };");
    EXPECT_EQ(file.entryStructName, u"Only");
    EXPECT_TRUE(file.entryIsImplicit);
    EXPECT_FALSE(LoadPattern(u"struct Only { int a; }; @entry Only").entryIsImplicit);
}

TEST(StructLayout, FileWithoutStructsHasNoDefinition)
{
    EXPECT_EQ(LoadPatternError(u""), u"No struct definition was found.");
    EXPECT_EQ(LoadPatternError(u"// nothing\n@sizeof_int 2\ntypedef int word;\n"), u"No struct definition was found.");
}

TEST(StructLayout, NestedStructIsLaidOutOnce)
{
    const auto file = LoadPattern(u"struct In { char c; int i; };\nstruct Out { In a; char c; In b; };\n@entry Out");
    ASSERT_EQ(file.structs.size(), 2u);
    const auto* out = FindStruct(file, u"Out");
    ASSERT_NE(out, nullptr);
    EXPECT_EQ(Places(*out), (std::vector<Place>{{u"a", 0, 8}, {u"c", 8, 1}, {u"<padding>", 9, 3}, {u"b", 12, 8}}));
    EXPECT_EQ(out->size, 20u);
}

TEST(StructLayout, ArraySizeBeyondSixtyFourBitsIsRefused)
{
    EXPECT_EQ(LoadPatternError(u"struct S { int a[9223372036854775807]; };"),
        Positioned(1, 12, u"Array is too large for a 64-bit size.", u"struct S { int a[9223372036854775807]; };"));
    EXPECT_EQ(LoadPatternError(u"struct S { char a[18446744073709551615]; char b; };"),
        Positioned(1, 42, u"Struct is too large for a 64-bit size.", u"struct S { char a[18446744073709551615]; char b; };"));
    EXPECT_EQ(LoadPatternError(u"struct S { char a[18446744073709551615]; int b[]; };"),
        Positioned(1, 42, u"Struct is too large for a 64-bit size.", u"struct S { char a[18446744073709551615]; int b[]; };"));
    EXPECT_EQ(LoadPatternError(u"struct S { short b; char a[18446744073709551614]; };"),
        Positioned(1, 21, u"Struct is too large for a 64-bit size.", u"struct S { short b; char a[18446744073709551614]; };"));
}

TEST(StructLayout, LargestArraysThatFitAreAccepted)
{
    EXPECT_EQ(OnlyStruct(u"struct S { char a[18446744073709551615]; };").size, 18446744073709551615ull);
    EXPECT_EQ(OnlyStruct(u"struct S { int a[4611686018427387903]; };").size, 18446744073709551612ull);
}

} // namespace
} // namespace tlm
