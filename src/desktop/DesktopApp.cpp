#include "desktop/DesktopApp.h"

#include <QDateTime>
#include <QDir>
#include <QStandardPaths>

namespace fw::desktop {

namespace {

std::string asFolder(QString path)
{
    if (path.isEmpty())
        path = QDir::homePath();
    if (!path.endsWith(u'/'))
        path += u'/';
    return path.toStdString();
}

QString dataFolder(const char* name)
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/formwerk/") + QLatin1String(name);
}

} // namespace

std::string DesktopApp::UserFolder()
{
    return asFolder(QStandardPaths::writableLocation(QStandardPaths::HomeLocation));
}

std::string DesktopApp::SamplesFolder()
{
    return asFolder(dataFolder("samples"));
}

std::string DesktopApp::SharedFolder()
{
    return asFolder(dataFolder("shared"));
}

std::string DesktopApp::RegistryKey()
{
    return "Software\\Valdrenix\\Formwerk\\";
}

std::string DesktopSystemFolders::DesktopFolder()
{
    return asFolder(QStandardPaths::writableLocation(QStandardPaths::DesktopLocation));
}

std::string DesktopSystemFolders::DocumentsFolder()
{
    return asFolder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
}

std::string DesktopClock::logStamp()
{
    return QDateTime::currentDateTime()
        .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))
        .toStdString();
}

} // namespace fw::desktop
