#include "desktop/DesktopFtp.h"

#include "controls/Theme.h"
#include "controls/ctl_Console.h"
#include "desktop/DesktopHost.h"

#include <QRegularExpression>
#include <QTcpSocket>
#include <QWidget>

namespace fw::desktop {

namespace {
// A server that never ends a line must not fill memory: such a run is shown
// in pieces of this size.
constexpr qsizetype kLongestLine = 64 * 1024;

QColor errorColour()
{
    return QColor(0xc6, 0x28, 0x28);
}

// Passwords do not stand on the screen.
QString shown(const QString& command)
{
    static const QRegularExpression pass(QStringLiteral("^(\\s*PASS\\s+)(.+)$"),
                                         QRegularExpression::CaseInsensitiveOption);
    const auto m = pass.match(command);
    return m.hasMatch() ? m.captured(1) + QString(m.captured(2).size(), u'*') : command;
}
} // namespace

std::shared_ptr<DesktopFtp> MakeDesktopFtp(const QString& host, quint16 port, int connectTimeoutMs)
{
    return std::make_shared<DesktopFtp>(host, port, connectTimeoutMs);
}

DesktopFtp::DesktopFtp(QString host, quint16 port, int connectTimeoutMs)
    : m_host(std::move(host)), m_port(port), m_connectTimeoutMs(connectTimeoutMs),
      m_socket(new QTcpSocket(this))
{
    m_connectTimer.setSingleShot(true);
    connect(&m_connectTimer, &QTimer::timeout, this, &DesktopFtp::onTimeout);
    connect(m_socket, &QTcpSocket::connected, this, &DesktopFtp::onConnected);
    connect(m_socket, &QTcpSocket::readyRead, this, &DesktopFtp::onReadyRead);
    connect(m_socket, &QTcpSocket::disconnected, this, &DesktopFtp::onDisconnected);
    connect(m_socket, &QTcpSocket::errorOccurred, this, &DesktopFtp::onError);
}

DesktopFtp::~DesktopFtp()
{
    // Going away is no news for a terminal that may be gone too.
    m_socket->disconnect(this);
    m_socket->abort();
}

void DesktopFtp::SetTerminal(ctl_Console* terminal)
{
    m_terminal = terminal;
    m_terminalWidget = terminal ? terminal->widget() : nullptr;
}

void DesktopFtp::Open()
{
    m_socket->abort();
    m_pending.clear();
    m_replyCode.clear();
    m_wasConnected = m_quitSent = m_heard = m_failed = false;
    note(QStringLiteral("Verbinde mit %1 …").arg(where()));
    m_connectTimer.start(m_connectTimeoutMs);
    m_socket->connectToHost(m_host, m_port);
}

bool DesktopFtp::IsConnected() const
{
    return m_socket->state() == QAbstractSocket::ConnectedState;
}

bool DesktopFtp::Waiting() const
{
    return !m_heard && !m_failed && m_socket->state() != QAbstractSocket::UnconnectedState;
}

std::string DesktopFtp::SENDCOMMAND(const std::string& command)
{
    const QString line = QString::fromStdString(command);
    const bool idle = m_socket->state() == QAbstractSocket::UnconnectedState;
    if (idle && line.trimmed().compare(QLatin1String("OPEN"), Qt::CaseInsensitive) == 0) {
        Open();
        return {};
    }
    if (!IsConnected()) {
        const QString text =
            idle ? QStringLiteral("Nicht verbunden – nicht gesendet: %1 (OPEN verbindet neu)")
                       .arg(shown(line))
                 : QStringLiteral("Verbindung wird noch aufgebaut – nicht gesendet: %1")
                       .arg(shown(line));
        note(text, Notice::Error);
        return text.toStdString();
    }
    if (ctl_Console* out = terminal())
        out->WriteLine(QStringLiteral("> ") + shown(line), theme::Accent());
    if (line.trimmed().compare(QLatin1String("QUIT"), Qt::CaseInsensitive) == 0)
        m_quitSent = true;
    m_socket->write(command.data(), qint64(command.size()));
    m_socket->write("\r\n", 2);
    static const QRegularExpression transfer(
        QStringLiteral("^\\s*(LIST|NLST|MLSD|RETR|STOR|STOU|APPE)\\b"),
        QRegularExpression::CaseInsensitiveOption);
    if (transfer.match(line).hasMatch())
        note(QStringLiteral("Diese Konsole öffnet keine Datenverbindung: die Übertragung kann "
                            "ausbleiben, ABOR bricht sie ab."));
    return {};
}

std::string DesktopFtp::Invoke(const std::string& method, const std::vector<std::string>& args)
{
    if (!SameName(method, "SENDCOMMAND"))
        throw MissingMethod(method);
    if (args.size() != 1)
        throw WrongArguments(method);
    return SENDCOMMAND(args.front());
}

void DesktopFtp::onConnected()
{
    m_connectTimer.stop();
    m_wasConnected = true;
    note(QStringLiteral("Verbunden mit %1.").arg(where()));
}

void DesktopFtp::onReadyRead()
{
    m_pending += m_socket->readAll();
    qsizetype from = 0;
    for (qsizetype end = m_pending.indexOf('\n'); end >= 0; end = m_pending.indexOf('\n', from)) {
        replyLine(QString::fromUtf8(m_pending.mid(from, end - from)));
        from = end + 1;
    }
    m_pending.remove(0, from);
    while (m_pending.size() >= kLongestLine) {
        replyLine(QString::fromUtf8(m_pending.left(kLongestLine)));
        m_pending.remove(0, kLongestLine);
    }
}

// Replies may run over several lines: "123-" opens one, and the line that
// starts with the same code and a space ends it. The whole reply takes the
// colour of its code, so that a refusal stands out.
void DesktopFtp::replyLine(const QString& raw)
{
    m_heard = true;
    QString line = raw;
    if (line.endsWith(u'\r'))
        line.chop(1);
    static const QRegularExpression code(QStringLiteral("^([1-5]\\d\\d)([ -])"));
    const auto m = code.match(line);
    if (m_replyCode.isEmpty()) {
        if (m.hasMatch()) {
            m_replyIsError = m.captured(1).startsWith(u'4') || m.captured(1).startsWith(u'5');
            if (m.captured(2) == u"-")
                m_replyCode = m.captured(1);
        } else {
            m_replyIsError = false;
        }
    } else if (m.hasMatch() && m.captured(1) == m_replyCode && m.captured(2) == u" ") {
        m_replyCode.clear();
    }
    if (ctl_Console* out = terminal())
        out->WriteLine(line, m_replyIsError ? errorColour() : QColor());
}

void DesktopFtp::onDisconnected()
{
    m_connectTimer.stop();
    if (!m_pending.isEmpty()) {
        replyLine(QString::fromUtf8(m_pending));
        m_pending.clear();
    }
    if (!m_wasConnected)
        return; // a failed attempt has been reported by onError
    m_wasConnected = false;
    if (m_quitSent)
        note(QStringLiteral("Verbindung beendet."));
    else
        note(QStringLiteral("Verbindung vom Server getrennt."), Notice::Error);
}

void DesktopFtp::onError()
{
    if (m_wasConnected || m_failed)
        return; // an end of the session: onDisconnected tells it
    m_failed = true;
    m_connectTimer.stop();
    switch (m_socket->error()) {
    case QAbstractSocket::ConnectionRefusedError:
        note(QStringLiteral("Verbindung abgelehnt: auf %1 wartet kein Server.").arg(where()),
             Notice::Error);
        break;
    case QAbstractSocket::HostNotFoundError:
        note(QStringLiteral("Rechner „%1“ nicht gefunden.").arg(m_host), Notice::Error);
        break;
    case QAbstractSocket::NetworkError:
    case QAbstractSocket::SocketTimeoutError:
        note(QStringLiteral("%1 ist nicht erreichbar (%2).").arg(where(), m_socket->errorString()),
             Notice::Error);
        break;
    default:
        note(QStringLiteral("Verbindung mit %1 fehlgeschlagen: %2")
                 .arg(where(), m_socket->errorString()),
             Notice::Error);
    }
}

void DesktopFtp::onTimeout()
{
    if (m_socket->state() == QAbstractSocket::ConnectedState || m_failed)
        return;
    m_failed = true;
    m_socket->abort();
    note(QStringLiteral("%1 ist nicht erreichbar: keine Antwort nach %2 s.")
             .arg(where())
             .arg(m_connectTimeoutMs / 1000.0, 0, 'g', 3),
         Notice::Error);
}

void DesktopFtp::note(const QString& text, Notice kind)
{
    if (ctl_Console* out = terminal())
        out->WriteLine(QStringLiteral("*** ") + text,
                       kind == Notice::Error ? errorColour() : theme::MutedText());
}

ctl_Console* DesktopFtp::terminal() const
{
    return m_terminalWidget ? m_terminal : nullptr;
}

QString DesktopFtp::where() const
{
    return m_host.contains(u':') ? QStringLiteral("[%1]:%2").arg(m_host).arg(m_port)
                                 : QStringLiteral("%1:%2").arg(m_host).arg(m_port);
}

} // namespace fw::desktop
