#include "controls/ctl_ReEvent.h"

#include "forms/Form.h"

#include <QMetaObject>
#include <QObject>

namespace fw {

ctl_ReEvent::ctl_ReEvent(Form& form, const QString& name)
    : Control(form, name, QStringLiteral("ctl_ReEvent"), nullptr), m_queue(new QObject)
{
}

ctl_ReEvent::~ctl_ReEvent() = default;

void ctl_ReEvent::Raise(const QString& name)
{
    QMetaObject::invokeMethod(
        m_queue.get(),
        [this, name] {
            // A form unloaded meanwhile has closed its books.
            if (!form().IsUnloaded())
                raise(Event, name);
        },
        Qt::QueuedConnection);
}

} // namespace fw
