#include "controls/ctl_Console.h"
#include "forms/Screen.h"
#include "forms/testing/UserInput.h"
#include "host/HostObjects.h"
#include "sync/frm_InternetFTPConsole.h"

#include <QApplication>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

using namespace fw::testing;

// A host object that answers by name whatever methods it is given.
struct ScriptObject : fw::LateBound {
    explicit ScriptObject(std::vector<std::string> methods) : methods(std::move(methods)) {}
    std::string Invoke(const std::string& method, const std::vector<std::string>& args) override
    {
        for (const std::string& known : methods)
            if (fw::SameName(known, method)) {
                calls.push_back(method + "(" + args.at(0) + ")");
                return {};
            }
        throw fw::MissingMethod(method);
    }
    std::vector<std::string> methods;
    std::vector<std::string> calls;
};

// The host's FTP object, reached through its by-name entry only.
struct FakeFtp : fw::FtpObject {
    bool Cancel() const override { return false; }
    void SetCancel(bool) override { ADD_FAILURE() << "the console cancels nothing"; }
    bool synchronise() override { return ADD_FAILURE() << "the console syncs nothing", false; }
    std::string SENDCOMMAND(const std::string& command) override
    {
        commands.push_back(command);
        return {};
    }
    std::vector<std::string> commands;
};

QStringList g_messages;
void collect(QtMsgType, const QMessageLogContext&, const QString& text)
{
    g_messages << text;
}

class FtpConsoleTest : public ::testing::Test {
  protected:
    void show()
    {
        form.Show(false);
        ProcessEvents();
    }
    void enter(const QString& text)
    {
        Type(form, text);
        PressKey(form, Qt::Key_Return);
    }
    void TearDown() override
    {
        form.Unload();
        for (QWidget* widget : QApplication::topLevelWidgets())
            EXPECT_FALSE(widget->isVisible()) << "a window outlived the test";
    }
    fw::frm_InternetFTPConsole form;
};

TEST_F(FtpConsoleTest, EveryLineTypedReachesSendCommandUnchanged)
{
    auto host = std::make_shared<ScriptObject>(std::vector<std::string>{"SendCommand"});
    form.HostObject = host;
    show();
    enter(QStringLiteral("USER anna"));
    enter(QStringLiteral(" cwd  /Bilder/Öl "));
    enter(QString());
    EXPECT_EQ(host->calls,
              (std::vector<std::string>{"SENDCOMMAND(USER anna)", "SENDCOMMAND( cwd  /Bilder/Öl )",
                                        "SENDCOMMAND()"}));
    EXPECT_EQ(form.con_Terminal->Output(), "") << "the form writes nothing itself";
}

TEST_F(FtpConsoleTest, TheHostsFtpObjectAnswersByName)
{
    auto ftp = std::make_shared<FakeFtp>();
    form.HostObject = ftp;
    show();
    enter(QStringLiteral("PWD"));
    EXPECT_EQ(ftp->commands, std::vector<std::string>{"PWD"});
}

TEST_F(FtpConsoleTest, AMissingMethodOrObjectFailsTheLineButNotTheWindow)
{
    const struct {
        std::shared_ptr<fw::LateBound> host;
        const char* error;
    } rows[] = {
        {std::make_shared<ScriptObject>(std::vector<std::string>{"SEND"}),
         "Object doesn't support this property or method: SENDCOMMAND"},
        {std::make_shared<FakeFtp>(), nullptr},
        {nullptr, "Object variable not set: SENDCOMMAND"},
    };
    show();
    for (const auto& row : rows) {
        form.HostObject = row.host;
        g_messages.clear();
        const QtMessageHandler previous = qInstallMessageHandler(collect);
        enter(QStringLiteral("QUIT"));
        qInstallMessageHandler(previous);
        ASSERT_TRUE(form.IsLoaded());
        EXPECT_EQ(form.con_Terminal->InputText(), "");
        if (row.error)
            EXPECT_TRUE(g_messages.join('\n').contains(row.error))
                << g_messages.join('\n').toStdString();
        else
            EXPECT_TRUE(g_messages.isEmpty());
    }
}

TEST_F(FtpConsoleTest, TheTerminalFillsTheWindowAsItIsResized)
{
    show();
    for (const QSize size : {QSize(640, 420), QSize(300, 200), QSize(900, 700)}) {
        form.window()->resize(size);
        ProcessEvents();
        EXPECT_EQ(form.con_Terminal->widget()->geometry(), QRect(QPoint(0, 0), size));
    }
}

} // namespace
