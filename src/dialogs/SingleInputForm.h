#pragma once
// The one-text input forms: a prompt, a box for the answer, a button that
// brings the default back and the bar with OK, Abbruch and help. The one-line
// and the multi-line form differ only in the box and in that the one-line box
// opens the touch keyboard on a click.

#include "dialogs/PromptForm.h"

namespace fw {

class ctl_Button;
class ctl_CmdBar;
class ctl_Label;
class ctl_Pannel;
class ctl_Seperator;
class PictureBox;
class TextBox;

class SingleInputForm : public PromptForm {
  public:
    ~SingleInputForm() override;

    ctl_Label* lab_Description;
    TextBox* txt_Input;
    ctl_Seperator* ctl_Seperator1;
    ctl_CmdBar* ctl_Sidebar;
    ctl_Button* but_DefText;

  protected:
    SingleInputForm(const QString& name, bool multiLine, bool touchOnClick);
    void Form_Load() override;
    void acceptAnswer() override;

  private:
    void arrange();
    void showDefault();
    void txt_Input_KeyDown(int& keyCode, int shift);

    bool m_multiLine;
};

} // namespace fw
