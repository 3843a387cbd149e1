// The way to the X server: a per-pixel update and a painted frame with their push, beside the memcpy.
// Skips itself where no display can be reached.
#include "bench/bench_dialog.h"

namespace {

using bench::BenchDialog;
using bench::Clock;

void Frame(benchmark::State& state, int width, int height, bool perPixel) {
    BenchDialog dialog;
    if (!dialog.Open(width, height, perPixel)) {
        state.SkipWithError("no display");
        return;
    }
    for (int i = 0; i < 50; ++i)
        dialog.messagePump();
    int turn = 0;
    bench::RunPaired(state, static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4, [&] {
        dialog.Toggle(++turn % bench::kButtons);
        const auto start = Clock::now();
        dialog.UpdateView();
        dialog.Settle();
        const double seconds = bench::Seconds(start);
        dialog.messagePump();
        return seconds;
    });
}

BENCHMARK_CAPTURE(Frame, painted_1280x800, 1280, 800, false)->UseManualTime();
BENCHMARK_CAPTURE(Frame, per_pixel_1280x800, 1280, 800, true)->UseManualTime();
BENCHMARK_CAPTURE(Frame, per_pixel_1920x1080, 1920, 1080, true)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
