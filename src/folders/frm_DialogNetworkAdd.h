#pragma once
// The map-drive dialog: a free drive letter, the network path it stands for
// (typed, or found through the network browser) and whether the mapping comes
// back at the next start. The choosers' tools menu opens it; a caller shows it
// modally and reads DriveRoot and NetworkPath when Accepted is true.

#include "forms/Form.h"

namespace fw {

class ComboBox;
class Label;
class TextBox;
class ctl_CmdBar;
class ctl_Executor;
class ctl_Label;
class ctl_Option;
class ctl_Seperator;
class ctl_Title;

class frm_DialogNetworkAdd : public Form {
  public:
    frm_DialogNetworkAdd();
    ~frm_DialogNetworkAdd() override;

    /// After success: the letter, ":" and "\" ("X:\").
    QString DriveRoot;
    /// After success: the path as entered.
    QString NetworkPath;
    /// True after a successful connection.
    bool Accepted = false;

    /// "DriveRoot", "NetworkPath", "Accepted".
    QVariant GetPublic(const QString& name) const override;
    bool SetPublic(const QString& name, const QVariant& value) override;

    // Controls, public so that hosts and tests reach them by name.
    ctl_Title* ctl_Title1;
    Label* Label1;
    ComboBox* lst_DriveLetter;
    Label* Label2;
    TextBox* txt_NetworkShare;
    ctl_Label* ctl_Label1;
    ctl_Option* opt_UpdateProfile;
    /// The option's caption; a click on it toggles the option too.
    Label* lab_UpdateProfile;
    ctl_Seperator* ctl_Seperator1;
    ctl_CmdBar* bar_Buttons;
    /// Named "ctl_Executor" on the form; the member cannot share its type's name.
    ctl_Executor* ctl_Executor1;

  protected:
    void Form_Load() override;

  private:
    void buildControls();
    void addFieldLabel(Label*& label, const QString& name, const QString& caption, int top);
    void toggleUpdateProfile();
    void ctl_Executor_Script(const QString& script);
    void connectDrive();
    void browseNetwork();
};

} // namespace fw
