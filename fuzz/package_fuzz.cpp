// The resource package reader: whatever bytes a package holds, opening,
// listing and extracting every entry either works or fails cleanly, and
// nothing lands outside the folder extracted to.
#include "OffscreenApp.h"
#include "desktop/DesktopPackages.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstddef>
#include <cstdint>

namespace {

QTemporaryDir* scratch = nullptr;
std::shared_ptr<fw::desktop::PackageFolders> folders;

// Only the package and the extraction folder may exist, and below the
// folder only regular files: no link, no folder, no stray temporary name.
void checkNothingEscaped(const QString& root, const QString& out)
{
    const QStringList top =
        QDir(root).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString& name : top)
        if (name != QLatin1String("Fuzz.zip") && name != QLatin1String("out"))
            __builtin_trap();
    QDirIterator it(out, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (it.hasNext()) {
        const QFileInfo info(it.next());
        if (info.isSymLink() || !info.isFile() ||
            info.fileName().startsWith(QLatin1String(".formwerk-")))
            __builtin_trap();
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fw::fuzz::StartOffscreenApp();
    scratch = new QTemporaryDir;
    folders = std::make_shared<fw::desktop::PackageFolders>(QStringList{scratch->path()}, false);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // From memory: the reader alone, every entry read against small limits.
    auto bytes = std::make_shared<const std::string>(reinterpret_cast<const char*>(data), size);
    std::string error;
    if (auto archive = fw::desktop::PackageArchive::OpenMemory(bytes, error)) {
        const fw::desktop::ReadLimits limits{1 << 20, 1000};
        int budget = 64; // a directory of many entries must not make one run slow
        for (const std::string& path :
             archive->List("", fw::desktop::PackageArchive::Listing::Files, true)) {
            const auto* entry = archive->Find(path);
            if (!entry || --budget < 0)
                break;
            archive->Read(
                *entry, [](std::string_view) { return true; }, limits, error);
        }
    }

    // From a file: the host's package, extracted into a folder of its own.
    const QString root = scratch->path();
    const QString out = root + QStringLiteral("/out");
    QDir(out).removeRecursively();
    QDir().mkpath(out);
    QFile file(root + QStringLiteral("/Fuzz.zip"));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return 0;
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    file.close();
    fw::desktop::DesktopPackage package(folders);
    package.SetLimits({1 << 20, 1000});
    if (package.Load("fuzz")) {
        const fw::StringList items = package.Content("", 0, 1, 0);
        for (int i = 1; i <= std::min(items.Count(), 64); ++i)
            package.Extract(items.Item(i), QFile::encodeName(out).toStdString());
    }
    checkNothingEscaped(root, out);
    return 0;
}
