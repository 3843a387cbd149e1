// Many windows, in memory: making and showing top-levels one by one, a chain of owners, raising from the
// bottom, and one pointer move over many children. The figure to look at is the time of one: it should hardly
// grow with how many there are.
#include <benchmark/benchmark.h>

#include <platform/headless.h>
#include <platform/window.h>

#include <vector>

namespace {

constexpr LPCWSTR kClass = u"WindowBench";

HWND Make(int x, int y, DWORD style, HWND parent) {
    return CreateWindowExW(0, kClass, u"", style, x, y, 60, 40, parent, 1, {}, nullptr);
}

// Spread over the screen, so that they overlap here and there.
HWND MakeTopLevel(int index, HWND owner = {}) {
    return Make(index * 37 % 1200, index * 53 % 740, WS_POPUP | WS_VISIBLE, owner);
}

void SetTimeOfOne(benchmark::State& state, int64_t count) {
    state.counters["one"] =
        benchmark::Counter(static_cast<double>(count),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void TopLevels(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<HWND> windows;
        for (int i = 0; i < state.range(0); ++i)
            windows.push_back(MakeTopLevel(i));
        Headless::RunPending();
        for (const HWND window : windows)
            DestroyWindow(window);
        Headless::RunPending();
    }
    SetTimeOfOne(state, state.range(0));
}

void ChainOfOwners(benchmark::State& state) {
    for (auto _ : state) {
        HWND first, last;
        for (int i = 0; i < state.range(0); ++i) {
            last = MakeTopLevel(i, last);
            if (!first) first = last;
        }
        Headless::RunPending();
        DestroyWindow(first);
        Headless::RunPending();
    }
    SetTimeOfOne(state, state.range(0));
}

void RaiseTheLowest(benchmark::State& state) {
    std::vector<HWND> windows;
    for (int i = 0; i < state.range(0); ++i)
        windows.push_back(MakeTopLevel(i));
    Headless::RunPending();
    std::size_t lowest = 0;
    for (auto _ : state) {
        SetActiveWindow(windows[lowest++ % windows.size()]);
        Headless::RunPending();
    }
    for (const HWND window : windows)
        DestroyWindow(window);
    Headless::RunPending();
}

void MoveOverTopLevels(benchmark::State& state) {
    std::vector<HWND> windows;
    for (int i = 0; i < state.range(0); ++i)
        windows.push_back(MakeTopLevel(i));
    Headless::RunPending();
    int x = 0;
    for (auto _ : state)
        Headless::MovePointer(x++ % 1280, 795);  // below all of them
    for (const HWND window : windows)
        DestroyWindow(window);
    Headless::RunPending();
}

void Children(benchmark::State& state) {
    for (auto _ : state) {
        const HWND parent =
            CreateWindowExW(0, kClass, u"", WS_POPUP | WS_VISIBLE, 0, 0, 1280, 800, {}, 0, {}, nullptr);
        for (int i = 0; i < state.range(0); ++i)
            Make(i * 37 % 1200, i * 53 % 740, WS_CHILD | WS_VISIBLE, parent);
        Headless::RunPending();
        DestroyWindow(parent);
        Headless::RunPending();
    }
    SetTimeOfOne(state, state.range(0));
}

void MoveOverChildren(benchmark::State& state) {
    const HWND parent =
        CreateWindowExW(0, kClass, u"", WS_POPUP | WS_VISIBLE, 0, 0, 1280, 800, {}, 0, {}, nullptr);
    for (int i = 0; i < state.range(0); ++i)
        Make(i * 37 % 1200, i * 53 % 740, WS_CHILD | WS_VISIBLE, parent);
    Headless::RunPending();
    int x = 0;
    for (auto _ : state)
        Headless::MovePointer(x++ % 1280, 300);
    DestroyWindow(parent);
    Headless::RunPending();
}

BENCHMARK(TopLevels)->Arg(500)->Arg(2000)->Arg(5000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ChainOfOwners)->Arg(100)->Arg(400)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(RaiseTheLowest)->Arg(500)->Arg(5000)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(MoveOverTopLevels)->Arg(500)->Arg(5000)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(Children)->Arg(4096)->Arg(16384)->Arg(65535)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(MoveOverChildren)->Arg(4096)->Arg(65535)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (!Headless::Use(1280, 800)) return 1;
    WNDCLASSW description;
    description.lpfnWndProc = DefWindowProcW;
    description.lpszClassName = kClass;
    if (!RegisterClassW(&description)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
