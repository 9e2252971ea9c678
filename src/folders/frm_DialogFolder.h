#pragma once
// The folder chooser: the user picks one folder over real folders and the
// choosers' places (desktop, drives, network, favourites). The host puts the
// start folder into entry 1 of ItemList, shows the form modally and reads
// Result and entry 1, which holds the chosen location as it stands (a place
// such as "DESKTOP:\" comes back by that name). It lists folders only and
// speaks German whatever the host's language.

#include "core/HasContext.h"
#include "filechooser/ChooserCommands.h"
#include "filechooser/ChooserFavorites.h"
#include "filechooser/ChooserForms.h"
#include "filechooser/ChooserSite.h"
#include "filechooser/LocationModel.h"
#include "forms/Form.h"

#include <memory>
#include <string>

namespace fw {

class FolderLister;
class ImageCombo;
class Label;
class ListView;
class ctl_Button;
class ctl_CmdBar;
class ctl_Executor;
class ctl_Frame;
class ctl_Pannel;
class ctl_ReEvent;
class ctl_Steps;

class frm_DialogFolder : public Form, public HasContext, public ChooserSite {
  public:
    frm_DialogFolder();
    ~frm_DialogFolder() override;

    // Controls, public so that hosts and tests reach them by their names.
    ctl_Steps* cat_Folder;
    ctl_Frame* frm_Folder;
    Label* Label1;
    ImageCombo* lst_Folder;
    ctl_Pannel* frm_Buttons;
    ctl_Button* but_Previous;
    ctl_Button* but_NavNext;
    ctl_Button* but_FolderUp;
    ctl_Button* but_FavoriteAdd;
    ctl_Button* but_Tool;
    ctl_Button* but_View;
    ListView* lst_Files;
    ctl_CmdBar* bar_Buttons;
    ctl_Executor* exe_Commands;
    ctl_ReEvent* evt_Deferred;

    // What the shared commands need of a chooser.
    Form& ChooserForm() override { return *this; }
    LocationModel& Places() override { return m_places; }
    ChooserFavorites& Favorites() override { return m_favourites; }
    ListView& Rows() override;
    void GotoFolder(const std::string& location) override { hGotoFolder(location, false); }
    void UpdateFolder() override;
    void BuildSidebar() override;
    void OpenSelected() override;
    bool GermanOnly() const override { return true; }

  protected:
    void Form_Load() override;
    void Form_Resize() override;

  private:
    void buildControls();
    void buildFolderFrame();
    void wireEvents();
    void chooseStartFolder();
    bool hasPreview() const;
    void hGotoFolder(const std::string& path, bool fromCategory);
    void goUp();
    void runScript(const QString& script);
    void raiseDeferred(const QString& name);

    LocationModel m_places;
    ChooserFavorites m_favourites;
    std::unique_ptr<FolderLister> m_lister;
    ChooserCommands m_commands{*this};
    ChooserRowMouse m_rowMouse;
    bool m_loading = false;
    bool m_listHasFocus = false;
};

} // namespace fw
