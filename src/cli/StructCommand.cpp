#include "cli/StructCommand.h"

#include "cli/CliCommon.h"
#include "cli/CliOutput.h"
#include "cli/CliTexts.h"
#include "cli/JsonWriter.h"
#include "document/FileViewModel.h"
#include "structview/StructPatternLoader.h"
#include "structview/StructRows.h"
#include "structview/StructSnapshotSize.h"

#include <algorithm>
#include <array>
#include <memory>

namespace tlm {

namespace {

constexpr std::string_view Command = "struct";

constexpr std::array<CliOptionRule, 6> Options{{
    {"--pattern", 1, false},
    {"--offset", 1, false},
    {"--dec", 0, false},
    {"--big-endian", 0, false},
    {"--ascii", 0, false},
    {"--json", 0, false},
}};

// Characters a terminal gives the text, counted as code points: enough to line the columns up for
// the names and offsets, which are ASCII in every shipped pattern.
std::size_t CodePointCount(std::string_view utf8)
{
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(),
        [](char character) { return (static_cast<unsigned char>(character) & 0xC0) != 0x80; }));
}

// The loader's text with "\n" line ends, after the name of the pattern file.
std::string LoaderErrorText(const std::string& patternPath, const std::u16string& error)
{
    std::string text = ToUtf8(error);
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return std::string(StructErrorPrefix) + ": " + patternPath + ": " + text;
}

std::string RowsAsText(const std::vector<StructRow>& rows)
{
    struct Line {
        std::string name, offset, size, value;
    };
    std::vector<Line> lines;
    std::size_t nameWidth = 0;
    std::size_t offsetWidth = 0;
    std::size_t sizeWidth = 0;
    for (const StructRow& row : rows) {
        Line line{ToUtf8(row.name), ToUtf8(row.offset), ToUtf8(row.size), ToUtf8(row.value)};
        nameWidth = std::max(nameWidth, CodePointCount(line.name));
        offsetWidth = std::max(offsetWidth, CodePointCount(line.offset));
        sizeWidth = std::max(sizeWidth, CodePointCount(line.size));
        lines.push_back(std::move(line));
    }
    std::string text;
    const auto cell = [&text](const std::string& value, std::size_t width) {
        text += value;
        text.append(width - CodePointCount(value) + 2, ' ');
    };
    for (const Line& line : lines) {
        cell(line.name, nameWidth);
        cell(line.offset, offsetWidth);
        cell(line.size, sizeWidth);
        text += line.value;
        while (!text.empty() && text.back() == ' ') {
            text.pop_back();
        }
        text += '\n';
    }
    return text;
}

std::string RowsAsJson(std::uint64_t offset, const std::vector<StructRow>& rows)
{
    JsonWriter json;
    json.BeginObject();
    json.Key("offset");
    json.Number(offset);
    json.Key("rows");
    json.BeginArray();
    for (const StructRow& row : rows) {
        json.BeginObject();
        json.Key("name");
        json.String(ToUtf8(row.name));
        json.Key("offset");
        json.String(ToUtf8(row.offset));
        json.Key("type");
        json.String(ToUtf8(row.type));
        json.Key("value");
        json.String(ToUtf8(row.value));
        json.Key("size");
        json.String(ToUtf8(row.size));
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return json.TakeText() + "\n";
}

} // namespace

int RunStructCommand(std::span<const std::string> words, CliStreams& streams)
{
    const std::optional<CliArguments> arguments = ParseCommandWords(streams, Command, words, Options);
    if (!arguments) {
        return CliBadInput;
    }
    const std::optional<std::string> patternPath = arguments->Value("--pattern");
    if (!patternPath) {
        return FailCli(streams, Command, "--pattern FILE.tlpat is missing");
    }
    std::uint64_t offset = 0;
    if (!ReadNumberOption(streams, Command, *arguments, "--offset", 0, offset)) {
        return CliBadInput;
    }
    const std::optional<std::u16string> corePatternPath = CorePath(*patternPath);
    auto pattern = std::make_shared<StructPatternFile>();
    std::u16string error;
    if (!corePatternPath || !LoadStructPatternFile(*corePatternPath, *pattern, error)) {
        return FailCli(streams, Command, LoaderErrorText(*patternPath, error));
    }
    FileViewModel file;
    if (!OpenCliFile(streams, Command, arguments->positionals.front(), file)) {
        return CliBadInput;
    }
    if (offset > file.GetSize()) {
        return FailCli(streams, Command, "--offset " + std::to_string(offset) + " is past the end of the file ("
            + std::to_string(file.GetSize()) + " bytes)");
    }
    StructEvalRequest request;
    request.baseOffset = offset;
    request.bytes = file.Read(offset, StructSnapshotSize(*pattern)).bytes;
    request.patternFile = pattern;
    request.unavailableText = std::u16string(UnavailableText);
    request.valueFormat.byteArrayFormat = arguments->Has("--ascii") ? 1 : 0;
    request.valueFormat.endian = arguments->Has("--big-endian") ? 1 : 0;
    request.valueFormat.numericBase = arguments->Has("--dec") ? 1 : 0;
    const std::vector<StructRow> rows = BuildStructRows(request);
    CliOutput output(streams);
    output.Append(arguments->Has("--json") ? RowsAsJson(offset, rows) : RowsAsText(rows));
    return CliSuccess;
}

} // namespace tlm
