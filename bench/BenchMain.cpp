// The main() of every benchmark: an offscreen QApplication, quiet about what
// the offscreen platform cannot do, then Google Benchmark's own run.
#include <QApplication>
#include <benchmark/benchmark.h>

namespace {

QtMessageHandler g_nextHandler = nullptr;

// The platform's notices (no raise, no size hints, no runtime dir) would bury the table.
void quietOffscreenNotices(QtMsgType type, const QMessageLogContext& where, const QString& text)
{
    if (type == QtWarningMsg && (text.startsWith(QLatin1String("This plugin does not support")) ||
                                 text.contains(QLatin1String("XDG_"))))
        return;
    g_nextHandler(type, where, text);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    g_nextHandler = qInstallMessageHandler(quietOffscreenNotices);
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
