// Pictures, files and the network of the test host. Files are the real file
// system, so a test works in a temporary folder of its own; pictures and the
// network are made up from the host's settable state.
#include "testing/TestHost.h"
#include "testing/TestHostParts.h"

#include "host/MemoryFavoriteList.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>
#include <system_error>

namespace fs = std::filesystem;

namespace fw::testing {

int PictureSizeOfPath(const std::string& path)
{
    // "Ico\<size>\...": the host's picture store names the size in the path.
    if (path.size() < 5 || (path[0] != 'I' && path[0] != 'i') ||
        (path[1] != 'c' && path[1] != 'C') || (path[2] != 'o' && path[2] != 'O') || path[3] != '\\')
        return 16;
    int size = 0;
    std::size_t i = 4;
    for (; i < path.size() && path[i] >= '0' && path[i] <= '9' && size < 10000; ++i)
        size = size * 10 + (path[i] - '0');
    return i > 4 && size > 0 && i < path.size() && path[i] == '\\' ? size : 16;
}

namespace {

std::string flagText(bool flag)
{
    return flag ? "1" : "0";
}

bool startsWithNoCase(const std::string& text, const std::string& prefix)
{
    return text.size() >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), text.begin(), [](char a, char b) {
               return std::tolower(static_cast<unsigned char>(a)) ==
                      std::tolower(static_cast<unsigned char>(b));
           });
}

class Pictures : public fw::CoreDevPictures {
  public:
    explicit Pictures(TestHost& host) : m_host(host) {}

    // One flat colour per path, so that two different icons never look alike.
    PicturePtr LoadPicture(const std::string& path, int flags, int width, int height) override
    {
        m_host.record("LoadPicture", {path});
        (void)flags;
        const int size = PictureSizeOfPath(path);
        const int w = width > 0 ? width : size;
        const int h = height > 0 ? height : size;
        std::uint32_t hash = 2166136261u;
        for (char c : path)
            hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
        return std::make_shared<Picture>(
            w, h,
            std::vector<std::uint32_t>(static_cast<std::size_t>(w * h),
                                       0xFF000000u | (hash & 0xFFFFFFu)));
    }

    // Answers queued under "IconCount"; 0 when none is.
    int IconCount(const std::string& file) override
    {
        m_host.record("IconCount", {file});
        return m_host.nextNumber("IconCount");
    }
    // A flat picture as LoadPicture draws one for the file and index; none for
    // an empty file name.
    PicturePtr ExtractIcon(const std::string& file, int index, int size,
                           std::uint32_t maskColour) override
    {
        m_host.record("ExtractIcon", {file, std::to_string(index), std::to_string(size),
                                      std::to_string(maskColour)});
        if (file.empty())
            return nullptr;
        return LoadPicture(file + "," + std::to_string(index), 0, size, size);
    }

    std::shared_ptr<ResourcePackage> NewResourcePackage() override
    {
        m_host.record("NewResourcePackage");
        return makeResourcePackage(m_host);
    }

    // The direct children of path among the host's resources: folders or files.
    StringList ListResources(const std::string& path, bool wantFolders, bool flag1,
                             bool flag2) override
    {
        m_host.record("ListResources",
                      {path, flagText(wantFolders), flagText(flag1), flagText(flag2)});
        std::string prefix = path;
        if (!prefix.empty() && prefix.back() != '\\')
            prefix += '\\';
        StringList found;
        std::set<std::string> seen;
        for (const auto& resource : m_host.resources) {
            if (!startsWithNoCase(resource, prefix))
                continue;
            const auto slash = resource.find('\\', prefix.size());
            const bool isFolder = slash != std::string::npos;
            if (isFolder != wantFolders)
                continue;
            std::string child = isFolder ? resource.substr(0, slash) : resource;
            if (seen.insert(child).second)
                found.Add(std::move(child));
        }
        return found;
    }

  private:
    TestHost& m_host;
};

class FakeNetwork : public fw::NetworkService {
  public:
    explicit FakeNetwork(TestHost& host) : m_host(host) {}
    StringList Domains() override
    {
        m_host.record("Domains");
        return list(m_host.network.domains);
    }
    StringList Hosts(const std::string& domain) override
    {
        m_host.record("Hosts", {domain});
        return lookup(m_host.network.hosts, domain);
    }
    // A share is queued as its name, or as "name|display text".
    ShareList Shares(const std::string& host) override
    {
        m_host.record("Shares", {host});
        ShareList shares;
        const StringList entries = lookup(m_host.network.shares, host);
        for (const std::string& entry : entries.items()) {
            const auto bar = entry.find('|');
            ShareInfo share{entry.substr(0, bar), ShareInfo::Disk, {}};
            share.Remarks.Add(bar == std::string::npos ? share.Name : entry.substr(bar + 1));
            shares.Add(std::move(share));
        }
        return shares;
    }
    // Answers queued as "1" (connected) or "0", each followed by the host's message.
    std::string Connect(const std::string& remote, const std::string& local,
                        const std::string& user, const std::string& password, bool persist,
                        bool& ok) override
    {
        m_host.record("Connect", {remote, local, user, password, flagText(persist)});
        const std::string answer = m_host.nextAnswer("Connect");
        ok = answer.starts_with("1");
        if (ok)
            m_host.network.mapped[local] = remote;
        return answer.empty() ? answer : answer.substr(1);
    }
    bool Disconnect(const std::string& drive) override
    {
        m_host.record("Disconnect", {drive});
        return m_host.network.mapped.erase(drive) > 0;
    }
    StringList MappedDrives() override
    {
        m_host.record("MappedDrives");
        StringList drives;
        for (const auto& [drive, unc] : m_host.network.mapped)
            drives.Add(drive);
        return drives;
    }
    std::string UncOfDrive(const std::string& drive) override
    {
        m_host.record("UncOfDrive", {drive});
        const auto it = m_host.network.mapped.find(drive);
        return it == m_host.network.mapped.end() ? std::string() : it->second;
    }

  private:
    static StringList list(const std::vector<std::string>& items)
    {
        StringList result;
        for (const auto& item : items)
            result.Add(item);
        return result;
    }
    static StringList lookup(const std::map<std::string, std::vector<std::string>>& map,
                             const std::string& key)
    {
        const auto it = map.find(key);
        return it == map.end() ? StringList() : list(it->second);
    }
    TestHost& m_host;
};

// "*" and "?" wildcards, without case, several patterns split by ";".
bool matchesWildcard(const char* pattern, const char* name)
{
    if (*pattern == '\0')
        return *name == '\0';
    if (*pattern == '*')
        return matchesWildcard(pattern + 1, name) || (*name && matchesWildcard(pattern, name + 1));
    if (*name == '\0')
        return false;
    const bool same = *pattern == '?' || std::tolower(static_cast<unsigned char>(*pattern)) ==
                                             std::tolower(static_cast<unsigned char>(*name));
    return same && matchesWildcard(pattern + 1, name + 1);
}

} // namespace

bool MatchesWildcard(const std::string& pattern, const std::string& name)
{
    return matchesWildcard(pattern.c_str(), name.c_str());
}

namespace {

bool matchesAny(const std::string& patterns, const std::string& name)
{
    if (patterns.empty())
        return true;
    std::size_t start = 0;
    while (start <= patterns.size()) {
        auto end = patterns.find(';', start);
        if (end == std::string::npos)
            end = patterns.size();
        std::string one = patterns.substr(start, end - start);
        if (one == "*.*" || matchesWildcard(one.c_str(), name.c_str()))
            return true;
        start = end + 1;
    }
    return false;
}

std::int64_t modifiedSecs(const fs::path& path, std::error_code& error)
{
    const auto stamp = fs::last_write_time(path, error);
    if (error)
        return 0;
    return std::chrono::duration_cast<std::chrono::seconds>(
               std::chrono::file_clock::to_sys(stamp).time_since_epoch())
        .count();
}

class Files : public fw::CoreDevFiles {
  public:
    explicit Files(TestHost& host) : m_host(host), m_network(std::make_shared<FakeNetwork>(host)) {}

    // Written beside the target and renamed over it, so a failed write leaves the
    // old file as it was.
    bool WriteTextFile(const std::string& path, const std::string& text,
                       const std::string& encoding, int flag) override
    {
        m_host.record("WriteTextFile", {path, encoding, std::to_string(flag)});
        const std::string temporary = path + ".writing~";
        {
            std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
            if (!out.write(text.data(), static_cast<std::streamsize>(text.size())).flush()) {
                std::error_code ignored;
                fs::remove(temporary, ignored);
                return false;
            }
        }
        std::error_code error;
        fs::rename(temporary, path, error);
        if (error)
            fs::remove(temporary, error);
        return !error;
    }
    bool DeleteFile(const std::string& path) override
    {
        m_host.record("DeleteFile", {path});
        std::error_code error;
        return fs::is_regular_file(path, error) && fs::remove(path, error);
    }
    // Folders are always listed; the pattern only filters files.
    std::vector<FileEntry> ListFiles(const std::string& folder, const std::string& pattern) override
    {
        m_host.record("ListFiles", {folder, pattern});
        std::vector<FileEntry> entries;
        std::error_code error;
        for (const auto& item : fs::directory_iterator(folder, error)) {
            FileEntry entry;
            entry.Name = item.path().filename().string();
            entry.IsFolder = item.is_directory(error);
            if (!entry.IsFolder && !matchesAny(pattern, entry.Name))
                continue;
            entry.Size = entry.IsFolder ? 0 : static_cast<std::int64_t>(item.file_size(error));
            entry.ModifiedSecs = modifiedSecs(item.path(), error);
            entries.push_back(std::move(entry));
        }
        std::sort(entries.begin(), entries.end(),
                  [](const FileEntry& a, const FileEntry& b) { return a.Name < b.Name; });
        return entries;
    }
    bool DeleteFolder(const std::string& path) override
    {
        m_host.record("DeleteFolder", {path});
        std::error_code error;
        return fs::is_directory(path, error) && fs::remove_all(path, error) > 0 && !error;
    }
    bool FileExists(const std::string& path) override
    {
        m_host.record("FileExists", {path});
        std::error_code error;
        return fs::is_regular_file(path, error);
    }
    bool FolderExists(const std::string& path) override
    {
        m_host.record("FolderExists", {path});
        std::error_code error;
        return fs::is_directory(path, error);
    }
    std::int64_t FileSize(const std::string& path) override
    {
        m_host.record("FileSize", {path});
        std::error_code error;
        const auto size = fs::file_size(path, error);
        return error ? 0 : static_cast<std::int64_t>(size);
    }
    std::int64_t FileDate(const std::string& path) override
    {
        m_host.record("FileDate", {path});
        std::error_code error;
        return modifiedSecs(path, error);
    }
    bool CreateFolder(const std::string& path) override
    {
        m_host.record("CreateFolder", {path});
        std::error_code error;
        fs::create_directories(path, error);
        return !error && fs::is_directory(path, error);
    }
    // Bytes below one kilobyte, else whole kilobytes rounded up.
    std::string SizeText(std::int64_t bytes) override
    {
        m_host.record("SizeText", {std::to_string(bytes)});
        if (bytes < 1024)
            return std::to_string(bytes) + " Bytes";
        return std::to_string((bytes + 1023) / 1024) + " KB";
    }
    bool IsRealFile(const std::string& path) override
    {
        m_host.record("IsRealFile", {path});
        std::error_code error;
        return fs::is_regular_file(path, error);
    }
    std::int32_t synchronise(const std::string& path1, const std::string& path2,
                             fw::SyncProgress& window, fw::SyncJob& job) override
    {
        m_host.record("synchronise", {path1, path2});
        if (m_host.synchroniseScript)
            return m_host.synchroniseScript(path1, path2, window, job);
        return std::stoi(m_host.nextAnswer("synchronise", "1"));
    }
    int DriveType(const std::string& drive) override
    {
        m_host.record("DriveType", {drive});
        const auto it = m_host.driveTypes.find(drive);
        return it == m_host.driveTypes.end() ? 0 : it->second;
    }
    StringList DrivesOfType(int type) override
    {
        m_host.record("DrivesOfType", {std::to_string(type)});
        StringList drives;
        for (const auto& [drive, driveType] : m_host.driveTypes)
            if (driveType == type)
                drives.Add(drive);
        return drives;
    }
    std::string VolumeLabel(const std::string& drive) override
    {
        m_host.record("VolumeLabel", {drive});
        const auto it = m_host.volumeLabels.find(drive);
        return it == m_host.volumeLabels.end() ? std::string() : it->second;
    }
    std::string FolderError(const std::string& folder) override
    {
        m_host.record("FolderError", {folder});
        std::error_code error;
        fs::directory_iterator probe(folder, error);
        return error ? error.message() : std::string();
    }
    std::shared_ptr<NetworkService> Network() override
    {
        m_host.record("Network");
        return m_host.network.absent ? nullptr : m_network;
    }

  private:
    TestHost& m_host;
    std::shared_ptr<NetworkService> m_network;
};

} // namespace

std::shared_ptr<fw::CoreDevPictures> makePictureService(TestHost& host)
{
    return std::make_shared<Pictures>(host);
}

std::shared_ptr<fw::CoreDevFiles> makeFileService(TestHost& host)
{
    return std::make_shared<Files>(host);
}

namespace {

// Kept in the host's favourites map by key, so that a test sees what was saved
// and a second list loads it.
class TestFavoriteList : public fw::MemoryFavoriteList {
  public:
    explicit TestFavoriteList(TestHost& host) : m_host(host) {}
    bool Load(std::uint32_t, const std::string& key) override
    {
        m_host.record("FavoriteList.Load", {key});
        const auto it = m_host.favourites.find(key);
        m_items = it == m_host.favourites.end() ? std::vector<FavoriteItem>() : it->second;
        return true;
    }
    bool Save(std::uint32_t, const std::string& key) override
    {
        m_host.record("FavoriteList.Save", {key});
        m_host.favourites[key] = m_items;
        return true;
    }

  private:
    TestHost& m_host;
};

} // namespace

std::shared_ptr<fw::FavoriteList> makeFavoriteList(TestHost& host)
{
    return std::make_shared<TestFavoriteList>(host);
}

} // namespace fw::testing
