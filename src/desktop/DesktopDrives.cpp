#include "desktop/DesktopDrives.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <algorithm>
#include <array>
#include <cctype>
#include <map>

namespace fw::desktop {

namespace {

bool startsWith(std::string_view text, std::string_view prefix)
{
    return text.substr(0, prefix.size()) == prefix;
}

bool isUnder(std::string_view path, std::string_view folder)
{
    return path == folder || startsWith(path, std::string(folder) + '/');
}

bool isOneOf(std::string_view text, std::initializer_list<std::string_view> words)
{
    return std::find(words.begin(), words.end(), text) != words.end();
}

bool isNetworkFileSystem(std::string_view type)
{
    return isOneOf(type, {"cifs", "smb3", "smbfs", "nfs", "nfs4", "sshfs", "fuse.sshfs", "davfs",
                          "fuse.davfs2", "afs", "ncpfs", "9p", "glusterfs", "fuse.glusterfs",
                          "ceph", "fuse.rclone", "fuse.s3fs", "fuse.curlftpfs"});
}

bool isPseudoFileSystem(std::string_view type)
{
    return isOneOf(type,
                   {"proc",      "sysfs",      "devtmpfs",    "devpts",          "cgroup",
                    "cgroup2",   "securityfs", "pstore",      "debugfs",         "tracefs",
                    "configfs",  "fusectl",    "mqueue",      "hugetlbfs",       "binfmt_misc",
                    "autofs",    "bpf",        "efivarfs",    "rpc_pipefs",      "nsfs",
                    "selinuxfs", "squashfs",   "fuse.portal", "fuse.gvfsd-fuse", "fuse.lxcfs",
                    "overlay",   "nfsd",       "none"});
}

// Where the system keeps its own mounts; data volumes are not mounted there.
bool isSystemMountPoint(std::string_view mountPoint)
{
    for (const std::string_view folder :
         {"/boot", "/dev", "/etc", "/proc", "/sys", "/run", "/snap", "/usr", "/var", "/tmp"}) {
        if (isUnder(mountPoint, folder))
            return true;
    }
    return false;
}

std::string readFirstLine(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readLine().trimmed().toStdString();
}

// The whole disk behind a partition ("sdb1" -> "sdb"), by sysfs.
QString diskOf(const QString& blockName)
{
    const QString entry = QStringLiteral("/sys/class/block/") + blockName;
    if (!QFileInfo::exists(entry + QStringLiteral("/partition")))
        return blockName;
    return QFileInfo(QFileInfo(entry).canonicalFilePath()).dir().dirName();
}

void readDeviceFlags(VolumeRecord& volume, const std::map<QString, std::string>& uuids)
{
    if (!startsWith(volume.device, "/dev/"))
        return;
    const QString device = QFileInfo(QFile::decodeName(volume.device.c_str())).canonicalFilePath();
    if (const auto uuid = uuids.find(device); uuid != uuids.end())
        volume.identity = uuid->second;
    const QString disk = diskOf(QFileInfo(device).fileName());
    const QString sys = QStringLiteral("/sys/block/") + disk;
    // USB sticks often say removable 0; the bus they hang on says it better.
    volume.removable = readFirstLine(sys + QStringLiteral("/removable")) == "1" ||
                       QFileInfo(sys).canonicalFilePath().contains(QStringLiteral("/usb")) ||
                       disk.startsWith(QStringLiteral("mmcblk"));
    volume.optical = disk.startsWith(QStringLiteral("sr"));
}

std::map<QString, std::string> uuidsByDevice()
{
    std::map<QString, std::string> uuids;
    const QDir byUuid(QStringLiteral("/dev/disk/by-uuid"));
    for (const QFileInfo& link : byUuid.entryInfoList(QDir::System | QDir::NoDotAndDotDot))
        uuids[link.canonicalFilePath()] = link.fileName().toStdString();
    return uuids;
}

char letterOf(const std::string& drive)
{
    if (drive.size() < 2 || drive[1] != ':' || !std::isalpha(static_cast<unsigned char>(drive[0])))
        return 0;
    return char(std::toupper(static_cast<unsigned char>(drive[0])));
}

} // namespace

int ClassifyVolume(const VolumeRecord& volume)
{
    const std::string& type = volume.fileSystem;
    if (volume.mountPoint == "/")
        return 3;
    if (isNetworkFileSystem(type))
        return 4;
    if (type == "tmpfs" || type == "ramfs")
        return isSystemMountPoint(volume.mountPoint) ? 0 : 6;
    if (isPseudoFileSystem(type))
        return 0;
    // Desktops mount media below /run/media/<user>; the rest of /run is the system's.
    if (isSystemMountPoint(volume.mountPoint) && !startsWith(volume.mountPoint, "/run/media/"))
        return 0;
    if (volume.optical || type == "iso9660" || type == "udf")
        return 5;
    return volume.removable ? 2 : 3;
}

std::vector<VolumeRecord> ReadMountedVolumes()
{
    const auto uuids = uuidsByDevice();
    std::vector<VolumeRecord> volumes;
    for (const QStorageInfo& storage : QStorageInfo::mountedVolumes()) {
        VolumeRecord volume;
        volume.mountPoint = QFile::encodeName(storage.rootPath()).toStdString();
        volume.device = storage.device().toStdString();
        volume.fileSystem = storage.fileSystemType().toStdString();
        volume.label = storage.name().toStdString();
        volume.identity = volume.device;
        readDeviceFlags(volume, uuids);
        volumes.push_back(std::move(volume));
    }
    return volumes;
}

std::string UncOfMountSource(const std::string& device)
{
    std::string host;
    std::string share;
    if (startsWith(device, "//")) {
        const std::size_t slash = device.find('/', 2);
        host = device.substr(2, slash == std::string::npos ? std::string::npos : slash - 2);
        share = slash == std::string::npos ? std::string() : device.substr(slash + 1);
    } else if (const std::size_t colon = device.find(':');
               colon != std::string::npos && !startsWith(device, "/")) {
        host = device.substr(0, colon);
        if (const std::size_t at = host.rfind('@'); at != std::string::npos)
            host.erase(0, at + 1);
        share = device.substr(colon + 1);
    } else {
        return {};
    }
    while (!share.empty() && share.front() == '/')
        share.erase(0, 1);
    while (!share.empty() && share.back() == '/')
        share.pop_back();
    std::replace(share.begin(), share.end(), '/', '\\');
    return "\\\\" + host + (share.empty() ? std::string() : "\\" + share);
}

DesktopDrives::DesktopDrives(std::shared_ptr<CoreDevRegistry> registry, MountTable table)
    : m_registry(std::move(registry)), m_table(std::move(table)), m_remembered(26)
{
}

int DesktopDrives::DriveType(const std::string& drive)
{
    const Drive* found = find(drive);
    return found ? found->type : 0;
}

StringList DesktopDrives::DrivesOfType(int type)
{
    StringList result;
    for (const Drive& drive : drives()) {
        if (drive.type == type)
            result.Add(std::string{drive.letter, ':'});
    }
    return result;
}

std::string DesktopDrives::Label(const std::string& drive)
{
    const Drive* found = find(drive);
    return found ? found->volume.label : std::string();
}

std::string DesktopDrives::UncOfDrive(const std::string& drive)
{
    const Drive* found = find(drive);
    return found && found->type == 4 ? UncOfMountSource(found->volume.device) : std::string();
}

std::vector<DriveRoot> DesktopDrives::Roots()
{
    std::vector<DriveRoot> roots;
    for (const Drive& drive : drives()) {
        if (drive.letter != 'C')
            roots.push_back({drive.letter, drive.volume.mountPoint});
    }
    return roots;
}

void DesktopDrives::Refresh()
{
    m_age.invalidate();
}

void DesktopDrives::SetReservedLetters(std::function<std::vector<char>()> reserved)
{
    m_reserved = std::move(reserved);
    Refresh();
}

const DesktopDrives::Drive* DesktopDrives::find(const std::string& drive)
{
    const char letter = letterOf(drive);
    for (const Drive& candidate : drives()) {
        if (candidate.letter == letter)
            return &candidate;
    }
    return nullptr;
}

// The dialogs ask for all 26 letters in a row; one reading serves them all.
const std::vector<DesktopDrives::Drive>& DesktopDrives::drives()
{
    if (!m_age.isValid() || m_age.elapsed() > 1000) {
        assignLetters(m_table());
        m_age.start();
    }
    return m_drives;
}

void DesktopDrives::assignLetters(const std::vector<VolumeRecord>& volumes)
{
    loadRemembered();
    std::vector<VolumeRecord> lettered;
    for (const VolumeRecord& volume : volumes) {
        if (volume.mountPoint != "/" && ClassifyVolume(volume) != 0)
            lettered.push_back(volume);
    }
    // The same order on every run, so that first-time letters are stable too.
    std::sort(lettered.begin(), lettered.end(), [](const VolumeRecord& a, const VolumeRecord& b) {
        return a.mountPoint < b.mountPoint;
    });

    m_drives.clear();
    VolumeRecord root{"/", "", "", "", "/", false, false};
    for (const VolumeRecord& volume : volumes) {
        if (volume.mountPoint == "/")
            root = volume;
    }
    m_drives.push_back({'C', 3, root});

    std::array<bool, 26> taken{};
    taken['C' - 'A'] = true;
    if (m_reserved) {
        for (const char letter : m_reserved()) {
            if (letter >= 'A' && letter <= 'Z')
                taken[std::size_t(letter - 'A')] = true;
        }
    }
    std::vector<const VolumeRecord*> waiting;
    for (const VolumeRecord& volume : lettered)
        waiting.push_back(&volume);
    const auto give = [&](char letter, const VolumeRecord& volume) {
        taken[std::size_t(letter - 'A')] = true;
        m_drives.push_back({letter, ClassifyVolume(volume), volume});
        remember(m_drives.back());
    };
    // One pass gives each waiting volume the first free letter that `fits`;
    // the volumes left over wait for the next pass.
    const auto pass = [&](const auto& fits) {
        std::vector<const VolumeRecord*> rest;
        for (const VolumeRecord* volume : waiting) {
            char found = 0;
            for (char letter = 'D'; letter <= 'Z' && !found; ++letter) {
                const std::size_t at = std::size_t(letter - 'A');
                if (!taken[at] && fits(m_remembered[at], *volume))
                    found = letter;
            }
            if (found)
                give(found, *volume);
            else
                rest.push_back(volume);
        }
        waiting = std::move(rest);
    };
    // Identity and mount point first, then identity alone (remounted elsewhere).
    pass([](const Remembered& known, const VolumeRecord& volume) {
        return known.identity == volume.identity && known.mountPoint == volume.mountPoint;
    });
    pass([](const Remembered& known, const VolumeRecord& volume) {
        return known.identity == volume.identity;
    });
    // New volumes: letters no volume ever had, then any free one.
    pass([](const Remembered& known, const VolumeRecord&) { return known.identity.empty(); });
    pass([](const Remembered&, const VolumeRecord&) { return true; });
    std::sort(m_drives.begin(), m_drives.end(),
              [](const Drive& a, const Drive& b) { return a.letter < b.letter; });
}

void DesktopDrives::loadRemembered()
{
    if (m_rememberedLoaded || !m_registry)
        return;
    m_rememberedLoaded = true;
    RegistryStrings& strings = m_registry->Strings();
    for (char letter = 'D'; letter <= 'Z'; ++letter) {
        const std::string key = std::string(RememberKey) + '\\' + letter + '\\';
        Remembered& known = m_remembered[std::size_t(letter - 'A')];
        known.identity =
            NameFromLocation(strings.ReadString(HiveCurrentUser, key + "Identity", "", 0));
        known.mountPoint =
            NameFromLocation(strings.ReadString(HiveCurrentUser, key + "Mount", "", 0));
    }
}

void DesktopDrives::remember(const Drive& drive)
{
    Remembered& known = m_remembered[std::size_t(drive.letter - 'A')];
    if (known.identity == drive.volume.identity && known.mountPoint == drive.volume.mountPoint)
        return;
    known = {drive.volume.mountPoint, drive.volume.identity};
    if (!m_registry)
        return;
    // The store holds texts: the bytes travel escaped like a name.
    const std::string key = std::string(RememberKey) + '\\' + drive.letter + '\\';
    m_registry->Writer().WriteString(HiveCurrentUser, key + "Identity",
                                     NameToLocation(known.identity));
    m_registry->Writer().WriteString(HiveCurrentUser, key + "Mount",
                                     NameToLocation(known.mountPoint));
}

} // namespace fw::desktop
