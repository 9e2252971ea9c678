#include "desktop/DesktopFiles.h"

#include "desktop/AtomicWrite.h"
#include "desktop/SafeDelete.h"
#include "desktop/SmbUrls.h"
#include "desktop/sync/SyncRun.h"

#include <QDir>
#include <QFile>
#include <QStringEncoder>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <sys/stat.h>

namespace fw::desktop {

namespace {

bool statOf(const std::optional<std::string>& path, struct stat& info)
{
    return path && stat(path->c_str(), &info) == 0;
}

// Only "D:" onwards need the mount table; "C:\" and "/" paths never read it.
bool needsDrives(const std::string& location)
{
    return location.size() >= 2 && location[1] == ':' &&
           std::toupper(static_cast<unsigned char>(location[0])) != 'C';
}

std::string homeFolder()
{
    return QFile::encodeName(QDir::homePath()).toStdString();
}

} // namespace

std::optional<QByteArray> EncodedText(const std::string& text, const std::string& encoding)
{
    const QByteArray name = QByteArray::fromStdString(encoding).trimmed();
    // UTF-8 text goes out byte for byte: a text read from a file of any bytes
    // is written back unchanged.
    if (name.isEmpty() || name.compare("UTF-8", Qt::CaseInsensitive) == 0 ||
        name.compare("UTF8", Qt::CaseInsensitive) == 0)
        return QByteArray::fromStdString(text);
    const QString decoded = QString::fromStdString(text);
    if (decoded.toStdString() != text)
        return std::nullopt; // not UTF-8: nothing to convert from
    // The wide encodings start with a byte order mark, as their text files do.
    const bool wide = name.toUpper().startsWith("UTF-16") || name.toUpper().startsWith("UTF-32");
    QStringEncoder encoder(name.constData(), wide ? QStringConverter::Flag::WriteBom
                                                  : QStringConverter::Flag::Default);
    if (!encoder.isValid())
        return std::nullopt;
    QByteArray bytes = encoder.encode(decoded);
    // A character the encoding cannot hold would be written as "?": refuse.
    if (encoder.hasError())
        return std::nullopt;
    return bytes;
}

DesktopFiles::DesktopFiles(std::shared_ptr<CoreDevRegistry> registry, MountTable mounts)
    : m_registry(registry), m_mapped(std::make_shared<NetworkDrives>(registry)),
      m_drives(registry, std::move(mounts)), m_smb([this] { return smbOptions(); })
{
    // A mounted volume never takes a letter that a mapping holds.
    m_drives.SetReservedLetters([mapped = m_mapped] {
        std::vector<char> letters;
        for (const auto& [letter, unc] : mapped->All())
            letters.push_back(letter);
        return letters;
    });
}

DesktopFiles::~DesktopFiles()
{
    if (m_network)
        m_network->Detach();
}

SmbOptions DesktopFiles::smbOptions() const
{
    SmbOptions options;
    if (!m_registry)
        return options;
    RegistryStrings& settings = m_registry->Strings();
    const std::string key = std::string(NetworkSettingsKey) + '\\';
    const int seconds = settings.ReadNumber(HiveCurrentUser, key + "TimeoutSeconds", 10);
    options.timeoutMs = (seconds > 0 ? seconds : 10) * 1000;
    options.defaultPort = settings.ReadNumber(HiveCurrentUser, key + "Port", 0);
    return options;
}

std::optional<std::string> DesktopFiles::SmbUrlOf(const std::string& location)
{
    // A mapped letter stands for its share: "X:\a" is "\\host\share\a".
    const std::string resolved = m_mapped->Resolve(location);
    return IsUnc(resolved) ? UncToSmbUrl(resolved) : std::nullopt;
}

std::optional<std::string> DesktopFiles::SystemPath(const std::string& location)
{
    return LocationToPosix(location,
                           needsDrives(location) ? m_drives.Roots() : std::vector<DriveRoot>());
}

std::string DesktopFiles::LocationOf(const std::string& systemPath)
{
    return PosixToLocation(systemPath, m_drives.Roots());
}

bool DesktopFiles::WriteTextFile(const std::string& path, const std::string& text,
                                 const std::string& encoding, int)
{
    const std::optional<QByteArray> bytes = EncodedText(text, encoding);
    const auto target = SystemPath(path);
    if (!bytes || !target)
        return false;
    m_scans.Forget();
    return WriteFileAtomically(*target, std::string_view(bytes->constData(), bytes->size()));
}

bool DesktopFiles::DeleteFile(const std::string& path)
{
    if (const auto url = SmbUrlOf(path))
        return m_smb.DeleteFile(*url);
    const auto target = SystemPath(path);
    m_scans.Forget();
    return target && DeleteEntry(*target);
}

std::vector<FileEntry> DesktopFiles::ListFiles(const std::string& folder,
                                               const std::string& pattern)
{
    if (const auto url = SmbUrlOf(folder))
        return m_smb.List(*url, pattern).value_or(std::vector<FileEntry>());
    std::vector<FileEntry> result;
    const auto path = SystemPath(folder);
    int error = 0;
    const PackedEntries* scanned = path ? m_scans.Scan(*path, error) : nullptr;
    if (!scanned)
        return result;
    const NamePattern filter(pattern);
    result.reserve(scanned->size());
    for (std::size_t i = 0; i < scanned->size(); ++i) {
        // Folders always show: the pattern picks files.
        const std::string_view name = scanned->name(i);
        if (scanned->isFolder(i) || filter.Matches(name))
            result.push_back({std::string(name), scanned->isFolder(i), -1, -1});
    }
    return result;
}

bool DesktopFiles::DeleteFolder(const std::string& path)
{
    if (const auto url = SmbUrlOf(path))
        return m_smb.DeleteTree(*url);
    const auto target = SystemPath(path);
    m_scans.Forget();
    return target && DeleteTree(*target, homeFolder());
}

std::optional<DesktopFiles::EntryFacts> DesktopFiles::factsOf(const std::string& path)
{
    if (const auto url = SmbUrlOf(path)) {
        const auto found = m_smb.Stat(*url);
        if (!found)
            return std::nullopt;
        return EntryFacts{found->folder, !found->folder, found->size, found->modifiedSecs};
    }
    struct stat info {};
    if (!statOf(SystemPath(path), info))
        return std::nullopt;
    return EntryFacts{S_ISDIR(info.st_mode), S_ISREG(info.st_mode), info.st_size,
                      std::int64_t(info.st_mtim.tv_sec)};
}

bool DesktopFiles::FileExists(const std::string& path)
{
    const auto facts = factsOf(path);
    return facts && !facts->folder;
}

bool DesktopFiles::FolderExists(const std::string& path)
{
    const auto facts = factsOf(path);
    return facts && facts->folder;
}

std::int64_t DesktopFiles::FileSize(const std::string& path)
{
    const auto facts = factsOf(path);
    return facts && !facts->folder ? facts->size : -1;
}

std::int64_t DesktopFiles::FileDate(const std::string& path)
{
    const auto facts = factsOf(path);
    return facts ? facts->modifiedSecs : -1;
}

bool DesktopFiles::CreateFolder(const std::string& path)
{
    if (const auto url = SmbUrlOf(path))
        return m_smb.CreateFolder(*url);
    const auto target = SystemPath(path);
    if (!target || target->empty())
        return false;
    m_scans.Forget();
    // Each missing folder on the way, as "mkdir -p" does.
    for (std::size_t at = target->find('/', 1);; at = target->find('/', at + 1)) {
        const std::string prefix = target->substr(0, at);
        if (mkdir(prefix.c_str(), 0777) != 0 && errno != EEXIST)
            return false;
        if (at == std::string::npos || at + 1 == target->size())
            break;
    }
    return FolderExists(path);
}

std::string DesktopFiles::SizeText(std::int64_t bytes)
{
    if (bytes < 1024)
        return std::to_string(bytes < 0 ? 0 : bytes) + " Bytes";
    static const char* const units[] = {"KB", "MB", "GB", "TB", "PB"};
    double value = double(bytes) / 1024.0;
    int unit = 0;
    while (value >= 1024.0 && unit < 4) {
        value /= 1024.0;
        ++unit;
    }
    // The German decimal comma, as the dialogs' own texts are German first.
    QString text = QString::number(value, 'f', 1);
    text.replace(u'.', u',');
    return text.toStdString() + ' ' + units[unit];
}

bool DesktopFiles::IsRealFile(const std::string& path)
{
    const auto facts = factsOf(path);
    return facts && facts->regular;
}

std::int32_t DesktopFiles::synchronise(const std::string& path1, const std::string& path2,
                                       SyncProgress& window, SyncJob& job)
{
    std::string error;
    auto side1 = sync::MakeLocalFolder(path1, job, error);
    auto side2 = side1 ? sync::MakeLocalFolder(path2, job, error) : nullptr;
    if (!side2) {
        window.LOGERROR("Synchronisation nicht möglich", side1 ? path2 : path1, error);
        ++job.Errors;
        return SyncFailed;
    }
    return sync::RunSync(*side1, *side2, window, job);
}

int DesktopFiles::DriveType(const std::string& drive)
{
    return m_mapped->UncOf(drive).empty() ? m_drives.DriveType(drive) : 4;
}

StringList DesktopFiles::DrivesOfType(int type)
{
    StringList drives = m_drives.DrivesOfType(type);
    if (type != 4)
        return drives;
    for (const auto& [letter, unc] : m_mapped->All())
        drives.Add(std::string{letter, ':'});
    drives.Sort(); // "X:" texts: byte order is letter order
    return drives;
}

std::string DesktopFiles::VolumeLabel(const std::string& drive)
{
    return m_mapped->UncOf(drive).empty() ? m_drives.Label(drive) : std::string();
}

std::string DesktopFiles::FolderError(const std::string& folder)
{
    if (const auto url = SmbUrlOf(folder))
        return m_smb.FolderError(*url);
    const auto target = SystemPath(folder);
    if (!target)
        return std::strerror(ENOENT);
    int error = 0;
    if (m_scans.Scan(*target, error))
        return {};
    return std::strerror(error);
}

std::shared_ptr<NetworkService> DesktopFiles::Network()
{
    if (!m_network) {
        DesktopNetwork::Volumes volumes{
            [this](const std::string& drive) { return m_drives.DriveType(drive); },
            [this](const std::string& drive) { return m_drives.UncOfDrive(drive); }};
        m_network =
            std::make_shared<DesktopNetwork>([this]() -> SmbClient& { return m_smb.Client(); },
                                             m_mapped, m_registry, std::move(volumes));
    }
    return m_network;
}

} // namespace fw::desktop
