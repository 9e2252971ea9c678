// The progress window on the command line, fed through standard input as a
// shell pipeline feeds it.
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <gtest/gtest.h>

namespace {

TEST(ProgressCli, LinesDriveTheBarGarbageIsWarnedAboutAndTheEndOfInputCloses)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove("FORMWERK_SCRIPT_KEYS");
    env.insert("QT_QPA_PLATFORM", "offscreen");
    QProcess process;
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(FORMWERK_CLI_PATH), {"frm_DialogProcess", "--title", "Kopieren"});
    ASSERT_TRUE(process.waitForStarted(10000));
    process.write("range 0 10\n3\nfünf\n\nrange 1\n7\n10");
    process.closeWriteChannel();
    if (!process.waitForFinished(30000)) {
        process.kill();
        process.waitForFinished();
        FAIL() << "the window stayed open after the input ended";
    }
    const QString err = QString::fromUtf8(process.readAllStandardError());
    EXPECT_EQ(process.exitCode(), 0) << err.toStdString();
    EXPECT_EQ(QJsonDocument::fromJson(process.readAllStandardOutput()).object(),
              QJsonObject({{"Result", 0}}));
    EXPECT_TRUE(err.contains(QStringLiteral("'fünf'"))) << err.toStdString();
    EXPECT_TRUE(err.contains(QStringLiteral("'range 1'"))) << err.toStdString();
    EXPECT_EQ(err.count(QStringLiteral("ignored input line")), 2) << err.toStdString();
}

} // namespace
