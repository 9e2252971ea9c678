#include "desktop/sync/LocalCopy.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace fw::desktop::sync {

namespace {

constexpr std::int64_t ChunkBytes = 1 << 20;
constexpr std::string_view TemporaryMark = ".fwsync-";

std::string reasonOf(int error)
{
    return std::strerror(error);
}

// Closes the descriptor and removes the temporary unless it was renamed.
class Temporary {
  public:
    explicit Temporary(const std::string& target)
    {
        const auto slash = target.rfind('/');
        // Room for the mark within the 255 bytes a name may have.
        const std::string name = target.substr(slash + 1, 200);
        m_path = target.substr(0, slash + 1) + "." + name + std::string(TemporaryMark) + "XXXXXX";
        m_fd = mkostemp(m_path.data(), O_CLOEXEC);
    }
    ~Temporary()
    {
        if (m_fd >= 0)
            ::close(m_fd);
        if (!m_kept)
            ::unlink(m_path.c_str());
    }
    int fd() const { return m_fd; }
    const std::string& path() const { return m_path; }
    bool Close()
    {
        const int fd = std::exchange(m_fd, -1);
        return ::close(fd) == 0;
    }
    void Keep() { m_kept = true; }

  private:
    std::string m_path;
    int m_fd = -1;
    bool m_kept = false;
};

// One chunk; copy_file_range lets the kernel (or a reflinking file system) do
// it, plain reads and writes serve where it cannot.
std::int64_t copyChunk(int from, int to, std::int64_t offset, std::int64_t length)
{
    loff_t in = offset, out = offset;
    const auto copied = ::copy_file_range(from, &in, to, &out, std::size_t(length), 0);
    if (copied >= 0 ||
        (errno != EXDEV && errno != EINVAL && errno != ENOSYS && errno != EOPNOTSUPP))
        return copied;
    static thread_local std::string buffer(ChunkBytes, '\0');
    const auto read = ::pread(from, buffer.data(), std::size_t(length), offset);
    if (read <= 0)
        return read;
    for (std::int64_t written = 0; written < read;) {
        const auto n =
            ::pwrite(to, buffer.data() + written, std::size_t(read - written), offset + written);
        if (n < 0)
            return -1;
        written += n;
    }
    return read;
}

// Copies the data of source, skipping holes, so that a sparse file of
// gigabytes copies as fast as its data.
bool copyData(int from, int to, std::int64_t size, const SyncSignals& watch, std::string& error)
{
    std::int64_t offset = 0;
    while (offset < size) {
        std::int64_t data = ::lseek(from, offset, SEEK_DATA);
        if (data < 0 && errno == ENXIO)
            break; // only a hole is left
        std::int64_t hole = data < 0 ? size : ::lseek(from, data, SEEK_HOLE);
        if (data < 0)
            data = offset; // no hole support: everything is data
        if (hole < 0 || hole > size)
            hole = size;
        for (offset = data; offset < hole;) {
            if (watch.Cancelled()) {
                error = "Abgebrochen";
                return false;
            }
            const auto copied = copyChunk(from, to, offset, std::min(ChunkBytes, hole - offset));
            if (copied <= 0) {
                error =
                    copied < 0 ? reasonOf(errno) : "Die Quelle ist beim Kopieren kürzer geworden";
                return false;
            }
            offset += copied;
            if (watch.progress)
                watch.progress(offset, size);
        }
    }
    return true;
}

} // namespace

bool IsSyncTemporary(std::string_view name)
{
    return name.size() > TemporaryMark.size() + 7 && name[0] == '.' &&
           name.substr(name.size() - 6 - TemporaryMark.size(), TemporaryMark.size()) ==
               TemporaryMark;
}

bool CopyLocalFile(const std::string& source, const std::string& target, std::int64_t mtime,
                   std::int64_t expectedSize, const SyncSignals& watch, std::string& error)
{
    // O_NONBLOCK: a fifo in place of the file must not hang the run.
    const int from = ::open(source.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (from < 0) {
        error = reasonOf(errno);
        return false;
    }
    struct Closer {
        int fd;
        ~Closer() { ::close(fd); }
    } closer{from};
    struct stat info {};
    if (::fstat(from, &info) != 0 || !S_ISREG(info.st_mode)) {
        error = "Keine gewöhnliche Datei";
        return false;
    }
    if (expectedSize >= 0 && info.st_size != expectedSize) {
        error = "Die Datei hat sich seit der Auflistung geändert";
        return false;
    }
    Temporary temporary(target);
    if (temporary.fd() < 0) {
        error = reasonOf(errno);
        return false;
    }
    if (!copyData(from, temporary.fd(), info.st_size, watch, error))
        return false;
    const timespec times[2] = {{0, UTIME_OMIT}, mtime > 0 ? timespec{mtime, 0} : info.st_mtim};
    struct stat copied {};
    if (::ftruncate(temporary.fd(), info.st_size) != 0 || ::fstat(temporary.fd(), &copied) != 0 ||
        ::fchmod(temporary.fd(), info.st_mode & 07777) != 0 ||
        ::futimens(temporary.fd(), times) != 0 || !temporary.Close()) {
        error = reasonOf(errno);
        return false;
    }
    if (copied.st_size != info.st_size) {
        error = "Die Größe der Kopie stimmt nicht";
        return false;
    }
    if (::rename(temporary.path().c_str(), target.c_str()) != 0) {
        error = reasonOf(errno);
        return false;
    }
    temporary.Keep();
    return true;
}

} // namespace fw::desktop::sync
