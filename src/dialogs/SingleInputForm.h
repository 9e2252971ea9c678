#pragma once
// The one-text input forms: a prompt, a box for the answer, a button that
// brings the default back and the bar with OK, Abbruch and help. The one-line
// and the multi-line form differ only in the box and in that the one-line box
// opens the touch keyboard on a click.

#include "core/HasContext.h"
#include "forms/Form.h"

namespace fw {

class ctl_Button;
class ctl_CmdBar;
class ctl_Label;
class ctl_Pannel;
class ctl_Seperator;
class PictureBox;
class TextBox;

class SingleInputForm : public Form, public HasContext {
  public:
    ~SingleInputForm() override;

    /// Masks the box with "*"; the host still gets the real text.
    bool PasswordEntry = false;

    QVariant GetPublic(const QString& name) const override;
    bool SetPublic(const QString& name, const QVariant& value) override;

    ctl_Pannel* pan_Holder;
    PictureBox* img_Icon;
    ctl_Label* lab_Description;
    TextBox* txt_Input;
    ctl_Seperator* ctl_Seperator1;
    ctl_CmdBar* ctl_Sidebar;
    ctl_Button* but_DefText;

  protected:
    SingleInputForm(const QString& name, bool multiLine, bool touchOnClick);
    void Form_Load() override;

  private:
    void arrange();
    void showDefault();
    void ctl_Sidebar_Key(const QString& key);
    void txt_Input_KeyDown(int& keyCode, int shift);

    bool m_multiLine;
};

} // namespace fw
