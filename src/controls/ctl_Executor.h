#pragma once
// A control without a window that hands script strings ("DIALOG.OK();") from
// a command bar or from code to the form's handler, so that both roads end in
// one place.

#include "forms/Control.h"

#include <functional>

namespace fw {

class ctl_Executor : public Control {
  public:
    ctl_Executor(Form& form, const QString& name);

    /// Raises Script with the string at once, before returning.
    void Execute(const QString& script);

    std::function<void(const QString& script)> Script;
};

} // namespace fw
