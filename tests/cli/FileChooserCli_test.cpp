// The file chooser through the `formwerk` command: Linux paths in, the chosen
// path out, byte for byte, also for names that are not UTF-8.
#include "CliRun.h"

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

} // namespace
