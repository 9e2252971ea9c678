#include "cli/DialogRuns.h"
#include "folders/frm_DialogNetworkAdd.h"
#include "folders/frm_DialogNetworkBrowse.h"
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
        {QStringLiteral("frm_DialogNetworkBrowse"), NetworkBrowseRun()},
        {QStringLiteral("frm_DialogNetworkAdd"), NetworkAddRun()},
        {QStringLiteral("frm_DialogFileResource"), ResourcePickerRun()},
        {QStringLiteral("frm_DialogFileSync"), FolderSyncRun()},
        {QStringLiteral("frm_InternetFTPSync"), FtpSyncRun()},
        {QStringLiteral("frm_DialogFileSyncConfirm"), SyncConfirmRun()},
        {QStringLiteral("frm_InternetFTPConfirm"), SyncConfirmRun()},
    };
    const auto it = table.constFind(dialog);
    return it == table.cend() ? nullptr : &*it;
}

const QStringList& LibraryForms()
{
    static const QStringList names{QStringLiteral("frm_DialogNumericTouch"),
                                   QStringLiteral("frm_DialogNetworkAdd"),
                                   QStringLiteral("frm_DialogNetworkBrowse")};
    return names;
}

std::unique_ptr<Form> MakeLibraryForm(const QString& dialog)
{
    if (dialog == QLatin1String("frm_DialogNumericTouch"))
        return std::make_unique<frm_DialogNumericTouch>();
    if (dialog == QLatin1String("frm_DialogNetworkAdd"))
        return std::make_unique<frm_DialogNetworkAdd>();
    if (dialog == QLatin1String("frm_DialogNetworkBrowse"))
        return std::make_unique<frm_DialogNetworkBrowse>();
    return nullptr;
}

} // namespace fw::cli
