// The progress window fed as `seq 1 N | formwerk frm_DialogProcess` feeds it:
// N value lines from the start of the input to the closed window. The lines
// come from a file, so the figure is the window's and not a producer's.
#include "cli/ProcessDriver.h"
#include "dialogs/frm_DialogProcess.h"
#include "testing/TestHost.h"

#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace {

QString lines(const QTemporaryDir& dir, int count)
{
    QFile file(dir.filePath(QStringLiteral("seq-%1.txt").arg(count)));
    if (!file.exists() && file.open(QIODevice::WriteOnly)) {
        QByteArray chunk;
        for (int i = 1; i <= count; ++i) {
            chunk += QByteArray::number(i) + '\n';
            if (chunk.size() > (1 << 20))
                file.write(std::exchange(chunk, {}));
        }
        file.write(chunk);
    }
    return file.fileName();
}

void ValueLinesToClosedWindow(benchmark::State& state)
{
    static QTemporaryDir dir;
    const QByteArray path = QFile::encodeName(lines(dir, int(state.range(0))));
    fw::testing::ScopedTestHost host;
    for (auto _ : state) {
        const int fd = ::open(path.constData(), O_RDONLY);
        fw::frm_DialogProcess form;
        form.Context = std::make_shared<fw::DialogContext>();
        fw::cli::DriveProgress(
            form, [](const QString&) {}, fd);
        ::close(fd);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(ValueLinesToClosedWindow)
    ->Arg(100'000)
    ->Arg(10'000'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
