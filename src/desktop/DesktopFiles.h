#pragma once
// Files of the desktop host: the local file system through Qt.

#include "host/CoreDevServices.h"

namespace fw::desktop {

/// Paths are local paths with "/". ListFiles lists every subfolder and the
/// files that match the pattern (wildcards, several separated by ";", case
/// ignored; empty means all), hidden entries left out. FileSize and FileDate
/// give -1 for a missing file; FileDate is seconds since the epoch (UTC).
/// DeleteFolder removes a folder with its content but refuses "/" and the
/// home folder. SizeText: "512 Bytes", "1,5 KB", "3,2 MB" (binary units).
/// Drives and network do not exist on this host yet: DriveType gives 0,
/// DrivesOfType nothing, Network null and synchronise false; the file
/// chooser's work brings them.
class DesktopFiles final : public CoreDevFiles {
  public:
    /// UTF-8 only; encoding and flag are ignored. Atomic: the old file stays
    /// whole if anything fails.
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
    bool synchronise(const std::string& source, const std::string& target) override;
    int DriveType(const std::string& drive) override;
    StringList DrivesOfType(int type) override;
    std::shared_ptr<NetworkService> Network() override;
};

} // namespace fw::desktop
