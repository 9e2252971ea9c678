#include "controls/EdgeDock.h"

#include <QEvent>
#include <QWidget>

namespace fw {

EdgeDock::EdgeDock(QWidget* widget, Edge edge) : QObject(widget), m_widget(widget), m_edge(edge)
{
    widget->installEventFilter(this);
    if (QWidget* parent = widget->parentWidget())
        parent->installEventFilter(this);
    dock();
}

void EdgeDock::dock()
{
    QWidget* parent = m_widget->parentWidget();
    if (!parent || m_docking)
        return;
    m_docking = true; // our own move and resize come back through the filter
    const int height = m_widget->height();
    const int top = m_edge == Top ? 0 : parent->height() - height;
    m_widget->setGeometry(0, top, parent->width(), height);
    m_docking = false;
}

bool EdgeDock::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (watched == m_widget && type == QEvent::ParentChange) {
        if (QWidget* parent = m_widget->parentWidget())
            parent->installEventFilter(this);
        dock();
    } else if (type == QEvent::Resize || (watched == m_widget && type == QEvent::Move)) {
        if (watched == m_widget || watched == m_widget->parentWidget())
            dock();
    }
    return false;
}

} // namespace fw
