#include "forms/testing/ModalDriver.h"

#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWidget>

namespace fw::testing {

ModalDriver::ModalDriver()
{
    connect(&FormTracker::instance(), &FormTracker::modalShown, this, &ModalDriver::onModalShown);
}

ModalDriver::~ModalDriver() = default;

void ModalDriver::OnNextModal(Action action)
{
    m_actions.push_back(std::move(action));
}

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
        // The window paints once it is exposed; wait for that rather than forcing it.
        if (!QTest::qWaitFor([&] { return !window || form->HasPainted(); }, 2000) && window)
            window->grab();
        if (window && !form->IsUnloaded())
            action(*form);
    });
}

} // namespace fw::testing
