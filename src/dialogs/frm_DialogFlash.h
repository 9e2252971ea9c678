#pragma once
// What a host gets for "frm_DialogCritical": a veil over the screen that
// fades from opaque to faint in 21 steps of 10 ms, then opens the critical
// choice and brings its answer back. Same public variables as the choice.

#include "dialogs/CriticalChoice.h"
#include "forms/Form.h"

#include <memory>

namespace fw {

class Timer;
class frm_DialogCritical;

class frm_DialogFlash : public Form {
  public:
    frm_DialogFlash();
    ~frm_DialogFlash() override;

    CriticalChoice Publics;

    QVariant GetPublic(const QString& name) const override;
    bool SetPublic(const QString& name, const QVariant& value) override;

    /// The choice this veil opens, with the host's variables handed on.
    std::unique_ptr<frm_DialogCritical> MakeChoice() const;
    /// The veil's opacity now, 255 opaque.
    int Alpha() const { return m_alpha; }

    Timer* tmr_Animation;

  protected:
    void Form_Load() override;

  private:
    void tmr_Animation_Tick();
    void applyAlpha();

    int m_alpha = 255;
};

} // namespace fw
