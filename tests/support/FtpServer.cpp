#include "FtpServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace fw::testing {

namespace {
// argv: folder, rights of "anna", and how the server misbehaves: "nomlsd"
// offers LIST alone, "drop" cuts the first download after 256 KiB, with its
// control connection, as a line that dies, and "stall" stops sending it there
// without a word, as a hung server does; "full" stores 64 KiB of an upload,
// drops the rest and answers 552, leaving the part, as a full disk does;
// "dropupload" cuts the first upload after 64 KiB, with its control
// connection, and keeps the part.
const char* const kServer = R"(
import logging, sys
from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import DTPHandler, FTPHandler
from pyftpdlib.servers import FTPServer
logging.basicConfig(level=logging.CRITICAL)
root, rights, mode = sys.argv[1], sys.argv[2], sys.argv[3]
cut = []
class Dtp(DTPHandler):
    def initiate_send(self):
        if mode in ("drop", "stall") and not cut and self.tot_bytes_sent >= 262144:
            cut.append(self)
            print(mode == "drop" and "dropped" or "stalled", flush=True)
            if mode == "drop":
                self.cmd_channel.close()
            return
        DTPHandler.initiate_send(self)
    def writable(self):
        return mode != "stall" or self not in cut and DTPHandler.writable(self)
    def handle_read(self):
        if mode == "dropupload" and not cut and self.receive and self.tot_bytes_received >= 65536:
            cut.append(self)
            print("dropped", flush=True)
            self.cmd_channel.close()
            return
        if mode == "full" and self.receive and self.tot_bytes_received >= 65536:
            self.full = True
            self.recv(self.ac_in_buffer_size)  # the disk takes no more
            return
        DTPHandler.handle_read(self)
    handle_read_event = handle_read
    def close(self):
        if getattr(self, "full", False) and self._resp and self._resp[0].startswith("226"):
            self._resp = ("552 Kein Platz mehr auf dem Datentraeger.", logging.info)
        DTPHandler.close(self)
users = DummyAuthorizer()
users.add_anonymous(root)
users.add_user("anna", "geheim", root, perm=rights)
handler = FTPHandler
handler.authorizer = users
handler.banner = "Formwerk-Testserver bereit"
handler.auth_failed_timeout = 0.1
handler.dtp_handler = Dtp
handler.use_sendfile = False
handler.unicode_errors = "surrogateescape"
if mode == "nomlsd":
    handler.proto_cmds = {k: v for k, v in handler.proto_cmds.items() if k not in ("MLSD", "MLST")}
server = FTPServer(("127.0.0.1", 0), handler)
print(server.socket.getsockname()[1], flush=True)
server.serve_forever()
)";
} // namespace

FtpServer::FtpServer(const Options& options)
{
    static const char* const modes[] = {"normal", "nomlsd", "drop", "stall", "full", "dropupload"};
    const QString root = options.root.isEmpty() ? m_root.path() : options.root;
    m_process.start(QStringLiteral("/usr/bin/python3"),
                    {QStringLiteral("-c"), QString::fromUtf8(kServer), root, options.annaRights,
                     QString::fromLatin1(modes[options.mode])});
    // The port line comes once the server listens.
    if (m_process.waitForReadyRead(10000))
        m_port = quint16(m_process.readLine().trimmed().toUInt());
}

QByteArray FtpServer::Said()
{
    m_process.waitForReadyRead(100);
    return m_process.readAllStandardOutput();
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
