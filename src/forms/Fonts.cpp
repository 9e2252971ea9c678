#include "forms/Fonts.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QStringList>

namespace fw {

namespace {

// What the font matcher really draws with: the platform's fixed font is
// often only the alias "monospace", which fontconfig may map to a family that
// is not installed and Qt then to a proportional one.
bool drawsFixedPitch(const QString& family)
{
    return !family.isEmpty() && QFontInfo(QFont(family)).fixedPitch();
}

QString findFixedPitchFamily()
{
    const QString desktop = QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
    if (QFontDatabase::hasFamily(desktop) && drawsFixedPitch(desktop))
        return desktop;
    static const QStringList common = {"DejaVu Sans Mono", "Liberation Mono", "Noto Mono",
                                       "Noto Sans Mono",   "Ubuntu Mono",     "Hack",
                                       "Nimbus Mono PS",   "FreeMono"};
    for (const QString& family : common)
        if (QFontDatabase::hasFamily(family) && drawsFixedPitch(family))
            return family;
    for (const QString& family : QFontDatabase::families())
        if (QFontDatabase::isFixedPitch(family) && drawsFixedPitch(family))
            return family;
    return desktop; // nothing fixed is installed: the best that can be asked for
}

} // namespace

QString FixedPitchFamily()
{
    // Fonts are not installed while a dialog runs; the search reads every family.
    static const QString family = findFixedPitchFamily();
    return family;
}

} // namespace fw
