#pragma once
// The numeric sister of the touch keyboard: a draggable pad of 15 keys for
// one number. It edits its line directly, and the line travels through the
// host's number conversion on the way in and out, so that the target only
// ever gets a number back. Losing activation confirms, like OK.

#include "touch/TouchPadForm.h"

namespace fw {

class frm_DialogNumericTouch : public TouchPadForm {
  public:
    frm_DialogNumericTouch();
    ~frm_DialogNumericTouch() override;

  protected:
    void Form_Load() override;
    void Form_Deactivate() override { confirm(); }
    void onKeyClick(int index, bool onLabel) override;

  private:
    void hPressKey(int index);
    void confirm();
    /// Caret after the last character.
    void caretToEnd();

    /// Set at load: the next digit replaces the shown value.
    bool firstKey = false;
};

} // namespace fw
