// A share of a real Samba server reached the way a user reaches it: the
// chooser's tools menu, the map-drive dialog, the network browser, then work
// on the new drive letter, over the desktop host's own files and network.
#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Label.h"
#include "desktop/DesktopRegistry.h"
#include "filechooser/ChooserTestSupport.h"
#include "filechooser/frm_DialogFile.h"
#include "folders/frm_DialogFolder.h"
#include "folders/frm_DialogNetworkAdd.h"
#include "folders/frm_DialogNetworkBrowse.h"
#include "forms/Text.h"
#include "forms/TreeView.h"
#include "forms/testing/ListInput.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/TreeInput.h"
#include "forms/testing/UserInput.h"
#include "support/SambaSuite.h"

#include <QDir>
#include <QFile>
#include <QFontMetrics>
#include <QTest>
#include <gtest/gtest.h>

namespace fw {
namespace {

using testing::ModalDriver;
using testing::SambaServer;
using testing::SambaSuite;

class NetworkEndToEnd : public SambaSuite {
  protected:
    void SetUp() override
    {
        SambaSuite::SetUp();
        if (IsSkipped())
            return;
        registry->WriteString(
            HiveCurrentUser, std::string(desktop::DesktopNetwork::SettingsKey) + "\\Hosts", host());
        // One volume only, so that the free letters do not depend on the machine.
        world.host->CoreDevFiles = std::make_shared<desktop::DesktopFiles>(registry, [] {
            return std::vector<desktop::VolumeRecord>{
                {"/", "/dev/sda2", "ext4", "", "/dev/sda2", false, false}};
        });
        world.host->folders.documents = world.FolderLocation();
        shareFolder = server->ShareFolder(SambaServer::Daten);
        QDir(shareFolder).removeRecursively();
        QDir().mkpath(shareFolder);
        QFile(shareFolder + "/Bericht.txt").open(QIODevice::WriteOnly);
    }

    static std::string host() { return "127.0.0.1:" + std::to_string(server->Port()); }

    /// Tools menu, "Netzwerklaufwerk verbinden", "durchsuchen", the share
    /// "Daten" in the browser, OK; returns the letter's root the chooser went to.
    std::string mapDatenThroughBrowser(ctl_Button& tool)
    {
        std::string root;
        driver.OnNextModal([&](Form& shown) {
            auto& mapper = static_cast<frm_DialogNetworkAdd&>(shown);
            driver.OnNextModal([&](Form& browsing) { pickDaten(browsing); });
            // "durchsuchen" is the link behind "Netzwerk ".
            QWidget* label = mapper.ctl_Label1->widget();
            const int linkStart =
                QFontMetrics(label->font()).horizontalAdvance(QStringLiteral("Netzwerk "));
            QTest::mouseClick(label, Qt::LeftButton, {},
                              QPoint(linkStart + 12, label->height() / 2));
            EXPECT_EQ(us(mapper.txt_NetworkShare->Text()), "\\\\" + host() + "\\Daten\\");
            root = us(mapper.lst_DriveLetter->Text()) + "\\";
            mapper.bar_Buttons->Press(QStringLiteral("OK"));
            EXPECT_TRUE(mapper.IsUnloaded()) << "the share did not connect";
        });
        world.host->queueMenuChoice("ADDCONNECTION");
        testing::Click(tool);
        EXPECT_EQ(driver.Pending(), 0);
        return root;
    }

    void pickDaten(Form& shown)
    {
        auto& browser = static_cast<frm_DialogNetworkBrowse&>(shown);
        TreeView& tree = *browser.tvw_Network;
        TreeNode* workgroup =
            tree.Nodes().Find(qs(desktop::DesktopNetwork::ConfiguredWorkgroup()).toUpper() + u':');
        ASSERT_NE(workgroup, nullptr);
        if (!workgroup->Expanded())
            testing::ClickExpander(tree, *workgroup);
        TreeNode* server = tree.Nodes().Find(qs("\\\\" + host()));
        ASSERT_NE(server, nullptr) << "the host added by hand is not listed";
        testing::ClickExpander(tree, *server);
        TreeNode* share = tree.Nodes().Find(qs("\\\\" + host() + "\\Daten\\"));
        ASSERT_NE(share, nullptr);
        testing::ClickNode(tree, *share);
        browser.bar_Buttons->Press(QStringLiteral("OK"));
    }

    template <typename Chooser>
    void run(const std::shared_ptr<DialogContext>& ctx, const std::function<void(Chooser&)>& action)
    {
        Chooser chooser;
        chooser.Context = ctx;
        driver.OnNextModal([&](Form&) {
            action(chooser);
            if (!chooser.IsUnloaded())
                chooser.Unload();
        });
        chooser.Show(true);
    }

    QTemporaryDir storeDir;
    std::shared_ptr<desktop::DesktopRegistry> registry = std::make_shared<desktop::DesktopRegistry>(
        std::make_shared<desktop::SettingsStore>(storeDir.path()));
    testing::ChooserWorld world{false};
    ModalDriver driver;
    QString shareFolder;
};

TEST_F(NetworkEndToEnd, FileChooserMapsABrowsedShareAndWorksOnIt)
{
    auto ctx = std::make_shared<DialogContext>();
    ctx->Request.Mode = 1;
    std::string root;
    run<frm_DialogFile>(ctx, [&](frm_DialogFile& f) {
        root = mapDatenThroughBrowser(*f.but_Tool);
        ASSERT_EQ(root.size(), 3u);
        EXPECT_EQ(f.Places().CurrentPath, root);
        EXPECT_EQ(testing::RowTexts(*f.lst_Files), std::vector<std::string>{"Bericht.txt"});

        world.host->queueMenuChoice("CREATEFOLDER");
        world.host->queueTextAnswer("Neu");
        testing::Click(*f.but_Tool);
        EXPECT_TRUE(QDir(shareFolder + "/Neu").exists());

        f.GotoFolder(root);
        ListItems& rows = f.lst_Files->ListItems();
        ASSERT_EQ(testing::RowTexts(*f.lst_Files),
                  (std::vector<std::string>{"Neu", "Bericht.txt"}));
        testing::ClickItem(*f.lst_Files, rows.Item(2));
        f.bar_Buttons->Press(QStringLiteral("OK"));
        EXPECT_TRUE(QTest::qWaitFor([&] { return f.IsUnloaded(); }, 2000));
    });
    EXPECT_EQ(ctx->Request.Result, 1);
    ASSERT_EQ(ctx->Items.ItemList.Count(), 1);
    EXPECT_EQ(ctx->Items.ItemList.Item(1), root + "Bericht.txt");
}

TEST_F(NetworkEndToEnd, FolderChooserMapsAShareAndLetsItGoAgain)
{
    auto ctx = std::make_shared<DialogContext>();
    ctx->Items.ItemList.Add(world.FolderLocation());
    run<frm_DialogFolder>(ctx, [&](frm_DialogFolder& f) {
        const std::string root = mapDatenThroughBrowser(*f.but_Tool);
        ASSERT_EQ(root.size(), 3u);
        EXPECT_EQ(f.Places().CurrentPath, root);
        EXPECT_EQ(world.host->CoreDevFiles->Network()->UncOfDrive(root.substr(0, 2)),
                  "\\\\" + host() + "\\Daten");

        world.host->queueMenuChoice("REMOVECONNECTION." + root.substr(0, 2));
        testing::Click(*f.but_Tool);
        EXPECT_EQ(f.Places().CurrentPath, "WORKSTATION:\\");
        EXPECT_EQ(world.host->CoreDevFiles->Network()->MappedDrives().Count(), 0);
        EXPECT_EQ(world.host->CoreDevFiles->DriveType(root.substr(0, 2)), 0);
    });
}

} // namespace
} // namespace fw
