#include "FtpServer.h"

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

void FtpServer::Kill()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished(5000);
}

// Plain sockets: Qt's listener accepts whatever it is offered, and the point
// here is a port that is bound but not listening, or a queue that is full.
DeadPort::DeadPort(Kind kind)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* raw = reinterpret_cast<sockaddr*>(&address);
    m_sockets[0] = ::socket(AF_INET, SOCK_STREAM, 0);
    if (::bind(m_sockets[0], raw, size) != 0 || ::getsockname(m_sockets[0], raw, &size) != 0)
        return;
    if (kind == Silent) {
        m_sockets[1] = ::socket(AF_INET, SOCK_STREAM, 0);
        if (::listen(m_sockets[0], 0) != 0 || ::connect(m_sockets[1], raw, size) != 0)
            return;
    }
    m_port = ntohs(address.sin_port);
}

DeadPort::~DeadPort()
{
    for (int fd : m_sockets)
        if (fd >= 0)
            ::close(fd);
}

} // namespace fw::testing
