// The synchronisation engine on real data next to the tools a user would take
// instead: folder to folder against `rsync -a`, folder to FTP server (pyftpdlib
// on loopback, started here) against `lftp -e "mirror -R"`. Two data sets:
// many small files in nested folders, and a few big ones. Each is synchronised
// into an empty target (first run), then 1% of its files change and each
// target is synchronised again (second run).
//
// Every tool works on targets of its own, one fresh target per round, and the
// tools take turns within a round, so that both meet the same page cache; the
// disk is synced after every run, outside the timing. Each figure is the best
// of the rounds. Every target is compared with the source after each run: a
// fast wrong result counts as failed ("-").
//
//   sync_bench [--runs 3] [--small 10000] [--big 100] [--big-mb 10]
//              [--only local|ftp] [--dir FOLDER] [--steps]
//
// --steps adds the engine's time per task (list side 1, list side 2, find the
// changes, confirm, carry out, write the protocol) of its best run.
#include "BenchSupport.h"
#include "desktop/DesktopFiles.h"
#include "desktop/DesktopFtpSync.h"
#include "host/SyncJob.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using fw::bench::Out;

struct Options {
    int runs = 3;
    int small = 10000;
    int big = 100;
    int bigMb = 10;
    QString only;
    QString dir;
    bool steps = false;
};

// ---- Data --------------------------------------------------------------

// Random bytes the files are cut from; each file starts at its own offset,
// so no two files are alike.
const std::string& noise()
{
    static const std::string bytes = [] {
        std::mt19937_64 random(12);
        std::string block(1 << 20, '\0');
        for (std::size_t i = 0; i < block.size(); i += 8) {
            const std::uint64_t value = random();
            block.replace(i, 8, reinterpret_cast<const char*>(&value), 8);
        }
        return block;
    }();
    return bytes;
}

void writeFile(const fs::path& file, std::int64_t size, std::size_t variant)
{
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    const std::string& bytes = noise();
    std::size_t offset = (variant * 7919) % bytes.size();
    for (std::int64_t left = size; left > 0;) {
        const std::size_t piece = std::min<std::size_t>(std::size_t(left), bytes.size() - offset);
        out.write(bytes.data() + offset, std::streamsize(piece));
        left -= std::int64_t(piece);
        offset = 0;
    }
}

struct DataSet {
    QString name;
    fs::path root;
    std::vector<fs::path> files; ///< relative
};

// count files of 100 B to 16 KB in ten folders of ten subfolders each.
DataSet smallSet(const fs::path& root, int count)
{
    DataSet set{QStringLiteral("%1 small").arg(count), root, {}};
    std::mt19937 random(7);
    std::uniform_int_distribution<int> size(100, 16 * 1024);
    for (int i = 0; i < count; ++i) {
        const fs::path file = fs::path("Ordner " + std::to_string(i % 10)) /
                              ("Teil " + std::to_string(i / 10 % 10)) /
                              ("Datei " + std::to_string(i) + ".dat");
        fs::create_directories(root / file.parent_path());
        writeFile(root / file, size(random), std::size_t(i));
        set.files.push_back(file);
    }
    return set;
}

DataSet bigSet(const fs::path& root, int count, int megabytes)
{
    DataSet set{QStringLiteral("%1 x %2 MB").arg(count).arg(megabytes), root, {}};
    fs::create_directories(root / "Gross");
    for (int i = 0; i < count; ++i) {
        const fs::path file = fs::path("Gross") / ("Film " + std::to_string(i) + ".bin");
        writeFile(root / file, std::int64_t(megabytes) << 20, std::size_t(i) + 100000);
        set.files.push_back(file);
    }
    return set;
}

// Every hundredth file gets new content of its old size and a time a minute
// later, as an edit would leave it.
void changeOnePercent(const DataSet& set)
{
    static std::size_t edits = 0;
    ++edits;
    for (std::size_t i = 0; i < set.files.size(); i += 100) {
        const fs::path file = set.root / set.files[i];
        const auto size = std::int64_t(fs::file_size(file));
        const auto time = fs::last_write_time(file);
        writeFile(file, size, i + 555555 * edits);
        fs::last_write_time(file, time + std::chrono::minutes(1));
    }
}

// Path -> (size, seconds) of every file below root; sizes only where a tool
// cannot carry the time over.
using Summary = std::map<std::string, std::pair<std::int64_t, std::int64_t>>;

Summary summaryOf(const fs::path& root, bool withTimes)
{
    Summary summary;
    std::error_code error;
    for (auto it = fs::recursive_directory_iterator(root, error);
         it != fs::recursive_directory_iterator(); it.increment(error)) {
        struct stat facts {};
        if (!it->is_regular_file() || ::lstat(it->path().c_str(), &facts) != 0)
            continue;
        summary[fs::relative(it->path(), root).string()] = {facts.st_size,
                                                            withTimes ? facts.st_mtime : 0};
    }
    return summary;
}

// ---- Timing ------------------------------------------------------------

// A finished run's milliseconds, or -1; what it costs per task where known.
struct Timing {
    double ms = -1;
    std::array<double, 7> taskMs{};
};

double elapsedMs(const QElapsedTimer& clock)
{
    return double(clock.nsecsElapsed()) / 1e6;
}

Timing toolRun(const QString& program, const QStringList& args)
{
    QProcess tool;
    tool.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QElapsedTimer clock;
    clock.start();
    tool.start(program, args);
    const bool finished = tool.waitForFinished(30 * 60 * 1000);
    Timing timing;
    if (finished && tool.exitStatus() == QProcess::NormalExit && tool.exitCode() == 0)
        timing.ms = elapsedMs(clock);
    tool.readAllStandardOutput();
    return timing;
}

// The window of a script: confirms everything, never cancels, and notes when
// each task begins so that the run's time can be split by task.
class HeadlessProgress final : public fw::SyncProgress {
  public:
    HeadlessProgress() { m_clock.start(); }
    void SHOWTASK(std::int32_t n) override
    {
        closeTask();
        m_task = n;
        m_taskStart = elapsedMs(m_clock);
    }
    void LOG(const std::string&) override {}
    void PROGRESS(std::int32_t, std::int32_t) override {}
    void LOGERROR(const std::string& a, const std::string& b, const std::string& c) override
    {
        if (++m_errors <= 3)
            qWarning("sync_bench: %s %s: %s", a.c_str(), b.c_str(), c.c_str());
    }
    bool Cancelled() const override { return false; }
    bool Confirm(fw::SyncActions&) override { return true; }

    /// The whole run, with the time of each task.
    Timing Finish()
    {
        closeTask();
        Timing timing;
        timing.ms = elapsedMs(m_clock);
        timing.taskMs = m_taskMs;
        return timing;
    }
    int Errors() const { return m_errors; }

  private:
    void closeTask()
    {
        if (m_task >= 1 && m_task <= 6)
            m_taskMs[std::size_t(m_task)] += elapsedMs(m_clock) - m_taskStart;
    }
    QElapsedTimer m_clock;
    std::array<double, 7> m_taskMs{};
    int m_task = 0;
    double m_taskStart = 0;
    int m_errors = 0;
};

using SynchroniseCall = std::function<std::int32_t(fw::SyncProgress&, fw::SyncJob&)>;

Timing engineRun(const SynchroniseCall& synchronise)
{
    HeadlessProgress window;
    fw::SyncJob job;
    job.ConfirmAll = true;
    const std::int32_t outcome = synchronise(window, job);
    Timing timing = window.Finish();
    if (outcome != fw::SyncFinished || job.Errors > 0 || window.Errors() > 0)
        timing.ms = -1;
    return timing;
}

// A run whose target does not match the source counts as failed.
Timing checked(Timing timing, const DataSet& set, const fs::path& target, bool withTimes)
{
    ::sync();
    if (timing.ms >= 0 && summaryOf(target, withTimes) != summaryOf(set.root, withTimes)) {
        qWarning("sync_bench: %s differs from the source", target.c_str());
        timing.ms = -1;
    }
    return timing;
}

Timing fastest(const std::vector<Timing>& runs)
{
    Timing best;
    for (const Timing& run : runs) {
        if (run.ms < 0)
            return Timing{};
        if (best.ms < 0 || run.ms < best.ms)
            best = run;
    }
    return best;
}

// ---- One comparison ----------------------------------------------------

/// A way to synchronise the source into a target folder of round r.
struct Contender {
    QString name;
    fs::path targetRoot; ///< where the targets of the rounds are, as files on this machine
    bool keepsTimes = true;
    std::function<Timing(const DataSet&, int round)> run;
    fs::path Target(int round) const { return targetRoot / ("Runde " + std::to_string(round)); }
};

struct Row {
    QString what;
    Timing reference;
    Timing engine;
};

// Both first runs round by round, then the change, then both second runs.
std::array<Row, 2> compare(const DataSet& set, const Contender& reference, const Contender& engine,
                           int runs)
{
    std::vector<Timing> first[2], second[2];
    const Contender* contenders[2] = {&reference, &engine};
    for (int round = 0; round < runs; ++round)
        for (int i = 0; i < 2; ++i) {
            fs::create_directories(contenders[i]->Target(round));
            first[i].push_back(checked(contenders[i]->run(set, round), set,
                                       contenders[i]->Target(round), contenders[i]->keepsTimes));
        }
    changeOnePercent(set);
    ::sync();
    for (int round = 0; round < runs; ++round)
        for (int i = 0; i < 2; ++i)
            second[i].push_back(checked(contenders[i]->run(set, round), set,
                                        contenders[i]->Target(round), contenders[i]->keepsTimes));
    for (const Contender* contender : contenders)
        fs::remove_all(contender->targetRoot);
    return {Row{set.name + QStringLiteral(", first"), fastest(first[0]), fastest(first[1])},
            Row{set.name + QStringLiteral(", 1% changed"), fastest(second[0]), fastest(second[1])}};
}

void printHeader(const QString& reference)
{
    Out() << QStringLiteral("%1 %2 %3 %4\n")
                 .arg(QStringLiteral("run"), -26)
                 .arg(reference, 12)
                 .arg(QStringLiteral("formwerk"), 12)
                 .arg(QStringLiteral("ratio"), 7);
}

void printRow(const Row& row, bool steps)
{
    Out() << QStringLiteral("%1 %2 %3 %4\n")
                 .arg(row.what, -26)
                 .arg(fw::bench::Figure(row.reference.ms, " ms"), 12)
                 .arg(fw::bench::Figure(row.engine.ms, " ms"), 12)
                 .arg(fw::bench::Ratio(row.engine.ms, row.reference.ms, 2), 7);
    if (steps && row.engine.ms >= 0) {
        QStringList parts;
        for (std::size_t task = 1; task <= 6; ++task)
            parts << QStringLiteral("%1: %2 ms").arg(task).arg(row.engine.taskMs[task], 0, 'f', 0);
        Out() << "    formwerk by task: " << parts.join(QStringLiteral(", ")) << '\n';
    }
    Out().flush();
}

// ---- Folder to folder --------------------------------------------------

void benchLocal(const std::vector<DataSet*>& sets, const fs::path& scratch, const Options& options)
{
    Contender rsync{QStringLiteral("rsync -a"), scratch / "rsync", true, {}};
    rsync.run = [&](const DataSet& set, int round) {
        return toolRun(QStringLiteral("rsync"),
                       {QStringLiteral("-a"), QString::fromStdString(set.root.string() + '/'),
                        QString::fromStdString(rsync.Target(round).string() + '/')});
    };
    Contender engine{QStringLiteral("formwerk"), scratch / "formwerk", true, {}};
    engine.run = [&](const DataSet& set, int round) {
        fw::desktop::DesktopFiles files;
        return engineRun([&](fw::SyncProgress& window, fw::SyncJob& job) {
            return files.synchronise(set.root.string(), engine.Target(round).string(), window, job);
        });
    };
    Out() << "\nFolder to folder, best of " << options.runs << ":\n";
    printHeader(QStringLiteral("rsync -a"));
    for (const DataSet* set : sets)
        for (const Row& row : compare(*set, rsync, engine, options.runs))
            printRow(row, options.steps);
}

// ---- Folder to FTP server ---------------------------------------------

// pyftpdlib serving a folder of this machine to "anna"/"geheim" with every
// right, so that the targets can be checked as local folders. The tests'
// server serves a read-only empty folder, which a synchronisation cannot use.
class LoopbackFtpServer {
  public:
    explicit LoopbackFtpServer(const fs::path& root)
    {
        static const char* const script = R"(
import logging, sys
from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.servers import FTPServer
logging.basicConfig(level=logging.ERROR)
users = DummyAuthorizer()
users.add_user("anna", "geheim", sys.argv[1], perm="elradfmwMT")
FTPHandler.authorizer = users
server = FTPServer(("127.0.0.1", 0), FTPHandler)
print(server.socket.getsockname()[1], flush=True)
server.serve_forever()
)";
        fs::create_directories(root);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral("/usr/bin/python3"),
                        {QStringLiteral("-c"), QString::fromUtf8(script),
                         QString::fromStdString(root.string())});
        if (m_process.waitForReadyRead(10000))
            m_port = quint16(m_process.readLine().trimmed().toUInt());
    }
    ~LoopbackFtpServer()
    {
        m_process.kill();
        m_process.waitForFinished(5000);
    }
    quint16 Port() const { return m_port; }

  private:
    QProcess m_process;
    quint16 m_port = 0;
};

void benchFtp(const std::vector<DataSet*>& sets, const fs::path& scratch, const Options& options)
{
    const fs::path served = scratch / "ftp";
    LoopbackFtpServer server(served);
    if (server.Port() == 0) {
        Out() << "\nNo FTP server (python3-pyftpdlib): folder to FTP left out.\n";
        return;
    }
    // Permissions are left alone as the engine leaves them; lftp would set
    // them with a SITE CHMOD per file otherwise.
    Contender lftp{QStringLiteral("lftp mirror"), served / "lftp", false, {}};
    lftp.run = [&](const DataSet& set, int round) {
        const std::string command = "set cmd:fail-exit yes; set net:max-retries 2; "
                                    "mirror -R --no-perms \"" +
                                    set.root.string() + "\" \"lftp/Runde " + std::to_string(round) +
                                    "\"; quit";
        return toolRun(QStringLiteral("lftp"),
                       {QStringLiteral("-u"), QStringLiteral("anna,geheim"), QStringLiteral("-p"),
                        QString::number(server.Port()), QStringLiteral("-e"),
                        QString::fromStdString(command), QStringLiteral("127.0.0.1")});
    };
    Contender engine{QStringLiteral("formwerk"), served / "formwerk", false, {}};
    engine.run = [&](const DataSet& set, int round) {
        fw::desktop::FtpAccount account;
        account.host = "127.0.0.1";
        account.port = server.Port();
        account.user = "anna";
        account.password = "geheim";
        account.path = "/formwerk/Runde " + std::to_string(round);
        const auto ftp = fw::desktop::MakeFtpSync(account);
        return engineRun([&](fw::SyncProgress& window, fw::SyncJob& job) {
            return ftp->synchronise(set.root.string(), "", window, job);
        });
    };
    Out() << "\nFolder to FTP server (pyftpdlib on loopback), best of " << options.runs << ":\n";
    printHeader(QStringLiteral("lftp mirror"));
    for (const DataSet* set : sets)
        for (const Row& row : compare(*set, lftp, engine, options.runs))
            printRow(row, options.steps);
}

Options parse(const QStringList& args)
{
    Options options;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        const QString value = i + 1 < args.size() ? args[i + 1] : QString();
        if (arg == QLatin1String("--steps")) {
            options.steps = true;
            continue;
        }
        if (arg == QLatin1String("--runs"))
            options.runs = std::max(1, value.toInt());
        else if (arg == QLatin1String("--small"))
            options.small = value.toInt();
        else if (arg == QLatin1String("--big"))
            options.big = value.toInt();
        else if (arg == QLatin1String("--big-mb"))
            options.bigMb = value.toInt();
        else if (arg == QLatin1String("--only"))
            options.only = value;
        else if (arg == QLatin1String("--dir"))
            options.dir = value;
        ++i;
    }
    return options;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    fw::bench::QuietOffscreenNotices();
    QApplication app(argc, argv);
    const Options options = parse(QApplication::arguments().mid(1));
    QTemporaryDir scratchDir(options.dir.isEmpty()
                                 ? QDir::tempPath() + QStringLiteral("/sync_bench-XXXXXX")
                                 : options.dir + QStringLiteral("/sync_bench-XXXXXX"));
    const fs::path scratch = scratchDir.path().toStdString();
    // The engine's protocols of the last runs go to the user's data folder:
    // a fresh one keeps the user's own and earlier benchmarks' out.
    qputenv("XDG_DATA_HOME", QByteArray::fromStdString((scratch / "daten").string()));

    QElapsedTimer clock;
    clock.start();
    DataSet small = smallSet(scratch / "klein", options.small);
    DataSet big = bigSet(scratch / "gross", options.big, options.bigMb);
    ::sync();
    Out() << "Data made in " << fw::bench::Figure(elapsedMs(clock), " ms") << " below "
          << QString::fromStdString(scratch.string()) << '\n';
    const std::vector<DataSet*> sets{&small, &big};
    if (options.only.isEmpty() || options.only == QLatin1String("local"))
        benchLocal(sets, scratch, options);
    if (options.only.isEmpty() || options.only == QLatin1String("ftp"))
        benchFtp(sets, scratch, options);
    Out() << "\n\"-\": failed or wrong. Ratio: formwerk / reference; aims: second run <= 1.0, "
             "transfers <= 1.5.\n";
    return 0;
}
