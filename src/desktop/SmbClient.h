#pragma once
// The desktop host's SMB client: libsmbclient in the process, no mount, no
// root rights, no helper daemon. Addresses are smb:// URLs as UncToSmbUrl
// makes them ("smb://host[:port]/share/dir/").

#include "host/HostObjects.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fw::desktop {

struct SmbOptions {
    /// Every call ends within this time, answered or not.
    int timeoutMs = 10000;
    /// The credentials file in the format mount.cifs reads
    /// ("username=", "password=", "domain="); empty: ~/.smbcredentials.
    std::string credentialsFile;
    /// The port for hosts written without one; 0: the default (445).
    int defaultPort = 0;
};

/// One entry of a share's folder, as one readdirplus pass gives it.
struct SmbEntry {
    std::string name; ///< bytes as the server sends them (UTF-8), no "." or ".."
    bool folder = false;
    bool hidden = false;
    bool link = false; ///< a link or junction, where the server shows it as one
    std::int64_t size = 0;
    std::int64_t modifiedSecs = 0; ///< seconds since the epoch, UTC
};

struct SmbStat {
    bool folder = false;
    std::int64_t size = 0;
    std::int64_t modifiedSecs = 0;
};

/// Credentials are tried in this order: the user's Kerberos ticket (when a
/// credentials cache exists), the credentials file, then guest. Calls are made
/// from one thread at a time; each one fails cleanly (nothing, false) when the
/// host does not answer, refuses, or drops the connection, and LastError says
/// why in a sentence a user can read.
class SmbClient {
  public:
    explicit SmbClient(SmbOptions options = {});
    ~SmbClient();
    SmbClient(const SmbClient&) = delete;
    SmbClient& operator=(const SmbClient&) = delete;

    const SmbOptions& Options() const;

    /// The entries of a folder ("smb://host/share/dir/"), in the server's order.
    std::optional<std::vector<SmbEntry>> ListFolder(const std::string& url);
    /// The shares of a host ("smb://host[:port]/"): name, type, comment as the
    /// display text (Remarks entry 1; the name where the comment is empty).
    std::optional<ShareList> ListShares(const std::string& hostUrl);
    /// Workgroups and domains that the old browse service announces ("smb://").
    /// Empty, not a failure, where the network has no browse service.
    std::vector<std::string> Workgroups();
    /// The servers of a workgroup by the browse service; empty where there is none.
    std::vector<std::string> Servers(const std::string& workgroup);
    std::optional<SmbStat> Stat(const std::string& url);
    bool MakeFolder(const std::string& url);
    bool RemoveFile(const std::string& url);
    /// Removes a folder with all it holds; links are removed, never followed,
    /// where the server shows them as links (a Samba server that follows
    /// links itself shows a link to a folder as that folder).
    bool RemoveTree(const std::string& url);
    /// Why the last failed call failed; empty after a success.
    std::string LastError() const;

  private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace fw::desktop
