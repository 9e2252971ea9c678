// The desktop FTP connection behind the FTP console, against a real server on
// loopback; the user types into the console as into any terminal.
#include "controls/ctl_Console.h"
#include "desktop/DesktopFtp.h"
#include "desktop/DesktopHost.h"
#include "forms/testing/UserInput.h"
#include "support/FtpServer.h"
#include "sync/frm_InternetFTPConsole.h"

#include <QElapsedTimer>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using namespace fw::testing;

class DesktopFtpTest : public ::testing::Test {
  protected:
    void open(const QString& host, quint16 port, int timeoutMs = 5000)
    {
        ftp = fw::desktop::MakeDesktopFtp(host, port, timeoutMs);
        form.HostObject = ftp;
        ftp->SetTerminal(form.con_Terminal);
        ftp->Open();
        form.Show(false);
        ProcessEvents();
    }
    void enter(const QString& text)
    {
        Type(form, text);
        PressKey(form, Qt::Key_Return);
    }
    // Waits until the terminal shows text so many times, for at most ten seconds.
    bool shows(const QString& text, int times = 1)
    {
        return QTest::qWaitFor([&] { return output().count(text) >= times; }, 10000);
    }
    QString output() const { return form.con_Terminal->Output(); }
    void TearDown() override { form.Unload(); }

    fw::frm_InternetFTPConsole form;
    std::shared_ptr<fw::desktop::DesktopFtp> ftp;
};

TEST_F(DesktopFtpTest, ASessionTypedByHandShowsEveryReplyAndEveryEnd)
{
    FtpServer server;
    ASSERT_NE(server.Port(), 0) << "pyftpdlib did not start";
    open("127.0.0.1", server.Port());
    ASSERT_TRUE(shows("220 Formwerk-Testserver bereit")) << output().toStdString();
    const struct {
        const char* typed;
        const char* reply;
        int times;
    } steps[] = {
        {"USER anonymous", "331 ", 1}, {"PASS x", "230 ", 1},
        {"PWD", "257 \"/\"", 1},       {"HELP", "214 Help command", 1},
        {"LIST", "150 ", 1},           {"QUIT", "Verbindung beendet.", 1},
        {"PWD", "Nicht verbunden", 1}, {"OPEN", "220 Formwerk", 2},
        {"NOOP", "200 ", 1},
    };
    for (const auto& step : steps) {
        enter(step.typed);
        EXPECT_TRUE(shows(step.reply, step.times)) << step.typed << "\n" << output().toStdString();
    }
    const QString shown = output();
    EXPECT_TRUE(shown.contains("214-The following commands are recognized:")) << "multi-line";
    EXPECT_TRUE(shown.contains("221 "));
    EXPECT_TRUE(shown.contains("> PASS *\n")) << "the password is not shown";
    server.Kill();
    EXPECT_TRUE(shows("Verbindung vom Server getrennt.")) << output().toStdString();
    enter("PWD");
    EXPECT_TRUE(shows("Nicht verbunden", 2));
}

TEST_F(DesktopFtpTest, APortThatRefusesOrNeverAnswersIsToldWithoutBlocking)
{
    for (const auto& [kind, told] :
         {std::pair{DeadPort::Refusing, "Verbindung abgelehnt: auf 127.0.0.1:"},
          std::pair{DeadPort::Silent, "nicht erreichbar: keine Antwort nach 1.5 s"}}) {
        DeadPort port(kind);
        ASSERT_NE(port.Port(), 0);
        QElapsedTimer clock;
        clock.start();
        // A connect that blocked would return only after the 1.5 s limit; the
        // margin below it keeps a busy machine from failing the case.
        open("127.0.0.1", port.Port(), 1500);
        EXPECT_LT(clock.elapsed(), 1000) << "connecting must not block the window";
        enter("USER anonymous"); // told at once: not connected, or not yet
        EXPECT_TRUE(output().contains("nicht gesendet: USER anonymous"));
        EXPECT_TRUE(shows(told)) << output().toStdString();
        EXPECT_LT(clock.elapsed(), 5000);
        form.con_Terminal->Clear();
    }
}

} // namespace
