#include "desktop/sync/FtpConnection.h"

#include <curl/curl.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <mutex>
#include <sys/select.h>
#include <sys/stat.h>

namespace fw::desktop::sync {

namespace {

// A listing beyond this is no folder but a server that never stops talking.
constexpr std::size_t kLongestListing = 256u << 20;

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

// Commands for libcurl to send as they are; "*": a refusal is an answer, not
// a failure of the call.
curl_slist* quoted(const std::vector<std::string>& lines)
{
    curl_slist* list = nullptr;
    for (const std::string& line : lines)
        list = curl_slist_append(list, ("*" + line).c_str());
    return list;
}

std::size_t appendListing(char* data, std::size_t size, std::size_t n, void* sink)
{
    auto* out = static_cast<std::string*>(sink);
    if (out->size() + size * n > kLongestListing)
        return 0;
    out->append(data, size * n);
    return size * n;
}

} // namespace

// The handle and what its callbacks need for the call under way.
struct FtpConnection::Handle {
    CURL* curl = nullptr;
    /// The commands libcurl sent in this call, each with the reply lines that
    /// followed it (a password stands as "PASS ***").
    std::vector<std::pair<std::string, std::vector<std::string>>> exchange;
    const SyncSignals* watch = nullptr;
    std::int64_t offset = 0; ///< bytes of the transfer done before this call
    std::int64_t total = 0;
    std::chrono::seconds stallLimit{0}; ///< 0: no limit (calls without a transfer)
    std::chrono::steady_clock::time_point lastMove;
    curl_off_t movedBefore = -1;
    bool stalled = false;
    char errorText[CURL_ERROR_SIZE] = {};

    /// Holds the kept connection between calls.
    CURLM* multi = nullptr;

    Handle()
    {
        initialiseCurl();
        curl = curl_easy_init();
        multi = curl_multi_init();
    }
    ~Handle()
    {
        curl_easy_cleanup(curl);
        curl_multi_cleanup(multi);
    }

    /// One call, as curl_easy_perform would make it. Debian's libcurl 7.88
    /// sometimes has no socket to wait on right after a passive-mode reply
    /// that arrived at once, and its own loop then sleeps a full second
    /// before it opens the data connection: half the uploads of small files
    /// to a loopback server waited so. Here such a pause lasts a millisecond.
    CURLcode performOnMulti()
    {
        if (curl_multi_add_handle(multi, curl) != CURLM_OK)
            return CURLE_FAILED_INIT;
        int running = 1;
        CURLMcode status = curl_multi_perform(multi, &running);
        while (status == CURLM_OK && running > 0) {
            fd_set read, write, except;
            FD_ZERO(&read);
            FD_ZERO(&write);
            FD_ZERO(&except);
            int highest = -1;
            curl_multi_fdset(multi, &read, &write, &except, &highest);
            // libcurl shortens the wait to its own timers.
            status = curl_multi_poll(multi, nullptr, 0, highest < 0 ? 1 : 1000, nullptr);
            if (status == CURLM_OK)
                status = curl_multi_perform(multi, &running);
        }
        CURLcode result = status == CURLM_OK ? CURLE_OK : CURLE_OUT_OF_MEMORY;
        int left = 0;
        while (const CURLMsg* message = curl_multi_info_read(multi, &left))
            if (message->msg == CURLMSG_DONE && message->easy_handle == curl)
                result = message->data.result;
        curl_multi_remove_handle(multi, curl);
        return result;
    }

    static int trace(CURL*, curl_infotype kind, char* data, std::size_t size, void* self)
    {
        auto* h = static_cast<Handle*>(self);
        if (kind != CURLINFO_HEADER_OUT && kind != CURLINFO_HEADER_IN)
            return 0;
        for (std::string_view line : ListingLines(std::string_view(data, size))) {
            if (kind == CURLINFO_HEADER_OUT)
                h->exchange.push_back(
                    {line.substr(0, 5) == "PASS " ? "PASS ***" : std::string(line), {}});
            else if (!h->exchange.empty())
                h->exchange.back().second.emplace_back(line);
        }
        return 0;
    }

    static int progress(void* self, curl_off_t downTotal, curl_off_t downNow, curl_off_t upTotal,
                        curl_off_t upNow)
    {
        auto* h = static_cast<Handle*>(self);
        if (h->stalledAfter(downNow + upNow))
            return 1; // libcurl ends the call with CURLE_ABORTED_BY_CALLBACK
        if (!h->watch)
            return 0;
        if (h->watch->Cancelled())
            return 1;
        if (h->watch->progress && (downNow || upNow)) {
            const std::int64_t now = h->offset + std::max(downNow, upNow);
            const std::int64_t total = h->total ? h->total : std::max(downTotal, upTotal);
            h->watch->progress(now, total);
        }
        return 0;
    }

    // libcurl's own low-speed check averages over several seconds, so a
    // transfer that stops dead would run on well past the limit.
    bool stalledAfter(curl_off_t moved)
    {
        const auto now = std::chrono::steady_clock::now();
        if (moved != movedBefore || stallLimit.count() == 0) {
            movedBefore = moved;
            lastMove = now;
            return false;
        }
        stalled = now - lastMove > stallLimit;
        return stalled;
    }

    /// Runs the call; a transfer given up for standing still counts as a
    /// timeout, not as the user's cancel.
    CURLcode perform()
    {
        lastMove = std::chrono::steady_clock::now();
        const CURLcode code = performOnMulti();
        return code == CURLE_ABORTED_BY_CALLBACK && stalled ? CURLE_OPERATION_TIMEDOUT : code;
    }

    /// Fresh options for one call to url; the connection itself stays.
    void prepare(const FtpAccount& account, int timeoutSeconds, const std::string& url,
                 const SyncSignals* callWatch)
    {
        curl_easy_reset(curl);
        exchange.clear();
        watch = callWatch;
        offset = total = 0;
        stallLimit = std::chrono::seconds(0);
        movedBefore = -1;
        stalled = false;
        errorText[0] = 0;
        curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
        curl_easy_setopt(curl, CURLOPT_USERNAME, account.user.c_str());
        curl_easy_setopt(curl, CURLOPT_PASSWORD, account.password.c_str());
        curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, long(timeoutSeconds));
        curl_easy_setopt(curl, CURLOPT_SERVER_RESPONSE_TIMEOUT, long(timeoutSeconds));
        curl_easy_setopt(curl, CURLOPT_FTP_USE_EPSV, 1L);
        // One absolute CWD per folder: the same on every server, whatever
        // folder an earlier call left the connection in.
        curl_easy_setopt(curl, CURLOPT_FTP_FILEMETHOD, long(CURLFTPMETHOD_SINGLECWD));
        curl_easy_setopt(curl, CURLOPT_NOPROGRESS, 0L);
        curl_easy_setopt(curl, CURLOPT_XFERINFOFUNCTION, &Handle::progress);
        curl_easy_setopt(curl, CURLOPT_XFERINFODATA, this);
        curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, errorText);
        // The trace tells which reply answers which command.
        curl_easy_setopt(curl, CURLOPT_DEBUGFUNCTION, &Handle::trace);
        curl_easy_setopt(curl, CURLOPT_DEBUGDATA, this);
        curl_easy_setopt(curl, CURLOPT_VERBOSE, 1L);
    }

    /// For transfers: no byte for this long ends the call.
    void limitStalls(int timeoutSeconds) { stallLimit = std::chrono::seconds(timeoutSeconds); }

    /// The reply to each of lines, found by what was sent: libcurl sends
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

    /// The first line of the last refusal the server gave in this call.
    std::string lastRefusal() const
    {
        for (auto it = exchange.rbegin(); it != exchange.rend(); ++it) {
            const auto replies = SplitReplies(it->second);
            for (auto r = replies.rbegin(); r != replies.rend(); ++r)
                if (r->code >= 400)
                    return r->text.substr(0, r->text.find('\n'));
        }
        return {};
    }

    /// A failed call in words a user can act on.
    std::string describe(CURLcode code, const FtpAccount& account, int timeoutSeconds) const
    {
        const std::string where = account.host + ":" + std::to_string(account.port);
        const std::string refusal = lastRefusal();
        // The server's own full stop would stand before the sentence's.
        const std::string quoted = !refusal.empty() && refusal.back() == '.'
                                       ? refusal.substr(0, refusal.size() - 1)
                                       : refusal;
        const std::string said = refusal.empty() ? "" : " (" + quoted + ")";
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

FtpConnection::FtpConnection(FtpAccount account, int timeoutSeconds)
    : m_account(std::move(account)), m_timeoutSeconds(std::max(1, timeoutSeconds)),
      m_handle(std::make_unique<Handle>())
{
}

FtpConnection::~FtpConnection() = default;

std::string FtpConnection::Where() const
{
    return hostUrl(m_account).insert(6, m_account.user + "@");
}

bool FtpConnection::Commands(const std::vector<std::string>& lines, std::vector<FtpReply>& replies,
                             std::string& error)
{
    Handle& h = *m_handle;
    h.prepare(m_account, m_timeoutSeconds, hostUrl(m_account) + "/", nullptr);
    curl_slist* quote = quoted(lines);
    curl_easy_setopt(h.curl, CURLOPT_QUOTE, quote);
    curl_easy_setopt(h.curl, CURLOPT_NOBODY, 1L);
    // No change of folder after the commands: it would cost a round trip,
    // and the commands name absolute paths anyway.
    curl_easy_setopt(h.curl, CURLOPT_FTP_FILEMETHOD, long(CURLFTPMETHOD_NOCWD));
    curl_easy_setopt(h.curl, CURLOPT_TIMEOUT, long(m_timeoutSeconds) * long(1 + lines.size() / 20));
    const CURLcode code = h.perform();
    curl_slist_free_all(quote);
    if (code != CURLE_OK) {
        error = h.describe(code, m_account, m_timeoutSeconds);
        return false;
    }
    if (!h.repliesTo(lines, replies)) {
        error = "Der Server hat nicht auf jeden Befehl geantwortet.";
        return false;
    }
    return true;
}

bool FtpConnection::Listing(const std::string& folder, bool mlsd, std::string& text,
                            const SyncSignals& watch, std::string& error)
{
    Handle& h = *m_handle;
    h.prepare(m_account, m_timeoutSeconds, urlOf(m_account, folder, true), &watch);
    h.limitStalls(m_timeoutSeconds);
    if (mlsd)
        curl_easy_setopt(h.curl, CURLOPT_CUSTOMREQUEST, "MLSD");
    curl_easy_setopt(h.curl, CURLOPT_WRITEDATA, &text);
    curl_easy_setopt(h.curl, CURLOPT_WRITEFUNCTION, &appendListing);
    const CURLcode code = h.perform();
    if (code == CURLE_OK)
        return true;
    error = code == CURLE_WRITE_ERROR ? "Die Liste des Servers ist zu lang."
                                      : h.describe(code, m_account, m_timeoutSeconds);
    return false;
}

bool FtpConnection::Upload(const std::string& source, const std::string& serverPath,
                           const std::vector<std::string>& after, std::vector<FtpReply>& replies,
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
    Handle& h = *m_handle;
    h.prepare(m_account, m_timeoutSeconds, urlOf(m_account, serverPath, false), &watch);
    h.limitStalls(m_timeoutSeconds);
    h.total = info.st_size;
    curl_easy_setopt(h.curl, CURLOPT_UPLOAD, 1L);
    curl_easy_setopt(h.curl, CURLOPT_INFILESIZE_LARGE, curl_off_t(info.st_size));
    curl_easy_setopt(h.curl, CURLOPT_READDATA, file); // read with fread, libcurl's default
    // STOR with the whole path, as the commands around it name theirs: a CWD
    // there and back again per file cost two of an upload's nine round trips.
    curl_easy_setopt(h.curl, CURLOPT_FTP_FILEMETHOD, long(CURLFTPMETHOD_NOCWD));
    curl_slist* postquote = quoted(after);
    curl_easy_setopt(h.curl, CURLOPT_POSTQUOTE, postquote);
    const CURLcode code = h.perform();
    curl_slist_free_all(postquote);
    std::fclose(file);
    if (code != CURLE_OK) {
        error = h.describe(code, m_account, m_timeoutSeconds);
        return false;
    }
    if (!h.repliesTo(after, replies)) {
        error = "Der Server hat nicht auf jeden Befehl geantwortet.";
        return false;
    }
    return true;
}

bool FtpConnection::Download(const std::string& serverPath, std::FILE* file, std::int64_t offset,
                             std::int64_t total, const SyncSignals& watch, std::string& error,
                             bool& dropped)
{
    Handle& h = *m_handle;
    h.prepare(m_account, m_timeoutSeconds, urlOf(m_account, serverPath, false), &watch);
    h.limitStalls(m_timeoutSeconds);
    h.offset = offset;
    h.total = total;
    curl_easy_setopt(h.curl, CURLOPT_RESUME_FROM_LARGE, curl_off_t(offset));
    curl_easy_setopt(h.curl, CURLOPT_WRITEDATA, file); // written with fwrite, the default
    const CURLcode code = h.perform();
    dropped = code == CURLE_PARTIAL_FILE || code == CURLE_RECV_ERROR || code == CURLE_SEND_ERROR ||
              code == CURLE_GOT_NOTHING || code == CURLE_OPERATION_TIMEDOUT ||
              code == CURLE_FTP_WEIRD_SERVER_REPLY;
    if (code == CURLE_OK)
        return true;
    error = h.describe(code, m_account, m_timeoutSeconds);
    return false;
}

} // namespace fw::desktop::sync
