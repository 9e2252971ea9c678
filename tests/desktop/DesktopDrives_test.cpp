// Drive letters: which mounts become which drive class, and letters that stay.
#include "desktop/DesktopDrives.h"
#include "desktop/DesktopRegistry.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace fw::desktop;

namespace {

VolumeRecord volume(std::string mount, std::string device, std::string type, bool removable = false,
                    bool optical = false)
{
    return {mount, device, type, "LABEL", device, removable, optical};
}

TEST(DesktopDrives, MountsAreClassifiedAsTheDriveList)
{
    struct Row {
        VolumeRecord volume;
        int type;
    };
    const Row rows[] = {
        {volume("/", "/dev/sda2", "ext4"), 3},
        {volume("/home", "/dev/sda3", "ext4"), 3},
        {volume("/media/anna/STICK", "/dev/sdb1", "vfat", true), 2},
        {volume("/run/media/anna/SD", "/dev/mmcblk0p1", "exfat", true), 2},
        {volume("/media/anna/DVD", "/dev/sr0", "iso9660", false, true), 5},
        {volume("/mnt/share", "//nas/public", "cifs"), 4},
        {volume("/mnt/nfs", "nas:/export", "nfs4"), 4},
        {volume("/home/anna/remote", "anna@host:/srv", "fuse.sshfs"), 4},
        {volume("/mnt/ram", "tmpfs", "tmpfs"), 6},
        {volume("/tmp", "tmpfs", "tmpfs"), 0},
        {volume("/run/user/1000", "tmpfs", "tmpfs"), 0},
        {volume("/dev/shm", "tmpfs", "tmpfs"), 0},
        {volume("/proc", "proc", "proc"), 0},
        {volume("/sys/fs/cgroup", "cgroup2", "cgroup2"), 0},
        {volume("/boot/efi", "/dev/sda1", "vfat"), 0},
        {volume("/etc/hosts", "/dev/sda2", "ext4"), 0},
        {volume("/snap/core/1", "/dev/loop0", "squashfs"), 0},
    };
    for (const Row& row : rows)
        EXPECT_EQ(ClassifyVolume(row.volume), row.type) << row.volume.mountPoint;
}

TEST(DesktopDrives, NetworkSourcesReadAsUncPaths)
{
    EXPECT_EQ(UncOfMountSource("//nas/public/docs"), "\\\\nas\\public\\docs");
    EXPECT_EQ(UncOfMountSource("nas:/export/"), "\\\\nas\\export");
    EXPECT_EQ(UncOfMountSource("anna@host:/srv"), "\\\\host\\srv");
    EXPECT_EQ(UncOfMountSource("/dev/sdb1"), "");
}

TEST(DesktopDrives, AVolumeKeepsItsLetterAcrossRunsAndRemounts)
{
    QTemporaryDir dir;
    auto registry = std::make_shared<DesktopRegistry>(std::make_shared<SettingsStore>(dir.path()));
    std::vector<VolumeRecord> mounts = {
        volume("/", "/dev/sda2", "ext4"), volume("/media/anna/STICK", "/dev/sdb1", "vfat", true),
        volume("/mnt/share", "//nas/public", "cifs"), volume("/proc", "proc", "proc")};
    {
        DesktopDrives drives(registry, [&] { return mounts; });
        EXPECT_EQ(drives.DriveType("C:"), 3);
        EXPECT_EQ(drives.DriveType("d:\\"), 2);
        EXPECT_EQ(drives.DriveType("E:"), 4);
        EXPECT_EQ(drives.DriveType("F:"), 0);
        EXPECT_EQ(drives.DrivesOfType(2).Count(), 1);
        EXPECT_EQ(drives.DrivesOfType(2).Item(1), "D:");
        EXPECT_EQ(drives.Label("D:"), "LABEL");
        EXPECT_EQ(drives.UncOfDrive("E:"), "\\\\nas\\public");
    }
    // Next run: the stick is gone, a new disk comes, then the stick returns
    // elsewhere; nobody takes another's letter.
    mounts = {volume("/", "/dev/sda2", "ext4"), volume("/mnt/share", "//nas/public", "cifs"),
              volume("/data", "/dev/sdc1", "ext4")};
    DesktopDrives second(registry, [&] { return mounts; });
    EXPECT_EQ(second.DriveType("E:"), 4);
    EXPECT_EQ(second.DriveType("D:"), 0);
    EXPECT_EQ(second.DriveType("F:"), 3);
    mounts.push_back(volume("/media/anna/STICK1", "/dev/sdb1", "vfat", true));
    second.Refresh();
    EXPECT_EQ(second.DriveType("D:"), 2);
    ASSERT_EQ(second.Roots().size(), 3u);
    EXPECT_EQ(second.Roots()[0].mountPoint, "/media/anna/STICK1");
}

} // namespace
