#include "controls/Theme.h"

#include "forms/Fonts.h"
#include "forms/Pictures.h"
#include "forms/Resume.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QFontDatabase>
#include <QRegularExpression>
#include <algorithm>
#include <array>

namespace fw::theme {

QColor Base()
{
    return QColor(0xff, 0xff, 0xff);
}
QColor Text()
{
    return QColor(0x1f, 0x23, 0x28);
}
QColor MutedText()
{
    return QColor(0x5b, 0x62, 0x70);
}
QColor BarBack()
{
    return QColor(0xf3, 0xf4, 0xf6);
}
QColor Hairline()
{
    return QColor(0xd8, 0xdc, 0xe2);
}
QColor ButtonBorder()
{
    return QColor(0xc3, 0xc9, 0xd2);
}
QColor Accent()
{
    return QColor(0x2f, 0x6f, 0xb8);
}

QColor FromHostColour(std::uint32_t bgr)
{
    return QColor(int(bgr & 0xff), int(bgr >> 8 & 0xff), int(bgr >> 16 & 0xff));
}

QColor SchemeColour(int scheme)
{
    // Used where a host cannot answer; 6 and 7 must stay apart from 0 even then.
    static const std::array<QColor, 10> builtIn = {
        QColor(0x2f, 0x6f, 0xb8), QColor(0x2e, 0x8b, 0x57), QColor(0x1f, 0x8a, 0x8a),
        QColor(0xd9, 0x9a, 0x1e), QColor(0x5a, 0x6b, 0x7d), QColor(0xe0, 0x6c, 0x2b),
        QColor(0xc6, 0x28, 0x28), QColor(0x6a, 0x3d, 0xc0), QColor(0x80, 0x80, 0x80),
        QColor(0xc2, 0x3b, 0x7a)};
    std::uint32_t host = 0;
    Resume([&] { host = GetCoreDevColors().Tools().GetSchemeColor(scheme); });
    // Black is what a host answers for a scheme it does not know; a band tinted
    // from it would be grey, so it counts as no answer.
    if (host != 0)
        return FromHostColour(host);
    return scheme >= 0 && scheme < int(builtIn.size()) ? builtIn[std::size_t(scheme)] : builtIn[0];
}

QColor Mix(const QColor& a, const QColor& b, double t)
{
    t = std::clamp(t, 0.0, 1.0);
    auto channel = [t](int x, int y) { return int(x + (y - x) * t + 0.5); };
    return QColor(channel(a.red(), b.red()), channel(a.green(), b.green()),
                  channel(a.blue(), b.blue()));
}

QFont UiFont(double extraPoints, bool bold)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() + extraPoints);
    font.setBold(bold);
    return font;
}

QString ResolveFamily(const QString& family)
{
    if (family.isEmpty() || QFontDatabase::hasFamily(family))
        return family;
    static const QStringList monospace = {"Lucida Console", "Courier New", "Courier",
                                          "Consolas",       "Fixedsys",    "Terminal"};
    if (monospace.contains(family, Qt::CaseInsensitive))
        return FixedPitchFamily();
    return family; // Qt's substitution picks something close
}

QImage FitIcon(const QImage& image, int fit)
{
    if (image.isNull() || (image.width() <= fit && image.height() <= fit))
        return image;
    return image.scaled(fit, fit, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

QImage LoadIcon(const QString& path, int fit)
{
    if (path.isEmpty())
        return {};
    QImage image;
    Resume([&] { image = ToImage(GetCoreDevPictures().LoadPicture(path.toStdString())); });
    return FitIcon(image, fit);
}

QString DisplayCaption(const QString& caption)
{
    static const QRegularExpression br(QStringLiteral("<br\\s*/?>"),
                                       QRegularExpression::CaseInsensitiveOption);
    QString text = caption;
    return text.replace(br, QStringLiteral("\n"));
}

QString PlainCaption(const QString& caption)
{
    QString out;
    const QString text = DisplayCaption(caption);
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'&' && i + 1 < text.size())
            ++i; // "&&" keeps one "&", "&x" keeps the x
        out += text[i] == u'\n' ? QChar(u' ') : text[i];
    }
    return out;
}

} // namespace fw::theme
