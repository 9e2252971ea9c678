#pragma once
// Loopback peers for the FTP tests: a real FTP server (Debian's pyftpdlib in
// a child process, serving a folder to "anonymous" and to "anna"/"geheim",
// well or in one of a few chosen ways badly), and ports where a connection
// is refused or never answered.

#include <QProcess>
#include <QTemporaryDir>

namespace fw::testing {

class FtpServer {
  public:
    struct Options {
        QString root;                               ///< the served folder; empty: a fresh one
        QString annaRights = QStringLiteral("elr"); ///< pyftpdlib's letters, "elradfmwMT" all
        enum Mode {
            Normal,
            NoMlsd,
            DropDownload,
            StallDownload,
            FullDisk,
            DropUpload
        } mode = Normal;
    };
    /// Starts the server and waits until it listens; Port() is 0 if it failed.
    explicit FtpServer(const Options& options);
    FtpServer() : FtpServer(Options{}) {}
    ~FtpServer() { Kill(); }
    quint16 Port() const { return m_port; }
    /// What the server reported since the last call ("dropped" or "stalled"
    /// once it cut a download).
    QByteArray Said();
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
