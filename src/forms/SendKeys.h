#pragma once
// Keystrokes in SendKeys notation ("+a", "^%q", "{bs}", "{left 3}", "~"),
// turned into key events as a German keyboard would produce them: the
// character of a stroke is decided by the layout from its key and modifiers,
// not by the text of the notation.

#include <QString>
#include <Qt>
#include <optional>
#include <vector>

class QWidget;

namespace fw {

/// One key pressed and released: the key, the modifiers held, and the
/// character the layout produces for them (empty for none).
struct KeyStroke {
    Qt::Key key = Qt::Key_unknown;
    Qt::KeyboardModifiers modifiers;
    QString text;
    bool operator==(const KeyStroke&) const = default;
};

/// The strokes of a keystroke string; nothing if the string is malformed,
/// names a character the layout cannot type, or repeats keys to more than
/// 100,000 strokes.
std::optional<std::vector<KeyStroke>> ParseSendKeys(const QString& keys);

/// Posts the strokes of keys to target (the application's focus widget when
/// null) and returns at once; the events run through the application's normal
/// delivery. A string that cannot be typed is dropped: false, nothing sent.
bool SendKeys(const QString& keys, QWidget* target = nullptr);

} // namespace fw
