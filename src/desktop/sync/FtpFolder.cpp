#include "desktop/sync/FtpFolder.h"

#include "desktop/sync/FtpConnection.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fw::desktop::sync {

namespace {

// Downloads resume this often after a dropped connection before giving up.
constexpr int kResumes = 3;
// Commands that go to the server in one call (MDTM, DELE walks).
constexpr std::size_t kBatch = 100;

std::string parentOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string baseOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string joined(const std::string& folder, const std::string& name)
{
    return folder.empty() ? name : folder + "/" + name;
}

// A command line ends at CR or LF, so such a name cannot be said over FTP.
bool sayable(const std::string& path, std::string& error)
{
    if (path.find_first_of("\r\n") == std::string::npos)
        return true;
    error = "Ein Name mit Zeilenumbruch lässt sich über FTP nicht übertragen.";
    return false;
}

// The name of a temporary beside name, short enough for any file system.
std::string temporaryBeside(const std::string& folder, const std::string& name, int n)
{
    const std::string stem = name.substr(0, 180);
    return joined(folder,
                  "." + stem + ".fwsync-" + std::to_string(::getpid()) + "-" + std::to_string(n));
}

// A name temporaryBeside gives: ".Name.fwsync-<process>-<count>".
bool isOurTemporary(std::string_view name)
{
    const std::size_t mark = name.rfind(".fwsync-");
    if (name.size() < 2 || name.front() != '.' || mark == std::string_view::npos || mark < 1)
        return false;
    const std::string_view numbers = name.substr(mark + 8);
    const std::size_t dash = numbers.find('-');
    const auto digits = [](std::string_view part) {
        return !part.empty() &&
               std::all_of(part.begin(), part.end(), [](char c) { return c >= '0' && c <= '9'; });
    };
    return dash != std::string_view::npos && digits(numbers.substr(0, dash)) &&
           digits(numbers.substr(dash + 1));
}

bool isRefusal(const FtpReply& reply)
{
    return reply.code >= 400;
}

std::string firstLine(const std::string& text)
{
    return text.substr(0, text.find('\n'));
}

// The time an MFMT reply says was set ("213 Modify=...; path").
std::optional<std::int64_t> timeSetBy(const FtpReply& reply)
{
    const std::string line = firstLine(reply.text);
    const std::string_view fact = "Modify=";
    if (reply.code != 213 || line.compare(4, fact.size(), fact) != 0)
        return std::nullopt;
    const std::size_t from = 4 + fact.size();
    return ParseFtpTime(std::string_view(line).substr(from, line.find(';') - from));
}

} // namespace

std::string ServerFolder(std::string path)
{
    if (path.empty() || path.front() != '/')
        path = "/" + path;
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

FtpFolder::FtpFolder(FtpAccount account, int timeoutSeconds)
    : m_account(std::move(account)),
      m_connection(std::make_unique<FtpConnection>(m_account, timeoutSeconds))
{
    m_account.path = ServerFolder(std::move(m_account.path));
}

FtpFolder::~FtpFolder() = default;

std::string FtpFolder::serverPath(const std::string& path) const
{
    if (path.empty())
        return m_account.path;
    return m_account.path == "/" ? "/" + path : m_account.path + "/" + path;
}

std::string FtpFolder::temporaryName(const std::string& path)
{
    return temporaryBeside(parentOf(path), baseOf(path), ++m_temporaries);
}

std::string FtpFolder::Describe() const
{
    return m_connection->Where() + m_account.path;
}

bool FtpFolder::commands(const std::vector<std::string>& lines, std::vector<FtpReply>& replies,
                         std::string& error)
{
    return m_connection->Commands(lines, replies, error);
}

bool FtpFolder::command(const std::string& line, FtpReply& reply, std::string& error)
{
    std::vector<FtpReply> replies;
    if (!commands({line}, replies, error))
        return false;
    reply = replies.front();
    return true;
}

bool FtpFolder::Command(const std::string& command, std::string& reply, std::string& error)
{
    if (!sayable(command, error))
        return false;
    FtpReply answer;
    if (!this->command(command, answer, error))
        return false;
    reply = answer.text;
    return true;
}

bool FtpFolder::features(std::string& error)
{
    if (m_features.known)
        return true;
    std::vector<FtpReply> replies;
    // UTF-8 names where the server has a choice; binary so that SIZE answers.
    if (!commands({"FEAT", "OPTS UTF8 ON", "TYPE I"}, replies, error))
        return false;
    m_features.known = true;
    if (isRefusal(replies[0]))
        return true; // no FEAT: LIST, MDTM and no MFMT
    for (std::string_view line : ListingLines(replies[0].text)) {
        while (!line.empty() && line.front() == ' ')
            line.remove_prefix(1);
        const std::string_view name = line.substr(0, line.find(' '));
        if (name == "MLST")
            m_features.mlsd = true;
        else if (name == "MFMT")
            m_features.mfmt = true;
    }
    return true;
}

bool FtpFolder::listFolder(
    const std::string& path, std::vector<SyncItem>& items, const SyncSignals& watch,
    std::string& error, const std::function<void(const std::string&, const std::string&)>& skipped)
{
    if (!sayable(path, error))
        return false;
    std::string text;
    if (!m_connection->Listing(serverPath(path), m_features.mlsd, text, watch, error))
        return false;
    const std::int64_t now = std::time(nullptr);
    for (std::string_view raw : ListingLines(text)) {
        const FtpLine line = m_features.mlsd ? ParseMlsdLine(raw) : ParseListLine(raw, now);
        if (line.kind == FtpLine::Unreadable && skipped)
            skipped(joined(path, std::string(raw.substr(raw.rfind(' ') + 1))), line.reason);
        if (line.kind == FtpLine::Link && skipped)
            skipped(joined(path, line.entry.name), std::string(SyncSkippedLink));
        if (line.kind != FtpLine::Entry)
            continue;
        const FtpEntry& e = line.entry;
        items.push_back({joined(path, e.name), e.folder, e.size, e.mtime});
    }
    return m_features.mlsd || fillTimes(items, error);
}

// LIST gives minutes at best, so each file's time comes from MDTM.
bool FtpFolder::fillTimes(std::vector<SyncItem>& items, std::string& error)
{
    std::vector<SyncItem*> files;
    for (SyncItem& item : items)
        if (!item.folder && sayable(item.path, error))
            files.push_back(&item);
    for (std::size_t from = 0; from < files.size(); from += kBatch) {
        const std::size_t to = std::min(files.size(), from + kBatch);
        std::vector<std::string> lines;
        for (std::size_t i = from; i < to; ++i)
            lines.push_back("MDTM " + serverPath(files[i]->path));
        std::vector<FtpReply> replies;
        if (!commands(lines, replies, error))
            return false;
        for (std::size_t i = from; i < to; ++i) {
            const FtpReply& reply = replies[i - from];
            if (reply.code == 213)
                if (auto t = ParseFtpTime(std::string_view(reply.text).substr(4)))
                    files[i]->mtime = *t;
        }
    }
    return true;
}

bool FtpFolder::List(
    SyncTree& tree, const SyncSignals& watch, std::string& error,
    const std::function<void(const std::string& path, const std::string& reason)>& skipped)
{
    tree.clear();
    if (!features(error))
        return false;
    std::vector<std::string> folders{""};
    std::vector<std::string> leftovers;
    for (std::size_t next = 0; next < folders.size(); ++next) {
        if (watch.Cancelled()) {
            error = "Abgebrochen.";
            return false;
        }
        std::vector<SyncItem> items;
        std::string why;
        if (!listFolder(folders[next], items, watch, why, skipped)) {
            if (next == 0) {
                error = why;
                return false;
            }
            if (skipped)
                skipped(folders[next], why);
            continue;
        }
        for (SyncItem& item : items) {
            if (item.folder)
                folders.push_back(item.path);
            if (!item.folder && isOurTemporary(baseOf(item.path)))
                leftovers.push_back("DELE " + serverPath(item.path));
            else
                tree.push_back(std::move(item));
        }
    }
    std::sort(tree.begin(), tree.end(),
              [](const SyncItem& a, const SyncItem& b) { return a.path < b.path; });
    // An upload cut off with the server (or the line) gone leaves its
    // temporary behind; it is never synchronised, and gone once seen again.
    std::string ignored;
    inBatches(leftovers, false, ignored);
    return true;
}

bool FtpFolder::MakeFolder(const std::string& path, std::string& error)
{
    return pathCommand("MKD", path, error);
}

bool FtpFolder::RemoveFile(const std::string& path, std::string& error)
{
    return pathCommand("DELE", path, error);
}

bool FtpFolder::pathCommand(const char* verb, const std::string& path, std::string& error)
{
    FtpReply reply;
    if (!sayable(path, error) || !command(verb + (" " + serverPath(path)), reply, error))
        return false;
    if (isRefusal(reply))
        error = "Der Server lehnt ab: " + firstLine(reply.text);
    return !isRefusal(reply);
}

bool FtpFolder::RemoveTree(const std::string& path, std::string& error)
{
    if (!sayable(path, error) || !features(error))
        return false;
    // Everything below first, the deepest first, then the folder itself.
    std::vector<SyncItem> below;
    std::vector<std::string> folders{path};
    for (std::size_t next = 0; next < folders.size(); ++next) {
        std::vector<SyncItem> items;
        if (!listFolder(folders[next], items, {}, error, {}))
            return false;
        for (const SyncItem& item : items)
            if (item.folder)
                folders.push_back(item.path);
        below.insert(below.end(), items.begin(), items.end());
    }
    std::sort(below.begin(), below.end(),
              [](const SyncItem& a, const SyncItem& b) { return a.path > b.path; });
    std::vector<std::string> lines;
    for (const SyncItem& item : below)
        lines.push_back((item.folder ? "RMD " : "DELE ") + serverPath(item.path));
    lines.push_back("RMD " + serverPath(path));
    return inBatches(lines, true, error);
}

bool FtpFolder::inBatches(const std::vector<std::string>& lines, bool refusalFails,
                          std::string& error)
{
    for (std::size_t from = 0; from < lines.size(); from += kBatch) {
        const std::vector<std::string> batch(
            lines.begin() + std::ptrdiff_t(from),
            lines.begin() + std::ptrdiff_t(std::min(lines.size(), from + kBatch)));
        std::vector<FtpReply> replies;
        if (!commands(batch, replies, error))
            return false;
        for (const FtpReply& reply : replies)
            if (refusalFails && isRefusal(reply)) {
                error = "Der Server lehnt ab: " + firstLine(reply.text);
                return false;
            }
    }
    return true;
}

// The upload's own call asks the size, sets the time and names the
// temporary with RNFR; the separate RNTO follows only once the size is seen
// to match. A wrong size cannot fail SIZE, so the rename must not ride in the
// same call; RNFR alone changes nothing on the server. A failed STOR ends the
// call before any of these are sent.
bool FtpFolder::upload(const std::string& source, const std::string& temporary, std::int64_t mtime,
                       const SyncSignals& watch, SyncItem& stored, std::string& error)
{
    struct stat info {};
    if (::stat(source.c_str(), &info) != 0) {
        error = "Die Datei lässt sich nicht lesen: " + std::string(std::strerror(errno));
        return false;
    }
    const bool setTime = mtime > 0 && m_features.mfmt;
    std::vector<std::string> after{"SIZE " + temporary};
    if (setTime)
        after.push_back("MFMT " + FormatFtpTime(mtime) + " " + temporary);
    after.push_back("RNFR " + temporary);
    std::vector<FtpReply> replies;
    if (!m_connection->Upload(source, temporary, after, replies, watch, error))
        return false;
    const FtpReply& size = replies.front();
    if (size.code != 213 || firstLine(size.text).substr(4) != std::to_string(info.st_size)) {
        error = "Auf dem Server kam nicht die ganze Datei an (" + firstLine(size.text) + ").";
        return false;
    }
    if (replies.back().code != 350) {
        error = "Der Server lehnt das Umbenennen ab: " + firstLine(replies.back().text);
        return false;
    }
    stored.size = info.st_size;
    // A refused MFMT leaves the server's own time, which Put then asks for.
    if (const auto set = setTime ? timeSetBy(replies[1]) : std::nullopt)
        stored.mtime = *set;
    return true;
}

// RNFR came with the upload. Some servers will not rename over a file: the
// old one then goes first, and the whole rename is said once more.
bool FtpFolder::renameMarked(const std::string& from, const std::string& to, std::string& error)
{
    std::vector<FtpReply> replies;
    if (!commands({"RNTO " + to}, replies, error))
        return false;
    if (!isRefusal(replies[0]))
        return true;
    if (!commands({"DELE " + to, "RNFR " + from, "RNTO " + to}, replies, error))
        return false;
    if (isRefusal(replies[1]) || isRefusal(replies[2])) {
        error = "Der Server lehnt das Umbenennen ab: " +
                firstLine((isRefusal(replies[1]) ? replies[1] : replies[2]).text);
        return false;
    }
    return true;
}

bool FtpFolder::Put(const std::string& source, const std::string& path, std::int64_t mtime,
                    const SyncSignals& watch, SyncItem& stored, std::string& error)
{
    if (!sayable(path, error) || !features(error))
        return false;
    const std::string temporary = serverPath(temporaryName(path));
    const std::string target = serverPath(path);
    SyncItem uploaded{path, false, -1, 0};
    if (upload(source, temporary, mtime, watch, uploaded, error) &&
        renameMarked(temporary, target, error)) {
        std::string ignored;
        if (uploaded.mtime != 0)
            stored = uploaded;
        else
            Stat(path, stored, ignored);
        return true;
    }
    FtpReply ignored;
    std::string alsoFailed;
    command("DELE " + temporary, ignored, alsoFailed);
    return false;
}

bool FtpFolder::Get(const SyncItem& expected, const std::string& target, const SyncSignals& watch,
                    std::string& error)
{
    if (!sayable(expected.path, error))
        return false;
    const std::string temporary =
        temporaryBeside(parentOf(target), baseOf(target), ++m_temporaries);
    std::FILE* file = std::fopen(temporary.c_str(), "wbx");
    if (!file) {
        error = "Die Datei lässt sich nicht anlegen: " + std::string(std::strerror(errno));
        return false;
    }
    std::int64_t have = 0;
    for (int attempt = 0; attempt <= kResumes; ++attempt) {
        std::fflush(file);
        have = std::int64_t(std::ftell(file));
        bool dropped = false;
        error.clear();
        const bool done = m_connection->Download(serverPath(expected.path), file, have,
                                                 expected.size, watch, error, dropped);
        std::fflush(file);
        have = std::int64_t(std::ftell(file));
        // A server that ends the transfer early without saying so is resumed too.
        if (have >= expected.size || watch.Cancelled() ||
            !(dropped || (done && have < expected.size)))
            break;
    }
    const bool synced = std::fflush(file) == 0 && ::fsync(fileno(file)) == 0;
    std::fclose(file);
    if (error.empty() && !synced)
        error = "Die Datei lässt sich nicht schreiben: " + std::string(std::strerror(errno));
    else if (error.empty() && have != expected.size)
        error = "Die Größe stimmt nicht: " + std::to_string(have) + " statt " +
                std::to_string(expected.size) + " Bytes.";
    if (error.empty() && expected.mtime > 0) {
        const timespec times[2] = {{0, UTIME_NOW}, {time_t(expected.mtime), 0}};
        ::utimensat(AT_FDCWD, temporary.c_str(), times, 0);
    }
    if (error.empty() && std::rename(temporary.c_str(), target.c_str()) != 0)
        error =
            "Die Datei lässt sich nicht an ihren Platz legen: " + std::string(std::strerror(errno));
    if (!error.empty()) {
        ::unlink(temporary.c_str());
        return false;
    }
    return true;
}

bool FtpFolder::Stat(const std::string& path, SyncItem& item, std::string& error)
{
    if (!sayable(path, error) || !features(error))
        return false;
    const std::string where = serverPath(path);
    if (m_features.mlsd) {
        FtpReply reply;
        if (!command("MLST " + where, reply, error))
            return false;
        // The facts stand on an indented line, followed by the whole path.
        for (std::string_view line : ListingLines(reply.text)) {
            if (line.empty() || line.front() != ' ')
                continue;
            line.remove_prefix(1);
            const std::string facts(line.substr(0, line.find(' ')));
            const FtpLine parsed = ParseMlsdLine(facts + " " + baseOf(path));
            if (parsed.kind == FtpLine::Entry) {
                item = {path, parsed.entry.folder, parsed.entry.size, parsed.entry.mtime};
                return true;
            }
        }
        error = isRefusal(reply) ? "Der Server lehnt ab: " + firstLine(reply.text)
                                 : "Der Server sagt nichts über „" + path + "“.";
        return false;
    }
    // A file answers SIZE (in binary mode, which a listing may have left) and
    // MDTM; anything else is looked for in its folder's listing.
    std::vector<FtpReply> replies;
    if (!commands({"TYPE I", "SIZE " + where, "MDTM " + where}, replies, error))
        return false;
    const std::string size = firstLine(replies[1].text);
    std::int64_t bytes = -1;
    if (replies[1].code == 213 && size.size() > 4)
        std::from_chars(size.data() + 4, size.data() + size.size(), bytes);
    if (bytes >= 0 && replies[2].code == 213) {
        const auto mtime = ParseFtpTime(firstLine(replies[2].text).substr(4));
        item = {path, false, bytes, mtime.value_or(0)};
        return true;
    }
    std::vector<SyncItem> items;
    if (!listFolder(parentOf(path), items, {}, error, {}))
        return false;
    for (const SyncItem& candidate : items)
        if (candidate.path == path) {
            item = candidate;
            return true;
        }
    error = "„" + path + "“ gibt es auf dem Server nicht.";
    return false;
}

} // namespace fw::desktop::sync
