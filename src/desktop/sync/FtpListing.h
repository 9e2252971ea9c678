#pragma once
// What an FTP server sends about its files, read without trusting it: the
// lines of a folder listing (MLSD facts, or the Unix "ls -l" form of LIST),
// the time stamps of MLSD and MDTM, and the replies of the control
// connection. Pure text work, so that a fuzzer can feed it anything.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fw::desktop::sync {

struct FtpEntry {
    std::string name; ///< one name, bytes as sent, never "." or ".." or with "/"
    bool folder = false;
    std::int64_t size = 0;
    std::int64_t mtime = 0; ///< seconds since the epoch, UTC; 0 when unknown
};

/// One listing line read: an entry, a symbolic link (its name in entry), a
/// line to pass over (".", "..", devices, "total 12"), or a line that could
/// not be read, with the reason.
struct FtpLine {
    enum Kind { Entry, Link, Ignored, Unreadable } kind = Ignored;
    FtpEntry entry;
    std::string reason;
};

/// "type=file;size=12;modify=20240101120000; Name" (facts in any order and
/// case; the name follows the first space).
FtpLine ParseMlsdLine(std::string_view line);

/// "-rw-r--r-- 1 anna users 12 Jan  1 12:00 Name" or with a year instead of
/// the time. A time without a year lies in the half year before now (UTC
/// seconds); such times carry only minutes.
FtpLine ParseListLine(std::string_view line, std::int64_t now);

/// "YYYYMMDDHHMMSS" with optional fractions, UTC; nothing for anything else.
std::optional<std::int64_t> ParseFtpTime(std::string_view text);
/// The inverse of ParseFtpTime, whole seconds ("20240101120000").
std::string FormatFtpTime(std::int64_t seconds);

/// Splits a listing into lines at "\n", dropping a "\r" before it.
std::vector<std::string_view> ListingLines(std::string_view text);

/// One reply of the control connection: its code and all its lines.
struct FtpReply {
    int code = 0;
    std::string text; ///< the lines as sent, joined by "\n", without CR LF
};

/// The replies in the lines a server sent, a reply of several lines ("211-"
/// up to "211 ") as one. Lines outside any reply are dropped.
std::vector<FtpReply> SplitReplies(const std::vector<std::string>& lines);

} // namespace fw::desktop::sync
