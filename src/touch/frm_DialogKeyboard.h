#pragma once
// A borderless, draggable on-screen keyboard shown modally for one control:
// it edits a copy of the control's text in its own line and writes it back
// on ENTER.

#include "forms/Form.h"

namespace fw {

class frm_DialogKeyboard : public Form {
  public:
    frm_DialogKeyboard();
    ~frm_DialogKeyboard() override;

    /// The control being edited; may be null.
    void SetTarget(Control* target) { m_target = target; }
    /// The text over the input line.
    void SetDescription(const QString& text) { m_description = text; }
    /// False until the input was confirmed.
    bool Confirmed() const { return m_confirmed; }

  private:
    Control* m_target = nullptr;
    QString m_description;
    bool m_confirmed = false;
};

} // namespace fw
