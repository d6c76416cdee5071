// Figures for building the struct view's rows: the entry struct of a generated pattern of 10,000
// structs nested three deep, declared last so that every name lookup walks the whole list. Each of
// the entry's struct fields names a different struct, so every header row costs a lookup of its own.
#include "structview/StructPatternLoader.h"
#include "structview/StructRows.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace tlm {
namespace {

constexpr std::size_t StructCount = 10000;
constexpr std::size_t PerLevel = (StructCount - 1) / 3;
constexpr std::size_t RootFields = 96;

std::string Numbered(std::string_view stem, std::size_t index)
{
    return std::string(stem) + std::to_string(index);
}

// Leaf (12 bytes) inside Middle (28 bytes) inside Outer (40 bytes), each level a third of the file,
// and last one Root holding 96 Outer fields of distinct types.
std::string PatternText()
{
    std::string text = "@entry Root\n";
    for (std::size_t i = 0; i < PerLevel; ++i)
        text += "struct " + Numbered("Leaf", i) + " { uint32_t id; uint16_t kind; char tag[6]; };\n";
    for (std::size_t i = 0; i < PerLevel; ++i) {
        text += "struct " + Numbered("Middle", i) + " { " + Numbered("Leaf", i) + " first; uint32_t count; "
            + Numbered("Leaf", PerLevel - 1 - i) + " second; };\n";
    }
    for (std::size_t i = 0; i < PerLevel; ++i)
        text += "struct " + Numbered("Outer", i) + " { " + Numbered("Middle", i) + " middle; float scale; uint64_t stamp; };\n";
    text += "struct Root {\n";
    for (std::size_t i = 0; i < RootFields; ++i)
        text += "    " + Numbered("Outer", PerLevel - 1 - i * (PerLevel / RootFields)) + " " + Numbered("outer", i) + ";\n";
    text += "};\n";
    return text;
}

std::shared_ptr<const StructPatternFile> MakePattern()
{
    auto file = std::make_shared<StructPatternFile>();
    std::u16string error;
    if (!LoadStructPatternBytes(PatternText(), *file, error) || file->structs.size() != StructCount)
        std::abort();
    return file;
}

StructEvalRequest MakeRequest()
{
    StructEvalRequest request;
    request.patternFile = MakePattern();
    request.baseOffset = 0x10000;
    request.bytes.resize(request.patternFile->structs.back().size);
    std::mt19937 random(7);
    for (std::uint8_t& byte : request.bytes)
        byte = static_cast<std::uint8_t>(random());
    request.unavailableText = std::u16string(u"-");
    return request;
}

void BuildRowsOfDeepPattern(benchmark::State& state)
{
    const StructEvalRequest request = MakeRequest();
    std::size_t rowCount = 0;
    for (auto _ : state) {
        const std::vector<StructRow> rows = BuildStructRows(request);
        rowCount = rows.size();
        benchmark::DoNotOptimize(rows.data());
    }
    state.counters["rows"] = static_cast<double>(rowCount);
    state.counters["structs"] = static_cast<double>(request.patternFile->structs.size());
}
BENCHMARK(BuildRowsOfDeepPattern)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tlm

BENCHMARK_MAIN();
