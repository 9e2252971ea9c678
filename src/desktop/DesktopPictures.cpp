#include "desktop/DesktopPictures.h"
#include "desktop/DesktopPicturesTheme.h"
#include "desktop/LocationPaths.h"
#include "forms/Pictures.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImageReader>
#include <QMimeDatabase>
#include <QPainter>
#include <QPainterPath>
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
QImage readFile(const QString& file, int size)
{
    QImageReader reader(file);
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

DesktopPictures::DesktopPictures(QString storeFolder) : m_store(std::move(storeFolder))
{
    if (m_store.isEmpty())
        m_store = qEnvironmentVariable("FORMWERK_PICTURES");
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

QString DesktopPictures::findInStore(const QStringList& parts, bool wantFolder) const
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
        const QString stem = QFileInfo(part).completeBaseName();
        QStringList candidates{part};
        for (const char* ext : {".png", ".svg", ".ico"})
            candidates << stem + QLatin1String(ext);
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
    if (image.isNull() && parts.size() >= 2)
        image = fitted(ThemePicture(parts[parts.size() - 2].toLower(), name.toLower(), size), size);
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
    return nullptr;
}

StringList DesktopPictures::ListResources(const std::string& path, bool wantFolders, bool /*flag1*/,
                                          bool /*flag2*/)
{
    StringList result;
    const QStringList parts = componentsOf(QString::fromStdString(path));
    const QString folder = findInStore(parts, true);
    if (folder.isEmpty())
        return result;
    QDir dir(folder);
    dir.setSorting(QDir::Name | QDir::IgnoreCase);
    const QStringList entries =
        dir.entryList((wantFolders ? QDir::Dirs : QDir::Files) | QDir::NoDotAndDotDot);
    const QString prefix = parts.isEmpty() ? QString() : parts.join(u'\\') + u'\\';
    for (const QString& entry : entries)
        result.Add((prefix + entry).toStdString());
    return result;
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
