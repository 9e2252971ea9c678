#include "desktop/SafeDelete.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace fw::desktop {

namespace {

struct FdCloser {
    int fd;
    ~FdCloser()
    {
        if (fd >= 0)
            close(fd);
    }
};

std::string canonical(const std::string& path)
{
    std::unique_ptr<char, decltype(&std::free)> resolved(realpath(path.c_str(), nullptr),
                                                         &std::free);
    return resolved ? std::string(resolved.get()) : std::string();
}

// The names are read first and the stream closed, so that a deep tree holds
// one handle per level, not two.
std::vector<std::string> namesIn(int folderFd)
{
    std::vector<std::string> names;
    const int streamFd = dup(folderFd);
    DIR* stream = streamFd >= 0 ? fdopendir(streamFd) : nullptr;
    if (!stream) {
        if (streamFd >= 0)
            close(streamFd);
        return names;
    }
    while (const dirent* entry = readdir(stream)) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..")
            names.push_back(name);
    }
    closedir(stream);
    return names;
}

bool removeInside(int folderFd);

bool removeEntryAt(int folderFd, const std::string& name)
{
    if (unlinkat(folderFd, name.c_str(), 0) == 0)
        return true;
    if (errno != EISDIR && errno != EPERM)
        return errno == ENOENT;
    // A real folder: O_NOFOLLOW refuses a link that took its place meanwhile.
    const FdCloser child{
        openat(folderFd, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)};
    if (child.fd < 0)
        return false;
    const bool emptied = removeInside(child.fd);
    return unlinkat(folderFd, name.c_str(), AT_REMOVEDIR) == 0 && emptied;
}

bool removeInside(int folderFd)
{
    bool all = true;
    for (const std::string& name : namesIn(folderFd))
        all = removeEntryAt(folderFd, name) && all;
    return all;
}

std::string parentOf(const std::string& path, std::string& name)
{
    std::string trimmed = path;
    while (trimmed.size() > 1 && trimmed.back() == '/')
        trimmed.pop_back();
    const std::size_t slash = trimmed.rfind('/');
    name = slash == std::string::npos ? trimmed : trimmed.substr(slash + 1);
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : trimmed.substr(0, slash);
}

} // namespace

bool DeleteEntry(const std::string& path)
{
    struct stat info {};
    if (path.empty() || lstat(path.c_str(), &info) != 0 || S_ISDIR(info.st_mode))
        return false;
    return unlink(path.c_str()) == 0;
}

bool DeleteTree(const std::string& given, const std::string& home)
{
    // lstat of "link/" answers for the link's target: without the trailing
    // separators a link to a folder is seen as the link it is.
    std::string path = given;
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    struct stat info {};
    if (path.empty() || lstat(path.c_str(), &info) != 0)
        return false;
    if (S_ISLNK(info.st_mode))
        return unlink(path.c_str()) == 0;
    if (!S_ISDIR(info.st_mode))
        return false;
    // A slip in a dialog must never take a whole system or home with it.
    const std::string target = canonical(path);
    if (target.empty() || target == "/" || (!home.empty() && target == canonical(home)))
        return false;
    std::string name;
    const FdCloser parent{open(parentOf(target, name).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (parent.fd < 0 || name.empty() || name == "." || name == "..")
        return false;
    return removeEntryAt(parent.fd, name);
}

} // namespace fw::desktop
