#pragma once
// The command bar at the bottom of a dialog: a row of buttons, each with a key,
// a caption, an icon path and a script. A press raises Script (the first own
// event) with the row's script, then Key (the second) with its key. Return
// presses the "OK" row and Esc the "ABORT" row where they exist. It docks to
// the bottom of its container.

#include "forms/Control.h"

#include <QString>
#include <functional>
#include <vector>

namespace fw {

class CmdBarStrip;

/// One row of a command bar; stored in the stable "1.3" property-list layout.
struct CmdBarButton {
    QString Key;
    QString Caption;
    QString IconPath;
    QString Script;
    bool Visible = true;
    bool Enabled = true;

    /// "1.3|key|caption|icon|-1|-1|key|script|0|0||" with "|" and "\" escaped.
    QString ToPropertyList() const;
    static CmdBarButton FromPropertyList(const QString& text);
};

class ctl_CmdBar : public Control {
  public:
    ctl_CmdBar(Form& form, const QString& name, QWidget* container = nullptr);

    void AddButton(const QString& key, const QString& caption, const QString& iconPath,
                   const QString& script);
    void ClearButtons();
    const std::vector<CmdBarButton>& Buttons() const { return m_buttons; }
    /// Replace rows (for late-bound callers such as the translation walk), then
    /// call ButtonsChanged so that the bar shows them.
    std::vector<CmdBarButton>& MutableButtons() { return m_buttons; }
    void ButtonsChanged();
    /// Presses the row of key as a user would; false if there is none.
    bool Press(const QString& key);

    bool HelpVisible() const { return m_helpVisible; }
    void SetHelpVisible(bool on);
    /// Whether the work behind the bar yields to the event loop while it runs,
    /// so that the bar stays responsive (a progress window's abort button).
    bool DoEvents() const { return m_doEvents; }
    void SetDoEvents(bool on) { m_doEvents = on; }

    /// The widget that buttons of a form placed on the bar are children of.
    QWidget* container() const;

    std::function<void(const QString& script)> Script;
    std::function<void(const QString& key)> Key;

    /// True while one of the bar's rows has the focus: Return presses that row.
    bool IsButton() const override;
    bool IsDefaultButton() const override;
    bool IsCancelButton() const override;
    /// Presses the focused row, if any.
    bool PerformClick() override;
    bool PerformDialogKey(int keyCode) override;

    /// "HelpVisible", "DoEvents", and "Buttons" as a list of property-list rows.
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    friend class CmdBarStrip;
    int usableRow(QStringView key) const;
    void pressRow(std::size_t index);
    CmdBarStrip* m_strip;
    std::vector<CmdBarButton> m_buttons;
    bool m_helpVisible = true;
    bool m_doEvents = false;
};

} // namespace fw
