#include "cli/ScriptKeys.h"

#include "forms/Form.h"

#include <QApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QTimer>
#include <QWidget>

namespace fw::cli {

namespace {

// The character a key produces, as a keyboard would send it with the key code;
// the forms' KeyPress handlers read it.
QString textOf(QKeyCombination combination)
{
    const Qt::Key key = combination.key();
    const Qt::KeyboardModifiers mods = combination.keyboardModifiers();
    if (mods & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return {};
    if (key >= Qt::Key_Space && key <= Qt::Key_AsciiTilde) {
        const QChar c(static_cast<char16_t>(key));
        return mods & Qt::ShiftModifier ? QString(c) : QString(c.toLower());
    }
    switch (key) {
    case Qt::Key_Backspace:
        return QStringLiteral("\b");
    case Qt::Key_Tab:
        return QStringLiteral("\t");
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return QStringLiteral("\r");
    case Qt::Key_Escape:
        return QString(QChar(27));
    default:
        return {};
    }
}

} // namespace

KeyScript ParseKeyScript(const QString& text)
{
    KeyScript script;
    for (const QString& token : text.split(u' ', Qt::SkipEmptyParts)) {
        const QKeySequence sequence = QKeySequence::fromString(token, QKeySequence::PortableText);
        if (sequence.count() != 1 || sequence[0].key() == Qt::Key_unknown) {
            script.error = QStringLiteral("FORMWERK_SCRIPT_KEYS: '%1' is not a key").arg(token);
            script.keys.clear();
            return script;
        }
        script.keys.push_back(sequence[0]);
    }
    return script;
}

KeyTyper::KeyTyper(std::vector<QKeyCombination> keys, QString formName)
    : m_keys(std::move(keys)), m_formName(std::move(formName))
{
    connect(&FormTracker::instance(), &FormTracker::modalShown, this, &KeyTyper::onModalShown);
}

void KeyTyper::onModalShown(Form* form)
{
    if (m_form || m_keys.empty())
        return; // the first dialog only: forms it opens itself are the user's
    if (!m_formName.isEmpty() && form->Name() != m_formName)
        return;
    TypeInto(*form);
}

void KeyTyper::TypeInto(Form& form)
{
    if (m_form || m_keys.empty())
        return;
    m_form = &form;
    // Queued: a modal form is announced before its event loop runs.
    QTimer::singleShot(0, this, &KeyTyper::step);
}

void KeyTyper::step()
{
    if (!m_form || m_form->IsUnloaded() || m_next >= m_keys.size())
        return;
    if (!m_form->HasPainted()) {
        // Polled rather than hooked: the form's paint is its own business.
        QTimer::singleShot(10, this, &KeyTyper::step);
        return;
    }
    const QKeyCombination combination = m_keys[m_next++];
    QWidget* window = m_form->window();
    QWidget* target = window->focusWidget() ? window->focusWidget() : window;
    const QString text = textOf(combination);
    QKeyEvent press(QEvent::KeyPress, combination.key(), combination.keyboardModifiers(), text);
    QApplication::sendEvent(target, &press);
    if (m_form->IsLoaded()) {
        QKeyEvent release(QEvent::KeyRelease, combination.key(), combination.keyboardModifiers(),
                          text);
        QApplication::sendEvent(target, &release);
    }
    // Let the key's consequences (focus moves, nested forms) happen before the next.
    QTimer::singleShot(0, this, &KeyTyper::step);
}

} // namespace fw::cli
