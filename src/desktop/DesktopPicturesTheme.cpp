#include "desktop/DesktopPicturesTheme.h"

#include <QColor>
#include <QDir>
#include <QGuiApplication>
#include <QHash>
#include <QIcon>
#include <QMimeDatabase>
#include <QPainter>
#include <QSettings>
#include <mutex>

namespace fw::desktop {

namespace {

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
        {"windows\\program group", {{"view-list", "view-grid"}, {}}},
        {"tools\\generic", {{"emblem-system", "preferences-system", "applications-utilities"}, {}}},
        {"papers\\sheet", {{"text-x-generic"}, {}}},
        {"arrows\\black compact up", {{"go-up"}, {}}},
        {"overlay\\new", {{"list-add"}, kGreen}},
        {"overlay\\remove", {{"list-remove"}, kRed}},
        {"overlay\\search", {{"system-search", "edit-find"}, {}}},
    };
    return table;
}

// Common full themes of Linux desktops, in the order a user of none of them
// would least mind; any other installed full theme comes after these.
const QStringList kWellKnownThemes = {"Adwaita", "breeze", "Papirus", "elementary",
                                      "Yaru",    "oxygen", "Tango",   "gnome"};
const QString kHicolor = QStringLiteral("hicolor");

// A full theme lists folders of pictures; cursor themes ("default") and bare
// inheritance stubs list none.
bool isFullTheme(const QString& name, const QStringList& searchPaths)
{
    if (name.isEmpty() || name.compare(kHicolor, Qt::CaseInsensitive) == 0)
        return false;
    for (const QString& path : searchPaths) {
        const QString index = path + u'/' + name + QStringLiteral("/index.theme");
        if (!QFileInfo::exists(index))
            continue;
        const QSettings theme(index, QSettings::IniFormat);
        if (!theme.value(QStringLiteral("Icon Theme/Directories")).toStringList().isEmpty())
            return true;
    }
    return false;
}

QStringList searchPaths()
{
    QStringList paths = QIcon::themeSearchPaths();
    if (!paths.contains(QStringLiteral("/usr/share/icons")))
        paths << QStringLiteral("/usr/share/icons");
    return paths;
}

// Once per process, before the first lookup: Qt then looks in the chosen
// theme, its parents, and the fallback theme.
void prepareTheme()
{
    static std::once_flag once;
    std::call_once(once, [] {
        const QStringList paths = searchPaths();
        QIcon::setThemeSearchPaths(paths);
        const QStringList chain = IconThemeChain(QIcon::themeName(), paths);
        QIcon::setThemeName(chain.first());
        QIcon::setFallbackThemeName(chain.size() > 1 ? chain[1] : kHicolor);
    });
}

QImage tinted(QImage image, const QColor& colour)
{
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), colour);
    return image;
}

} // namespace

QStringList IconThemeChain(const QString& reported, const QStringList& searchPaths)
{
    QStringList chain;
    const auto add = [&](const QString& name) {
        if (!chain.contains(name, Qt::CaseInsensitive) && isFullTheme(name, searchPaths))
            chain << name;
    };
    add(reported);
    for (const QString& name : kWellKnownThemes)
        add(name);
    QStringList others;
    for (const QString& path : searchPaths)
        others << QDir(path).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& name : others)
        add(name);
    chain << kHicolor;
    return chain;
}

QImage ThemePicture(const QString& group, const QString& name, int size)
{
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
    return ThemeIconImage(entry.names, size, entry.tint);
}

QString ThemeIconName(const QStringList& names)
{
    if (!qGuiApp) // the theme lookup needs the application object
        return {};
    prepareTheme();
    for (const QString& name : names) {
        if (name.isEmpty())
            continue;
        for (const QString& candidate : {name, name + QStringLiteral("-symbolic")})
            if (QIcon::hasThemeIcon(candidate))
                return candidate;
    }
    return {};
}

QImage ThemeIconImage(const QStringList& names, int size, const QColor& tint)
{
    const QString name = ThemeIconName(names);
    if (name.isEmpty())
        return {};
    QImage image = QIcon::fromTheme(name).pixmap(QSize(size, size), 1.0).toImage();
    if (!image.isNull() && name.endsWith(QStringLiteral("-symbolic")) && tint.isValid())
        image = tinted(image, tint);
    return image;
}

} // namespace fw::desktop
