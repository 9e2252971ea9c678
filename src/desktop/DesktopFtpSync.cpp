#include "desktop/DesktopFtpSync.h"

#include "desktop/PercentDecoding.h"
#include "desktop/sync/FtpFolder.h"
#include "desktop/sync/SyncRun.h"

#include <atomic>

namespace fw::desktop {

namespace {

// Percent escapes decoded; a broken escape, NUL, CR or LF (which would end an
// FTP command early) make the text unusable.
std::optional<std::string> decoded(std::string_view text, const char* what, std::string& error)
{
    bool broken = false;
    std::string out = PercentDecoded(text, &broken);
    if (broken) {
        error = std::string("Ungültige %-Folge in ") + what + ".";
        return std::nullopt;
    }
    if (out.find_first_of(std::string_view("\0\r\n", 3)) != std::string::npos) {
        error = std::string("Ein Steuerzeichen in ") + what + " lässt sich über FTP nicht senden.";
        return std::nullopt;
    }
    return out;
}

std::optional<int> portNumber(std::string_view text)
{
    if (text.empty() || text.size() > 5)
        return std::nullopt;
    int port = 0;
    for (char c : text) {
        if (c < '0' || c > '9')
            return std::nullopt;
        port = port * 10 + (c - '0');
    }
    if (port < 1 || port > 65535)
        return std::nullopt;
    return port;
}

class FtpSync final : public FtpObject {
  public:
    FtpSync(FtpAccount account, int timeoutSeconds)
        : m_account(std::move(account)), m_timeoutSeconds(timeoutSeconds)
    {
    }

    bool Cancel() const override { return m_cancel; }
    void SetCancel(bool cancel) override { m_cancel = cancel; }

    std::int32_t synchronise(const std::string& local, const std::string& remote,
                             SyncProgress& window, SyncJob& job) override
    {
        // A cancel belongs to the run it stopped, not to the next on this object.
        m_cancel = false;
        std::string error;
        auto side1 = sync::MakeLocalFolder(local, job, error);
        if (!side1) {
            window.LOGERROR("Lokaler Ordner", local, error);
            ++job.Errors;
            return SyncFailed;
        }
        FtpAccount account = m_account;
        if (!remote.empty())
            account.path = sync::ServerFolder(remote);
        sync::FtpFolder side2(std::move(account), m_timeoutSeconds);
        return sync::RunSync(*side1, side2, window, job);
    }

    // The console's commands go over a connection of their own, so that a
    // CWD typed there never moves the folder a synchronisation works in.
    std::string SENDCOMMAND(const std::string& command) override
    {
        if (!m_console)
            m_console = std::make_unique<sync::FtpFolder>(m_account, m_timeoutSeconds);
        std::string reply, error;
        return m_console->Command(command, reply, error) ? reply : error;
    }

  private:
    FtpAccount m_account;
    int m_timeoutSeconds;
    std::atomic<bool> m_cancel{false};
    std::unique_ptr<sync::FtpFolder> m_console;
};

} // namespace

std::optional<FtpAccount> ParseFtpUrl(std::string_view url, std::string& error)
{
    constexpr std::string_view scheme = "ftp://";
    if (url.size() < scheme.size() ||
        !std::equal(scheme.begin(), scheme.end(), url.begin(), [](char a, char b) {
            return a == std::tolower(static_cast<unsigned char>(b));
        })) {
        error = "Die Adresse beginnt nicht mit ftp://.";
        return std::nullopt;
    }
    url.remove_prefix(scheme.size());
    const std::size_t slash = url.find('/');
    std::string_view authority = url.substr(0, slash);
    const std::string_view path = slash == std::string_view::npos ? "/" : url.substr(slash);
    FtpAccount account;
    if (const std::size_t at = authority.rfind('@'); at != std::string_view::npos) {
        const std::string_view user = authority.substr(0, at);
        if (user.find(':') != std::string_view::npos) {
            error = "Das Passwort gehört nicht in die Adresse.";
            return std::nullopt;
        }
        auto name = decoded(user, "dem Benutzernamen", error);
        if (!name)
            return std::nullopt;
        if (name->empty()) {
            error = "Der Benutzername fehlt vor dem @.";
            return std::nullopt;
        }
        account.user = *name;
        authority.remove_prefix(at + 1);
    }
    std::optional<std::string_view> portText; // set once a colon follows the host
    if (!authority.empty() && authority.front() == '[') {
        const std::size_t close = authority.find(']');
        if (close == std::string_view::npos) {
            error = "Die IPv6-Adresse ist nicht mit ] geschlossen.";
            return std::nullopt;
        }
        account.host = std::string(authority.substr(1, close - 1));
        const std::string_view after = authority.substr(close + 1);
        if (!after.empty() && after.front() != ':') {
            error = "Nach der IPv6-Adresse darf nur :Port folgen.";
            return std::nullopt;
        }
        if (!after.empty())
            portText = after.substr(1);
    } else {
        const std::size_t colon = authority.find(':');
        account.host = std::string(authority.substr(0, colon));
        if (colon != std::string_view::npos)
            portText = authority.substr(colon + 1);
    }
    if (account.host.empty()) {
        error = "Der Rechnername fehlt.";
        return std::nullopt;
    }
    if (portText) {
        const auto port = portNumber(*portText);
        if (!port) {
            error = "Der Port ist keine Zahl von 1 bis 65535.";
            return std::nullopt;
        }
        account.port = *port;
    }
    auto folder = decoded(path, "dem Pfad", error);
    if (!folder)
        return std::nullopt;
    account.path = sync::ServerFolder(*folder);
    return account;
}

std::shared_ptr<FtpObject> MakeFtpSync(FtpAccount account, int timeoutSeconds)
{
    return std::make_shared<FtpSync>(std::move(account), timeoutSeconds);
}

} // namespace fw::desktop
