#include "forms/testing/UserInput.h"

#include <QApplication>
#include <QCloseEvent>
#include <QTest>
#include <QWidget>

namespace fw::testing {

namespace {
QWidget* keyTarget(Form& form)
{
    QWidget* window = form.window();
    QWidget* focus = window->focusWidget();
    return focus ? focus : window;
}
} // namespace

void Click(Control& control)
{
    QWidget* widget = control.widget();
    if (!widget)
        return;
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, widget->rect().center());
}

void Focus(Control& control)
{
    if (QWidget* widget = control.widget()) {
        widget->window()->activateWindow();
        widget->setFocus(Qt::TabFocusReason);
        QApplication::processEvents();
    }
}

void PressKey(Form& form, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(keyTarget(form), key, modifiers);
}

void Type(Form& form, const QString& text)
{
    for (const QChar c : text) {
        if (form.IsUnloaded())
            return;
        if (c.unicode() < 128) { // a key of the keyboard: key code and character
            QTest::keyClick(keyTarget(form), char(c.unicode()));
            continue;
        }
        QTest::sendKeyEvent(QTest::Press, keyTarget(form), Qt::Key_unknown, QString(c),
                            Qt::NoModifier);
        if (!form.IsUnloaded())
            QTest::sendKeyEvent(QTest::Release, keyTarget(form), Qt::Key_unknown, QString(c),
                                Qt::NoModifier);
    }
}

void CloseWindow(Form& form)
{
    form.window()->close();
}

void ProcessEvents()
{
    QApplication::processEvents();
}

} // namespace fw::testing
