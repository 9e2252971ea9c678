#pragma once
// The installed icon theme as a source of the desktop host's pictures.
//
// Qt reports whatever theme the platform plugin and the desktop name, and on
// a bare X display or without a platform theme that is "hicolor", which holds
// hardly any of the pictures the dialogs ask for. So the theme is chosen here:
// the reported one if it is a full theme installed on this machine, else the
// first installed full theme (Adwaita, Breeze, ...); a second full theme, or
// else hicolor, is where Qt looks when the first has no such picture.

#include <QColor>
#include <QImage>
#include <QString>
#include <QStringList>

namespace fw::desktop {

/// The icon themes to look in, best first: the reported theme when it is a
/// full theme (an index.theme with directories of pictures) in one of the
/// search paths, then the other full themes there, well-known ones first,
/// then "hicolor". Never empty.
QStringList IconThemeChain(const QString& reported, const QStringList& searchPaths);

/// The picture the theme has for a dialog's "group\name" (lower case), at
/// most size pixels square; a null image if the theme has none or there is no
/// GUI application.
QImage ThemePicture(const QString& group, const QString& name, int size);

/// The first of the freedesktop icon names (each tried as it is, then with
/// "-symbolic") that the theme chain holds; empty if none or there is no GUI
/// application.
QString ThemeIconName(const QStringList& names);

/// The theme's picture of the first of names it holds, at most size pixels
/// square; symbolic pictures take tint if it is valid. Null if none.
QImage ThemeIconImage(const QStringList& names, int size, const QColor& tint = {});

} // namespace fw::desktop
