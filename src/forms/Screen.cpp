#include "forms/Screen.h"

#include <QApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace fw {

namespace {
int g_pointer = Screen::Default;

QSize primarySize()
{
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        return screen->size();
    return {1024, 768};
}
} // namespace

int Screen::Width()
{
    return ToTwips(primarySize().width());
}
int Screen::Height()
{
    return ToTwips(primarySize().height());
}
int Screen::AvailableHeight()
{
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        return ToTwips(screen->availableGeometry().height());
    return ToTwips(768);
}
int Screen::MousePointer()
{
    return g_pointer;
}

void Screen::SetMousePointer(int shape)
{
    if (shape == g_pointer)
        return;
    if (g_pointer != Default)
        QApplication::restoreOverrideCursor();
    g_pointer = shape;
    if (shape == Busy)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else if (shape == Custom)
        QApplication::setOverrideCursor(Qt::PointingHandCursor);
    else
        g_pointer = Default;
}

} // namespace fw
