#include "touch/KeyboardLayout.h"

namespace fw {

namespace {

KeyDesign key(int index, int left, int top, int width, int height, const QString& caption,
              const char* tag, bool wingdings, double points, const QString& faces = {})
{
    KeyDesign k{index,     left,   top,   width, height, caption,    QString::fromLatin1(tag),
                wingdings, points, faces, 60,    180,    width - 105};
    const QString t = k.tag;
    if (t == QLatin1String("SHIFT") || index == 48)
        k.labelTop = 120;
    if (t == QLatin1String("LEFT") || t == QLatin1String("DOWN") || t == QLatin1String("RIGHT"))
        k.labelTop = 240;
    if (t == QLatin1String("BACKSPACE"))
        k.labelLeft = 240;
    if (t == QLatin1String("ENTER"))
        k.labelLeft = 420;
    if (k.labelLeft != 60)
        k.labelWidth = width - k.labelLeft - 45;
    if (caption == QLatin1String("www."))
        k.labelWidth = 1515;
    return k;
}

QString ch(char16_t c)
{
    return QString(QChar(c));
}

} // namespace

const std::vector<KeyDesign>& KeyboardTable()
{
    static const std::vector<KeyDesign> table = [] {
        constexpr double T = 14.25, W = 21.75;
        std::vector<KeyDesign> keys;
        auto plain = [&](int index, int left, int top, const QString& faces,
                         const QString& caption = {}) {
            keys.push_back(key(index, left, top, 720, 720,
                               caption.isEmpty() ? faces.left(1) : caption, "", false, T, faces));
        };
        // Row 1
        keys.push_back(key(0, 180, 1020, 1020, 720, QStringLiteral("ESC"), "ESC", false, T));
        const QString row1[] = {
            QStringLiteral("1!"),  QStringLiteral("2\"\u00b2"), QStringLiteral("3\u00a7\u00b3"),
            QStringLiteral("4$"),  QStringLiteral("5%"),        QStringLiteral("6&"),
            QStringLiteral("7/{"), QStringLiteral("8(["),       QStringLiteral("9)]"),
            QStringLiteral("0=}"), QStringLiteral("\u00df?\\")};
        for (int i = 0; i < 11; ++i)
            plain(1 + i, 1200 + 720 * i, 1020, row1[i]);
        keys.push_back(key(12, 9120, 1020, 1860, 720, ch(0xE7), "BACKSPACE", true, T));
        // Row 2
        keys.push_back(key(13, 180, 1740, 1440, 720, ch(0xDF) + ch(0xE0), "TAB", true, T));
        const QString row2[] = {
            QStringLiteral("qQ@"), QStringLiteral("wW"),          QStringLiteral("eE\u20ac"),
            QStringLiteral("rR"),  QStringLiteral("tT"),          QStringLiteral("zZ"),
            QStringLiteral("uU"),  QStringLiteral("iI"),          QStringLiteral("oO"),
            QStringLiteral("pP"),  QStringLiteral("\u00fc\u00dc")};
        for (int i = 0; i < 11; ++i)
            plain(14 + i, 1620 + 720 * i, 1740, row2[i]);
        plain(49, 9540, 1740, QStringLiteral("+*~"));
        keys.push_back(key(59, 10260, 1740, 720, 720, QStringLiteral("C"), "CLEAR", false, T));
        // Row 3
        keys.push_back(key(25, 180, 2460, 1680, 720, QStringLiteral("www."), "", false, T,
                           QStringLiteral("www.")));
        const QString row3[] = {
            QStringLiteral("aA"),           QStringLiteral("sS"),          QStringLiteral("dD"),
            QStringLiteral("fF"),           QStringLiteral("gG"),          QStringLiteral("hH"),
            QStringLiteral("jJ"),           QStringLiteral("kK"),          QStringLiteral("lL"),
            QStringLiteral("\u00f6\u00d6"), QStringLiteral("\u00e4\u00c4")};
        for (int i = 0; i < 11; ++i)
            plain(26 + i, 1860 + 720 * i, 2460, row3[i]);
        keys.push_back(key(58, 9780, 2460, 1200, 1440, ch(0xFC), "ENTER", true, W));
        // Row 4
        keys.push_back(key(37, 180, 3180, 1440, 720, ch(0xF1), "SHIFT", true, W));
        plain(57, 1620, 3180, {}, QStringLiteral("/"));
        const QString row4[] = {QStringLiteral("yY"),       QStringLiteral("xX"),
                                QStringLiteral("cC"),       QStringLiteral("vV"),
                                QStringLiteral("bB"),       QStringLiteral("nN"),
                                QStringLiteral("mM\u00b5"), QStringLiteral(",;"),
                                QStringLiteral(".:"),       QStringLiteral("-_")};
        for (int i = 0; i < 10; ++i)
            plain(38 + i, 2340 + 720 * i, 3180, row4[i]);
        keys.push_back(key(54, 9540, 3180, 720, 720, ch(0xE1), "UP", true, T));
        // Row 5
        keys.push_back(key(50, 180, 3900, 1440, 720, QStringLiteral("Strg"), "CTRL", false, T));
        keys.push_back(key(51, 1620, 3900, 1440, 720, QStringLiteral("Alt"), "ALT", false, T));
        keys.push_back(key(48, 3060, 3900, 4320, 720, QStringLiteral(" "), "", true, W));
        keys.push_back(key(52, 7380, 3900, 1440, 720, QStringLiteral("Sym"), "SYM", false, T));
        keys.push_back(key(53, 8820, 3900, 720, 720, ch(0xDF), "LEFT", true, T));
        keys.push_back(key(55, 9540, 3900, 720, 720, ch(0xE2), "DOWN", true, T));
        keys.push_back(key(56, 10260, 3900, 720, 720, ch(0xE0), "RIGHT", true, T));
        return keys;
    }();
    return table;
}

const std::vector<KeyDesign>& NumericPadTable()
{
    static const std::vector<KeyDesign> table = [] {
        std::vector<KeyDesign> keys;
        auto pad = [&](int index, int left, int top, const QString& caption, const char* tag = "",
                       bool wingdings = false) {
            keys.push_back(KeyDesign{index,
                                     left,
                                     top,
                                     720,
                                     720,
                                     caption,
                                     QString::fromLatin1(tag),
                                     wingdings,
                                     14.25,
                                     {},
                                     60,
                                     180,
                                     615});
            return &keys.back();
        };
        auto digit = [&](int n, int left, int top) { pad(n, left, top, QString::number(n)); };
        digit(7, 180, 1740);
        digit(8, 900, 1740);
        digit(9, 1620, 1740);
        pad(12, 2460, 1740, ch(0xE7), "BACKSPACE", true)->labelWidth = 555;
        digit(4, 180, 2460);
        digit(5, 900, 2460);
        digit(6, 1620, 2460);
        pad(13, 2460, 2460, QStringLiteral("C"), "CLEAR");
        digit(1, 180, 3180);
        digit(2, 900, 3180);
        digit(3, 1620, 3180);
        KeyDesign* ok = pad(11, 2460, 3180, ch(0xFC), "OK", true);
        ok->height = 1440;
        ok->points = 21.75;
        ok->labelTop = 540;
        pad(10, 180, 3900, QStringLiteral("0"));
        pad(45, 900, 3900, QStringLiteral(","));
        pad(0, 1620, 3900, QStringLiteral("+/-"), "SWAP");
        return keys;
    }();
    return table;
}

QString hKeys(const QString& faces, const ModifierStates& states)
{
    const QString first = faces.mid(0, 1);
    const QString second = faces.mid(1, 1);
    const QString third = faces.mid(2, 1);
    if (states.shift != 0)
        return second;
    if ((states.ctrl & states.alt) != 0 || states.sym != 0)
        return third;
    return first;
}

int hNextState(int state)
{
    switch (state) {
    case 0:
        return 1;
    case 1:
        return 2;
    default:
        return 0;
    }
}

QString WingdingsAsSymbols(const QString& caption)
{
    QString shown;
    for (QChar c : caption) {
        switch (c.unicode()) {
        case 0xDF:
            shown += QChar(0x2190);
            break; // left arrow
        case 0xE0:
            shown += QChar(0x2192);
            break; // right arrow
        case 0xE1:
            shown += QChar(0x2191);
            break; // up arrow
        case 0xE2:
            shown += QChar(0x2193);
            break; // down arrow
        case 0xE7:
            shown += QChar(0x2B05);
            break; // thick left arrow
        case 0xE8:
            shown += QChar(0x27A1);
            break; // thick right arrow
        case 0xE9:
            shown += QChar(0x2B06);
            break; // thick up arrow
        case 0xEA:
            shown += QChar(0x2B07);
            break; // thick down arrow
        case 0xF1:
            shown += QChar(0x21E7);
            break; // upward hollow arrow
        case 0xFC:
            shown += QChar(0x2714);
            break; // tick
        default:
            shown += c;
        }
    }
    return shown;
}

} // namespace fw
