#pragma once
// The FTP console: a bare terminal window between the user and a host object
// that owns an FTP connection. Every line the user enters goes unchanged to
// the object's SENDCOMMAND, called by name; whatever the terminal shows, the
// host object writes to con_Terminal itself. No parsing, echo or history here.

#include "forms/Form.h"
#include "host/LateBound.h"

#include <memory>

namespace fw {

class ctl_Console;

class frm_InternetFTPConsole : public Form {
  public:
    frm_InternetFTPConsole();

    /// The host's object behind the console, set before Show. It must answer
    /// SENDCOMMAND; a missing method or no object is a run-time error of the
    /// line entered, which this form does not catch.
    std::shared_ptr<LateBound> HostObject;

    ctl_Console* con_Terminal;

  protected:
    void Form_Load() override;
    void Form_Resize() override;

  private:
    void con_Terminal_LineEntered(const QString& line);
};

} // namespace fw
