#pragma once
// The critical choice: a warning, up to three large options and a "&Weiter"
// button that appears once an option is chosen. Hosts get it behind the
// fading notice (frm_DialogFlash); it takes no DialogContext, its
// parameters and answer are public variables.

#include "dialogs/CriticalChoice.h"
#include "forms/ControlArray.h"
#include "forms/Form.h"

namespace fw {

class Label;
class ctl_Button;
class ctl_Frame;
class ctl_Option;
class ctl_Seperator;
class ctl_StatusBar;
class ctl_Title;

class frm_DialogCritical : public Form {
  public:
    frm_DialogCritical();
    ~frm_DialogCritical() override;

    CriticalChoice Publics;

    QVariant GetPublic(const QString& name) const override;
    bool SetPublic(const QString& name, const QVariant& value) override;

    /// The option chosen now, from 1; 0 for none.
    int CurrentChoice() const { return m_choice; }

    ctl_Title* ctl_Title1;
    ctl_Frame* ctl_Frame2;
    Label* lab_Text;
    ctl_Frame* ctl_Frame1;
    ControlArray<ctl_Option> opt_Choice;
    ControlArray<Label> lab_Choice;
    ControlArray<ctl_Seperator> lin_Line;
    ctl_Button* but_OK;
    ctl_StatusBar* ctl_StatusBar1;

  protected:
    void Form_Load() override;
    void Form_KeyDown(int& keyCode, int shift) override;

  private:
    void buildControls();
    /// Marks option index (from 0) as chosen; -1 for none.
    void choose(int index);
    void but_OK_Click();

    int m_choice = 0;
};

} // namespace fw
