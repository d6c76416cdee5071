#include "encoding/RowTextDecoder.h"

#include "CheckedDocument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <span>
#include <string>

namespace tlm {
namespace {

using test::CheckedDocument;
using Bytes = std::vector<std::uint8_t>;
using Cells = std::vector<std::u16string>;

constexpr std::uint64_t RowWidth = 16;
// The longest look-back of any encoding, the double-byte scan, and the longest look-ahead, ISCII's.
constexpr std::uint64_t LongestLookBack = 4096;
constexpr std::uint64_t LongestLookAhead = 7;

// Bytes drawn mostly from the ranges the encodings care about, so that leads, marks and syllables meet.
Bytes RandomContent(std::mt19937& random, std::size_t size)
{
    static constexpr std::uint8_t Interesting[] = {0x00, 0x0A, 0x20, 0x41, 0x7F, 0x80, 0x81, 0x82, 0xA0, 0xA1, 0xB0,
        0xB1, 0xB3, 0xC0, 0xC2, 0xC7, 0xCC, 0xD1, 0xD6, 0xDA, 0xDB, 0xE2, 0xE8, 0xE9, 0xEC, 0xEF, 0xF0, 0xFE, 0xFF};
    std::uniform_int_distribution<int> kind(0, 2);
    std::uniform_int_distribution<int> anyByte(0, 255);
    std::uniform_int_distribution<std::size_t> pick(0, std::size(Interesting) - 1);
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes) {
        byte = kind(random) == 0 ? Interesting[pick(random)] : static_cast<std::uint8_t>(anyByte(random));
    }
    return bytes;
}

void CheckRow(const CheckedDocument& document, std::uint64_t rowOffset, TextEncoding encoding)
{
    const Bytes row = document.RowAt(rowOffset);
    document.lowestRead = UINT64_MAX;
    document.highestReadEnd = 0;
    const std::vector<std::u16string> cells = DecodeRowText(&document, rowOffset, row, encoding);
    ASSERT_EQ(cells.size(), row.size()) << "encoding " << static_cast<int>(encoding) << " at " << rowOffset;
    if (document.highestReadEnd > 0) {
        EXPECT_GE(document.lowestRead + LongestLookBack, rowOffset);
        EXPECT_LE(document.highestReadEnd, rowOffset + row.size() + LongestLookAhead);
    }
}

// Japanese text in Shift_JIS: the translations of a large message catalogue, a few hundred kilobytes,
// made by tests/encoding/corpus/make-shift-jis-corpus.
Bytes ReadShiftJisCorpus()
{
    const std::filesystem::path path =
        std::filesystem::path(TOLMO_SOURCE_DIR) / "tests" / "encoding" / "corpus" / "postgres-messages-ja.sjis";
    std::ifstream stream(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

bool IsShiftJisLead(std::uint8_t byte)
{
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

bool IsShiftJisTrail(std::uint8_t byte)
{
    return (byte >= 0x40 && byte <= 0x7E) || (byte >= 0x80 && byte <= 0xFC);
}

std::size_t ShiftJisWidthAt(const Bytes& text, std::size_t position)
{
    return IsShiftJisLead(text[position]) && position + 1 < text.size() && IsShiftJisTrail(text[position + 1]) ? 2 : 1;
}

// The Shift_JIS cells of a whole text, in one walk from its first byte, character by character; a
// well-formed pair that does not decode is stepped over as a pair.
Cells DecodeWholeShiftJisText(const Bytes& text)
{
    Cells cells(text.size());
    std::size_t position = 0;
    while (position < text.size()) {
        const auto decoded = DecodeCharacterAt(TextEncoding::ShiftJis, std::span<const std::uint8_t>(text).subspan(position));
        cells[position] = decoded ? decoded->text : u".";
        position += decoded ? decoded->consumed : ShiftJisWidthAt(text, position);
    }
    return cells;
}

// Each row of `content`, decoded from the document as the view does, against the same cells cut from
// the whole text's decoding. Gives the number of rows that differ; reads stay within the bound.
std::size_t CountShiftJisRowsOutOfStep(const Bytes& content)
{
    const Cells whole = DecodeWholeShiftJisText(content);
    const CheckedDocument document(content);
    std::size_t outOfStep = 0;
    for (std::uint64_t rowOffset = 0; rowOffset < content.size(); rowOffset += RowWidth) {
        const Bytes row = document.RowAt(rowOffset);
        document.lowestRead = UINT64_MAX;
        document.highestReadEnd = 0;
        const Cells cells = DecodeRowText(&document, rowOffset, row, TextEncoding::ShiftJis);
        EXPECT_GE(document.lowestRead + LongestLookBack, rowOffset);
        EXPECT_LE(document.highestReadEnd, rowOffset + row.size() + 1);
        const auto first = whole.begin() + static_cast<std::ptrdiff_t>(rowOffset);
        if (!std::equal(cells.begin(), cells.end(), first, first + static_cast<std::ptrdiff_t>(row.size()))) {
            ++outOfStep;
        }
    }
    EXPECT_EQ(document.outOfRangeReads, 0);
    return outOfStep;
}

TEST(RowTextDecoderProperty, ShiftJisRowsOfRealJapaneseTextMatchTheWholeTextsDecoding)
{
    const Bytes corpus = ReadShiftJisCorpus();
    ASSERT_GT(corpus.size(), 200000u) << "the Shift_JIS corpus is missing; tests/encoding/corpus/make-shift-jis-corpus makes it";
    std::size_t pairedBytes = 0;
    for (std::size_t position = 0, width = 0; position < corpus.size(); position += width) {
        width = ShiftJisWidthAt(corpus, position);
        pairedBytes += width == 2 ? 2 : 0;
    }
    // Mostly double-byte text, or the rows would rarely have anything to fall out of step with.
    ASSERT_GT(pairedBytes * 2, corpus.size());
    // One byte in front shifts every pair's place against the rows.
    for (const std::size_t shift : {0, 1}) {
        Bytes content(shift, 'a');
        content.insert(content.end(), corpus.begin(), corpus.end());
        const std::size_t rows = (content.size() + RowWidth - 1) / RowWidth;
        EXPECT_EQ(CountShiftJisRowsOutOfStep(content), 0u) << "of " << rows << " rows, shifted by " << shift;
    }
}

TEST(RowTextDecoderProperty, RowsNeverReadPastTheEndAndHaveOneCellPerByte)
{
    std::mt19937 random(20261123);
    std::uniform_int_distribution<std::size_t> sizes(0, 9000);
    for (int file = 0; file < 60; ++file) {
        const CheckedDocument document(RandomContent(random, sizes(random)));
        const std::uint64_t size = document.GetSize();
        std::uniform_int_distribution<std::uint64_t> offsets(0, size);
        for (int sample = 0; sample < 12; ++sample) {
            const std::uint64_t any = offsets(random);
            const std::uint64_t aligned = any - any % RowWidth;
            for (std::uint32_t value = 0; value <= TextEncodingCount; ++value) {
                CheckRow(document, aligned, static_cast<TextEncoding>(value));
                CheckRow(document, any, static_cast<TextEncoding>(value));
            }
        }
        // The last row, often short.
        for (std::uint32_t value = 0; value < TextEncodingCount; ++value) {
            CheckRow(document, size - size % RowWidth, static_cast<TextEncoding>(value));
        }
        EXPECT_EQ(document.outOfRangeReads, 0);
    }
}

TEST(RowTextDecoderProperty, DetachedRowsHaveOneCellPerByte)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<std::size_t> sizes(0, 40);
    for (int sample = 0; sample < 2000; ++sample) {
        const Bytes bytes = RandomContent(random, sizes(random));
        for (std::uint32_t value = 0; value <= TextEncodingCount; ++value) {
            EXPECT_EQ(DecodeRowTextDetached(bytes, static_cast<TextEncoding>(value)).size(), bytes.size());
        }
    }
}

TEST(RowTextDecoderProperty, WithoutADocumentTheSingleByteFamiliesMatchTheirDetachedRows)
{
    std::mt19937 random(11);
    std::uniform_int_distribution<std::size_t> sizes(0, 16);
    for (int sample = 0; sample < 2000; ++sample) {
        const Bytes bytes = RandomContent(random, sizes(random));
        for (TextEncoding encoding : {TextEncoding::Ascii, TextEncoding::Utf16Le, TextEncoding::Utf16Be, TextEncoding::Tis620,
                 TextEncoding::Windows1258, TextEncoding::IsciiDevanagari}) {
            EXPECT_EQ(DecodeRowText(nullptr, 32, bytes, encoding), DecodeRowTextDetached(bytes, encoding));
        }
    }
}

TEST(RowTextDecoderProperty, DecodedCharactersConsumeAtLeastOneByteAndNoMoreThanGiven)
{
    std::mt19937 random(3);
    std::uniform_int_distribution<std::size_t> sizes(1, 12);
    for (int sample = 0; sample < 5000; ++sample) {
        const Bytes bytes = RandomContent(random, sizes(random));
        for (std::uint32_t value = 0; value < TextEncodingCount; ++value) {
            const auto decoded = DecodeCharacterAt(static_cast<TextEncoding>(value), bytes);
            if (decoded) {
                EXPECT_GE(decoded->consumed, 1u);
                EXPECT_LE(decoded->consumed, bytes.size());
                EXPECT_FALSE(decoded->text.empty());
            }
        }
    }
}

} // namespace
} // namespace tlm
