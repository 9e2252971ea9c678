#pragma once
// Texts that a control keeps in rows of its own: the buttons of a command bar,
// the panels of a status bar, the column headers of a list view. A control
// that has such rows implements this, so that walks over a form's texts (the
// translation walk) reach them without knowing the control.

#include <QString>
#include <QVariant>

namespace fw {

class TextRows {
  public:
    virtual ~TextRows() = default;

    /// Rows of a collection ("BUTTONS", "PANELS", "COLUMNHEADERS"); 0 if the
    /// control has no collection of that name.
    virtual int RowCount(const QString& collection) const = 0;
    /// A property of row (from 1) by name, case-insensitive ("TEXT",
    /// "ToolTipText"); an invalid QVariant if the row has no such property.
    virtual QVariant RowProperty(const QString& collection, int row,
                                 const QString& property) const = 0;
    /// False if the row has no such property.
    virtual bool SetRowProperty(const QString& collection, int row, const QString& property,
                                const QString& value) = 0;
    /// Called after rows of a collection were changed, so that the control
    /// shows them.
    virtual void RowsChanged(const QString& /*collection*/) {}
};

} // namespace fw
