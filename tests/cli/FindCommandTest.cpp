#include "CliTestSupport.h"

#include "document/ByteSearch.h"
#include "document/FileViewModel.h"
#include "encoding/EncodingCatalogue.h"
#include "encoding/SearchTextEncoder.h"
#include "encoding/Utf8.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace tlm::test {

namespace {

constexpr std::string_view InvalidHex =
    "The hexadecimal bytes are not valid. Enter each byte as two hexadecimal digits, for example 4A 6F.";
constexpr std::string_view InvalidText =
    "The search text is empty or cannot be represented exactly in the current encoding.";
constexpr std::string_view TooLong = "The search pattern must be between 1 and 4,096 bytes long.";

// Every offset where the pattern starts, by the plainest possible scan.
std::vector<std::uint64_t> NaiveHits(const std::vector<std::uint8_t>& bytes, const std::vector<std::uint8_t>& pattern)
{
    std::vector<std::uint64_t> hits;
    for (std::size_t at = 0; at + pattern.size() <= bytes.size(); ++at) {
        if (std::equal(pattern.begin(), pattern.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at))) {
            hits.push_back(at);
        }
    }
    return hits;
}

std::vector<std::uint64_t> Numbers(const std::string& out)
{
    std::vector<std::uint64_t> numbers;
    for (const std::string& line : SplitLines(out)) {
        numbers.push_back(std::stoull(line));
    }
    return numbers;
}

// Bytes of two values only, so that short patterns hit often and overlap; long enough to cross the
// blocks the scan reads.
std::vector<std::uint8_t> TwoLetterBytes(std::size_t count, std::uint32_t seed)
{
    std::vector<std::uint8_t> bytes = RandomBytes(count, seed);
    for (std::uint8_t& byte : bytes) {
        byte = (byte & 1) != 0 ? 'A' : 'B';
    }
    return bytes;
}

} // namespace

TEST(FindCommand, AllHitsForwardEqualANaiveScanOverlapsIncluded)
{
    CliTemporaryFolder folder;
    const std::vector<std::uint8_t> bytes = TwoLetterBytes(5 * 1024 * 1024 + 77, 11);
    const std::filesystem::path path = folder.Write("ab.bin", bytes);
    for (const std::string pattern : {"A", "ABA", "AAAA", "ABABABABABAB"}) {
        const std::vector<std::uint64_t> expected = NaiveHits(bytes, std::vector<std::uint8_t>(pattern.begin(), pattern.end()));
        const CliRun run = RunCliCaptured({"find", PathText(path), "--text", pattern, "--all"});
        ASSERT_EQ(run.exitCode, expected.empty() ? 1 : 0);
        EXPECT_EQ(Numbers(run.out), expected) << pattern;
        const CliRun count = RunCliCaptured({"find", PathText(path), "--text", pattern, "--count"});
        EXPECT_EQ(count.out, std::to_string(expected.size()) + "\n") << pattern;
    }
}

TEST(FindCommand, AllHitsFromAnOffsetInBothDirectionsEqualANaiveScan)
{
    CliTemporaryFolder folder;
    const std::vector<std::uint8_t> bytes = TwoLetterBytes(3 * 1024 * 1024, 5);
    const std::filesystem::path path = folder.Write("ab.bin", bytes);
    const std::vector<std::uint8_t> pattern{'B', 'A', 'A', 'B', 'A'};
    const std::vector<std::uint64_t> all = NaiveHits(bytes, pattern);
    for (const std::uint64_t from : {std::uint64_t{0}, std::uint64_t{1}, all[3], all[3] + 1, std::uint64_t{2 * 1024 * 1024 - 2},
             std::uint64_t{bytes.size() - 1}, std::uint64_t{bytes.size()}}) {
        std::vector<std::uint64_t> forward;
        std::vector<std::uint64_t> backward;
        for (const std::uint64_t hit : all) {
            if (hit >= from) {
                forward.push_back(hit);
            }
            if (hit <= from) {
                backward.push_back(hit);
            }
        }
        std::reverse(backward.begin(), backward.end());
        const std::string fromText = "0x" + [&] {
            char text[32];
            std::snprintf(text, sizeof text, "%llX", static_cast<unsigned long long>(from));
            return std::string(text);
        }();
        const CliRun ahead = RunCliCaptured({"find", PathText(path), "--hex", "42 41 41 42 41", "--all", "--from", fromText});
        const CliRun behind = RunCliCaptured({"find", PathText(path), "--hex", "4241414241", "--all", "--backward", "--from", std::to_string(from)});
        EXPECT_EQ(Numbers(ahead.out), forward) << from;
        EXPECT_EQ(Numbers(behind.out), backward) << from;
        const CliRun count = RunCliCaptured({"find", PathText(path), "--hex", "42 41 41 42 41", "--count", "--backward", "--from", std::to_string(from)});
        EXPECT_EQ(count.out, std::to_string(backward.size()) + "\n");
        EXPECT_EQ(count.exitCode, backward.empty() ? 1 : 0);
    }
}

TEST(FindCommand, TheFirstHitIsTheSearchEnginesInBothDirections)
{
    CliTemporaryFolder folder;
    const std::vector<std::uint8_t> bytes = TwoLetterBytes(2 * 1024 * 1024 + 500, 9);
    const std::filesystem::path path = folder.Write("ab.bin", bytes);
    FileViewModel file;
    ASSERT_TRUE(file.Open(path.u16string()));
    const std::vector<std::uint8_t> pattern{'A', 'B', 'B', 'A', 'A', 'B', 'A', 'B'};
    std::mt19937 generator(4);
    for (int trial = 0; trial < 20; ++trial) {
        const std::uint64_t from = generator() % bytes.size();
        for (const bool backward : {false, true}) {
            const SearchResult expected = backward ? SearchBackward(&file, pattern, from) : SearchForward(&file, pattern, from);
            std::vector<std::string> arguments{"find", PathText(path), "--text", "ABBAABAB", "--from", std::to_string(from)};
            if (backward) {
                arguments.push_back("--backward");
            }
            const CliRun run = RunCliCaptured(arguments);
            if (expected.status == SearchStatus::Found) {
                EXPECT_EQ(run.exitCode, 0);
                EXPECT_EQ(run.out, std::to_string(expected.offset) + "\n");
            } else {
                EXPECT_EQ(run.exitCode, 1);
                EXPECT_EQ(run.out, "");
            }
        }
    }
}

TEST(FindCommand, TextIsFoundInEveryEncodingAsItsExactBytes)
{
    CliTemporaryFolder folder;
    const std::u16string query = u"Tolmo";
    for (std::uint32_t value = 0; value < TextEncodingCount; ++value) {
        const auto encoding = static_cast<TextEncoding>(value);
        const std::optional<std::vector<std::uint8_t>> pattern = EncodeSearchText(query, encoding);
        ASSERT_TRUE(pattern.has_value());
        std::vector<std::uint8_t> bytes = RandomBytes(1000, value);
        bytes.insert(bytes.begin() + 100, pattern->begin(), pattern->end());
        bytes.insert(bytes.begin() + 700, pattern->begin(), pattern->end());
        const std::filesystem::path path = folder.Write("text.bin", bytes);
        const CliRun run = RunCliCaptured({"find", PathText(path), "--text", "Tolmo", "--encoding",
            Utf16ToUtf8(EncodingDisplayName(encoding)), "--all"});
        EXPECT_EQ(Numbers(run.out), NaiveHits(bytes, *pattern)) << value;
    }
}

TEST(FindCommand, JapaneseTextIsConvertedToShiftJis)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.Write("sjis.bin", {0x41, 0x82, 0xA0, 0x82, 0xA2, 0x82, 0xA0});
    const CliRun run = RunCliCaptured({"find", PathText(path), "--text", "\xE3\x81\x82", "--encoding", "sjis", "--all"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "1\n5\n");
}

TEST(FindCommand, TextTheEncodingCannotHoldIsRefusedWithTheDialogsMessage)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.WriteText("file.txt", "caf\xC3\xA9");
    const CliRun ascii = RunCliCaptured({"find", PathText(path), "--text", "caf\xC3\xA9"});
    EXPECT_EQ(ascii.exitCode, 2);
    EXPECT_EQ(ascii.err, "tolmo-cli find: " + std::string(InvalidText) + "\n");
    const CliRun thai = RunCliCaptured({"find", PathText(path), "--text", "\xE2\x82\xAC", "--encoding", "tis-620"});
    EXPECT_EQ(thai.exitCode, 2);
    const CliRun blanks = RunCliCaptured({"find", PathText(path), "--text", "   "});
    EXPECT_EQ(blanks.exitCode, 2);
    EXPECT_EQ(blanks.err, "tolmo-cli find: " + std::string(InvalidText) + "\n");
}

TEST(FindCommand, BadHexIsRefusedWithTheDialogsMessage)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.WriteText("file.txt", "JK");
    for (const std::string query : {"4A 4", "4G", "0x4A", "  "}) {
        const CliRun run = RunCliCaptured({"find", PathText(path), "--hex", query});
        EXPECT_EQ(run.exitCode, 2) << query;
        EXPECT_EQ(run.err, "tolmo-cli find: " + std::string(InvalidHex) + "\n") << query;
    }
    const CliRun good = RunCliCaptured({"find", PathText(path), "--hex", " 4a\t4B "});
    EXPECT_EQ(good.exitCode, 0);
    EXPECT_EQ(good.out, "0\n");
}

TEST(FindCommand, APatternOverFourThousandNinetySixBytesIsTooLong)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.WriteText("file.txt", "x");
    std::string hex;
    for (int index = 0; index < 4097; ++index) {
        hex += "41";
    }
    const CliRun run = RunCliCaptured({"find", PathText(path), "--hex", hex});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.err, "tolmo-cli find: " + std::string(TooLong) + "\n");
    const CliRun text = RunCliCaptured({"find", PathText(path), "--text", std::string(4097, 'a')});
    EXPECT_EQ(text.exitCode, 2);
    EXPECT_EQ(text.err, "tolmo-cli find: " + std::string(TooLong) + "\n");
}

TEST(FindCommand, NotFoundGivesExitCodeOneAndTheDialogsMessage)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.WriteText("file.txt", "hello");
    const CliRun run = RunCliCaptured({"find", PathText(path), "--text", "bye"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "tolmo-cli find: No match was found.\n");
    const CliRun count = RunCliCaptured({"find", PathText(path), "--text", "bye", "--count"});
    EXPECT_EQ(count.exitCode, 1);
    EXPECT_EQ(count.out, "0\n");
    const CliRun empty = RunCliCaptured({"find", PathText(folder.Write("empty.bin", {})), "--hex", "00"});
    EXPECT_EQ(empty.exitCode, 1);
}

TEST(FindCommand, BadUsageNamesWhatWasWrong)
{
    CliTemporaryFolder folder;
    const std::string path = PathText(folder.WriteText("file.txt", "hello"));
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
        {{"find", path}, "tolmo-cli find: give exactly one of --text TEXT or --hex BYTES\n"},
        {{"find", path, "--text", "a", "--hex", "61"}, "tolmo-cli find: give exactly one of --text TEXT or --hex BYTES\n"},
        {{"find", path, "--hex", "61", "--encoding", "utf8"}, "tolmo-cli find: --encoding applies to --text only\n"},
        {{"find", path, "--text", "l", "--from", "6"}, "tolmo-cli find: --from 6 is past the end of the file (5 bytes)\n"},
        {{"find", path, "--text", "l", "--from", "-1"}, "tolmo-cli find: --from \"-1\" is not a number (decimal, or hexadecimal after 0x)\n"},
        {{"find", path, "--text"}, "tolmo-cli find: --text needs a value\n"},
        {{"find", path, "--text", "l", "--everything"}, "tolmo-cli find: unknown option --everything\n"},
        {{"find", "--text", "l"}, "tolmo-cli find: FILE is missing\n"},
    };
    for (const auto& [arguments, message] : cases) {
        const CliRun run = RunCliCaptured(arguments);
        EXPECT_EQ(run.exitCode, 2) << message;
        EXPECT_EQ(run.err, message);
        EXPECT_EQ(run.out, "");
    }
}

TEST(FindCommand, JsonGivesThePatternTheHitsAndTheirCount)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.WriteText("file.txt", "abcabcab");
    const CliRun run = RunCliCaptured({"find", PathText(path), "--text", "ab", "--all", "--json"});
    ASSERT_EQ(run.exitCode, 0);
    const std::optional<JsonValue> json = ParseJson(run.out);
    ASSERT_TRUE(json.has_value());
    EXPECT_EQ((*json)["pattern"].text, "61 62");
    EXPECT_EQ((*json)["direction"].text, "forward");
    EXPECT_EQ((*json)["from"].number, 0u);
    EXPECT_EQ((*json)["count"].number, 3u);
    ASSERT_EQ((*json)["hits"].items.size(), 3u);
    EXPECT_EQ((*json)["hits"].items[2].number, 6u);
    const CliRun first = RunCliCaptured({"find", PathText(path), "--text", "ab", "--backward", "--json"});
    const std::optional<JsonValue> firstJson = ParseJson(first.out);
    ASSERT_TRUE(firstJson.has_value());
    EXPECT_EQ((*firstJson)["direction"].text, "backward");
    EXPECT_EQ((*firstJson)["from"].number, 7u);
    ASSERT_EQ((*firstJson)["hits"].items.size(), 1u);
    EXPECT_EQ((*firstJson)["hits"].items[0].number, 6u);
    const CliRun count = RunCliCaptured({"find", PathText(path), "--text", "ab", "--count", "--json"});
    const std::optional<JsonValue> countJson = ParseJson(count.out);
    ASSERT_TRUE(countJson.has_value());
    EXPECT_FALSE(countJson->Has("hits"));
    EXPECT_EQ((*countJson)["count"].number, 3u);
}

TEST(FindCommand, HitsPastFourGigabytesAreFoundInASparseFile)
{
    CliTemporaryFolder folder;
    const std::uint64_t size = 0x100000000ull + 4096;
    const std::filesystem::path path = folder.WriteSparse("big.bin", size, {'T', 'A', 'I', 'L', 0});
    const std::string from = std::to_string(size - 3 * 1024 * 1024);
    const CliRun forward = RunCliCaptured({"find", PathText(path), "--text", "TAIL", "--from", from});
    EXPECT_EQ(forward.exitCode, 0) << forward.err;
    EXPECT_EQ(forward.out, std::to_string(size - 5) + "\n");
    const CliRun backward = RunCliCaptured({"find", PathText(path), "--hex", "54 41 49 4C", "--backward"});
    EXPECT_EQ(backward.out.substr(0, backward.out.find('\n')), std::to_string(size - 5));
}

TEST(FindCommand, AProgressBarShowsOnATerminalAndIsErasedAfterwards)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.WriteSparse("zeros.bin", 96ull * 1024 * 1024, {'Z'});
    const CliRun terminal = RunCliCaptured({"find", PathText(path), "--text", "Z", "--all"}, true);
    EXPECT_EQ(terminal.exitCode, 0);
    EXPECT_EQ(terminal.out, std::to_string(96ull * 1024 * 1024 - 1) + "\n");
    EXPECT_NE(terminal.err.find("100%"), std::string::npos);
    EXPECT_EQ(terminal.err.back(), '\r');
    const CliRun pipe = RunCliCaptured({"find", PathText(path), "--text", "Z", "--all"}, false);
    EXPECT_EQ(pipe.err, "");
}

} // namespace tlm::test
