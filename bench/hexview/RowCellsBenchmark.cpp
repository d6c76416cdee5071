// One screen of rows (60) built at random offsets of a 1 GiB file, in every encoding, the way a paint
// builds them: a 16-byte read per row through the document, then BuildRowCells with its look-around
// reads. Target: under 2 ms a screen. The file mixes text of every script the encodings serve with
// binary data; it lives in the temporary folder and goes at the end.
#include "document/EditableDocument.h"
#include "encoding/TextEncoding.h"
#include "hexview/RowCells.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <vector>

namespace tlm {
namespace {

constexpr std::uint64_t MiB = 1024 * 1024;
constexpr std::uint64_t FileSize = 1024 * MiB;
constexpr std::uint64_t ChunkSize = 4 * MiB;
constexpr std::uint32_t DistinctChunks = 8;
constexpr int RowsPerScreen = 60;

void AppendUtf8(std::vector<std::uint8_t>& out, char32_t c)
{
    if (c < 0x80) {
        out.push_back(static_cast<std::uint8_t>(c));
    } else if (c < 0x800) {
        out.push_back(static_cast<std::uint8_t>(0xC0 | (c >> 6)));
        out.push_back(static_cast<std::uint8_t>(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
        out.push_back(static_cast<std::uint8_t>(0xE0 | (c >> 12)));
        out.push_back(static_cast<std::uint8_t>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<std::uint8_t>(0x80 | (c & 0x3F)));
    } else {
        out.push_back(static_cast<std::uint8_t>(0xF0 | (c >> 18)));
        out.push_back(static_cast<std::uint8_t>(0x80 | ((c >> 12) & 0x3F)));
        out.push_back(static_cast<std::uint8_t>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<std::uint8_t>(0x80 | (c & 0x3F)));
    }
}

// Runs of 64 to 4096 bytes, each of one kind: ASCII, UTF-8 of many scripts, double-byte pairs, Thai,
// UTF-16, ISCII-range bytes or binary.
std::vector<std::uint8_t> MixedChunk(std::uint32_t seed)
{
    std::mt19937 random(seed);
    const auto pick = [&random](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };
    std::vector<std::uint8_t> out;
    out.reserve(ChunkSize + 8192);
    while (out.size() < ChunkSize) {
        const std::size_t end = out.size() + static_cast<std::size_t>(pick(64, 4096));
        const int kind = pick(0, 7);
        while (out.size() < end) {
            switch (kind) {
            case 0:
                out.push_back(static_cast<std::uint8_t>(pick(0, 9) == 0 ? ' ' : pick('a', 'z')));
                break;
            case 1: {
                static constexpr char32_t starts[] = {0x00C0, 0x0410, 0x0E01, 0x3041, 0x4E00, 0xAC00, 0x1F600, 0x0300};
                AppendUtf8(out, starts[pick(0, 7)] + static_cast<char32_t>(pick(0, 40)));
                break;
            }
            case 2: // Shift_JIS pairs
                out.push_back(static_cast<std::uint8_t>(pick(0x88, 0x9F)));
                out.push_back(static_cast<std::uint8_t>(pick(0, 1) ? pick(0x40, 0x7E) : pick(0x80, 0xFC)));
                break;
            case 3: // pairs valid in GBK, Big5, EUC-KR and 949 alike
                out.push_back(static_cast<std::uint8_t>(pick(0xB0, 0xC8)));
                out.push_back(static_cast<std::uint8_t>(pick(0xA1, 0xFE)));
                break;
            case 4: // Thai
                out.push_back(static_cast<std::uint8_t>(pick(0, 3) == 0 ? pick(0xD1, 0xDA) : pick(0xA1, 0xCE)));
                break;
            case 5: { // UTF-16 LE text
                const int unit = pick(0, 1) ? pick('a', 'z') : pick(0x4E00, 0x4FFF);
                out.push_back(static_cast<std::uint8_t>(unit & 0xFF));
                out.push_back(static_cast<std::uint8_t>(unit >> 8));
                break;
            }
            case 6:
                out.push_back(static_cast<std::uint8_t>(pick(0xA1, 0xFA)));
                break;
            default:
                out.push_back(static_cast<std::uint8_t>(random()));
                break;
            }
        }
    }
    out.resize(ChunkSize);
    return out;
}

class BenchFile {
public:
    BenchFile()
        : path(std::filesystem::temp_directory_path() / "tolmo-hexview-rows-bench.bin")
    {
        // Eight different chunks, written in turn: making every chunk afresh would cost more than the run.
        std::vector<std::vector<std::uint8_t>> chunks;
        for (std::uint32_t seed = 0; seed < DistinctChunks; ++seed) {
            chunks.push_back(MixedChunk(seed));
        }
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        for (std::uint64_t index = 0; index < FileSize / ChunkSize; ++index) {
            const std::vector<std::uint8_t>& chunk = chunks[index % DistinctChunks];
            out.write(reinterpret_cast<const char*>(chunk.data()), static_cast<std::streamsize>(chunk.size()));
        }
    }
    ~BenchFile()
    {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    std::filesystem::path path;
};

const BenchFile& File()
{
    static const BenchFile file;
    return file;
}

void BuildScreenOfRows(benchmark::State& state)
{
    const auto encoding = static_cast<TextEncoding>(state.range(0));
    EditableDocument document;
    if (!document.file.Open(File().path.u16string())) {
        state.SkipWithError("cannot open the benchmark file");
        return;
    }
    std::mt19937_64 random(42);
    const std::uint64_t lastTopRow = FileSize / 16 - RowsPerScreen;
    std::size_t cells = 0;
    for (auto _ : state) {
        const std::uint64_t topRow = random() % lastTopRow;
        for (int line = 0; line < RowsPerScreen; ++line) {
            const std::uint64_t rowOffset = (topRow + static_cast<std::uint64_t>(line)) * 16;
            const ByteBlock block = document.Read(rowOffset, 16);
            const RowCells row = BuildRowCells(&document, rowOffset, block.bytes, encoding);
            cells += row.textCells.size();
            benchmark::DoNotOptimize(row);
        }
    }
    benchmark::DoNotOptimize(cells);
    state.SetLabel("screens of 60 rows");
}

BENCHMARK(BuildScreenOfRows)->DenseRange(0, TextEncodingCount - 1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tlm

BENCHMARK_MAIN();
