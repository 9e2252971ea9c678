#pragma once
// Popup menus of the desktop host on QMenu.

#include "host/CoreDevServices.h"

#include <QString>
#include <memory>
#include <vector>

class QMenu;

namespace fw::desktop {

class DesktopPictures;

/// A menu model that turns into a QMenu when it pops up, so that rows and
/// submenus may be added in any order before. A row is
/// "caption|key|-1|-1|0|icon" (fields after the key ignored but the icon, a
/// resource path loaded at the size it names, 16 if none) or "-" for a line.
/// Popup gives the chosen row's key (its caption if the key is empty), or
/// empty if the menu was closed without a choice.
class DesktopPopupMenu final : public PopupMenu {
  public:
    explicit DesktopPopupMenu(std::shared_ptr<DesktopPictures> pictures);

    void AddItem(const std::string& icon, const std::string& caption,
                 const std::string& key) override;
    void AddRows(const std::vector<MenuEntry>& rows) override;
    std::string Popup(int x = -1, int y = -1) override;

    /// Fills a QMenu with the rows; public for the submenus of other menus.
    /// depth stops a menu that holds itself as a submenu.
    void Fill(QMenu& menu, int depth = 0) const;

  private:
    struct Row {
        QString caption;
        QString key;
        QString icon;
        bool separator = false;
        std::shared_ptr<PopupMenu> submenu;
    };
    std::shared_ptr<DesktopPictures> m_pictures;
    std::vector<Row> m_rows;
};

class DesktopMenus final : public CoreDevMenus {
  public:
    explicit DesktopMenus(std::shared_ptr<DesktopPictures> pictures);
    std::shared_ptr<PopupMenu> NewPopupMenu() override;

  private:
    std::shared_ptr<DesktopPictures> m_pictures;
};

} // namespace fw::desktop
