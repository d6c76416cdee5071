#include "MemoryDocument.h"

#include "encoding/RowTextDecoder.h"
#include "hexview/RowCells.h"

#include <gtest/gtest.h>

#include <random>

namespace tlm::test {
namespace {

using Cells = std::vector<std::u16string>;

TEST(RowCells, OffsetHasEightDigitsBelowFourGibibytes)
{
    const SizedDocument document(0xFFFFFFFFull, 0x41);
    const std::vector<std::uint8_t> bytes(16, 0x41);
    EXPECT_EQ(BuildRowCells(&document, 0xFFFFFFF0ull, bytes, TextEncoding::Ascii).offsetText, u"FFFFFFF0:");
}

TEST(RowCells, OffsetHasSixteenDigitsFromFourGibibytesOn)
{
    const SizedDocument document(0x100000000ull, 0x41);
    const std::vector<std::uint8_t> bytes(16, 0x41);
    EXPECT_EQ(BuildRowCells(&document, 0x10ull, bytes, TextEncoding::Ascii).offsetText, u"0000000000000010:");
}

TEST(RowCells, WithoutADocumentTheOffsetHasEightDigits)
{
    const std::vector<std::uint8_t> bytes{0x41};
    EXPECT_EQ(BuildRowCells(nullptr, 0x1234560ull, bytes, TextEncoding::Ascii).offsetText, u"01234560:");
}

TEST(RowCells, EachByteReadGivesAnUpperCaseHexCellAndATextCell)
{
    const MemoryDocument document({0x00, 0x41, 0x7E, 0x7F, 0xAB, 0xFF, 0x20});
    const RowCells cells = BuildRowCells(&document, 0, document.bytes, TextEncoding::Ascii);
    EXPECT_EQ(cells.offsetText, u"00000000:");
    EXPECT_EQ(cells.hexCells, (Cells{u"00", u"41", u"7E", u"7F", u"AB", u"FF", u"20"}));
    EXPECT_EQ(cells.textCells, (Cells{u".", u"A", u"~", u".", u".", u".", u" "}));
}

TEST(RowCells, AShortLastRowHasAsManyCellsAsBytes)
{
    const MemoryDocument document(std::vector<std::uint8_t>(20, 0x61));
    const std::span<const std::uint8_t> lastRow(document.bytes.data() + 16, 4);
    const RowCells cells = BuildRowCells(&document, 16, lastRow, TextEncoding::Utf8);
    EXPECT_EQ(cells.offsetText, u"00000010:");
    EXPECT_EQ(cells.hexCells.size(), 4u);
    EXPECT_EQ(cells.textCells, (Cells{u"a", u"a", u"a", u"a"}));
}

TEST(RowCells, TextCellsComeFromTheDocumentAroundTheRow)
{
    // A three-byte character that starts in the row above: its cells in this row stay empty.
    std::vector<std::uint8_t> bytes(32, 0x62);
    bytes[15] = 0xE3;
    bytes[16] = 0x81;
    bytes[17] = 0x82;
    const MemoryDocument document(bytes);
    const std::span<const std::uint8_t> secondRow(document.bytes.data() + 16, 16);
    const RowCells second = BuildRowCells(&document, 16, secondRow, TextEncoding::Utf8);
    EXPECT_EQ(second.textCells[0], u"");
    EXPECT_EQ(second.textCells[1], u"");
    EXPECT_EQ(second.textCells[2], u"b");
    const std::span<const std::uint8_t> firstRow(document.bytes.data(), 16);
    EXPECT_EQ(BuildRowCells(&document, 0, firstRow, TextEncoding::Utf8).textCells[15], u"\u3042");
}

TEST(RowCells, AnEmptyReadGivesOnlyTheOffset)
{
    const MemoryDocument document;
    const RowCells cells = BuildRowCells(&document, 0, {}, TextEncoding::Ascii);
    EXPECT_EQ(cells.offsetText, u"00000000:");
    EXPECT_TRUE(cells.hexCells.empty());
    EXPECT_TRUE(cells.textCells.empty());
}

TEST(RowCells, TextCellsAreTheDecodersCellsForTheRowInEveryEncoding)
{
    // Text of several scripts between random bytes, so that characters cross row edges everywhere.
    std::mt19937 random(5);
    std::vector<std::uint8_t> bytes;
    const std::string pieces[] = {"plain text ", "\xE3\x81\x82\xE3\x81\x84", "\x82\xA0\x82\xA2", "\xB0\xA1\xB0\xA2",
        "\xA1\xD1\xE8", "\xB3\xE8\xCC"};
    while (bytes.size() < 300) {
        const std::string& piece = pieces[random() % std::size(pieces)];
        bytes.insert(bytes.end(), piece.begin(), piece.end());
        bytes.push_back(static_cast<std::uint8_t>(random()));
    }
    const MemoryDocument document(bytes);
    for (std::uint32_t encoding = 0; encoding < TextEncodingCount; ++encoding) {
        for (std::uint64_t row = 0; row * 16 < bytes.size(); ++row) {
            const std::uint64_t offset = row * 16;
            const std::span<const std::uint8_t> rowBytes(document.bytes.data() + offset,
                std::min<std::size_t>(16, bytes.size() - offset));
            const RowCells cells = BuildRowCells(&document, offset, rowBytes, static_cast<TextEncoding>(encoding));
            EXPECT_EQ(cells.textCells, DecodeRowText(&document, offset, rowBytes, static_cast<TextEncoding>(encoding)))
                << "encoding " << encoding << ", row " << row;
            EXPECT_EQ(cells.hexCells.size(), rowBytes.size());
        }
    }
}

TEST(RowCells, AClosedDocumentGivesEightDigits)
{
    MemoryDocument document(std::vector<std::uint8_t>(16, 0x41));
    document.open = false;
    const std::vector<std::uint8_t> bytes(16, 0x41);
    EXPECT_EQ(BuildRowCells(&document, 0xABCDEF0ull, bytes, TextEncoding::Ascii).offsetText, u"0ABCDEF0:");
}

} // namespace
} // namespace tlm::test
