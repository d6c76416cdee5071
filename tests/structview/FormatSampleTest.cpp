// The shipped patterns read over real files that other tools wrote. Each sample comes with an .expect
// file (made beside it by tests/structview/format-samples) naming the pattern, the value format and
// the fields whose values the tool set or reported:
//
//   pattern png                 the file patterns/png.tlpat
//   sample image.png            beside the .expect file
//   offset 0x10                 where the entry struct starts (decimal or 0x; 0 when absent)
//   format big dec ascii        little|big, hex|dec, bytes|ascii; applies to the fields after it
//   field ihdr.width = 640      a row's path (header name, a point, member name) and its exact value
#include "structview/StructPatternLoader.h"
#include "structview/StructRows.h"
#include "structview/StructSnapshotSize.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace tlm {
namespace {

const std::filesystem::path SamplesFolder = TOLMO_FORMAT_SAMPLES_DIR;
const std::filesystem::path PatternsFolder = std::filesystem::path(TOLMO_SOURCE_DIR) / "patterns";
constexpr char16_t Unavailable[] = u"n/a";

std::string Narrow(std::u16string_view text)
{
    std::string narrow;
    for (char16_t unit : text)
        narrow.push_back(unit < 0x80 ? static_cast<char>(unit) : '?');
    return narrow;
}

std::string Trim(std::string text)
{
    const auto notBlank = [](unsigned char c) { return c != ' ' && c != '\t' && c != '\r'; };
    text.erase(text.begin(), std::find_if(text.begin(), text.end(), notBlank));
    text.erase(std::find_if(text.rbegin(), text.rend(), notBlank).base(), text.end());
    return text;
}

struct ExpectedField {
    StructValueFormat format;
    std::string path;
    std::string value;
    int line = 0;
};

struct Expectation {
    std::string name;
    std::string pattern;
    std::string sample;
    std::uint64_t offset = 0;
    std::vector<ExpectedField> fields;
    std::string problem; // set when the .expect file itself is malformed
};

std::optional<std::uint64_t> ParseNumber(const std::string& text)
{
    if (text.empty())
        return std::nullopt;
    try {
        std::size_t used = 0;
        const bool hex = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
        const std::uint64_t value = std::stoull(hex ? text.substr(2) : text, &used, hex ? 16 : 10);
        if (used != text.size() - (hex ? 2 : 0))
            return std::nullopt;
        return value;
    } catch (...) {
        return std::nullopt;
    }
}

Expectation ReadExpectation(const std::filesystem::path& path)
{
    Expectation expectation;
    expectation.name = path.stem().string();
    std::ifstream in(path);
    StructValueFormat format;
    std::string line;
    int lineNumber = 0;
    while (std::getline(in, line)) {
        ++lineNumber;
        line = Trim(line);
        if (line.empty() || line[0] == '#')
            continue;
        const std::size_t space = line.find(' ');
        const std::string keyword = line.substr(0, space);
        const std::string rest = space == std::string::npos ? "" : Trim(line.substr(space + 1));
        if (keyword == "pattern") {
            expectation.pattern = rest;
        } else if (keyword == "sample") {
            expectation.sample = rest;
        } else if (keyword == "offset") {
            const auto offset = ParseNumber(rest);
            if (!offset)
                expectation.problem = "line " + std::to_string(lineNumber) + ": bad offset";
            expectation.offset = offset.value_or(0);
        } else if (keyword == "format") {
            format = {};
            std::istringstream words(rest);
            for (std::string word; words >> word;) {
                if (word == "big")
                    format.endian = 1;
                else if (word == "dec")
                    format.numericBase = 1;
                else if (word == "ascii")
                    format.byteArrayFormat = 1;
                else if (word != "little" && word != "hex" && word != "bytes")
                    expectation.problem = "line " + std::to_string(lineNumber) + ": unknown format word " + word;
            }
        } else if (keyword == "field") {
            const std::size_t equals = rest.find(" = ");
            if (equals == std::string::npos) {
                // An empty value is written "path =".
                if (rest.size() >= 2 && rest.substr(rest.size() - 2) == " =")
                    expectation.fields.push_back({format, Trim(rest.substr(0, rest.size() - 2)), "", lineNumber});
                else
                    expectation.problem = "line " + std::to_string(lineNumber) + ": a field needs \" = \"";
                continue;
            }
            expectation.fields.push_back({format, Trim(rest.substr(0, equals)), rest.substr(equals + 3), lineNumber});
        } else {
            expectation.problem = "line " + std::to_string(lineNumber) + ": unknown keyword " + keyword;
        }
    }
    if (expectation.pattern.empty() || expectation.sample.empty())
        expectation.problem = "needs a pattern and a sample line";
    return expectation;
}

std::vector<std::filesystem::path> ExpectFiles()
{
    std::vector<std::filesystem::path> files;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(SamplesFolder, error)) {
        if (entry.path().extension() == ".expect")
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::shared_ptr<const StructPatternFile> LoadShipped(const std::string& name, std::u16string& error)
{
    auto file = std::make_shared<StructPatternFile>();
    if (!LoadStructPatternFile((PatternsFolder / (name + ".tlpat")).u16string(), *file, error))
        return nullptr;
    return file;
}

std::vector<std::uint8_t> ReadBytes(const std::filesystem::path& path, std::uint64_t offset, std::uint64_t count)
{
    std::ifstream in(path, std::ios::binary);
    in.seekg(static_cast<std::streamoff>(offset));
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(count));
    in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(std::max<std::streamsize>(in.gcount(), 0)));
    return bytes;
}

std::vector<StructRow> Rows(const std::shared_ptr<const StructPatternFile>& pattern, std::vector<std::uint8_t> bytes,
    StructValueFormat format, std::uint64_t baseOffset)
{
    StructEvalRequest request;
    request.baseOffset = baseOffset;
    request.bytes = std::move(bytes);
    request.patternFile = pattern;
    request.unavailableText = Unavailable;
    request.valueFormat = format;
    return BuildStructRows(request);
}

// Paths of the rows: a member of an expanded struct field is "field.member"; "name : Type" headers and
// top-level members go by their name alone.
std::map<std::string, const StructRow*> RowsByPath(const std::vector<StructRow>& rows)
{
    std::map<std::string, const StructRow*> byPath;
    std::string parent;
    for (const StructRow& row : rows) {
        const std::string name = Narrow(row.name);
        const bool indented = !name.empty() && name[0] == ' ';
        std::string own = Trim(name);
        const std::size_t colon = own.find(" : ");
        if (colon != std::string::npos)
            own = own.substr(0, colon);
        if (!indented)
            parent = own;
        byPath[indented ? parent + "." + own : own] = &row;
    }
    return byPath;
}

std::string Listing(const std::vector<StructRow>& rows)
{
    std::string text;
    for (const StructRow& row : rows)
        text += Narrow(row.name) + " | " + Narrow(row.offset) + " | " + Narrow(row.value) + " | " + Narrow(row.size) + "\n";
    return text;
}

class FormatSample : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(FormatSample, EveryExpectedFieldReadsAsTheToolWroteIt)
{
    const Expectation expectation = ReadExpectation(GetParam());
    ASSERT_EQ(expectation.problem, "") << GetParam();
    ASSERT_FALSE(expectation.fields.empty()) << "no field checked in " << GetParam();
    std::u16string error;
    const auto pattern = LoadShipped(expectation.pattern, error);
    ASSERT_NE(pattern, nullptr) << expectation.pattern << ": " << Narrow(error);
    const std::filesystem::path sample = SamplesFolder / expectation.sample;
    ASSERT_TRUE(std::filesystem::exists(sample)) << sample;
    const std::vector<std::uint8_t> bytes = ReadBytes(sample, expectation.offset, StructSnapshotSize(*pattern));

    for (const ExpectedField& field : expectation.fields) {
        const std::vector<StructRow> rows = Rows(pattern, bytes, field.format, expectation.offset);
        const auto byPath = RowsByPath(rows);
        const auto found = byPath.find(field.path);
        if (found == byPath.end()) {
            ADD_FAILURE() << GetParam().filename() << " line " << field.line << ": no row " << field.path << "\n"
                          << Listing(rows);
            continue;
        }
        EXPECT_EQ(Narrow(found->second->value), field.value)
            << GetParam().filename() << " line " << field.line << ": " << field.path;
    }
}

std::uint64_t RowEnd(const StructRow& row)
{
    return ParseNumber(Narrow(row.offset)).value_or(0) + ParseNumber(Narrow(row.size)).value_or(0);
}

// Cut short anywhere, a sample shows every member the bytes still reach and the unavailable text for
// the rest; it never stops the evaluation.
TEST_P(FormatSample, ATruncatedSampleShowsUnavailableValuesPastItsEnd)
{
    const Expectation expectation = ReadExpectation(GetParam());
    ASSERT_EQ(expectation.problem, "");
    std::u16string error;
    const auto pattern = LoadShipped(expectation.pattern, error);
    ASSERT_NE(pattern, nullptr) << Narrow(error);
    const std::vector<std::uint8_t> whole
        = ReadBytes(SamplesFolder / expectation.sample, expectation.offset, StructSnapshotSize(*pattern));
    std::set<std::size_t> lengths {0, 1, 2, whole.size() / 2, whole.size()};
    if (!whole.empty())
        lengths.insert(whole.size() - 1);
    for (std::size_t length = 0; length < whole.size() && length < 600; length += 7)
        lengths.insert(length);
    for (const std::size_t length : lengths) {
        const std::vector<std::uint8_t> cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        const std::vector<StructRow> rows = Rows(pattern, cut, StructValueFormat {}, expectation.offset);
        ASSERT_FALSE(rows.empty());
        for (const StructRow& row : rows) {
            // A flexible array shows whatever bytes there are, none included.
            if (row.value.empty() || row.size.empty() || row.size.back() == u'+')
                continue;
            const bool reached = RowEnd(row) <= expectation.offset + length;
            if (!reached)
                EXPECT_EQ(row.value, Unavailable) << "cut at " << length << ": " << Narrow(row.name);
            else
                EXPECT_NE(row.value, Unavailable) << "cut at " << length << ": " << Narrow(row.name);
        }
    }
}

TEST_P(FormatSample, GarbageBytesGiveRowsForEveryFormat)
{
    const Expectation expectation = ReadExpectation(GetParam());
    std::u16string error;
    const auto pattern = LoadShipped(expectation.pattern, error);
    ASSERT_NE(pattern, nullptr) << Narrow(error);
    std::mt19937_64 random(0x70'6C'6D);
    for (int trial = 0; trial < 8; ++trial) {
        std::vector<std::uint8_t> garbage(static_cast<std::size_t>(StructSnapshotSize(*pattern)));
        for (auto& byte : garbage)
            byte = static_cast<std::uint8_t>(random());
        const StructValueFormat format {static_cast<std::uint32_t>(trial & 1), static_cast<std::uint32_t>((trial >> 1) & 1),
            static_cast<std::uint32_t>((trial >> 2) & 1)};
        const std::vector<StructRow> rows = Rows(pattern, garbage, format, 0xFFFF'FFFF'0000ull);
        ASSERT_FALSE(rows.empty());
        for (const StructRow& row : rows)
            EXPECT_NE(row.value, Unavailable) << Narrow(row.name);
    }
}

std::string SampleName(const testing::TestParamInfo<std::filesystem::path>& info)
{
    std::string name;
    for (char c : info.param.stem().string())
        name.push_back(std::isalnum(static_cast<unsigned char>(c)) ? c : '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Shipped, FormatSample, testing::ValuesIn(ExpectFiles()), SampleName);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(FormatSample);

// Every pattern that ships is checked against at least one real file.
TEST(FormatSamples, EveryShippedPatternHasARealSample)
{
    std::set<std::string> covered;
    for (const auto& path : ExpectFiles())
        covered.insert(ReadExpectation(path).pattern);
    std::vector<std::string> missing;
    for (const auto& entry : std::filesystem::directory_iterator(PatternsFolder)) {
        if (entry.path().extension() == ".tlpat" && !covered.count(entry.path().stem().string()))
            missing.push_back(entry.path().stem().string());
    }
    std::sort(missing.begin(), missing.end());
    std::string list;
    for (const auto& name : missing)
        list += " " + name;
    EXPECT_TRUE(missing.empty()) << "patterns without a sample:" << list;
}

} // namespace
} // namespace tlm
