#pragma once
// The desktop host's FTP control connection: the object behind the FTP
// console. It connects over TCP without ever blocking the user interface,
// writes the server's replies and its own notices to the terminal it was
// given, and sends each line that reaches SENDCOMMAND as one command.
// Data connections are not opened: it is a console of the control connection.

#include "host/LateBound.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

class QTcpSocket;

namespace fw {
class ctl_Console;
}

namespace fw::desktop {

class DesktopFtp : public QObject, public LateBound {
  public:
    /// connectTimeoutMs: how long an attempt may take before the host counts
    /// as unreachable.
    DesktopFtp(QString host, quint16 port, int connectTimeoutMs = 15000);
    ~DesktopFtp() override;

    /// The terminal that replies and notices go to; none: they are dropped.
    void SetTerminal(ctl_Console* terminal);
    /// Starts connecting; returns at once. Again after a failure or an end
    /// of the connection, it connects anew.
    void Open();
    bool IsConnected() const;
    /// True while an attempt is under way and the server has said nothing yet.
    bool Waiting() const;

    /// Sends one command line, CRLF-terminated; without a connection the
    /// terminal says so, and "OPEN" then connects anew. Returns "" when sent,
    /// else the notice.
    std::string SENDCOMMAND(const std::string& command);
    /// SENDCOMMAND by name.
    std::string Invoke(const std::string& method, const std::vector<std::string>& args) override;

  private:
    enum class Notice { Info, Error };
    void onConnected();
    void onReadyRead();
    void onDisconnected();
    void onError();
    void onTimeout();
    void replyLine(const QString& line);
    void note(const QString& text, Notice kind = Notice::Info);
    QString where() const;
    /// The terminal while it lives, else null.
    ctl_Console* terminal() const;

    QString m_host;
    quint16 m_port;
    int m_connectTimeoutMs;
    QTcpSocket* m_socket;
    QTimer m_connectTimer;
    QPointer<QObject> m_terminalWidget; ///< tells whether m_terminal still lives
    ctl_Console* m_terminal = nullptr;
    QByteArray m_pending; ///< received bytes after the last line break
    QString m_replyCode;  ///< code of a multi-line reply still open
    bool m_replyIsError = false;
    bool m_wasConnected = false;
    bool m_quitSent = false;
    bool m_heard = false;  ///< a reply line has come since Open
    bool m_failed = false; ///< the current attempt has been reported as failed
};

} // namespace fw::desktop
