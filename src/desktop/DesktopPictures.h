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
//  2. in the resource packages of the package folders (see DesktopPackages.h),
//     in folder order, the same names tried;
//  3. in the installed icon theme (see DesktopPicturesTheme.h), through a
//     table from the names the dialogs use (group and name, such as
//     Signs\Critical) to freedesktop icon names;
//  4. in the library's own package, after the theme so that a desktop keeps
//     its theme's look wherever the theme has a picture;
//  5. drawn: a rounded grey square with the name's first letter.
// An absolute path ("/usr/share/pixmaps/x.png") names a picture file of its
// own (PNG, SVG, ICO and the other formats Qt reads), kept at its own size
// unless a width is asked for; a path that names nothing, or a file that is
// no picture, draws the square and warns on stderr.
// An overlay after "#" is found the same way (but never drawn as a letter
// square: an unknown overlay is left out) and painted at half size into the
// bottom-right corner, where emblems sit in every icon theme.

#include "desktop/DesktopPackages.h"
#include "host/CoreDevServices.h"

#include <QImage>
#include <QString>
#include <memory>
#include <vector>

namespace fw::desktop {

class DesktopPictures final : public CoreDevPictures {
  public:
    /// storeFolder empty: $FORMWERK_PICTURES, else no store. packages null:
    /// the XDG package folders and the library's own package.
    explicit DesktopPictures(QString storeFolder = {},
                             std::shared_ptr<const PackageFolders> packages = nullptr);

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
    /// A DesktopPackage over the same package folders.
    std::shared_ptr<ResourcePackage> NewResourcePackage() override;
    /// The subfolders (wantFolders, with a trailing "\") or files below a
    /// resource path, across the store folder and every package: the path as
    /// given followed by each entry's own name, once each case-blind (the
    /// store's spelling first, then the packages' in the order above),
    /// sorted case-insensitively. Empty for a path that nothing holds. The
    /// two flags change nothing here.
    StringList ListResources(const std::string& path, bool wantFolders, bool flag1,
                             bool flag2) override;
    /// Writes one resource of the store folder or of a package (same order as
    /// pictures, exact names only) to destination, a file or a folder (see
    /// ExtractionTarget). False, with the reason in error, if nothing holds
    /// it or it cannot be written safely.
    bool ExtractResource(const std::string& resource, const std::string& destination,
                         std::string& error);

    /// The same picture as a QImage, for the desktop host's own widgets.
    QImage LoadImage(const QString& path, int size = -1);
    /// Size in pixels that a resource path names (16 if none).
    static int SizeOfPath(const QString& path);

  private:
    QImage loadBase(const QString& path, int size, bool drawFallback);
    QImage fromStore(const QStringList& parts, int size) const;
    QImage fromPackages(const QStringList& parts, int size, bool builtIn);
    /// exactName: the file named, without trying other picture extensions.
    QString findInStore(const QStringList& parts, bool wantFolder, bool exactName = false) const;
    /// The packages of the folders, then the library's own; opened on first use.
    const std::vector<std::shared_ptr<DesktopPackage>>& packages();

    QString m_store;
    std::shared_ptr<const PackageFolders> m_packageFolders;
    std::vector<std::shared_ptr<DesktopPackage>> m_packages;
    bool m_packagesOpened = false;
};

} // namespace fw::desktop
