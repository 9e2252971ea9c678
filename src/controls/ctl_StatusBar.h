#pragma once
// A status line docked to the bottom of its form: panels of text side by side,
// the last one taking the room that is left.

#include "forms/Control.h"
#include "forms/TextRows.h"

#include <QStringList>
#include <vector>

namespace fw {

class StatusStrip;

class ctl_StatusBar : public Control, public TextRows {
  public:
    ctl_StatusBar(Form& form, const QString& name, QWidget* container = nullptr);

    /// Adds a panel; width in twips, 0 for one that takes the rest. Returns its number (from 1).
    int AddPanel(const QString& text, int width = 0);
    int PanelCount() const { return int(m_panels.size()); }
    /// Panels count from 1; an unknown number reads as "" and is not written.
    QString PanelText(int panel) const;
    void SetPanelText(int panel, const QString& text);

    int RowCount(const QString& collection) const override;
    QVariant RowProperty(const QString& collection, int row,
                         const QString& property) const override;
    bool SetRowProperty(const QString& collection, int row, const QString& property,
                        const QString& value) override;
    void RowsChanged(const QString& collection) override;

  private:
    friend class StatusStrip;
    struct Panel {
        QString text;
        int width; ///< pixels; 0 takes the rest
    };
    StatusStrip* m_strip;
    std::vector<Panel> m_panels;
};

} // namespace fw
