#include "desktop/FolderListing.h"

#include "desktop/LocationPaths.h"

#include <QStringList>
#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fw::desktop {

namespace {

// Names only from readdir; a stat only where the type is not given.
bool isFolderEntry(int folderFd, const dirent& entry)
{
    if (entry.d_type == DT_DIR)
        return true;
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN)
        return false;
    struct stat target {};
    // Following fails for a dangling link and a loop (ELOOP): then a file.
    return fstatat(folderFd, entry.d_name, &target, 0) == 0 && S_ISDIR(target.st_mode);
}

// A name of plain ASCII stands in a location as it is; only the others need
// the full translation, which decodes each character.
std::string locationName(std::string_view name)
{
    const bool plain = std::all_of(name.begin(), name.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x80 &&
               EscapedCharacters.find(c) == std::string_view::npos;
    });
    return plain ? std::string(name) : NameToLocation(name);
}

int asciiLower(unsigned char c)
{
    return c >= 'A' && c <= 'Z' ? c + 32 : c;
}

bool nameLess(const std::string& a, const std::string& b)
{
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        // Names of one folder mostly share their start: equal bytes need no
        // case folding.
        if (a[i] == b[i])
            continue;
        const int x = asciiLower(static_cast<unsigned char>(a[i]));
        const int y = asciiLower(static_cast<unsigned char>(b[i]));
        if (x != y)
            return x < y;
    }
    return a.size() != b.size() ? a.size() < b.size() : a < b;
}

// The first eight bytes of a name, case folded, as one number that orders as
// the bytes do; a shorter name is padded with zeros, which no name holds.
std::uint64_t foldedHead(const std::string& name)
{
    std::uint64_t head = 0;
    for (std::size_t i = 0; i < 8; ++i)
        head = head << 8 |
               std::uint64_t(i < name.size() ? asciiLower(static_cast<unsigned char>(name[i])) : 0);
    return head;
}

} // namespace

// A million names take some twenty million comparisons: small keys whose
// folded heads settle most of them as numbers are sorted, not the entries.
std::vector<std::uint32_t> FolderEntryOrder(const std::vector<ScannedEntry>& entries)
{
    struct Key {
        std::uint64_t head;
        std::uint32_t index;
        bool isFolder;
    };
    std::vector<Key> keys;
    keys.reserve(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i)
        keys.push_back({foldedHead(entries[i].name), std::uint32_t(i), entries[i].isFolder});
    std::sort(keys.begin(), keys.end(), [&](const Key& a, const Key& b) {
        if (a.isFolder != b.isFolder)
            return a.isFolder;
        if (a.head != b.head)
            return a.head < b.head;
        return nameLess(entries[a.index].name, entries[b.index].name);
    });
    std::vector<std::uint32_t> order;
    order.reserve(keys.size());
    for (const Key& key : keys)
        order.push_back(key.index);
    return order;
}

void SortFolderEntries(std::vector<ScannedEntry>& entries)
{
    std::vector<ScannedEntry> sorted;
    sorted.reserve(entries.size());
    for (const std::uint32_t index : FolderEntryOrder(entries))
        sorted.push_back(std::move(entries[index]));
    entries.swap(sorted);
}

namespace {

// A character of a text folded for matching: Unicode texts come folded
// already, ASCII bytes are folded here.
char16_t foldedUnit(QChar c)
{
    return c.unicode();
}
char16_t foldedUnit(char c)
{
    return char16_t(asciiLower(static_cast<unsigned char>(c)));
}

// Classic wildcard match with one backtrack point: linear in practice.
template <class Text> bool wildcardMatchFolded(Text pattern, Text name)
{
    const std::ptrdiff_t patternSize = std::ptrdiff_t(pattern.size());
    const std::ptrdiff_t nameSize = std::ptrdiff_t(name.size());
    std::ptrdiff_t p = 0, n = 0, star = -1, resume = 0;
    while (n < nameSize) {
        const char16_t unit = p < patternSize ? foldedUnit(pattern[p]) : 0;
        if (p < patternSize && (unit == u'?' || unit == foldedUnit(name[n]))) {
            ++p, ++n;
        } else if (p < patternSize && unit == u'*') {
            star = p++;
            resume = n;
        } else if (star >= 0) {
            p = star + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    while (p < patternSize && foldedUnit(pattern[p]) == u'*')
        ++p;
    return p == patternSize;
}

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

} // namespace

bool ScanFolder(const std::string& folder, std::vector<ScannedEntry>& entries, int& error)
{
    entries.clear();
    DIR* stream = opendir(folder.c_str());
    if (!stream) {
        error = errno;
        return false;
    }
    const int folderFd = dirfd(stream);
    // readdir tells its end from an error only through errno, which the
    // stat of a dangling link sets too.
    for (errno = 0; const dirent* entry = readdir(stream); errno = 0) {
        if (entry->d_name[0] != '.')
            entries.push_back({locationName(entry->d_name), isFolderEntry(folderFd, *entry)});
    }
    error = errno;
    closedir(stream);
    SortFolderEntries(entries);
    return error == 0;
}

NamePattern::NamePattern(std::string_view patterns)
{
    for (const QString& piece : QString::fromUtf8(patterns).split(u';', Qt::SkipEmptyParts)) {
        const QString pattern = piece.trimmed().toCaseFolded();
        if (pattern == u"*" || pattern == u"*.*")
            m_all = true;
        else if (!pattern.isEmpty())
            m_patterns.push_back(pattern);
    }
    m_all = m_all || m_patterns.empty();
}

bool NamePattern::Matches(std::string_view name) const
{
    if (m_all)
        return true;
    const QString folded = QString::fromUtf8(name).toCaseFolded();
    return std::any_of(m_patterns.begin(), m_patterns.end(), [&](const QString& pattern) {
        return wildcardMatchFolded(QStringView(pattern), QStringView(folded));
    });
}

bool MatchesWildcard(std::string_view text, std::string_view pattern)
{
    // A search tries every name of a folder: ASCII ones, most of them, are
    // matched as they are rather than made into two folded Unicode texts.
    if (isAscii(text) && isAscii(pattern))
        return wildcardMatchFolded(pattern, text);
    return wildcardMatchFolded(QStringView(QString::fromUtf8(pattern).toCaseFolded()),
                               QStringView(QString::fromUtf8(text).toCaseFolded()));
}

PackedEntries::PackedEntries(const std::vector<ScannedEntry>& entries)
{
    std::size_t total = 0;
    for (const ScannedEntry& entry : entries)
        total += entry.name.size();
    m_names.reserve(total);
    m_ends.reserve(entries.size());
    m_folders.reserve(entries.size());
    for (const ScannedEntry& entry : entries) {
        m_names += entry.name;
        m_ends.push_back(std::uint32_t(m_names.size()));
        m_folders.push_back(entry.isFolder);
    }
}

std::string_view PackedEntries::name(std::size_t i) const
{
    const std::uint32_t start = i == 0 ? 0 : m_ends[i - 1];
    return std::string_view(m_names).substr(start, m_ends[i] - start);
}

const PackedEntries* FolderScanCache::Scan(const std::string& folder, int& error)
{
    Stamp stamp;
    const bool stamped = stampOf(folder, stamp);
    if (stamped && folder == m_folder && stamp == m_stamp && m_age.isValid() &&
        m_age.elapsed() < 1000)
        return &m_entries;
    Forget();
    std::vector<ScannedEntry> scanned;
    if (!ScanFolder(folder, scanned, error))
        return nullptr;
    m_entries = PackedEntries(scanned);
    if (stamped) {
        m_folder = folder;
        m_stamp = stamp;
        m_age.start();
    }
    return &m_entries;
}

void FolderScanCache::Forget()
{
    m_folder.clear();
    m_age.invalidate();
    m_entries = {};
}

bool FolderScanCache::stampOf(const std::string& folder, Stamp& stamp)
{
    struct stat info {};
    if (stat(folder.c_str(), &info) != 0)
        return false;
    stamp = {info.st_dev, info.st_ino, info.st_mtim.tv_sec * 1000000000LL + info.st_mtim.tv_nsec,
             info.st_ctim.tv_sec * 1000000000LL + info.st_ctim.tv_nsec};
    return true;
}

} // namespace fw::desktop
