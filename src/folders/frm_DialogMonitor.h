#pragma once
// The monitor choice: a small map of all attached monitors as they lie on the
// virtual desktop; a click on one is the choice. It takes no DialogContext:
// a caller sets Monitor (the current one, or none) and reads Monitor and
// Accepted after Show.

#include "forms/ControlArray.h"
#include "forms/Form.h"
#include "host/HostObjects.h"

#include <memory>
#include <optional>

namespace fw {

class ctl_Title;
class ctl_CmdBar;
class ctl_Button;
class ctl_Pannel;

class frm_DialogMonitor : public Form {
  public:
    frm_DialogMonitor();
    ~frm_DialogMonitor() override;

    /// In: the monitor that is current now, or none; out: the chosen monitor.
    std::optional<MonitorInfo> Monitor;
    /// True after a click on a monitor.
    bool Accepted = false;

    /// "Monitor" as a map of Index, Left, Top, Width and Height (null: none),
    /// and "Accepted".
    QVariant GetPublic(const QString& name) const override;
    bool SetPublic(const QString& name, const QVariant& value) override;

    // Controls, public so that hosts and tests reach them by name as users see them.
    ctl_Title* ctl_Title1;
    ctl_Pannel* frm_Outer;
    ctl_Pannel* frm_Inner;
    ControlArray<ctl_Button> but_Monitor;
    ctl_CmdBar* bar_Buttons;

  protected:
    void Form_Load() override;

  private:
    void buildControls();
    void placeMonitors(const MonitorList& monitors);
    void but_Monitor_Click(int index);
    void bar_Buttons_Script(const QString& script);

    std::shared_ptr<MonitorList> m_monitors;
};

} // namespace fw
