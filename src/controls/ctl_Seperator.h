#pragma once
// A thin horizontal rule between sections.

#include "forms/Control.h"

namespace fw {

class ctl_Seperator : public Control {
  public:
    ctl_Seperator(Form& form, const QString& name, QWidget* container = nullptr);
};

} // namespace fw
