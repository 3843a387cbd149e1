// Icon lists from a thousand entries to a hundred thousand, of which some two hundred are in view.
#include <unistd.h>
#include <fstream>

#include "bench/bench_dialog.h"

namespace {

using bench::BenchDialog;
using bench::Clock;

constexpr int kWidth = 1280, kHeight = 800;

CString Piece(const char* name, std::uint32_t (*pixel)(int, int), int side) {
    return bench::SavePicture(name, side, side, pixel);
}

CStringArray FrameFiles(const char* name, std::uint32_t (*pixel)(int, int)) {
    CStringArray files;
    for (int i = 0; i < 9; ++i) {
        const std::string file = name + std::to_string(i) + ".png";
        files.Add(Piece(file.c_str(), pixel, 6));
    }
    return files;
}

void FillRecord(QKListItem& record, int number, const Gdiplus::Image& icon) {
    record.pImage = icon.Clone();
    record.SetText(CString("Holiday pictures ") + CString(std::to_string(number).c_str()));
}

// A dialog with a list of icons in columns, as on a desktop: the first two hundred or so are in view.
struct ListDialog : BenchDialog {
    explicit ListDialog(int count)
        : icon(Piece(
              "icon.png",
              [](int x, int y) { return 0xFF000000U | static_cast<std::uint32_t>(x * 4 << 16 | y * 4); },
              64)) {
        Create(bench::kTemplate);
        SetWindowPos(HWND(), 0, 0, kWidth, kHeight, SWP_NOZORDER);
        SetBack(bench::BackgroundPicture(), 1, 0);
        list.SetMouseMoveImage(FrameFiles("hover", [](int, int) { return 0x40404040U; }));
        list.SetMouseDownImage(FrameFiles("press", [](int, int) { return 0x60606060U; }));
        list.SetFouceImage(FrameFiles("focus", [](int, int) { return 0x50205050U; }));
        list.SetListType(QKLT_BIGICON, 75, 76, 48, 48, 2, 2);
        list.SetArrange(1);
        list.SetListMode(QKLIST_DESKTOP);
        CRect rect(5, 5, kWidth - 5, kHeight - 5);
        list.SetRect(&rect);
        AddQKItem(&list);
        SetSelRect(1);
        QKListItem record;
        for (int i = 0; i < count; ++i) {
            FillRecord(record, i, icon);
            list.AddItem(&record, 1);
        }
        ShowWindow(SW_SHOW);
        UpdateView();
        Settle();
    }
    using BenchDialog::OnLButtonDown;
    using BenchDialog::OnLButtonUp;
    using BenchDialog::OnMouseMove;

    Gdiplus::Image icon;
    QKListCtrl list;
};

// The entries of a list, one after the other, and then all of them anew.
void AddAll(benchmark::State& state) {
    const Gdiplus::Image icon(Piece(
        "icon.png", [](int, int) { return 0xFF808080U; }, 64));
    for (auto _ : state) {
        QKListCtrl list;
        list.SetListType(QKLT_BIGICON);
        list.SetParent(HWND::FromParam(~0ULL));
        CRect rect(0, 0, kWidth, kHeight);
        list.SetRect(&rect);
        QKListItem record;
        const auto start = Clock::now();
        for (int i = 0; i < state.range(0); ++i) {
            FillRecord(record, i, icon);
            list.AddItem(&record, 1);
        }
        state.SetIterationTime(bench::Seconds(start));
    }
    state.SetComplexityN(state.range(0));
}

void LayOutAll(benchmark::State& state) {
    ListDialog dialog(static_cast<int>(state.range(0)));
    int turn = 0;
    for (auto _ : state) {  // other cells every time
        dialog.list.SetListType(QKLT_BIGICON, 75, 76, 48, 48, 2 + ++turn % 2, 2);
        dialog.list.ReSetPos(1);
    }
    state.SetComplexityN(state.range(0));
}

// A program may have asked for every entry, and hold it.
enum Host { kAskedForNone, kAskedForAll };

void Ask(Host host, QKListCtrl& list) {
    for (int i = 0; host == kAskedForAll && i < list.GetCount(); ++i)
        list.GetItem(i);
}

void ScrollStep(benchmark::State& state, Host host) {
    ListDialog dialog(static_cast<int>(state.range(0)));
    CRect given(5, 5, kWidth - 5, kHeight - 5);
    dialog.list.SetRect(&given);  // the layout that the steps move
    Ask(host, dialog.list);
    int turn = 0;
    for (auto _ : state) {
        ++turn;
        CRect rect(5 - turn % 50, 5, kWidth - 5 - turn % 50, kHeight - 5);
        dialog.list.SetRect(&rect);
        dialog.UpdateView();
        dialog.Settle();
    }
}

// A list that clips and scrolls, somewhere in the middle.
struct ScrollingDialog : ListDialog {
    explicit ScrollingDialog(int count) : ListDialog(count) {
        list.SetScrollBar(&bar);
        bar.SetRect(kWidth - 24, 5, 18, kHeight - 10);
        AddQKItem(&bar);
        CRect view(5, 5, kWidth - 30, kHeight - 5);
        list.SetRect(&view);
        list.SetFocusItem(count / 2);
        list.EnsureVisible(count / 2);
        UpdateView();
        Settle();
    }
    QKVScrollBar bar;
};

// One notch of the wheel, to and fro, with the repaint; and its way to the first pixel alone.
void WheelStep(benchmark::State& state, bool paints) {
    ScrollingDialog dialog(static_cast<int>(state.range(0)));
    int turn = 0;
    for (auto _ : state) {
        CPoint point(600, 400);
        dialog.ClientToScreen(&point);
        dialog.OnMouseWheel(0, ++turn % 2 ? WHEEL_DELTA : -WHEEL_DELTA, point);
        if (paints) dialog.Settle();
    }
}

// The focus down and up by keys, with the selection and the repaint.
void KeyStep(benchmark::State& state) {
    ScrollingDialog dialog(static_cast<int>(state.range(0)));
    int turn = 0;
    for (auto _ : state) {
        dialog.OnKeyDown(++turn % 2 ? VK_DOWN : VK_UP, 1, 0);
        dialog.Settle();
    }
}

// A pointer step from one entry to the next, with the repaint.
void HoverStep(benchmark::State& state, Host host) {
    ListDialog dialog(static_cast<int>(state.range(0)));
    Ask(host, dialog.list);
    int turn = 0;
    for (auto _ : state) {
        dialog.OnMouseMove(0, CPoint(30 + ++turn % 16 * 77, 30));
        dialog.Settle();
    }
}

void PressStep(benchmark::State& state) {
    ListDialog dialog(static_cast<int>(state.range(0)));
    dialog.SetNoMove(1);
    int turn = 0;
    for (auto _ : state) {
        const CPoint point(30 + ++turn % 16 * 77, 30);
        dialog.OnLButtonDown(0, point);
        dialog.Settle();
        state.PauseTiming();
        dialog.OnLButtonUp(0, point);
        dialog.Settle();
        state.ResumeTiming();
    }
}

void BandStep(benchmark::State& state) {
    ListDialog dialog(static_cast<int>(state.range(0)));
    dialog.SetNoMove(1);
    dialog.OnLButtonDown(0, CPoint(2, 2));
    int turn = 0;
    for (auto _ : state) {
        ++turn;
        dialog.OnMouseMove(0, CPoint(600 + turn % 100, 400 + turn % 100));
        dialog.Settle();
    }
    dialog.OnLButtonUp(0, CPoint(2, 2));
}

enum Change { kNothing, kEverything, kCaptions };

// Twenty entries selected, one hovered. With their captions gone they are laid out and drawn as if never
// seen.
void WholeFrame(benchmark::State& state, Change change) {
    ListDialog dialog(static_cast<int>(state.range(0)));
    for (int i = 0; i < 20; ++i)
        dialog.list.SetSel(i * 7, 1);
    dialog.OnMouseMove(0, CPoint(500, 200));
    const Gdiplus::Font font(u"DejaVu Sans", 12, Gdiplus::FontStyleRegular, Gdiplus::UnitPixel);
    int turn = 0;
    bench::RunPaired(state, std::size_t{kWidth} * kHeight * 4, [&] {
        if (change == kEverything)
            dialog.SetBackColor(Gdiplus::Color(0xFF000000U | static_cast<unsigned>(++turn)), 1);
        if (change == kCaptions) {
            dialog.list.RedrawList();
            Gdiplus::SetDrawingCacheLimit(0);  // the texts go when one of them is next asked for
            Gdiplus::GetTextExtent(u"x", 1, &font, {0, 0, 99, 99}, nullptr);
            Gdiplus::SetDrawingCacheLimit(std::size_t{64} << 20);
        }
        const auto start = Clock::now();
        dialog.UpdateView();
        dialog.Settle();
        return std::chrono::duration<double>(dialog.composed - start).count();
    });
}

std::size_t ResidentBytes() {
    std::ifstream file("/proc/self/statm");
    std::size_t total = 0, resident = 0;
    file >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

// An entry with a caption and an icon that it shares, not yet seen.
void MemoryPerEntry(benchmark::State& state) {
    const Gdiplus::Image icon(Piece(
        "icon.png", [](int, int) { return 0xFF808080U; }, 64));
    for (auto _ : state) {
        const std::size_t before = ResidentBytes();
        QKListCtrl list;
        list.SetListType(QKLT_BIGICON);
        CRect rect(0, 0, kWidth, kHeight);
        list.SetRect(&rect);
        QKListItem record;
        for (int i = 0; i < state.range(0); ++i) {
            FillRecord(record, i, icon);
            list.AddItem(&record, 1);
        }
        state.counters["bytes"] =
            static_cast<double>(ResidentBytes() - before) / static_cast<double>(state.range(0));
    }
    state.counters["record"] = sizeof(QKListItem);
}

void AskWhileAdding(benchmark::State& state) {
    const Gdiplus::Image icon(Piece(
        "icon.png", [](int, int) { return 0xFF808080U; }, 64));
    for (auto _ : state) {
        QKListCtrl list;
        QKListItem record;
        for (int i = 0; i < state.range(0); ++i) {
            FillRecord(record, i, icon);
            list.AddItem(&record, 1);
            list.GetItem(i)->nUser1 = i;
        }
    }
}

BENCHMARK(MemoryPerEntry)->Arg(100'000)->Iterations(1);
BENCHMARK(AddAll)->Arg(1'000)->Arg(10'000)->Arg(100'000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(LayOutAll)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HoverStep, asked_for_none, kAskedForNone)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(PressStep)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BandStep)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(ScrollStep, asked_for_none, kAskedForNone)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(WheelStep, painted, true)->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(WheelStep, unpainted, false)->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(KeyStep)->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(AskWhileAdding)->Arg(1'000)->Arg(16'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HoverStep, asked_for_all, kAskedForAll)
    ->Arg(1'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(ScrollStep, asked_for_all, kAskedForAll)
    ->Arg(1'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(WholeFrame, unchanged, kNothing)->Arg(1'000)->Arg(100'000)->UseManualTime();
BENCHMARK_CAPTURE(WholeFrame, from_nothing, kEverything)->Arg(1'000)->Arg(100'000)->UseManualTime();
BENCHMARK_CAPTURE(WholeFrame, new_captions, kCaptions)->Arg(1'000)->UseManualTime();

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (!Headless::Use(2560, 1600)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
