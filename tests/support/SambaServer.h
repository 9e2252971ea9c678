#pragma once
// A real Samba server for the SMB tests: Debian's smbd in a child process, on
// a free high port of 127.0.0.1, with its own configuration and state folders
// under a temporary folder, so that no test touches the machine's Samba.

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace fw::testing {

class SambaServer {
  public:
    /// The shares it serves: "Daten" (guests, writable), "Öffentlich" (guests,
    /// comment "Für alle"), "Versteckt$" (guests, hidden) and "Geschlossen"
    /// (no guests; user Account() with Password() where smbpasswd allows it).
    enum Share { Daten, Oeffentlich, Versteckt, Geschlossen };

    /// Starts smbd and waits until it accepts connections; Port() is 0 if it
    /// could not start (SkipReason() says why).
    SambaServer();
    ~SambaServer() { Kill(); }
    SambaServer(const SambaServer&) = delete;
    SambaServer& operator=(const SambaServer&) = delete;

    quint16 Port() const { return m_port; }
    QString SkipReason() const { return m_skipReason; }
    /// The share's folder on this machine: put files here, check what arrived.
    QString ShareFolder(Share share) const;
    /// The share's name as clients see it.
    static QString ShareName(Share share);
    /// A user that "Geschlossen" lets in; empty where none could be added.
    QString Account() const { return m_account; }
    static QString Password() { return QStringLiteral("Geheim-42"); }
    /// The configuration file, for smbclient and smbpasswd.
    QString ConfigFile() const { return m_root.filePath(QStringLiteral("smb.conf")); }
    /// Kills the server and its children at once, as a crash would.
    void Kill();

  private:
    static QString rootTemplate();
    bool writeConfig(quint16 port);
    void addAccount();

    QTemporaryDir m_root;
    QProcess m_process;
    quint16 m_port = 0;
    QString m_account;
    QString m_skipReason;
};

} // namespace fw::testing
