#pragma once
// Application facts and the clock of the desktop host.

#include "host/CoreDevServices.h"

namespace fw::desktop {

/// Folders are location strings ending in "\\" ("C:\\home\\anna\\"), so that a
/// dialog can append a name:
///  - UserFolder: the home folder;
///  - SamplesFolder: the data folder + "/formwerk/samples/";
///  - SharedFolder: the data folder + "/formwerk/shared/"
/// (data folder: QStandardPaths::GenericDataLocation, ~/.local/share); these
/// two are empty while the folder does not exist.
class DesktopApp final : public CoreDevApp, ApplicationFolders {
  public:
    ApplicationFolders& Folders() override { return *this; }
    std::string UserFolder() override;
    std::string SamplesFolder() override;
    std::string SharedFolder() override;
    /// "Software\\Valdrenix\\Formwerk\\": the library's own programs are the application.
    std::string RegistryKey() override;
};

/// Desktop and documents from the XDG user folders as locations ending in
/// "\\"; the home folder where the account has no such folder.
class DesktopSystemFolders final : public SystemFolders {
  public:
    std::string DesktopFolder() override;
    std::string DocumentsFolder() override;
};

/// Local time as "YYYY-MM-DD HH:MM:SS".
class DesktopClock final : public CoreDevClock {
  public:
    std::string logStamp() override;
};

} // namespace fw::desktop
