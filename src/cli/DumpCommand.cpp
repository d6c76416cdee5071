#include "cli/DumpCommand.h"

#include "cli/CliCommon.h"
#include "cli/CliOutput.h"
#include "cli/DumpLine.h"
#include "cli/JsonWriter.h"
#include "cli/ProgressBar.h"
#include "cli/WindowedDocument.h"
#include "document/FileViewModel.h"
#include "encoding/EncodingCatalogue.h"
#include "encoding/RowTextDecoder.h"
#include "hexview/HexViewMetrics.h"

#include <algorithm>
#include <array>

namespace tlm {

namespace {

constexpr std::string_view Command = "dump";

constexpr std::array<CliOptionSpec, 4> Options{{
    {"--offset", 1, false},
    {"--length", 1, false},
    {"--encoding", 1, false},
    {"--json", 0, false},
}};

// Rows are decoded from one window of the file at a time; the window reaches back far enough for the
// longest look-back of any decoder, so no row needs a read of its own.
constexpr std::uint64_t ChunkBytes = 1024 * 1024;
constexpr std::uint64_t WindowLookBack = 4096;
constexpr std::uint64_t WindowLookAhead = 64;

struct DumpRange {
    std::uint64_t firstRow = 0;
    std::uint64_t end = 0; // one past the last byte dumped
};

// Where a byte's text cell depends on that byte alone, the cells of a whole row can be looked up. The
// table is filled from the decoder itself, one byte at a time, so it says what the view says.
class ByteCellTable {
public:
    explicit ByteCellTable(TextEncoding encoding)
    {
        for (unsigned value = 0; value < 256; ++value) {
            const std::uint8_t byte = static_cast<std::uint8_t>(value);
            const std::vector<std::u16string> cells = DecodeRowTextDetached(std::span(&byte, 1), encoding);
            texts[value] = cells.empty() ? std::string() : ToUtf8(cells.front());
        }
    }
    const std::string& Text(std::uint8_t byte) const { return texts[byte]; }

private:
    std::array<std::string, 256> texts;
};

// Only ASCII decodes each byte on its own; every other encoding may join or look around.
bool DecodesByteByByte(TextEncoding encoding)
{
    return encoding == TextEncoding::Ascii;
}

void AppendOffsetCell(std::string& out, std::uint64_t offset, bool wide)
{
    constexpr char Digits[] = "0123456789ABCDEF";
    for (int shift = wide ? 60 : 28; shift >= 0; shift -= 4) {
        out.push_back(Digits[(offset >> shift) & 0xF]);
    }
    out.push_back(':');
}

// The line AppendDumpLine makes from the row's cells, built straight from the table.
void AppendTableLine(std::string& out, const ByteCellTable& table, std::uint64_t rowOffset, bool wide,
    std::span<const std::uint8_t> row)
{
    constexpr char Digits[] = "0123456789ABCDEF";
    AppendOffsetCell(out, rowOffset, wide);
    out.push_back(' ');
    for (std::size_t index = 0; index < DumpRowBytes; ++index) {
        if (index > 0) {
            out.push_back(' ');
        }
        if (index < row.size()) {
            out.push_back(Digits[row[index] >> 4]);
            out.push_back(Digits[row[index] & 0xF]);
        } else {
            out += "  ";
        }
    }
    out += "  ";
    for (const std::uint8_t byte : row) {
        out += table.Text(byte);
    }
    out.push_back('\n');
}

void AppendJsonRow(JsonWriter& json, std::uint64_t rowOffset, const RowCells& cells)
{
    json.BeginObject();
    json.Key("offset");
    json.Number(rowOffset);
    json.Key("offsetText");
    json.String(ToUtf8(cells.offsetText));
    json.Key("hex");
    json.BeginArray();
    for (const std::u16string& cell : cells.hexCells) {
        json.String(ToUtf8(cell));
    }
    json.EndArray();
    json.Key("text");
    json.BeginArray();
    for (const std::u16string& cell : cells.textCells) {
        json.String(ToUtf8(cell));
    }
    json.EndArray();
    json.EndObject();
}

bool ReadRange(CliStreams& streams, const CliArguments& arguments, std::uint64_t size, DumpRange& range)
{
    std::uint64_t offset = 0;
    std::uint64_t length = UINT64_MAX;
    if (!ReadNumberOption(streams, Command, arguments, "--offset", 0, offset)
        || !ReadNumberOption(streams, Command, arguments, "--length", UINT64_MAX, length)) {
        return false;
    }
    if (offset > size) {
        FailCli(streams, Command, "--offset " + std::to_string(offset) + " is past the end of the file ("
            + std::to_string(size) + " bytes)");
        return false;
    }
    range.firstRow = offset - offset % DumpRowBytes;
    const std::uint64_t requestedEnd = offset + std::min(length, size - offset);
    // Whole rows, as the view shows them: the last one runs to its sixteenth byte or the end of the file.
    const std::uint64_t rowEnd = requestedEnd + (DumpRowBytes - requestedEnd % DumpRowBytes) % DumpRowBytes;
    range.end = requestedEnd == offset ? range.firstRow : std::min(size, rowEnd);
    return true;
}

class Dumper {
public:
    Dumper(CliStreams& streams, const FileViewModel& file, TextEncoding encoding, bool json)
        : output(streams)
        , window(file)
        , encoding(encoding)
        , json(json)
        , wide(file.GetSize() >= WideOffsetThreshold)
    {
    }

    bool Run(const DumpRange& range, ProgressBar& progress)
    {
        if (json) {
            jsonWriter.BeginObject();
            jsonWriter.Key("encoding");
            jsonWriter.String(ToUtf8(EncodingDisplayName(encoding)));
            jsonWriter.Key("rows");
            jsonWriter.BeginArray();
        }
        std::optional<ByteCellTable> table;
        if (!json && DecodesByteByByte(encoding)) {
            table.emplace(encoding);
        }
        for (std::uint64_t chunk = range.firstRow; chunk < range.end; chunk += ChunkBytes) {
            const std::uint64_t chunkEnd = std::min(range.end, chunk + ChunkBytes);
            const std::uint64_t first = chunk - std::min(chunk, WindowLookBack);
            window.Load(first, chunkEnd - first + WindowLookAhead);
            if (window.WindowStart() + window.WindowBytes().size() < chunkEnd) {
                return false;
            }
            DumpChunk(chunk, chunkEnd, table ? &*table : nullptr);
            progress.Update(chunkEnd - range.firstRow);
        }
        if (json) {
            jsonWriter.EndArray();
            jsonWriter.EndObject();
            output.Append(jsonWriter.TakeText());
            output.Append("\n");
        }
        output.Flush();
        return true;
    }

private:
    void DumpChunk(std::uint64_t chunk, std::uint64_t chunkEnd, const ByteCellTable* table)
    {
        const std::uint8_t* bytes = window.WindowBytes().data() + (chunk - window.WindowStart());
        for (std::uint64_t row = chunk; row < chunkEnd; row += DumpRowBytes) {
            const std::span<const std::uint8_t> rowBytes(
                bytes + (row - chunk), static_cast<std::size_t>(std::min<std::uint64_t>(DumpRowBytes, chunkEnd - row)));
            if (table != nullptr) {
                AppendTableLine(output.Buffer(), *table, row, wide, rowBytes);
            } else if (json) {
                AppendJsonRow(jsonWriter, row, BuildRowCells(&window, row, rowBytes, encoding));
                if (jsonWriter.Size() >= CliOutput::FlushSize) {
                    output.Append(jsonWriter.TakeText());
                }
            } else {
                AppendDumpLine(output.Buffer(), BuildRowCells(&window, row, rowBytes, encoding));
            }
            output.FlushIfFull();
        }
    }

    CliOutput output;
    WindowedDocument window;
    TextEncoding encoding;
    bool json = false;
    bool wide = false;
    JsonWriter jsonWriter;
};

} // namespace

int RunDumpCommand(std::span<const std::string> words, CliStreams& streams)
{
    const std::optional<CliArguments> arguments = ParseCommandWords(streams, Command, words, Options);
    if (!arguments) {
        return CliBadInput;
    }
    TextEncoding encoding = TextEncoding::Ascii;
    if (!ReadEncodingOption(streams, Command, *arguments, encoding)) {
        return CliBadInput;
    }
    FileViewModel file;
    if (!OpenCliFile(streams, Command, arguments->positionals.front(), file)) {
        return CliBadInput;
    }
    DumpRange range;
    if (!ReadRange(streams, *arguments, file.GetSize(), range)) {
        return CliBadInput;
    }
    ProgressBar progress(streams, range.end - range.firstRow);
    Dumper dumper(streams, file, encoding, arguments->Has("--json"));
    if (!dumper.Run(range, progress)) {
        progress.Finish();
        return FailCli(streams, Command, "the file could not be read to the end of the range");
    }
    return CliSuccess;
}

} // namespace tlm
