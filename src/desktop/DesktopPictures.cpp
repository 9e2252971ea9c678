#include "desktop/DesktopPictures.h"
#include "desktop/AtomicWrite.h"
#include "desktop/DesktopPicturesTheme.h"
#include "desktop/LocationPaths.h"
#include "forms/Pictures.h"

#include <QBuffer>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImageReader>
#include <QMimeDatabase>
#include <QPainter>
#include <QPainterPath>
#include <QSet>
#include <algorithm>

namespace fw::desktop {

namespace {

constexpr int kDefaultSize = 16;
constexpr int kMaxSize = 512;

QImage emptyCanvas(int size)
{
    QImage canvas(size, size, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    return canvas;
}

// Any picture into exactly size x size, aspect kept, centred on transparency.
QImage fitted(const QImage& image, int size)
{
    if (image.isNull())
        return {};
    if (image.width() == size && image.height() == size)
        return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QImage canvas = emptyCanvas(size);
    const QImage scaled = image.scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QPainter painter(&canvas);
    painter.drawImage((size - scaled.width()) / 2, (size - scaled.height()) / 2, scaled);
    return canvas;
}

// The best of the images in a file for a size: the smallest that is at least
// as large, else the largest. Icon files hold several sizes. size <= 0 asks
// for the largest, an SVG at its own size.
QImage readImage(QImageReader& reader, int size)
{
    if (reader.format() == "svg" || reader.format() == "svgz") {
        QSize own = reader.size().isValid() ? reader.size() : QSize(kMaxSize, kMaxSize);
        if (size > 0 || own.width() > kMaxSize || own.height() > kMaxSize)
            own.scale(QSize(size > 0 ? size : kMaxSize, size > 0 ? size : kMaxSize),
                      Qt::KeepAspectRatio);
        reader.setScaledSize(own);
        return reader.read();
    }
    const int wanted = size > 0 ? size : kMaxSize;
    QImage best;
    const int count = std::max(1, reader.imageCount());
    for (int i = 0; i < count; ++i) {
        if (i > 0 && !reader.jumpToImage(i))
            break;
        const QImage image = reader.read();
        if (image.isNull())
            continue;
        const bool fits = image.width() >= wanted;
        const bool bestFits = !best.isNull() && best.width() >= wanted;
        if (best.isNull() || (fits && (!bestFits || image.width() < best.width())) ||
            (!fits && !bestFits && image.width() > best.width()))
            best = image;
    }
    return best;
}

QImage readFile(const QString& file, int size)
{
    QImageReader reader(file);
    return readImage(reader, size);
}

// Bytes of a package entry: the format comes from the content, so that a
// ".ico" name may hold PNG data.
QImage readBytes(const std::string& bytes, int size)
{
    QByteArray data = QByteArray::fromRawData(bytes.data(), qsizetype(bytes.size()));
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    return readImage(reader, size);
}

// The names a picture may be kept under: its own, or as PNG, SVG or icon.
QStringList pictureNames(const QString& name)
{
    const QString stem = QFileInfo(name).completeBaseName();
    QStringList names{name};
    for (const char* ext : {".png", ".svg", ".ico"})
        names << stem + QLatin1String(ext);
    return names;
}

// A picture file named by its absolute path, as a host or the command line
// may give instead of a resource path.
bool isFilePath(const QString& path)
{
    return path.startsWith(u'/');
}

// A file that is missing or no picture is a mistake of whoever named it: say
// so, since the drawn square alone looks like a picture that merely lacks.
QImage fromFile(const QString& file, int size)
{
    const QFileInfo info(file);
    if (!info.exists()) {
        qWarning().noquote() << "formwerk: picture" << file << "not found, a stand-in is shown";
        return {};
    }
    // Only regular files are read: a device such as /dev/zero never ends.
    const QImage image = info.isFile() ? readFile(file, size) : QImage();
    if (image.isNull()) {
        qWarning().noquote() << "formwerk:" << file << "is not a picture, a stand-in is shown";
        return {};
    }
    if (size <= 0)
        size = std::clamp(std::max(image.width(), image.height()), 1, kMaxSize);
    return fitted(image, size);
}

QImage drawnFallback(const QString& name, int size)
{
    QImage canvas = emptyCanvas(size);
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal inset = size / 16.0;
    QPainterPath square;
    square.addRoundedRect(QRectF(inset, inset, size - 2 * inset, size - 2 * inset), size / 5.0,
                          size / 5.0);
    painter.fillPath(square, QColor(0x90, 0x96, 0x9c));
    const QString letter = name.isEmpty() ? QStringLiteral("?") : name.left(1).toUpper();
    if (qGuiApp && size >= 8) { // text needs the application's fonts
        QFont font = painter.font();
        font.setPixelSize(std::max(6, size * 3 / 5));
        font.setBold(true);
        painter.setFont(font);
        painter.setPen(Qt::white);
        painter.drawText(canvas.rect(), Qt::AlignCenter, letter);
    }
    return canvas;
}

// Icon themes hold no cursors (cursor themes are X cursor files, which Qt
// does not read), so the hand that lists show over their rows is drawn.
bool isPointingHand(const QStringList& parts)
{
    return parts.size() >= 2 && parts.first().compare(u"cur", Qt::CaseInsensitive) == 0 &&
           QFileInfo(parts.last()).completeBaseName().compare(u"hand up", Qt::CaseInsensitive) == 0;
}

QImage drawnPointingHand(int size)
{
    QPainterPath hand;
    const auto add = [&hand](qreal x, qreal y, qreal w, qreal h, qreal r) {
        QPainterPath part;
        part.addRoundedRect(QRectF(x, y, w, h), r, r);
        hand = hand.united(part);
    };
    add(10, 1, 6, 18, 3);   // the raised finger
    add(15, 11, 5, 9, 2.5); // three folded fingers
    add(19, 12, 5, 9, 2.5);
    add(23, 13, 5, 9, 2.5);
    add(4, 15, 8, 6, 3);   // the thumb
    add(8, 14, 20, 17, 5); // the palm
    QImage canvas = emptyCanvas(size);
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 32.0, size / 32.0);
    painter.setPen(QPen(Qt::black, 1.5));
    painter.setBrush(Qt::white);
    painter.drawPath(hand.simplified());
    return canvas;
}

QStringList componentsOf(const QString& path)
{
    return QString(path).replace(u'/', u'\\').split(u'\\', Qt::SkipEmptyParts);
}

// The entry of a folder whose name matches case-insensitively (exact first).
QString matchEntry(const QDir& dir, const QString& name, QDir::Filters filters)
{
    if (dir.exists(name) && QFileInfo(dir.filePath(name)).isDir() == (filters == QDir::Dirs))
        return name;
    const QStringList entries = dir.entryList(filters | QDir::NoDotAndDotDot | QDir::Hidden);
    for (const QString& entry : entries)
        if (entry.compare(name, Qt::CaseInsensitive) == 0)
            return entry;
    return {};
}

// A text that names a picture file: a Linux path or a drive location
// ("C:\usr\share\pixmaps\x.png"). Theme icon names have no separators.
QString pictureFileOf(const std::string& file)
{
    if (file.find_first_of("/\\") == std::string::npos)
        return {};
    const std::optional<std::string> posix = LocationToPosix(file);
    return posix ? QFile::decodeName(posix->c_str()) : QString();
}

// An icon name and, behind it, the generic icon of the MIME type it is named
// after ("application-vnd.foo" -> "x-office-document"), as file managers fall
// back when a theme lacks a type's own picture.
QStringList themeNamesOf(const std::string& name)
{
    const QString own = QString::fromStdString(name).trimmed();
    QStringList names{own};
    QString typeName = own;
    if (const qsizetype dash = typeName.indexOf(u'-'); dash > 0) {
        typeName[dash] = u'/';
        const QMimeType type = QMimeDatabase().mimeTypeForName(typeName);
        if (type.isValid())
            names << type.genericIconName();
    }
    return names;
}

// Image number index of a file that may hold several (an icon file's sizes,
// a GIF's frames); null when there is no such image.
QImage readImageNumber(const QString& file, int index)
{
    QImageReader reader(file);
    if (index > 0 && !reader.jumpToImage(index))
        return {};
    return reader.read();
}

// A key colour stands for transparency only in pictures without an alpha
// channel of their own; applied to a theme picture it would punch holes into
// its outlines.
QImage withoutKeyColour(const QImage& image, std::uint32_t bgr)
{
    if (image.isNull() || image.hasAlphaChannel())
        return image;
    QImage result = image.convertToFormat(QImage::Format_ARGB32);
    const QRgb key = qRgb(int(bgr & 0xFF), int((bgr >> 8) & 0xFF), int((bgr >> 16) & 0xFF));
    for (int y = 0; y < result.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x)
            if ((line[x] & 0xFFFFFF) == (key & 0xFFFFFF))
                line[x] = 0;
    }
    return result;
}

} // namespace

DesktopPictures::DesktopPictures(QString storeFolder,
                                 std::shared_ptr<const PackageFolders> packages)
    : m_store(std::move(storeFolder)),
      m_packageFolders(packages ? std::move(packages) : std::make_shared<PackageFolders>())
{
    if (m_store.isEmpty())
        m_store = qEnvironmentVariable("FORMWERK_PICTURES");
}

const std::vector<std::shared_ptr<DesktopPackage>>& DesktopPictures::packages()
{
    if (std::exchange(m_packagesOpened, true))
        return m_packages;
    for (const QString& file : m_packageFolders->PackageFiles()) {
        auto package = std::make_shared<DesktopPackage>(m_packageFolders);
        if (package->LoadFile(file))
            m_packages.push_back(std::move(package));
        else // one broken package must not hide the others
            qWarning().noquote() << "formwerk: package"
                                 << QString::fromStdString(package->LastError());
    }
    if (m_packageFolders->HasBuiltIn()) {
        auto own = std::make_shared<DesktopPackage>(m_packageFolders);
        if (own->Load(kBuiltInPackageName))
            m_packages.push_back(std::move(own));
    }
    return m_packages;
}

int DesktopPictures::SizeOfPath(const QString& path)
{
    const QStringList parts = componentsOf(path.section(u'#', 0, 0));
    if (parts.size() < 2 || parts[0].compare(u"ico", Qt::CaseInsensitive) != 0)
        return kDefaultSize;
    bool ok = false;
    const int size = parts[1].toInt(&ok);
    return ok && size >= 1 && size <= kMaxSize ? size : kDefaultSize;
}

QString DesktopPictures::findInStore(const QStringList& parts, bool wantFolder,
                                     bool exactName) const
{
    if (m_store.isEmpty())
        return {};
    QDir dir(m_store);
    if (!dir.exists())
        return {};
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const QString& part = parts[i];
        if (part == u"." || part == u"..") // stay inside the store
            return {};
        const bool last = i == parts.size() - 1;
        if (!last || wantFolder) {
            const QString entry = matchEntry(dir, part, QDir::Dirs);
            if (entry.isEmpty() || !dir.cd(entry))
                return {};
            continue;
        }
        // A picture may be kept as PNG or SVG instead of the icon file named.
        const QStringList candidates = exactName ? QStringList{part} : pictureNames(part);
        for (const QString& candidate : candidates) {
            const QString entry = matchEntry(dir, candidate, QDir::Files);
            if (!entry.isEmpty())
                return dir.filePath(entry);
        }
        return {};
    }
    return wantFolder ? dir.path() : QString();
}

QImage DesktopPictures::fromStore(const QStringList& parts, int size) const
{
    const QString file = findInStore(parts, false);
    return file.isEmpty() ? QImage() : fitted(readFile(file, size), size);
}

QImage DesktopPictures::fromPackages(const QStringList& parts, int size, bool builtIn)
{
    const QString folder = parts.mid(0, parts.size() - 1).join(u'\\');
    const QString prefix = folder.isEmpty() ? QString() : folder + u'\\';
    for (const std::shared_ptr<DesktopPackage>& package : packages()) {
        if (package->File().isEmpty() != builtIn)
            continue;
        for (const QString& name : pictureNames(parts.last())) {
            const std::optional<std::string> bytes = package->Read((prefix + name).toStdString());
            if (bytes)
                if (QImage image = fitted(readBytes(*bytes, size), size); !image.isNull())
                    return image;
        }
    }
    return {};
}

QImage DesktopPictures::loadBase(const QString& path, int size, bool drawFallback)
{
    if (isFilePath(path)) {
        QImage image = fromFile(path, size);
        if (image.isNull() && drawFallback)
            image =
                drawnFallback(QFileInfo(path).completeBaseName(), size > 0 ? size : kDefaultSize);
        return image;
    }
    const QStringList parts = componentsOf(path);
    const QString name = parts.isEmpty() ? QString() : QFileInfo(parts.last()).completeBaseName();
    QImage image;
    if (!parts.isEmpty())
        image = fromStore(parts, size);
    if (image.isNull() && !parts.isEmpty())
        image = fromPackages(parts, size, false);
    if (image.isNull() && parts.size() >= 2)
        image = fitted(ThemePicture(parts[parts.size() - 2].toLower(), name.toLower(), size), size);
    if (image.isNull() && !parts.isEmpty())
        image = fromPackages(parts, size, true);
    if (image.isNull() && isPointingHand(parts))
        image = drawnPointingHand(size);
    if (image.isNull() && drawFallback)
        image = drawnFallback(name, size);
    return image;
}

QImage DesktopPictures::LoadImage(const QString& path, int size)
{
    // A file's own name may hold a "#"; only what is not a file has an overlay.
    const bool wholeFile = isFilePath(path) && QFileInfo(path).isFile();
    const qsizetype hash = wholeFile ? -1 : path.indexOf(u'#');
    const QString base = hash < 0 ? path : path.left(hash);
    if (size <= 0)
        size = isFilePath(base) ? 0 : SizeOfPath(path); // a file keeps its own size
    if (size > 0)
        size = std::min(size, kMaxSize);
    QImage image = loadBase(base, size, true);
    if (hash >= 0) {
        const int overlaySize = std::max(1, image.width() / 2);
        const QImage overlay = loadBase(path.mid(hash + 1), overlaySize, false);
        if (!overlay.isNull()) {
            QPainter painter(&image);
            painter.drawImage(image.width() - overlaySize, image.height() - overlaySize, overlay);
        }
    }
    return image;
}

PicturePtr DesktopPictures::LoadPicture(const std::string& path, int /*flags*/, int width,
                                        int /*height*/)
{
    return FromImage(LoadImage(QString::fromStdString(path), width));
}

std::shared_ptr<ResourcePackage> DesktopPictures::NewResourcePackage()
{
    return std::make_shared<DesktopPackage>(m_packageFolders);
}

StringList DesktopPictures::ListResources(const std::string& path, bool wantFolders, bool /*flag1*/,
                                          bool /*flag2*/)
{
    const QStringList parts = componentsOf(QString::fromStdString(path));
    if (parts.contains(u".") || parts.contains(u".."))
        return {};
    const QString prefix = parts.isEmpty() ? QString() : parts.join(u'\\') + u'\\';
    const QString suffix = wantFolders ? QStringLiteral("\\") : QString();
    QStringList names;
    QSet<QString> seen;
    const auto add = [&](const QString& name) {
        if (const QString key = name.toUpper(); !seen.contains(key)) {
            seen.insert(key);
            names << name;
        }
    };
    if (const QString folder = findInStore(parts, true); !folder.isEmpty())
        for (const QString& entry : QDir(folder).entryList(
                 (wantFolders ? QDir::Dirs : QDir::Files) | QDir::NoDotAndDotDot))
            add(entry);
    // The folders' packages, then the library's own.
    for (const std::shared_ptr<DesktopPackage>& package : packages()) {
        const StringList entries =
            package->Content(prefix.toStdString(), wantFolders ? 1 : 0, 0, 0);
        for (const std::string& entry : entries.items())
            add(componentsOf(QString::fromStdString(entry)).value(parts.size()));
    }
    std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
        return a.compare(b, Qt::CaseInsensitive) < 0;
    });
    StringList result;
    result.Reserve(int(names.size()));
    for (const QString& name : names)
        result.Add((prefix + name + suffix).toStdString());
    return result;
}

bool DesktopPictures::ExtractResource(const std::string& resource, const std::string& destination,
                                      std::string& error)
{
    const QStringList parts = componentsOf(QString::fromStdString(resource));
    if (const QString file = parts.isEmpty() ? QString() : findInStore(parts, false, true);
        !file.isEmpty()) {
        const std::optional<std::string> target =
            ExtractionTarget(destination, QFileInfo(file).fileName().toStdString(), error);
        QFile in(file);
        const bool written = target && in.open(QIODevice::ReadOnly) &&
                             WriteFileAtomically(*target, [&in](const PieceWriter& write) {
                                 char buffer[64 * 1024];
                                 qint64 n = 0;
                                 while ((n = in.read(buffer, sizeof buffer)) > 0)
                                     if (!write(std::string_view(buffer, std::size_t(n))))
                                         return false;
                                 return n == 0;
                             });
        if (!written && error.empty())
            error = "cannot copy " + file.toStdString() + " to " + destination;
        return written;
    }
    for (const std::shared_ptr<DesktopPackage>& package : packages())
        if (package->Exists(resource)) {
            const bool written = package->Extract(resource, destination);
            if (!written)
                error = package->LastError();
            return written;
        }
    error = resource + " is in no picture store folder or package";
    return false;
}

int DesktopPictures::IconCount(const std::string& file)
{
    const QString path = pictureFileOf(file);
    if (path.isEmpty())
        return ThemeIconName(themeNamesOf(file)).isEmpty() ? 0 : 1;
    if (!QFileInfo(path).isFile())
        return 0;
    QImageReader reader(path);
    return reader.canRead() ? std::max(1, reader.imageCount()) : 0;
}

PicturePtr DesktopPictures::ExtractIcon(const std::string& file, int index, int size,
                                        std::uint32_t maskColour)
{
    if (size <= 0 || index < 0)
        return nullptr;
    size = std::min(size, kMaxSize);
    const QString path = pictureFileOf(file);
    QImage image;
    if (path.isEmpty())
        image = ThemeIconImage(themeNamesOf(file), size);
    else if (QFileInfo(path).isFile())
        image = withoutKeyColour(readImageNumber(path, index), maskColour);
    if (image.isNull())
        return nullptr;
    return FromImage(fitted(image, size));
}

} // namespace fw::desktop
