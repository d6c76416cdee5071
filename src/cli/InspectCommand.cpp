#include "cli/InspectCommand.h"

#include "cli/CliCommon.h"
#include "cli/CliOutput.h"
#include "cli/CliTexts.h"
#include "cli/JsonWriter.h"
#include "document/FileViewModel.h"
#include "encoding/EncodingCatalogue.h"
#include "inspector/InspectorRows.h"

#include <array>

namespace tlm {

namespace {

constexpr std::string_view Command = "inspect";

constexpr std::array<CliOptionRule, 3> Options{{
    {"--offset", 1, false},
    {"--encoding", 1, false},
    {"--json", 0, false},
}};

struct InspectorRowName {
    std::string_view key;
    std::string_view label;
};

// The rows' keys and English labels, in the inspector's order.
constexpr std::array<InspectorRowName, InspectorRowCount> RowNames{{
    {"inspector.data.row.binary", "Binary"},
    {"inspector.data.row.uint8_dec", "UInt8"},
    {"inspector.data.row.uint16_le", "UInt16 LE"},
    {"inspector.data.row.uint16_be", "UInt16 BE"},
    {"inspector.data.row.uint32_le", "UInt32 LE"},
    {"inspector.data.row.uint32_be", "UInt32 BE"},
    {"inspector.data.row.uint64_le", "UInt64 LE"},
    {"inspector.data.row.uint64_be", "UInt64 BE"},
    {"inspector.data.row.utf8", "UTF-8"},
    {"inspector.data.row.utf16le", "UTF-16 LE"},
    {"inspector.data.row.utf16be", "UTF-16 BE"},
    {"inspector.data.row.current_encoding_char", "Encoding"},
}};

constexpr std::size_t LabelWidth = 11;

std::string RowsAsText(const std::vector<std::u16string>& values)
{
    std::string text;
    for (std::size_t index = 0; index < values.size() && index < RowNames.size(); ++index) {
        text += RowNames[index].label;
        text += ':';
        text.append(LabelWidth - RowNames[index].label.size(), ' ');
        AppendUtf8(text, values[index]);
        text += '\n';
    }
    return text;
}

std::string RowsAsJson(std::uint64_t offset, TextEncoding encoding, const std::vector<std::u16string>& values)
{
    JsonWriter json;
    json.BeginObject();
    json.Key("offset");
    json.Number(offset);
    json.Key("encoding");
    json.String(ToUtf8(EncodingDisplayName(encoding)));
    json.Key("rows");
    json.BeginArray();
    for (std::size_t index = 0; index < values.size() && index < RowNames.size(); ++index) {
        json.BeginObject();
        json.Key("key");
        json.String(RowNames[index].key);
        json.Key("label");
        json.String(RowNames[index].label);
        json.Key("value");
        json.String(ToUtf8(values[index]));
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return json.TakeText() + "\n";
}

} // namespace

int RunInspectCommand(std::span<const std::string> words, CliStreams& streams)
{
    const std::optional<CliArguments> arguments = ParseCommandWords(streams, Command, words, Options);
    if (!arguments) {
        return CliBadInput;
    }
    if (!arguments->Has("--offset")) {
        return FailCli(streams, Command, "--offset N is missing");
    }
    TextEncoding encoding = TextEncoding::Ascii;
    std::uint64_t offset = 0;
    if (!ReadEncodingOption(streams, Command, *arguments, encoding)
        || !ReadNumberOption(streams, Command, *arguments, "--offset", 0, offset)) {
        return CliBadInput;
    }
    FileViewModel file;
    if (!OpenCliFile(streams, Command, arguments->positionals.front(), file)) {
        return CliBadInput;
    }
    if (offset > file.GetSize()) {
        return FailCli(streams, Command, "--offset " + std::to_string(offset) + " is past the end of the file ("
            + std::to_string(file.GetSize()) + " bytes)");
    }
    InspectorRequest request;
    request.offset = offset;
    request.encoding = encoding;
    request.bytes = file.Read(offset, InspectorSnapshotSize).bytes;
    const std::vector<std::u16string> values = BuildInspectorRows(request, std::u16string(UnavailableText));
    CliOutput output(streams);
    output.Append(arguments->Has("--json") ? RowsAsJson(offset, encoding, values) : RowsAsText(values));
    return CliSuccess;
}

} // namespace tlm
