#include "desktop/DesktopPictures.h"
#include "forms/Pictures.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHash>
#include <QIcon>
#include <QImageReader>
#include <QMimeDatabase>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <mutex>

namespace fw::desktop {

namespace {

constexpr int kDefaultSize = 16;
constexpr int kMaxSize = 512;

struct ThemeEntry {
    QStringList names;
    // Symbolic icons are one flat grey; the tint gives the message signs the
    // colours a user expects of them.
    QColor tint;
};

const QColor kGreen(0x2e, 0x7d, 0x32);
const QColor kRed(0xc6, 0x28, 0x28);
const QColor kAmber(0xe6, 0x8a, 0x00);
const QColor kBlue(0x1e, 0x66, 0xc8);
const QColor kViolet(0x6a, 0x3d, 0xc0);

// Keys are "group\name" in lower case, the way the dialogs name their pictures.
const QHash<QString, ThemeEntry>& themeTable()
{
    static const QHash<QString, ThemeEntry> table = {
        {"signs\\ok", {{"emblem-ok", "object-select", "dialog-ok"}, kGreen}},
        {"signs\\abort", {{"process-stop", "window-close"}, kRed}},
        {"signs\\no", {{"window-close", "process-stop"}, kRed}},
        {"signs\\retry", {{"view-refresh"}, {}}},
        {"signs\\ignore", {{"go-next"}, {}}},
        {"signs\\next", {{"go-next"}, {}}},
        {"signs\\previous", {{"go-previous"}, {}}},
        {"signs\\question", {{"dialog-question", "help-browser"}, kViolet}},
        {"signs\\critical", {{"dialog-error"}, kRed}},
        {"signs\\warning", {{"dialog-warning"}, kAmber}},
        {"signs\\attention", {{"dialog-warning"}, kAmber}},
        {"signs\\info", {{"dialog-information"}, kBlue}},
        {"signs\\information", {{"dialog-information"}, kBlue}},
        {"signs\\about", {{"help-about", "dialog-information"}, kBlue}},
        {"signs\\help", {{"help-browser", "help-contents", "help-about"}, kBlue}},
        {"signs\\print", {{"document-print"}, {}}},
        {"signs\\delete", {{"edit-delete", "user-trash"}, {}}},
        {"signs\\favorite", {{"starred", "emblem-favorite", "bookmark-new"}, kAmber}},
        {"signs\\save", {{"document-save"}, {}}},
        {"signs\\load", {{"document-open"}, {}}},
        {"signs\\undo", {{"edit-undo"}, {}}},
        {"signs\\copy", {{"edit-copy"}, {}}},
        {"signs\\search", {{"system-search", "edit-find"}, {}}},
        {"signs\\new", {{"document-new"}, {}}},
        {"signs\\filter", {{"view-filter", "edit-find"}, {}}},
        {"signs\\name", {{"edit-rename", "insert-text"}, {}}},
        {"folders\\generic", {{"folder"}, {}}},
        {"folders\\closed", {{"folder"}, {}}},
        {"folders\\ok", {{"folder"}, {}}},
        {"folders\\save", {{"folder", "document-save"}, {}}},
        {"folders\\open", {{"folder-open", "folder"}, {}}},
        {"folders\\nethood", {{"folder-remote", "network-workgroup"}, {}}},
        {"folders\\favorite", {{"user-bookmarks", "folder"}, {}}},
        {"folders\\desktop", {{"user-desktop"}, {}}},
        {"folders\\user", {{"user-home"}, {}}},
        {"folders\\users", {{"system-users", "user-home"}, {}}},
        {"folders\\checklist", {{"folder-documents", "folder"}, {}}},
        {"hardware\\nethood", {{"network-workgroup", "network-server"}, {}}},
        {"hardware\\computer", {{"computer"}, {}}},
        {"hardware\\workstation", {{"computer"}, {}}},
        {"hardware\\drive", {{"drive-harddisk"}, {}}},
        {"hardware\\drive cd ready", {{"media-optical", "drive-optical"}, {}}},
        {"hardware\\drive disc ready", {{"media-optical", "drive-optical"}, {}}},
        {"hardware\\drive net", {{"folder-remote", "network-server"}, {}}},
        {"hardware\\drive ram", {{"media-flash", "drive-harddisk"}, {}}},
        {"hardware\\drive removable", {{"drive-removable-media"}, {}}},
        {"equipment\\usbstick", {{"drive-removable-media", "media-flash"}, {}}},
        {"files\\new", {{"document-new"}, {}}},
        {"software\\generic", {{"application-x-executable"}, {}}},
        {"windows\\program", {{"application-x-executable"}, {}}},
        {"tools\\generic", {{"applications-utilities", "preferences-system"}, {}}},
        {"papers\\sheet", {{"text-x-generic"}, {}}},
        {"overlay\\new", {{"list-add"}, kGreen}},
        {"overlay\\remove", {{"list-remove"}, kRed}},
        {"overlay\\search", {{"system-search", "edit-find"}, {}}},
    };
    return table;
}

// The desktop may run without a platform theme (offscreen, bare X sessions):
// then Adwaita, which Debian installs with every GTK desktop.
void prepareTheme()
{
    static std::once_flag once;
    std::call_once(once, [] {
        if (QIcon::themeName().isEmpty())
            QIcon::setThemeName(QStringLiteral("Adwaita"));
        if (QIcon::fallbackThemeName().isEmpty())
            QIcon::setFallbackThemeName(QStringLiteral("hicolor"));
        QStringList paths = QIcon::themeSearchPaths();
        if (!paths.contains(QStringLiteral("/usr/share/icons"))) {
            paths << QStringLiteral("/usr/share/icons");
            QIcon::setThemeSearchPaths(paths);
        }
    });
}

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

QImage tinted(QImage image, const QColor& colour)
{
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), colour);
    return image;
}

// The best of the images in a file for a size: the smallest that is at least
// as large, else the largest. Icon files hold several sizes.
QImage readFile(const QString& file, int size)
{
    QImageReader reader(file);
    if (reader.format() == "svg" || reader.format() == "svgz") {
        reader.setScaledSize(QSize(size, size));
        return reader.read();
    }
    QImage best;
    const int count = std::max(1, reader.imageCount());
    for (int i = 0; i < count; ++i) {
        if (i > 0 && !reader.jumpToImage(i))
            break;
        const QImage image = reader.read();
        if (image.isNull())
            continue;
        const bool fits = image.width() >= size;
        const bool bestFits = !best.isNull() && best.width() >= size;
        if (best.isNull() || (fits && (!bestFits || image.width() < best.width())) ||
            (!fits && !bestFits && image.width() > best.width()))
            best = image;
    }
    return best;
}

QImage fromTheme(const QString& group, const QString& name, int size)
{
    if (!qGuiApp) // pixmaps need the application object
        return {};
    prepareTheme();
    ThemeEntry entry;
    const auto& table = themeTable();
    if (auto it = table.find(group + u'\\' + name); it != table.end()) {
        entry = *it;
    } else if (group == u"files") {
        // File type pictures are named by extension: ask the MIME database.
        const QMimeType type = QMimeDatabase().mimeTypeForFile(QStringLiteral("x.") + name,
                                                               QMimeDatabase::MatchExtension);
        entry.names = {type.iconName(), type.genericIconName()};
    } else {
        return {};
    }
    for (const QString& themeName : entry.names) {
        for (const QString& candidate : {themeName, themeName + QStringLiteral("-symbolic")}) {
            if (!QIcon::hasThemeIcon(candidate))
                continue;
            QImage image =
                fitted(QIcon::fromTheme(candidate).pixmap(QSize(size, size), 1.0).toImage(), size);
            if (image.isNull())
                continue;
            if (candidate.endsWith(QStringLiteral("-symbolic")) && entry.tint.isValid())
                image = tinted(image, entry.tint);
            return image;
        }
    }
    return {};
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
    const QStringList parts = componentsOf(path);
    const QString name = parts.isEmpty() ? QString() : QFileInfo(parts.last()).completeBaseName();
    QImage image;
    if (!parts.isEmpty())
        image = fromStore(parts, size);
    if (image.isNull() && parts.size() >= 2)
        image = fromTheme(parts[parts.size() - 2].toLower(), name.toLower(), size);
    if (image.isNull() && drawFallback)
        image = drawnFallback(name, size);
    return image;
}

QImage DesktopPictures::LoadImage(const QString& path, int size)
{
    if (size <= 0)
        size = SizeOfPath(path);
    size = std::clamp(size, 1, kMaxSize);
    const qsizetype hash = path.indexOf(u'#');
    QImage image = loadBase(hash < 0 ? path : path.left(hash), size, true);
    if (hash >= 0) {
        const int overlaySize = std::max(1, size / 2);
        const QImage overlay = loadBase(path.mid(hash + 1), overlaySize, false);
        if (!overlay.isNull()) {
            QPainter painter(&image);
            painter.drawImage(size - overlaySize, size - overlaySize, overlay);
        }
    }
    return image;
}

PicturePtr DesktopPictures::LoadPicture(const std::string& path, int /*flags*/, int width,
                                        int /*height*/)
{
    return FromImage(LoadImage(QString::fromStdString(path), width));
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

} // namespace fw::desktop
