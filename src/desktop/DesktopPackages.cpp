#include "desktop/DesktopPackages.h"
#include "desktop/AtomicWrite.h"
#include "desktop/LocationPaths.h"
#include "desktop/SettingsStore.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QStandardPaths>
#include <sys/stat.h>

namespace fw::desktop {

namespace {

const QString kSettingsValue =
    QStringLiteral("Software\\Valdrenix\\Core\\Settings\\Resources\\PackageFolder");
const QString kBuiltInResource = QStringLiteral(":/formwerk/packages/Formwerk.zip");
// Pictures are small; a larger item is no picture worth reading into memory.
constexpr std::uint64_t kPictureLimit = std::uint64_t(32) << 20;

QStringList zipFilesOf(const QString& folder)
{
    QDir dir(folder);
    dir.setSorting(QDir::Name | QDir::IgnoreCase);
    return dir.entryList({QStringLiteral("*.zip")}, QDir::Files | QDir::Readable);
}

// Read once per process: the library's own package cannot change under it.
std::shared_ptr<const std::string> builtInBytes()
{
    static const std::shared_ptr<const std::string> bytes = [] {
        QFile file(kBuiltInResource);
        return file.open(QIODevice::ReadOnly)
                   ? std::make_shared<const std::string>(file.readAll().toStdString())
                   : nullptr;
    }();
    return bytes;
}

bool identityOf(const QString& file, dev_t& device, ino_t& inode, off_t& size, long long& ns)
{
    struct stat info {};
    if (::stat(QFile::encodeName(file).constData(), &info) != 0)
        return false;
    device = info.st_dev;
    inode = info.st_ino;
    size = info.st_size;
    ns = static_cast<long long>(info.st_mtim.tv_sec) * 1000000000LL + info.st_mtim.tv_nsec;
    return true;
}

std::string fileNameOf(const std::string& resourcePath)
{
    const std::size_t slash = resourcePath.find_last_of('\\');
    return slash == std::string::npos ? resourcePath : resourcePath.substr(slash + 1);
}

bool isDirectory(const std::string& path)
{
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

} // namespace

PackageFolders::PackageFolders(std::shared_ptr<const SettingsStore> settings, bool builtIn)
    : m_settings(std::move(settings)), m_builtIn(builtIn)
{
}

PackageFolders::PackageFolders(QStringList folders, bool builtIn)
    : m_fixed(std::move(folders)), m_builtIn(builtIn)
{
}

QStringList PackageFolders::Folders() const
{
    if (m_fixed)
        return *m_fixed;
    QStringList folders;
    for (const QString& data :
         QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation))
        folders << data + QStringLiteral("/formwerk/packages");
    if (m_settings) {
        const std::optional<QJsonValue> own =
            m_settings->Read(QStringLiteral("HKEY_CURRENT_USER"), kSettingsValue);
        if (own && own->isString() && !own->toString().isEmpty()) {
            // A location as the dialogs write one, or a Linux path.
            const std::optional<std::string> posix = LocationToPosix(own->toString().toStdString());
            if (posix)
                folders << QFile::decodeName(posix->c_str());
        }
    }
    folders.removeDuplicates();
    return folders;
}

QStringList PackageFolders::PackageFiles() const
{
    QStringList files;
    QSet<QString> seen;
    for (const QString& folder : Folders())
        for (const QString& name : zipFilesOf(folder))
            if (const QString key = name.toUpper(); !seen.contains(key)) {
                seen.insert(key);
                files << QDir(folder).filePath(name);
            }
    return files;
}

QString PackageFolders::FileOf(const QString& name) const
{
    QString wanted = name.trimmed();
    if (wanted.isEmpty() || wanted.contains(u'/') || wanted.contains(u'\\') ||
        wanted.startsWith(u'.'))
        return {};
    if (!wanted.endsWith(QLatin1String(".zip"), Qt::CaseInsensitive))
        wanted += QLatin1String(".zip");
    for (const QString& folder : Folders())
        for (const QString& file : zipFilesOf(folder))
            if (file.compare(wanted, Qt::CaseInsensitive) == 0)
                return QDir(folder).filePath(file);
    return {};
}

std::optional<std::string> ExtractionTarget(const std::string& destination,
                                            const std::string& fileName, std::string& error)
{
    const std::optional<std::string> posix = LocationToPosix(destination);
    if (!posix || posix->empty()) {
        error = "'" + destination + "' is no path to write to";
        return std::nullopt;
    }
    if (posix->back() == '/' || isDirectory(*posix))
        return (posix->back() == '/' ? *posix : *posix + '/') + fileName;
    return posix;
}

DesktopPackage::DesktopPackage(std::shared_ptr<const PackageFolders> folders)
    : m_folders(folders ? std::move(folders) : std::make_shared<PackageFolders>())
{
}

void DesktopPackage::fail(std::string why)
{
    m_error = std::move(why);
}

bool DesktopPackage::Load(const std::string& name)
{
    m_archive.reset();
    m_file.clear();
    const QString wanted = QString::fromStdString(name);
    const QString file = m_folders->FileOf(wanted);
    if (!file.isEmpty())
        return openFile(file);
    if (m_folders->HasBuiltIn() &&
        (wanted.trimmed().compare(QLatin1String(kBuiltInPackageName), Qt::CaseInsensitive) == 0 ||
         wanted.trimmed().compare(QLatin1String(kBuiltInPackageName) + QLatin1String(".zip"),
                                  Qt::CaseInsensitive) == 0))
        return openBuiltIn();
    fail("there is no package '" + name + "'");
    return false;
}

bool DesktopPackage::LoadFile(const QString& file)
{
    m_archive.reset();
    m_file.clear();
    return openFile(file);
}

bool DesktopPackage::openFile(const QString& file)
{
    std::string error;
    m_archive = PackageArchive::OpenFile(QFile::encodeName(file).toStdString(), error);
    if (!m_archive || !identityOf(file, m_identity.device, m_identity.inode, m_identity.size,
                                  m_identity.modifiedNs)) {
        m_archive.reset();
        fail(QFile::encodeName(file).toStdString() + " " + (error.empty() ? "is gone" : error));
        return false;
    }
    m_file = file;
    return true;
}

bool DesktopPackage::openBuiltIn()
{
    const std::shared_ptr<const std::string> bytes = builtInBytes();
    std::string error;
    m_archive = bytes ? PackageArchive::OpenMemory(bytes, error) : nullptr;
    if (!m_archive)
        fail("the library's own package is missing");
    return m_archive != nullptr;
}

bool DesktopPackage::usable()
{
    if (!m_archive) {
        if (m_error.empty())
            fail("no package is loaded");
        return false;
    }
    if (m_file.isEmpty())
        return true;
    Identity now;
    if (identityOf(m_file, now.device, now.inode, now.size, now.modifiedNs) && now == m_identity)
        return true;
    // Its directory would no longer match its bytes; better empty than wrong.
    m_archive.reset();
    fail(QFile::encodeName(m_file).toStdString() + " was removed or replaced");
    return false;
}

bool DesktopPackage::Exists(const std::string& item)
{
    return usable() && m_archive->Find(item) != nullptr;
}

bool DesktopPackage::Extract(const std::string& item, const std::string& destination)
{
    if (!usable())
        return false;
    const PackageArchive::Entry* entry = m_archive->Find(item);
    if (!entry) {
        fail(item + " is not in the package");
        return false;
    }
    std::string error;
    const std::optional<std::string> target =
        ExtractionTarget(destination, fileNameOf(entry->path), error);
    const bool written = target && WriteFileAtomically(*target, [&](const PieceWriter& write) {
                             return m_archive->Read(*entry, write, m_limits, error);
                         });
    if (!written)
        fail(item + ": " +
             (error.empty() ? "cannot write " + target.value_or(destination) : error));
    return written;
}

std::optional<std::string> DesktopPackage::Read(const std::string& item)
{
    const PackageArchive::Entry* entry = usable() ? m_archive->Find(item) : nullptr;
    if (!entry)
        return std::nullopt;
    ReadLimits limits = m_limits;
    limits.maxBytes = std::min(limits.maxBytes, kPictureLimit);
    std::string bytes;
    std::string error;
    const bool read = m_archive->Read(
        *entry,
        [&bytes](std::string_view piece) {
            bytes.append(piece);
            return true;
        },
        limits, error);
    if (!read) {
        fail(item + ": " + error);
        return std::nullopt;
    }
    return bytes;
}

StringList DesktopPackage::Content(const std::string& path, std::uint32_t optionA,
                                   std::uint32_t optionB, std::uint32_t /*optionC*/)
{
    StringList result;
    if (!usable())
        return result;
    const auto what = optionA == 0   ? PackageArchive::Listing::Files
                      : optionA == 1 ? PackageArchive::Listing::Folders
                                     : PackageArchive::Listing::Both;
    std::vector<std::string> entries = m_archive->List(path, what, optionB != 0);
    result.Reserve(static_cast<int>(entries.size()));
    for (std::string& entry : entries)
        result.Add(std::move(entry));
    return result;
}

} // namespace fw::desktop
