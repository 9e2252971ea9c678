#pragma once
// The progress window: a text, a line of details, a percent bar and an abort
// button. It lives beside the caller's work: the caller shows it without
// waiting and drives it through the PROCESS_ methods.

#include "dialogs/PromptForm.h"

#include <cstdint>
#include <memory>

namespace fw {

class ctl_CmdBar;
class ctl_Label;
class ctl_Pannel;
class ctl_Percent;
class ctl_Seperator;
class PictureBox;

/// What the caller hands the window so that the abort button reaches its
/// work: the window sets the cancel property true, the work looks at it.
class AbortTarget {
  public:
    virtual ~AbortTarget() = default;
    virtual void SetCancel(bool cancel) = 0;
};

/// The plainest target: a flag the caller's loop reads.
class AbortFlag : public AbortTarget {
  public:
    void SetCancel(bool cancel) override { Cancel = cancel; }
    bool Cancel = false;
};

class frm_DialogProcess : public PromptForm {
  public:
    frm_DialogProcess();
    ~frm_DialogProcess() override;

    /// May stay empty; the window then only notes the abort in Result.
    std::shared_ptr<AbortTarget> Abort;

    void PROCESS_SET_RANGE(std::int32_t lower, std::int32_t upper);
    /// Sets the value, then lets pending events run once if the bar asks for
    /// it, so that a caller's loop keeps the window alive and abortable.
    void PROCESS_SET_CUR(std::int32_t value);
    void PROCESS_END();
    /// True once the abort button was pressed (Result 2), and from then on.
    bool PROCESS_ABORT();
    /// Replaces the text above the bar while the work goes on (the opening
    /// text comes from Subtitle); the window fits around its new height.
    void SetDescription(const QString& text);

    // Controls, public so that hosts and tests reach them by name as users see them.
    ctl_Label* lab_Description;
    ctl_Label* lab_Details;
    ctl_Percent* bar;
    ctl_Seperator* ctl_Seperator1;
    ctl_CmdBar* bar_Buttons;

  protected:
    void Form_Load() override;

  private:
    void arrange();
    void bar_Buttons_Key(const QString& key);
};

} // namespace fw
