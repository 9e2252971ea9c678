#include "cli/DialogRuns.h"
#include "folders/frm_DialogNetworkBrowse.h"
#include "forms/Form.h"

namespace fw::cli {

namespace {

Outcome chooseMode(Form& form, const Invocation& inv, DialogContext&)
{
    const QStringList given = inv.extra(QStringLiteral("browse-mode"));
    if (given.isEmpty())
        return {};
    bool isNumber = false;
    const int mode = given.last().toInt(&isNumber);
    if (!isNumber || mode < frm_DialogNetworkBrowse::ChooseShare ||
        mode > frm_DialogNetworkBrowse::ChooseDomain)
        return {ExitUsage,
                QStringLiteral("--browse-mode takes 0 (share), 1 (host) or 2 (domain), not '%1'")
                    .arg(given.last())};
    form.SetPublic(QStringLiteral("BrowseMode"), mode);
    return {};
}

// The network forms answer in public variables; Accepted stands for the
// result code, and the members name what was chosen only when it was.
void answerAccepted(Form& form, QJsonObject& answer, const QStringList& members)
{
    const bool accepted = form.GetPublic(QStringLiteral("Accepted")).toBool();
    answer.insert(QStringLiteral("Result"), accepted ? ResultOk : ResultAbort);
    if (!accepted)
        return;
    for (const QString& member : members)
        answer.insert(member, form.GetPublic(member).toString());
}

} // namespace

DialogRun NetworkBrowseRun()
{
    return {{QStringLiteral("browse-mode")},
            chooseMode,
            nullptr,
            [](Form& form, const DialogContext&, QJsonObject& answer) {
                answerAccepted(form, answer, {QStringLiteral("SelectedPath")});
            }};
}

DialogRun NetworkAddRun()
{
    return {{}, nullptr, nullptr, [](Form& form, const DialogContext&, QJsonObject& answer) {
                answerAccepted(form, answer,
                               {QStringLiteral("DriveRoot"), QStringLiteral("NetworkPath")});
            }};
}

} // namespace fw::cli
