#pragma once
// The desktop host's resource packages: zip files of resources such as
// "Ico\20\Computer\Signs\OK.ico" (stored as "Ico/20/Computer/Signs/OK.ico").
//
// Packages are found by name, case-blind, in these folders in this order:
//  1. each XDG data folder + "/formwerk/packages" ($XDG_DATA_HOME first,
//     then $XDG_DATA_DIRS);
//  2. the folder named in the settings store, current user, value
//     "Software\Valdrenix\Core\Settings\Resources\PackageFolder";
//  3. the library's own package "Formwerk", built into the library, so that
//     there are pictures to pick on a fresh machine.
// A package file in an earlier folder hides one of the same name later.
//
// Content(path, a, b, c) lists the entries below a resource path ("/" read as
// "\", case-blind, "" the top level) as full resource paths in the package's
// spelling, folders with a trailing "\":
//   a: 0 files, 1 folders, 2 both (anything above 2 counts as 2);
//   b: 0 this folder only, anything else every level below too;
//   c: reserved, ignored.
// Files come in the package's own order, then folders in the order they first
// appear.
//
// A package whose file is removed or replaced while it is loaded answers as
// an empty package from then on: Exists false, Content empty, Extract false.

#include "desktop/PackageArchive.h"
#include "host/HostObjects.h"

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <sys/types.h>

namespace fw::desktop {

class SettingsStore;

/// Where packages are looked for (see above).
class PackageFolders {
  public:
    /// The XDG folders, then the settings store's folder (settings may be
    /// null), then the library's own package if builtIn.
    explicit PackageFolders(std::shared_ptr<const SettingsStore> settings = nullptr,
                            bool builtIn = true);
    /// Exactly these folders, in this order.
    PackageFolders(QStringList folders, bool builtIn);

    QStringList Folders() const;
    /// Every package file of the folders: folder order, then names sorted
    /// case-blind; a name seen in an earlier folder is left out.
    QStringList PackageFiles() const;
    /// The file of a package name ("Icons" or "icons.ZIP"); empty if there is
    /// none in the folders or the name is no plain file name.
    QString FileOf(const QString& name) const;
    bool HasBuiltIn() const { return m_builtIn; }

  private:
    std::shared_ptr<const SettingsStore> m_settings;
    std::optional<QStringList> m_fixed;
    bool m_builtIn;
};

/// The name under which the library's own package loads.
inline constexpr const char* kBuiltInPackageName = "FORMWERK";

/// Where extracting an item named fileName to destination writes: the
/// destination itself, or the item's file name inside it if it is a folder
/// (or ends with "/"). destination is a location ("C:\tmp\x.png") or a Linux
/// path. Nothing, with the reason in error, if it is neither.
std::optional<std::string> ExtractionTarget(const std::string& destination,
                                            const std::string& fileName, std::string& error);

class DesktopPackage final : public ResourcePackage {
  public:
    explicit DesktopPackage(std::shared_ptr<const PackageFolders> folders);

    /// Opens the package of that name from the folders; false, with the
    /// package empty, if there is none or it is no zip file.
    bool Load(const std::string& name) override;
    /// Opens one package file by its path.
    bool LoadFile(const QString& file);
    bool Exists(const std::string& item) override;
    /// Writes the item to a temporary file beside the target, then renames
    /// it: a failure leaves no file and the old target untouched.
    bool Extract(const std::string& item, const std::string& destination) override;
    StringList Content(const std::string& path, std::uint32_t optionA, std::uint32_t optionB,
                       std::uint32_t optionC) override;

    /// The item's bytes, if it is there and readable within the limits.
    std::optional<std::string> Read(const std::string& item);
    /// Bounds of Extract and Read; by default 256 MB and a ratio of 1:1000.
    void SetLimits(const ReadLimits& limits) { m_limits = limits; }
    /// Why the last failed call failed, for messages.
    const std::string& LastError() const { return m_error; }
    /// The file the package came from; empty for the library's own.
    const QString& File() const { return m_file; }

  private:
    bool openFile(const QString& file);
    bool openBuiltIn();
    /// Loaded, and its file still the one that was opened.
    bool usable();
    void fail(std::string why);

    std::shared_ptr<const PackageFolders> m_folders;
    std::unique_ptr<PackageArchive> m_archive;
    QString m_file;
    struct Identity {
        dev_t device = 0;
        ino_t inode = 0;
        off_t size = 0;
        long long modifiedNs = 0;
        bool operator==(const Identity&) const = default;
    };
    Identity m_identity;
    ReadLimits m_limits;
    std::string m_error;
};

} // namespace fw::desktop
