// Frames in memory: what composing costs, beside the memcpy of the window's pixels.
#include "bench/bench_dialog.h"

namespace {

using bench::BenchDialog;
using bench::Clock;

// A new size makes the background be scaled anew; a pixel of it set does the same and leaves all else.
enum Change { kNothing, kOneButton, kEverything, kBackground };

void Touch(BenchDialog& dialog, Change change, int turn) {
    if (change == kOneButton)
        dialog.Toggle(turn % bench::kButtons);
    else if (change == kBackground)
        dialog.backPicture->SetPixel(0, 0, Gdiplus::Color(0xFF000000));
    else if (change == kEverything)
        dialog.SetBackColor(Gdiplus::Color(0xFF000000U | static_cast<unsigned>(turn)), 1);
}

enum Until { kComposed, kShown };
enum Items { kButtonsOnly, kFurnished };

// The whole window is refreshed and painted; `change` is what differs from the frame before. Composed: the
// frame is complete in the window's surface. Shown: the headless screen has taken it over, too. Counts the
// texts laid out and the images scaled again, over all frames.
void WholeFrame(benchmark::State& state, int width, int height, Change change, Until until,
                Items items = kButtonsOnly) {
    BenchDialog dialog;
    dialog.Open(width, height, false);
    if (items == kFurnished) dialog.Furnish(width, height);
    for (int i = 0; i < bench::kButtons; ++i) {  // both looks of every button, before the count starts
        dialog.Toggle(i);
        dialog.UpdateView();
        dialog.Settle();
    }
    const Gdiplus::DrawingCounters before = Gdiplus::GetDrawingCounters();
    int turn = 0;
    bench::RunPaired(state, static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4, [&] {
        Touch(dialog, change, ++turn);
        const auto start = Clock::now();
        dialog.UpdateView();
        dialog.Settle();
        return until == kShown ? bench::Seconds(start)
                               : std::chrono::duration<double>(dialog.composed - start).count();
    });
    const Gdiplus::DrawingCounters after = Gdiplus::GetDrawingCounters();
    state.counters["layouts"] = static_cast<double>(after.textLayouts - before.textLayouts);
    state.counters["scaled"] = static_cast<double>(after.scaledImages - before.scaledImages);
}

// One hovered button is refreshed through UpdateViewRect; the memcpy is that of the button's pixels.
void ButtonRectangle(benchmark::State& state, int width, int height) {
    BenchDialog dialog;
    dialog.Open(width, height, false);
    int turn = 0;
    bench::RunPaired(state, bench::kButtonWidth * bench::kButtonHeight * 4, [&] {
        const int index = ++turn % bench::kButtons;
        dialog.Toggle(index);
        CRect rect;
        dialog.buttons[static_cast<std::size_t>(index)]->GetButtonRect(rect);
        const auto start = Clock::now();
        dialog.UpdateViewRect(rect);
        dialog.Settle();
        return bench::Seconds(start);
    });
}

// A per-pixel update up to the moment the surface is complete: the push is not counted.
void PerPixelUpdate(benchmark::State& state, int width, int height, Change change) {
    BenchDialog dialog;
    dialog.Open(width, height, true);
    int turn = 0;
    bench::RunPaired(state, static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4, [&] {
        Touch(dialog, change, ++turn);
        const auto start = Clock::now();
        dialog.UpdateView();
        return std::chrono::duration<double>(dialog.composed - start).count();
    });
}

// The same with a host that draws on every frame itself, which makes every frame start from nothing.
void PerPixelFromNothing(benchmark::State& state, int width, int height) {
    struct Drawing : BenchDialog {
        void DrawSurface(HDC dc, int w, int h, int buffer) override {
            BenchDialog::DrawSurface(dc, w, h, buffer);
            Gdiplus::Graphics graphics(dc);
            const Gdiplus::SolidBrush brush{Gdiplus::Color(0xFFFF0000)};
            graphics.FillRectangle(&brush, 0, 0, 1, 1);
        }
    } dialog;
    dialog.Open(width, height, true);
    bench::RunPaired(state, static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4, [&] {
        const auto start = Clock::now();
        dialog.UpdateView();
        return std::chrono::duration<double>(dialog.composed - start).count();
    });
}

BENCHMARK_CAPTURE(WholeFrame, unchanged_1280x800, 1280, 800, kNothing, kComposed)->UseManualTime();
BENCHMARK_CAPTURE(WholeFrame, one_button_1280x800, 1280, 800, kOneButton, kComposed)->UseManualTime();
BENCHMARK_CAPTURE(WholeFrame, from_nothing_1280x800, 1280, 800, kEverything, kComposed)->UseManualTime();
BENCHMARK_CAPTURE(WholeFrame, one_button_shown_1280x800, 1280, 800, kOneButton, kShown)->UseManualTime();
BENCHMARK_CAPTURE(WholeFrame, furnished_unchanged_1280x800, 1280, 800, kNothing, kComposed, kFurnished)
    ->UseManualTime();
BENCHMARK_CAPTURE(WholeFrame, furnished_one_button_1280x800, 1280, 800, kOneButton, kComposed, kFurnished)
    ->UseManualTime();
BENCHMARK_CAPTURE(WholeFrame, furnished_from_nothing_1280x800, 1280, 800, kEverything, kComposed, kFurnished)
    ->UseManualTime();
BENCHMARK_CAPTURE(WholeFrame, furnished_rescaled_1280x800, 1280, 800, kBackground, kComposed, kFurnished)
    ->UseManualTime();
BENCHMARK_CAPTURE(ButtonRectangle, in_1280x800, 1280, 800)->UseManualTime();
BENCHMARK_CAPTURE(ButtonRectangle, in_2560x1600, 2560, 1600)->UseManualTime();
BENCHMARK_CAPTURE(PerPixelUpdate, unchanged_1920x1080, 1920, 1080, kNothing)->UseManualTime();
BENCHMARK_CAPTURE(PerPixelUpdate, one_button_1920x1080, 1920, 1080, kOneButton)->UseManualTime();
BENCHMARK_CAPTURE(PerPixelFromNothing, cached_1920x1080, 1920, 1080)->UseManualTime();

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (!Headless::Use(2560, 1600)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
