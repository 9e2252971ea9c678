#pragma once
// The commands both choosers share: the tools menu (open, new folder,
// delete, network drives, removing favourites), the new-folder and delete
// commands and adding a favourite through the favourite editor. Texts are
// German only, as the tools menu is; the new-folder texts follow the host's
// language.

#include <string>
#include <vector>

namespace fw {

class ChooserSite;
struct MenuEntry;

class ChooserCommands {
  public:
    explicit ChooserCommands(ChooserSite& site) : m_site(site) {}

    /// The popup of the tools button (onRow false) or of a right click on a
    /// row (true), then the chosen row's action.
    void ToolsMenu(bool onRow);
    /// The action of a menu key such as "CREATEFOLDER" or
    /// "REMOVEFAVORITE.USER.2"; unknown keys do nothing.
    void Run(const std::string& key);
    void CreateFolder();
    void DeleteSelected();
    /// The favourite button: the editor for the current folder, then the list.
    void AddFavorite();

  private:
    void addConnectionRows(std::vector<MenuEntry>& rows);
    void addFavoriteMenu(std::vector<MenuEntry>& rows);
    void addConnection();
    void removeConnection(const std::string& drive);
    void removeFavorite(const std::string& which);
    void removeFavoriteRow(const std::string& target, const std::string& name);
    void deleteFolder(const std::string& folder, const std::string& name);
    void deleteFile(const std::string& file, const std::string& name);
    std::string text(const std::string& german, const std::string& english) const;

    ChooserSite& m_site;
};

} // namespace fw
