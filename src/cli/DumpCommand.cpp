#include "cli/DumpCommand.h"

#include "cli/CliCommon.h"
#include "cli/CliOutput.h"
#include "cli/DoubleByteRowText.h"
#include "cli/DumpLine.h"
#include "cli/JsonWriter.h"
#include "cli/LineWorker.h"
#include "cli/PairCellTable.h"
#include "cli/ProgressBar.h"
#include "cli/WindowedDocument.h"
#include "document/FileViewModel.h"
#include "encoding/EncodingCatalogue.h"
#include "encoding/RowTextDecoder.h"
#include "hexview/HexText.h"
#include "hexview/HexViewMetrics.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>

namespace tlm {

namespace {

constexpr std::string_view Command = "dump";

constexpr std::array<CliOptionRule, 4> Options{{
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
constexpr std::uint64_t PairTableFromBytes = 64 * 1024;
constexpr std::size_t GroupRows = 1024;
// Long dumps write their lines on two threads, a piece each in turn.
constexpr std::uint64_t TwoThreadsFromBytes = 2 * 1024 * 1024;
constexpr std::uint64_t PieceBytes = 256 * 1024;

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
            const std::string text = cells.empty() ? std::string() : ToUtf8(cells.front());
            // A cell of more than four bytes cannot come from one byte; keep the table honest anyway.
            usable = usable && text.size() <= 4;
            texts[value].length = static_cast<std::uint8_t>(std::min<std::size_t>(text.size(), 4));
            std::memcpy(texts[value].bytes.data(), text.data(), texts[value].length);
            const std::string hex = ToUtf8(FormatHexByte(byte));
            hexCells[value] = {hex.size() > 0 ? hex[0] : ' ', hex.size() > 1 ? hex[1] : ' ', ' ', ' '};
        }
    }
    struct CellText {
        std::array<char, 4> bytes{};
        std::uint8_t length = 0;
    };
    const CellText& Text(std::uint8_t byte) const { return texts[byte]; }
    bool Usable() const { return usable; }
    // The byte's hex cell and the blank after it, and one blank more so that a copy of four bytes,
    // which is quicker than three, may run into the next cell.
    const char* HexCell(std::uint8_t byte) const { return hexCells[byte].data(); }

private:
    std::array<CellText, 256> texts{};
    bool usable = true;
    std::array<std::array<char, 4>, 256> hexCells{};
};

// Only ASCII decodes each byte on its own; every other encoding may join or look around.
bool DecodesByteByByte(TextEncoding encoding)
{
    return encoding == TextEncoding::Ascii;
}

// The longest line a row can give: offset, blank, sixteen hex cells and blanks, a blank, up to twelve
// bytes of text a cell, and room for the last cell's copy to run over.
constexpr std::size_t LongestTableLine = 17 + 1 + DumpRowBytes * 3 + 1 + DumpRowBytes * 12 + 12;

// The line AppendDumpLine makes from the row's cells, written straight from the table at `at`; gives
// where the line ends. Each byte's hex cell and blank are copied as one piece of three and its text as
// one piece of four, which is what makes a dump of gigabytes quick.
char* WriteTableLineFront(char* at, const ByteCellTable& table, std::uint64_t rowOffset, bool wide,
    std::span<const std::uint8_t> row)
{
    // The offset's digits two at a time: each of its bytes is a hex cell.
    for (int shift = wide ? 56 : 24; shift >= 0; shift -= 8) {
        std::memcpy(at, table.HexCell(static_cast<std::uint8_t>(rowOffset >> shift)), 2);
        at += 2;
    }
    *at++ = ':';
    *at++ = ' ';
    if (row.size() == DumpRowBytes) {
        for (const std::uint8_t byte : std::span<const std::uint8_t, DumpRowBytes>(row.data(), DumpRowBytes)) {
            std::memcpy(at, table.HexCell(byte), 4);
            at += 3;
        }
    } else {
        for (std::size_t index = 0; index < DumpRowBytes; ++index) {
            std::memcpy(at, index < row.size() ? table.HexCell(row[index]) : "   ", 3);
            at += 3;
        }
    }
    // The blank after the sixteenth cell is the first of the two before the text.
    *at++ = ' ';
    return at;
}

char* WriteTableLine(char* at, const ByteCellTable& table, std::uint64_t rowOffset, bool wide,
    std::span<const std::uint8_t> row)
{
    at = WriteTableLineFront(at, table, rowOffset, wide, row);
    for (const std::uint8_t byte : row) {
        // The next cell or the line end overwrites what the copy left past the text.
        const ByteCellTable::CellText& text = table.Text(byte);
        std::memcpy(at, text.bytes.data(), 4);
        at += text.length;
    }
    *at++ = '\n';
    return at;
}

// The same for a double-byte encoding: the row's text walks its characters from where the view starts
// the row, each cell looked up from its byte and the next; a cell a character covers adds nothing.
char* WritePairTableLine(char* at, const ByteCellTable& hexTable, const PairCellTable& cells, std::uint64_t rowOffset,
    bool wide, std::span<const std::uint8_t> bytes, std::uint64_t bytesOffset, std::uint64_t rowStart, std::uint64_t fileSize)
{
    const std::uint64_t rowEnd = rowOffset + std::min<std::uint64_t>(DumpRowBytes, fileSize - rowOffset);
    at = WriteTableLineFront(at, hexTable, rowOffset, wide,
        bytes.subspan(static_cast<std::size_t>(rowOffset - bytesOffset), static_cast<std::size_t>(rowEnd - rowOffset)));
    const std::uint8_t* base = bytes.data() - bytesOffset;
    const auto cellAt = [&](std::uint64_t position) -> const PairCellTable::Cell& {
        return position + 1 < fileSize ? cells.At(base[position], base[position + 1]) : cells.Last(base[position]);
    };
    std::uint64_t position = rowStart;
    if (position < rowOffset) {
        // The character that reaches over from the row before shows there, not here.
        position += cellAt(position).takesNext ? 2 : 1;
    }
    // Every row but the file's last has the byte behind each of its bytes.
    const std::uint64_t pairedEnd = std::min(rowEnd, fileSize - 1);
    while (position < pairedEnd) {
        const PairCellTable::Cell& cell = cells.At(base[position], base[position + 1]);
        std::memcpy(at, cell.text.data(), cell.text.size());
        at += cell.length;
        position += 1u + cell.takesNext;
    }
    if (position < rowEnd) {
        const PairCellTable::Cell& cell = cellAt(position);
        std::memcpy(at, cell.text.data(), cell.text.size());
        at += cell.length;
    }
    *at++ = '\n';
    return at;
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
        , scheme(DoubleByteSchemeOf(encoding))
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
            if (!table->Usable()) {
                table.reset();
            }
        }
        // Filling the pair table costs a few milliseconds: worth it from a few thousand rows on.
        if (!json && scheme != nullptr && range.end - range.firstRow >= PairTableFromBytes) {
            pairTable.emplace(encoding);
            if (!pairTable->Usable()) {
                pairTable.reset();
            }
        }
        if ((table || pairTable) && range.end - range.firstRow >= TwoThreadsFromBytes && std::thread::hardware_concurrency() > 1) {
            worker.emplace(static_cast<std::size_t>(PieceBytes / DumpRowBytes) * LongestTableLine);
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
        const auto rowAt = [&](std::uint64_t row) {
            return std::span<const std::uint8_t>(
                bytes + (row - chunk), static_cast<std::size_t>(std::min<std::uint64_t>(DumpRowBytes, chunkEnd - row)));
        };
        if (table != nullptr) {
            WriteGroups(chunk, chunkEnd, [&](char* at, std::uint64_t row) { return WriteTableLine(at, *table, row, wide, rowAt(row)); });
            return;
        }
        if (pairTable) {
            DumpPairTableChunk(chunk, chunkEnd);
            return;
        }
        for (std::uint64_t row = chunk; row < chunkEnd; row += DumpRowBytes) {
            if (json) {
                AppendJsonRow(jsonWriter, row, RowCellsAt(row, rowAt(row)));
                if (jsonWriter.Size() >= CliOutput::FlushSize) {
                    output.Append(jsonWriter.TakeText());
                }
            } else {
                AppendLine(row, rowAt(row));
            }
            output.FlushIfFull();
        }
    }

    void DumpPairTableChunk(std::uint64_t chunk, std::uint64_t chunkEnd)
    {
        const std::span<const std::uint8_t> bytes = window.WindowBytes();
        const std::uint64_t bytesOffset = window.WindowStart();
        WriteGroups(chunk, chunkEnd, [&](char* at, std::uint64_t row) {
            const std::uint64_t rowStart = DoubleByteRowStart(*scheme, bytes, bytesOffset, row);
            return WritePairTableLine(at, hexTable, *pairTable, row, wide, bytes, bytesOffset, rowStart, window.GetSize());
        });
    }

    // Rows go in groups into room made once, never filled in first, so no line pays for growing or
    // clearing a buffer; `writeLine(at, row)` writes one line at `at` and gives where it ends. With a
    // second thread, every other piece of the chunk is written there meanwhile.
    template <typename WriteLine>
    void WriteGroups(std::uint64_t chunk, std::uint64_t chunkEnd, WriteLine writeLine)
    {
        if (!groupRoom) {
            groupRoom = std::make_unique_for_overwrite<char[]>(GroupRows * LongestTableLine);
        }
        const auto writeRows = [&writeLine](char* at, std::uint64_t first, std::uint64_t end) {
            for (std::uint64_t row = first; row < end; row += DumpRowBytes) {
                at = writeLine(at, row);
            }
            return at;
        };
        for (std::uint64_t piece = chunk; piece < chunkEnd;) {
            const std::uint64_t pieceEnd = std::min(chunkEnd, piece + PieceBytes);
            const std::uint64_t nextEnd = std::min(chunkEnd, pieceEnd + PieceBytes);
            const bool shared = worker && pieceEnd < chunkEnd;
            if (shared) {
                worker->Start([&writeRows, pieceEnd, nextEnd](char* room) { return writeRows(room, pieceEnd, nextEnd); });
            }
            for (std::uint64_t row = piece; row < pieceEnd;) {
                const std::uint64_t groupEnd = std::min(pieceEnd, row + GroupRows * DumpRowBytes);
                const char* end = writeRows(groupRoom.get(), row, groupEnd);
                output.Append(std::string_view(groupRoom.get(), static_cast<std::size_t>(end - groupRoom.get())));
                output.FlushIfFull();
                row = groupEnd;
            }
            if (shared) {
                output.Append(worker->Finish());
                output.FlushIfFull();
            }
            piece = shared ? nextEnd : pieceEnd;
        }
    }

    // The hex view's cells of the row. The double-byte encodings are decoded from the row's start on,
    // found in the window, instead of from a copy of 4,096 bytes in front of every row.
    RowCells RowCellsAt(std::uint64_t row, std::span<const std::uint8_t> rowBytes)
    {
        if (scheme == nullptr) {
            return BuildRowCells(&window, row, rowBytes, encoding);
        }
        std::vector<std::u16string> text = DoubleByteRowText(
            encoding, window.WindowBytes(), window.WindowStart(), window.GetSize(), row, rowBytes.size());
        RowCells cells;
        cells.offsetText = FormatRowOffset(row, wide);
        cells.hexCells.reserve(rowBytes.size());
        for (const std::uint8_t byte : rowBytes) {
            cells.hexCells.push_back(FormatHexByte(byte));
        }
        cells.textCells = std::move(text);
        return cells;
    }

    // One line as AppendDumpLine writes it; the front straight from the hex table where the text
    // column came without the row's other cells.
    void AppendLine(std::uint64_t row, std::span<const std::uint8_t> rowBytes)
    {
        if (scheme == nullptr) {
            AppendDumpLine(output.Buffer(), BuildRowCells(&window, row, rowBytes, encoding));
            return;
        }
        std::vector<std::u16string> text = DoubleByteRowText(
            encoding, window.WindowBytes(), window.WindowStart(), window.GetSize(), row, rowBytes.size());
        std::string& buffer = output.Buffer();
        const std::size_t start = buffer.size();
        buffer.resize(start + LongestTableLine);
        char* end = WriteTableLineFront(buffer.data() + start, hexTable, row, wide, rowBytes);
        buffer.resize(static_cast<std::size_t>(end - buffer.data()));
        AppendDumpLineText(buffer, text);
    }

    CliOutput output;
    ByteCellTable hexTable{TextEncoding::Ascii};
    WindowedDocument window;
    TextEncoding encoding;
    bool json = false;
    bool wide = false;
    JsonWriter jsonWriter;
    const DoubleByteScheme* scheme = nullptr;
    std::optional<PairCellTable> pairTable;
    std::unique_ptr<char[]> groupRoom;
    std::optional<LineWorker> worker;
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
    // Rows on the same terminal would tear the bar apart; it shows only when the rows go elsewhere.
    ProgressBar progress(streams, streams.outIsTerminal ? 0 : range.end - range.firstRow);
    Dumper dumper(streams, file, encoding, arguments->Has("--json"));
    if (!dumper.Run(range, progress)) {
        progress.Finish();
        return FailCli(streams, Command, "the file could not be read to the end of the range");
    }
    return CliSuccess;
}

} // namespace tlm
