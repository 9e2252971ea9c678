#pragma once
// The look shared by the in-house controls: metrics, colours, fonts and icons.
// One place, so that a button on a command bar and a free button look alike.

#include <QColor>
#include <QFont>
#include <QImage>
#include <QString>
#include <cstdint>

namespace fw::theme {

// Metrics in pixels.
constexpr int TitleHeight = 64;
constexpr int TitleIcon = 32;
constexpr int CmdBarHeight = 48;
constexpr int ButtonWidth = 100;
constexpr int ButtonHeight = 28;
constexpr int ButtonIcon = 20;
constexpr int Gap = 8;
constexpr int Margin = 16;

// Fixed colours of the chrome.
QColor Base();      ///< body background
QColor Text();      ///< main text
QColor MutedText(); ///< second lines, hints
QColor BarBack();   ///< command bar band
QColor Hairline();  ///< rules and the bar's top line
QColor ButtonBorder();
QColor Accent(); ///< default buttons, focus rings, links

/// A host colour (0x00BBGGRR) as a QColor.
QColor FromHostColour(std::uint32_t bgr);
/// The scheme's colour from the host, or a built-in one where the host has none.
QColor SchemeColour(int scheme);
/// a moved by t (0..1) towards b.
QColor Mix(const QColor& a, const QColor& b, double t);

/// The system's dialog font, points added to its size.
QFont UiFont(double extraPoints = 0, bool bold = false);
/// A family that exists here: monospace names fall back to an installed
/// fixed-pitch family.
QString ResolveFamily(const QString& family);

/// A resource path through the host's picture service, scaled down to fit a
/// square of fit pixels; a null image if the host has no picture.
QImage LoadIcon(const QString& path, int fit);
/// Scales a picture down (never up) to fit a square of fit pixels.
QImage FitIcon(const QImage& image, int fit);

/// A caption as drawn with Qt::TextShowMnemonic: "<br>" becomes a line break.
QString DisplayCaption(const QString& caption);
/// The caption without accelerator marks and breaks, for tips and accessibility.
QString PlainCaption(const QString& caption);

} // namespace fw::theme
