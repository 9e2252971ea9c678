#pragma once
// A real FTP server on 127.0.0.1 for the FTP console's tests: Debian's
// pyftpdlib in a child process, on a port the system picks, serving an empty
// temporary folder to "anonymous" and to "anna" with the password "geheim".

#include <QProcess>
#include <QTemporaryDir>

namespace fw::testing {

class FtpServer {
  public:
    /// Starts the server and waits until it listens; Port() is 0 if it failed.
    FtpServer();
    ~FtpServer();
    quint16 Port() const { return m_port; }
    /// Kills the server at once, as a crash would.
    void Kill();
    /// A port on 127.0.0.1 that nothing listens on.
    static quint16 ClosedPort();

  private:
    QTemporaryDir m_root;
    QProcess m_process;
    quint16 m_port = 0;
};

/// A port on 127.0.0.1 that never answers a connection attempt, like a host
/// that is not there: its listener's queue holds one connection, and holds it.
class SilentPort {
  public:
    SilentPort();
    ~SilentPort();
    SilentPort(const SilentPort&) = delete;
    SilentPort& operator=(const SilentPort&) = delete;
    quint16 Port() const { return m_port; }

  private:
    int m_listener = -1;
    int m_filler = -1;
    quint16 m_port = 0;
};

} // namespace fw::testing
