#include "desktop/AtomicWrite.h"

#include <QRandomGenerator>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace fw::desktop {

namespace {

// Qt's QSaveFile names its temporary file after the target through a
// QString: a name that is no UTF-8 comes out as another file, and a name near
// the 255-byte limit has no room for the suffix. A short name of our own in
// the same folder has neither problem.
int createTemporary(int folderFd, std::string& name)
{
    for (int attempt = 0; attempt < 16; ++attempt) {
        char suffix[17];
        std::snprintf(suffix, sizeof suffix, "%016llx",
                      static_cast<unsigned long long>(QRandomGenerator::global()->generate64()));
        name = std::string(".formwerk-") + suffix + ".tmp";
        const int fd =
            ::openat(folderFd, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0 || errno != EEXIST)
            return fd;
    }
    return -1;
}

bool writeAll(int fd, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(fd, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace

bool WriteFileAtomically(const std::string& path, std::string_view bytes)
{
    return WriteFileAtomically(path, [bytes](const PieceWriter& write) { return write(bytes); });
}

bool WriteFileAtomically(const std::string& path,
                         const std::function<bool(const PieceWriter& write)>& produce)
{
    const std::size_t slash = path.rfind('/');
    if (path.empty() || slash == path.size() - 1)
        return false;
    // Relative to the folder's handle, so that a path near the length limit
    // still has room for the temporary name beside it.
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash ? slash : 1);
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    const int folderFd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folderFd < 0)
        return false;
    struct stat existing {};
    const bool exists = ::fstatat(folderFd, name.c_str(), &existing, 0) == 0;
    std::string temporary;
    // A folder or device is no text file to replace.
    const int fd = exists && !S_ISREG(existing.st_mode) ? -1 : createTemporary(folderFd, temporary);
    bool ok = fd >= 0 && produce([fd](std::string_view piece) { return writeAll(fd, piece); }) &&
              (!exists || ::fchmod(fd, existing.st_mode & 07777) == 0) && ::fsync(fd) == 0;
    if (fd >= 0) {
        ok = ::close(fd) == 0 && ok;
        ok = ok && ::renameat(folderFd, temporary.c_str(), folderFd, name.c_str()) == 0;
        if (!ok)
            ::unlinkat(folderFd, temporary.c_str(), 0);
    }
    ::close(folderFd);
    return ok;
}

} // namespace fw::desktop
