#pragma once
// Drive letters of the desktop host: "C:" is the root file system, further
// mounted volumes get "D:" to "Z:" and keep them across runs.

#include "desktop/LocationPaths.h"
#include "host/CoreDevServices.h"

#include <QElapsedTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace fw::desktop {

/// What the system tells of one mounted volume.
struct VolumeRecord {
    std::string mountPoint; ///< bytes, no trailing "/" except for "/"
    std::string device;     ///< "/dev/sdb1", "//server/share", "server:/export", "tmpfs"
    std::string fileSystem; ///< "ext4", "vfat", "cifs", "fuse.sshfs", "tmpfs"
    std::string label;      ///< the file system's volume label, may be empty
    std::string identity;   ///< what tells this volume from others: UUID, else device
    bool removable = false; ///< USB or SD media
    bool optical = false;   ///< a CD/DVD drive
};

/// The drive classes: 2 removable, 3 data volume, 4 network, 5 optical,
/// 6 RAM disk; 0 for pseudo and system file systems, which get no letter.
int ClassifyVolume(const VolumeRecord& volume);

/// The mounted volumes through Qt, with the removable and optical flags and
/// the UUIDs read from sysfs and /dev/disk/by-uuid.
std::vector<VolumeRecord> ReadMountedVolumes();

/// A mount source as a UNC path, "\\server\share" for "//server/share",
/// "server:/export/data" and "user@server:/data"; empty for a local device.
std::string UncOfMountSource(const std::string& device);

using MountTable = std::function<std::vector<VolumeRecord>()>;

/// Drive letters over a mount table. Letters given once are remembered in the
/// registry of the current user under RememberKey + "\X" (values "Mount" and
/// "Identity"): a volume seen again, even at another mount point, takes its
/// old letter; a new one takes the first letter that no volume ever had, then
/// the first free one. The table is read again when it is a second old.
class DesktopDrives {
  public:
    static constexpr auto RememberKey = "Software\\Valdrenix\\Core\\Settings\\Drives";

    struct Drive {
        char letter = 0;
        int type = 0;
        VolumeRecord volume;
    };

    /// registry may be null: letters are then only stable within the run.
    explicit DesktopDrives(std::shared_ptr<CoreDevRegistry> registry,
                           MountTable table = ReadMountedVolumes);

    /// "C:", "c:" or "C:\"; 0 for a letter without a volume.
    int DriveType(const std::string& drive);
    /// "D:" and so on, in letter order.
    StringList DrivesOfType(int type);
    /// The volume label, empty if the file system has none.
    std::string Label(const std::string& drive);
    /// The UNC path of a network drive, empty for the others.
    std::string UncOfDrive(const std::string& drive);
    /// The lettered volumes other than C:, for the path mapping.
    std::vector<DriveRoot> Roots();
    /// Forgets the last reading of the table.
    void Refresh();
    /// Letters that no volume may take (mapped network drives); asked at each
    /// reading of the table.
    void SetReservedLetters(std::function<std::vector<char>()> reserved);

  private:
    const std::vector<Drive>& drives();
    const Drive* find(const std::string& drive);
    void assignLetters(const std::vector<VolumeRecord>& volumes);
    void loadRemembered();
    void remember(const Drive& drive);

    struct Remembered {
        std::string mountPoint;
        std::string identity;
    };

    std::shared_ptr<CoreDevRegistry> m_registry;
    MountTable m_table;
    std::function<std::vector<char>()> m_reserved;
    std::vector<Drive> m_drives;
    std::vector<Remembered> m_remembered; // by letter, 'A' at 0
    bool m_rememberedLoaded = false;
    QElapsedTimer m_age;
};

} // namespace fw::desktop
