// Figures for loading a struct pattern: a generated file of 10,000 structs nested three deep below
// the entry, declared outermost first so that layout resolves every nested struct on first use, with
// members typed through chains of typedefs.
#include "structview/PatternTokenizer.h"
#include "structview/StructPatternLoader.h"
#include "encoding/Utf8.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace tlm {
namespace {

constexpr int LeafCount = 7500;
constexpr int MiddleCount = 2000;
constexpr int UpperCount = 499; // with the entry struct, 10,000 structs in all
constexpr int TypedefChainLength = 8;

std::string Name(const char* stem, int index)
{
    return stem + std::to_string(index);
}

std::string ScalarTypedefs()
{
    std::string text = "typedef uint32_t t0;\n";
    for (int i = 1; i < TypedefChainLength; ++i)
        text += "typedef " + Name("t", i - 1) + " " + Name("t", i) + ";\n";
    return text + "typedef char* text;\n";
}

std::string GeneratedPattern()
{
    std::string text = "// generated\n@sizeof_long 4\n@entry Root\n" + ScalarTypedefs();
    text += "struct Root {\n";
    for (int i = 0; i < UpperCount; ++i)
        text += "    " + Name("Upper", i) + " " + Name("u", i) + ";\n";
    text += "};\n";
    for (int i = 0; i < UpperCount; ++i) {
        text += "struct " + Name("Upper", i) + " {\n    char tag;\n";
        for (int k = 0; k < 4; ++k)
            text += "    struct " + Name("Middle", (i * 4 + k) % MiddleCount) + " " + Name("m", k) + ";\n";
        text += "};\n";
    }
    for (int i = 0; i < MiddleCount; ++i) {
        text += "struct " + Name("Middle", i) + " {\n    short kind;\n";
        for (int k = 0; k < 4; ++k)
            text += "    " + Name("LeafType", (i * 4 + k) % LeafCount) + " " + Name("leaf", k) + ";\n";
        text += "    text label;\n};\n";
    }
    for (int i = 0; i < LeafCount; ++i) {
        text += "typedef struct " + Name("Leaf", i) + " " + Name("LeafType", i) + ";\n";
        text += "struct " + Name("Leaf", i) + " {\n    uint8_t flags;\n    " + Name("t", TypedefChainLength - 1)
            + " value;\n    t3 pair[2];\n    unsigned long long stamp;\n    char name[12];\n    float ratio;\n};\n";
    }
    return text;
}

void LoadFromBytes(benchmark::State& state)
{
    const std::string bytes = GeneratedPattern();
    for (auto _ : state) {
        StructPatternFile patternFile;
        std::u16string error;
        const bool loaded = LoadStructPatternBytes(bytes, patternFile, error);
        if (!loaded || patternFile.structs.size() != 10000) {
            state.SkipWithError("the generated pattern did not load");
            return;
        }
        benchmark::DoNotOptimize(patternFile);
    }
    state.counters["bytes"] = static_cast<double>(bytes.size());
}
BENCHMARK(LoadFromBytes)->Unit(benchmark::kMillisecond);

// The share of the load that decoding and tokenising take.
void Tokenize(benchmark::State& state)
{
    const std::u16string text = *Utf8ToUtf16(GeneratedPattern());
    for (auto _ : state) {
        std::u16string error;
        auto tokens = TokenizeDefinition(text, error);
        benchmark::DoNotOptimize(tokens);
    }
}
BENCHMARK(Tokenize)->Unit(benchmark::kMillisecond);

void LoadFromFile(benchmark::State& state)
{
    const auto path = std::filesystem::temp_directory_path() / "tolmo-pattern-benchmark.tlpat";
    {
        std::ofstream stream(path, std::ios::binary);
        stream << GeneratedPattern();
    }
    for (auto _ : state) {
        StructPatternFile patternFile;
        std::u16string error;
        if (!LoadStructPatternFile(path.u16string(), patternFile, error)) {
            state.SkipWithError("the generated pattern did not load");
            break;
        }
        benchmark::DoNotOptimize(patternFile);
    }
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
}
BENCHMARK(LoadFromFile)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tlm

BENCHMARK_MAIN();
