#include "desktop/SmbClient.h"

#include "desktop/SmbUrls.h"

#include <QDir>
#include <QFile>
#include <condition_variable>
#include <cstring>
#include <fstream>
#include <functional>
#include <libsmbclient.h>
#include <map>
#include <mutex>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace fw::desktop {

namespace {

constexpr std::uint16_t kHiddenAttribute = 0x02;
constexpr std::uint16_t kFolderAttribute = 0x10;
constexpr std::uint16_t kLinkAttribute = 0x400; // a reparse point

struct Credentials {
    std::string user, password, domain;
};

// The credentials file as mount.cifs reads it; long and short keys alike.
Credentials readCredentialsFile(const std::string& path)
{
    Credentials found;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        const auto equals = line.find('=');
        if (equals == std::string::npos)
            continue;
        const std::string key = line.substr(0, equals);
        const std::string value = line.substr(equals + 1);
        if (key == "username" || key == "user")
            found.user = value;
        else if (key == "password" || key == "pass")
            found.password = value;
        else if (key == "domain" || key == "dom")
            found.domain = value;
    }
    return found;
}

bool hasKerberosTicketCache()
{
    if (const char* cache = std::getenv("KRB5CCNAME"); cache && *cache)
        return true;
    struct stat info {};
    return stat(("/tmp/krb5cc_" + std::to_string(getuid())).c_str(), &info) == 0;
}

void copyInto(char* buffer, int size, const std::string& text)
{
    if (size > 0)
        std::snprintf(buffer, std::size_t(size), "%s", text.c_str());
}

void provideCredentials(SMBCCTX* context, const char*, const char*, char* workgroup,
                        int workgroupSize, char* user, int userSize, char* password,
                        int passwordSize)
{
    const auto* file = static_cast<const std::string*>(smbc_getOptionUserData(context));
    // An empty user lets libsmbclient fall back to an anonymous (guest) login.
    const Credentials credentials = file ? readCredentialsFile(*file) : Credentials{};
    copyInto(user, userSize, credentials.user);
    copyInto(password, passwordSize, credentials.password);
    if (!credentials.domain.empty())
        copyInto(workgroup, workgroupSize, credentials.domain);
}

std::string errorText(int error)
{
    return std::strerror(error != 0 ? error : EIO);
}

// libsmbclient keeps its scratch memory in one process-wide stack unless it
// is built with thread support, which Debian's is not: one call at a time,
// whichever session makes it. A session abandoned in a call that hangs keeps
// the others waiting until that call gives up, and their callers give up
// after their own time-out meanwhile.
std::mutex& libraryMutex()
{
    static std::mutex mutex;
    return mutex;
}

// One libsmbclient context and the thread that uses it. A context is not
// safe across threads, and a call can block in name lookup or connect far
// beyond the context's own timeout; so the context lives on its own thread,
// and a caller that stops waiting abandons the session, which then frees the
// context once its stuck call returns.
class Session {
  public:
    using Job = std::function<void(SMBCCTX*)>;

    static std::shared_ptr<Session> Start(const SmbOptions& options, std::string credentialsFile)
    {
        auto session = std::make_shared<Session>();
        session->m_thread = std::thread([session, options, file = std::move(credentialsFile)] {
            session->serve(options, file);
        });
        return session;
    }

    /// Runs job on the session's thread; false if it did not end within timeoutMs.
    bool Run(Job job, int timeoutMs)
    {
        auto done = std::make_shared<bool>(false);
        std::unique_lock lock(m_mutex);
        m_job = [job = std::move(job), done, this](SMBCCTX* context) {
            job(context);
            std::lock_guard guard(m_mutex);
            *done = true;
            m_finished.notify_all();
        };
        m_wake.notify_all();
        return m_finished.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                                   [&] { return *done; });
    }

    /// Ends the thread: at once when idle, after its call when abandoned.
    void Stop(bool wait)
    {
        {
            std::lock_guard guard(m_mutex);
            m_quit = true;
            m_wake.notify_all();
        }
        if (wait)
            m_thread.join();
        else
            m_thread.detach();
    }

  private:
    void serve(const SmbOptions& options, const std::string& credentialsFile)
    {
        std::unique_lock library(libraryMutex());
        SMBCCTX* context = smbc_new_context();
        if (context) {
            smbc_setDebug(context, 0);
            smbc_setTimeout(context, options.timeoutMs);
            if (options.defaultPort > 0)
                smbc_setPort(context, std::uint16_t(options.defaultPort));
            smbc_setOptionUserData(context, const_cast<std::string*>(&credentialsFile));
            smbc_setFunctionAuthDataWithContext(context, provideCredentials);
            const bool kerberos = hasKerberosTicketCache();
            smbc_setOptionUseKerberos(context, kerberos);
            smbc_setOptionFallbackAfterKerberos(context, kerberos);
            smbc_setOptionUseCCache(context, kerberos);
            if (!smbc_init_context(context)) {
                smbc_free_context(context, 1);
                context = nullptr;
            }
        }
        library.unlock();
        std::unique_lock lock(m_mutex);
        while (true) {
            m_wake.wait(lock, [&] { return m_quit || m_job; });
            if (!m_job)
                break;
            Job job = std::move(m_job);
            m_job = nullptr;
            lock.unlock();
            library.lock();
            // A call given up while it waited for the library is not made:
            // stuck calls would otherwise pile up behind one silent host.
            if (!abandoned())
                job(context);
            library.unlock();
            lock.lock();
        }
        lock.unlock();
        library.lock();
        if (context)
            smbc_free_context(context, 1);
    }

    bool abandoned()
    {
        std::lock_guard guard(m_mutex);
        return m_quit;
    }

    std::mutex m_mutex;
    std::condition_variable m_wake, m_finished;
    Job m_job;
    bool m_quit = false;
    std::thread m_thread;
};

// The entries a listing holds besides the folder's own: "." and "..".
bool isNavigationEntry(const char* name)
{
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

std::string childUrl(const std::string& folderUrl, const std::string& name)
{
    return folderUrl + (folderUrl.ends_with('/') ? "" : "/") + SmbUrlName(name);
}

// errno of the last libsmbclient call, never 0 for a failure.
int failure()
{
    return errno != 0 ? errno : EIO;
}

int listFolder(SMBCCTX* context, const std::string& url, std::vector<SmbEntry>& entries)
{
    SMBCFILE* folder = smbc_getFunctionOpendir(context)(context, url.c_str());
    if (!folder)
        return failure();
    // The file information of the one listing pass has all an entry needs;
    // readdirplus2 would add a stat record per entry, parsing the folder's
    // URL again each time (a third of the time of 10,000 entries).
    const auto next = smbc_getFunctionReaddirPlus(context);
    // The end of the listing leaves errno as the last inner call set it.
    for (errno = 0; const libsmb_file_info* entry = next(context, folder); errno = 0) {
        if (!entry->name || isNavigationEntry(entry->name))
            continue;
        SmbEntry& out = entries.emplace_back();
        out.name = entry->name;
        out.folder = (entry->attrs & kFolderAttribute) != 0;
        out.hidden = (entry->attrs & kHiddenAttribute) != 0 || out.name.starts_with('.');
        out.link = (entry->attrs & kLinkAttribute) != 0;
        out.size = std::int64_t(entry->size);
        out.modifiedSecs = entry->mtime_ts.tv_sec;
    }
    const int error = errno;
    smbc_getFunctionClosedir(context)(context, folder);
    return error;
}

int removeEntry(SMBCCTX* context, const std::string& url, const SmbEntry& entry);

int removeTree(SMBCCTX* context, const std::string& url)
{
    std::vector<SmbEntry> entries;
    if (const int error = listFolder(context, url, entries))
        return error;
    for (const SmbEntry& entry : entries)
        if (const int error = removeEntry(context, childUrl(url, entry.name), entry))
            return error;
    return smbc_getFunctionRmdir(context)(context, url.c_str()) ? failure() : 0;
}

// A link to a folder goes as a folder does, by rmdir, but without its content.
int removeEntry(SMBCCTX* context, const std::string& url, const SmbEntry& entry)
{
    if (entry.folder && !entry.link)
        return removeTree(context, url);
    const auto remove =
        entry.folder ? smbc_getFunctionRmdir(context) : smbc_getFunctionUnlink(context);
    return remove(context, url.c_str()) ? failure() : 0;
}

ShareInfo::Kind shareKind(unsigned type)
{
    switch (type) {
    case SMBC_PRINTER_SHARE:
        return ShareInfo::Printer;
    case SMBC_COMMS_SHARE:
        return ShareInfo::Device;
    case SMBC_IPC_SHARE:
        return ShareInfo::Ipc;
    default:
        return ShareInfo::Disk;
    }
}

// The names a browse listing ("smb://", "smb://group/") holds of one type.
int namesOf(SMBCCTX* context, const std::string& url, unsigned type,
            std::vector<std::string>& names)
{
    SMBCFILE* folder = smbc_getFunctionOpendir(context)(context, url.c_str());
    if (!folder)
        return failure();
    while (const smbc_dirent* entry = smbc_getFunctionReaddir(context)(context, folder))
        if (entry->smbc_type == type)
            names.emplace_back(entry->name);
    smbc_getFunctionClosedir(context)(context, folder);
    return 0;
}

} // namespace

struct SmbClient::Impl {
    SmbOptions options;
    std::shared_ptr<Session> session;
    std::string lastError;

    std::string credentialsFile() const
    {
        if (!options.credentialsFile.empty())
            return options.credentialsFile;
        return QFile::encodeName(QDir::homePath()).toStdString() + "/.smbcredentials";
    }

    // Runs work against the context within the timeout; work returns the
    // errno of a failure, 0 on success.
    bool call(const std::function<int(SMBCCTX*)>& work)
    {
        if (!session)
            session = Session::Start(options, credentialsFile());
        auto error = std::make_shared<int>(EIO);
        const bool ended = session->Run(
            [work, error](SMBCCTX* context) { *error = context ? work(context) : ENOMEM; },
            options.timeoutMs);
        if (!ended) {
            session->Stop(false);
            session.reset();
            lastError = errorText(ETIMEDOUT);
            return false;
        }
        lastError = *error == 0 ? std::string() : errorText(*error);
        return *error == 0;
    }

    // Browse lists change slowly (a browse master announces every few
    // minutes), and asking where there is none costs the better part of a
    // second of broadcast name lookups: each answer, none included, is kept
    // a minute.
    std::vector<std::string> browse(const std::string& url, unsigned type)
    {
        const auto now = std::chrono::steady_clock::now();
        const auto kept = browsed.find(url);
        if (kept != browsed.end() && now - kept->second.first < std::chrono::minutes(1))
            return kept->second.second;
        auto names = std::make_shared<std::vector<std::string>>();
        call([names, url, type](SMBCCTX* c) { return namesOf(c, url, type, *names); });
        browsed[url] = {now, *names};
        return *names;
    }

    std::map<std::string,
             std::pair<std::chrono::steady_clock::time_point, std::vector<std::string>>>
        browsed;

    ~Impl()
    {
        if (session)
            session->Stop(true);
    }
};

SmbClient::SmbClient(SmbOptions options) : m_impl(std::make_unique<Impl>())
{
    m_impl->options = std::move(options);
}

SmbClient::~SmbClient() = default;

const SmbOptions& SmbClient::Options() const
{
    return m_impl->options;
}

std::optional<std::vector<SmbEntry>> SmbClient::ListFolder(const std::string& url)
{
    auto entries = std::make_shared<std::vector<SmbEntry>>();
    if (!m_impl->call([url, entries](SMBCCTX* c) { return listFolder(c, url, *entries); }))
        return std::nullopt;
    return std::move(*entries);
}

std::optional<ShareList> SmbClient::ListShares(const std::string& hostUrl)
{
    auto shares = std::make_shared<ShareList>();
    const bool listed = m_impl->call([hostUrl, shares](SMBCCTX* c) {
        SMBCFILE* host = smbc_getFunctionOpendir(c)(c, hostUrl.c_str());
        if (!host)
            return failure();
        while (const smbc_dirent* entry = smbc_getFunctionReaddir(c)(c, host)) {
            if (entry->smbc_type < SMBC_FILE_SHARE || entry->smbc_type > SMBC_IPC_SHARE)
                continue;
            const std::string comment = entry->comment ? entry->comment : "";
            shares->Add({entry->name, shareKind(entry->smbc_type),
                         StringList{comment.empty() ? std::string(entry->name) : comment}});
        }
        smbc_getFunctionClosedir(c)(c, host);
        return 0;
    });
    if (!listed)
        return std::nullopt;
    return std::move(*shares);
}

std::vector<std::string> SmbClient::Workgroups()
{
    return m_impl->browse("smb://", SMBC_WORKGROUP);
}

std::vector<std::string> SmbClient::Servers(const std::string& workgroup)
{
    return m_impl->browse(childUrl("smb://", workgroup), SMBC_SERVER);
}

std::optional<SmbStat> SmbClient::Stat(const std::string& url)
{
    auto result = std::make_shared<SmbStat>();
    const bool found = m_impl->call([url, result](SMBCCTX* c) {
        struct stat info {};
        if (smbc_getFunctionStat(c)(c, url.c_str(), &info) != 0)
            return failure();
        *result = {S_ISDIR(info.st_mode), std::int64_t(info.st_size),
                   std::int64_t(info.st_mtim.tv_sec)};
        return 0;
    });
    if (!found)
        return std::nullopt;
    return *result;
}

bool SmbClient::MakeFolder(const std::string& url)
{
    return m_impl->call([url](SMBCCTX* c) {
        return smbc_getFunctionMkdir(c)(c, url.c_str(), 0755) ? failure() : 0;
    });
}

bool SmbClient::RemoveFile(const std::string& url)
{
    return m_impl->call(
        [url](SMBCCTX* c) { return smbc_getFunctionUnlink(c)(c, url.c_str()) ? failure() : 0; });
}

bool SmbClient::RemoveTree(const std::string& url)
{
    return m_impl->call([url](SMBCCTX* c) { return removeTree(c, url); });
}

std::string SmbClient::LastError() const
{
    return m_impl->lastError;
}

} // namespace fw::desktop
