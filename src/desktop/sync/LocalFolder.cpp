// A folder on this machine as a side of a synchronisation.
#include "desktop/LocationPaths.h"
#include "desktop/SafeDelete.h"
#include "desktop/sync/LocalCopy.h"
#include "desktop/sync/SyncRun.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QUuid>
#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fw::desktop::sync {

namespace {

using Skipped = std::function<void(const std::string&, const std::string&)>;

QString qtName(const std::string& bytes)
{
    return QFile::decodeName(QByteArray::fromStdString(bytes));
}

bool nameSurvivesQt(const std::string& bytes)
{
    return QFile::encodeName(qtName(bytes)).toStdString() == bytes;
}

// Qt's trash speaks the freedesktop layout but takes names as text. A name of
// other bytes goes in under a stand-in name, and its info file then gets the
// real name back, so that restoring brings back the original.
bool moveToTrash(const std::string& path, std::string& error)
{
    if (nameSurvivesQt(path)) {
        if (QFile::moveToTrash(qtName(path)))
            return true;
        error = "Konnte nicht in den Papierkorb verschoben werden";
        return false;
    }
    const auto slash = path.rfind('/');
    const std::string standInName =
        ".fwsync-trash-" + QUuid::createUuid().toString(QUuid::Id128).toStdString();
    const std::string standIn = path.substr(0, slash + 1) + standInName;
    QString inTrash;
    if (::rename(path.c_str(), standIn.c_str()) != 0 ||
        !QFile::moveToTrash(qtName(standIn), &inTrash)) {
        ::rename(standIn.c_str(), path.c_str());
        error = "Konnte nicht in den Papierkorb verschoben werden";
        return false;
    }
    const QString infoPath = QFileInfo(inTrash).dir().path() + "/../info/" +
                             QFileInfo(inTrash).fileName() + ".trashinfo";
    QFile in(infoPath);
    if (!in.open(QIODevice::ReadOnly))
        return true; // in the trash all the same, only under the stand-in name
    QByteArray info = in.readAll();
    in.close();
    const QByteArray realName =
        QByteArray::fromStdString(path.substr(slash + 1)).toPercentEncoding("/");
    const auto at = info.indexOf(QByteArray::fromStdString(standInName));
    if (at >= 0)
        info.replace(at, qsizetype(standInName.size()), realName);
    QSaveFile out(infoPath);
    if (out.open(QIODevice::WriteOnly)) {
        out.write(info);
        out.commit();
    }
    return true;
}

// A side whose root is a volume's top folder holds that volume's trash, where
// its own deletions go: synchronising it would copy the deleted files back.
bool isVolumeTrash(const std::string& name)
{
    return name == ".Trash" || name.starts_with(".Trash-");
}

class LocalFolder final : public SyncSide {
  public:
    LocalFolder(std::string root, bool deleteForGood)
        : m_root(std::move(root)), m_deleteForGood(deleteForGood)
    {
    }

    std::string Describe() const override { return m_root; }

    std::optional<std::string> LocalPath(const std::string& path) const override
    {
        return full(path);
    }

    bool List(SyncTree& tree, const SyncSignals& watch, std::string& error,
              const Skipped& skipped) override
    {
        const int fd = ::open(m_root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (fd < 0) {
            error = std::strerror(errno);
            return false;
        }
        tree.clear();
        m_seen = 0;
        if (!listFolder(fd, "", tree, watch, skipped)) {
            error = "Abgebrochen";
            return false;
        }
        std::sort(tree.begin(), tree.end(),
                  [](const SyncItem& a, const SyncItem& b) { return a.path < b.path; });
        return true;
    }

    bool MakeFolder(const std::string& path, std::string& error) override
    {
        struct stat info {};
        if (::mkdir(full(path).c_str(), 0777) == 0 ||
            (errno == EEXIST && ::lstat(full(path).c_str(), &info) == 0 && S_ISDIR(info.st_mode)))
            return true;
        error = std::strerror(errno);
        return false;
    }

    bool RemoveFile(const std::string& path, std::string& error) override
    {
        if (!m_deleteForGood)
            return moveToTrash(full(path), error);
        if (DeleteEntry(full(path)))
            return true;
        error = std::strerror(errno);
        return false;
    }

    bool RemoveTree(const std::string& path, std::string& error) override
    {
        if (!m_deleteForGood)
            return moveToTrash(full(path), error);
        if (DeleteTree(full(path), QFile::encodeName(QDir::homePath()).toStdString()))
            return true;
        error = "Der Ordner konnte nicht ganz gelöscht werden";
        return false;
    }

    bool Put(const std::string& source, const std::string& path, std::int64_t mtime,
             const SyncSignals& watch, SyncItem& stored, std::string& error) override
    {
        if (!CopyLocalFile(source, full(path), mtime, -1, watch, error))
            return false;
        std::string ignored;
        Stat(path, stored, ignored);
        return true;
    }

    bool Get(const SyncItem& expected, const std::string& target, const SyncSignals& watch,
             std::string& error) override
    {
        return CopyLocalFile(full(expected.path), target, expected.mtime, expected.size, watch,
                             error);
    }

    bool Stat(const std::string& path, SyncItem& item, std::string& error) override
    {
        struct stat info {};
        if (::lstat(full(path).c_str(), &info) != 0) {
            error = std::strerror(errno);
            return false;
        }
        item = itemOf(path, info);
        return true;
    }

  private:
    std::string full(const std::string& path) const
    {
        return m_root == "/" ? "/" + path : m_root + "/" + path;
    }

    static SyncItem itemOf(const std::string& path, const struct stat& info)
    {
        const bool folder = S_ISDIR(info.st_mode);
        return {path, folder, folder ? 0 : std::int64_t(info.st_size),
                std::int64_t(info.st_mtim.tv_sec)};
    }

    // Walks by directory handles with lstat-level calls: no link is followed,
    // and 10,000 entries take what readdir takes. fd is closed here.
    bool listFolder(int fd, const std::string& prefix, SyncTree& tree, const SyncSignals& watch,
                    const Skipped& skipped)
    {
        DIR* dir = ::fdopendir(fd);
        if (!dir) {
            ::close(fd);
            return true;
        }
        bool going = true;
        while (going) {
            errno = 0;
            const dirent* entry = ::readdir(dir);
            if (!entry)
                break;
            const std::string name = entry->d_name;
            if (name == "." || name == ".." || IsSyncTemporary(name) ||
                (prefix.empty() && isVolumeTrash(name)))
                continue;
            const std::string path = prefix + name;
            struct stat info {};
            if (::fstatat(::dirfd(dir), name.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0) {
                skipped(path, std::strerror(errno));
            } else if (S_ISLNK(info.st_mode)) {
                skipped(path, std::string(SyncSkippedLink));
            } else if (S_ISREG(info.st_mode)) {
                tree.push_back(itemOf(path, info));
            } else if (!S_ISDIR(info.st_mode)) {
                skipped(path, "Keine gewöhnliche Datei");
            } else {
                const int child = ::openat(::dirfd(dir), name.c_str(),
                                           O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
                if (child < 0) {
                    skipped(path, std::strerror(errno));
                    continue;
                }
                tree.push_back(itemOf(path, info));
                going = listFolder(child, path + "/", tree, watch, skipped);
            }
            if (++m_seen % 256 == 0) {
                going = going && !watch.Cancelled();
                if (watch.progress)
                    watch.progress(std::int64_t(tree.size()), 0);
            }
        }
        ::closedir(dir);
        return going;
    }

    std::string m_root;
    bool m_deleteForGood;
    std::size_t m_seen = 0; ///< entries looked at by the listing running
};

} // namespace

std::unique_ptr<SyncSide> MakeLocalFolder(const std::string& folder, const SyncJob& job,
                                          std::string& error)
{
    const auto path = LocationToPosix(folder);
    if (!path) {
        error = "Kein Ordner auf diesem Rechner";
        return nullptr;
    }
    char* canonical = ::realpath(path->c_str(), nullptr);
    struct stat info {};
    if (!canonical || ::stat(canonical, &info) != 0 || !S_ISDIR(info.st_mode)) {
        error = canonical ? "Kein Ordner" : std::strerror(errno);
        std::free(canonical);
        return nullptr;
    }
    std::string root = canonical;
    std::free(canonical);
    return std::make_unique<LocalFolder>(std::move(root), job.DeleteForGood);
}

} // namespace fw::desktop::sync
