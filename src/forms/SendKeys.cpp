#include "forms/SendKeys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QWidget>
#include <array>

namespace fw {

namespace {

/// More strokes than anyone types on purpose: the bound of one string.
constexpr int kMaxStrokes = 100000;

// One key of the German layout: the characters it types plain, with Shift
// and with AltGr (Ctrl+Alt). The dead keys (^ and the accents) type their
// character at once, as they do when a space follows.
struct LayoutKey {
    QChar plain;
    QChar shifted;
    QChar altGr;
};

const std::vector<LayoutKey>& germanLayout()
{
    static const std::vector<LayoutKey> keys = [] {
        std::vector<LayoutKey> table = {
            {u'^', u'\u00b0', {}},
            {u'\u00b4', u'`', {}},
            {u'1', u'!', {}},
            {u'2', u'"', u'\u00b2'},
            {u'3', u'\u00a7', u'\u00b3'},
            {u'4', u'$', {}},
            {u'5', u'%', {}},
            {u'6', u'&', {}},
            {u'7', u'/', u'{'},
            {u'8', u'(', u'['},
            {u'9', u')', u']'},
            {u'0', u'=', u'}'},
            {u'\u00df', u'?', u'\\'},
            {u'q', u'Q', u'@'},
            {u'e', u'E', u'\u20ac'},
            {u'\u00fc', u'\u00dc', {}},
            {u'+', u'*', u'~'},
            {u'\u00f6', u'\u00d6', {}},
            {u'\u00e4', u'\u00c4', {}},
            {u'#', u'\'', {}},
            {u'<', u'>', u'|'},
            {u'm', u'M', u'\u00b5'},
            {u',', u';', {}},
            {u'.', u':', {}},
            {u'-', u'_', {}},
            {u' ', u' ', {}},
        };
        for (char16_t c = u'a'; c <= u'z'; ++c)
            if (c != u'q' && c != u'e' && c != u'm')
                table.push_back({QChar(c), QChar(c).toUpper(), {}});
        return table;
    }();
    return keys;
}

// The key and the modifiers that type c, as a real keyboard needs them.
bool keyFor(QChar c, QChar& base, Qt::KeyboardModifiers& mods)
{
    for (const LayoutKey& key : germanLayout()) {
        if (key.plain == c) {
            base = key.plain;
            mods = {};
            return true;
        }
        if (key.shifted == c) {
            base = key.plain;
            mods = Qt::ShiftModifier;
            return true;
        }
        if (!key.altGr.isNull() && key.altGr == c) {
            base = key.plain;
            mods = Qt::ControlModifier | Qt::AltModifier;
            return true;
        }
    }
    return false;
}

// What the key of base types with mods held: Shift the upper row, Ctrl+Alt
// the third character, Ctrl or Alt alone nothing.
QString typed(QChar base, Qt::KeyboardModifiers mods)
{
    const bool ctrl = mods & Qt::ControlModifier;
    const bool alt = mods & Qt::AltModifier;
    const bool shift = mods & Qt::ShiftModifier;
    for (const LayoutKey& key : germanLayout()) {
        if (key.plain != base)
            continue;
        if (ctrl && alt)
            return shift || key.altGr.isNull() ? QString() : QString(key.altGr);
        if (ctrl || alt)
            return {};
        return QString(shift ? key.shifted : key.plain);
    }
    return {};
}

Qt::Key qtKeyOf(QChar base)
{
    return static_cast<Qt::Key>(base.toUpper().unicode());
}

struct NamedKey {
    const char* name;
    Qt::Key key;
    const char* text;
};

constexpr std::array kNamedKeys{
    NamedKey{"bs", Qt::Key_Backspace, "\b"},    NamedKey{"backspace", Qt::Key_Backspace, "\b"},
    NamedKey{"bksp", Qt::Key_Backspace, "\b"},  NamedKey{"tab", Qt::Key_Tab, "\t"},
    NamedKey{"enter", Qt::Key_Return, "\r"},    NamedKey{"esc", Qt::Key_Escape, "\x1b"},
    NamedKey{"escape", Qt::Key_Escape, "\x1b"}, NamedKey{"left", Qt::Key_Left, ""},
    NamedKey{"right", Qt::Key_Right, ""},       NamedKey{"up", Qt::Key_Up, ""},
    NamedKey{"down", Qt::Key_Down, ""},         NamedKey{"home", Qt::Key_Home, ""},
    NamedKey{"end", Qt::Key_End, ""},           NamedKey{"pgup", Qt::Key_PageUp, ""},
    NamedKey{"pgdn", Qt::Key_PageDown, ""},     NamedKey{"del", Qt::Key_Delete, "\x7f"},
    NamedKey{"delete", Qt::Key_Delete, "\x7f"}, NamedKey{"ins", Qt::Key_Insert, ""},
    NamedKey{"insert", Qt::Key_Insert, ""},
};

class Parser {
  public:
    explicit Parser(const QString& keys) : m_keys(keys) {}

    bool parse(std::vector<KeyStroke>& out)
    {
        return sequence(out, false) && m_pos == m_keys.size();
    }

  private:
    // Strokes up to the end, or up to ")" inside a group.
    bool sequence(std::vector<KeyStroke>& out, bool inGroup)
    {
        while (m_pos < m_keys.size()) {
            if (inGroup && m_keys[m_pos] == u')')
                return true;
            if (!item(out, {}))
                return false;
        }
        return !inGroup;
    }

    // One key or group, with the modifiers in front of it.
    bool item(std::vector<KeyStroke>& out, Qt::KeyboardModifiers held)
    {
        if (m_pos >= m_keys.size())
            return false; // a modifier with nothing to hold it for
        const QChar c = m_keys[m_pos++];
        if (c == u'+')
            return item(out, held | Qt::ShiftModifier);
        if (c == u'^')
            return item(out, held | Qt::ControlModifier);
        if (c == u'%')
            return item(out, held | Qt::AltModifier);
        if (c == u'~')
            return named(out, QStringLiteral("enter"), 1, held);
        if (c == u'(') {
            std::vector<KeyStroke> group;
            if (!sequence(group, true))
                return false;
            ++m_pos; // the ")"
            for (KeyStroke& stroke : group)
                out.push_back(restroke(stroke, held));
            return true;
        }
        if (c == u')' || c == u'}' || c == u'[' || c == u']')
            return false;
        if (c == u'{')
            return braced(out, held);
        return character(out, c, 1, held);
    }

    bool braced(std::vector<KeyStroke>& out, Qt::KeyboardModifiers held)
    {
        // "{}}" and "{{}" quote the braces themselves.
        int close = m_keys.indexOf(u'}', m_pos + 1);
        if (close < 0)
            return false;
        QString inside = m_keys.mid(m_pos, close - m_pos);
        m_pos = close + 1;
        int count = 1;
        const int space = inside.lastIndexOf(u' ');
        if (space > 0) {
            bool ok = false;
            count = inside.mid(space + 1).toInt(&ok);
            // A repeat count is any number the caller writes; without a bound
            // "{a 999999999}" fills memory stroke by stroke.
            if (!ok || count < 0 || count > kMaxStrokes - static_cast<int>(out.size()))
                return false;
            inside = inside.left(space);
        }
        if (inside.size() == 1)
            return character(out, inside[0], count, held);
        return named(out, inside.toLower(), count, held);
    }

    bool named(std::vector<KeyStroke>& out, const QString& name, int count,
               Qt::KeyboardModifiers held)
    {
        for (const NamedKey& key : kNamedKeys) {
            if (name != QLatin1String(key.name))
                continue;
            const bool plain = !(held & (Qt::ControlModifier | Qt::AltModifier));
            for (int i = 0; i < count; ++i)
                out.push_back({key.key, held, plain ? QString::fromLatin1(key.text) : QString()});
            return true;
        }
        return false;
    }

    bool character(std::vector<KeyStroke>& out, QChar c, int count, Qt::KeyboardModifiers held)
    {
        QChar base;
        Qt::KeyboardModifiers needed;
        if (!keyFor(c, base, needed))
            return false;
        const Qt::KeyboardModifiers mods = held | needed;
        for (int i = 0; i < count; ++i)
            out.push_back({qtKeyOf(base), mods, typed(base, mods)});
        return true;
    }

    // A stroke of a group under the group's modifiers.
    static KeyStroke restroke(KeyStroke stroke, Qt::KeyboardModifiers held)
    {
        stroke.modifiers |= held;
        if (!stroke.text.isEmpty() && stroke.text[0].unicode() >= 32) {
            QChar base;
            Qt::KeyboardModifiers unused;
            if (keyFor(stroke.text[0], base, unused))
                stroke.text = typed(base, stroke.modifiers);
        } else if (held & (Qt::ControlModifier | Qt::AltModifier)) {
            stroke.text.clear();
        }
        return stroke;
    }

    const QString& m_keys;
    int m_pos = 0;
};

} // namespace

std::optional<std::vector<KeyStroke>> ParseSendKeys(const QString& keys)
{
    std::vector<KeyStroke> strokes;
    Parser parser(keys);
    if (!parser.parse(strokes))
        return std::nullopt;
    return strokes;
}

bool SendKeys(const QString& keys, QWidget* target)
{
    const auto strokes = ParseSendKeys(keys);
    if (!strokes)
        return false;
    if (!target)
        target = QApplication::focusWidget();
    if (!target)
        return false;
    for (const KeyStroke& stroke : *strokes) {
        QCoreApplication::postEvent(
            target, new QKeyEvent(QEvent::KeyPress, stroke.key, stroke.modifiers, stroke.text));
        QCoreApplication::postEvent(
            target, new QKeyEvent(QEvent::KeyRelease, stroke.key, stroke.modifiers, stroke.text));
    }
    return true;
}

} // namespace fw
