#include "cli/ScriptKeys.h"

#include "forms/Form.h"

#include <QApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QPointer>
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
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &KeyTyper::step);
}

void KeyTyper::onModalShown(Form* form)
{
    if (m_form || m_keys.empty())
        return; // the first dialog only: forms it opens itself get keys through step
    if (!m_formName.isEmpty() && form->Name() != m_formName)
        return;
    TypeInto(*form);
}

void KeyTyper::TypeInto(Form& form)
{
    if (m_form || m_keys.empty())
        return;
    m_form = &form;
    m_formWindow = form.window();
    // Queued: a modal form is announced before its event loop runs.
    m_timer.start(0);
}

// Where the next key goes: a question the dialog opened while the script runs
// (a "Really?") takes the keys a person would type into it until it closes.
QWidget* KeyTyper::keyWindow() const
{
    QWidget* modal = QApplication::activeModalWidget();
    return modal && modal->isVisible() ? modal : m_formWindow.data();
}

void KeyTyper::step()
{
    if (!m_formWindow || m_form->IsUnloaded() || m_next >= m_keys.size())
        return;
    QWidget* window = keyWindow();
    const Form* owner = Form::fromWindow(window);
    // Polled rather than hooked: a form's paint is its own business. A window
    // whose key has not come back yet waits for the question that key opened.
    if ((owner && !owner->HasPainted()) || m_sendingTo.contains(window)) {
        m_timer.start(10);
        return;
    }
    const QKeyCombination combination = m_keys[m_next++];
    const QPointer<QWidget> target = window->focusWidget() ? window->focusWidget() : window;
    const QString text = textOf(combination);
    // A key that opens a question comes back only when the question closes:
    // meanwhile the timer goes on polling for it.
    m_sendingTo.append(window);
    m_timer.start(10);
    QKeyEvent press(QEvent::KeyPress, combination.key(), combination.keyboardModifiers(), text);
    QApplication::sendEvent(target, &press);
    if (target && m_formWindow && m_form->IsLoaded()) {
        QKeyEvent release(QEvent::KeyRelease, combination.key(), combination.keyboardModifiers(),
                          text);
        QApplication::sendEvent(target, &release);
    }
    m_sendingTo.removeLast();
    // Let the key's consequences (focus moves, nested forms) happen before the next.
    m_timer.start(0);
}

} // namespace fw::cli
