#include "CliTestSupport.h"

#include "encoding/EncodingCatalogue.h"
#include "encoding/Utf8.h"
#include "inspector/InspectorRows.h"

#include <gtest/gtest.h>

namespace tlm::test {

namespace {

std::vector<std::string> ExpectedValues(const std::vector<std::uint8_t>& bytes, std::uint64_t offset, TextEncoding encoding)
{
    InspectorRequest request;
    request.offset = offset;
    request.encoding = encoding;
    const std::size_t count = std::min<std::size_t>(InspectorSnapshotSize, bytes.size() - offset);
    request.bytes.assign(bytes.begin() + static_cast<std::ptrdiff_t>(offset),
        bytes.begin() + static_cast<std::ptrdiff_t>(offset + count));
    std::vector<std::string> values;
    for (const std::u16string& value : BuildInspectorRows(request, u"Not available")) {
        values.push_back(Utf16ToUtf8(value));
    }
    return values;
}

} // namespace

TEST(InspectCommand, TheTwelveRowsAreTheInspectorsInEveryEncoding)
{
    CliTemporaryFolder folder;
    std::vector<std::uint8_t> bytes{0x82, 0xA0, 0x41, 0x00, 0x42, 0x00, 0xE3, 0x81, 0x82, 0x0A, 0xA1, 0xE8, 0xB3, 0xE8, 0xB8};
    const std::vector<std::uint8_t> noise = RandomBytes(300, 21);
    bytes.insert(bytes.end(), noise.begin(), noise.end());
    const std::filesystem::path path = folder.Write("bytes.bin", bytes);
    for (std::uint32_t value = 0; value < TextEncodingCount; ++value) {
        const auto encoding = static_cast<TextEncoding>(value);
        for (const std::uint64_t offset : {0, 2, 6, 9, 10, 12, 200, 310, 314, 315}) {
            const CliRun run = RunCliCaptured({"inspect", PathText(path), "--offset", std::to_string(offset), "--encoding",
                Utf16ToUtf8(EncodingDisplayName(encoding)), "--json"});
            ASSERT_EQ(run.exitCode, 0) << run.err;
            const std::optional<JsonValue> json = ParseJson(run.out);
            ASSERT_TRUE(json.has_value());
            EXPECT_EQ((*json)["offset"].number, offset);
            const std::vector<JsonValue>& rows = (*json)["rows"].items;
            const std::vector<std::string> expected = ExpectedValues(bytes, offset, encoding);
            ASSERT_EQ(rows.size(), 12u);
            for (std::size_t row = 0; row < rows.size(); ++row) {
                EXPECT_EQ(rows[row]["value"].text, expected[row]) << "offset " << offset << " row " << row << " encoding " << value;
            }
            EXPECT_EQ(rows[0]["key"].text, "inspector.data.row.binary");
            EXPECT_EQ(rows[11]["label"].text, "Encoding");
        }
    }
}

TEST(InspectCommand, PlainTextListsLabelsAndValues)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.Write("a5.bin", {0xA5});
    const CliRun run = RunCliCaptured({"inspect", PathText(path), "--offset", "0"});
    ASSERT_EQ(run.exitCode, 0);
    const std::vector<std::string> lines = SplitLines(run.out);
    ASSERT_EQ(lines.size(), 12u);
    EXPECT_EQ(lines[0], "Binary:     0b1010_0101");
    EXPECT_EQ(lines[1], "UInt8:      165 / 0xA5");
    EXPECT_EQ(lines[2], "UInt16 LE:  Not available");
}

TEST(InspectCommand, AtTheEndOfTheFileEveryRowIsUnavailable)
{
    CliTemporaryFolder folder;
    for (const auto& [name, bytes] : std::vector<std::pair<std::string, std::vector<std::uint8_t>>>{{"empty.bin", {}}, {"two.bin", {1, 2}}}) {
        const std::filesystem::path path = folder.Write(name, bytes);
        const CliRun run = RunCliCaptured({"inspect", PathText(path), "--offset", std::to_string(bytes.size())});
        ASSERT_EQ(run.exitCode, 0) << run.err;
        for (const std::string& line : SplitLines(run.out)) {
            EXPECT_NE(line.find("Not available"), std::string::npos) << line;
        }
    }
}

TEST(InspectCommand, AValueAtAnOffsetPastFourGigabytes)
{
    CliTemporaryFolder folder;
    const std::uint64_t size = 0x100000000ull + 8;
    const std::filesystem::path path = folder.WriteSparse("big.bin", size, {0x01, 0x02, 0x03, 0x04});
    const CliRun run = RunCliCaptured({"inspect", PathText(path), "--offset", "0x100000004"});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(SplitLines(run.out)[4], "UInt32 LE:  67305985 / 0x04030201");
}

TEST(InspectCommand, MissingOrBadOffsetIsBadUsage)
{
    CliTemporaryFolder folder;
    const std::string path = PathText(folder.Write("two.bin", {1, 2}));
    const CliRun missing = RunCliCaptured({"inspect", path});
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_EQ(missing.err, "tolmo-cli inspect: --offset N is missing\n");
    const CliRun past = RunCliCaptured({"inspect", path, "--offset", "3"});
    EXPECT_EQ(past.exitCode, 2);
    EXPECT_EQ(past.err, "tolmo-cli inspect: --offset 3 is past the end of the file (2 bytes)\n");
    const CliRun bad = RunCliCaptured({"inspect", path, "--offset", "0x"});
    EXPECT_EQ(bad.exitCode, 2);
    EXPECT_EQ(bad.err, "tolmo-cli inspect: --offset \"0x\" is not a number (decimal, or hexadecimal after 0x)\n");
}

} // namespace tlm::test
