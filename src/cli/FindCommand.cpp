#include "cli/FindCommand.h"

#include "app/QueryText.h"
#include "cli/AllHits.h"
#include "cli/CliCommon.h"
#include "cli/CliOutput.h"
#include "cli/CliTexts.h"
#include "cli/JsonWriter.h"
#include "cli/ProgressBar.h"
#include "document/ByteSearch.h"
#include "document/FileViewModel.h"
#include "encoding/EncodingCatalogue.h"
#include "encoding/SearchTextEncoder.h"
#include "encoding/Utf8.h"

#include <array>

namespace tlm {

namespace {

constexpr std::string_view Command = "find";

constexpr std::array<CliOptionRule, 8> Options{{
    {"--text", 1, false},
    {"--hex", 1, false},
    {"--encoding", 1, false},
    {"--from", 1, false},
    {"--backward", 0, false},
    {"--all", 0, false},
    {"--count", 0, false},
    {"--json", 0, false},
}};

// The query as bytes, by the dialog's rules: trimmed, converted exactly or parsed as hex pairs, then
// held to 1 to 4,096 bytes. Nothing, with the dialog's message written, when it is refused.
std::optional<std::vector<std::uint8_t>> QueryBytes(CliStreams& streams, const CliArguments& arguments)
{
    const bool isText = arguments.Has("--text");
    if (isText == arguments.Has("--hex")) {
        FailCli(streams, Command, "give exactly one of --text TEXT or --hex BYTES");
        return std::nullopt;
    }
    if (!isText && arguments.Has("--encoding")) {
        FailCli(streams, Command, "--encoding applies to --text only");
        return std::nullopt;
    }
    TextEncoding encoding = TextEncoding::Ascii;
    if (!ReadEncodingOption(streams, Command, arguments, encoding)) {
        return std::nullopt;
    }
    const std::string typed = *arguments.Value(isText ? "--text" : "--hex");
    const std::optional<std::u16string> wide = Utf8ToUtf16(typed);
    if (!wide) {
        FailCli(streams, Command, isText ? SearchInvalidTextMessage : SearchInvalidHexMessage);
        return std::nullopt;
    }
    // The dialog's query box holds no more than this; a longer query cannot be typed there.
    const std::size_t limit = isText ? TextQueryLimit(encoding) : HexQueryLimit;
    if (wide->size() > limit) {
        FailCli(streams, Command, SearchTooLongMessage);
        return std::nullopt;
    }
    const std::u16string_view query = TrimQuery(*wide);
    std::optional<std::vector<std::uint8_t>> pattern = isText ? EncodeSearchText(query, encoding) : ParseHexQuery(query);
    if (!pattern) {
        FailCli(streams, Command, isText ? SearchInvalidTextMessage : SearchInvalidHexMessage);
        return std::nullopt;
    }
    if (pattern->empty() || pattern->size() > MaxSearchPatternBytes) {
        FailCli(streams, Command, SearchTooLongMessage);
        return std::nullopt;
    }
    return pattern;
}

struct FindRequest {
    std::vector<std::uint8_t> pattern;
    std::uint64_t from = 0;
    bool backward = false;
    bool all = false;
    bool countOnly = false;
    bool json = false;
};

void BeginJson(JsonWriter& json, const FindRequest& request)
{
    json.BeginObject();
    json.Key("pattern");
    json.String(HexBytesText(request.pattern));
    json.Key("from");
    json.Number(request.from);
    json.Key("direction");
    json.String(request.backward ? "backward" : "forward");
}

int ReportNotFound(CliStreams& streams, const FindRequest& request)
{
    if (!request.countOnly && streams.writeError) {
        streams.writeError("tolmo-cli find: " + std::string(SearchNotFoundMessage) + "\n");
    }
    return CliNotFound;
}

int FindFirst(CliStreams& streams, const FileViewModel& file, const FindRequest& request)
{
    ProgressBar bar(streams, file.GetSize());
    const ProgressCallback progress = [&bar](std::uint64_t done, std::uint64_t total) {
        bar.Update(total == 0 ? 0 : done);
    };
    const SearchResult result = request.backward ? SearchBackward(&file, request.pattern, request.from, {}, progress)
                                                 : SearchForward(&file, request.pattern, request.from, {}, progress);
    bar.Finish();
    const bool found = result.status == SearchStatus::Found && result.hasOffset;
    CliOutput output(streams);
    if (request.json) {
        JsonWriter json;
        BeginJson(json, request);
        json.Key("hits");
        json.BeginArray();
        if (found) {
            json.Number(result.offset);
        }
        json.EndArray();
        json.Key("count");
        json.Number(found ? 1 : 0);
        json.EndObject();
        output.Append(json.TakeText() + "\n");
    } else if (found) {
        output.Append(std::to_string(result.offset) + "\n");
    }
    output.Flush();
    return found ? CliSuccess : ReportNotFound(streams, request);
}

int FindAll(CliStreams& streams, const FileViewModel& file, const FindRequest& request)
{
    // Offsets printed one a line on the same terminal would tear the bar apart.
    const bool streamsToTerminal = streams.outIsTerminal && !request.countOnly;
    ProgressBar bar(streams, streamsToTerminal ? 0 : file.GetSize());
    CliOutput output(streams);
    JsonWriter json;
    if (request.json) {
        BeginJson(json, request);
        if (!request.countOnly) {
            json.Key("hits");
            json.BeginArray();
        }
    }
    std::uint64_t count = 0;
    const auto hit = [&](std::uint64_t offset) {
        ++count;
        if (request.countOnly) {
            return;
        }
        if (request.json) {
            json.Number(offset);
            if (json.Size() >= CliOutput::FlushSize) {
                output.Append(json.TakeText());
                output.FlushIfFull();
            }
            return;
        }
        output.Append(std::to_string(offset));
        output.Append("\n");
        output.FlushIfFull();
    };
    ForEachHit(file, request.pattern, request.from, request.backward, hit,
        [&bar](std::uint64_t done, std::uint64_t) { bar.Update(done); });
    bar.Finish();
    if (request.json) {
        if (!request.countOnly) {
            json.EndArray();
        }
        json.Key("count");
        json.Number(count);
        json.EndObject();
        output.Append(json.TakeText() + "\n");
    } else if (request.countOnly) {
        output.Append(std::to_string(count) + "\n");
    }
    output.Flush();
    return count > 0 ? CliSuccess : ReportNotFound(streams, request);
}

} // namespace

int RunFindCommand(std::span<const std::string> words, CliStreams& streams)
{
    const std::optional<CliArguments> arguments = ParseCommandWords(streams, Command, words, Options);
    if (!arguments) {
        return CliBadInput;
    }
    std::optional<std::vector<std::uint8_t>> pattern = QueryBytes(streams, *arguments);
    if (!pattern) {
        return CliBadInput;
    }
    FindRequest request;
    request.pattern = std::move(*pattern);
    request.backward = arguments->Has("--backward");
    request.all = arguments->Has("--all");
    request.countOnly = arguments->Has("--count");
    request.json = arguments->Has("--json");
    FileViewModel file;
    if (!OpenCliFile(streams, Command, arguments->positionals.front(), file)) {
        return CliBadInput;
    }
    const std::uint64_t size = file.GetSize();
    const std::uint64_t lastByte = size == 0 ? 0 : size - 1;
    if (!ReadNumberOption(streams, Command, *arguments, "--from", request.backward ? lastByte : 0, request.from)) {
        return CliBadInput;
    }
    if (request.from > size) {
        return FailCli(streams, Command, "--from " + std::to_string(request.from) + " is past the end of the file ("
            + std::to_string(size) + " bytes)");
    }
    if (request.all || request.countOnly) {
        return FindAll(streams, file, request);
    }
    return FindFirst(streams, file, request);
}

} // namespace tlm
