#pragma once
// The resource picker: the user picks one resource of the host's picture
// store, most often an icon, by its resource path such as
// "Ico\20\Computer\Signs\OK.ico". A folder tree at the left, the resources of the chosen folder at
// the right with their own pictures, drop-downs of places, filters and views.
// The caller sets the public variables, shows the form modally and reads
// Result (1 OK, 2 abort, 0 closed otherwise) and, with OK, Items.SingleValue.
// Its texts are German whatever the host's language; its layout is fixed.

#include "core/HasContext.h"
#include "forms/Form.h"
#include "host/StringList.h"

#include <memory>
#include <string>

namespace fw {

class ImageList;
class ListView;
class PopupMenu;
class TreeNode;
class TreeView;
class ctl_Button;
class ctl_CmdBar;
class ctl_Executor;
class ctl_Frame;
class ctl_Pannel;
class ctl_TitleBar;

class frm_DialogFileResource : public Form, public HasContext {
  public:
    frm_DialogFileResource();
    ~frm_DialogFileResource() override;

    /// Where the tree starts; empty lists the store's top level.
    QString RootFolder;
    /// The folder shown first ("Ico\20\Computer\Signs\" when empty); afterwards
    /// the folder shown.
    QString StartFolder;
    /// The resource selected first, by its full path in any case.
    QString StartItem;
    /// Patterns separated by ";" ("*.*" when empty).
    QString FilterText;

    /// "RootFolder", "StartFolder", "StartItem", "FilterText".
    QVariant GetPublic(const QString& name) const override;
    bool SetPublic(const QString& name, const QVariant& value) override;

    /// Where the user's own places are kept, as a StringList's text form.
    static constexpr const char* UserFoldersKey =
        "Software\\Valdrenix\\Core\\COMs\\PDN_Dialog\\UserFolders";

    // Controls, public so that hosts and tests reach them by their names.
    ctl_Pannel* ctl_Pannel3;
    ctl_Button* but_Favorit;
    ctl_Button* but_Filter;
    ctl_Button* but_View;
    ctl_Pannel* ctl_Pannel4;
    ctl_Frame* ctl_Frame1;
    ctl_TitleBar* ctl_TitleBar1;
    TreeView* lst_Tree;
    ctl_Frame* ctl_Frame2;
    ctl_TitleBar* ctl_TitleBar2;
    ListView* lst_Files;
    ImageList* img_Tree;
    ImageList* img_Files16;
    ImageList* img_Files32;
    ctl_CmdBar* ctl_Sidebar;
    ctl_Executor* exe_Commands; ///< named "ctl_Executor"

  protected:
    void Form_Load() override;
    void Form_Unload(bool& cancel) override;

  private:
    void buildControls();
    void buildLists();
    void wireEvents();
    void hBuildTree(const QString& path, TreeNode* parent, int depth);
    void hGoto(const QString& path);
    void hShowFolder(const QString& path);
    void hFillTypeIcons();
    void hAddRow(const QString& entry, int number);
    void hSplitFilter();
    void hSetFilter(const QString& text);
    bool hMatchesFilter(const QString& entry);
    void hSelectItem(const QString& name);
    void hBuildPlacesMenu();
    void buildFilterMenu();
    void buildViewMenu();
    void dropDown(ctl_Button& button, const std::shared_ptr<PopupMenu>& menu);
    void runCommand(const QString& key);
    void sidebarKey(const QString& key);

    StringList m_patterns;
    StringList m_userFolders;
    std::shared_ptr<PopupMenu> m_placesMenu;
    std::shared_ptr<PopupMenu> m_filterMenu;
    std::shared_ptr<PopupMenu> m_viewMenu;
};

} // namespace fw
