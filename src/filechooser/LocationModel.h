#pragma once
// Where a chooser stands and where it can go: the current location, its
// history, the three folders of the application, the way one level up and
// the network domain being browsed. Locations are plain strings: a real
// folder ("C:\home\anna\"), a UNC path, or a pseudo path ("DESKTOP:\",
// "WORKSTATION:\", "NETHOOD:\" with domain and host, "FAVORITES:\"); the
// aliases "USER:\", "SHARED:\", "SAMPLES:\", "DEFAULT:\" and "FAVORITES:\" +
// path are resolved on entry and never stay current. The file and folder
// choosers share it; it holds no control.

#include "host/StringList.h"

#include <string>

namespace fw {

class LocationModel {
  public:
    std::string CurrentPath;
    std::string CurrentDrive;
    std::string UserPath;
    std::string SharedPath;
    std::string SamplesPath;
    std::string DefaultPath;
    /// Where one level up leads; empty when there is no way up.
    std::string UpPath;
    /// The network domain being browsed; empty until first needed.
    std::string Domain;
    /// The location last listed, to tell a new place from a refill.
    std::string LastListedPath;
    /// Oldest first; the last entry is the location shown.
    StringList BackList;
    /// The last entry is where "NEXT:\" leads.
    StringList ForwardList;

    /// One move: the history step ("PREVIOUS:\" and "NEXT:\" walk it, any
    /// other target clears the forward list and is appended), then the
    /// aliases; sets CurrentPath and CurrentDrive. False, with nothing
    /// changed, when the history has nowhere to go.
    bool Enter(std::string path);
    /// The alias resolution of Enter alone.
    std::string Resolve(const std::string& path) const;
    /// UpPath for CurrentPath: parent folder, "WORKSTATION:\" from a drive
    /// root, "DESKTOP:\" from the user folder and the top places, the network
    /// levels upwards, "FAVORITES:\" itself there, nothing from the desktop.
    void ComputeUpPath();
    /// Whether CurrentPath is a pseudo place rather than a folder on a drive
    /// or a share.
    bool IsPseudo() const;
};

} // namespace fw
