// Figures for the document core: search speed beside memmem, search over an edited overlay, save
// speed, opening a huge sparse file, and deleting a selection byte by byte. Search figures carry the
// dataset (0 random bytes, 1 text) and the pattern length as arguments. The large files live in
// $TMPDIR (or /tmp) and are removed at the end.
#include "document/ByteSearch.h"
#include "document/EditableDocument.h"
#include "document/PlatformFile.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace tlm {
namespace {

constexpr std::uint64_t MiB = 1048576;
constexpr std::uint64_t GiB = 1024 * MiB;

std::filesystem::path WorkFolder()
{
    static const std::filesystem::path folder = [] {
        const char* tmp = std::getenv("TMPDIR");
        std::filesystem::path path = std::filesystem::path(tmp && *tmp ? tmp : "/tmp") / "tolmo-document-bench";
        std::filesystem::create_directories(path);
        return path;
    }();
    return folder;
}

std::u16string PathText(const std::filesystem::path& path)
{
    return path.u16string();
}

// Two 1 GiB files kept in the page cache: pseudo-random bytes without any zero byte, and text made of
// words, spaces and line breaks. Patterns carry a byte neither holds, so every search runs to the end.
enum Dataset : std::int64_t { RandomBytes = 0, Text = 1 };

const char* const Words[] = {"the", "of", "and", "to", "in", "is", "that", "for", "it", "as", "with", "was", "on",
    "be", "by", "this", "are", "from", "or", "an", "which", "file", "byte", "offset", "search", "editor", "value",
    "header", "record", "length", "string", "table", "section", "window", "number", "memory", "address", "data"};

std::vector<std::uint8_t> MakeBytes(Dataset dataset)
{
    std::vector<std::uint8_t> bytes(GiB);
    std::uint64_t state = 0x9E3779B97F4A7C15ull;
    const auto next = [&state] {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        return state;
    };
    if (dataset == RandomBytes) {
        for (std::uint64_t i = 0; i < GiB; i += 8) {
            const std::uint64_t word = next();
            std::memcpy(&bytes[i], &word, 8);
        }
        std::replace(bytes.begin(), bytes.end(), std::uint8_t{0}, std::uint8_t{1});
        return bytes;
    }
    std::uint64_t at = 0;
    while (at < GiB) {
        const std::uint64_t roll = next();
        const char* word = Words[roll % std::size(Words)];
        for (const char* c = word; *c != 0 && at < GiB; ++c) {
            bytes[at++] = static_cast<std::uint8_t>(*c);
        }
        if (at < GiB) {
            bytes[at++] = (roll >> 32) % 12 == 0 ? '\n' : ' ';
        }
    }
    return bytes;
}

const std::filesystem::path& DatasetFile(Dataset dataset)
{
    static std::filesystem::path paths[2];
    std::filesystem::path& path = paths[dataset];
    if (path.empty()) {
        path = WorkFolder() / (dataset == RandomBytes ? "random-1GiB.bin" : "text-1GiB.txt");
        const std::vector<std::uint8_t> bytes = MakeBytes(dataset);
        std::ofstream stream(path, std::ios::binary | std::ios::trunc);
        stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    return path;
}

const std::vector<std::uint8_t>& DatasetBytes(Dataset dataset)
{
    static std::vector<std::uint8_t> bytes[2];
    if (bytes[dataset].empty()) {
        DatasetFile(dataset);
        bytes[dataset] = MakeBytes(dataset);
    }
    return bytes[dataset];
}

// A pattern of typical bytes of the dataset with one absent byte in its middle; the last byte, the one
// the search looks for first, is typical too.
std::vector<std::uint8_t> AbsentPattern(Dataset dataset, std::size_t length)
{
    std::vector<std::uint8_t> pattern(length);
    std::mt19937 random(static_cast<std::uint32_t>(length));
    for (std::uint8_t& byte : pattern) {
        byte = dataset == RandomBytes ? static_cast<std::uint8_t>(random() | 1) : static_cast<std::uint8_t>('a' + random() % 26);
    }
    pattern[length / 2] = 0;
    return pattern;
}

void PrepareSearch(EditableDocument& document, Dataset dataset, bool edited)
{
    document.Close();
    document.file.Open(PathText(DatasetFile(dataset)));
    if (!edited) {
        return;
    }
    document.InsertByte(1000, 0x5A);
    std::mt19937_64 random(42);
    for (int i = 0; i < 1000; ++i) {
        const std::uint64_t offset = random() % document.GetEditedSize();
        document.OverwriteByte(offset, static_cast<std::uint8_t>(random() | 1));
    }
}

void SearchBenchmark(benchmark::State& state, bool forward, bool edited)
{
    const auto dataset = static_cast<Dataset>(state.range(0));
    EditableDocument document;
    PrepareSearch(document, dataset, edited);
    const std::vector<std::uint8_t> pattern = AbsentPattern(dataset, static_cast<std::size_t>(state.range(1)));
    SearchResult result;
    for (auto _ : state) {
        result = forward ? SearchForward(&document, pattern, 0) : SearchBackward(&document, pattern, document.GetSize());
        benchmark::DoNotOptimize(result);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * document.GetSize()));
    if (result.status != SearchStatus::NotFound) {
        state.SkipWithError("the pattern was found; the figure would not cover the whole file");
    }
}

// memmem over the whole file held in memory: the search alone, without any reading.
void MemmemBenchmark(benchmark::State& state)
{
    const auto dataset = static_cast<Dataset>(state.range(0));
    const std::vector<std::uint8_t>& bytes = DatasetBytes(dataset);
    const std::vector<std::uint8_t> pattern = AbsentPattern(dataset, static_cast<std::size_t>(state.range(1)));
    const void* hit = nullptr;
    for (auto _ : state) {
        hit = memmem(bytes.data(), bytes.size(), pattern.data(), pattern.size());
        benchmark::DoNotOptimize(hit);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes.size()));
    if (hit != nullptr) {
        state.SkipWithError("the pattern was found");
    }
}

// memmem over the same 1 MiB document reads the search makes: the search with the same reading cost.
void MemmemOverReadsBenchmark(benchmark::State& state)
{
    const auto dataset = static_cast<Dataset>(state.range(0));
    EditableDocument document;
    PrepareSearch(document, dataset, false);
    const std::vector<std::uint8_t> pattern = AbsentPattern(dataset, static_cast<std::size_t>(state.range(1)));
    for (auto _ : state) {
        for (std::uint64_t offset = 0; offset < document.GetSize(); offset += MiB) {
            const ByteBlock block = document.Read(offset, MiB + pattern.size() - 1);
            benchmark::DoNotOptimize(memmem(block.bytes.data(), block.bytes.size(), pattern.data(), pattern.size()));
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * document.GetSize()));
}

// Reading the whole file through the document, for the cost of the reads alone.
void ReadAllBenchmark(benchmark::State& state, bool edited)
{
    EditableDocument document;
    PrepareSearch(document, RandomBytes, edited);
    for (auto _ : state) {
        for (std::uint64_t offset = 0; offset < document.GetSize(); offset += MiB) {
            benchmark::DoNotOptimize(document.Read(offset, MiB));
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * document.GetSize()));
}

std::filesystem::path MakeSparseFile(const std::string& name, std::uint64_t size)
{
    const std::filesystem::path path = WorkFolder() / name;
    std::filesystem::remove(path);
    const FileHandle handle = CreateNewFile(PathText(path));
    SetFileEnd(handle, size);
    CloseFile(handle);
    return path;
}

void InPlaceSaveOfOneByteBenchmark(benchmark::State& state)
{
    const std::filesystem::path path = MakeSparseFile("sparse-4GiB.bin", 4 * GiB);
    EditableDocument document;
    document.file.Open(PathText(path));
    std::uint8_t value = 1;
    for (auto _ : state) {
        state.PauseTiming();
        document.OverwriteByte(3 * GiB + 12345, value++);
        state.ResumeTiming();
        if (!document.Save()) {
            state.SkipWithError("save failed");
        }
    }
    document.Close();
    std::filesystem::remove(path);
}

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Plain copy of a file with 1 MiB reads and writes and a flush, replacing an earlier copy: the yardstick
// for a rewrite, which does the same work.
double PlainCopySeconds(const std::filesystem::path& source, const std::filesystem::path& copy)
{
    std::vector<std::uint8_t> buffer(MiB);
    const Clock::time_point start = Clock::now();
    std::filesystem::remove(copy);
    const FileHandle from = OpenFileForReading(PathText(source));
    const FileHandle to = CreateNewFile(PathText(copy));
    const std::uint64_t size = QueryFileLength(from).value_or(0);
    for (std::uint64_t offset = 0; offset < size; offset += MiB) {
        const std::uint32_t read = ReadFileAt(from, offset, buffer.data(), MiB).value_or(0);
        WriteFileAt(to, offset, buffer.data(), read);
    }
    FlushFile(to);
    CloseFile(from);
    CloseFile(to);
    return SecondsSince(start);
}

// A rewrite of a 1 GiB file with one inserted byte, timed in turn with a plain copy of the same file so
// that both meet the same state of the disk.
void TemporaryFileSaveBenchmark(benchmark::State& state)
{
    const std::filesystem::path path = WorkFolder() / "rewrite-1GiB.bin";
    const std::filesystem::path copy = WorkFolder() / "plain-copy.bin";
    std::filesystem::copy_file(DatasetFile(RandomBytes), path, std::filesystem::copy_options::overwrite_existing);
    EditableDocument document;
    document.file.Open(PathText(path));
    double saveSeconds = 0;
    double copySeconds = 0;
    for (auto _ : state) {
        copySeconds += PlainCopySeconds(path, copy);
        document.InsertByte(4096, 0x42);
        const Clock::time_point start = Clock::now();
        if (!document.Save()) {
            state.SkipWithError("save failed");
        }
        const double seconds = SecondsSince(start);
        saveSeconds += seconds;
        state.SetIterationTime(seconds);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * GiB));
    state.counters["save_s"] = saveSeconds / static_cast<double>(state.iterations());
    state.counters["plain_copy_s"] = copySeconds / static_cast<double>(state.iterations());
    state.counters["copy_over_save"] = copySeconds / saveSeconds;
    document.Close();
    std::filesystem::remove(path);
    std::filesystem::remove(copy);
}

std::uint64_t ResidentKiB()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind("VmRSS:", 0) == 0) {
            return std::stoull(line.substr(6));
        }
    }
    return 0;
}

void OpenBenchmark(benchmark::State& state, std::uint64_t size)
{
    const std::filesystem::path path = MakeSparseFile("sparse-open.bin", size);
    EditableDocument document;
    const std::uint64_t before = ResidentKiB();
    for (auto _ : state) {
        document.Close();
        document.file.Open(PathText(path));
        benchmark::DoNotOptimize(document.Read(size / 2, 64));
    }
    state.counters["size"] = static_cast<double>(document.GetSize());
    state.counters["rss_growth_KiB"] = static_cast<double>(ResidentKiB() - before);
    document.Close();
    std::filesystem::remove(path);
}

// Deleting a selection the way the hex view does: one DeleteByte a byte, highest offset first, asking
// for the edited size between calls.
void DeleteSelectionBenchmark(benchmark::State& state, bool insideRun)
{
    const std::uint64_t selection = static_cast<std::uint64_t>(state.range(0));
    const std::filesystem::path path = WorkFolder() / "delete-selection.bin";
    {
        std::ofstream stream(path, std::ios::binary | std::ios::trunc);
        std::vector<char> bytes(4 * MiB, 0x33);
        stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    EditableDocument document;
    for (auto _ : state) {
        state.PauseTiming();
        document.Close();
        document.file.Open(PathText(path));
        const std::uint64_t first = MiB + 17;
        if (insideRun) {
            // A long inserted run (typed or pasted), with the selection in its middle.
            for (std::uint64_t i = 0; i < 2 * selection + 1000; ++i) {
                document.InsertByte(first + i, static_cast<std::uint8_t>(i));
            }
        }
        const std::uint64_t start = insideRun ? first + selection / 2 : first;
        state.ResumeTiming();
        for (std::uint64_t i = selection; i-- > 0;) {
            if (!document.DeleteByte(start + i)) {
                state.SkipWithError("delete failed");
                break;
            }
            benchmark::DoNotOptimize(document.GetEditedSize());
            benchmark::DoNotOptimize(document.GetSize());
        }
    }
    state.counters["edited_size"] = static_cast<double>(document.GetEditedSize());
    document.Close();
    std::filesystem::remove(path);
}

} // namespace
} // namespace tlm

int main(int argc, char** argv)
{
    using namespace tlm;
    for (const std::int64_t dataset : {RandomBytes, Text}) {
        for (const std::int64_t length : {1, 4, 8, 16, 64}) {
            const std::vector<std::int64_t> args = {dataset, length};
            benchmark::RegisterBenchmark("memmem/inMemory", MemmemBenchmark)->Args(args);
            benchmark::RegisterBenchmark("memmem/overDocumentReads", MemmemOverReadsBenchmark)->Args(args);
            benchmark::RegisterBenchmark("SearchForward/clean", SearchBenchmark, true, false)->Args(args);
            benchmark::RegisterBenchmark("SearchBackward/clean", SearchBenchmark, false, false)->Args(args);
            benchmark::RegisterBenchmark("SearchForward/edited", SearchBenchmark, true, true)->Args(args);
            benchmark::RegisterBenchmark("SearchBackward/edited", SearchBenchmark, false, true)->Args(args);
        }
    }
    benchmark::RegisterBenchmark("ReadAll/clean", ReadAllBenchmark, false);
    benchmark::RegisterBenchmark("ReadAll/edited", ReadAllBenchmark, true);
    benchmark::RegisterBenchmark("Save/InPlaceOneByteOf4GiBSparse", InPlaceSaveOfOneByteBenchmark)
        ->Iterations(20)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("Save/TemporaryFile1GiBOneInsert", TemporaryFileSaveBenchmark)
        ->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("Open/1TBSparse", OpenBenchmark, 1000ull * 1000 * 1000 * 1000)->Iterations(1000);
    benchmark::RegisterBenchmark("Open/1KiB", OpenBenchmark, 1024ull)->Iterations(1000);
    for (const std::int64_t selection : {64 * 1024, 1024 * 1024}) {
        benchmark::RegisterBenchmark("DeleteSelection/FileBytes", DeleteSelectionBenchmark, false)
            ->Arg(selection)->Iterations(1)->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark("DeleteSelection/RunBytes", DeleteSelectionBenchmark, true)
            ->Arg(selection)->Iterations(1)->Unit(benchmark::kMillisecond);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    std::error_code error;
    std::filesystem::remove_all(WorkFolder(), error);
    return 0;
}
