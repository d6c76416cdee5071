// One screen of the text column (60 rows of 16 bytes) decoded through DecodeRowText at random offsets
// of a 1 GiB document, in every encoding. Target: under 2 ms a screen whatever the offset or file size.
// BM_DecodeScreen: the document makes its bytes on demand, so nothing of the gibibyte is stored: each
// 4 KiB block of it is one of 64 prepared blocks, picked by a hash of the block's number, and each
// prepared block holds one kind of content (ASCII, UTF-8, double-byte pairs, Shift_JIS, Thai, UTF-16,
// ISCII or binary).
// BM_DecodeScreenFromFile: the same through FileViewModel over a sparse 1 GiB file in the temporary
// folder, with 64 windows of 1 MiB of that content written across it; screens are taken inside them.
#include "document/FileViewModel.h"
#include "document/IReadOnlyDocument.h"
#include "encoding/EncodingCatalogue.h"
#include "encoding/RowTextDecoder.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace tlm {
namespace {

constexpr std::uint64_t FileSize = 1024ull * 1024 * 1024;
constexpr std::uint64_t RowWidth = 16;
constexpr int RowsPerScreen = 60;
constexpr std::uint64_t BlockSize = 4096;
constexpr std::uint64_t PreparedBlocks = 64;

std::uint64_t Mix(std::uint64_t value)
{
    value += 0x9E3779B97F4A7C15ull;
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9ull;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EBull;
    return value ^ (value >> 31);
}

std::uint8_t Within(std::uint64_t noise, std::uint8_t low, std::uint8_t high)
{
    return static_cast<std::uint8_t>(low + noise % (high - low + 1u));
}

// The byte at `offset` of a prepared block of `kind`: the kind decides the range, the offset's hash the value.
std::uint8_t PreparedByte(std::uint64_t kind, std::uint64_t offset)
{
    const std::uint64_t noise = Mix(offset);
    const bool even = offset % 2 == 0;
    switch (kind) {
    case 0: // ASCII words
        return noise % 8 == 0 ? ' ' : Within(noise, 'a', 'z');
    case 1: // three-byte UTF-8 (Hiragana and CJK), one lead and two continuation bytes
        return offset % 3 == 0 ? Within(noise, 0xE3, 0xE4) : Within(noise, 0x80, 0xBF);
    case 2: // pairs valid in GBK, Big5, EUC-KR and 949 alike, a long run for the look-back scan
        return even ? Within(noise, 0xB0, 0xC8) : Within(noise, 0xA1, 0xFE);
    case 3: // Shift_JIS pairs
        return even ? Within(noise, 0x88, 0x9F) : Within(noise, 0x40, 0x7E);
    case 4: // Thai consonants with marks
        return noise % 4 == 0 ? Within(noise, 0xD1, 0xDA) : Within(noise, 0xA1, 0xCE);
    case 5: // UTF-16 LE letters
        return even ? Within(noise, 'a', 'z') : 0;
    case 6: // ISCII consonants, viramas and vowel signs
        return noise % 3 == 0 ? Within(noise, 0xDA, 0xE8) : Within(noise, 0xB3, 0xD8);
    default: // binary
        return static_cast<std::uint8_t>(noise);
    }
}

class GeneratedDocument final : public IReadOnlyDocument {
public:
    GeneratedDocument()
        : blocks(PreparedBlocks * BlockSize)
    {
        for (std::uint64_t block = 0; block < PreparedBlocks; ++block) {
            for (std::uint64_t at = 0; at < BlockSize; ++at) {
                blocks[block * BlockSize + at] = PreparedByte(block % 8, block * BlockSize + at);
            }
        }
    }

    bool IsOpen() const override { return true; }
    std::uint64_t GetSize() const override { return FileSize; }
    std::u16string GetPath() const override { return u"generated"; }

    ByteBlock Read(std::uint64_t offset, std::uint64_t count) const override
    {
        ByteBlock block{offset, {}};
        if (offset >= FileSize) {
            return block;
        }
        const std::uint64_t end = offset + std::min(count, FileSize - offset);
        block.bytes.resize(static_cast<std::size_t>(end - offset));
        std::uint64_t at = offset;
        while (at < end) {
            const std::uint64_t inBlock = at % BlockSize;
            const std::uint64_t length = std::min(end - at, BlockSize - inBlock);
            const std::uint64_t prepared = Mix(at / BlockSize) % PreparedBlocks;
            std::memcpy(block.bytes.data() + (at - offset), blocks.data() + prepared * BlockSize + inBlock, length);
            at += length;
        }
        return block;
    }

private:
    std::vector<std::uint8_t> blocks;
};

// Paints one screen the way the view does: a row's bytes, then its text cells.
std::size_t DecodeScreen(const IReadOnlyDocument& document, std::uint64_t screenOffset, TextEncoding encoding)
{
    std::size_t cells = 0;
    for (int row = 0; row < RowsPerScreen; ++row) {
        const std::uint64_t rowOffset = screenOffset + static_cast<std::uint64_t>(row) * RowWidth;
        const ByteBlock rowBytes = document.Read(rowOffset, RowWidth);
        const std::vector<std::u16string> text = DecodeRowText(&document, rowOffset, rowBytes.bytes, encoding);
        benchmark::DoNotOptimize(text.data());
        cells += text.size();
    }
    return cells;
}

// range(0): the encoding; range(1): 0 for random offsets over the whole file, 1 for the first screens
// only, 2 for the last ones, to show the cost does not follow the offset.
void BM_DecodeScreen(benchmark::State& state)
{
    const auto encoding = static_cast<TextEncoding>(state.range(0));
    const std::int64_t region = state.range(1);
    const GeneratedDocument document;
    const std::uint64_t lastScreen = FileSize / RowWidth - RowsPerScreen;
    std::mt19937_64 random(42);
    std::uniform_int_distribution<std::uint64_t> anywhere(0, lastScreen);
    std::uniform_int_distribution<std::uint64_t> nearby(0, 4095);
    std::size_t cells = 0;
    for (auto _ : state) {
        std::uint64_t screenRow = anywhere(random);
        if (region == 1) {
            screenRow = nearby(random);
        } else if (region == 2) {
            screenRow = lastScreen - nearby(random);
        }
        cells += DecodeScreen(document, screenRow * RowWidth, encoding);
    }
    benchmark::DoNotOptimize(cells);
    const std::u16string name = EncodingDisplayName(encoding);
    state.SetLabel(std::string(name.begin(), name.end()) + (region == 0 ? ", anywhere" : region == 1 ? ", start" : ", end"));
}

constexpr std::uint64_t FileWindows = 64;
constexpr std::uint64_t FileWindowSize = 1024 * 1024;

std::uint64_t FileWindowStart(std::uint64_t window)
{
    return window * (FileSize / FileWindows);
}

// The sparse file, made once and removed at exit.
class SparseFile {
public:
    SparseFile()
        : path(std::filesystem::temp_directory_path() / "tolmo-encoding-bench.bin")
    {
        const GeneratedDocument content;
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        for (std::uint64_t window = 0; window < FileWindows; ++window) {
            const ByteBlock bytes = content.Read(FileWindowStart(window), FileWindowSize);
            out.seekp(static_cast<std::streamoff>(FileWindowStart(window)));
            out.write(reinterpret_cast<const char*>(bytes.bytes.data()), static_cast<std::streamsize>(bytes.bytes.size()));
        }
        out.seekp(static_cast<std::streamoff>(FileSize - 1));
        out.put('\0');
    }
    ~SparseFile()
    {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }

    std::filesystem::path path;
};

const SparseFile& File()
{
    static const SparseFile file;
    return file;
}

void BM_DecodeScreenFromFile(benchmark::State& state)
{
    const auto encoding = static_cast<TextEncoding>(state.range(0));
    FileViewModel document;
    if (!document.Open(File().path.u16string()) || document.GetSize() != FileSize) {
        state.SkipWithError("the sparse file could not be made");
        return;
    }
    std::mt19937_64 random(42);
    std::uniform_int_distribution<std::uint64_t> window(0, FileWindows - 1);
    std::uniform_int_distribution<std::uint64_t> row(0, FileWindowSize / RowWidth - RowsPerScreen);
    std::size_t cells = 0;
    for (auto _ : state) {
        cells += DecodeScreen(document, FileWindowStart(window(random)) + row(random) * RowWidth, encoding);
    }
    benchmark::DoNotOptimize(cells);
    const std::u16string name = EncodingDisplayName(encoding);
    state.SetLabel(std::string(name.begin(), name.end()) + ", file");
}

BENCHMARK(BM_DecodeScreenFromFile)
    ->DenseRange(0, static_cast<std::int64_t>(TextEncodingCount) - 1, 1)
    ->Unit(benchmark::kMicrosecond);

BENCHMARK(BM_DecodeScreen)
    ->ArgsProduct({benchmark::CreateDenseRange(0, static_cast<std::int64_t>(TextEncodingCount) - 1, 1), {0, 1, 2}})
    ->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace tlm

BENCHMARK_MAIN();
