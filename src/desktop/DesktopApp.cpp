#include "desktop/DesktopApp.h"

#include "desktop/LocationPaths.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace fw::desktop {

namespace {

// A folder as a location string ("C:\\home\\anna\\"): the dialogs speak
// locations, and "C:\\" is the root file system.
std::string asLocation(const QString& path)
{
    QByteArray bytes = QFile::encodeName(path);
    if (!bytes.endsWith('/'))
        bytes += '/';
    return PosixToLocation(std::string_view(bytes.constData(), std::size_t(bytes.size())));
}

// A system folder the account lacks (a fresh one has no ~/Documents) is the
// home folder, as the XDG user folders fall back to it; otherwise a chooser
// would open on a folder that is not there.
std::string existingOrHome(const QString& path)
{
    return asLocation(!path.isEmpty() && QFileInfo(path).isDir() ? path : QDir::homePath());
}

// The application's own folders may be empty: a chooser then offers no row
// for them, rather than one that leads nowhere.
std::string existingOrNone(const QString& path)
{
    return QFileInfo(path).isDir() ? asLocation(path) : std::string();
}

QString dataFolder(const char* name)
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/formwerk/") + QLatin1String(name);
}

} // namespace

std::string DesktopApp::UserFolder()
{
    return asLocation(QDir::homePath());
}

std::string DesktopApp::SamplesFolder()
{
    return existingOrNone(dataFolder("samples"));
}

std::string DesktopApp::SharedFolder()
{
    return existingOrNone(dataFolder("shared"));
}

std::string DesktopApp::RegistryKey()
{
    return "Software\\Valdrenix\\Formwerk\\";
}

std::string DesktopSystemFolders::DesktopFolder()
{
    return existingOrHome(QStandardPaths::writableLocation(QStandardPaths::DesktopLocation));
}

std::string DesktopSystemFolders::DocumentsFolder()
{
    return existingOrHome(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
}

std::string DesktopClock::logStamp()
{
    return QDateTime::currentDateTime()
        .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))
        .toStdString();
}

} // namespace fw::desktop
