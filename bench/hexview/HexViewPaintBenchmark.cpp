// Building the paint list of a full screen of 60 rows at random offsets of a 1 GiB file, in every
// encoding: the 16-byte read of each row, its cells with their look-around reads, and every drawing
// operation with its text. Target: under 0.5 ms a screen. The caret and a selection stand on each screen
// so their layers are built too.
#include "MixedScriptFile.h"

#include "document/EditableDocument.h"
#include "encoding/TextEncoding.h"
#include "hexview/HexView.h"
#include "hexview/HexViewPaint.h"
#include "hexview/TextMeasurer.h"

#include <benchmark/benchmark.h>

#include <random>

namespace tlm {
namespace {

constexpr std::uint64_t FileSize = 1024ull * 1024 * 1024;
constexpr int RowsPerScreen = 60;

const bench::MixedScriptFile& File()
{
    static const bench::MixedScriptFile file("tolmo-hexview-paint-bench.bin", FileSize);
    return file;
}

// Lines 16 high and cells 8 wide make rows 21.6 high: 1320 pixels hold 60 whole rows, 1400 every column.
HexViewHost ScreenHost()
{
    HexViewHost host;
    host.clientSize = [] { return ClientSize{1400, 1320}; };
    host.windowDpi = [] { return 96u; };
    return host;
}

void BuildScreenPaint(benchmark::State& state)
{
    const auto encoding = static_cast<TextEncoding>(state.range(0));
    EditableDocument document;
    if (!File().ok || !document.file.Open(File().path.u16string())) {
        state.SkipWithError("cannot open the benchmark file");
        return;
    }
    HexView view(ScreenHost(), FixedTextMeasurer(16.0f, 8.0f));
    view.SetDocument(&document);
    view.SetEncoding(encoding);
    if (VisibleRowCount(view.Metrics(), view.Client()) != RowsPerScreen) {
        state.SkipWithError("the screen does not hold 60 rows");
        return;
    }

    HexViewPaint paint;
    std::mt19937_64 random(42);
    const std::uint64_t lastTopRow = FileSize / 16 - RowsPerScreen;
    std::size_t operations = 0;
    for (auto _ : state) {
        const std::uint64_t topRow = random() % lastTopRow;
        view.MoveCaretTo(topRow * 16 + 37);
        view.OnVerticalScroll(ScrollCommand::ThumbTrack, static_cast<std::int32_t>(topRow));
        view.SelectRange(topRow * 16 + 100, topRow * 16 + 180);
        BuildPaint(view, paint);
        operations += paint.operations.size();
        benchmark::DoNotOptimize(paint.operations.data());
    }
    state.counters["operations"] = benchmark::Counter(static_cast<double>(operations), benchmark::Counter::kAvgIterations);
    state.SetLabel("screens of 60 rows");
}

BENCHMARK(BuildScreenPaint)->DenseRange(0, TextEncodingCount - 1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tlm

BENCHMARK_MAIN();
