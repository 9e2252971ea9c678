#pragma once
// Files of the desktop host: the local file system behind the dialogs'
// location strings.

#include "desktop/DesktopDrives.h"
#include "desktop/DesktopNetwork.h"
#include "desktop/FolderListing.h"
#include "desktop/NetworkDrives.h"
#include "desktop/SmbFiles.h"
#include "host/CoreDevServices.h"

#include <QByteArray>
#include <optional>

namespace fw::desktop {

/// Paths are location strings, "C:\home\anna\Bericht.txt" for
/// "/home/anna/Bericht.txt", with names escaped byte for byte (LocationPaths.h)
/// and "D:" onwards for the further volumes (DesktopDrives.h); a Linux path
/// starting with "/" is accepted as it is. Pseudo and UNC paths name no file.
///
/// ListFiles lists every subfolder and the files that match the pattern
/// (NamePattern: wildcards, several separated by ";", case ignored; empty means
/// all), hidden entries left out, folders first; it reads names only, so Size
/// and ModifiedSecs are -1 (FileSize and FileDate read them). Reads of the same
/// folder right after each other share one scan. FileSize and FileDate give -1
/// for a missing file; FileDate is seconds since the epoch (UTC). DeleteFile
/// removes a file or a link, never a link's target; DeleteFolder removes a
/// tree without following links out of it and refuses "/" and the home folder
/// (SafeDelete.h). SizeText: "512 Bytes", "1,5 KB", "3,2 MB" (binary units).
/// UNC paths and letters mapped to shares (NetworkDrives.h) go to the SMB
/// client (SmbFiles.h); Network is the DesktopNetwork over the same client and
/// mappings.
/// text, given as UTF-8, in an encoding named as iconv and Qt name them:
/// empty or "UTF-8" passes the bytes unchanged (even ones that are no UTF-8);
/// "ISO-8859-1"/"Latin1", "UTF-16LE", "UTF-16BE", "UTF-16", "UTF-32..." and
/// whatever else Qt converts to. UTF-16 and UTF-32 begin with a byte order
/// mark. Nothing for an unknown encoding, for text that is no UTF-8 when a
/// conversion is asked, and for a character the encoding cannot hold.
std::optional<QByteArray> EncodedText(const std::string& text, const std::string& encoding);

class DesktopFiles final : public CoreDevFiles {
  public:
    /// Current user: "TimeoutSeconds" (default 10), "Port" (empty: 445).
    static constexpr auto NetworkSettingsKey = DesktopNetwork::SettingsKey;

    /// registry keeps the drive letters across runs; may be null.
    explicit DesktopFiles(std::shared_ptr<CoreDevRegistry> registry = nullptr,
                          MountTable mounts = ReadMountedVolumes);
    /// A Network() kept beyond this object stays safe to call (detached).
    ~DesktopFiles() override;

    /// text (UTF-8) in the named encoding (EncodedText); flag is ignored.
    /// Atomic: the old file stays whole if anything fails, and an unknown
    /// encoding or a character it cannot hold writes nothing.
    bool WriteTextFile(const std::string& path, const std::string& text,
                       const std::string& encoding, int flag) override;
    bool DeleteFile(const std::string& path) override;
    std::vector<FileEntry> ListFiles(const std::string& folder,
                                     const std::string& pattern) override;
    bool DeleteFolder(const std::string& path) override;
    bool FileExists(const std::string& path) override;
    bool FolderExists(const std::string& path) override;
    std::int64_t FileSize(const std::string& path) override;
    std::int64_t FileDate(const std::string& path) override;
    bool CreateFolder(const std::string& path) override;
    std::string SizeText(std::int64_t bytes) override;
    /// A regular file (or a link to one), not a folder, device or pseudo path.
    bool IsRealFile(const std::string& path) override;
    std::int32_t synchronise(const std::string& path1, const std::string& path2,
                             SyncProgress& window, SyncJob& job) override;
    int DriveType(const std::string& drive) override;
    StringList DrivesOfType(int type) override;
    std::string VolumeLabel(const std::string& drive) override;
    std::string FolderError(const std::string& folder) override;
    std::shared_ptr<NetworkService> Network() override;

    /// Labels and network sources of the lettered volumes.
    DesktopDrives& Drives() { return m_drives; }
    /// Letters mapped to network shares: DriveType 4, no volume label.
    NetworkDrives& Mapped() { return *m_mapped; }
    /// The Linux path of a location, nothing where there is none.
    std::optional<std::string> SystemPath(const std::string& location);
    /// A Linux path as a location string.
    std::string LocationOf(const std::string& systemPath);
    /// The smb:// URL that a location on the network stands for; nothing for
    /// any other location. Every operation on network files asks here.
    std::optional<std::string> SmbUrlOf(const std::string& location);
    /// The network files, one SMB client for all of them.
    SmbFiles& Smb() { return m_smb; }

  private:
    // What the file operations ask of an entry, on a local disk or a share.
    struct EntryFacts {
        bool folder = false;
        bool regular = false;
        std::int64_t size = 0;
        std::int64_t modifiedSecs = 0;
    };
    std::optional<EntryFacts> factsOf(const std::string& path);
    SmbOptions smbOptions() const;

    std::shared_ptr<CoreDevRegistry> m_registry;
    std::shared_ptr<NetworkDrives> m_mapped;
    DesktopDrives m_drives;
    FolderScanCache m_scans;
    SmbFiles m_smb;
    std::shared_ptr<DesktopNetwork> m_network;
};

} // namespace fw::desktop
