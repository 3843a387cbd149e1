// From nothing to the first composed frame: a whole process, and a dialog in a process that runs already.
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "bench/bench_dialog.h"

namespace {

void Process(benchmark::State& state) {
    for (auto _ : state) {
        pid_t child = 0;
        char path[] = QKUI_MINIMAL_HOST;
        char* arguments[] = {path, nullptr};
        int status = 0;
        if (posix_spawn(&child, path, nullptr, nullptr, arguments, environ) != 0 ||
            waitpid(child, &status, 0) != child || status != 0) {
            state.SkipWithError("the host failed");
            break;
        }
    }
}

void Dialog(benchmark::State& state) {
    for (auto _ : state) {
        CQKDialogBase dialog(bench::kTemplate);
        dialog.SetBackColor(Gdiplus::Color(0xFF204060), 1);
        dialog.Create(bench::kTemplate);
        dialog.ShowWindow(SW_SHOW);
        UpdateWindow(dialog.m_hWnd);
    }
}

BENCHMARK(Process)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Dialog)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (!Headless::Use(1280, 800)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
