#pragma once
// Loopback peers for the FTP console's tests: a real FTP server (Debian's
// pyftpdlib in a child process, serving an empty folder to "anonymous" and to
// "anna"/"geheim"), and ports where a connection is refused or never answered.

#include <QProcess>
#include <QTemporaryDir>

namespace fw::testing {

class FtpServer {
  public:
    /// Starts the server and waits until it listens; Port() is 0 if it failed.
    FtpServer();
    ~FtpServer() { Kill(); }
    quint16 Port() const { return m_port; }
    /// Kills the server at once, as a crash would.
    void Kill();

  private:
    QTemporaryDir m_root;
    QProcess m_process;
    quint16 m_port = 0;
};

/// A port on 127.0.0.1 that refuses connections or, answering, never answers:
/// its listener's queue holds one connection and keeps it, as a host that is
/// not there would.
class DeadPort {
  public:
    enum Kind { Refusing, Silent };
    explicit DeadPort(Kind kind);
    ~DeadPort();
    DeadPort(const DeadPort&) = delete;
    DeadPort& operator=(const DeadPort&) = delete;
    quint16 Port() const { return m_port; }

  private:
    int m_sockets[2] = {-1, -1};
    quint16 m_port = 0;
};

} // namespace fw::testing
