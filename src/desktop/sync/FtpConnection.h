#pragma once
// The wire to one FTP account: a libcurl easy handle that keeps one
// connection for all calls, in passive binary mode, with the account's time
// limit on connecting, on each reply and on any stretch of a transfer
// without progress. Failures come back as texts a user can act on, never
// with the password.

#include "desktop/DesktopFtpSync.h"
#include "desktop/sync/FtpListing.h"
#include "desktop/sync/SyncSide.h"

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace fw::desktop::sync {

class FtpConnection {
  public:
    /// Paths given to the calls are absolute server paths; account.path is unused.
    FtpConnection(FtpAccount account, int timeoutSeconds);
    ~FtpConnection();
    FtpConnection(const FtpConnection&) = delete;
    FtpConnection& operator=(const FtpConnection&) = delete;

    /// "ftp://user@host:port", for texts.
    std::string Where() const;

    /// Sends each line as one command and gives the reply to each, a refusal
    /// as well; false only when the server could not be asked.
    bool Commands(const std::vector<std::string>& lines, std::vector<FtpReply>& replies,
                  std::string& error);
    /// The listing of a server folder: MLSD lines, or LIST's.
    bool Listing(const std::string& folder, bool mlsd, std::string& text, const SyncSignals& watch,
                 std::string& error);
    /// Stores the local file source under serverPath, then sends the
    /// commands after (in the same call, a round trip saved) and gives their
    /// replies as Commands does.
    bool Upload(const std::string& source, const std::string& serverPath,
                const std::vector<std::string>& after, std::vector<FtpReply>& replies,
                const SyncSignals& watch, std::string& error);
    /// Appends serverPath from byte offset on to file; total is the whole
    /// size, for the progress. dropped: the connection broke, so a resume
    /// from the new end may finish the file.
    bool Download(const std::string& serverPath, std::FILE* file, std::int64_t offset,
                  std::int64_t total, const SyncSignals& watch, std::string& error, bool& dropped);

  private:
    struct Handle;
    FtpAccount m_account;
    int m_timeoutSeconds;
    std::unique_ptr<Handle> m_handle;
};

} // namespace fw::desktop::sync
