// The network browser, opened node by node with clicks and answered with
// keys, against the scripted host's network.
#include "controls/ctl_CmdBar.h"
#include "folders/frm_DialogNetworkBrowse.h"
#include "forms/Screen.h"
#include "forms/TreeView.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/TreeInput.h"
#include "forms/testing/UserInput.h"
#include "testing/TestHost.h"

#include <gtest/gtest.h>

#include <functional>

using namespace fw;
using namespace fw::testing;
using Texts = std::vector<std::string>;

namespace {

const std::string kWrongEntry = "ShowInfo(Sie haben nicht den richtigen Eintrag ausgewählt. Bitte "
                                "wählen Sie eine Netzwerkfreigabe aus der Liste aus!|)";

// One workgroup with two hosts; "nas" has visible, hidden and described shares.
void fillNetwork(TestHost& host, Texts domains)
{
    host.network.domains = std::move(domains);
    host.network.hosts["Arbeitsgruppe"] = {"nas", "alpha"};
    host.network.hosts["Zweite"] = {"beta"};
    host.network.shares["NAS"] = {"daten", "c$", "public|Für alle (Öffentlich)", "Admin$",
                                  "bilder"};
}

TreeNode& node(frm_DialogNetworkBrowse& form, const char* key)
{
    return form.tvw_Network->Nodes().Item(QString::fromUtf8(key));
}

Texts childTexts(const TreeNode& parent)
{
    Texts texts;
    for (TreeNode* child = parent.Child(); child; child = child->Next())
        texts.push_back(child->Text().toStdString());
    return texts;
}

// Opens a host by a click on it and picks one of its shares with another.
void clickShare(frm_DialogNetworkBrowse& form, const char* share)
{
    ClickNode(*form.tvw_Network, node(form, "\\\\NAS"));
    ClickNode(*form.tvw_Network, node(form, share));
}

struct BrowseCase {
    const char* name;
    int mode;
    Texts domains;
    std::function<void(frm_DialogNetworkBrowse&)> act;
    bool accepted;
    std::string selected, message;
    Texts networkCalls; ///< Domains, Hosts and Shares, in order
};

TEST(NetworkBrowser, EachModeAcceptsItsOwnKindOfEntryOnly)
{
    const auto pressOk = [](frm_DialogNetworkBrowse& f) { PressKey(f, Qt::Key_Return); };
    const auto stayThenLeave = [](std::function<void(frm_DialogNetworkBrowse&)> first) {
        return [first](frm_DialogNetworkBrowse& f) {
            first(f);
            EXPECT_FALSE(f.IsUnloaded());
            PressKey(f, Qt::Key_Escape);
        };
    };
    const Texts one{"Arbeitsgruppe"}, two{"Arbeitsgruppe", "Zweite"};
    const Texts opened{"Domains()", "Hosts(Arbeitsgruppe)"};
    const Texts toShares{"Domains()", "Hosts(Arbeitsgruppe)", "Shares(NAS)"};
    // clang-format off
    const BrowseCase cases[] = {
        {"share picked by clicks", 0, one,
         [&](frm_DialogNetworkBrowse& f) { clickShare(f, "\\\\nas\\daten\\"); pressOk(f); },
         true, "\\\\nas\\daten\\", "", toShares},
        {"share picked by a double click", 0, one,
         [&](frm_DialogNetworkBrowse& f) {
             ClickNode(*f.tvw_Network, node(f, "\\\\NAS"));
             DoubleClickNode(*f.tvw_Network, node(f, "\\\\nas\\public\\"));
         },
         true, "\\\\nas\\public\\", "", toShares},
        {"no domain: a share is asked for first", 0, {}, stayThenLeave(pressOk), false, "",
         "ShowInfo(Wählen Sie erst eine Netzwerkfreigabe aus!|)", {"Domains()"}},
        {"a host is not a share", 0, one,
         stayThenLeave([&](frm_DialogNetworkBrowse& f) { ClickNode(*f.tvw_Network, node(f, "\\\\NAS")); pressOk(f); }),
         false, "", kWrongEntry, toShares},
        {"the domain opened at load is not a share", 0, one, stayThenLeave(pressOk), false, "",
         kWrongEntry, opened},
        {"host comes back upper-cased", 1, one,
         [&](frm_DialogNetworkBrowse& f) { ClickNode(*f.tvw_Network, node(f, "\\\\ALPHA")); pressOk(f); },
         true, "\\\\ALPHA", "", {"Domains()", "Hosts(Arbeitsgruppe)", "Shares(ALPHA)"}},
        {"a share is not a host", 1, one,
         stayThenLeave([&](frm_DialogNetworkBrowse& f) { clickShare(f, "\\\\nas\\bilder\\"); pressOk(f); }),
         false, "", "ShowInfo(Sie haben nicht den richtigen Eintrag ausgewählt. Bitte wählen Sie einen Rechner aus der Liste aus!|)",
         toShares},
        {"domain selected at load comes back upper-cased with its colon", 2, one, pressOk, true,
         "ARBEITSGRUPPE:", "", opened},
        {"two domains stay closed until one is clicked", 2, two,
         [&](frm_DialogNetworkBrowse& f) {
             EXPECT_FALSE(node(f, "ARBEITSGRUPPE:").Expanded());
             ClickNode(*f.tvw_Network, node(f, "ZWEITE:"));
             pressOk(f);
         },
         true, "ZWEITE:", "", {"Domains()", "Hosts(Zweite)"}},
        {"help leaves it open", 0, one,
         stayThenLeave([](frm_DialogNetworkBrowse& f) { f.bar_Buttons->Press(QStringLiteral("HELP")); }),
         false, "", "ShowHelp(In diesem Dialog können Sie die verfügbaren Netzwerke nach Freigaben durchsuchen|Netzwerk durchsuchen)",
         opened},
    };
    // clang-format on
    for (const BrowseCase& c : cases) {
        SCOPED_TRACE(c.name);
        ScopedTestHost host;
        fillNetwork(*host, c.domains);
        ModalDriver driver;
        frm_DialogNetworkBrowse form;
        form.BrowseMode = c.mode;
        form.Accepted = true; // the form starts from false itself
        driver.OnNextModal([&](Form&) { c.act(form); });

        form.Show(true);
        ASSERT_TRUE(form.IsUnloaded());
        EXPECT_EQ(form.Accepted, c.accepted);
        EXPECT_EQ(form.SelectedPath.toStdString(), c.selected);
        Texts messages = host->callsTo("ShowInfo");
        for (const std::string& help : host->callsTo("ShowHelp"))
            messages.push_back(help);
        EXPECT_EQ(messages.empty() ? std::string() : messages.back(), c.message);
        Texts asked;
        for (const std::string& call : host->calls)
            if (call.starts_with("Domains") || call.starts_with("Hosts") ||
                call.starts_with("Shares"))
                asked.push_back(call);
        EXPECT_EQ(asked, c.networkCalls);
    }
}

TEST(NetworkBrowser, SharesStandSortedWithHiddenOnesLastInGreyAndAreAskedForOnce)
{
    ScopedTestHost host;
    fillNetwork(*host, {"Arbeitsgruppe"});
    ModalDriver driver;
    frm_DialogNetworkBrowse form;
    driver.OnNextModal([&](Form&) {
        TreeNode& domain = node(form, "ARBEITSGRUPPE:");
        EXPECT_TRUE(domain.Expanded());
        EXPECT_EQ(childTexts(domain), (Texts{"alpha", "nas"}));
        TreeNode& nas = node(form, "\\\\NAS");
        EXPECT_EQ(childTexts(nas), Texts{frm_DialogNetworkBrowse::PlaceholderText});
        EXPECT_EQ(nas.Tag().toStdString(), "\\\\nas");

        ClickExpander(*form.tvw_Network, nas);
        EXPECT_EQ(childTexts(nas),
                  (Texts{"bilder", "daten", "Für alle (Öffentlich) (public)", "Admin$", "c$"}));
        for (TreeNode* share = nas.Child(); share; share = share->Next())
            EXPECT_EQ(share->ForeColor(),
                      share->Text().endsWith(u'$') ? 0x00C0C0C0u : TreeNode::DefaultColor)
                << share->Text().toStdString();
        EXPECT_EQ(Screen::MousePointer(), Screen::Default);

        ClickExpander(*form.tvw_Network, nas); // closed
        ClickExpander(*form.tvw_Network, nas); // and opened again
        EXPECT_TRUE(nas.Expanded());
        EXPECT_EQ(nas.Children(), 5);

        host->failing.insert("Shares"); // a host that cannot be listed is left empty
        TreeNode& alpha = node(form, "\\\\ALPHA");
        ClickExpander(*form.tvw_Network, alpha);
        EXPECT_EQ(alpha.Children(), 0);
        EXPECT_EQ(Screen::MousePointer(), Screen::Default);
        PressKey(form, Qt::Key_Escape);
    });
    form.Show(true);
    EXPECT_EQ(host->callsTo("Shares"), (Texts{"Shares(NAS)", "Shares(ALPHA)"}));
    EXPECT_FALSE(form.Accepted);
}

} // namespace
