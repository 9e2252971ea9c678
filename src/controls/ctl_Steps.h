#pragma once
// A vertical strip of flat entries, one per category, as the places strip at
// the left of a file chooser: a 20 pixel icon left of a caption whose "&"
// letter works as Alt + letter on the form, a tool tip and a tag per entry,
// and one chosen entry lit in the selection colour. Up and Down move between
// the entries, Return and Space click the one with the focus.
//
//     int desktop = strip->AddStep("&Desktop", "Ico\\20\\Desktop.ico", {}, "DESKTOP");
//     strip->StepClick = [](int index) { ... };

#include "forms/Control.h"

#include <QString>
#include <functional>
#include <vector>

namespace fw {

class StepEntry;
class StepStrip;

class ctl_Steps : public Control {
  public:
    ctl_Steps(Form& form, const QString& name, QWidget* container = nullptr);

    /// Removes every entry.
    void Clear();
    /// Appends an entry and returns its index from 1. iconPath is a resource
    /// path through the host's picture service, shown at 20 pixels.
    int AddStep(const QString& caption, const QString& iconPath, const QString& toolTip = {},
                const QString& tag = {});
    int Count() const { return int(m_entries.size()); }
    /// Of entry index (from 1); empty beyond the entries.
    QString Caption(int index) const;
    QString Tag(int index) const;
    QString ToolTip(int index) const;

    /// The lit entry from 1, 0 for none. A click lights the entry it clicks.
    int SelectedIndex() const { return m_selected; }
    /// Lights an entry from code (0 none), which raises no StepClick.
    void SetSelectedIndex(int index);
    void ClearSelection() { SetSelectedIndex(0); }
    /// Paints the strip again, for pictures or colours that changed.
    void Redraw();

    /// Return with the focus on an entry clicks that entry.
    bool IsButton() const override { return true; }
    bool PerformClick() override;

    /// "SelectedIndex", "Count" (read only).
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

    /// An entry was clicked (mouse, Alt + accelerator, Return, Space); index from 1.
    std::function<void(int index)> StepClick;

    /// The entry's widget, for drivers that click on it; null beyond the entries.
    QWidget* stepWidget(int index) const;

  private:
    friend class StepEntry;
    void clicked(int index);
    void moveFocus(int from, int step);
    void updateTabStop();

    StepStrip* m_strip;
    std::vector<StepEntry*> m_entries;
    int m_selected = 0;
};

} // namespace fw
