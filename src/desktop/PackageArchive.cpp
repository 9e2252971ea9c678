#include "desktop/PackageArchive.h"

#include <QString>
#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

namespace fw::desktop {

namespace {

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string upperCase(std::string_view text)
{
    // Most names are ASCII; Qt's Unicode tables only for the rest ("ä" and "Ä" meet).
    if (!isAscii(text))
        return QString::fromUtf8(text.data(), qsizetype(text.size())).toUpper().toStdString();
    std::string upper(text);
    for (char& c : upper)
        if (c >= 'a' && c <= 'z')
            c = char(c - 'a' + 'A');
    return upper;
}

bool isSeparator(char c)
{
    return c == '/' || c == '\\';
}

std::vector<std::string_view> componentsOf(std::string_view path)
{
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= path.size(); ++i)
        if (i == path.size() || isSeparator(path[i])) {
            parts.push_back(path.substr(start, i - start));
            start = i + 1;
        }
    return parts;
}

// A name that would leave the folder it is written to, or that no resource
// path can name.
bool escapes(const std::vector<std::string_view>& parts)
{
    if (parts.front().size() >= 2 && parts.front()[1] == ':') // "C:" of a drive
        return true;
    return std::any_of(parts.begin(), parts.end(), [](std::string_view part) {
        return part.empty() || part == "." || part == "..";
    });
}

std::string joined(const std::vector<std::string_view>& parts, std::size_t count)
{
    std::string path;
    for (std::size_t i = 0; i < count; ++i) {
        path += parts[i];
        path += '\\';
    }
    return path;
}

std::string libzipMessage(int code)
{
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    std::string message = zip_error_strerror(&error);
    zip_error_fini(&error);
    return message;
}

std::string refusalOf(zip* archive, std::uint64_t index, const zip_stat_t& stat)
{
    if (stat.encryption_method != ZIP_EM_NONE)
        return "it is encrypted";
    if (!zip_compression_method_supported(static_cast<zip_int32_t>(stat.comp_method), 0))
        return "its compression method is unknown";
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    if (zip_file_get_external_attributes(archive, index, 0, &system, &attributes) == 0 &&
        system == ZIP_OPSYS_UNIX && S_ISLNK(attributes >> 16))
        return "it is a symbolic link";
    return {};
}

} // namespace

std::string ResourceKey(std::string_view path)
{
    std::string key = upperCase(path);
    std::replace(key.begin(), key.end(), '/', '\\');
    const std::size_t start = key.find_first_not_of('\\');
    return start == std::string::npos ? std::string() : key.substr(start);
}

PackageArchive::PackageArchive(zip* archive, std::shared_ptr<const std::string> bytes)
    : m_zip(archive), m_bytes(std::move(bytes))
{
    m_folders.push_back({});
    m_folderByKey.emplace(std::string(), 0);
    buildIndex();
}

PackageArchive::~PackageArchive()
{
    zip_discard(m_zip);
}

std::unique_ptr<PackageArchive> PackageArchive::OpenFile(const std::string& path,
                                                         std::string& error)
{
    // Non-blocking, so that a FIFO named like a package cannot hang the open.
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) {
        error = "cannot be opened";
        return nullptr;
    }
    struct stat info {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        ::close(fd);
        error = "is no file";
        return nullptr;
    }
    int code = 0;
    zip* archive = zip_fdopen(fd, ZIP_RDONLY, &code); // owns fd from here on success
    if (!archive) {
        ::close(fd);
        error = "is no zip file (" + libzipMessage(code) + ")";
        return nullptr;
    }
    return std::unique_ptr<PackageArchive>(new PackageArchive(archive, nullptr));
}

std::unique_ptr<PackageArchive> PackageArchive::OpenMemory(std::shared_ptr<const std::string> bytes,
                                                           std::string& error)
{
    zip_error_t zipError;
    zip_error_init(&zipError);
    zip_source_t* source = zip_source_buffer_create(bytes->data(), bytes->size(), 0, &zipError);
    zip* archive = source ? zip_open_from_source(source, ZIP_RDONLY, &zipError) : nullptr;
    if (!archive) {
        error = std::string("is no zip file (") + zip_error_strerror(&zipError) + ")";
        if (source)
            zip_source_free(source);
        zip_error_fini(&zipError);
        return nullptr;
    }
    zip_error_fini(&zipError);
    return std::unique_ptr<PackageArchive>(new PackageArchive(archive, std::move(bytes)));
}

std::uint32_t PackageArchive::folderOf(const std::vector<std::string_view>& parts,
                                       std::size_t depth)
{
    if (depth == 0)
        return 0;
    std::string path = joined(parts, depth);
    std::string key = upperCase(path);
    if (const auto found = m_folderByKey.find(key); found != m_folderByKey.end())
        return found->second;
    const std::uint32_t parent = folderOf(parts, depth - 1);
    const auto id = static_cast<std::uint32_t>(m_folders.size());
    m_folders.push_back({std::move(path), {}, {}});
    m_folderByKey.emplace(std::move(key), id);
    m_folders[parent].folders.push_back(id);
    return id;
}

void PackageArchive::buildIndex()
{
    const zip_int64_t count = zip_get_num_entries(m_zip, 0);
    m_entries.reserve(static_cast<std::size_t>(std::max<zip_int64_t>(count, 0)));
    m_byKey.reserve(m_entries.capacity());
    for (zip_int64_t i = 0; i < count; ++i) {
        const auto index = static_cast<std::uint64_t>(i);
        zip_stat_t stat;
        if (zip_stat_index(m_zip, index, 0, &stat) != 0 || !(stat.valid & ZIP_STAT_NAME))
            continue;
        const std::string_view name = stat.name;
        const bool isFolder = !name.empty() && name.back() == '/';
        std::vector<std::string_view> parts =
            componentsOf(isFolder ? name.substr(0, name.size() - 1) : name);
        if (name.empty() || escapes(parts)) {
            ++m_unsafeNames;
            continue;
        }
        if (isFolder) {
            folderOf(parts, parts.size());
            continue;
        }
        const std::uint32_t folder = folderOf(parts, parts.size() - 1);
        Entry entry;
        entry.path = m_folders[folder].path + std::string(parts.back());
        entry.index = index;
        entry.size = stat.size;
        entry.compressedSize = stat.comp_size;
        entry.refusal = refusalOf(m_zip, index, stat);
        const auto id = static_cast<std::uint32_t>(m_entries.size());
        const auto [slot, fresh] = m_byKey.emplace(upperCase(entry.path), id);
        if (!fresh) {
            // Which of the two is meant cannot be told, so neither is read.
            m_entries[slot->second].refusal = "the package holds this name twice";
            continue;
        }
        m_entries.push_back(std::move(entry));
        m_folders[folder].files.push_back(id);
    }
}

const PackageArchive::Entry* PackageArchive::Find(std::string_view path) const
{
    const auto found = m_byKey.find(ResourceKey(path));
    return found == m_byKey.end() ? nullptr : &m_entries[found->second];
}

void PackageArchive::listInto(const Folder& folder, Listing what, bool recursive,
                              std::vector<std::string>& out) const
{
    if (what != Listing::Folders)
        for (const std::uint32_t file : folder.files)
            out.push_back(m_entries[file].path);
    for (const std::uint32_t sub : folder.folders) {
        if (what != Listing::Files)
            out.push_back(m_folders[sub].path);
        if (recursive)
            listInto(m_folders[sub], what, recursive, out);
    }
}

std::vector<std::string> PackageArchive::List(std::string_view folder, Listing what,
                                              bool recursive) const
{
    std::string key = ResourceKey(folder);
    if (!key.empty() && key.back() != '\\')
        key += '\\';
    std::vector<std::string> out;
    if (const auto found = m_folderByKey.find(key); found != m_folderByKey.end())
        listInto(m_folders[found->second], what, recursive, out);
    return out;
}

bool PackageArchive::Read(const Entry& entry, const Sink& sink, const ReadLimits& limits,
                          std::string& error) const
{
    if (!entry.refusal.empty()) {
        error = entry.refusal;
        return false;
    }
    // A stored entry may not grow at all; an inflated one at most by the ratio.
    const std::uint64_t ratioBound = std::max<std::uint64_t>(entry.compressedSize, 1) *
                                     std::max<std::uint64_t>(limits.maxRatio, 1);
    const std::uint64_t bound = std::min(limits.maxBytes, ratioBound);
    if (entry.size > bound) {
        error = entry.size > limits.maxBytes
                    ? "it is larger than the limit"
                    : "it claims to inflate beyond a ratio of 1:" + std::to_string(limits.maxRatio);
        return false;
    }
    zip_file_t* file = zip_fopen_index(m_zip, entry.index, 0);
    if (!file) {
        error = zip_strerror(m_zip);
        return false;
    }
    char buffer[64 * 1024];
    std::uint64_t total = 0;
    bool ok = true;
    while (ok) {
        const zip_int64_t n = zip_fread(file, buffer, sizeof buffer);
        if (n < 0) {
            error = std::string("it is damaged (") + zip_file_strerror(file) + ")";
            ok = false;
        } else if (n == 0) {
            break;
        } else if ((total += static_cast<std::uint64_t>(n)) > entry.size) {
            // The header was checked above; more bytes than it claims is a lie.
            error = "it inflates beyond the size its header claims";
            ok = false;
        } else if (!sink(std::string_view(buffer, static_cast<std::size_t>(n)))) {
            error = "it could not be written";
            ok = false;
        }
    }
    zip_fclose(file);
    if (ok && total != entry.size) {
        error = "it ends early: the package is truncated";
        ok = false;
    }
    return ok;
}

} // namespace fw::desktop
