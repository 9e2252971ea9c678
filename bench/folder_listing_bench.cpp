// A chooser's listing of a big folder on the desktop host (the filtered read
// and the read of all files, as the dialog makes them) next to a bare readdir
// of the same folder and next to QDir. Folders of empty files are made once
// per size in a temporary folder.
#include "desktop/DesktopFiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <dirent.h>
#include <fcntl.h>
#include <map>
#include <memory>
#include <unistd.h>

namespace {

QTemporaryDir& scratch()
{
    static QTemporaryDir dir;
    return dir;
}

// Every tenth file a ".txt", so that the filter drops most.
std::string folderOf(int count)
{
    static std::map<int, std::string> made;
    if (auto found = made.find(count); found != made.end())
        return found->second;
    const std::string folder = scratch().filePath(QString::number(count)).toStdString();
    QDir().mkpath(QString::fromStdString(folder));
    for (int i = 0; i < count; ++i) {
        const std::string name =
            folder + "/file" + std::to_string(i) + (i % 10 == 0 ? ".txt" : ".dat");
        ::close(::open(name.c_str(), O_CREAT | O_WRONLY, 0644));
    }
    return made[count] = folder;
}

void BareReaddir(benchmark::State& state)
{
    const std::string folder = folderOf(int(state.range(0)));
    for (auto _ : state) {
        std::size_t names = 0;
        DIR* stream = opendir(folder.c_str());
        while (const dirent* entry = readdir(stream))
            names += entry->d_name[0] != '.';
        closedir(stream);
        benchmark::DoNotOptimize(names);
    }
}

void DesktopListing(benchmark::State& state)
{
    const std::string folder = folderOf(int(state.range(0))) + "/";
    fw::desktop::DesktopFiles files;
    for (auto _ : state) {
        auto matched = files.ListFiles(folder, "*.txt");
        auto all = files.ListFiles(folder, "*.*");
        benchmark::DoNotOptimize(matched.data());
        benchmark::DoNotOptimize(all.data());
        state.PauseTiming();
        files.CreateFolder(folder); // a change through the host: the next round scans again
        state.ResumeTiming();
    }
}

void QDirListing(benchmark::State& state)
{
    const QString folder = QString::fromStdString(folderOf(int(state.range(0))));
    for (auto _ : state) {
        QDir dir(folder);
        dir.setNameFilters({QStringLiteral("*.txt")});
        auto entries = dir.entryList(QDir::Files | QDir::AllDirs | QDir::NoDotAndDotDot,
                                     QDir::DirsFirst | QDir::Name | QDir::IgnoreCase);
        benchmark::DoNotOptimize(entries.data());
    }
}

} // namespace

BENCHMARK(BareReaddir)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(DesktopListing)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(QDirListing)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
