// The main() of every benchmark: an offscreen QApplication, quiet about what
// the offscreen platform cannot do, then Google Benchmark's own run.
#include "BenchSupport.h"

#include <QApplication>
#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    fw::bench::QuietOffscreenNotices();
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
