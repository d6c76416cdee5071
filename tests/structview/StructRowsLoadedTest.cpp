// Rows of patterns that go through the loader, so that layout and row building are checked together.
#include "structview/StructInfoText.h"
#include "structview/StructRows.h"

#include "PatternLoadSupport.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace tlm {
namespace {

std::vector<StructRow> LoadedRows(std::u16string_view text, std::vector<std::uint8_t> bytes, StructValueFormat format = {})
{
    StructEvalRequest request;
    request.patternFile = std::make_shared<StructPatternFile>(test::LoadPattern(text));
    request.bytes = std::move(bytes);
    request.valueFormat = format;
    return BuildStructRows(request);
}

TEST(StructRowsLoaded, AlignmentPaddingGetsARowOfItsOwn)
{
    const std::vector<StructRow> rows = LoadedRows(u"struct S { char c; int i; };", {0x41, 0xAA, 0xBB, 0xCC, 1, 0, 0, 0});
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].name, u"c");
    EXPECT_EQ(rows[0].value, u"0x41");
    EXPECT_EQ(rows[1].name, u"<padding>");
    EXPECT_EQ(rows[1].offset, u"0x1");
    EXPECT_EQ(rows[1].value, u"AA BB CC");
    EXPECT_EQ(rows[1].size, u"3");
    EXPECT_EQ(rows[2].name, u"i");
    EXPECT_EQ(rows[2].offset, u"0x4");
    EXPECT_EQ(rows[2].value, u"0x00000001");
}

TEST(StructRowsLoaded, TypeSizeDirectivesDecideTheValueForm)
{
    const char16_t* pattern = u"@sizeof_float 8 @sizeof_long_long 16 @member_align 0\n"
                              u"struct S { float f; double d; long long big; };";
    std::vector<std::uint8_t> bytes(8, 0);
    bytes[7] = 0x3F;
    bytes[6] = 0xF0;
    bytes.insert(bytes.end(), {0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xF0, 0x3F});
    for (int i = 0; i < 16; ++i)
        bytes.push_back(static_cast<std::uint8_t>(i));
    const std::vector<StructRow> rows = LoadedRows(pattern, bytes);
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].value, u"0x3FF0000000000000");
    EXPECT_EQ(rows[1].value, u"1 (0x3FF0000000000000)");
    EXPECT_EQ(rows[2].value, u"0x00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F");
    EXPECT_EQ(rows[2].size, u"16");
}

TEST(StructRowsLoaded, PointersFollowThePointerSizeDirective)
{
    const std::vector<StructRow> rows
        = LoadedRows(u"@pointer_size 2 struct Node { Node* next; char* name; };", {0x34, 0x12, 0x78, 0x56});
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].value, u"0x1234");
    EXPECT_EQ(rows[0].size, u"2");
    EXPECT_EQ(rows[1].value, u"0x5678");
}

TEST(StructRowsLoaded, AnAliasedNestedStructExpandsUnderItsDisplayName)
{
    const std::vector<StructRow> rows = LoadedRows(
        u"typedef struct PointTag { uint16_t x; uint16_t y; } Point;\n"
        u"struct Shape { uint8_t kind; Point at; char label[]; };\n"
        u"@entry struct Shape",
        {7, 0, 1, 0, 2, 0, 'o', 'k'}, StructValueFormat {1, 0, 1});
    ASSERT_EQ(rows.size(), 6u);
    EXPECT_EQ(rows[1].name, u"<padding>");
    EXPECT_EQ(rows[2].name, u"at : Point");
    EXPECT_EQ(rows[2].offset, u"0x2");
    EXPECT_EQ(rows[3].name, u"  x");
    EXPECT_EQ(rows[3].value, u"1");
    EXPECT_EQ(rows[4].value, u"2");
    EXPECT_EQ(rows[5].name, u"label");
    EXPECT_EQ(rows[5].value, u"\"ok\"");
    EXPECT_EQ(rows[5].size, u"1+");
}

TEST(StructRowsLoaded, AFlexibleTailReachedThroughAStructFieldIsFound)
{
    const StructPatternFile file = test::LoadPattern(u"struct Tail { int n; char data[]; };\n"
                                                     u"struct Head { int kind; Tail tail; };\n"
                                                     u"@entry Head");
    const ResolvedStruct* head = test::FindStruct(file, u"Head");
    ASSERT_NE(head, nullptr);
    EXPECT_TRUE(EndsInFlexibleArray(file, *head));
    EXPECT_EQ(BuildStructInfoText(file).substr(0, 14), u"entry = Head\r\n");
}

} // namespace
} // namespace tlm
