// A resource package of 100,000 entries (20 folders of 5,000): opened and one
// folder listed through the desktop host's package (Content) and through the
// picture service (ListResources), next to libzip alone opening the same file
// and walking every name for that folder. Each round opens the file afresh.
// Last, the resource picker of the desktop host from Show to its painted list
// of that folder.
#include "BenchSupport.h"
#include "desktop/DesktopHost.h"
#include "desktop/DesktopPackages.h"
#include "desktop/DesktopPictures.h"
#include "forms/ListView.h"
#include "host/mdl_CoreDevWrapper.h"
#include "resources/frm_DialogFileResource.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstring>
#include <zip.h>

namespace {

constexpr int kEntries = 100000;
constexpr int kFolders = 20;
const char* const kFolder = "Ico\\7\\";

QTemporaryDir& scratch()
{
    static QTemporaryDir dir;
    return dir;
}

std::string packageFile()
{
    static const std::string file = [] {
        const std::string path = QFile::encodeName(scratch().filePath("Big.zip")).toStdString();
        int error = 0;
        zip_t* archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
        for (int i = 0; i < kEntries; ++i) {
            const std::string name =
                "Ico/" + std::to_string(i % kFolders) + "/Icon " + std::to_string(i) + ".ico";
            zip_file_add(archive, name.c_str(), zip_source_buffer(archive, "", 0, 0), 0);
        }
        zip_close(archive);
        return path;
    }();
    return file;
}

std::shared_ptr<fw::desktop::PackageFolders> folders()
{
    packageFile();
    return std::make_shared<fw::desktop::PackageFolders>(QStringList{scratch().path()}, false);
}

void LibzipAlone(benchmark::State& state)
{
    const std::string file = packageFile();
    for (auto _ : state) {
        int error = 0;
        zip_t* archive = zip_open(file.c_str(), ZIP_RDONLY, &error);
        std::vector<std::string> names;
        const zip_int64_t count = zip_get_num_entries(archive, 0);
        for (zip_int64_t i = 0; i < count; ++i) {
            const char* name = zip_get_name(archive, zip_uint64_t(i), 0);
            if (std::strncmp(name, "Ico/7/", 6) == 0)
                names.emplace_back(name);
        }
        zip_discard(archive);
        benchmark::DoNotOptimize(names.data());
        state.counters["listed"] = double(names.size());
    }
}

void PackageContent(benchmark::State& state)
{
    const auto where = folders();
    for (auto _ : state) {
        fw::desktop::DesktopPackage package(where);
        package.Load("Big");
        const fw::StringList listed = package.Content(kFolder, 0, 0, 0);
        benchmark::DoNotOptimize(listed.items().data());
        state.counters["listed"] = listed.Count();
    }
}

void PicturesListResources(benchmark::State& state)
{
    const auto where = folders();
    for (auto _ : state) {
        fw::desktop::DesktopPictures pictures(scratch().filePath("no-store"), where);
        const fw::StringList listed = pictures.ListResources(kFolder, false, false, true);
        benchmark::DoNotOptimize(listed.items().data());
        state.counters["listed"] = listed.Count();
    }
}

// The picture service keeps its packages open: a second folder costs the listing alone.
void PicturesListOpenPackage(benchmark::State& state)
{
    fw::desktop::DesktopPictures pictures(scratch().filePath("no-store"), folders());
    pictures.ListResources(kFolder, false, false, true);
    for (auto _ : state) {
        const fw::StringList listed = pictures.ListResources(kFolder, false, false, true);
        benchmark::DoNotOptimize(listed.items().data());
        state.counters["listed"] = listed.Count();
    }
}

// The picker over the same package as a user's own one: found in the XDG data
// folder, the folder of 5,000 shown from Show to the first paint of its rows.
void PickerShowsFolder(benchmark::State& state)
{
    const QString packages = scratch().filePath("data/formwerk/packages");
    QDir().mkpath(packages);
    QFile::copy(QString::fromStdString(packageFile()), packages + "/Big.zip");
    qputenv("XDG_DATA_HOME", QFile::encodeName(scratch().filePath("data")));
    for (auto _ : state) {
        fw::ScopedCoreDev host(fw::desktop::MakeDesktopCoreDev());
        fw::frm_DialogFileResource picker;
        picker.Context = std::make_shared<fw::DialogContext>();
        picker.StartFolder = QString::fromLatin1(kFolder);
        QElapsedTimer clock;
        clock.start();
        picker.Show(false);
        auto* list = qobject_cast<QAbstractItemView*>(picker.lst_Files->viewport()->parentWidget());
        fw::bench::PaintCounter watch(list->viewport());
        while ((list->model()->rowCount() < kEntries / kFolders || watch.paints == 0) &&
               clock.elapsed() < 60000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        state.SetIterationTime(clock.nsecsElapsed() / 1e9);
        state.counters["listed"] = list->model()->rowCount();
        picker.Unload();
    }
}

} // namespace

BENCHMARK(LibzipAlone)->Unit(benchmark::kMillisecond);
BENCHMARK(PackageContent)->Unit(benchmark::kMillisecond);
BENCHMARK(PicturesListResources)->Unit(benchmark::kMillisecond);
BENCHMARK(PicturesListOpenPackage)->Unit(benchmark::kMillisecond);
BENCHMARK(PickerShowsFolder)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(3);
