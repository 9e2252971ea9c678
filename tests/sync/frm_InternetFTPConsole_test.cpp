#include "controls/ctl_Console.h"
#include "forms/testing/UserInput.h"
#include "host/HostObjects.h"
#include "sync/frm_InternetFTPConsole.h"

#include <QWidget>
#include <gtest/gtest.h>

namespace {

using namespace fw::testing;

// The host's FTP object; the console reaches it by name only.
struct FakeFtp : fw::FtpObject {
    bool Cancel() const override { return false; }
    void SetCancel(bool) override {}
    std::int32_t synchronise(const std::string&, const std::string&, fw::SyncProgress&,
                             fw::SyncJob&) override
    {
        return fw::SyncFailed;
    }
    std::string SENDCOMMAND(const std::string& command) override
    {
        commands.push_back(command);
        return {};
    }
    std::vector<std::string> commands;
};

// An object of some other kind, without SENDCOMMAND.
struct Unrelated : fw::LateBound {
    std::string Invoke(const std::string& method, const std::vector<std::string>&) override
    {
        throw fw::MissingMethod(method);
    }
};

QStringList g_messages;

class FtpConsoleTest : public ::testing::Test {
  protected:
    FtpConsoleTest()
    {
        form.Show(false);
        ProcessEvents();
    }
    // Types a line and Return; returns what was reported on stderr meanwhile.
    QString enter(const QString& text)
    {
        g_messages.clear();
        const QtMessageHandler previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& m) { g_messages << m; });
        Type(form, text);
        PressKey(form, Qt::Key_Return);
        qInstallMessageHandler(previous);
        return g_messages.join('\n');
    }
    void TearDown() override { form.Unload(); }
    fw::frm_InternetFTPConsole form;
};

TEST_F(FtpConsoleTest, EveryLineTypedReachesSendCommandUnchanged)
{
    auto ftp = std::make_shared<FakeFtp>();
    form.HostObject = ftp;
    for (const char* line : {"USER anna", " cwd  /Bilder/Öl ", ""})
        EXPECT_EQ(enter(QString::fromUtf8(line)), "");
    EXPECT_EQ(ftp->commands, (std::vector<std::string>{"USER anna", " cwd  /Bilder/Öl ", ""}));
    EXPECT_EQ(form.con_Terminal->Output(), "") << "the form writes nothing itself";
}

TEST_F(FtpConsoleTest, AMissingMethodOrObjectFailsTheLineButNotTheWindow)
{
    const struct {
        std::shared_ptr<fw::LateBound> host;
        const char* error;
    } rows[] = {{std::make_shared<Unrelated>(),
                 "Object doesn't support this property or method: SENDCOMMAND"},
                {nullptr, "Object variable not set: SENDCOMMAND"}};
    for (const auto& row : rows) {
        form.HostObject = row.host;
        EXPECT_TRUE(enter("QUIT").contains(row.error));
        ASSERT_TRUE(form.IsLoaded());
        EXPECT_EQ(form.con_Terminal->InputText(), "");
    }
}

TEST_F(FtpConsoleTest, TheTerminalFillsTheWindowAsItIsResized)
{
    for (const QSize size : {QSize(300, 200), QSize(900, 700)}) {
        form.window()->resize(size);
        ProcessEvents();
        EXPECT_EQ(form.con_Terminal->widget()->geometry(), QRect(QPoint(0, 0), size));
    }
}

} // namespace
