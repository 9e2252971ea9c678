// The network browser and the map-drive dialog through the `formwerk`
// command: in this process against the scripted host's network, and as the
// built program against the desktop host and a real Samba server.
#include "CliRun.h"
#include "folders/frm_DialogNetworkAdd.h"
#include "folders/frm_DialogNetworkBrowse.h"
#include "forms/TreeView.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/TreeInput.h"
#include "forms/testing/UserInput.h"
#include "support/SambaServer.h"
#include "testing/TestHost.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>

namespace {

using fw::Form;
using namespace fw::testing;

void pickFromTree(Form& form, const char* key)
{
    auto& browser = dynamic_cast<fw::frm_DialogNetworkBrowse&>(form);
    fw::TreeView& tree = *browser.tvw_Network;
    ClickNode(tree, tree.Nodes().Item(QStringLiteral("\\\\NAS")));
    ClickNode(tree, tree.Nodes().Item(QString::fromLatin1(key)));
    PressKey(form, Qt::Key_Return);
}

struct CliCase {
    const char* name;
    QStringList args;
    std::function<void(Form&, TestHost&)> act; ///< null: no window opens
    int code;
    QString out, err;
};

TEST(NetworkCli, TheChosenEntryOrDriveComesBackAsJsonOrPlain)
{
    const auto escape = [](Form& f, TestHost&) { PressKey(f, Qt::Key_Escape); };
    const auto mapTyped = [](Form& f, TestHost& host) {
        Type(f, QStringLiteral("\\\\nas\\daten"));
        host.queueConnectResult(true);
        PressKey(f, Qt::Key_Return);
    };
    // clang-format off
    const CliCase cases[] = {
        {"a share", {"frm_DialogNetworkBrowse"}, [](Form& f, TestHost&) { pickFromTree(f, "\\\\nas\\daten\\"); },
         1, "{\"Result\":1,\"SelectedPath\":\"\\\\\\\\nas\\\\daten\\\\\"}\n", ""},
        {"a host, plain", {"frm_DialogNetworkBrowse", "--browse-mode", "1", "--plain"},
         [](Form& f, TestHost&) { pickFromTree(f, "\\\\NAS"); }, 1, "\\\\NAS\n", ""},
        {"browser cancelled", {"frm_DialogNetworkBrowse", "--browse-mode", "2"}, escape, 2, "{\"Result\":2}\n", ""},
        {"a mode out of range", {"frm_DialogNetworkBrowse", "--browse-mode", "3"}, nullptr, 64, "",
         "formwerk: --browse-mode takes 0 (share), 1 (host) or 2 (domain), not '3'\n"},
        {"a drive mapped", {"frm_DialogNetworkAdd"}, mapTyped, 1,
         "{\"DriveRoot\":\"D:\\\\\",\"NetworkPath\":\"\\\\\\\\nas\\\\daten\",\"Result\":1}\n", ""},
        {"a drive mapped, plain", {"frm_DialogNetworkAdd", "--plain"}, mapTyped, 1, "D:\\\n", ""},
        {"mapping cancelled", {"frm_DialogNetworkAdd"}, escape, 2, "{\"Result\":2}\n", ""},
        {"the map dialog takes no browse mode", {"frm_DialogNetworkAdd", "--browse-mode", "1"}, nullptr,
         64, "", "formwerk: --browse-mode does not apply to frm_DialogNetworkAdd (formwerk "
         "frm_DialogNetworkAdd --help lists what it takes)\n"},
    };
    // clang-format on
    for (const CliCase& c : cases) {
        SCOPED_TRACE(c.name);
        ScopedTestHost host;
        host->driveTypes["C:"] = 3;
        host->network.domains = {"Arbeitsgruppe"};
        host->network.hosts["Arbeitsgruppe"] = {"nas"};
        host->network.shares["NAS"] = {"daten"};
        ModalDriver driver;
        if (c.act)
            driver.OnNextModal([&](Form& form) { c.act(form, *host); });

        const Ran ran = runInProcess(c.args);
        EXPECT_EQ(ran.code, c.code);
        EXPECT_EQ(ran.out, c.out);
        EXPECT_EQ(ran.err, c.err);
        EXPECT_EQ(driver.Pending(), 0);
    }
}

// The built program answers its keys whatever the network holds.
TEST(NetworkCli, TheBuiltProgramListsBothAndAnswersEscapeWithoutANetwork)
{
    const Ran listed = runInProcess({"--list"});
    EXPECT_TRUE(listed.out.contains(QStringLiteral("frm_DialogNetworkBrowse\n")));
    EXPECT_TRUE(listed.out.contains(QStringLiteral("frm_DialogNetworkAdd\n")));
    for (const char* dialog : {"frm_DialogNetworkBrowse", "frm_DialogNetworkAdd"}) {
        const Ran ran = answerProgram({QString::fromLatin1(dialog)}, QStringLiteral("Escape"));
        EXPECT_EQ(ran.code, 2) << dialog << ": " << ran.err.toStdString();
        EXPECT_EQ(ran.out, QStringLiteral("{\"Result\":2}\n")) << dialog;
    }
}

// The folder chooser of the built program on a share of a real Samba server,
// with a settings store of its own.
TEST(NetworkCli, TheFolderChooserOnAShareAnswersWithItsUrlAndUncPath)
{
    SambaServer server;
    if (server.Port() == 0)
        GTEST_SKIP() << server.SkipReason().toStdString();
    for (const char* folder : {"Ablage", "Briefe"})
        QDir(server.ShareFolder(SambaServer::Daten)).mkpath(folder);
    QTemporaryDir home;
    QProcessEnvironment env = quietEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("HOME", home.path());
    env.insert("XDG_CONFIG_HOME", home.filePath(".config"));
    const QString host = QStringLiteral("127.0.0.1:%1").arg(server.Port());
    const struct Row {
        const char* name;
        const char* keys;
        QString folder, location;
    } rows[] = {
        {"OK on the share", "Tab Return", "smb://" + host + "/Daten/", "\\\\" + host + "\\Daten\\"},
        {"a folder of the share entered", "Down Return Tab Return",
         "smb://" + host + "/Daten/Briefe/", "\\\\" + host + "\\Daten\\Briefe\\"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        env.insert("FORMWERK_SCRIPT_KEYS", row.keys);
        const Ran ran =
            startProgram({"frm_DialogFolder", "--folder", "smb://" + host + "/Daten/"}, env);
        EXPECT_EQ(ran.code, 1) << ran.err.toStdString();
        const QJsonObject expected{
            {"Result", 1}, {"Folder", row.folder}, {"Location", row.location}};
        EXPECT_EQ(ran.out.trimmed().toStdString(),
                  QJsonDocument(expected).toJson(QJsonDocument::Compact).toStdString());
    }
}

} // namespace
