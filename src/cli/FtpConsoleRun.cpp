#include "cli/DialogRuns.h"
#include "desktop/DesktopFtp.h"
#include "desktop/DesktopHost.h"
#include "sync/frm_InternetFTPConsole.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QRegularExpression>

namespace fw::cli {

namespace {

constexpr int kConnectTimeoutMs = 15000;

struct Server {
    QString host;
    quint16 port = 21;
};

// HOST, HOST:PORT, [IPv6] and [IPv6]:PORT.
Outcome parseServer(const QString& text, Server& server)
{
    static const QRegularExpression form(
        QStringLiteral("^(?:\\[([^\\]]+)\\]|([^:\\[\\]]+))(?::([^:]*))?$"));
    const auto m = form.match(text);
    if (!m.hasMatch())
        return {ExitUsage, QStringLiteral("--ftp takes HOST[:PORT], not '%1'").arg(text)};
    server.host = m.captured(1) + m.captured(2);
    if (m.hasCaptured(3)) {
        bool isNumber = false;
        const uint port = m.captured(3).toUInt(&isNumber);
        if (!isNumber || port < 1 || port > 65535)
            return {ExitUsage, QStringLiteral("--ftp: the port must be a number from 1 to 65535, "
                                              "not '%1'")
                                   .arg(m.captured(3))};
        server.port = quint16(port);
    }
    return {};
}

Outcome connectConsole(Form& form, const Invocation& inv, DialogContext&)
{
    const QStringList given = inv.extra(QStringLiteral("ftp"));
    if (given.isEmpty())
        return {ExitUsage, QStringLiteral("frm_InternetFTPConsole needs --ftp HOST[:PORT]")};
    Server server;
    if (Outcome failure = parseServer(given.last(), server))
        return failure;
    auto& console = dynamic_cast<frm_InternetFTPConsole&>(form);
    std::shared_ptr<desktop::DesktopFtp> ftp =
        desktop::MakeDesktopFtp(server.host, server.port, kConnectTimeoutMs);
    console.HostObject = ftp;
    ftp->SetTerminal(console.con_Terminal);
    ftp->Open();
    // A picture of the console is worth taking once the server has spoken
    // (or the attempt has failed), not while it is still connecting.
    if (!inv.screenshot.isEmpty()) {
        QElapsedTimer clock;
        clock.start();
        while (ftp->Waiting() && clock.elapsed() < kConnectTimeoutMs + 1000)
            QApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    }
    return {};
}

} // namespace

DialogRun FtpConsoleRun()
{
    return {{QStringLiteral("ftp")}, connectConsole};
}

} // namespace fw::cli
