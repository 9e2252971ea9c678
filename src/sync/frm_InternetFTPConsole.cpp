#include "sync/frm_InternetFTPConsole.h"

#include "controls/ctl_Console.h"
#include "forms/Screen.h"

#include <QWidget>

namespace fw {

frm_InternetFTPConsole::frm_InternetFTPConsole() : Form(QStringLiteral("frm_InternetFTPConsole"))
{
    SetCaption(QStringLiteral("FTP-Konsole"));
    window()->resize(640, 420);
    con_Terminal = Add<ctl_Console>(QStringLiteral("con_Terminal"));
    con_Terminal->LineEntered = [this](const QString& line) { con_Terminal_LineEntered(line); };
}

void frm_InternetFTPConsole::Form_Load()
{
    Form_Resize();
    con_Terminal->SetFocus();
}

void frm_InternetFTPConsole::Form_Resize()
{
    con_Terminal->Move(0, 0, ScaleWidth(), ScaleHeight());
}

void frm_InternetFTPConsole::con_Terminal_LineEntered(const QString& line)
{
    CallByName(HostObject.get(), "SENDCOMMAND", {line.toStdString()});
}

} // namespace fw
