#include "structview/StructRows.h"

#include "StructRowTestSupport.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tlm {
namespace {

using namespace tlm::test;

std::vector<std::uint8_t> Counting(std::size_t count)
{
    std::vector<std::uint8_t> bytes(count);
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<std::uint8_t>(i);
    return bytes;
}

std::vector<ResolvedMember> OneByteMembers(std::size_t count)
{
    std::vector<ResolvedMember> members;
    for (std::size_t i = 0; i < count; ++i)
        members.push_back(Scalar(u"m" + std::u16string(1, static_cast<char16_t>(u'a' + i % 26)), u"uint8_t", i, 1));
    return members;
}

void ExpectClosingRow(const StructRow& row)
{
    EXPECT_EQ(row.name, u"...");
    EXPECT_EQ(row.offset, u"...");
    EXPECT_EQ(row.type, u"");
    EXPECT_EQ(row.value, u"...");
    EXPECT_EQ(row.size, u"...");
}

// --- Behaviours singled out as edge cases ---

TEST(StructRows, AnEntryStructWithNoMembersGivesNoRows)
{
    const auto pattern = Pattern({Struct(u"Empty", {}, 0)});
    EXPECT_TRUE(BuildStructRows(Request(pattern, Counting(16))).empty());
}

TEST(StructRows, TwoHundredFiftySixMembersFitAndOneMoreIsCutWithAClosingRow)
{
    const auto full = Pattern({Struct(u"Full", OneByteMembers(256), 256)});
    const std::vector<StructRow> fullRows = BuildStructRows(Request(full, Counting(300)));
    ASSERT_EQ(fullRows.size(), 256u);
    EXPECT_EQ(fullRows.back().offset, u"0xFF");
    EXPECT_EQ(fullRows.back().value, u"0xFF");

    const auto over = Pattern({Struct(u"Over", OneByteMembers(257), 257)});
    const std::vector<StructRow> overRows = BuildStructRows(Request(over, Counting(300)));
    ASSERT_EQ(overRows.size(), 257u);
    EXPECT_EQ(overRows[255].offset, u"0xFF");
    ExpectClosingRow(overRows[256]);
}

TEST(StructRows, AHeaderRowCountsTowardsTheCapSoANestedStructIsCutInTheMiddle)
{
    std::vector<ResolvedMember> entryMembers = OneByteMembers(250);
    entryMembers.push_back(StructField(u"inner", u"Inner", 250, 10));
    const auto pattern = Pattern({Struct(u"Outer", entryMembers, 260), Struct(u"Inner", OneByteMembers(10), 10)});

    const std::vector<StructRow> rows = BuildStructRows(Request(pattern, Counting(300)));
    ASSERT_EQ(rows.size(), 257u);
    EXPECT_EQ(rows[250].name, u"inner : Inner");
    // 250 plain rows, the header, then five of the ten children.
    EXPECT_EQ(rows[255].name, u"  me");
    EXPECT_EQ(rows[255].offset, u"0xFE");
    ExpectClosingRow(rows[256]);
}

TEST(StructRows, ACharArrayHoldingACStringShowsTextInAsciiModeAndBytesInHexMode)
{
    const auto pattern = Pattern({Struct(u"S", {Array(u"name", u"char", 0, 1, 4)}, 4)});
    StructEvalRequest request = Request(pattern, {'a', 'b', 0x00, 0xEE});

    request.valueFormat.byteArrayFormat = 1;
    EXPECT_EQ(BuildStructRows(request).at(0).value, u"\"ab\"");
    request.valueFormat.byteArrayFormat = 0;
    EXPECT_EQ(BuildStructRows(request).at(0).value, u"61 62 00 EE");
}

TEST(StructRows, AnIntArrayInAsciiModeStillShowsHexBytes)
{
    const auto pattern = Pattern({Struct(u"S", {Array(u"a", u"int", 0, 4, 2)}, 8)});
    StructEvalRequest request = Request(pattern, {'A', 'B', 'C', 'D', 'E', 'F', 'G', 'H'});
    request.valueFormat.byteArrayFormat = 1;
    EXPECT_EQ(BuildStructRows(request).at(0).value, u"41 42 43 44 45 46 47 48");
}

TEST(StructRows, AnArrayLongerThanSixteenBytesShowsSixteenAndAnEllipsis)
{
    const auto pattern = Pattern({Struct(u"S", {Array(u"a", u"int", 0, 4, 5)}, 20)});
    const std::vector<StructRow> rows = BuildStructRows(Request(pattern, Counting(20)));
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].value, u"00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F ...");
    EXPECT_EQ(rows[0].size, u"20");
}

TEST(StructRows, AFlexibleCharArrayAtTheEndOfTheBytesShowsZeroBytesAndSizeOnePlus)
{
    const auto pattern = Pattern({Struct(u"S", {Scalar(u"n", u"int", 0, 4), Flexible(u"data", u"char", 4, 1)}, 4)});
    for (std::uint32_t asciiMode : {0u, 1u}) {
        StructEvalRequest request = Request(pattern, {1, 0, 0, 0});
        request.valueFormat.byteArrayFormat = asciiMode;
        const std::vector<StructRow> rows = BuildStructRows(request);
        ASSERT_EQ(rows.size(), 2u);
        EXPECT_EQ(rows[1].value, u"0 bytes");
        EXPECT_EQ(rows[1].size, u"1+");
        EXPECT_EQ(rows[1].offset, u"0x4");
    }
}

TEST(StructRows, AFlexibleMemberOfAZeroSizedElementShowsZeroPlusAtTopLevelAsWhenNested)
{
    const auto pattern = Pattern({Struct(u"Outer", {StructField(u"in", u"Inner", 0, 4), Flexible(u"none", u"void", 4, 0)}, 4),
        Struct(u"Inner", {Scalar(u"n", u"int", 0, 4), Flexible(u"rest", u"void", 4, 0)}, 4)});
    const std::vector<StructRow> rows = BuildStructRows(Request(pattern, Counting(6)));
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_EQ(rows[2].name, u"  rest");
    EXPECT_EQ(rows[2].size, u"0+");
    EXPECT_EQ(rows[3].name, u"none");
    EXPECT_EQ(rows[3].size, u"0+");
    EXPECT_EQ(rows[3].value, u"04 05");
}

TEST(StructRows, AnOffsetPastTheEndShowsTheUnavailableTextOnEveryValueButKeepsTheRows)
{
    const auto pattern = Pattern({Struct(u"Outer",
                                      {Scalar(u"a", u"int", 0, 4), StructField(u"in", u"Inner", 4, 4), Padding(8, 2),
                                          Flexible(u"tail", u"char", 10, 1)},
                                      10),
        Struct(u"Inner", {Scalar(u"x", u"uint16_t", 0, 2), Padding(2, 2)}, 4)});
    StructEvalRequest request = Request(pattern, {}, 0x1000);
    const std::vector<StructRow> rows = BuildStructRows(request);
    ASSERT_EQ(rows.size(), 6u);
    EXPECT_EQ(rows[0].value, u"n/a");
    EXPECT_EQ(rows[1].name, u"in : Inner");
    EXPECT_EQ(rows[1].value, u"");
    EXPECT_EQ(rows[2].value, u"n/a");
    EXPECT_EQ(rows[3].value, u"n/a");
    EXPECT_EQ(rows[4].value, u"n/a");
    EXPECT_EQ(rows[5].value, u"n/a");
    EXPECT_EQ(rows[5].offset, u"0x100A");
}

TEST(StructRows, AnEmptyUnavailableTextGivesADash)
{
    const auto pattern = Pattern({Struct(u"S", {Scalar(u"a", u"int", 0, 4)}, 4)});
    StructEvalRequest request = Request(pattern, {1, 2});
    request.unavailableText.clear();
    EXPECT_EQ(BuildStructRows(request).at(0).value, u"-");
}

TEST(StructRows, AFloatHoldingOneShowsItsHexInTheChosenByteOrder)
{
    const auto pattern = Pattern({Struct(u"S", {Scalar(u"f", u"float", 0, 4, ResolvedValueKind::Float)}, 4)});
    StructEvalRequest request = Request(pattern, {0x00, 0x00, 0x80, 0x3F});
    EXPECT_EQ(BuildStructRows(request).at(0).value, u"1 (0x3F800000)");
    request.valueFormat.endian = 1;
    EXPECT_EQ(BuildStructRows(request).at(0).value, u"1 (0x0000803F)");
}

TEST(StructRows, APointerShowsAsAnIntegerOfPointerSize)
{
    auto pattern = Pattern({Struct(u"S", {Pointer(u"p", u"Node", 0, 4), Pointer(u"q", u"char", 4, 4)}, 8)});
    pattern->pointerSize = 4;
    const std::vector<StructRow> rows = BuildStructRows(Request(pattern, {0x78, 0x56, 0x34, 0x12, 1, 0, 0, 0}));
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].value, u"0x12345678");
    EXPECT_EQ(rows[0].size, u"4");
    EXPECT_EQ(rows[1].value, u"0x00000001");
}

// --- Further rules of the rows ---

TEST(StructRows, NoPatternGivesNoRows)
{
    EXPECT_TRUE(BuildStructRows(Request(nullptr, Counting(8))).empty());
}

TEST(StructRows, AnEntryNameThatMatchesNoStructExactlyGivesNoRows)
{
    const auto pattern = Pattern({Struct(u"Header", {Scalar(u"a", u"int", 0, 4)}, 4)}, u"header");
    EXPECT_TRUE(BuildStructRows(Request(pattern, Counting(8))).empty());
}

TEST(StructRows, TheEntryIsTheFirstStructOfItsName)
{
    const auto pattern = Pattern({Struct(u"Other", {Scalar(u"o", u"int", 0, 4)}, 4),
                                     Struct(u"Twin", {Scalar(u"first", u"int", 0, 4)}, 4),
                                     Struct(u"Twin", {Scalar(u"second", u"int", 0, 4)}, 4)},
        u"Twin");
    const std::vector<StructRow> rows = BuildStructRows(Request(pattern, Counting(8)));
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].name, u"first");
}

TEST(StructRows, OffsetsAreTheBaseOffsetPlusTheMemberOffsetInUpperCaseHexadecimal)
{
    const auto pattern = Pattern({Struct(u"S", {Scalar(u"a", u"uint8_t", 0, 1), Scalar(u"b", u"uint8_t", 0x2B, 1)}, 0x2C)});
    EXPECT_EQ(BuildStructRows(Request(pattern, {}, 0)).at(0).offset, u"0x0");
    const std::vector<StructRow> rows = BuildStructRows(Request(pattern, {}, 0x1A00));
    EXPECT_EQ(rows.at(0).offset, u"0x1A00");
    EXPECT_EQ(rows.at(1).offset, u"0x1A2B");
    EXPECT_EQ(BuildStructRows(Request(pattern, {}, 0xFFFFFFFFFFFFFFFFull)).at(0).offset, u"0xFFFFFFFFFFFFFFFF");
}

TEST(StructRows, EveryRowLeavesTheTypeEmpty)
{
    const auto pattern = Pattern({Struct(u"Outer", {Scalar(u"a", u"int", 0, 4), StructField(u"in", u"Inner", 4, 4)}, 8),
        Struct(u"Inner", {Scalar(u"x", u"int", 0, 4)}, 4)});
    for (const StructRow& row : BuildStructRows(Request(pattern, Counting(8))))
        EXPECT_EQ(row.type, u"");
}

TEST(StructRows, AStructFieldExpandsIntoAHeaderAndIndentedChildrenAtTheirDocumentOffsets)
{
    const auto pattern = Pattern({Struct(u"Outer", {Scalar(u"tag", u"uint16_t", 0, 2), Padding(2, 2), StructField(u"pos", u"Point", 4, 8)}, 12),
        Struct(u"Point", {Scalar(u"x", u"uint32_t", 0, 4), Scalar(u"y", u"uint32_t", 4, 4)}, 8)});
    const std::vector<StructRow> rows = BuildStructRows(Request(pattern, Counting(12), 0x100));
    ASSERT_EQ(rows.size(), 5u);
    EXPECT_EQ(rows[0].name, u"tag");
    EXPECT_EQ(rows[0].value, u"0x0100");
    EXPECT_EQ(rows[1].name, u"<padding>");
    EXPECT_EQ(rows[1].value, u"02 03");
    EXPECT_EQ(rows[1].size, u"2");
    EXPECT_EQ(rows[2].name, u"pos : Point");
    EXPECT_EQ(rows[2].offset, u"0x104");
    EXPECT_EQ(rows[2].value, u"");
    EXPECT_EQ(rows[2].size, u"8");
    EXPECT_EQ(rows[3].name, u"  x");
    EXPECT_EQ(rows[3].offset, u"0x104");
    EXPECT_EQ(rows[3].value, u"0x07060504");
    EXPECT_EQ(rows[3].size, u"4");
    EXPECT_EQ(rows[4].name, u"  y");
    EXPECT_EQ(rows[4].offset, u"0x108");
    EXPECT_EQ(rows[4].value, u"0x0B0A0908");
}

TEST(StructRows, OnlyOneLevelExpandsAndADeeperStructFieldIsOneRowOfBytes)
{
    const auto pattern = Pattern({Struct(u"A", {StructField(u"b", u"B", 0, 4)}, 4),
        Struct(u"B", {Scalar(u"k", u"uint8_t", 0, 1), Padding(1, 1), StructField(u"c", u"C", 2, 2)}, 4),
        Struct(u"C", {Scalar(u"v", u"uint16_t", 0, 2)}, 2)});
    const std::vector<StructRow> rows = BuildStructRows(Request(pattern, {0x10, 0x20, 0x30, 0x40}));
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_EQ(rows[0].name, u"b : B");
    EXPECT_EQ(rows[1].name, u"  k");
    EXPECT_EQ(rows[2].name, u"  <padding>");
    EXPECT_EQ(rows[2].value, u"20");
    EXPECT_EQ(rows[3].name, u"  c");
    EXPECT_EQ(rows[3].value, u"30 40");
    EXPECT_EQ(rows[3].size, u"2");
}

TEST(StructRows, ANestedStructIsTheFirstOfItsNameAndMayExpandMoreThanOnce)
{
    const auto pattern = Pattern({Struct(u"Twin", {Scalar(u"first", u"uint8_t", 0, 1)}, 1),
                                     Struct(u"Twin", {Scalar(u"second", u"uint8_t", 0, 1)}, 1),
                                     Struct(u"Outer", {StructField(u"a", u"Twin", 0, 1), StructField(u"b", u"Twin", 1, 1)}, 2)},
        u"Outer");
    const std::vector<StructRow> rows = BuildStructRows(Request(pattern, {5, 6}));
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_EQ(rows[1].name, u"  first");
    EXPECT_EQ(rows[1].value, u"0x05");
    EXPECT_EQ(rows[3].name, u"  first");
    EXPECT_EQ(rows[3].value, u"0x06");
}

TEST(StructRows, AnArrayOfStructsIsOneRowOfBytes)
{
    const auto pattern = Pattern({Struct(u"A", {StructField(u"points", u"P", 0, 2, 3)}, 6),
        Struct(u"P", {Scalar(u"v", u"uint16_t", 0, 2)}, 2)});
    const std::vector<StructRow> rows = BuildStructRows(Request(pattern, Counting(6)));
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].name, u"points");
    EXPECT_EQ(rows[0].value, u"00 01 02 03 04 05");
    EXPECT_EQ(rows[0].size, u"6");
}

TEST(StructRows, AStructFieldWhoseStructIsMissingKeepsItsHeaderAlone)
{
    const auto pattern = Pattern({Struct(u"A", {StructField(u"gone", u"Gone", 0, 4), Scalar(u"after", u"uint8_t", 4, 1)}, 5)});
    const std::vector<StructRow> rows = BuildStructRows(Request(pattern, Counting(5)));
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].name, u"gone : Gone");
    EXPECT_EQ(rows[1].name, u"after");
}

TEST(StructRows, ANestedStructCutByTheEndOfTheBytesShowsEarlierChildren)
{
    const auto pattern = Pattern({Struct(u"A", {StructField(u"in", u"In", 2, 8)}, 10),
        Struct(u"In", {Scalar(u"x", u"uint32_t", 0, 4), Scalar(u"y", u"uint32_t", 4, 4)}, 8)});
    const std::vector<StructRow> rows = BuildStructRows(Request(pattern, Counting(9)));
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[1].value, u"0x05040302");
    EXPECT_EQ(rows[2].value, u"n/a");
}

TEST(StructRows, ANestedFlexibleArrayReadsTheRestOfTheBytesFromItsPlaceInTheParent)
{
    const auto pattern = Pattern({Struct(u"A", {Scalar(u"n", u"uint8_t", 0, 1), StructField(u"blob", u"Blob", 1, 1)}, 2),
        Struct(u"Blob", {Scalar(u"len", u"uint8_t", 0, 1), Flexible(u"data", u"uint16_t", 1, 2)}, 1)});
    const std::vector<StructRow> rows = BuildStructRows(Request(pattern, Counting(6)));
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_EQ(rows[3].name, u"  data");
    EXPECT_EQ(rows[3].offset, u"0x2");
    EXPECT_EQ(rows[3].value, u"02 03 04 05");
    EXPECT_EQ(rows[3].size, u"2+");
}

TEST(StructRows, AMemberWithoutANameIsNamedByItsType)
{
    ResolvedMember array = Array(u"", u"uint16_t", 0, 2, 3);
    ResolvedMember flexible = Flexible(u"", u"char", 16, 1);
    ResolvedMember single = Scalar(u"", u"int", 6, 4);
    ResolvedMember structs = StructField(u"", u"Pair", 10, 2, 3);
    const auto pattern = Pattern({Struct(u"S", {array, single, structs, flexible}, 16), Struct(u"Pair", {}, 2)});
    const std::vector<StructRow> rows = BuildStructRows(Request(pattern, Counting(16)));
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_EQ(rows[0].name, u"uint16_t[3]");
    EXPECT_EQ(rows[1].name, u"int");
    EXPECT_EQ(rows[2].name, u"Pair[3]");
    EXPECT_EQ(rows[3].name, u"char[]");
}

TEST(StructRows, AnUnnamedStructFieldStillExpandsUnderItsOwnHeader)
{
    const auto pattern = Pattern({Struct(u"S", {StructField(u"", u"Pair", 0, 2)}, 2),
        Struct(u"Pair", {Scalar(u"lo", u"uint8_t", 0, 1), Scalar(u"hi", u"uint8_t", 1, 1)}, 2)});
    const std::vector<StructRow> rows = BuildStructRows(Request(pattern, {7, 9}));
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].name, u" : Pair");
    EXPECT_EQ(rows[2].value, u"0x09");
}

TEST(StructRows, RowsFollowTheNumericBaseAndTheByteOrder)
{
    const auto pattern = Pattern({Struct(u"S", {Scalar(u"v", u"uint32_t", 0, 4)}, 4)});
    StructEvalRequest request = Request(pattern, {0x01, 0x02, 0x00, 0x00});
    request.valueFormat.numericBase = 1;
    EXPECT_EQ(BuildStructRows(request).at(0).value, u"513");
    request.valueFormat.endian = 1;
    EXPECT_EQ(BuildStructRows(request).at(0).value, u"16908288");
}

TEST(StructRows, TheResultIsTheSameForTheSameRequest)
{
    const auto pattern = Pattern({Struct(u"S", {Scalar(u"a", u"int", 0, 4), Array(u"b", u"char", 4, 1, 4)}, 8)});
    const StructEvalRequest request = Request(pattern, Counting(8));
    EXPECT_EQ(BuildStructRows(request), BuildStructRows(request));
}

// --- How far a flexible layout reaches ---

TEST(EndsInFlexibleArray, TrueWhenTheLastMemberIsAFlexibleArray)
{
    const auto pattern = Pattern({Struct(u"S", {Scalar(u"n", u"int", 0, 4), Flexible(u"d", u"char", 4, 1)}, 4)});
    EXPECT_TRUE(EndsInFlexibleArray(*pattern, pattern->structs[0]));
}

TEST(EndsInFlexibleArray, FollowsALastStructFieldDownToItsStruct)
{
    const auto pattern = Pattern({Struct(u"A", {Scalar(u"n", u"int", 0, 4), StructField(u"b", u"B", 4, 4)}, 8),
        Struct(u"B", {Scalar(u"m", u"int", 0, 4), StructField(u"c", u"C", 4, 0)}, 4),
        Struct(u"C", {Flexible(u"d", u"char", 0, 1)}, 0)});
    EXPECT_TRUE(EndsInFlexibleArray(*pattern, pattern->structs[0]));
}

TEST(EndsInFlexibleArray, FalseForAnEmptyStructAPlainLastMemberAndAnArrayOfStructs)
{
    const auto pattern = Pattern({Struct(u"Empty", {}, 0),
        Struct(u"Plain", {Flexible(u"d", u"char", 0, 1), Scalar(u"n", u"int", 0, 4)}, 4),
        Struct(u"Many", {StructField(u"fs", u"Flex", 0, 4, 2)}, 8),
        Struct(u"Flex", {Scalar(u"n", u"int", 0, 4), Flexible(u"d", u"char", 4, 1)}, 4)});
    EXPECT_FALSE(EndsInFlexibleArray(*pattern, pattern->structs[0]));
    EXPECT_FALSE(EndsInFlexibleArray(*pattern, pattern->structs[1]));
    EXPECT_FALSE(EndsInFlexibleArray(*pattern, pattern->structs[2]));
}

TEST(EndsInFlexibleArray, FalseWhenTheLastStructFieldNamesNoStruct)
{
    const auto pattern = Pattern({Struct(u"A", {StructField(u"b", u"Missing", 0, 4)}, 4)});
    EXPECT_FALSE(EndsInFlexibleArray(*pattern, pattern->structs[0]));
}

TEST(EndsInFlexibleArray, AStructThatEndsInItselfIsFalseRatherThanEndless)
{
    const auto pattern = Pattern({Struct(u"Loop", {StructField(u"self", u"Loop", 0, 4)}, 4)});
    EXPECT_FALSE(EndsInFlexibleArray(*pattern, pattern->structs[0]));
}

} // namespace
} // namespace tlm
