// A share folder on a real Samba server (loopback): listed by the desktop
// host's DesktopFiles::ListFiles and shown in the file chooser (from Show to
// the first paint of the filled list), next to Debian's smbclient listing the
// same folder (`smbclient -N //127.0.0.1/Daten -c 'ls dir/*'`, a process of
// its own, as a user would run it). Each figure is the best of three runs,
// each with a fresh connection; the chooser's first opening in a process is
// given apart, as it pays for setting up the client and the first connection.
//
//   share_listing_bench [--sizes 1000,10000] [--limit SECONDS]
#include "BenchSupport.h"
#include "core/HasContext.h"
#include "core/cls_Formwerk.h"
#include "desktop/DesktopFiles.h"
#include "desktop/DesktopHost.h"
#include "forms/Form.h"
#include "host/mdl_CoreDevWrapper.h"
#include "support/SambaServer.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QStackedWidget>
#include <QTextStream>
#include <QThread>
#include <algorithm>
#include <fcntl.h>
#include <functional>
#include <optional>
#include <unistd.h>

namespace {

using fw::testing::SambaServer;

// The folder "n<count>" of count empty files in the share.
QString makeFolder(const SambaServer& server, int count)
{
    const QString name = QStringLiteral("n%1").arg(count);
    const QString folder = server.ShareFolder(SambaServer::Daten) + u'/' + name;
    QDir().mkpath(folder);
    const int dir = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY);
    for (int i = 0; i < count; ++i) {
        const QByteArray file = QStringLiteral("Datei %1.txt").arg(i, 7, 10, QChar(u'0')).toUtf8();
        ::close(::openat(dir, file.constData(), O_CREAT | O_WRONLY, 0644));
    }
    ::close(dir);
    return name;
}

// Milliseconds of the fastest of some runs; -1 if a run failed.
double best(const std::function<double()>& run, int runs = 3)
{
    double fastest = -1;
    for (int i = 0; i < runs; ++i) {
        const double ms = run();
        if (ms < 0)
            return -1;
        fastest = fastest < 0 ? ms : std::min(fastest, ms);
    }
    return fastest;
}

double smbclientMs(const SambaServer& server, const QString& folder, int count, int limitMs)
{
    QProcess smbclient;
    QElapsedTimer clock;
    clock.start();
    smbclient.start(QStringLiteral("smbclient"),
                    {QStringLiteral("-p"), QString::number(server.Port()), QStringLiteral("-N"),
                     QStringLiteral("//127.0.0.1/Daten"), QStringLiteral("-c"),
                     QStringLiteral("ls %1/*").arg(folder)});
    if (!smbclient.waitForFinished(limitMs) || smbclient.exitCode() != 0)
        return -1;
    const double ms = clock.nsecsElapsed() / 1e6;
    return smbclient.readAllStandardOutput().count(".txt") >= count ? ms : -1;
}

double listFilesMs(const std::string& location, int count)
{
    fw::desktop::DesktopFiles files;
    QElapsedTimer clock;
    clock.start();
    const std::size_t listed = files.ListFiles(location, "*.*").size();
    return listed == std::size_t(count) ? clock.nsecsElapsed() / 1e6 : -1;
}

double chooserMs(const std::string& location, int count, int limitMs)
{
    // The chooser names the network place of a UNC folder through the host's
    // network service; without one it has no network to show.
    if (!fw::GetCoreDevFiles().Network())
        return -1;
    return fw::bench::ChooserToPaintedList(location, count, limitMs);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    fw::bench::QuietOffscreenNotices();
    QApplication app(argc, argv);
    QList<int> sizes{1000, 10000};
    int limitMs = 60000;
    const QStringList args = QApplication::arguments().mid(1);
    fw::bench::ReadSizesAndLimit(args, sizes, limitMs);
    SambaServer server;
    if (server.Port() == 0) {
        fw::bench::Out() << "No Samba server: " << server.SkipReason() << '\n';
        return 1;
    }
    fw::bench::Out() << QStringLiteral("%1 %2 %3 %4 %5 %6 %7\n")
                            .arg(QStringLiteral("files"), 7)
                            .arg(QStringLiteral("smbclient"), 11)
                            .arg(QStringLiteral("ListFiles"), 11)
                            .arg(QStringLiteral("chooser 1st"), 12)
                            .arg(QStringLiteral("chooser"), 11)
                            .arg(QStringLiteral("List/smbc"), 10)
                            .arg(QStringLiteral("ch/smbc"), 9);
    for (const int count : sizes) {
        const QString folder = makeFolder(server, count);
        const std::string location = "\\\\127.0.0.1:" + std::to_string(server.Port()) +
                                     "\\Daten\\" + folder.toStdString() + '\\';
        const double bare = best([&] { return smbclientMs(server, folder, count, limitMs); });
        const double listed = best([&] { return listFilesMs(location, count); });
        fw::ScopedCoreDev host(fw::desktop::MakeDesktopCoreDev());
        const double first = chooserMs(location, count, limitMs);
        const double shown = best([&] {
            // Past the host's one-second reuse of a listing: each run lists anew.
            QThread::msleep(1100);
            return chooserMs(location, count, limitMs);
        });
        fw::bench::Out() << QStringLiteral("%1 %2 %3 %4 %5 %6 %7\n")
                                .arg(count, 7)
                                .arg(fw::bench::Figure(bare, " ms"), 11)
                                .arg(fw::bench::Figure(listed, " ms"), 11)
                                .arg(fw::bench::Figure(first, " ms"), 12)
                                .arg(fw::bench::Figure(shown, " ms"), 11)
                                .arg(fw::bench::Ratio(listed, bare, 2), 10)
                                .arg(fw::bench::Ratio(shown, bare, 2), 9);
        fw::bench::Out().flush();
    }
    fw::bench::Out() << "\n\"-\": failed, or not done within " << limitMs / 1000 << " s.\n";
    return 0;
}
