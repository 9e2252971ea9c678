// The desktop host's network service against a real Samba server on the
// loopback: domains, hosts, shares, and drive letters mapped to its shares.
#include "desktop/DesktopFiles.h"
#include "desktop/DesktopNetwork.h"
#include "desktop/DesktopRegistry.h"
#include "desktop/HostDiscovery.h"
#include "support/FtpServer.h"
#include "support/SambaSuite.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <cstdlib>
#include <gtest/gtest.h>

using namespace fw::desktop;
using fw::testing::DeadPort;
using fw::testing::SambaServer;
using fw::testing::SambaSuite;

namespace {

std::vector<std::string> itemsOf(const fw::StringList& list)
{
    std::vector<std::string> items;
    for (int i = 1; i <= list.Count(); ++i)
        items.push_back(list.Item(i));
    return items;
}

std::vector<VolumeRecord> rootOnly()
{
    return {{"/", "/dev/sda2", "ext4", "", "/dev/sda2", false, false}};
}

class DesktopNetworkTest : public SambaSuite {
  protected:
    static std::string setting(const char* value)
    {
        return std::string(DesktopNetwork::SettingsKey) + '\\' + value;
    }
    std::string host() const { return "127.0.0.1:" + std::to_string(server->Port()); }
    std::string share(const char* name) const { return "\\\\" + host() + "\\" + name; }
    std::unique_ptr<DesktopFiles> newFiles() const
    {
        return std::make_unique<DesktopFiles>(registry, rootOnly);
    }

    QTemporaryDir dir;
    std::shared_ptr<DesktopRegistry> registry =
        std::make_shared<DesktopRegistry>(std::make_shared<SettingsStore>(dir.path()));
};

TEST_F(DesktopNetworkTest, TheConfiguredWorkgroupGathersAnnouncedAddedAndKnownHosts)
{
    registry->WriteString(fw::HiveCurrentUser, setting("Hosts"), " zeta ;" + host() + ";;");
    registry->WriteString(fw::HiveCurrentUser, setting("KnownHosts"), "ZETA;alpha.local");
    // Hosts announced through DNS-SD come in too; a fixed list stands for the
    // daemon, which a test machine may or may not run.
    SmbClient client;
    const auto network = std::make_shared<DesktopNetwork>(
        [&]() -> SmbClient& { return client; }, std::make_shared<NetworkDrives>(registry), registry,
        DesktopNetwork::Volumes{},
        [] {
            return std::vector<std::string>{"beta.local", "Alpha.local"};
        });
    const std::vector<std::string> domains = itemsOf(network->Domains());
    const std::string workgroup = DesktopNetwork::ConfiguredWorkgroup();
    EXPECT_NE(std::find(domains.begin(), domains.end(), workgroup), domains.end());
    EXPECT_EQ(itemsOf(network->Hosts(workgroup)),
              (std::vector<std::string>{host(), "Alpha.local", "beta.local", "zeta"}));
    EXPECT_EQ(network->Hosts("NIRGENDWO").Count(), 0);
}

TEST_F(DesktopNetworkTest, SharesAreTheServersDiskSharesWithTheirDisplayText)
{
    const auto files = newFiles();
    const auto network = files->Network();
    const fw::ShareList shares = network->Shares(host());
    std::vector<std::pair<std::string, std::string>> seen;
    for (const fw::ShareInfo& share : shares.items()) {
        EXPECT_EQ(share.Type, fw::ShareInfo::Disk) << share.Name;
        seen.emplace_back(share.Name, share.Remarks.Item(1));
    }
    // The display text is the comment, else the name.
    EXPECT_EQ(seen, (std::vector<std::pair<std::string, std::string>>{
                        {"Daten", "Daten"},
                        {"Geschlossen", "Geschlossen"},
                        {"Versteckt$", "Versteckt$"},
                        {"Öffentlich", "Für alle"},
                    }));
}

TEST_F(DesktopNetworkTest, AHostThatDoesNotAnswerFailsWithinTheTimeout)
{
    DeadPort silent(DeadPort::Silent);
    const std::string dead = "\\\\127.0.0.1:" + std::to_string(silent.Port());
    // Not the default 10 s for each call to a host that does not answer.
    registry->WriteNumber(fw::HiveCurrentUser, setting("TimeoutSeconds"), 2);
    const auto files = newFiles();
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(files->Network()->Shares(dead.substr(2)).Count(), 0);
    bool ok = true;
    EXPECT_NE(files->Network()->Connect(dead + "\\Daten", "R:\\", "", "", false, ok), "");
    EXPECT_FALSE(ok);
    // A mapping whose server went away: the chooser's not-ready case.
    files->Mapped().Map("N:", dead + "\\Daten", false);
    EXPECT_FALSE(files->FolderExists("N:\\"));
    EXPECT_NE(files->FolderError("N:\\"), "");
    EXPECT_LT(clock.elapsed(), 12000); // four calls of at most 2 s each, not the default 10 s
}

TEST_F(DesktopNetworkTest, ConnectMapsAFreeLetterToAShareThatAnswers)
{
    const auto files = newFiles();
    const auto network = files->Network();
    QDir(server->ShareFolder(SambaServer::Daten)).mkpath("Ablage/2024");
    struct Row {
        std::string remote;
        const char* local;
        bool persist;
        bool ok;
    } const rows[] = {
        {share("Daten") + "\\", "X:\\", true, true},
        {"smb://" + host() + "/%C3%96ffentlich", "y:", false, true},
        {share("Daten"), "X:\\", false, false},         // the letter is mapped already
        {share("Daten"), "C:\\", false, false},         // a volume holds it
        {share("Daten"), "B:\\", false, false},         // no letter for mapping
        {share("Gibtsnicht"), "Q:\\", false, false},    // no such share
        {"\\\\" + host() + "\\", "Q:\\", false, false}, // no share named
        {share("Daten") + "\\Ablage\\2024\\", "W:", false, true},
        {share("Daten") + "\\Ablage\\2025", "V:", false, false}, // no such folder
    };
    for (const Row& row : rows) {
        bool ok = !row.ok;
        const std::string message =
            network->Connect(row.remote, row.local, "", "", row.persist, ok);
        EXPECT_EQ(ok, row.ok) << row.remote << " " << row.local << ": " << message;
        EXPECT_EQ(message.empty(), row.ok) << row.remote;
    }
    EXPECT_EQ(itemsOf(network->MappedDrives()), (std::vector<std::string>{"W:", "X:", "Y:"}));
    EXPECT_EQ(network->UncOfDrive("X:"), share("Daten"));
    EXPECT_EQ(network->UncOfDrive("W:"), share("Daten") + "\\Ablage\\2024");
    EXPECT_TRUE(files->CreateFolder("W:\\Neu\\"));
    EXPECT_TRUE(QDir(server->ShareFolder(SambaServer::Daten) + "/Ablage/2024/Neu").exists());
    EXPECT_TRUE(network->Disconnect("W:"));
    EXPECT_TRUE(QDir(server->ShareFolder(SambaServer::Daten) + "/Ablage").removeRecursively());
    EXPECT_EQ(files->DriveType("X:"), 4);
    EXPECT_EQ(itemsOf(files->DrivesOfType(4)), (std::vector<std::string>{"X:", "Y:"}));
    const std::string known =
        registry->ReadString(fw::HiveCurrentUser, setting("KnownHosts"), "", 0);
    EXPECT_EQ(known, host());

    // "X:\\" lists, creates and deletes on the share.
    const QString folder = server->ShareFolder(SambaServer::Daten);
    ASSERT_TRUE(QFile(folder + "/Bericht.txt").open(QIODevice::WriteOnly));
    const auto listed = files->ListFiles("X:\\", "*.txt");
    ASSERT_EQ(listed.size(), 1u);
    EXPECT_EQ(listed[0].Name, "Bericht.txt");
    EXPECT_TRUE(files->CreateFolder("X:\\Neu\\"));
    EXPECT_TRUE(QDir(folder + "/Neu").exists());
    EXPECT_TRUE(files->DeleteFolder("X:\\Neu\\"));
    EXPECT_TRUE(files->DeleteFile("X:\\Bericht.txt"));
    EXPECT_TRUE(QDir(folder).isEmpty());

    // Only the mapping asked to persist is there for the next program.
    const auto next = newFiles();
    EXPECT_EQ(itemsOf(next->Network()->MappedDrives()), (std::vector<std::string>{"X:"}));
    EXPECT_TRUE(next->Network()->Disconnect("X:"));
    EXPECT_EQ(next->DriveType("X:"), 0);
    EXPECT_EQ(newFiles()->Network()->MappedDrives().Count(), 0);
}

TEST(HostDiscovery, WithoutAnAvahiDaemonFindsNothingAtOnce)
{
    // A system bus that is not there stands for a machine without the daemon.
    const char* saved = std::getenv("DBUS_SYSTEM_BUS_ADDRESS");
    const std::string restore = saved ? saved : "";
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/system_bus_socket", 1);
    QElapsedTimer clock;
    clock.start();
    EXPECT_TRUE(DiscoverSmbHosts(5000).empty());
    EXPECT_LT(clock.elapsed(), 4000); // gave up, did not wait for the browse time
    if (saved)
        setenv("DBUS_SYSTEM_BUS_ADDRESS", restore.c_str(), 1);
    else
        unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
}

} // namespace
