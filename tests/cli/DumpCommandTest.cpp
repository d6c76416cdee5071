#include "CliTestSupport.h"

#include "cli/DumpLine.h"
#include "document/FileViewModel.h"
#include "encoding/EncodingCatalogue.h"
#include "encoding/TextEncoding.h"
#include "encoding/Utf8.h"
#include "hexview/RowCells.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tlm::test {

namespace {

// Text in every script the encodings cover, in their own forms, mixed with random bytes, so each
// decoder meets characters that cross row edges, marks and bytes it cannot show.
std::vector<std::uint8_t> MixedBytes()
{
    std::vector<std::uint8_t> bytes;
    const auto add = [&bytes](std::initializer_list<std::uint8_t> more) { bytes.insert(bytes.end(), more); };
    add({'T', 'o', 'l', 'm', 'o', ' ', 0xE3, 0x81, 0x82, 0xE6, 0x97, 0xA5, 'e', 0xCC, 0x81, 0xF0, 0x9F, 0x98, 0x80});
    add({0x41, 0x00, 0x42, 0x00, 0x3D, 0xD8, 0x00, 0xDE, 0x00, 0x43});
    add({0x82, 0xA0, 0x93, 0xFA, 0xB1, 0x81});                         // Shift_JIS
    add({0xC7, 0xD1, 0xB1, 0xDB, 0xA4, 0xA1, 0x81, 0x40, 0x81, 0x40}); // Korean, Big5, GBK pairs
    add({0xA1, 0xE8, 0xA1, 0xD4, 0xDB, 0x80, 0xC3, 0xEC, 0x41});       // TIS-620 with marks, Windows-1258
    add({0xB3, 0xE8, 0xB8, 0xDA, 0xA4, 0xE8});                         // ISCII
    const std::vector<std::uint8_t> noise = RandomBytes(3000, 7);
    bytes.insert(bytes.end(), noise.begin(), noise.end());
    for (int repeat = 0; repeat < 40; ++repeat) {
        add({0x82, 0xA0, 0xE3, 0x81, 0x82, 0xB0, 0xA1, 0xA4, 0xA1, 0xD4});
    }
    add({0xE3, 0x81}); // a sequence cut by the end of the file
    return bytes;
}

void ExpectDumpEqualsRowCells(const std::filesystem::path& path, TextEncoding encoding, const std::vector<std::string>& extra,
    std::uint64_t firstRow, std::uint64_t endRow)
{
    FileViewModel file;
    ASSERT_TRUE(file.Open(std::filesystem::path(path).u16string()));
    const std::string encodingName = Utf16ToUtf8(EncodingDisplayName(encoding));
    std::vector<std::string> plainArguments{"dump", PathText(path), "--encoding", encodingName};
    plainArguments.insert(plainArguments.end(), extra.begin(), extra.end());
    std::vector<std::string> jsonArguments = plainArguments;
    jsonArguments.push_back("--json");
    const CliRun plain = RunCliCaptured(plainArguments);
    const CliRun json = RunCliCaptured(jsonArguments);
    ASSERT_EQ(plain.exitCode, 0) << plain.err;
    ASSERT_EQ(json.exitCode, 0) << json.err;
    const std::optional<JsonValue> parsed = ParseJson(json.out);
    ASSERT_TRUE(parsed.has_value());
    const std::vector<JsonValue>& rows = (*parsed)["rows"].items;
    const std::vector<std::string> lines = SplitLines(plain.out);
    ASSERT_EQ(rows.size(), (endRow - firstRow) / 16);
    ASSERT_EQ(lines.size(), rows.size()) << encodingName;
    for (std::size_t index = 0; index < rows.size(); ++index) {
        const std::uint64_t rowOffset = firstRow + index * 16;
        const ByteBlock block = file.Read(rowOffset, 16);
        const RowCells cells = BuildRowCells(&file, rowOffset, block.bytes, encoding);
        std::string expectedLine;
        AppendDumpLine(expectedLine, cells);
        ASSERT_EQ(lines[index] + "\n", expectedLine) << "row " << rowOffset << " in " << encodingName;
        const JsonValue& row = rows[index];
        ASSERT_EQ(row["offset"].number, rowOffset);
        ASSERT_EQ(row["offsetText"].text, Utf16ToUtf8(cells.offsetText));
        ASSERT_EQ(row["hex"].items.size(), cells.hexCells.size());
        ASSERT_EQ(row["text"].items.size(), cells.textCells.size());
        for (std::size_t cell = 0; cell < cells.textCells.size(); ++cell) {
            ASSERT_EQ(row["hex"].items[cell].text, Utf16ToUtf8(cells.hexCells[cell]));
            ASSERT_EQ(row["text"].items[cell].text, Utf16ToUtf8(cells.textCells[cell]))
                << "row " << rowOffset << " cell " << cell << " in " << encodingName;
        }
    }
}

} // namespace

TEST(DumpCommand, EveryRowEqualsTheHexViewsCellsInEveryEncoding)
{
    CliTemporaryFolder folder;
    const std::vector<std::uint8_t> bytes = MixedBytes();
    const std::filesystem::path path = folder.Write("mixed.bin", bytes);
    const std::uint64_t endRow = (bytes.size() + 15) / 16 * 16;
    for (std::uint32_t value = 0; value < TextEncodingCount; ++value) {
        ExpectDumpEqualsRowCells(path, static_cast<TextEncoding>(value), {}, 0, endRow);
    }
}

TEST(DumpCommand, DoubleByteRowsEqualTheHexViewsCellsOverRandomBytesTextAndLongRunsOfLeadBytes)
{
    // Long runs of bytes that are both lead and trail keep short and long look-backs out of step for
    // thousands of bytes; random bytes and text fall into step at once. Every row must be the view's.
    CliTemporaryFolder folder;
    std::vector<std::uint8_t> bytes = RandomBytes(40000, 17);
    for (const std::uint8_t runByte : {0x81, 0xA1, 0xB0, 0xE0}) {
        bytes.insert(bytes.end(), 5000 + runByte % 7, runByte);
        const std::vector<std::uint8_t> noise = RandomBytes(3000, runByte);
        bytes.insert(bytes.end(), noise.begin(), noise.end());
    }
    for (int repeat = 0; repeat < 3000; ++repeat) {
        bytes.insert(bytes.end(), {0x93, 0xFA, 0x96, 0x7B, 0x41, 0xB1, 0xC7, 0xD1, 0xA4, 0xA1});
    }
    bytes.insert(bytes.end(), 4500, 0x82);
    bytes.push_back(0x81);
    const std::filesystem::path path = folder.Write("double-byte.bin", bytes);
    const std::uint64_t endRow = (bytes.size() + 15) / 16 * 16;
    for (const TextEncoding encoding : {TextEncoding::ShiftJis, TextEncoding::Windows949, TextEncoding::EucKr,
             TextEncoding::Big5, TextEncoding::Gbk}) {
        ExpectDumpEqualsRowCells(path, encoding, {}, 0, endRow);
    }
}

// A dump of megabytes writes its lines from lookup tables, on two threads a piece each in turn; every
// line must still be the one the view's cells give, across the pieces' and chunks' edges.
TEST(DumpCommand, ALongDumpEqualsTheHexViewsCellsLineForLine)
{
    CliTemporaryFolder folder;
    std::vector<std::uint8_t> bytes;
    std::uint8_t seed = 1;
    while (bytes.size() < 3 * 1024 * 1024 + 5) {
        const std::vector<std::uint8_t> noise = RandomBytes(7000 + seed * 13, seed);
        bytes.insert(bytes.end(), noise.begin(), noise.end());
        for (int repeat = 0; repeat < 700; ++repeat) {
            bytes.insert(bytes.end(), {0x93, 0xFA, 0x96, 0x7B, 0x8C, 0xEA, 0x41, 0xB1, 0x82, 0xA0, 0xC7, 0xD1, 0x0A});
        }
        bytes.insert(bytes.end(), 300u + seed, static_cast<std::uint8_t>(0x81 + seed % 3));
        ++seed;
    }
    bytes.push_back(0x82);
    const std::filesystem::path path = folder.Write("long.bin", bytes);
    FileViewModel file;
    ASSERT_TRUE(file.Open(path.u16string()));
    for (const TextEncoding encoding : {TextEncoding::Ascii, TextEncoding::ShiftJis, TextEncoding::Gbk}) {
        const std::string encodingName = Utf16ToUtf8(EncodingDisplayName(encoding));
        const CliRun run = RunCliCaptured({"dump", PathText(path), "--encoding", encodingName});
        ASSERT_EQ(run.exitCode, 0) << run.err;
        const std::vector<std::string> lines = SplitLines(run.out);
        ASSERT_EQ(lines.size(), (bytes.size() + 15) / 16) << encodingName;
        for (std::size_t index = 0; index < lines.size(); ++index) {
            const std::uint64_t rowOffset = index * 16;
            const ByteBlock block = file.Read(rowOffset, 16);
            std::string expectedLine;
            AppendDumpLine(expectedLine, BuildRowCells(&file, rowOffset, block.bytes, encoding));
            ASSERT_EQ(lines[index] + "\n", expectedLine) << "row " << rowOffset << " in " << encodingName;
        }
    }
}

TEST(DumpCommand, ARangeInsideTheFileStillEqualsTheHexViewsCells)
{
    CliTemporaryFolder folder;
    const std::vector<std::uint8_t> bytes = MixedBytes();
    const std::filesystem::path path = folder.Write("mixed.bin", bytes);
    for (const TextEncoding encoding : {TextEncoding::Utf8, TextEncoding::ShiftJis, TextEncoding::Gbk, TextEncoding::Tis620}) {
        ExpectDumpEqualsRowCells(path, encoding, {"--offset", "0x203", "--length", "100"}, 0x200, 0x270);
    }
}

TEST(DumpCommand, ControlCharactersInsideACellAreLeftOutOfTheLineButKeptInJson)
{
    // ISCII joins a control byte with the vowel sign after it into one cell; a terminal line must
    // not carry the line feed or escape, and the JSON form keeps the cell exactly.
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.Write("iscii.bin", {0x41, 0x0A, 0xDA, 0x1B, 0xDA, 0x42});
    FileViewModel file;
    ASSERT_TRUE(file.Open(path.u16string()));
    const ByteBlock block = file.Read(0, 16);
    const RowCells cells = BuildRowCells(&file, 0, block.bytes, TextEncoding::IsciiDevanagari);
    ASSERT_EQ(cells.textCells[1].front(), u'\n');
    const CliRun plain = RunCliCaptured({"dump", PathText(path), "--encoding", "iscii"});
    ASSERT_EQ(plain.exitCode, 0);
    EXPECT_EQ(SplitLines(plain.out).size(), 1u);
    EXPECT_EQ(plain.out.find('\x1B'), std::string::npos);
    const CliRun json = RunCliCaptured({"dump", PathText(path), "--encoding", "iscii", "--json"});
    const std::optional<JsonValue> parsed = ParseJson(json.out);
    ASSERT_TRUE(parsed.has_value());
    EXPECT_EQ((*parsed)["rows"].items[0]["text"].items[1].text, Utf16ToUtf8(cells.textCells[1]));
}

TEST(DumpCommand, OffsetRoundsDownAndLengthRoundsUpToWholeRows)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.Write("file.bin", RandomBytes(200, 3));
    const CliRun run = RunCliCaptured({"dump", PathText(path), "--offset", "21", "--length", "20"});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    const std::vector<std::string> lines = SplitLines(run.out);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].substr(0, 9), "00000010:");
    EXPECT_EQ(lines[1].substr(0, 9), "00000020:");
}

TEST(DumpCommand, LengthZeroDumpsNothing)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.Write("file.bin", RandomBytes(64, 3));
    const CliRun run = RunCliCaptured({"dump", PathText(path), "--offset", "0x10", "--length", "0"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "");
}

TEST(DumpCommand, AShortLastRowKeepsTheTextColumnInPlace)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.WriteText("short.txt", "ABCDEFGHIJKLMNOPQRS");
    const CliRun run = RunCliCaptured({"dump", PathText(path)});
    ASSERT_EQ(run.exitCode, 0);
    const std::vector<std::string> lines = SplitLines(run.out);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], "00000000: 41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F 50  ABCDEFGHIJKLMNOP");
    EXPECT_EQ(lines[1], "00000010: 51 52 53                                         QRS");
    EXPECT_EQ(lines[0].find("ABCD"), lines[1].find("QRS"));
}

TEST(DumpCommand, AnEmptyFileDumpsNoRows)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.Write("empty.bin", {});
    const CliRun plain = RunCliCaptured({"dump", PathText(path)});
    EXPECT_EQ(plain.exitCode, 0);
    EXPECT_EQ(plain.out, "");
    const CliRun json = RunCliCaptured({"dump", PathText(path), "--json", "--encoding", "utf-8"});
    ASSERT_EQ(json.exitCode, 0);
    const std::optional<JsonValue> parsed = ParseJson(json.out);
    ASSERT_TRUE(parsed.has_value());
    EXPECT_EQ((*parsed)["encoding"].text, "UTF-8");
    EXPECT_EQ((*parsed)["rows"].kind, JsonValue::Kind::Array);
    EXPECT_TRUE((*parsed)["rows"].items.empty());
}

TEST(DumpCommand, AFileOverFourGigabytesShowsSixteenDigitOffsets)
{
    CliTemporaryFolder folder;
    const std::uint64_t size = 0x100000000ull + 40;
    const std::filesystem::path path = folder.WriteSparse("big.bin", size, {'e', 'n', 'd', 0xE3, 0x81, 0x82});
    const CliRun run = RunCliCaptured({"dump", PathText(path), "--offset", std::to_string(size - 20)});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    const std::vector<std::string> lines = SplitLines(run.out);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].substr(0, 17), "0000000100000010:");
    EXPECT_EQ(lines[1].substr(0, 17), "0000000100000020:");
    EXPECT_NE(lines[1].find("end"), std::string::npos);
    ExpectDumpEqualsRowCells(path, TextEncoding::Utf8, {"--offset", "0x100000000"}, 0x100000000ull, 0x100000030ull);
}

TEST(DumpCommand, AnOffsetPastTheEndIsBadInput)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.Write("file.bin", RandomBytes(10, 3));
    const CliRun run = RunCliCaptured({"dump", PathText(path), "--offset", "11"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "tolmo-cli dump: --offset 11 is past the end of the file (10 bytes)\n");
}

TEST(DumpCommand, AnUnknownEncodingIsBadInput)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.Write("file.bin", RandomBytes(10, 3));
    const CliRun run = RunCliCaptured({"dump", PathText(path), "--encoding", "latin-9"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.err.find("unknown encoding \"latin-9\""), std::string::npos);
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1);
}

TEST(DumpCommand, AMissingFileIsBadInput)
{
    CliTemporaryFolder folder;
    const std::string path = PathText(folder.Path() / "absent.bin");
    const CliRun run = RunCliCaptured({"dump", path});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.err, "tolmo-cli dump: The file could not be opened. (" + path + ")\n");
}

TEST(DumpCommand, EncodingAliasesNameTheSameEncoding)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.Write("sjis.bin", {0x82, 0xA0, 0x82, 0xA2, 0x41});
    const CliRun reference = RunCliCaptured({"dump", PathText(path), "--encoding", "Shift_JIS"});
    ASSERT_EQ(reference.exitCode, 0);
    for (const std::string alias : {"cp932", "SJIS", "windows-31j", "shift-jis"}) {
        const CliRun run = RunCliCaptured({"dump", PathText(path), "--encoding", alias});
        EXPECT_EQ(run.exitCode, 0) << alias;
        EXPECT_EQ(run.out, reference.out) << alias;
    }
    EXPECT_NE(reference.out.find("\xE3\x81\x82\xE3\x81\x84" "A"), std::string::npos);
}

} // namespace tlm::test
