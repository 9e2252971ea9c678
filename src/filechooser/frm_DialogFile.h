#pragma once
// The file chooser: open or save a file over real folders and the chooser's
// places (desktop, drives, network, favourites). The host fills Mode, the
// filter pairs, the proposed file (entry 1 of ItemList) and the save options
// into the context, shows the form modally and reads Result and entry 1.

#include "core/FormTranslation.h"
#include "core/HasContext.h"
#include "filechooser/ChooserCommands.h"
#include "filechooser/ChooserFavorites.h"
#include "filechooser/ChooserForms.h"
#include "filechooser/ChooserSite.h"
#include "filechooser/LocationModel.h"
#include "forms/Form.h"

#include <QString>
#include <memory>
#include <string>

namespace fw {

class ComboBox;
class FolderLister;
class ImageCombo;
class Label;
class ListItem;
class ListView;
class PictureBox;
class TextBox;
class Timer;
class ctl_Button;
class ctl_CmdBar;
class ctl_Executor;
class ctl_Frame;
class ctl_Label;
class ctl_Pannel;
class ctl_ReEvent;
class ctl_Steps;
class ctl_Title;

class frm_DialogFile : public Form, public HasContext, public ChooserSite {
  public:
    frm_DialogFile();
    ~frm_DialogFile() override;

    /// "Context" as the other dialogs have it.
    QVariant GetPublic(const QString& name) const override;
    bool SetPublic(const QString& name, const QVariant& value) override;

    // Controls, public so that hosts and tests reach them by their names.
    ctl_Title* bar_Header;
    ctl_CmdBar* bar_Buttons;
    ctl_Steps* cat_Folder;
    ctl_Frame* frm_Folder;
    ImageCombo* lst_Folder;
    ListView* lst_Files;
    ctl_Label* lab_FileCount;
    ctl_Pannel* frm_Buttons;
    ctl_Button* but_FolderUp;
    ctl_Button* but_FavoriteAdd;
    ctl_Button* but_View;
    ctl_Button* but_Tool;
    Label* lab_SearchFor;
    TextBox* txt_SearchFor;
    ctl_Frame* frm_File;
    Label* lab_Filename;
    TextBox* txt_Filename;
    Label* lab_Filter;
    ComboBox* lst_Filter;
    Label* lab_Info;
    ctl_Label* lab_FileInfo;
    ctl_Frame* frm_Preview;
    PictureBox* pic_Preview;
    Timer* tmr_IconLoad;
    Timer* tmr_Unload;
    ctl_Executor* exe_Commands;
    ctl_ReEvent* evt_Deferred;

    // What the shared commands need of a chooser.
    Form& ChooserForm() override { return *this; }
    LocationModel& Places() override { return m_places; }
    ChooserFavorites& Favorites() override { return m_favourites; }
    ListView& Rows() override;
    void GotoFolder(const std::string& location) override { hGotoFolder(location, false, {}); }
    void UpdateFolder() override { hUpdateFolder(false); }
    void BuildSidebar() override;
    void OpenSelected() override;

    /// The active filter pattern, "*.*" by default.
    std::string Filter() const;

  protected:
    void Form_Load() override;
    void Form_Resize() override;
    void Form_QueryUnload(bool& cancel, int unloadMode) override;

  private:
    // Set-up (frm_DialogFile.cpp).
    void buildControls();
    void buildFolderFrame();
    void buildFileFrame();
    void wireEvents();
    void applyMode();
    void fillFilters();
    void chooseStartFolder();
    void proposeName();
    void hResetPreview();
    bool hasPreview() const;

    // Navigation (frm_DialogFile.cpp).
    void hGotoFolder(const std::string& path, bool fromCategory, const std::string& fileName);
    void hUpdateFolder(bool keepSearch);
    void goUp();

    // Commands and the OK logic (frm_DialogFileCommands.cpp).
    void runScript(const QString& script);
    void raiseDeferred(const QString& name);
    void lst_Files_ItemClick(ListItem& item);
    void lst_Files_DblClick();
    void okLogic();
    bool enterTypedFolder(const std::string& box, std::string& name);
    void acceptName(const std::string& name);
    bool confirmOverwrite(const std::string& full);
    void closeWith(int result);

    // Filter and search (frm_DialogFileSearch.cpp).
    void lst_Filter_Click();
    void txt_SearchFor_Change();
    void txt_SearchFor_KeyDown(int& keyCode);
    void selectFirstRow();

    LocationModel m_places;
    ChooserFavorites m_favourites;
    std::unique_ptr<FolderLister> m_lister;
    ChooserCommands m_commands{*this};
    bool m_loading = false;
    bool m_listHasFocus = false;
    bool m_searchGuard = false;
    ChooserRowMouse m_rowMouse;
    QString m_lastSearchText;
    TranslationTable m_translations;
};

} // namespace fw
