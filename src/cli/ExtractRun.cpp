#include "cli/ExtractRun.h"
#include "desktop/DesktopPictures.h"
#include "desktop/SettingsStore.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

namespace fw::cli {

namespace {

// A relative Linux path is taken from the working folder; a location such as
// "C:\tmp\x.png" and an absolute path stand as they are.
std::string destinationOf(const QString& given)
{
    static const QRegularExpression location(QStringLiteral("^[A-Za-z]:\\\\"));
    if (given.startsWith(u'/') || location.match(given).hasMatch())
        return QFile::encodeName(given).toStdString();
    return QFile::encodeName(QDir::currentPath() + u'/' + given).toStdString();
}

} // namespace

Outcome RunExtract(const Invocation& inv)
{
    // The same store folder and package folders that the dialogs' pictures come from.
    auto settings =
        std::make_shared<desktop::SettingsStore>(desktop::SettingsStore::DefaultFolder());
    desktop::DesktopPictures pictures(QString(),
                                      std::make_shared<desktop::PackageFolders>(settings));
    std::string error;
    if (pictures.ExtractResource(inv.extract.toStdString(), destinationOf(inv.extractTo), error))
        return {};
    return {1, QString::fromStdString(error)};
}

} // namespace fw::cli
