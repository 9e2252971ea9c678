#pragma once
// A plain panel that holds other controls; a body section of a dialog.

#include "forms/Control.h"

#include <QColor>

namespace fw {

class ctl_Pannel : public Control {
  public:
    ctl_Pannel(Form& form, const QString& name, QWidget* container = nullptr);
    /// Controls placed in the panel use this as their container widget.
    QWidget* container() const { return widget(); }
    void SetBackColor(const QColor& colour);
    QColor BackColor() const;

    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;
};

} // namespace fw
