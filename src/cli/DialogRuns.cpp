#include "cli/DialogRuns.h"
#include "touch/frm_DialogNumericTouch.h"

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
        {QStringLiteral("frm_DialogFile"), FileChooserRun()},
        {QStringLiteral("frm_DialogFolder"), FolderChooserRun()},
        {QStringLiteral("frm_DialogPath"), FolderChooserRun()},
    };
    const auto it = table.constFind(dialog);
    return it == table.cend() ? nullptr : &*it;
}

const QStringList& LibraryForms()
{
    static const QStringList names{QStringLiteral("frm_DialogNumericTouch")};
    return names;
}

std::unique_ptr<Form> MakeLibraryForm(const QString& dialog)
{
    if (dialog == QLatin1String("frm_DialogNumericTouch"))
        return std::make_unique<frm_DialogNumericTouch>();
    return nullptr;
}

} // namespace fw::cli
