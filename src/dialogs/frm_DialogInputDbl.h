#pragma once
// Asks for two texts at once. Prompts, defaults and answers each travel as one
// string that holds a pair, packed by the host's pair helper.

#include "dialogs/PromptForm.h"

namespace fw {

class ctl_Button;
class ctl_CmdBar;
class ctl_Label;
class ctl_Pannel;
class ctl_Seperator;
class CommandButton;
class PictureBox;
class TextBox;

class frm_DialogInputDbl : public PromptForm {
  public:
    frm_DialogInputDbl();
    ~frm_DialogInputDbl() override;

    ctl_Label* lab_DescriptionA;
    TextBox* txt_InputA;
    ctl_Seperator* ctl_Seperator1;
    ctl_Pannel* ctl_Pannel1;
    ctl_Label* lab_DescriptionB;
    TextBox* txt_InputB;
    ctl_Seperator* ctl_Seperator2;
    /// Answers Return: on to the second box, or OK from there. Kept outside
    /// the visible area.
    CommandButton* but_Return;
    ctl_CmdBar* ctl_Sidebar;
    ctl_Button* but_DefText;

  protected:
    void Form_Load() override;
    void acceptAnswer() override;

  private:
    void arrange();
    void showDefaults();
    void but_Return_Click();

    bool m_inSecond = false; ///< true while txt_InputB holds the focus
};

} // namespace fw
