#pragma once
// System facts, window effects and control tools of the desktop host.

#include "desktop/DesktopApp.h"
#include "host/CoreDevServices.h"

namespace fw::desktop {

/// Screen edges of a control's widget in global pixels (0 for a control
/// without a widget). setWindowColorKey: mode 2 sets the form window's
/// opacity to level/255; mode 1 gives the window a translucent background,
/// which is as near as Qt comes to a colour key: the form must leave the
/// transparent parts unpainted, and without a compositor nothing shows
/// through. Any other mode makes the window opaque again.
class DesktopWindows final : public WindowHelper {
  public:
    void setWindowColorKey(Form& form, int level, int mode, std::uint32_t colour) override;
    int windowTop(const Control& control) override;
    int windowLeft(const Control& control) override;
    int windowBottom(const Control& control) override;
    int windowRight(const Control& control) override;
};

/// Monitors as Qt sees them when asked: the primary screen first, Index 1, 2...
class DesktopSystem final : public CoreDevSystem {
  public:
    WindowHelper& Windows() override { return m_windows; }
    SystemFolders& Folders() override { return m_folders; }
    std::shared_ptr<MonitorList> Monitors() override;

  private:
    DesktopWindows m_windows;
    DesktopSystemFolders m_folders;
};

/// SetColumnWidths shares a QTreeView's or QTableView's visible width among
/// its columns by the percents ("40,60"); SelectAll selects the whole text of
/// a QLineEdit, QPlainTextEdit, QTextEdit, spin box or editable combo box.
/// Both look into the control's widget for such a view when the widget is a
/// container, and leave any other widget alone.
class DesktopControls final : public CoreDevControls, ListViewHelper, TextBoxHelper {
  public:
    ListViewHelper& ListViews() override { return *this; }
    TextBoxHelper& TextBoxes() override { return *this; }
    void SetColumnWidths(Control& listView, const std::string& percents) override;
    void SelectAll(Control& textBox) override;
};

} // namespace fw::desktop
