#include "desktop/DesktopFiles.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace fw::desktop {

namespace {

QString q(const std::string& text)
{
    return QString::fromStdString(text);
}

} // namespace

bool DesktopFiles::WriteTextFile(const std::string& path, const std::string& text,
                                 const std::string&, int)
{
    if (path.empty())
        return false;
    QSaveFile file(q(path));
    if (!file.open(QIODevice::WriteOnly))
        return false;
    const qint64 size = qint64(text.size());
    if (file.write(text.data(), size) != size) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

bool DesktopFiles::DeleteFile(const std::string& path)
{
    const QFileInfo info(q(path));
    return !path.empty() && !info.isDir() && QFile::remove(info.filePath());
}

std::vector<FileEntry> DesktopFiles::ListFiles(const std::string& folder,
                                               const std::string& pattern)
{
    std::vector<FileEntry> result;
    if (folder.empty())
        return result;
    QDir dir(q(folder));
    QStringList filters = q(pattern).split(u';', Qt::SkipEmptyParts);
    for (QString& filter : filters)
        filter = filter.trimmed();
    filters.removeAll(QString());
    if (!filters.isEmpty())
        dir.setNameFilters(filters);
    // AllDirs: the pattern picks files, folders always show.
    const QFileInfoList entries =
        dir.entryInfoList(QDir::Files | QDir::AllDirs | QDir::NoDotAndDotDot,
                          QDir::DirsFirst | QDir::Name | QDir::IgnoreCase);
    result.reserve(std::size_t(entries.size()));
    for (const QFileInfo& info : entries) {
        FileEntry entry;
        entry.Name = info.fileName().toStdString();
        entry.IsFolder = info.isDir();
        entry.Size = info.isDir() ? 0 : info.size();
        entry.ModifiedSecs = info.lastModified().toSecsSinceEpoch();
        result.push_back(std::move(entry));
    }
    return result;
}

bool DesktopFiles::DeleteFolder(const std::string& path)
{
    const QString folder = QDir::cleanPath(QFileInfo(q(path)).absoluteFilePath());
    // A slip in a dialog must never take a whole tree with it.
    if (path.empty() || QDir(folder).isRoot() || folder == QDir::cleanPath(QDir::homePath()))
        return false;
    const QFileInfo info(folder);
    if (!info.isDir() || info.isSymLink())
        return false;
    return QDir(folder).removeRecursively();
}

bool DesktopFiles::FileExists(const std::string& path)
{
    const QFileInfo info(q(path));
    return !path.empty() && info.exists() && !info.isDir();
}

bool DesktopFiles::FolderExists(const std::string& path)
{
    return !path.empty() && QFileInfo(q(path)).isDir();
}

std::int64_t DesktopFiles::FileSize(const std::string& path)
{
    const QFileInfo info(q(path));
    return !path.empty() && info.exists() && !info.isDir() ? info.size() : -1;
}

std::int64_t DesktopFiles::FileDate(const std::string& path)
{
    const QFileInfo info(q(path));
    return !path.empty() && info.exists() ? info.lastModified().toSecsSinceEpoch() : -1;
}

bool DesktopFiles::CreateFolder(const std::string& path)
{
    return !path.empty() && QDir().mkpath(q(path));
}

std::string DesktopFiles::SizeText(std::int64_t bytes)
{
    if (bytes < 1024)
        return std::to_string(bytes < 0 ? 0 : bytes) + " Bytes";
    static const char* const units[] = {"KB", "MB", "GB", "TB", "PB"};
    double value = double(bytes) / 1024.0;
    int unit = 0;
    while (value >= 1024.0 && unit < 4) {
        value /= 1024.0;
        ++unit;
    }
    // The German decimal comma, as the dialogs' own texts are German first.
    QString text = QString::number(value, 'f', 1);
    text.replace(u'.', u',');
    return text.toStdString() + ' ' + units[unit];
}

bool DesktopFiles::IsRealFile(const std::string& path)
{
    return !path.empty() && QFileInfo(q(path)).isFile();
}

bool DesktopFiles::synchronise(const std::string&, const std::string&)
{
    return false;
}

int DesktopFiles::DriveType(const std::string&)
{
    return 0;
}

StringList DesktopFiles::DrivesOfType(int)
{
    return {};
}

std::shared_ptr<NetworkService> DesktopFiles::Network()
{
    return nullptr;
}

} // namespace fw::desktop
