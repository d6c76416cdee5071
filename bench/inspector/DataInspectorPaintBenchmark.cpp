// Building the inspector's paint list: twelve rows of values from random bytes, with a picked row, in a
// window of the size it starts with.
#include "inspector/DataInspectorWindow.h"
#include "inspector/InspectorRows.h"

#include <benchmark/benchmark.h>

#include <random>

namespace tlm {
namespace {

InspectorLabels Labels()
{
    return MakeInspectorLabels([](std::string_view key) { return std::u16string(key.begin(), key.end()); });
}

std::vector<std::u16string> RandomRows(std::mt19937_64& random)
{
    InspectorRequest request;
    for (int i = 0; i < 16; ++i) {
        request.bytes.push_back(static_cast<std::uint8_t>(random()));
    }
    return BuildInspectorRows(request, u"Not available");
}

void BuildInspectorPaintList(benchmark::State& state)
{
    DataInspectorWindow window;
    window.SetLabels(Labels());
    std::mt19937_64 random(11);
    window.SetValues(RandomRows(random));
    window.OnLeftButtonDown(300, 38 + 36 * 4 + 10);
    const InspectorClientSize client{504, 601};
    InspectorPaint paint;
    for (auto _ : state) {
        BuildInspectorPaint(window, client, paint);
        benchmark::DoNotOptimize(paint.operations.data());
    }
    state.counters["operations"] = static_cast<double>(paint.operations.size());
}
BENCHMARK(BuildInspectorPaintList);

} // namespace
} // namespace tlm

BENCHMARK_MAIN();
