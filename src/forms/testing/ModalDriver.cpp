#include "forms/testing/ModalDriver.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

namespace fw::testing {

ModalDriver::ModalDriver()
{
    connect(&FormTracker::instance(), &FormTracker::modalShown, this, &ModalDriver::onModalShown);
}

ModalDriver::~ModalDriver() = default;

void ModalDriver::OnNextModal(Action action) { m_actions.push_back(std::move(action)); }

void ModalDriver::onModalShown(Form* form)
{
    m_seen.push_back(form);
    if (m_actions.empty())
        return;
    Action action = std::move(m_actions.front());
    m_actions.pop_front();
    // Runs inside the form's own event loop, once that loop has started.
    QPointer<QWidget> window = form->window();
    QTimer::singleShot(0, this, [form, window, action = std::move(action)] {
        if (!window || form->IsUnloaded())
            return;
        if (!form->HasPainted())
            window->repaint();
        action(*form);
    });
}

} // namespace fw::testing
