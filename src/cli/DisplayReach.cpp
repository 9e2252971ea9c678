#include "cli/DisplayReach.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace fw::cli {

namespace {

// A real connection, so that a stale socket, a refused authorisation and a
// remote display are judged as Qt's xcb plugin would judge them.
bool xServerAnswers()
{
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

// Where libwayland-client looks for the compositor: WAYLAND_DISPLAY, by
// default "wayland-0", relative to XDG_RUNTIME_DIR unless absolute.
QString waylandSocket()
{
    const QString name = qEnvironmentVariable("WAYLAND_DISPLAY", QStringLiteral("wayland-0"));
    return QFileInfo(name).isAbsolute()
               ? name
               : QDir(qEnvironmentVariable("XDG_RUNTIME_DIR")).filePath(name);
}

// A socket that accepts a connection is enough; the protocol is Qt's business.
bool waylandAnswers()
{
    const QString socket = waylandSocket();
    const QByteArray path = socket.toLocal8Bit();
    sockaddr_un address{};
    // Without XDG_RUNTIME_DIR there is no place to look, as for libwayland-client.
    if (!QFileInfo(socket).isAbsolute() || path.size() >= qsizetype(sizeof(address.sun_path)))
        return false;
    address.sun_family = AF_UNIX;
    std::copy(path.cbegin(), path.cend(), address.sun_path);
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (fd < 0)
        return false;
    const bool answers =
        ::connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    ::close(fd);
    return answers;
}

} // namespace

QString UnreachableDisplay()
{
    const QString platform = qEnvironmentVariable("QT_QPA_PLATFORM");
    const QString display = qEnvironmentVariable("DISPLAY");
    const bool wantsX = platform.isEmpty() || platform.startsWith(QLatin1String("xcb"));
    const bool wantsWayland =
        platform.startsWith(QLatin1String("wayland")) ||
        (platform.isEmpty() && !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"));
    if (!wantsX && !wantsWayland)
        return {};
    if (wantsX && !display.isEmpty() && xServerAnswers())
        return {};
    if (wantsWayland && waylandAnswers())
        return {};
    if (wantsX && !display.isEmpty())
        return QStringLiteral("cannot open display %1: no X server answers there (start one, "
                              "set DISPLAY to a running one, or use --screenshot)")
            .arg(display);
    return QStringLiteral("cannot reach the Wayland display %1 (set WAYLAND_DISPLAY to a "
                          "running compositor, or use --screenshot)")
        .arg(qEnvironmentVariable("WAYLAND_DISPLAY", QStringLiteral("wayland-0")));
}

} // namespace fw::cli
