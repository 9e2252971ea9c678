// What an FTP server sends is hostile input: any bytes, read as a listing in
// both forms and as control replies, give entries whose names can never leave
// the folder listed, or a refusal with a reason, without crashing.
#include "desktop/sync/FtpListing.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

void checkLine(const fw::desktop::sync::FtpLine& line)
{
    using fw::desktop::sync::FtpLine;
    if (line.kind == FtpLine::Unreadable && line.reason.empty())
        __builtin_trap(); // a skipped line must say why
    if (line.kind != FtpLine::Entry && line.kind != FtpLine::Link)
        return;
    const std::string& name = line.entry.name;
    if (name.empty() || name == "." || name == ".." ||
        name.find_first_of(std::string("/\0", 2)) != std::string::npos || line.entry.size < 0)
        __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    namespace sync = fw::desktop::sync;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    std::vector<std::string> lines;
    for (std::string_view line : sync::ListingLines(text)) {
        checkLine(sync::ParseMlsdLine(line));
        checkLine(sync::ParseListLine(line, 1700000000));
        sync::ParseFtpTime(line);
        lines.emplace_back(line);
    }
    for (const sync::FtpReply& reply : sync::SplitReplies(lines))
        if (reply.code < 100 || reply.code > 599)
            __builtin_trap();
    return 0;
}
