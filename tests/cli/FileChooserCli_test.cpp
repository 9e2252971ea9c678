// The file and folder choosers through the `formwerk` command: Linux paths
// and smb:// URLs in, the chosen path out, byte for byte, also for names that
// are not UTF-8.
#include "CliRun.h"
#include "cli/ChooserPaths.h"
#include "testing/TestHost.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <unistd.h>

namespace {

using fw::testing::answerProgram;
using fw::testing::Ran;

class FileChooserCli : public ::testing::Test {
  protected:
    void SetUp() override
    {
        QDir(dir.path()).mkpath("sub");
        QDir(dir.path()).mkpath("only");
        for (const char* name : {"Bericht.txt", "b.log", "only/a.txt", "only/b.log", "caf\xe9.txt",
                                 "x\\y:z.txt", "nl\nname.txt"})
            ::close(::open(bytes(name).constData(), O_CREAT | O_WRONLY, 0644));
    }
    QByteArray bytes(const char* name) const { return QFile::encodeName(dir.path()) + '/' + name; }
    QString path(const char* name) const { return dir.path() + '/' + QString::fromUtf8(name); }

    // The program with one argument given as raw bytes through the shell,
    // which a QStringList could not carry; stdout as bytes.
    QByteArray runWithRawFile(const QByteArray& file, const QStringList& more)
    {
        QProcess process;
        QProcessEnvironment env = fw::testing::quietEnvironment();
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.insert("FORMWERK_SCRIPT_KEYS", "Tab Return");
        process.setProcessEnvironment(env);
        QString octal; // printf's escapes for every byte
        for (char byte : file)
            octal += QStringLiteral("\\%1").arg(uint(uchar(byte)), 3, 8, QLatin1Char('0'));
        process.start("/bin/sh",
                      QStringList{"-c",
                                  R"sh(f=$(printf "$1"); shift; exec "$0" "$@" --file "$f")sh",
                                  FORMWERK_CLI_PATH, octal} +
                          more);
        EXPECT_TRUE(process.waitForFinished(30000));
        return process.readAllStandardOutput();
    }

    QTemporaryDir dir;
};

TEST_F(FileChooserCli, TheChosenPathComesBackAsJson)
{
    const struct Row {
        const char* name;
        QStringList args;
        const char* keys;
        QJsonObject expected;
    } rows[] = {
        {"the proposed file, accepted",
         {"--mode", "open", "--file", path("Bericht.txt")},
         "Tab Return",
         {{"Result", 1}, {"File", path("Bericht.txt")}}},
        {"a folder path with a slash starts there; the default extension is added",
         {"--mode", "save", "--file", path("sub") + '/', "--default-ext", "txt"},
         "Tab n e u Return",
         {{"Result", 1}, {"File", path("sub/neu.txt")}}},
        {"the start folder, and the filter row by index",
         {"--mode", "1", "--folder", path("only"), "--filter", "Logs|*.log", "--filter",
          "Texte|*.txt", "--filter-index", "2"},
         "Tab Return",
         {{"Result", 1}, {"File", path("only/a.txt")}}},
        {"the first filter row by default",
         {"--folder", path("only"), "--filter", "Logs|*.log", "--filter", "Texte|*.txt", "--mode",
          "open"},
         "Tab Return",
         {{"Result", 1}, {"File", path("only/b.log")}}},
        {"the characters locations give a meaning stay in the name",
         {"--mode", "open", "--file", path("x\\y:z.txt")},
         "Tab Return",
         {{"Result", 1}, {"File", path("x\\y:z.txt")}}},
        {"a newline stays in the name",
         {"--mode", "open", "--file", path("nl\nname.txt")},
         "Tab Return",
         {{"Result", 1}, {"File", path("nl\nname.txt")}}},
        {"Escape cancels without a file",
         {"--mode", "save", "--folder", path("sub"), "--no-search"},
         "Escape",
         {{"Result", 2}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Ran f = answerProgram(QStringList{"frm_DialogFile"} + row.args, row.keys);
        EXPECT_EQ(f.json(), row.expected) << f.out.toStdString() << f.err.toStdString();
        EXPECT_EQ(f.code, row.expected.value("Result").toInt());
    }
}

TEST_F(FileChooserCli, ANameThatIsNotUtf8ComesBackByteForByte)
{
    const QByteArray file = bytes("caf\xe9.txt");
    // In JSON as Python's surrogateescape writes it; plain as the bytes themselves.
    const QByteArray escaped = QFile::encodeName(dir.path()) + "/caf\\udce9.txt";
    EXPECT_EQ(runWithRawFile(file, {"frm_DialogFile", "--mode", "open"}),
              "{\"File\":\"" + escaped + "\",\"Result\":1}\n");
    EXPECT_EQ(runWithRawFile(file, {"frm_DialogFile", "--mode", "open", "--plain"}), file + '\n');

    // A request names the same file with the same escape.
    const Ran request =
        answerProgram({"frm_DialogFile", "--request", "-"}, "Tab Return",
                      R"({"Request":{"Mode":1},"Items":{"ItemList":[")" + escaped + R"("]}})");
    EXPECT_EQ(request.out.toUtf8(), "{\"File\":\"" + escaped + "\",\"Result\":1}\n")
        << request.err.toStdString();
}

TEST_F(FileChooserCli, TheFolderChooserPrintsTheFolderShown)
{
    // A desktop of its own, so that the run does not depend on the machine's.
    QDir(dir.path()).mkpath("home/Desktop");
    QProcessEnvironment env = fw::testing::quietEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("HOME", path("home"));
    env.insert("XDG_CONFIG_HOME", path("home/.config"));
    const QString desktop = path("home/Desktop/");
    const struct Row {
        const char* name;
        QStringList args;
        const char* keys;
        QString out;
    } rows[] = {
        {"OK on the start folder",
         {"frm_DialogFolder", "--folder", path("only")},
         "Tab Return",
         R"({"Folder":")" + path("only/") + R"(","Result":1})"},
        {"Return in the list enters the folder, the alias answers alike",
         {"frm_DialogPath", "--folder", path("sub/..")},
         "Down Return Tab Return",
         R"({"Folder":")" + path("only/") + R"(","Result":1})"},
        {"plain prints the path alone",
         {"frm_DialogFolder", "--folder", path("only"), "--plain"},
         "Tab Return",
         path("only/")},
        {"the desktop comes back as its folder and its place",
         {"frm_DialogFolder", "--folder", desktop},
         "Tab Return",
         R"({"Folder":")" + desktop + R"(","Location":"DESKTOP:\\","Result":1})"},
        {"Escape answers Cancel",
         {"frm_DialogFolder", "--folder", path("only")},
         "Escape",
         R"({"Result":2})"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        env.insert("FORMWERK_SCRIPT_KEYS", row.keys);
        const Ran f = fw::testing::startProgram(row.args, env);
        EXPECT_EQ(f.out.trimmed().toStdString(), row.out.toStdString()) << f.err.toStdString();
        EXPECT_EQ(f.code, row.out.contains("Result\":2") ? 2 : 1);
    }
}

TEST(ChooserPaths, SharesTravelAsSmbUrlsAndPlacesAsTheirFolders)
{
    fw::testing::ScopedTestHost host;
    host->folders.desktop = "C:\\home\\anna\\Desktop";
    const struct Row {
        const char* argument;
        bool folder;
        std::string location;
    } in[] = {
        {"smb://nas:4455/daten/Bilder", true, "\\\\nas:4455\\daten\\Bilder\\"},
        {"SMB://nas/daten/a%20b.txt", false, "\\\\nas\\daten\\a b.txt"},
        {"/home/anna/x/../Bilder", true, "C:\\home\\anna\\Bilder\\"},
        {"", true, ""},
    };
    for (const Row& row : in)
        EXPECT_EQ(fw::cli::ArgumentToLocation(row.argument, row.folder), row.location)
            << row.argument;

    const struct Out {
        std::string location;
        QJsonObject answer;
    } out[] = {
        {"\\\\nas\\daten\\Bilder\\",
         {{"Folder", "smb://nas/daten/Bilder/"}, {"Location", "\\\\nas\\daten\\Bilder\\"}}},
        {"C:\\home\\anna\\", {{"Folder", "/home/anna/"}}},
        {"DESKTOP:\\", {{"Folder", "/home/anna/Desktop/"}, {"Location", "DESKTOP:\\"}}},
        {"NETHOOD:\\Firma\\nas\\",
         {{"Folder", "smb://nas/"}, {"Location", "NETHOOD:\\Firma\\nas\\"}}},
        {"WORKSTATION:\\", {{"Location", "WORKSTATION:\\"}}},
    };
    for (const Out& row : out) {
        QJsonObject answer;
        fw::cli::AnswerLocation(row.location, "Folder", answer);
        EXPECT_EQ(answer, row.answer) << row.location;
    }
}

} // namespace
