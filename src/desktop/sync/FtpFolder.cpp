#include "desktop/sync/FtpFolder.h"

#include <curl/curl.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>

namespace fw::desktop::sync {

namespace {

// A listing beyond this is no folder but a server that never stops talking.
constexpr std::size_t kLongestListing = 256u << 20;
// Downloads resume this often after a dropped connection before giving up.
constexpr int kResumes = 3;
// Commands that go to the server in one call (MDTM, DELE walks).
constexpr std::size_t kBatch = 100;

void initialiseCurl()
{
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

std::string encodeUrlPath(std::string_view path)
{
    static const char hex[] = "0123456789ABCDEF";
    std::string out;
    for (unsigned char c : path) {
        if (std::isalnum(c) || c == '-' || c == '.' || c == '_' || c == '~' || c == '/') {
            out += char(c);
        } else {
            out += '%';
            out += hex[c >> 4];
            out += hex[c & 15];
        }
    }
    return out;
}

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

bool isRefusal(const FtpReply& reply)
{
    return reply.code >= 400;
}

std::string firstLine(const std::string& text)
{
    return text.substr(0, text.find('\n'));
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

// The easy handle and what its callbacks need. One handle for everything, so
// that libcurl keeps one connection for the whole run.
struct FtpFolder::Connection {
    CURL* handle = nullptr;
    std::vector<std::string> heard; ///< the server's reply lines of the last call
    /// The commands libcurl sent in the last call, each with the reply lines
    /// that followed it (a password stands as "PASS ***").
    std::vector<std::pair<std::string, std::vector<std::string>>> exchange;
    const SyncSignals* watch = nullptr; ///< of the call under way
    std::int64_t offset = 0;            ///< bytes of the transfer done before this call
    std::int64_t total = 0;
    char errorText[CURL_ERROR_SIZE] = {};

    Connection()
    {
        initialiseCurl();
        handle = curl_easy_init();
    }
    ~Connection() { curl_easy_cleanup(handle); }

    static std::size_t hear(char* data, std::size_t size, std::size_t n, void* self)
    {
        static_cast<Connection*>(self)->heard.emplace_back(data, size * n);
        return size * n;
    }

    static int trace(CURL*, curl_infotype kind, char* data, std::size_t size, void* self)
    {
        auto* c = static_cast<Connection*>(self);
        std::string text(data, size);
        while (!text.empty() && (text.back() == '\n' || text.back() == '\r'))
            text.pop_back();
        if (kind == CURLINFO_HEADER_OUT)
            c->exchange.push_back({text.rfind("PASS ", 0) == 0 ? "PASS ***" : text, {}});
        else if (kind == CURLINFO_HEADER_IN && !c->exchange.empty())
            c->exchange.back().second.push_back(text);
        return 0;
    }

    /// The reply to each of lines, found by what was sent: libcurl may send
    /// commands of its own before and after them (login, CWD).
    bool repliesTo(const std::vector<std::string>& lines, std::vector<FtpReply>& replies) const
    {
        replies.clear();
        auto at = exchange.begin();
        for (const std::string& line : lines) {
            at = std::find_if(at, exchange.end(), [&](const auto& e) { return e.first == line; });
            if (at == exchange.end())
                return false;
            const auto split = SplitReplies(at->second);
            if (split.empty())
                return false;
            replies.push_back(split.front());
            ++at;
        }
        return true;
    }

    static int progress(void* self, curl_off_t downTotal, curl_off_t downNow, curl_off_t upTotal,
                        curl_off_t upNow)
    {
        auto* c = static_cast<Connection*>(self);
        if (!c->watch)
            return 0;
        if (c->watch->Cancelled())
            return 1; // libcurl ends the call with CURLE_ABORTED_BY_CALLBACK
        if (c->watch->progress && (downNow || upNow)) {
            const std::int64_t now = c->offset + std::max(downNow, upNow);
            const std::int64_t total = c->total ? c->total : std::max(downTotal, upTotal);
            c->watch->progress(now, total);
        }
        return 0;
    }

    /// Fresh options for one call to url; the connection itself stays.
    void prepare(const FtpAccount& account, int timeoutSeconds, const std::string& url,
                 const SyncSignals* callSignals)
    {
        curl_easy_reset(handle);
        heard.clear();
        exchange.clear();
        watch = callSignals;
        offset = total = 0;
        errorText[0] = 0;
        curl_easy_setopt(handle, CURLOPT_URL, url.c_str());
        curl_easy_setopt(handle, CURLOPT_USERNAME, account.user.c_str());
        curl_easy_setopt(handle, CURLOPT_PASSWORD, account.password.c_str());
        curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT, long(timeoutSeconds));
        curl_easy_setopt(handle, CURLOPT_SERVER_RESPONSE_TIMEOUT, long(timeoutSeconds));
        curl_easy_setopt(handle, CURLOPT_FTP_USE_EPSV, 1L);
        // One absolute CWD per folder: the same on every server, whatever
        // folder an earlier call left the connection in.
        curl_easy_setopt(handle, CURLOPT_FTP_FILEMETHOD, long(CURLFTPMETHOD_SINGLECWD));
        curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, &Connection::hear);
        curl_easy_setopt(handle, CURLOPT_HEADERDATA, this);
        curl_easy_setopt(handle, CURLOPT_NOPROGRESS, 0L);
        curl_easy_setopt(handle, CURLOPT_XFERINFOFUNCTION, &Connection::progress);
        curl_easy_setopt(handle, CURLOPT_XFERINFODATA, this);
        curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, errorText);
        // The trace tells which reply answers which command.
        curl_easy_setopt(handle, CURLOPT_DEBUGFUNCTION, &Connection::trace);
        curl_easy_setopt(handle, CURLOPT_DEBUGDATA, this);
        curl_easy_setopt(handle, CURLOPT_VERBOSE, 1L);
    }

    /// For transfers: no byte for this long ends the call.
    void stallLimit(int timeoutSeconds)
    {
        curl_easy_setopt(handle, CURLOPT_LOW_SPEED_LIMIT, 1L);
        curl_easy_setopt(handle, CURLOPT_LOW_SPEED_TIME, long(timeoutSeconds));
    }

    /// The last refusal the server gave in this call, if any.
    std::string lastRefusal() const
    {
        const auto replies = SplitReplies(heard);
        for (auto it = replies.rbegin(); it != replies.rend(); ++it)
            if (isRefusal(*it))
                return firstLine(it->text);
        return {};
    }

    /// A failed call in words a user can act on; never the password.
    std::string describe(CURLcode code, const FtpAccount& account, int timeoutSeconds) const
    {
        const std::string where = account.host + ":" + std::to_string(account.port);
        const std::string refusal = lastRefusal();
        const std::string said = refusal.empty() ? "" : " (" + refusal + ")";
        switch (code) {
        case CURLE_LOGIN_DENIED:
            return "Der Server hat die Anmeldung als „" + account.user + "“ abgelehnt" + said + ".";
        case CURLE_COULDNT_CONNECT:
            return "Verbindung abgelehnt: auf " + where + " wartet kein Server.";
        case CURLE_COULDNT_RESOLVE_HOST:
            return "Rechner „" + account.host + "“ nicht gefunden.";
        case CURLE_OPERATION_TIMEDOUT:
            return where + " antwortet nicht: keine Antwort nach " +
                   std::to_string(timeoutSeconds) + " s.";
        case CURLE_ABORTED_BY_CALLBACK:
            return "Abgebrochen.";
        case CURLE_PARTIAL_FILE:
        case CURLE_RECV_ERROR:
        case CURLE_SEND_ERROR:
        case CURLE_GOT_NOTHING:
        case CURLE_FTP_WEIRD_SERVER_REPLY:
            return "Die Verbindung zu " + where + " ist abgerissen" + said + ".";
        default:
            break;
        }
        if (refusal.rfind("452", 0) == 0 || refusal.rfind("552", 0) == 0)
            return "Auf dem Server ist kein Platz mehr" + said + ".";
        if (!refusal.empty())
            return "Der Server lehnt ab: " + refusal;
        return std::string("FTP-Fehler: ") + (errorText[0] ? errorText : curl_easy_strerror(code));
    }
};

FtpFolder::FtpFolder(FtpAccount account, int timeoutSeconds)
    : m_account(std::move(account)), m_timeoutSeconds(std::max(1, timeoutSeconds)),
      m_connection(std::make_unique<Connection>())
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

namespace {
std::string hostUrl(const FtpAccount& account)
{
    const bool v6 = account.host.find(':') != std::string::npos;
    return "ftp://" + (v6 ? "[" + account.host + "]" : account.host) + ":" +
           std::to_string(account.port);
}

// "%2F" makes the path absolute rather than below the login folder.
std::string urlOf(const FtpAccount& account, const std::string& serverPath, bool folder)
{
    std::string url = hostUrl(account) + "/%2F" + encodeUrlPath(serverPath.substr(1));
    if (folder && url.back() != '/')
        url += '/';
    return url;
}
} // namespace

std::string FtpFolder::Describe() const
{
    return hostUrl(m_account).insert(6, m_account.user + "@") + m_account.path;
}

bool FtpFolder::commands(const std::vector<std::string>& lines, std::vector<FtpReply>& replies,
                         std::string& error)
{
    Connection& c = *m_connection;
    c.prepare(m_account, m_timeoutSeconds, hostUrl(m_account) + "/", nullptr);
    curl_slist* quote = nullptr;
    for (const std::string& line : lines)
        quote = curl_slist_append(quote, ("*" + line).c_str()); // "*": a refusal is an answer
    curl_easy_setopt(c.handle, CURLOPT_QUOTE, quote);
    curl_easy_setopt(c.handle, CURLOPT_NOBODY, 1L);
    curl_easy_setopt(c.handle, CURLOPT_TIMEOUT,
                     long(m_timeoutSeconds) * long(1 + lines.size() / 20));
    const CURLcode code = curl_easy_perform(c.handle);
    curl_slist_free_all(quote);
    if (code != CURLE_OK) {
        error = c.describe(code, m_account, m_timeoutSeconds);
        return false;
    }
    if (!c.repliesTo(lines, replies)) {
        error = "Der Server hat nicht auf jeden Befehl geantwortet.";
        return false;
    }
    return true;
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
    Connection& c = *m_connection;
    std::string text;
    c.prepare(m_account, m_timeoutSeconds, urlOf(m_account, serverPath(path), true), &watch);
    c.stallLimit(m_timeoutSeconds);
    if (m_features.mlsd)
        curl_easy_setopt(c.handle, CURLOPT_CUSTOMREQUEST, "MLSD");
    using Sink = std::string;
    curl_easy_setopt(c.handle, CURLOPT_WRITEDATA, &text);
    curl_easy_setopt(
        c.handle, CURLOPT_WRITEFUNCTION,
        +[](char* data, std::size_t size, std::size_t n, void* sink) -> std::size_t {
            auto* out = static_cast<Sink*>(sink);
            if (out->size() + size * n > kLongestListing)
                return 0;
            out->append(data, size * n);
            return size * n;
        });
    const CURLcode code = curl_easy_perform(c.handle);
    if (code != CURLE_OK) {
        error = code == CURLE_WRITE_ERROR ? "Die Liste des Servers ist zu lang."
                                          : c.describe(code, m_account, m_timeoutSeconds);
        return false;
    }
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
            tree.push_back(std::move(item));
        }
    }
    std::sort(tree.begin(), tree.end(),
              [](const SyncItem& a, const SyncItem& b) { return a.path < b.path; });
    return true;
}

bool FtpFolder::MakeFolder(const std::string& path, std::string& error)
{
    FtpReply reply;
    if (!sayable(path, error) || !command("MKD " + serverPath(path), reply, error))
        return false;
    if (isRefusal(reply))
        error = "Der Server lehnt ab: " + firstLine(reply.text);
    return !isRefusal(reply);
}

bool FtpFolder::RemoveFile(const std::string& path, std::string& error)
{
    FtpReply reply;
    if (!sayable(path, error) || !command("DELE " + serverPath(path), reply, error))
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
    for (std::size_t from = 0; from < lines.size(); from += kBatch) {
        const std::vector<std::string> batch(
            lines.begin() + std::ptrdiff_t(from),
            lines.begin() + std::ptrdiff_t(std::min(lines.size(), from + kBatch)));
        std::vector<FtpReply> replies;
        if (!commands(batch, replies, error))
            return false;
        for (const FtpReply& reply : replies)
            if (isRefusal(reply)) {
                error = "Der Server lehnt ab: " + firstLine(reply.text);
                return false;
            }
    }
    return true;
}

bool FtpFolder::upload(const std::string& source, const std::string& serverPath,
                       const SyncSignals& watch, std::string& error)
{
    std::FILE* file = std::fopen(source.c_str(), "rb");
    struct stat info {};
    if (!file || ::fstat(fileno(file), &info) != 0) {
        error = "Die Datei lässt sich nicht lesen: " + std::string(std::strerror(errno));
        if (file)
            std::fclose(file);
        return false;
    }
    Connection& c = *m_connection;
    c.prepare(m_account, m_timeoutSeconds, urlOf(m_account, serverPath, false), &watch);
    c.stallLimit(m_timeoutSeconds);
    c.total = info.st_size;
    curl_easy_setopt(c.handle, CURLOPT_UPLOAD, 1L);
    curl_easy_setopt(c.handle, CURLOPT_INFILESIZE_LARGE, curl_off_t(info.st_size));
    curl_easy_setopt(c.handle, CURLOPT_READDATA, file); // read with fread, libcurl's default
    const CURLcode code = curl_easy_perform(c.handle);
    std::fclose(file);
    if (code != CURLE_OK) {
        error = c.describe(code, m_account, m_timeoutSeconds);
        return false;
    }
    FtpReply size;
    if (!command("SIZE " + serverPath, size, error))
        return false;
    if (size.code != 213 || firstLine(size.text).substr(4) != std::to_string(info.st_size)) {
        error = "Auf dem Server kam nicht die ganze Datei an (" + firstLine(size.text) + ").";
        return false;
    }
    return true;
}

bool FtpFolder::rename(const std::string& from, const std::string& to, std::string& error)
{
    std::vector<FtpReply> replies;
    if (!commands({"RNFR " + from, "RNTO " + to}, replies, error))
        return false;
    if (!isRefusal(replies[0]) && !isRefusal(replies[1]))
        return true;
    // Some servers will not rename over a file: the old one goes first.
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
                    const SyncSignals& watch, std::string& error)
{
    if (!sayable(path, error) || !features(error))
        return false;
    const std::string temporary = serverPath(temporaryName(path));
    const std::string target = serverPath(path);
    if (!upload(source, temporary, watch, error) || !rename(temporary, target, error)) {
        FtpReply ignored;
        std::string alsoFailed;
        command("DELE " + temporary, ignored, alsoFailed);
        return false;
    }
    if (mtime > 0 && m_features.mfmt) {
        // A refusal leaves the server's time, which Stat then tells.
        FtpReply ignored;
        command("MFMT " + FormatFtpTime(mtime) + " " + target, ignored, error);
    }
    error.clear();
    return true;
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
    Connection& c = *m_connection;
    CURLcode code = CURLE_OK;
    std::int64_t have = 0;
    for (int attempt = 0; attempt <= kResumes; ++attempt) {
        std::fflush(file);
        have = std::int64_t(std::ftell(file));
        c.prepare(m_account, m_timeoutSeconds, urlOf(m_account, serverPath(expected.path), false),
                  &watch);
        c.stallLimit(m_timeoutSeconds);
        c.offset = have;
        c.total = expected.size;
        curl_easy_setopt(c.handle, CURLOPT_RESUME_FROM_LARGE, curl_off_t(have));
        curl_easy_setopt(c.handle, CURLOPT_WRITEDATA, file); // written with fwrite, the default
        code = curl_easy_perform(c.handle);
        std::fflush(file);
        have = std::int64_t(std::ftell(file));
        const bool dropped =
            code == CURLE_PARTIAL_FILE || code == CURLE_RECV_ERROR || code == CURLE_SEND_ERROR ||
            code == CURLE_GOT_NOTHING || code == CURLE_OPERATION_TIMEDOUT ||
            code == CURLE_FTP_WEIRD_SERVER_REPLY || (code == CURLE_OK && have < expected.size);
        if (!dropped || watch.Cancelled() || have >= expected.size)
            break;
    }
    const bool synced = std::fflush(file) == 0 && ::fsync(fileno(file)) == 0;
    std::fclose(file);
    if (code != CURLE_OK)
        error = c.describe(code, m_account, m_timeoutSeconds);
    else if (!synced)
        error = "Die Datei lässt sich nicht schreiben: " + std::string(std::strerror(errno));
    else if (have != expected.size)
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
