#pragma once
// The favourite editor: name, target folder, description and icon of a new
// folder favourite, and the list it goes to (the user's own or the
// application's). The choosers make it themselves: a caller sets Favorite
// (and ForUser), shows it modally and reads all three back afterwards.

#include "forms/Form.h"
#include "host/HostObjects.h"

namespace fw {

class Label;
class OptionButton;
class PictureBox;
class TextBox;
class ctl_CmdBar;
class ctl_Executor;
class ctl_Label;
class ctl_Seperator;
class ctl_Title;

class frm_DialogFolderFavorite : public Form {
  public:
    frm_DialogFolderFavorite();
    ~frm_DialogFolderFavorite() override;

    /// In: the record to edit; out: what the user entered, after OK.
    FavoriteItem Favorite;
    /// In: the list offered first; out: true for the user's own list.
    bool ForUser = false;
    /// True after OK.
    bool Accepted = false;

    /// "Favorite" as a map of Name, Description, Icon and Path; "ForUser";
    /// "Accepted".
    QVariant GetPublic(const QString& name) const override;
    bool SetPublic(const QString& name, const QVariant& value) override;

    // Controls, public so that hosts and tests reach them by name as users see them.
    ctl_Title* ctl_Title1;
    Label* Label1;
    TextBox* txt_Text;
    Label* Label2;
    TextBox* txt_URL;
    Label* Label3;
    TextBox* txt_Description;
    Label* Label4;
    PictureBox* pic_Icon;
    ctl_Label* lab_Change;
    Label* Label5;
    OptionButton* opt_FavUser;
    OptionButton* opt_FavApp;
    ctl_Seperator* ctl_Seperator1;
    ctl_CmdBar* ctl_CmdBar1;
    /// Named "ctl_Executor" on the form; the member cannot share its type's name.
    ctl_Executor* ctl_Executor1;

    /// The resource path pic_Icon shows.
    const QString& IconPath() const { return m_iconPath; }

  protected:
    void Form_Load() override;

  private:
    void buildControls();
    void addTextRow(Label*& label, const QString& labelName, TextBox*& box, const QString& name,
                    const QString& caption, const QString& touchTitle, int top);
    void showIcon(const QString& path);
    void hChangeIcon();
    void ctl_Executor_Script(const QString& script);
    void acceptEntry();

    QString m_iconPath;
};

} // namespace fw
