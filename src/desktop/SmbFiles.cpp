#include "desktop/SmbFiles.h"

#include "desktop/FolderListing.h"
#include "desktop/LocationPaths.h"

#include <algorithm>

namespace fw::desktop {

namespace {

constexpr std::string_view kScheme = "smb://";

// How many names follow the host: 0 for "smb://host/", 1 for a share's root.
int depthOf(const std::string& url)
{
    std::string_view path = std::string_view(url).substr(kScheme.size());
    const auto hostEnd = path.find('/');
    if (hostEnd == std::string_view::npos)
        return 0;
    path = path.substr(hostEnd + 1);
    while (path.ends_with('/'))
        path.remove_suffix(1);
    return path.empty() ? 0 : int(std::count(path.begin(), path.end(), '/')) + 1;
}

std::string asFolder(const std::string& url)
{
    return url.ends_with('/') ? url : url + '/';
}

std::vector<FileEntry> disksOf(const ShareList& shares)
{
    std::vector<ScannedEntry> folders;
    for (const ShareInfo& share : shares.items())
        if (share.Type == ShareInfo::Disk && !share.Name.ends_with('$'))
            folders.push_back({NameToLocation(share.Name), true});
    SortFolderEntries(folders);
    std::vector<FileEntry> entries;
    for (ScannedEntry& folder : folders)
        entries.push_back({std::move(folder.name), true, 0, 0});
    return entries;
}

std::vector<FileEntry> visibleEntries(const std::vector<SmbEntry>& listed)
{
    std::vector<const SmbEntry*> visible;
    std::vector<ScannedEntry> names;
    for (const SmbEntry& entry : listed) {
        if (!entry.hidden) {
            visible.push_back(&entry);
            names.push_back({NameToLocation(entry.name), entry.folder});
        }
    }
    std::vector<FileEntry> entries;
    entries.reserve(names.size());
    for (const std::uint32_t i : FolderEntryOrder(names)) {
        const SmbEntry& entry = *visible[i];
        entries.push_back({std::move(names[i].name), entry.folder, entry.folder ? 0 : entry.size,
                           entry.modifiedSecs});
    }
    return entries;
}

} // namespace

SmbFiles::SmbFiles(std::function<SmbOptions()> options) : m_options(std::move(options)) {}

SmbClient& SmbFiles::Client()
{
    if (!m_client)
        m_client = std::make_unique<SmbClient>(m_options());
    return *m_client;
}

std::optional<std::vector<FileEntry>> SmbFiles::listOnce(const std::string& url)
{
    const std::string folder = asFolder(url);
    if (folder == m_listedUrl && m_listedAge.isValid() && m_listedAge.elapsed() < 1000)
        return m_listed;
    m_listedUrl.clear();
    std::optional<std::vector<FileEntry>> entries;
    if (depthOf(folder) == 0) {
        if (auto shares = Client().ListShares(folder))
            entries = disksOf(*shares);
    } else if (auto listed = Client().ListFolder(folder)) {
        entries = visibleEntries(*listed);
    }
    if (entries) {
        m_listedUrl = folder;
        m_listed = *entries;
        m_listedAge.start();
    }
    return entries;
}

std::optional<std::vector<FileEntry>> SmbFiles::List(const std::string& url,
                                                     const std::string& pattern)
{
    std::optional<std::vector<FileEntry>> entries = listOnce(url);
    if (!entries)
        return entries;
    // Folders always show: the pattern picks files.
    const NamePattern filter(pattern);
    std::erase_if(*entries, [&](const FileEntry& entry) {
        return !entry.IsFolder && !filter.Matches(entry.Name);
    });
    return entries;
}

std::optional<SmbStat> SmbFiles::Stat(const std::string& url)
{
    if (depthOf(url) == 0)
        return Client().ListShares(asFolder(url)) ? std::optional<SmbStat>(SmbStat{true, 0, 0})
                                                  : std::nullopt;
    return Client().Stat(url);
}

bool SmbFiles::CreateFolder(const std::string& url)
{
    m_listedUrl.clear();
    const std::string folder = asFolder(url);
    // From the share's root down: the share itself cannot be made.
    const std::size_t shareEnd = folder.find('/', folder.find('/', kScheme.size()) + 1);
    if (depthOf(folder) < 2 || shareEnd == std::string::npos)
        return false;
    for (std::size_t at = folder.find('/', shareEnd + 1); at != std::string::npos;
         at = folder.find('/', at + 1)) {
        const std::string step = folder.substr(0, at);
        const std::optional<SmbStat> found = Client().Stat(step);
        if (found && !found->folder)
            return false;
        if (!found && !Client().MakeFolder(step))
            return false;
    }
    return true;
}

bool SmbFiles::DeleteFile(const std::string& url)
{
    m_listedUrl.clear();
    return depthOf(url) >= 2 && Client().RemoveFile(url);
}

bool SmbFiles::DeleteTree(const std::string& url)
{
    m_listedUrl.clear();
    return depthOf(url) >= 2 && Client().RemoveTree(url);
}

std::string SmbFiles::FolderError(const std::string& url)
{
    // A listing made a moment ago answers too: the chooser asks before it lists.
    return listOnce(url) ? std::string() : Client().LastError();
}

} // namespace fw::desktop
