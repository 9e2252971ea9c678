#pragma once
// Pictures of the desktop host from resource paths such as
// "Ico\20\Computer\Signs\OK.ico" or "Ico\20\Computer\Hardware\Nethood.ico#ico\20\overlay\new.ico".
//
// The number after "Ico\" is the size in pixels (16 if it is missing or not a
// number from 1 to 512); a picture is always exactly that square, never null.
// The base is found, in this order:
//  1. in the picture store folder: the same relative path with "/" separators,
//     path components matched case-insensitively, the file's own extension
//     or else .png, .svg and .ico tried;
//  2. in the installed icon theme (see DesktopPicturesTheme.h), through a table from the names the
//  dialogs
//     use (group and name, such as Signs\Critical) to freedesktop icon names;
//  3. drawn: a rounded grey square with the name's first letter.
// An absolute path ("/usr/share/pixmaps/x.png") names a picture file of its
// own (PNG, SVG, ICO and the other formats Qt reads), kept at its own size
// unless a width is asked for; a path that names nothing, or a file that is
// no picture, draws the square and warns on stderr.
// An overlay after "#" is found the same way (but never drawn as a letter
// square: an unknown overlay is left out) and painted at half size into the
// bottom-right corner, where emblems sit in every icon theme.

#include "host/CoreDevServices.h"

#include <QImage>
#include <QString>

namespace fw::desktop {

class DesktopPictures final : public CoreDevPictures {
  public:
    /// storeFolder empty: $FORMWERK_PICTURES, else no store (theme and drawn only).
    explicit DesktopPictures(QString storeFolder = {});

    /// width > 0 overrides the size named in the path.
    PicturePtr LoadPicture(const std::string& path, int flags = 0, int width = -1,
                           int height = -1) override;
    /// Linux programs carry no icons of their own, so file is a picture file
    /// (a Linux path or a location) or an icon name of the theme: the images
    /// the file holds (an icon file holds one per size), 1 for a name the
    /// theme has, else 0.
    int IconCount(const std::string& file) override;
    /// Image number index of a picture file (PNG, SVG, ICO, XPM ...), or the
    /// theme's picture of an icon name (as the classes root gives it) with the
    /// generic icon of its MIME type behind it, fitted into size x size.
    /// maskColour is transparent in pictures without transparency of their own.
    /// Null when there is no such file, image or icon.
    PicturePtr ExtractIcon(const std::string& file, int index, int size,
                           std::uint32_t maskColour) override;
    std::shared_ptr<ResourcePackage> NewResourcePackage() override;
    /// The store's subfolders (wantFolders) or files below a resource path,
    /// as full resource paths with backslashes, sorted case-insensitively.
    /// Empty without a store or for a path that is no folder of it.
    StringList ListResources(const std::string& path, bool wantFolders, bool flag1,
                             bool flag2) override;

    /// The same picture as a QImage, for the desktop host's own widgets.
    QImage LoadImage(const QString& path, int size = -1);
    /// Size in pixels that a resource path names (16 if none).
    static int SizeOfPath(const QString& path);

  private:
    QImage loadBase(const QString& path, int size, bool drawFallback);
    QImage fromStore(const QStringList& parts, int size) const;
    QString findInStore(const QStringList& parts, bool wantFolder) const;

    QString m_store;
};

} // namespace fw::desktop
