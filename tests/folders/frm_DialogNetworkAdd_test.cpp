// The map-drive dialog, filled in by typing, clicking and browsing as a user
// would, against the scripted host's drives and network.
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Label.h"
#include "controls/ctl_Option.h"
#include "folders/frm_DialogNetworkAdd.h"
#include "folders/frm_DialogNetworkBrowse.h"
#include "forms/StdControls.h"
#include "forms/TreeView.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/TreeInput.h"
#include "forms/testing/UserInput.h"
#include "testing/TestHost.h"

#include <QFontMetrics>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

#include <functional>

using namespace fw;
using namespace fw::testing;
using Texts = std::vector<std::string>;

namespace {

const std::string kConnectFailed =
    "ShowError(Die Verbindung konnte nicht hergestellt werden. Übrpfüfen Sie den Netzwerkpfad "
    "und ob Sie über die Berechtigungen verfügen, darauf zuzugreifen.|)";

void typePath(frm_DialogNetworkAdd& form, const QString& path)
{
    Focus(*form.txt_NetworkShare);
    PressKey(form, Qt::Key_A, Qt::ControlModifier);
    Type(form, path);
}

// A click on "durchsuchen", the link behind "Netzwerk ".
void clickBrowseLink(frm_DialogNetworkAdd& form)
{
    QWidget* label = form.ctl_Label1->widget();
    const int linkStart =
        QFontMetrics(label->font()).horizontalAdvance(QStringLiteral("Netzwerk "));
    QTest::mouseClick(label, Qt::LeftButton, {}, QPoint(linkStart + 12, label->height() / 2));
}

struct MapCase {
    const char* name;
    std::map<std::string, int> drivesInUse;
    std::function<void(frm_DialogNetworkAdd&, TestHost&, ModalDriver&)> act;
    Texts lettersOffered; ///< first and last, or none
    bool accepted;
    std::string driveRoot, networkPath;
    Texts connects;
    std::string message;
};

TEST(MapNetworkDrive, AFreeLetterIsJoinedToThePathOnlyWhenTheHostConnects)
{
    const auto connectTyped = [](frm_DialogNetworkAdd& f, TestHost& host, ModalDriver&) {
        typePath(f, QStringLiteral("\\\\nas\\daten"));
        host.queueConnectResult(true);
        PressKey(f, Qt::Key_Return);
    };
    const auto failThenLeave = [](frm_DialogNetworkAdd& f, TestHost& host, ModalDriver&) {
        typePath(f, QStringLiteral("\\\\weg\\nichts"));
        host.queueConnectResult(false, "nicht erreichbar");
        f.bar_Buttons->Press(QStringLiteral("OK"));
        EXPECT_FALSE(f.IsUnloaded());
        PressKey(f, Qt::Key_Escape);
    };
    const auto browseThen = [](bool pickShare, std::function<void(frm_DialogNetworkAdd&)> after) {
        return [pickShare, after](frm_DialogNetworkAdd& f, TestHost&, ModalDriver& driver) {
            typePath(f, QStringLiteral("getippt"));
            driver.OnNextModal([pickShare](Form& shown) {
                auto& browser = static_cast<frm_DialogNetworkBrowse&>(shown);
                EXPECT_EQ(browser.BrowseMode, frm_DialogNetworkBrowse::ChooseShare);
                if (pickShare) {
                    ClickNode(*browser.tvw_Network,
                              browser.tvw_Network->Nodes().Item(QStringLiteral("\\\\NAS")));
                    DoubleClickNode(*browser.tvw_Network, browser.tvw_Network->Nodes().Item(
                                                              QStringLiteral("\\\\nas\\daten\\")));
                } else {
                    PressKey(shown, Qt::Key_Escape);
                }
            });
            clickBrowseLink(f);
            EXPECT_EQ(driver.Pending(), 0);
            after(f);
        };
    };
    const auto expectPath = [](const char* path) {
        return [path](frm_DialogNetworkAdd& f) {
            EXPECT_EQ(f.txt_NetworkShare->Text(), QString::fromUtf8(path));
            PressKey(f, Qt::Key_Escape);
        };
    };
    const auto restoredAtStart = [](frm_DialogNetworkAdd& f, TestHost& host, ModalDriver&) {
        Click(*f.lab_UpdateProfile);
        EXPECT_TRUE(f.opt_UpdateProfile->Value());
        Click(*f.opt_UpdateProfile);
        Click(*f.opt_UpdateProfile);
        typePath(f, QStringLiteral("\\\\nas\\bilder\\"));
        Focus(*f.lst_DriveLetter);
        Type(f, QStringLiteral("x"));
        host.queueConnectResult(true);
        f.bar_Buttons->Press(QStringLiteral("OK"));
    };
    const auto help = [](frm_DialogNetworkAdd& f, TestHost&, ModalDriver&) {
        f.bar_Buttons->Press(QStringLiteral("HELP"));
        EXPECT_FALSE(f.IsUnloaded());
        f.bar_Buttons->Press(QStringLiteral("ABORT"));
    };
    std::map<std::string, int> everyLetter;
    for (char letter = 'C'; letter <= 'Z'; ++letter)
        everyLetter[std::string{letter, ':'}] = 3;
    const std::map<std::string, int> some{{"C:", 3}, {"D:", 5}, {"F:", 4}, {"Z:", 2}};
    const Texts eToY{"E:", "Y:"}, cToZ{"C:", "Z:"};
    // clang-format off
    const MapCase cases[] = {
        {"first free letter, typed path", some, connectTyped, eToY, true, "E:\\", "\\\\nas\\daten",
         {"Connect(\\\\nas\\daten|E:\\|||0)"}, ""},
        {"every letter in use: an empty choice, and the host refuses", everyLetter, failThenLeave, {},
         false, "", "", {"Connect(\\\\weg\\nichts|\\|||0)"}, kConnectFailed},
        {"a failed connection keeps the dialog open", {}, failThenLeave, cToZ, false, "", "",
         {"Connect(\\\\weg\\nichts|C:\\|||0)"}, kConnectFailed},
        {"a browsed share shows its trailing backslash; aborting connects nothing", {},
         browseThen(true, expectPath("\\\\nas\\daten\\")), cToZ, false, "", "", {}, ""},
        {"browsing abandoned keeps the typed path", {}, browseThen(false, expectPath("getippt")),
         cToZ, false, "", "", {}, ""},
        {"restored at start, on a letter picked by key", some, restoredAtStart, eToY, true, "X:\\",
         "\\\\nas\\bilder\\", {"Connect(\\\\nas\\bilder\\|X:\\|||1)"}, ""},
        {"help leaves it open", {}, help, cToZ, false, "", "", {},
         "ShowHelp(In diesem Dialog können Sie einen freien Laufwerksbuchstaben mit einem "
         "Netzwerkpfad verbinden um später bequem darauf zugreifen zu können.|Netzwerklaufwerk verbinden)"},
    };
    // clang-format on
    for (const MapCase& c : cases) {
        SCOPED_TRACE(c.name);
        ScopedTestHost host;
        host->driveTypes = c.drivesInUse;
        host->driveTypes["A:"] = 0;
        host->network.domains = {"Arbeitsgruppe"};
        host->network.hosts["Arbeitsgruppe"] = {"nas"};
        host->network.shares["NAS"] = {"daten"};
        ModalDriver driver;
        frm_DialogNetworkAdd form;
        driver.OnNextModal([&](Form&) {
            ComboBox& letters = *form.lst_DriveLetter;
            Texts offered;
            if (letters.ListCount() > 0)
                offered = {letters.List(0).toStdString(),
                           letters.List(letters.ListCount() - 1).toStdString()};
            EXPECT_EQ(offered, c.lettersOffered);
            EXPECT_EQ(letters.ListIndex(), letters.ListCount() > 0 ? 0 : -1);
            EXPECT_EQ(letters.Text(), letters.ListCount() > 0 ? letters.List(0) : QString());
            c.act(form, *host, driver);
        });

        form.Show(true);
        ASSERT_TRUE(form.IsUnloaded());
        EXPECT_EQ(form.Accepted, c.accepted);
        EXPECT_EQ(form.DriveRoot.toStdString(), c.driveRoot);
        EXPECT_EQ(form.NetworkPath.toStdString(), c.networkPath);
        EXPECT_EQ(host->callsTo("Connect"), c.connects);
        Texts messages = host->callsTo("ShowError");
        for (const std::string& help : host->callsTo("ShowHelp"))
            messages.push_back(help);
        EXPECT_EQ(messages.empty() ? std::string() : messages.back(), c.message);
        EXPECT_TRUE(host->network.mapped.size() == (c.accepted ? 1u : 0u));
        for (const std::string& asked : host->callsTo("DriveType"))
            EXPECT_TRUE(asked != "DriveType(A:)" && asked != "DriveType(B:)") << asked;
    }
}

} // namespace
