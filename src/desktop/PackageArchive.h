#pragma once
// Read-only access to one resource package, a zip file, through libzip: a
// case-blind index of its entries built once at open, listings by folder,
// and reading one entry with limits that hold against hostile archives.
//
// Entry names use "/" inside the zip and "\" as resource paths; both are read
// as separators. Names compare case-blind (Unicode upper case). An entry
// whose name is absolute ("/x", "C:x") or has an empty, "." or ".." component
// is left out of the index: nobody can ask for it, so it is never written.
// Entries that are indexed but cannot be read safely (encrypted, a symbolic
// link, an unknown compression, a name the package holds twice) carry the
// reason and fail when read.
//
// Not thread-safe: one archive serves one thread.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct zip;

namespace fw::desktop {

/// A resource path as a lookup key: "/" read as "\", no leading "\", upper
/// case, so that "ico/20/ok.ico" and "Ico\20\OK.ico" meet.
std::string ResourceKey(std::string_view path);

/// Bounds on reading one entry; checked against the entry's header before
/// inflating and again while inflating, since a header may lie.
struct ReadLimits {
    std::uint64_t maxBytes = std::uint64_t(256) << 20;
    /// Inflated bytes per compressed byte; deflate itself stays below 1032.
    std::uint64_t maxRatio = 1000;
};

class PackageArchive {
  public:
    struct Entry {
        std::string path; ///< resource path with "\", in the package's spelling
        std::uint64_t index = 0;
        std::uint64_t size = 0;
        std::uint64_t compressedSize = 0;
        std::string refusal; ///< why it cannot be read; empty if it can
    };
    /// What a listing holds.
    enum class Listing { Files, Folders, Both };
    /// Receives the inflated bytes piece by piece; false stops the reading.
    using Sink = std::function<bool(std::string_view)>;

    /// Opens a regular file; null, with the reason in error, if it is none or
    /// no zip file.
    static std::unique_ptr<PackageArchive> OpenFile(const std::string& path, std::string& error);
    /// Opens a package held in memory; the bytes must stay unchanged while
    /// the archive lives, which the shared pointer sees to.
    static std::unique_ptr<PackageArchive> OpenMemory(std::shared_ptr<const std::string> bytes,
                                                      std::string& error);
    ~PackageArchive();
    PackageArchive(const PackageArchive&) = delete;
    PackageArchive& operator=(const PackageArchive&) = delete;

    /// The entry at a resource path (a file, not a folder), or null.
    const Entry* Find(std::string_view path) const;
    /// Full resource paths below a folder: files in the package's order, then
    /// folders (with a trailing "\") in the order they first appear; with
    /// recursive, every level below, each folder followed by its content.
    std::vector<std::string> List(std::string_view folder, Listing what, bool recursive) const;
    /// Inflates one entry into sink. False, with the reason in error, if the
    /// entry is refused, breaks a limit, fails its CRC, ends early or sink
    /// gives up; sink may have had some bytes by then.
    bool Read(const Entry& entry, const Sink& sink, const ReadLimits& limits,
              std::string& error) const;

    std::size_t FileCount() const { return m_entries.size(); }
    /// Entries left out for names that escape the package.
    std::size_t UnsafeNameCount() const { return m_unsafeNames; }

  private:
    struct Folder {
        std::string path; ///< with a trailing "\"; "" for the top level
        std::vector<std::uint32_t> files;
        std::vector<std::uint32_t> folders;
    };
    PackageArchive(zip* archive, std::shared_ptr<const std::string> bytes);
    void buildIndex();
    std::uint32_t folderOf(const std::vector<std::string_view>& parts, std::size_t depth);
    void listInto(const Folder& folder, Listing what, bool recursive,
                  std::vector<std::string>& out) const;

    zip* m_zip;
    std::shared_ptr<const std::string> m_bytes;
    std::vector<Entry> m_entries;
    std::unordered_map<std::string, std::uint32_t> m_byKey;
    std::vector<Folder> m_folders;
    std::unordered_map<std::string, std::uint32_t> m_folderByKey;
    std::size_t m_unsafeNames = 0;
};

} // namespace fw::desktop
