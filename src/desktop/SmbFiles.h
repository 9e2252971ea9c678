#pragma once
// The desktop host's file operations on SMB shares, addressed by smb:// URLs
// (UncToSmbUrl): what DesktopFiles does for a local folder, done through one
// SmbClient.

#include "desktop/SmbClient.h"
#include "host/CoreDevServices.h"

#include <QElapsedTimer>
#include <functional>

namespace fw::desktop {

/// "smb://host/" stands for the host itself: its disk shares list as folders
/// (hidden "$" shares left out, as hidden files are). Folders list like local
/// ones: folders first, hidden entries left out, names as in a location
/// string (NameToLocation), files picked by a NamePattern; unlike a local
/// listing, Size and ModifiedSecs are filled, as the one listing pass brings
/// them anyway.
class SmbFiles {
  public:
    /// options are read on first use, so that a host that never touches the
    /// network never starts a client.
    explicit SmbFiles(std::function<SmbOptions()> options);

    std::optional<std::vector<FileEntry>> List(const std::string& url, const std::string& pattern);
    /// A host answers as a folder when it lists its shares.
    std::optional<SmbStat> Stat(const std::string& url);
    /// Each missing folder on the way, as "mkdir -p" does.
    bool CreateFolder(const std::string& url);
    bool DeleteFile(const std::string& url);
    /// Refuses a share's root and a host: only what lies inside a share goes.
    bool DeleteTree(const std::string& url);
    /// Why the folder cannot be listed; empty when it can.
    std::string FolderError(const std::string& url);

    SmbClient& Client();

  private:
    std::optional<std::vector<FileEntry>> listOnce(const std::string& url);

    std::function<SmbOptions()> m_options;
    std::unique_ptr<SmbClient> m_client;
    // The last listing, for the reads of the same folder that follow at once.
    std::string m_listedUrl;
    std::vector<FileEntry> m_listed;
    QElapsedTimer m_listedAge;
};

} // namespace fw::desktop
