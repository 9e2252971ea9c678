#pragma once
// A control without a window that raises an event later, once the running
// handler has returned: a handler that must not open a window or call the host
// from inside another control's event posts a name here and acts on it from
// the form's own event loop.

#include "forms/Control.h"

#include <functional>
#include <memory>

class QObject;

namespace fw {

class ctl_ReEvent : public Control {
  public:
    ctl_ReEvent(Form& form, const QString& name);
    ~ctl_ReEvent() override;

    /// Queues Event with the name on the form's thread; several names come
    /// back in the order raised. Nothing arrives once the control is gone.
    void Raise(const QString& name);

    std::function<void(const QString& name)> Event;

  private:
    // Queued calls bound to it are dropped with it.
    std::unique_ptr<QObject> m_queue;
};

} // namespace fw
