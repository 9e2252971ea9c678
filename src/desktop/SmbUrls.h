#pragma once
// UNC locations ("\\host\share\dir\", names escaped as in LocationPaths.h)
// and the smb:// URLs that libsmbclient, file managers and scripts use.

#include <optional>
#include <string>
#include <string_view>

namespace fw::desktop {

/// A UNC location taken apart. A port may follow the host: "\\host:4445\share".
struct UncParts {
    std::string host;  ///< as written, without the port
    int port = 0;      ///< 0: the default port
    std::string share; ///< location form (escaped), empty for "\\host\"
    std::string path;  ///< the rest below the share, location form, "\" separated,
                       ///< without a leading "\"; a trailing "\" stays
};

/// True for a text that begins with two backslashes and a host name.
bool IsUnc(std::string_view location);

/// Nothing for a text that is no UNC path or has a port that is no number
/// from 1 to 65535.
std::optional<UncParts> SplitUnc(std::string_view unc);

/// "\\host[:port]\share\dir\name" as "smb://host[:port]/share/dir/name": each
/// name travels as its bytes, percent-encoded where a URL asks for it (and
/// "@", ";" and "%" always, which libsmbclient would read as user, domain or
/// an escape). A trailing "\" stays a trailing "/".
std::optional<std::string> UncToSmbUrl(std::string_view unc);

/// One name (bytes) as it travels in an smb:// URL, percent-encoded as
/// UncToSmbUrl encodes each name.
std::string SmbUrlName(std::string_view bytes);

/// The inverse of UncToSmbUrl. Accepts "smb://" in any case, percent-encoded
/// or plain names, and drops user information ("smb://anna@host/share"): a
/// location names a place, not an account. Nothing for other texts.
std::optional<std::string> SmbUrlToUnc(std::string_view url);

} // namespace fw::desktop
