#pragma once
// Changes a password: checks the old one against what the host hands in,
// asks for the new one twice and returns it. It stores nothing.

#include "dialogs/PromptForm.h"

namespace fw {

class ctl_CmdBar;
class ctl_Label;
class ctl_Pannel;
class ctl_Seperator;
class Label;
class PictureBox;
class TextBox;

class frm_DialogPassword : public PromptForm {
  public:
    frm_DialogPassword();
    ~frm_DialogPassword() override;

    ctl_Label* lab_Description;
    ctl_Seperator* ctl_Seperator1;
    Label* Label1;
    TextBox* txt_Old;
    Label* Label2;
    TextBox* txt_New;
    Label* Label3;
    TextBox* txt_Retype;
    ctl_Seperator* ctl_Seperator2;
    ctl_CmdBar* ctl_Sidebar;

  protected:
    void Form_Load() override;
    void acceptAnswer() override;

  private:
    void arrange();
    void txt_New_Change();

    bool m_inNewTouch = false;
};

} // namespace fw
