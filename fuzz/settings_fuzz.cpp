// The settings store's file reader: whatever registry.json holds, reading a
// value and writing one either works or moves a garbage file aside.
#include "OffscreenApp.h"
#include "desktop/SettingsStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstddef>
#include <cstdint>

namespace {

QTemporaryDir* scratch = nullptr;

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fw::fuzz::StartOffscreenApp();
    scratch = new QTemporaryDir;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // A fresh folder each time: moved-aside files would pile up otherwise.
    const QString folder = scratch->filePath(QStringLiteral("store"));
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    fw::desktop::SettingsStore store(folder);
    QFile file(store.FilePath());
    if (!file.open(QIODevice::WriteOnly))
        return 0;
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    file.close();

    const QString hive = QStringLiteral("HKEY_CURRENT_USER");
    // Names of the kind the dialogs use, in two spellings: lookups ignore case.
    store.Read(hive, QStringLiteral("Software\\Valdrenix\\Core\\Settings\\FolderView"));
    store.Read(hive, QStringLiteral("software\\valdrenix\\core\\settings\\folderview"));
    store.Read(hive, QStringLiteral("a\\b"));
    // A value written must read back, whatever the file held before.
    const QString touchmode = QStringLiteral("Software\\Valdrenix\\Core\\Settings\\Touchmode");
    if (store.Write(hive, touchmode, QJsonValue(1)) && store.Read(hive, touchmode) != QJsonValue(1))
        __builtin_trap();
    return 0;
}
