#include "SambaServer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QThread>
#include <arpa/inet.h>
#include <csignal>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace fw::testing {

namespace {

const char* const kFolderNames[] = {"daten", "oeffentlich", "versteckt", "geschlossen"};

// A port the kernel has just handed out and taken back: free unless another
// program grabs it in the moment before smbd binds it.
quint16 freePort()
{
    const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* raw = reinterpret_cast<sockaddr*>(&address);
    quint16 port = 0;
    if (::bind(fd, raw, size) == 0 && ::getsockname(fd, raw, &size) == 0)
        port = ntohs(address.sin_port);
    ::close(fd);
    return port;
}

bool acceptsConnections(quint16 port, int withinMs)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < withinMs) {
        const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
        const bool connected =
            ::connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
        ::close(fd);
        if (connected)
            return true;
        QThread::msleep(50);
    }
    return false;
}

} // namespace

QString SambaServer::ShareName(Share share)
{
    switch (share) {
    case Daten:
        return QStringLiteral("Daten");
    case Oeffentlich:
        return QStringLiteral("Öffentlich");
    case Versteckt:
        return QStringLiteral("Versteckt$");
    case Geschlossen:
        break;
    }
    return QStringLiteral("Geschlossen");
}

QString SambaServer::ShareFolder(Share share) const
{
    return m_root.filePath(QStringLiteral("shares/") + QLatin1String(kFolderNames[share]));
}

// In memory where the machine has room there: thousands of files for a
// listing are made ten times faster than on a busy disk.
QString SambaServer::rootTemplate()
{
    const QFileInfo shm(QStringLiteral("/dev/shm"));
    const QString base = shm.isDir() && shm.isWritable() ? shm.filePath() : QDir::tempPath();
    return base + QStringLiteral("/formwerk-smb-XXXXXX");
}

SambaServer::SambaServer() : m_root(rootTemplate())
{
    const QString smbd =
        QStandardPaths::findExecutable(QStringLiteral("smbd"), {QStringLiteral("/usr/sbin")});
    if (smbd.isEmpty()) {
        m_skipReason = QStringLiteral("smbd is not installed (Debian package samba)");
        return;
    }
    const quint16 port = freePort();
    if (!m_root.isValid() || port == 0 || !writeConfig(port)) {
        m_skipReason = QStringLiteral("no room for the Samba server's configuration");
        return;
    }
    addAccount();
    // Guests act as "nobody": the way down to the shares must be open to them.
    for (const QString& folder : {m_root.path(), m_root.filePath(QStringLiteral("shares"))})
        QFile::setPermissions(folder, QFile::permissions(folder) | QFile::ReadOther |
                                          QFile::ExeOther | QFile::ReadGroup | QFile::ExeGroup);
    // Its own process group, so that Kill() reaches the per-connection children.
    m_process.setChildProcessModifier([] { ::setsid(); });
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardOutputFile(m_root.filePath(QStringLiteral("smbd.out")));
    m_process.start(smbd, {QStringLiteral("-F"), QStringLiteral("--no-process-group"),
                           QStringLiteral("-s"), ConfigFile(), QStringLiteral("--debug-stdout")});
    if (m_process.waitForStarted(5000) && acceptsConnections(port, 8000))
        m_port = port;
    else
        m_skipReason = QStringLiteral("smbd did not start: see ") +
                       m_root.filePath(QStringLiteral("smbd.out"));
}

bool SambaServer::writeConfig(quint16 port)
{
    QDir root(m_root.path());
    for (const char* folder : {"private", "lock", "state", "cache", "pid", "ncalrpc", "log"})
        root.mkpath(QLatin1String(folder));
    for (const char* folder : kFolderNames)
        root.mkpath(QStringLiteral("shares/") + QLatin1String(folder));
    const auto at = [&](const char* name) { return root.filePath(QLatin1String(name)); };
    const QString config =
        QStringLiteral(R"([global]
server role = standalone server
smb ports = %1
interfaces = lo
bind interfaces only = yes
disable netbios = yes
map to guest = Bad User
passdb backend = tdbsam
private dir = %2
lock directory = %3
state directory = %4
cache directory = %5
pid directory = %6
ncalrpc dir = %7
log file = %8
load printers = no
printing = bsd
printcap name = /dev/null
disable spoolss = yes
[Daten]
path = %9
guest ok = yes
read only = no
force user = root
[Öffentlich]
path = %10
guest ok = yes
comment = Für alle
[Versteckt$]
path = %11
guest ok = yes
[Geschlossen]
path = %12
guest ok = no
)")
            .arg(port)
            .arg(at("private"), at("lock"), at("state"), at("cache"), at("pid"), at("ncalrpc"),
                 at("log/smbd.log"), ShareFolder(Daten), ShareFolder(Oeffentlich))
            .arg(ShareFolder(Versteckt), ShareFolder(Geschlossen));
    QFile file(ConfigFile());
    return file.open(QIODevice::WriteOnly) && file.write(config.toUtf8()) == config.toUtf8().size();
}

// Samba accounts need a Unix user; root exists wherever the tests run as root.
void SambaServer::addAccount()
{
    QProcess smbpasswd;
    smbpasswd.start(QStringLiteral("smbpasswd"),
                    {QStringLiteral("-c"), ConfigFile(), QStringLiteral("-a"), QStringLiteral("-s"),
                     QStringLiteral("root")});
    const QByteArray twice = (Password() + u'\n' + Password() + u'\n').toUtf8();
    smbpasswd.write(twice);
    smbpasswd.closeWriteChannel();
    if (smbpasswd.waitForFinished(10000) && smbpasswd.exitStatus() == QProcess::NormalExit &&
        smbpasswd.exitCode() == 0)
        m_account = QStringLiteral("root");
}

void SambaServer::Kill()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    ::kill(-pid_t(m_process.processId()), SIGKILL);
    m_process.waitForFinished(5000);
}

} // namespace fw::testing
