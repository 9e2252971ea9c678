#pragma once
// The desktop host's FTP object for synchronising a local folder with a
// folder on an FTP server, over libcurl.

#include "host/HostObjects.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace fw::desktop {

struct FtpAccount {
    std::string host;
    int port = 21;
    std::string user = "anonymous";
    std::string password;
    std::string path = "/"; ///< the server folder, "/"-separated, decoded
};

/// Reads ftp://[user@]host[:port][/path] (percent escapes decoded); nothing
/// and a reason for anything else. The password never comes from the URL.
std::optional<FtpAccount> ParseFtpUrl(std::string_view url, std::string& error);

/// The object the FTP synchronisation window works with. Its synchronise
/// takes the local folder (a location or Linux path) and the server folder
/// ("" for the account's path); timeoutSeconds bounds every server call.
std::shared_ptr<FtpObject> MakeFtpSync(FtpAccount account, int timeoutSeconds = 15);

} // namespace fw::desktop
