#include "FtpServer.h"

#include <QTcpServer>
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace fw::testing {

namespace {
const char* const kServer = R"(
import logging, sys
from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.servers import FTPServer
logging.basicConfig(level=logging.ERROR)
users = DummyAuthorizer()
users.add_anonymous(sys.argv[1])
users.add_user("anna", "geheim", sys.argv[1], perm="elr")
FTPHandler.authorizer = users
FTPHandler.banner = "Formwerk-Testserver bereit"
server = FTPServer(("127.0.0.1", 0), FTPHandler)
print(server.socket.getsockname()[1], flush=True)
server.serve_forever()
)";
} // namespace

FtpServer::FtpServer()
{
    m_process.start(QStringLiteral("/usr/bin/python3"),
                    {QStringLiteral("-c"), QString::fromUtf8(kServer), m_root.path()});
    // The port line comes once the server listens.
    if (m_process.waitForReadyRead(10000))
        m_port = quint16(m_process.readLine().trimmed().toUInt());
}

FtpServer::~FtpServer()
{
    Kill();
}

void FtpServer::Kill()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished(5000);
}

quint16 FtpServer::ClosedPort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return probe.serverPort();
}

// Plain sockets: Qt's listener takes every connection it is offered, and the
// point here is a queue that is full. Attempts beyond it get no answer at all.
SilentPort::SilentPort()
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    m_listener = ::socket(AF_INET, SOCK_STREAM, 0);
    if (::bind(m_listener, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
        ::listen(m_listener, 0) != 0 ||
        ::getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &size) != 0)
        return;
    m_filler = ::socket(AF_INET, SOCK_STREAM, 0);
    if (::connect(m_filler, reinterpret_cast<sockaddr*>(&address), size) == 0)
        m_port = ntohs(address.sin_port);
}

SilentPort::~SilentPort()
{
    for (int fd : {m_filler, m_listener})
        if (fd >= 0)
            ::close(fd);
}

} // namespace fw::testing
