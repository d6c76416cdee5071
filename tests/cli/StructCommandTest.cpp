#include "CliTestSupport.h"

#include "encoding/Utf8.h"
#include "structview/StructPatternLoader.h"
#include "structview/StructRows.h"

#include <gtest/gtest.h>

#include <memory>

namespace tlm::test {

namespace {

constexpr std::string_view Pattern =
    "@member_align 0\n"
    "struct Inner {\n"
    "    uint16_t kind;\n"
    "    char tag[4];\n"
    "};\n"
    "struct Header {\n"
    "    char magic[4];\n"
    "    uint32_t size;\n"
    "    Inner inner;\n"
    "    float ratio;\n"
    "    uint8_t data[];\n"
    "};\n"
    "@entry Header\n";

std::vector<StructRow> ExpectedRows(const std::filesystem::path& patternPath, const std::vector<std::uint8_t>& bytes,
    std::uint64_t offset, StructValueFormat format)
{
    auto pattern = std::make_shared<StructPatternFile>();
    std::u16string error;
    EXPECT_TRUE(LoadStructPatternFile(patternPath.u16string(), *pattern, error)) << Utf16ToUtf8(error);
    StructEvalRequest request;
    request.baseOffset = offset;
    request.bytes.assign(bytes.begin() + static_cast<std::ptrdiff_t>(std::min<std::uint64_t>(offset, bytes.size())), bytes.end());
    request.patternFile = pattern;
    request.unavailableText = u"Not available";
    request.valueFormat = format;
    return BuildStructRows(request);
}

std::vector<std::uint8_t> HeaderBytes()
{
    std::vector<std::uint8_t> bytes{'T', 'L', 'M', 0, 0x10, 0x20, 0x30, 0x40, 0x02, 0x01, 'a', 'b', 0, 'z', 0x00, 0x00, 0x80, 0x3F, 9, 8, 7};
    return bytes;
}

} // namespace

TEST(StructCommand, RowsAreTheStructViewsUnderEveryValueFormat)
{
    CliTemporaryFolder folder;
    const std::filesystem::path patternPath = folder.WriteText("header.tlpat", std::string(Pattern));
    std::vector<std::uint8_t> bytes{0xEE, 0xEE};
    const std::vector<std::uint8_t> header = HeaderBytes();
    bytes.insert(bytes.end(), header.begin(), header.end());
    const std::filesystem::path path = folder.Write("data.bin", bytes);
    for (std::uint32_t choice = 0; choice < 8; ++choice) {
        const StructValueFormat format{choice & 1, (choice >> 1) & 1, (choice >> 2) & 1};
        std::vector<std::string> arguments{"struct", PathText(path), "--pattern", PathText(patternPath), "--offset", "2", "--json"};
        if (format.byteArrayFormat == 1) {
            arguments.push_back("--ascii");
        }
        if (format.endian == 1) {
            arguments.push_back("--big-endian");
        }
        if (format.numericBase == 1) {
            arguments.push_back("--dec");
        }
        const CliRun run = RunCliCaptured(arguments);
        ASSERT_EQ(run.exitCode, 0) << run.err;
        const std::optional<JsonValue> json = ParseJson(run.out);
        ASSERT_TRUE(json.has_value());
        const std::vector<StructRow> expected = ExpectedRows(patternPath, bytes, 2, format);
        const std::vector<JsonValue>& rows = (*json)["rows"].items;
        ASSERT_EQ(rows.size(), expected.size());
        ASSERT_GE(rows.size(), 7u);
        for (std::size_t index = 0; index < rows.size(); ++index) {
            EXPECT_EQ(rows[index]["name"].text, Utf16ToUtf8(expected[index].name));
            EXPECT_EQ(rows[index]["offset"].text, Utf16ToUtf8(expected[index].offset));
            EXPECT_EQ(rows[index]["type"].text, Utf16ToUtf8(expected[index].type));
            EXPECT_EQ(rows[index]["value"].text, Utf16ToUtf8(expected[index].value)) << "row " << index << " choice " << choice;
            EXPECT_EQ(rows[index]["size"].text, Utf16ToUtf8(expected[index].size));
        }
    }
}

TEST(StructCommand, PlainRowsLineUpNameOffsetSizeAndValue)
{
    CliTemporaryFolder folder;
    const std::filesystem::path patternPath = folder.WriteText("header.tlpat", std::string(Pattern));
    const std::filesystem::path path = folder.Write("data.bin", HeaderBytes());
    const CliRun run = RunCliCaptured({"struct", PathText(path), "--pattern", PathText(patternPath), "--ascii", "--dec"});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    const std::vector<std::string> lines = SplitLines(run.out);
    ASSERT_GE(lines.size(), 3u);
    // The widest name, "inner : Inner", sets the first column: 13 characters and two blanks.
    EXPECT_EQ(lines[0], "magic          0x0   4   \"TLM\"");
    EXPECT_EQ(lines[1], "size           0x4   4   1076895760");
    EXPECT_EQ(lines[2].substr(0, 19), "inner : Inner  0x8 ");
}

TEST(StructCommand, AnOffsetNearTheEndShowsUnavailableValues)
{
    CliTemporaryFolder folder;
    const std::filesystem::path patternPath = folder.WriteText("header.tlpat", std::string(Pattern));
    const std::filesystem::path path = folder.Write("data.bin", HeaderBytes());
    const CliRun run = RunCliCaptured({"struct", PathText(path), "--pattern", PathText(patternPath), "--offset", "21", "--json"});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    const std::optional<JsonValue> json = ParseJson(run.out);
    ASSERT_TRUE(json.has_value());
    EXPECT_EQ((*json)["rows"].items[0]["value"].text, "Not available");
}

TEST(StructCommand, APatternThatDoesNotLoadGivesTheLoadersErrorWithLineAndColumn)
{
    CliTemporaryFolder folder;
    const std::filesystem::path patternPath = folder.WriteText("broken.tlpat", "struct A {\n    uint32_t a\n};\n");
    const std::filesystem::path path = folder.Write("data.bin", HeaderBytes());
    StructPatternFile unused;
    std::u16string error;
    ASSERT_FALSE(LoadStructPatternFile(patternPath.u16string(), unused, error));
    std::string expected = Utf16ToUtf8(error);
    expected.erase(std::remove(expected.begin(), expected.end(), '\r'), expected.end());
    const CliRun run = RunCliCaptured({"struct", PathText(path), "--pattern", PathText(patternPath)});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "tolmo-cli struct: Error: " + PathText(patternPath) + ": " + expected + "\n");
    EXPECT_EQ(run.err.find("Line "), run.err.find(": Line ") + 2);
    EXPECT_NE(run.err.find(", Col "), std::string::npos);
}

TEST(StructCommand, AMissingPatternIsBadUsage)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.Write("data.bin", HeaderBytes());
    const CliRun run = RunCliCaptured({"struct", PathText(path)});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.err, "tolmo-cli struct: --pattern FILE.tlpat is missing\n");
    const CliRun absent = RunCliCaptured({"struct", PathText(path), "--pattern", PathText(folder.Path() / "none.tlpat")});
    EXPECT_EQ(absent.exitCode, 2);
    EXPECT_NE(absent.err.find("none.tlpat"), std::string::npos);
}

TEST(StructCommand, TheShippedWavePatternReadsAWaveHeader)
{
    CliTemporaryFolder folder;
    const std::vector<std::uint8_t> wave{'R', 'I', 'F', 'F', 36, 0, 0, 0, 'W', 'A', 'V', 'E', 'f', 'm', 't', ' ', 16, 0, 0, 0,
        1, 0, 2, 0, 0x44, 0xAC, 0, 0, 0x10, 0xB1, 2, 0, 4, 0, 16, 0};
    const std::filesystem::path path = folder.Write("sound.wav", wave);
    const std::string patternPath = std::string(TOLMO_SOURCE_DIR) + "/patterns/wav.tlpat";
    const CliRun run = RunCliCaptured({"struct", PathText(path), "--pattern", patternPath, "--dec", "--json"});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    const std::optional<JsonValue> json = ParseJson(run.out);
    ASSERT_TRUE(json.has_value());
    bool sawRate = false;
    for (const JsonValue& row : (*json)["rows"].items) {
        if (row["name"].text == "  sampleRate") {
            EXPECT_EQ(row["value"].text, "44100");
            sawRate = true;
        }
    }
    EXPECT_TRUE(sawRate);
}

} // namespace tlm::test
