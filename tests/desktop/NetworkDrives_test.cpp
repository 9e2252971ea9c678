// Drive letters mapped to shares: which mappings are taken, what persists,
// and how the desktop host's drive list shows them.
#include "desktop/DesktopFiles.h"
#include "desktop/DesktopRegistry.h"
#include "desktop/NetworkDrives.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace fw::desktop;

namespace {

struct StoreFixture : ::testing::Test {
    QTemporaryDir dir;
    std::shared_ptr<DesktopRegistry> registry =
        std::make_shared<DesktopRegistry>(std::make_shared<SettingsStore>(dir.path()));

    void writeRaw(char letter, const std::string& value)
    {
        registry->WriteString(fw::HiveCurrentUser,
                              std::string(NetworkDrives::StoreKey) + '\\' + letter, value);
    }
};

using NetworkDrivesTest = StoreFixture;

TEST_F(NetworkDrivesTest, OnlyLettersCToZAndPathsOnAShareAreMapped)
{
    struct Row {
        const char* drive;
        const char* unc;
        const char* mapped; // nullptr: refused
    } const rows[] = {
        {"X:", "\\\\nas\\Daten", "\\\\nas\\Daten"},
        {"x:\\", "\\\\nas\\Daten\\", "\\\\nas\\Daten"},
        {"Y", "\\\\127.0.0.1:4445\\Versteckt$", "\\\\127.0.0.1:4445\\Versteckt$"},
        {"C:", "\\\\nas\\Daten", "\\\\nas\\Daten"},
        {"B:", "\\\\nas\\Daten", nullptr},
        {"XY", "\\\\nas\\Daten", nullptr},
        {"X:\\a", "\\\\nas\\Daten", nullptr},
        {"Z:", "\\\\nas\\", nullptr},
        {"Z:", "\\\\nas\\Daten\\Unter\\\\ordner\\", "\\\\nas\\Daten\\Unter\\ordner"},
        {"Z:", "D:\\Daten", nullptr},
        {"Z:", "\\\\nas:99999\\Daten", nullptr},
    };
    for (const Row& row : rows) {
        NetworkDrives drives(nullptr);
        EXPECT_EQ(drives.Map(row.drive, row.unc, false), row.mapped != nullptr) << row.drive;
        EXPECT_EQ(drives.UncOf(row.drive), row.mapped ? row.mapped : "") << row.drive;
    }
}

TEST_F(NetworkDrivesTest, OnlyPersistedMappingsOutliveTheProcess)
{
    {
        NetworkDrives drives(registry);
        ASSERT_TRUE(drives.Map("P:", "\\\\nas\\Daten", true));
        ASSERT_TRUE(drives.Map("S:", "\\\\nas\\Temp", false));
        ASSERT_TRUE(drives.Map("R:", "\\\\nas\\Alt", true));
        ASSERT_TRUE(drives.Map("R:", "\\\\nas\\Neu", false)); // a session mapping takes R: over
        EXPECT_EQ(drives.All().size(), 3u);
    }
    NetworkDrives again(registry);
    EXPECT_EQ(again.All(), (std::map<char, std::string>{{'P', "\\\\nas\\Daten"}}));
    EXPECT_TRUE(again.Unmap("p:\\"));
    EXPECT_FALSE(again.Unmap("P:"));
    EXPECT_TRUE(NetworkDrives(registry).All().empty());
}

TEST_F(NetworkDrivesTest, GarbageInTheStoreReadsAsNoMapping)
{
    writeRaw('D', "garbage");
    writeRaw('E', "\\\\host\\");
    writeRaw('F', "\\\\host\\share\\below\\");
    writeRaw('G', "");
    writeRaw('A', "\\\\host\\share"); // not a letter that maps
    registry->WriteNumber(fw::HiveCurrentUser, std::string(NetworkDrives::StoreKey) + "\\H", 7);
    writeRaw('K', "\\\\host\\share\\");
    EXPECT_EQ(
        NetworkDrives(registry).All(),
        (std::map<char, std::string>{{'F', "\\\\host\\share\\below"}, {'K', "\\\\host\\share"}}));
}

TEST_F(NetworkDrivesTest, LocationsOnAMappedLetterResolveToTheShare)
{
    NetworkDrives drives(nullptr);
    drives.Map("X:", "\\\\nas\\Daten", false);
    drives.Map("U:", "\\\\nas\\Daten\\Unter\\", false);
    const std::pair<const char*, const char*> rows[] = {
        {"U:\\a.txt", "\\\\nas\\Daten\\Unter\\a.txt"},
        {"U:", "\\\\nas\\Daten\\Unter\\"},
        {"X:\\a\\b.txt", "\\\\nas\\Daten\\a\\b.txt"},
        {"x:\\a\\", "\\\\nas\\Daten\\a\\"},
        {"X:\\", "\\\\nas\\Daten\\"},
        {"X:", "\\\\nas\\Daten\\"},
        {"X:a", "X:a"},
        {"Y:\\a", "Y:\\a"},
        {"\\\\nas\\Daten\\a", "\\\\nas\\Daten\\a"},
        {"NETHOOD:\\", "NETHOOD:\\"},
    };
    for (const auto& [location, resolved] : rows)
        EXPECT_EQ(drives.Resolve(location), resolved) << location;
}

using MappedLetters = StoreFixture;

TEST_F(MappedLetters, ShowAsNetworkDrivesAndKeepVolumesOffTheirLetters)
{
    const auto mounts = [] {
        return std::vector<VolumeRecord>{
            {"/", "/dev/sda2", "ext4", "", "/dev/sda2", false, false},
            {"/media/STICK", "/dev/sdb1", "vfat", "STICK", "uuid-stick", true, false},
            {"/mnt/nas", "//nas/public", "cifs", "", "//nas/public", false, false},
        };
    };
    {
        // The stick and the mounted share take D: and E: on the first run.
        DesktopFiles files(registry, mounts);
        ASSERT_EQ(files.DriveType("D:"), 2);
        ASSERT_EQ(files.DriveType("E:"), 4);
        ASSERT_TRUE(files.Mapped().Map("D:", "\\\\nas\\Daten", true));
    }
    DesktopFiles files(registry, mounts);
    EXPECT_EQ(files.DriveType("D:"), 4);
    EXPECT_EQ(files.VolumeLabel("D:"), "");
    ASSERT_EQ(files.DrivesOfType(2).Count(), 1);
    EXPECT_EQ(files.DrivesOfType(2).Item(1), "F:"); // the stick moved to a free letter
    const fw::StringList network = files.DrivesOfType(4);
    ASSERT_EQ(network.Count(), 2);
    EXPECT_EQ(network.Item(1), "D:");
    EXPECT_EQ(network.Item(2), "E:");
    EXPECT_EQ(files.DriveType("Q:"), 0);
}

} // namespace
