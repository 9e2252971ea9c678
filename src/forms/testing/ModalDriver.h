#pragma once
// Acts on modal forms as they are shown: a test queues actions, and each runs
// inside the next modal form's event loop, after that form's first paint.
// Nested forms that the library opens by itself are reached the same way.

#include "forms/Form.h"

#include <QObject>
#include <deque>
#include <functional>

namespace fw::testing {

class ModalDriver : public QObject {
    Q_OBJECT
  public:
    using Action = std::function<void(Form&)>;

    ModalDriver();
    ~ModalDriver() override;

    /// Queues an action for the next modal form that shows.
    void OnNextModal(Action action);
    /// Actions still waiting for a form.
    int Pending() const { return static_cast<int>(m_actions.size()); }
    /// Forms that were shown modally while this driver listened, in order.
    const std::vector<Form*>& Seen() const { return m_seen; }

  private:
    void onModalShown(Form* form);
    std::deque<Action> m_actions;
    std::vector<Form*> m_seen;
};

} // namespace fw::testing
