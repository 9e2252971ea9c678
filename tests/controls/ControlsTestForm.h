#pragma once
// A bare form for driving the in-house controls: shown modeless, so that keys
// go through the form's own dispatch (default and cancel buttons) as in a dialog.

#include "forms/Form.h"
#include "forms/Screen.h"
#include "forms/testing/UserInput.h"

#include <QWidget>
#include <ostream>

// Readable QStrings in test failures.
inline void PrintTo(const QString& text, std::ostream* os)
{
    *os << '"' << text.toStdString() << '"';
}

namespace fw::testing {

class ControlsTestForm : public Form {
  public:
    ControlsTestForm() : Form(QStringLiteral("frm_ControlsTest")) { window()->resize(480, 300); }
    ~ControlsTestForm() override
    {
        if (!IsUnloaded())
            Unload();
    }

    void ShowNow()
    {
        Show(false);
        ProcessEvents();
    }
};

} // namespace fw::testing
