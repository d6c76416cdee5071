#include "structview/StructValueText.h"

#include "StructRowTestSupport.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tlm {
namespace {

using namespace tlm::test;

const std::u16string Unavailable = u"n/a";

std::u16string Format(const ResolvedMember& member, std::vector<std::uint8_t> bytes, StructValueFormat format = {})
{
    StructEvalRequest request = Request(nullptr, std::move(bytes));
    request.valueFormat = format;
    return FormatMemberValue(member, request, Unavailable);
}

StructValueFormat Ascii()
{
    return StructValueFormat {1, 0, 0};
}

std::vector<std::uint8_t> Text(std::string_view text)
{
    return std::vector<std::uint8_t>(text.begin(), text.end());
}

TEST(StructValueText, IntegersAreZeroPaddedUpperCaseHexByDefault)
{
    EXPECT_EQ(Format(Scalar(u"a", u"uint8_t", 0, 1), {0x0A}), u"0x0A");
    EXPECT_EQ(Format(Scalar(u"a", u"short", 0, 2), {0x01, 0x00}), u"0x0001");
    EXPECT_EQ(Format(Scalar(u"a", u"int", 0, 4), {0xEF, 0xBE, 0xAD, 0xDE}), u"0xDEADBEEF");
    EXPECT_EQ(Format(Scalar(u"a", u"uint64_t", 0, 8), {1, 0, 0, 0, 0, 0, 0, 0}), u"0x0000000000000001");
}

TEST(StructValueText, AnOddSizedIntegerKeepsTwoDigitsPerByte)
{
    ResolvedMember member = Scalar(u"a", u"int", 0, 3);
    EXPECT_EQ(Format(member, {0x01, 0x02, 0x03}), u"0x030201");
    EXPECT_EQ(Format(member, {0x01, 0x02, 0x03}, {0, 1, 0}), u"0x010203");
}

TEST(StructValueText, BigEndianReadsTheFirstByteAsTheMostSignificant)
{
    EXPECT_EQ(Format(Scalar(u"a", u"uint32_t", 0, 4), {0x12, 0x34, 0x56, 0x78}, {0, 1, 0}), u"0x12345678");
}

TEST(StructValueText, DecimalBaseIsUnsignedAndIgnoresSignedness)
{
    const ResolvedMember member = Scalar(u"a", u"int", 0, 4);
    ASSERT_TRUE(member.isSigned);
    EXPECT_EQ(Format(member, {0xFF, 0xFF, 0xFF, 0xFF}, {0, 0, 1}), u"4294967295");
    EXPECT_EQ(Format(member, {0xFF, 0xFF, 0xFF, 0xFF}), u"0xFFFFFFFF");
    EXPECT_EQ(Format(Scalar(u"a", u"uint64_t", 0, 8), std::vector<std::uint8_t>(8, 0xFF), {0, 0, 1}),
        u"18446744073709551615");
    EXPECT_EQ(Format(Scalar(u"a", u"char", 0, 1), {0x00}, {0, 0, 1}), u"0");
}

TEST(StructValueText, AnIntegerWiderThanEightBytesIsItsBytesInStorageOrder)
{
    const ResolvedMember member = Scalar(u"a", u"long long", 0, 16);
    std::vector<std::uint8_t> bytes(16);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<std::uint8_t>(0xA0 + i);
    const std::u16string expected = u"0xA0 A1 A2 A3 A4 A5 A6 A7 A8 A9 AA AB AC AD AE AF";
    EXPECT_EQ(Format(member, bytes), expected);
    EXPECT_EQ(Format(member, bytes, {0, 1, 1}), expected);
}

TEST(StructValueText, AScalarOfNoBytesIsEmpty)
{
    ResolvedMember member = Scalar(u"a", u"int", 0, 0);
    EXPECT_EQ(Format(member, {}), u"");
}

TEST(StructValueText, ADoubleReadsLittleEndianAndShowsSixSignificantDigits)
{
    const ResolvedMember member = Scalar(u"d", u"double", 0, 8, ResolvedValueKind::Double);
    // 3.14159265358979 = 0x400921FB54442D18
    const std::vector<std::uint8_t> bytes {0x18, 0x2D, 0x44, 0x54, 0xFB, 0x21, 0x09, 0x40};
    EXPECT_EQ(Format(member, bytes), u"3.14159 (0x400921FB54442D18)");
    EXPECT_EQ(Format(member, bytes, {0, 1, 0}), u"3.14159 (0x182D4454FB210940)");
}

TEST(StructValueText, TheBracketedHexIgnoresTheDecimalBase)
{
    const ResolvedMember member = Scalar(u"f", u"float", 0, 4, ResolvedValueKind::Float);
    EXPECT_EQ(Format(member, {0x00, 0x00, 0xC0, 0xBF}, {0, 0, 1}), u"-1.5 (0xBFC00000)");
}

TEST(StructValueText, LargeAndSmallFloatsUseTheStreamsExponentForm)
{
    const ResolvedMember member = Scalar(u"f", u"float", 0, 4, ResolvedValueKind::Float);
    EXPECT_EQ(Format(member, {0x28, 0x6B, 0x6E, 0x4E}), u"1e+09 (0x4E6E6B28)");
    EXPECT_EQ(Format(member, {0x00, 0x00, 0x00, 0x00}), u"0 (0x00000000)");
}

TEST(StructValueText, AFloatOfAnotherSizeFallsBackToTheIntegerForm)
{
    const ResolvedMember wideFloat = Scalar(u"f", u"float", 0, 8, ResolvedValueKind::Float);
    EXPECT_EQ(Format(wideFloat, {0, 0, 0, 0, 0, 0, 0xF0, 0x3F}), u"0x3FF0000000000000");
    EXPECT_EQ(Format(wideFloat, {1, 0, 0, 0, 0, 0, 0, 0}, {0, 0, 1}), u"1");
    const ResolvedMember narrowDouble = Scalar(u"d", u"double", 0, 4, ResolvedValueKind::Double);
    EXPECT_EQ(Format(narrowDouble, {0x00, 0x00, 0x80, 0x3F}), u"0x3F800000");
}

TEST(StructValueText, PaddingShowsEveryByteWithoutALimit)
{
    const std::vector<std::uint8_t> bytes(20, 0xCC);
    std::u16string expected = u"CC";
    for (int i = 1; i < 20; ++i)
        expected += u" CC";
    EXPECT_EQ(Format(Padding(0, 20), bytes), expected);
}

TEST(StructValueText, PaddingShowsHexEvenInAsciiMode)
{
    EXPECT_EQ(Format(Padding(0, 2), Text("ab"), Ascii()), u"61 62");
}

TEST(StructValueText, SixteenBytesShowWithoutAnEllipsis)
{
    EXPECT_EQ(Format(Array(u"a", u"uint8_t", 0, 1, 16), std::vector<std::uint8_t>(16, 0x5A)),
        u"5A 5A 5A 5A 5A 5A 5A 5A 5A 5A 5A 5A 5A 5A 5A 5A");
}

TEST(StructValueText, EveryOneByteCharacterTypeTakesTheAsciiForm)
{
    for (const char16_t* type : {u"char", u"signed char", u"unsigned char", u"int8_t", u"uint8_t"})
        EXPECT_EQ(Format(Array(u"s", type, 0, 1, 3), Text("xyz"), Ascii()), u"\"xyz\"") << std::u16string(type).size();
    EXPECT_EQ(Format(Array(u"s", u"uint16_t", 0, 2, 2), Text("xyzw"), Ascii()), u"78 79 7A 77");
}

TEST(StructValueText, AsciiStopsAtNulAndMarksOtherUnprintableBytesAsCut)
{
    const ResolvedMember member = Array(u"s", u"char", 0, 1, 4);
    EXPECT_EQ(Format(member, {0x00, 'a', 'b', 'c'}, Ascii()), u"\"\"");
    EXPECT_EQ(Format(member, {0x07, 'a', 'b', 'c'}, Ascii()), u"\"...\"");
    EXPECT_EQ(Format(member, {'a', 'b', 0x7F, 'c'}, Ascii()), u"\"ab...\"");
    EXPECT_EQ(Format(member, {'a', '~', ' ', 0x1F}, Ascii()), u"\"a~ ...\"");
    EXPECT_EQ(Format(member, {'a', 'b', 'c', 'd'}, Ascii()), u"\"abcd\"");
}

TEST(StructValueText, AsciiShowsSixtyFourCharactersThenCuts)
{
    const std::string sixtyFour(64, 'q');
    const ResolvedMember exact = Array(u"s", u"char", 0, 1, 64);
    EXPECT_EQ(Format(exact, Text(sixtyFour), Ascii()), u"\"" + std::u16string(64, u'q') + u"\"");
    const ResolvedMember longer = Array(u"s", u"char", 0, 1, 80);
    EXPECT_EQ(Format(longer, Text(sixtyFour + std::string(16, 'r')), Ascii()), u"\"" + std::u16string(64, u'q') + u"...\"");
    // A NUL right after the 64th character still ends the string cleanly.
    EXPECT_EQ(Format(longer, Text(sixtyFour + std::string(1, '\0') + std::string(15, 'r')), Ascii()),
        u"\"" + std::u16string(64, u'q') + u"\"");
}

TEST(StructValueText, AFlexibleArrayTakesTheRestOfTheBytes)
{
    const ResolvedMember member = Flexible(u"d", u"char", 2, 1);
    EXPECT_EQ(Format(member, Text("xxhello")), u"68 65 6C 6C 6F");
    EXPECT_EQ(Format(member, Text("xxhello"), Ascii()), u"\"hello\"");
    EXPECT_EQ(Format(member, Text("xx")), u"0 bytes");
    EXPECT_EQ(Format(member, Text("x")), Unavailable);
}

TEST(StructValueText, AStructValueIsItsBytes)
{
    const ResolvedMember member = StructField(u"s", u"Pair", 1, 2);
    EXPECT_EQ(Format(member, {9, 0x41, 0x42}, Ascii()), u"41 42");
}

TEST(StructValueText, AMemberPartlyPastTheBytesIsUnavailable)
{
    EXPECT_EQ(Format(Scalar(u"a", u"int", 2, 4), {1, 2, 3, 4, 5}), Unavailable);
    EXPECT_EQ(Format(Scalar(u"a", u"int", 1, 4), {1, 2, 3, 4, 5}), u"0x05040302");
    EXPECT_EQ(Format(Scalar(u"a", u"int", 0xFFFFFFFFFFFFFFFFull, 4), {1, 2, 3, 4, 5}), Unavailable);
}

TEST(StructValueText, FormatSettingsOtherThanOneActAsZero)
{
    const StructValueFormat odd {7, 9, 2};
    EXPECT_EQ(Format(Scalar(u"a", u"uint16_t", 0, 2), {0x01, 0x02}, odd), u"0x0201");
    EXPECT_EQ(Format(Array(u"s", u"char", 0, 1, 2), Text("ok"), odd), u"6F 6B");
}

} // namespace
} // namespace tlm
