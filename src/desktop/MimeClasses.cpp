#include "desktop/MimeClasses.h"

#include "desktop/DesktopPicturesTheme.h"

#include <QMimeDatabase>

namespace fw::desktop {

namespace {

std::optional<std::string> progIdOfExtension(const QString& extension)
{
    const QMimeDatabase database;
    // Globs are mostly lower case; "BERICHT.TXT" is still a text file.
    for (const QString& candidate : {extension.toLower(), extension}) {
        const QList<QMimeType> types =
            database.mimeTypesForFileName(QStringLiteral("x") + candidate);
        if (!types.isEmpty())
            return types.first().name().toStdString();
    }
    return std::nullopt;
}

// The name the icon theme answers for the type, its own before its generic
// one; none when the theme has neither, so that a chooser keeps its
// placeholder instead of asking for a picture that cannot come.
std::optional<std::string> iconOf(const QMimeType& type)
{
    const QString name = ThemeIconName({type.iconName(), type.genericIconName()});
    return name.isEmpty() ? std::nullopt : std::optional(name.toStdString());
}

} // namespace

std::optional<std::string> ReadMimeClass(const std::string& key)
{
    const QString text = QString::fromStdString(key);
    const qsizetype split = text.lastIndexOf(u'\\');
    if (split < 0)
        return std::nullopt;
    const QString valueName = text.mid(split + 1);
    QString path = text.left(split);
    QString subKey;
    if (const qsizetype inner = path.indexOf(u'\\'); inner >= 0) {
        subKey = path.mid(inner + 1);
        path.truncate(inner);
    }
    if (!valueName.isEmpty())
        return std::nullopt;
    if (path.startsWith(u'.') && path.size() > 1)
        return subKey.isEmpty() ? progIdOfExtension(path) : std::nullopt;
    const QMimeType type = QMimeDatabase().mimeTypeForName(path);
    if (!type.isValid())
        return std::nullopt;
    if (subKey.isEmpty())
        return type.comment().toStdString();
    if (subKey.compare(u"DefaultIcon", Qt::CaseInsensitive) == 0)
        return iconOf(type);
    return std::nullopt;
}

} // namespace fw::desktop
