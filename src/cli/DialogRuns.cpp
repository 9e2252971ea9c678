#include "cli/DialogRuns.h"

#include <QHash>

namespace fw::cli {

const DialogRun* FindDialogRun(const QString& dialog)
{
    static const QHash<QString, DialogRun> table{
        {QStringLiteral("frm_DialogProcess"), ProgressRun()},
        {QStringLiteral("frm_DialogMonitor"), MonitorRun()},
        {QStringLiteral("frm_DialogCritical"), CriticalRun()},
        {QStringLiteral("frm_DialogColor"), ColorRun()},
        {QStringLiteral("frm_DialogNumericTouch"), NumericTouchRun()},
        {QStringLiteral("frm_DialogXMLInspector"), XmlInspectorRun()},
        {QStringLiteral("frm_InternetFTPConsole"), FtpConsoleRun()},
    };
    const auto it = table.constFind(dialog);
    return it == table.cend() ? nullptr : &*it;
}

} // namespace fw::cli
