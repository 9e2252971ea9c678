#include "desktop/DesktopMenus.h"
#include "desktop/DesktopPictures.h"

#include <QCursor>
#include <QMenu>
#include <QPixmap>

namespace fw::desktop {

DesktopPopupMenu::DesktopPopupMenu(std::shared_ptr<DesktopPictures> pictures)
    : m_pictures(std::move(pictures))
{
}

void DesktopPopupMenu::AddItem(const std::string& icon, const std::string& caption,
                               const std::string& key)
{
    Row row;
    row.caption = QString::fromStdString(caption);
    row.key = QString::fromStdString(key);
    row.icon = QString::fromStdString(icon);
    row.separator = row.caption == u"-";
    m_rows.push_back(std::move(row));
}

void DesktopPopupMenu::AddRows(const std::vector<MenuEntry>& entries)
{
    for (const MenuEntry& entry : entries) {
        const QStringList fields = QString::fromStdString(entry.Row).split(u'|');
        Row row;
        row.caption = fields.value(0);
        row.key = fields.value(1);
        row.icon = fields.value(5);
        row.separator = fields.size() == 1 && row.caption.trimmed() == u"-";
        row.submenu = entry.Submenu;
        m_rows.push_back(std::move(row));
    }
}

void DesktopPopupMenu::Fill(QMenu& menu, int depth) const
{
    constexpr int kMaxDepth = 16;
    if (depth > kMaxDepth)
        return;
    for (const Row& row : m_rows) {
        if (row.separator) {
            menu.addSeparator();
            continue;
        }
        QIcon icon;
        if (!row.icon.isEmpty() && m_pictures)
            icon = QIcon(QPixmap::fromImage(m_pictures->LoadImage(row.icon)));
        if (auto* sub = dynamic_cast<DesktopPopupMenu*>(row.submenu.get())) {
            QMenu* child = menu.addMenu(icon, row.caption);
            sub->Fill(*child, depth + 1);
            continue;
        }
        QAction* action = menu.addAction(icon, row.caption);
        action->setData(row.key.isEmpty() ? row.caption : row.key);
    }
}

std::string DesktopPopupMenu::Popup(int x, int y)
{
    QMenu menu;
    menu.setObjectName(QStringLiteral("mnu_Popup"));
    Fill(menu);
    if (menu.isEmpty())
        return {};
    const QPoint at = x < 0 || y < 0 ? QCursor::pos() : QPoint(x, y);
    QAction* chosen = menu.exec(at);
    return chosen ? chosen->data().toString().toStdString() : std::string();
}

DesktopMenus::DesktopMenus(std::shared_ptr<DesktopPictures> pictures)
    : m_pictures(std::move(pictures))
{
}

std::shared_ptr<PopupMenu> DesktopMenus::NewPopupMenu()
{
    return std::make_shared<DesktopPopupMenu>(m_pictures);
}

} // namespace fw::desktop
