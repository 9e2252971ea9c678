// formwerk frm_DialogFileSyncConfirm / frm_InternetFTPConfirm --actions FILE,
// answered by scripted keys, and the refusals of the sync windows' options.
#include "CliRun.h"
#include "forms/testing/ModalDriver.h"
#include "support/FtpServer.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>

namespace {

using namespace fw::testing;

class SyncCli : public CliFilesTest {};

TEST_F(SyncCli, ConfirmationPrintsTheListsThatRemain)
{
    const QString plan =
        writeFile("plan.json", R"({"DL":["alt.txt"],"MMR":["Neu"],"UP":["Neu\\a.txt"]})");
    struct Case {
        const char* dialog;
        const char* keys;
        int code;
        QStringList dl;
    };
    const Case cases[] = {
        // Space clears the first row, Return asks, F12 gives the question's Yes.
        {"frm_DialogFileSyncConfirm", "Space Return F12", 1, {}},
        // Escape is the question's No, then the window's Abbruch.
        {"frm_InternetFTPConfirm", "Space Return Escape Escape", 2, {"alt.txt"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.keys);
        const Ran ran = answerProgram({c.dialog, "--actions", plan}, c.keys);
        EXPECT_EQ(ran.code, c.code) << ran.err.toStdString();
        const QJsonObject answer = ran.json();
        EXPECT_EQ(answer.value("Result").toInt(), c.code);
        EXPECT_EQ(answer.value("DL").toArray().toVariantList(), QVariant(c.dl).toList());
        EXPECT_EQ(answer.value("UP").toArray().first().toString(), "Neu\\a.txt");
        EXPECT_TRUE(answer.value("DOWN").toArray().isEmpty());
        EXPECT_EQ(answer.size(), 9);
    }
}

TEST_F(SyncCli, BadInputEndsTheRunBeforeAnyWindow)
{
    ModalDriver driver;
    const QString missing = dir.filePath("fehlt.json");
    struct Case {
        QStringList args;
        int code;
        QString errStart;
    };
    const std::vector<Case> cases{
        {{"frm_DialogFileSyncConfirm", "--actions", writeFile("a.json", "{\"DL\":[")},
         64,
         "formwerk: actions file"},
        {{"frm_DialogFileSyncConfirm", "--actions", writeFile("b.json", "{\"XX\":[]}")},
         64,
         "formwerk: actions file '" + dir.filePath("b.json") + "': 'XX' is none of"},
        {{"frm_InternetFTPConfirm", "--actions", writeFile("c.json", "{\"UP\":[1]}")},
         64,
         "formwerk: actions file '" + dir.filePath("c.json") + "': 'UP' holds an entry"},
        {{"frm_InternetFTPConfirm", "--actions", writeFile("d.json", "[]")},
         64,
         "formwerk: actions file '" + dir.filePath("d.json") + "': not a JSON object"},
        {{"frm_DialogFileSyncConfirm", "--actions", missing},
         66,
         "formwerk: cannot read actions file '" + missing + "'"},
        {{"frm_DialogFileSyncConfirm"}, 64, "formwerk: frm_DialogFileSyncConfirm needs --actions"},
        {{"frm_DialogFileSync", "--source", dir.path()},
         64,
         "formwerk: frm_DialogFileSync needs --target"},
        {{"frm_InternetFTPSync", "--local", dir.path()},
         64,
         "formwerk: frm_InternetFTPSync needs --remote"},
        {{"frm_InternetFTPSync", "--local", dir.path(), "--remote", "ftp://anna@127.0.0.1:1/"},
         64,
         "formwerk: frm_InternetFTPSync needs the password of 'anna'"},
        {{"frm_DialogFileSync", "--actions", missing}, 64, "formwerk: --actions does not apply"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.args.join(' ').toStdString());
        const Ran ran = runInProcess(c.args);
        EXPECT_EQ(ran.code, c.code) << ran.err.toStdString();
        EXPECT_TRUE(ran.err.startsWith(c.errStart)) << ran.err.toStdString();
        EXPECT_EQ(ran.out, "");
    }
    EXPECT_TRUE(driver.Seen().empty());
}

TEST_F(SyncCli, ThePasswordNeverShowsInWhatTheCommandSays)
{
    const QString secret = QStringLiteral("Geheim-7731");
    QProcessEnvironment env = quietEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("FORMWERK_FTP_PASSWORD", secret);
    for (const QString& remote :
         {QStringLiteral("http://anna@host/"), QStringLiteral("ftp://anna@127.0.0.1:1/x")}) {
        const Ran ran = startProgram({"frm_InternetFTPSync", "--local", dir.path(), "--remote",
                                      remote, "--yes", "--timeout", "20"},
                                     env);
        EXPECT_NE(ran.code, 0) << remote.toStdString();
        EXPECT_FALSE(ran.out.contains(secret) || ran.err.contains(secret)) << ran.err.toStdString();
    }
}

// The real engine under the command: a folder to a folder and a folder to the
// loopback FTP server, confirmed by --yes, with nobody at a window.
TEST_F(SyncCli, YesSynchronisesRealPlacesAndPrintsTheCounts)
{
    QDir root(dir.path());
    for (const char* folder : {"a/sub", "b", "served", "home"})
        ASSERT_TRUE(root.mkpath(folder));
    writeFile("a/eins.txt", "1");
    writeFile("a/sub/zwei.txt", "22");
    writeFile("b/drei.txt", "333");
    const QString password = writeFile("password", "geheim\n");
    FtpServer server({root.filePath("served"), QStringLiteral("elradfmwMT")});
    ASSERT_NE(server.Port(), 0);
    const QString remote = QStringLiteral("ftp://anna@127.0.0.1:%1/").arg(server.Port());

    QProcessEnvironment env = quietEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("XDG_DATA_HOME", root.filePath("home")); // the protocols of the runs
    // The keys go to the plan's confirmation: Return asks, F12 says Yes.
    env.insert("FORMWERK_SCRIPT_KEYS", "Return F12");
    const QStringList pair{"frm_DialogFileSync", "--source", root.filePath("a"), "--target",
                           root.filePath("b")};
    const Ran dry = startProgram(pair + QStringList{"--dry-run"}, env);
    EXPECT_EQ(dry.code, 0) << dry.err.toStdString();
    EXPECT_EQ(dry.json().value("Skipped").toInt(), 4);
    env.insert("FORMWERK_SCRIPT_KEYS", "Escape");
    EXPECT_EQ(startProgram(pair, env).code, 2);
    EXPECT_FALSE(QFile::exists(root.filePath("b/eins.txt")));
    env.remove("FORMWERK_SCRIPT_KEYS");

    const Ran folders = startProgram({"frm_DialogFileSync", "--source", root.filePath("a"),
                                      "--target", root.filePath("b"), "--yes"},
                                     env);
    EXPECT_EQ(folders.code, 0) << folders.err.toStdString();
    EXPECT_EQ(folders.out,
              "{\"Conflicts\":0,\"Done\":4,\"Errors\":0,\"Result\":1,\"Skipped\":0}\n");
    EXPECT_TRUE(QFile::exists(root.filePath("b/sub/zwei.txt")));
    EXPECT_TRUE(QFile::exists(root.filePath("a/drei.txt")));

    const Ran ftp = startProgram({"frm_InternetFTPSync", "--local", root.filePath("a"), "--remote",
                                  remote, "--password-file", password, "--yes"},
                                 env);
    EXPECT_EQ(ftp.code, 0) << ftp.err.toStdString() << ftp.out.toStdString();
    EXPECT_EQ(ftp.json().value("Errors").toInt(), 0);
    EXPECT_EQ(ftp.json().value("Result").toInt(), 1);
    EXPECT_TRUE(QFile::exists(root.filePath("served/sub/zwei.txt")));
    EXPECT_TRUE(QFile::exists(root.filePath("served/drei.txt")));
}

} // namespace
