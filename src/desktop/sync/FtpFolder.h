#pragma once
// A folder on an FTP server as one side of a synchronisation, over libcurl:
// passive binary transfers on one kept connection, MLSD where the server
// offers it and LIST otherwise, uploads and downloads through temporary
// names, a resumed download after a dropped connection, and a time limit on
// every call so that a dead server never holds a run.

#include "desktop/DesktopFtpSync.h"
#include "desktop/sync/FtpListing.h"
#include "desktop/sync/SyncSide.h"

#include <memory>
#include <string>
#include <vector>

namespace fw::desktop::sync {

class FtpConnection;

/// A server folder as the folder uses it: "/pub/" and "pub" are "/pub", the
/// root stays "/".
std::string ServerFolder(std::string path);

class FtpFolder : public SyncSide {
  public:
    /// The root is account.path; timeoutSeconds bounds connecting, each
    /// reply and any stretch without progress of a transfer.
    FtpFolder(FtpAccount account, int timeoutSeconds);
    ~FtpFolder() override;
    FtpFolder(const FtpFolder&) = delete;
    FtpFolder& operator=(const FtpFolder&) = delete;

    std::string Describe() const override;
    bool List(SyncTree& tree, const SyncSignals& watch, std::string& error,
              const std::function<void(const std::string& path, const std::string& reason)>&
                  skipped) override;
    bool MakeFolder(const std::string& path, std::string& error) override;
    bool RemoveFile(const std::string& path, std::string& error) override;
    bool RemoveTree(const std::string& path, std::string& error) override;
    bool Put(const std::string& source, const std::string& path, std::int64_t mtime,
             const SyncSignals& watch, SyncItem& stored, std::string& error) override;
    bool Get(const SyncItem& expected, const std::string& target, const SyncSignals& watch,
             std::string& error) override;
    bool Stat(const std::string& path, SyncItem& item, std::string& error) override;

    /// Sends one command line as it is and gives the server's reply (all
    /// its lines); false with the reason when no reply came.
    bool Command(const std::string& command, std::string& reply, std::string& error);

  private:
    struct Features {
        bool known = false;
        bool mlsd = false; ///< MLSD and MLST
        bool mfmt = false;
    };

    bool features(std::string& error);
    bool listFolder(const std::string& path, std::vector<SyncItem>& items, const SyncSignals& watch,
                    std::string& error,
                    const std::function<void(const std::string&, const std::string&)>& skipped);
    bool fillTimes(std::vector<SyncItem>& items, std::string& error);
    /// Stores the temporary and marks it for renaming; stored gets its size
    /// and the time the server says it set.
    bool upload(const std::string& source, const std::string& temporary, std::int64_t mtime,
                const SyncSignals& watch, SyncItem& stored, std::string& error);
    /// Completes a rename whose RNFR was the last command sent.
    bool renameMarked(const std::string& from, const std::string& to, std::string& error);
    /// Runs the commands in order; replies holds one reply per command.
    bool commands(const std::vector<std::string>& lines, std::vector<FtpReply>& replies,
                  std::string& error);
    bool command(const std::string& line, FtpReply& reply, std::string& error);
    /// One command on a path, e.g. "DELE"; a refusal is an error.
    bool pathCommand(const char* verb, const std::string& path, std::string& error);
    /// Runs many commands, a hundred to a call; refusalFails: the first refusal
    /// ends the run with the server's words.
    bool inBatches(const std::vector<std::string>& lines, bool refusalFails, std::string& error);
    /// The server's path of a path below the root ("" is the root).
    std::string serverPath(const std::string& path) const;
    std::string temporaryName(const std::string& path);

    FtpAccount m_account;
    std::unique_ptr<FtpConnection> m_connection;
    Features m_features;
    int m_temporaries = 0;
};

} // namespace fw::desktop::sync
