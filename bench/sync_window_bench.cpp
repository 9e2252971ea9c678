// The synchronisation's progress window under a run that reports as much as a
// real one of 10,000 files does: a log row per action and a step of the bar
// every 100, and an error row for one action in ten. The figure is from the
// window's first paint to its close, over the test host's scripted run; a
// run that only counts, with no window, stands beside it.
#include "forms/ListView.h"
#include "sync/SyncProgressForm.h"
#include "testing/TestHost.h"

#include <benchmark/benchmark.h>
#include <string>

namespace {

struct Reporting {
    int rows;
    int errorEvery;
};

std::int32_t reportRun(fw::SyncProgress& window, const Reporting& run)
{
    window.SHOWTASK(5);
    for (int i = 1; i <= run.rows; ++i) {
        const std::string path = "Ordner\\datei" + std::to_string(i) + ".txt";
        window.LOG("Hochgeladen: " + path);
        if (run.errorEvery && i % run.errorEvery == 0)
            window.LOGERROR("Hochladen", path, "Zugriff verweigert");
        if (i % 100 == 0)
            window.PROGRESS(i, run.rows);
    }
    window.SHOWTASK(6);
    return fw::SyncFinished;
}

// What a run costs without a window to report to.
struct NoWindow : fw::SyncProgress {
    void SHOWTASK(std::int32_t) override {}
    void LOG(const std::string& text) override { benchmark::DoNotOptimize(text.data()); }
    void PROGRESS(std::int32_t, std::int32_t) override {}
    void LOGERROR(const std::string&, const std::string&, const std::string&) override {}
    bool Cancelled() const override { return false; }
    bool Confirm(fw::SyncActions&) override { return true; }
};

void LogRowsToClosedWindow(benchmark::State& state)
{
    const Reporting run{int(state.range(0)), 10};
    fw::testing::ScopedTestHost host;
    host->synchroniseScript = [&](const std::string&, const std::string&, fw::SyncProgress& window,
                                  fw::SyncJob&) { return reportRun(window, run); };
    for (auto _ : state) {
        fw::frm_DialogFileSync form;
        form.Show(true); // the run starts at the first paint; the timer closes it
        if (form.lst_Log->ListItems().Count() != run.rows)
            state.SkipWithError("the log lost rows");
    }
    state.counters["per row"] =
        benchmark::Counter(double(run.rows), benchmark::Counter::kIsIterationInvariantRate |
                                                 benchmark::Counter::kInvert);
}
BENCHMARK(LogRowsToClosedWindow)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void LogRowsWithoutWindow(benchmark::State& state)
{
    const Reporting run{int(state.range(0)), 10};
    NoWindow window;
    for (auto _ : state)
        reportRun(window, run);
}
BENCHMARK(LogRowsWithoutWindow)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace
