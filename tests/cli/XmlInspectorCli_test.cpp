// formwerk frm_DialogXMLInspector --xml FILE: the file is checked before any
// window; a good one is shown and answered with OK.
#include "cli/Cli.h"
#include "forms/testing/ModalDriver.h"

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

QString writeFile(const QTemporaryDir& dir, const QString& name, const QByteArray& data)
{
    QFile file(dir.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(data);
    return file.fileName();
}

// The program in its own process, offscreen, with keys typed into the dialog.
int start(const QStringList& args, const QString& keys, QByteArray& out)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove("DISPLAY");
    env.remove("WAYLAND_DISPLAY");
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("FORMWERK_SCRIPT_KEYS", keys);
    QProcess process;
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(FORMWERK_CLI_PATH), args);
    if (!process.waitForFinished(30000)) {
        process.kill();
        process.waitForFinished();
        ADD_FAILURE() << "formwerk did not end";
    }
    out = process.readAllStandardOutput();
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

TEST(XmlInspectorCli, OkAnswersResultOne)
{
    QTemporaryDir dir;
    const QString xml = writeFile(dir, "a.xml", "<liste><eintrag n='1'/></liste>");
    QByteArray out;
    EXPECT_EQ(start({"frm_DialogXMLInspector", "--xml", xml}, "Return", out), 1);
    EXPECT_EQ(out, "{\"Result\":1}\n");
}

TEST(XmlInspectorCli, ScreenshotShowsTheTree)
{
    QTemporaryDir dir;
    const QString xml = writeFile(dir, "a.xml", "<liste><eintrag n='1'/></liste>");
    const QString png = dir.filePath("x.png");
    QByteArray out;
    EXPECT_EQ(start({"frm_DialogXMLInspector", "--xml", xml, "--screenshot", png}, "", out), 0);
    const QImage image(png);
    ASSERT_FALSE(image.isNull());
    EXPECT_GT(image.width(), 300);
}

TEST(XmlInspectorCli, BadFilesEndTheRunBeforeAnyWindow)
{
    QTemporaryDir dir;
    const QString broken = writeFile(dir, "kaputt.xml", "<a>\n  <b>\n</a>\n");
    const QString missing = dir.filePath("fehlt.xml");
    struct Case {
        QStringList args;
        int code;
        QString errStart;
    };
    const std::vector<Case> cases{
        {{"--xml", broken}, 65, "formwerk: " + broken + ":3:3: mismatched tag\n"},
        {{"--xml", missing}, 66, "formwerk: cannot read XML file '" + missing + "'"},
        {{}, 64, "formwerk: frm_DialogXMLInspector needs --xml FILE"},
    };
    fw::testing::ModalDriver driver;
    for (const Case& c : cases) {
        QString out, err;
        QTextStream outStream(&out), errStream(&err);
        const int code =
            fw::cli::Run(QStringList{"frm_DialogXMLInspector"} + c.args, outStream, errStream);
        EXPECT_EQ(code, c.code) << err.toStdString();
        EXPECT_TRUE(err.startsWith(c.errStart)) << err.toStdString();
        EXPECT_EQ(err.count('\n'), 1);
        EXPECT_EQ(out, "");
    }
    EXPECT_TRUE(driver.Seen().empty());
}

} // namespace
