#include "desktop/sync/FtpListing.h"

#include <array>
#include <cctype>
#include <ctime>

namespace fw::desktop::sync {

namespace {

bool equalNoCase(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) !=
            std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

// Digits only, no sign, and small enough for 64 bits.
std::optional<std::int64_t> parseCount(std::string_view text)
{
    if (text.empty() || text.size() > 18)
        return std::nullopt;
    std::int64_t value = 0;
    for (char c : text) {
        if (c < '0' || c > '9')
            return std::nullopt;
        value = value * 10 + (c - '0');
    }
    return value;
}

std::int64_t utcSeconds(int year, int month, int day, int hour, int minute, int second)
{
    std::tm parts{};
    parts.tm_year = year - 1900;
    parts.tm_mon = month - 1;
    parts.tm_mday = day;
    parts.tm_hour = hour;
    parts.tm_min = minute;
    parts.tm_sec = second;
    return static_cast<std::int64_t>(timegm(&parts));
}

// A name a server may send that must never become a path of ours.
bool usableName(std::string_view name)
{
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(std::string_view("/\0", 2)) == std::string_view::npos;
}

FtpLine unreadable(std::string reason)
{
    FtpLine line;
    line.kind = FtpLine::Unreadable;
    line.reason = std::move(reason);
    return line;
}

FtpLine entry(std::string_view name, bool folder, std::int64_t size, std::int64_t mtime)
{
    if (name == "." || name == "..")
        return {};
    if (!usableName(name))
        return unreadable("Der Server nennt einen unbrauchbaren Namen.");
    FtpLine line;
    line.kind = FtpLine::Entry;
    line.entry = {std::string(name), folder, folder ? 0 : size, mtime};
    return line;
}

FtpLine linkLine(std::string_view name)
{
    FtpLine line = entry(name, false, 0, 0);
    if (line.kind == FtpLine::Entry)
        line.kind = FtpLine::Link;
    return line;
}

// Splits at runs of blanks; the rest after the last field taken stays whole.
std::vector<std::string_view> fields(std::string_view text, std::size_t count,
                                     std::string_view& rest)
{
    std::vector<std::string_view> out;
    std::size_t at = 0;
    while (out.size() < count) {
        while (at < text.size() && text[at] == ' ')
            ++at;
        if (at >= text.size())
            break;
        const std::size_t end = std::min(text.find(' ', at), text.size());
        out.push_back(text.substr(at, end - at));
        at = end;
    }
    // Exactly one blank parts the last field from a name that may begin with blanks.
    rest = at < text.size() ? text.substr(at + 1) : std::string_view();
    return out;
}

int monthNumber(std::string_view name)
{
    static constexpr std::array<std::string_view, 12> months = {
        "jan", "feb", "mar", "apr", "may", "jun", "jul", "aug", "sep", "oct", "nov", "dec"};
    for (std::size_t i = 0; i < months.size(); ++i)
        if (equalNoCase(name, months[i]))
            return int(i) + 1;
    return 0;
}

// "12:00" or "2023" after month and day.
std::optional<std::int64_t> listTime(int month, std::string_view day, std::string_view clock,
                                     std::int64_t now)
{
    const auto dayNumber = parseCount(day);
    if (!dayNumber || *dayNumber < 1 || *dayNumber > 31)
        return std::nullopt;
    if (clock.size() == 5 && clock[2] == ':') {
        const auto hour = parseCount(clock.substr(0, 2));
        const auto minute = parseCount(clock.substr(3, 2));
        if (!hour || !minute || *hour > 23 || *minute > 59)
            return std::nullopt;
        const std::time_t nowSeconds = static_cast<std::time_t>(now);
        std::tm today{};
        gmtime_r(&nowSeconds, &today);
        int year = today.tm_year + 1900;
        std::int64_t t = utcSeconds(year, month, int(*dayNumber), int(*hour), int(*minute), 0);
        // ls shows a year for anything older than half a year; a date ahead
        // of now by more than a day (clock skew) is last year's.
        if (t > now + 86400)
            t = utcSeconds(year - 1, month, int(*dayNumber), int(*hour), int(*minute), 0);
        return t;
    }
    const auto year = parseCount(clock);
    if (clock.size() != 4 || !year || *year < 1970)
        return std::nullopt;
    return utcSeconds(int(*year), month, int(*dayNumber), 0, 0, 0);
}

} // namespace

std::optional<std::int64_t> ParseFtpTime(std::string_view text)
{
    const std::size_t dot = text.find('.');
    const std::string_view whole = text.substr(0, dot);
    if (whole.size() != 14 || !parseCount(whole))
        return std::nullopt;
    if (dot != std::string_view::npos && !parseCount(text.substr(dot + 1)))
        return std::nullopt;
    auto part = [&](std::size_t at, std::size_t n) {
        return int(*parseCount(whole.substr(at, n)));
    };
    const int year = part(0, 4), month = part(4, 2), day = part(6, 2);
    const int hour = part(8, 2), minute = part(10, 2), second = part(12, 2);
    if (year < 1970 || month < 1 || month > 12 || day < 1 || day > 31 || hour > 23 || minute > 59 ||
        second > 60)
        return std::nullopt;
    return utcSeconds(year, month, day, hour, minute, second);
}

std::string FormatFtpTime(std::int64_t seconds)
{
    const std::time_t t = static_cast<std::time_t>(seconds);
    std::tm parts{};
    gmtime_r(&t, &parts);
    char text[32];
    std::strftime(text, sizeof text, "%Y%m%d%H%M%S", &parts);
    return text;
}

FtpLine ParseMlsdLine(std::string_view line)
{
    const std::size_t space = line.find(' ');
    if (space == std::string_view::npos)
        return unreadable("Eine MLSD-Zeile ohne Namen.");
    const std::string_view facts = line.substr(0, space);
    const std::string_view name = line.substr(space + 1);
    std::string_view type;
    std::optional<std::int64_t> size, mtime;
    std::size_t at = 0;
    while (at < facts.size()) {
        const std::size_t end = std::min(facts.find(';', at), facts.size());
        const std::string_view fact = facts.substr(at, end - at);
        at = end + 1;
        const std::size_t eq = fact.find('=');
        if (eq == std::string_view::npos)
            continue;
        const std::string_view key = fact.substr(0, eq), value = fact.substr(eq + 1);
        if (equalNoCase(key, "type"))
            type = value;
        else if (equalNoCase(key, "size"))
            size = parseCount(value);
        else if (equalNoCase(key, "modify"))
            mtime = ParseFtpTime(value);
    }
    if (equalNoCase(type, "cdir") || equalNoCase(type, "pdir"))
        return {};
    const bool folder = equalNoCase(type, "dir");
    if (equalNoCase(type, "OS.unix=symlink") || equalNoCase(type, "OS.unix=slink"))
        return linkLine(name);
    if (!folder && !equalNoCase(type, "file"))
        return {}; // devices and the like: not part of the synchronised tree
    if (!folder && !size)
        return unreadable("Der Server nennt keine Größe für „" + std::string(name) + "“.");
    return entry(name, folder, size.value_or(0), mtime.value_or(0));
}

FtpLine ParseListLine(std::string_view line, std::int64_t now)
{
    if (line.empty() || line.substr(0, 6) == "total ")
        return {};
    const auto fail = [&] {
        return unreadable("Eine Zeile der Liste hat keine bekannte Form: " +
                          std::string(line.substr(0, 80)));
    };
    // Mode, links, owner, group, size, month, day, time or year, then the
    // name; some servers leave out the group, and the month comes one earlier.
    std::string_view name;
    auto parts = fields(line, 8, name);
    if (parts.size() == 8 && !monthNumber(parts[5]) && monthNumber(parts[4]))
        parts = fields(line, 7, name);
    if (parts.size() < 7 || parts[0].size() != 10)
        return fail();
    const char type = parts[0][0];
    if (type == 'l')
        return linkLine(name.substr(0, name.find(" -> ")));
    if (type != '-' && type != 'd')
        return {}; // devices, pipes
    const std::size_t month = parts.size() - 3;
    const int monthNo = monthNumber(parts[month]);
    const auto size = parseCount(parts[month - 1]);
    const auto mtime =
        monthNo ? listTime(monthNo, parts[month + 1], parts[month + 2], now) : std::nullopt;
    if (!size || !mtime)
        return fail();
    return entry(name, type == 'd', *size, *mtime);
}

std::vector<std::string_view> ListingLines(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        if (!line.empty())
            lines.push_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::vector<FtpReply> SplitReplies(const std::vector<std::string>& lines)
{
    std::vector<FtpReply> replies;
    std::string open; // the code of a reply of several lines still open
    for (std::string line : lines) {
        while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
            line.pop_back();
        // Reply codes begin with 1 to 5.
        const bool coded = line.size() >= 3 && line[0] >= '1' && line[0] <= '5' &&
                           std::isdigit(static_cast<unsigned char>(line[1])) &&
                           std::isdigit(static_cast<unsigned char>(line[2])) &&
                           (line.size() == 3 || line[3] == ' ' || line[3] == '-');
        if (!open.empty()) {
            replies.back().text += "\n" + line;
            if (coded && line.compare(0, 3, open) == 0 && (line.size() == 3 || line[3] == ' '))
                open.clear();
            continue;
        }
        if (!coded)
            continue;
        replies.push_back({std::stoi(line.substr(0, 3)), line});
        if (line.size() > 3 && line[3] == '-')
            open = line.substr(0, 3);
    }
    return replies;
}

} // namespace fw::desktop::sync
