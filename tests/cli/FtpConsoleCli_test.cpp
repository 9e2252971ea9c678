// formwerk frm_InternetFTPConsole --ftp HOST[:PORT]: a console on a real
// server, and the command lines it refuses.
#include "CliRun.h"
#include "controls/ctl_Console.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "support/FtpServer.h"

#include <QTest>
#include <gtest/gtest.h>

namespace {

using namespace fw::testing;

TEST(FtpConsoleCli, AServerOptionThatIsMissingOrBadIsAUsageError)
{
    const QStringList bad[] = {{},
                               {"--ftp", "127.0.0.1:0"},
                               {"--ftp", "ftp.example:abc"},
                               {"--ftp", "ftp.example:70000"},
                               {"--ftp", "a:b:c:21"}};
    ModalDriver driver; // should a window open, it must not wait for a person
    for (const QStringList& options : bad) {
        driver.OnNextModal(CloseWindow);
        const Ran ran = runInProcess(QStringList{"frm_InternetFTPConsole"} + options);
        EXPECT_EQ(ran.code, 64) << options.join(' ').toStdString();
        EXPECT_TRUE(ran.err.startsWith("formwerk: ")) << ran.err.toStdString();
        EXPECT_EQ(ran.out, "");
    }
}

TEST(FtpConsoleCli, TheConsoleTalksToTheServerUntilTheWindowIsClosed)
{
    FtpServer server;
    ASSERT_NE(server.Port(), 0);
    ModalDriver driver;
    QString shown;
    driver.OnNextModal([&](fw::Form& form) {
        auto* terminal = dynamic_cast<fw::ctl_Console*>(form.FindControl("con_Terminal"));
        EXPECT_TRUE(QTest::qWaitFor([&] { return terminal->Output().contains("220 "); }, 10000));
        Type(form, "NOOP");
        PressKey(form, Qt::Key_Return);
        EXPECT_TRUE(QTest::qWaitFor([&] { return terminal->Output().contains("200 "); }, 10000));
        shown = terminal->Output();
        CloseWindow(form);
    });
    const QString where = QStringLiteral("localhost:%1").arg(server.Port());
    const Ran ran = runInProcess({"frm_InternetFTPConsole", "--ftp", where});
    EXPECT_EQ(ran.code, 0) << ran.err.toStdString();
    EXPECT_EQ(ran.out, "{\"Result\":0}\n");
    EXPECT_TRUE(shown.contains("> NOOP\n200 ")) << shown.toStdString();
}

} // namespace
