#pragma once
// Folder listings of the desktop host: one readdir pass per folder, shared by
// the reads that a file chooser makes of the same folder in a row.

#include <QElapsedTimer>
#include <QString>
#include <cstdint>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace fw::desktop {

struct ScannedEntry {
    std::string name; ///< as in a location string (see LocationPaths.h)
    bool isFolder = false;
};

/// The entries of a folder (a Linux path), folders first, then by name with
/// ASCII case ignored; "." and ".." and hidden names (leading ".") left out.
/// Names only: no entry is read but a symbolic link or an entry of unknown
/// type, which is listed as what it points to; a dangling link or a link loop
/// is listed as a file. Returns false with errno's value in error when the
/// folder cannot be read.
bool ScanFolder(const std::string& folder, std::vector<ScannedEntry>& entries, int& error);

/// Folders first, then by name with ASCII case ignored, as ScanFolder orders.
void SortFolderEntries(std::vector<ScannedEntry>& entries);
/// The indices of entries in that order, for records that carry more.
std::vector<std::uint32_t> FolderEntryOrder(const std::vector<ScannedEntry>& entries);

/// File name patterns: "*" and "?" wildcards, case ignored, several patterns
/// separated by ";". "*.*" takes names without a dot too; an empty text takes
/// all.
/// One wildcard pattern ("*" any run, "?" one character) against a whole
/// text, without case; ";" is an ordinary character here.
bool MatchesWildcard(std::string_view text, std::string_view pattern);

class NamePattern {
  public:
    explicit NamePattern(std::string_view patterns);
    bool Matches(std::string_view name) const;

  private:
    std::vector<QString> m_patterns; // case-folded
    bool m_all = false;
};

/// Scanned entries packed for keeping: the names end to end in one text, a
/// fraction of the size of a string each (a million names would otherwise
/// stay behind the listing that was made from them).
class PackedEntries {
  public:
    PackedEntries() = default;
    explicit PackedEntries(const std::vector<ScannedEntry>& entries);
    std::size_t size() const { return m_folders.size(); }
    std::string_view name(std::size_t i) const;
    bool isFolder(std::size_t i) const { return m_folders[i]; }

  private:
    std::string m_names;
    std::vector<std::uint32_t> m_ends; // no folder holds 4 GB of names
    std::vector<bool> m_folders;
};

/// Keeps the last scan for the reads that follow at once: the same folder,
/// unchanged on disk and scanned less than a second ago.
class FolderScanCache {
  public:
    /// The entries, or null with error set when the folder cannot be read.
    const PackedEntries* Scan(const std::string& folder, int& error);
    /// After a change made through this host.
    void Forget();

  private:
    struct Stamp {
        dev_t device = 0;
        ino_t inode = 0;
        long long modifiedNs = 0;
        long long changedNs = 0;
        bool operator==(const Stamp&) const = default;
    };
    static bool stampOf(const std::string& folder, Stamp& stamp);

    std::string m_folder;
    Stamp m_stamp;
    PackedEntries m_entries;
    QElapsedTimer m_age;
};

} // namespace fw::desktop
