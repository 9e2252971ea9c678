#pragma once
// One side of a synchronisation as the engine sees it: a tree of files and
// folders below a root that can be listed, changed and copied to and from
// the local file system. Side 1 is always a local folder; side 2 is another
// local folder or a folder on an FTP server.
//
// Paths are relative to the root, with "/" between the names, and hold the
// names' bytes as they are (any bytes but "/" and NUL).

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fw::desktop::sync {

struct SyncItem {
    std::string path; ///< "Ordner/Datei.txt"; never empty, no leading "/"
    bool folder = false;
    std::int64_t size = 0;  ///< bytes; 0 for folders
    std::int64_t mtime = 0; ///< seconds since the epoch, UTC; 0 when unknown
    bool operator==(const SyncItem&) const = default;
};

/// A side's whole tree, sorted by path bytes, parents before children.
using SyncTree = std::vector<SyncItem>;

/// How a long operation stays cancellable and shows its progress. Both may
/// be empty. cancelled is asked between entries and between transfer chunks.
struct SyncSignals {
    std::function<bool()> cancelled;
    std::function<void(std::int64_t done, std::int64_t total)> progress;
    bool Cancelled() const { return cancelled && cancelled(); }
};

/// The reason a side gives through List's skipped for a symbolic link, which
/// is left out on purpose and so no error.
inline constexpr std::string_view SyncSkippedLink = "Symbolische Verknüpfung, nicht gefolgt";

class SyncSide {
  public:
    virtual ~SyncSide() = default;

    /// The Linux path of path on this side if the side is on this machine
    /// (side 1 always is); copies then read and write it in place.
    virtual std::optional<std::string> LocalPath(const std::string& path) const
    {
        (void)path;
        return std::nullopt;
    }

    /// Where the side is, for the log and the protocol's key
    /// ("/home/anna/Daten", "ftp://anna@127.0.0.1:2121/pub").
    virtual std::string Describe() const = 0;

    /// Every file and folder below the root. Symbolic links are not followed
    /// and not listed. False with a reason if the root cannot be listed;
    /// entries that cannot be read are left out and reported through skipped.
    virtual bool List(
        SyncTree& tree, const SyncSignals& watch, std::string& error,
        const std::function<void(const std::string& path, const std::string& reason)>& skipped) = 0;

    virtual bool MakeFolder(const std::string& path, std::string& error) = 0;
    /// Deletes one file (a local side may move it into the trash instead).
    virtual bool RemoveFile(const std::string& path, std::string& error) = 0;
    /// Deletes a folder with everything below it.
    virtual bool RemoveTree(const std::string& path, std::string& error) = 0;

    /// Copies the local file source (an absolute Linux path) to path on this
    /// side: into a temporary name beside the target, the size checked, the
    /// modification time set to mtime, then renamed over the target. On
    /// failure or cancel the target is as it was and no temporary stays.
    /// stored: the entry as it now stands on this side (as Stat would give
    /// it), as far as the copy itself told it, so that no further call is
    /// needed; left as it was when the side cannot say.
    virtual bool Put(const std::string& source, const std::string& path, std::int64_t mtime,
                     const SyncSignals& watch, SyncItem& stored, std::string& error) = 0;
    /// Copies path on this side to the local file target (an absolute Linux
    /// path) the same way; expected is the entry as the listing saw it.
    virtual bool Get(const SyncItem& expected, const std::string& target, const SyncSignals& watch,
                     std::string& error) = 0;

    /// The entry as it stands now, after a change (a server may round the
    /// time or refuse to set it); false if it cannot be asked.
    virtual bool Stat(const std::string& path, SyncItem& item, std::string& error) = 0;
};

} // namespace fw::desktop::sync
