#include "cli/DialogRuns.h"
#include "forms/Form.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QVariantMap>

namespace fw::cli {

namespace {

Outcome chooseCurrent(Form& form, const Invocation& inv, DialogContext&)
{
    const QStringList given = inv.extra(QStringLiteral("monitor"));
    if (given.isEmpty())
        return {};
    bool isNumber = false;
    const int index = given.last().toInt(&isNumber);
    const auto monitors = GetCoreDevSystem().Monitors();
    const int count = monitors ? monitors->Count() : 0;
    if (!isNumber || index < 1 || index > count)
        return {ExitUsage, QStringLiteral("--monitor takes a monitor index from 1 to %1, not '%2'")
                               .arg(count)
                               .arg(given.last())};
    const MonitorInfo current = monitors->ByIndex(index);
    form.SetPublic(QStringLiteral("Monitor"),
                   QVariantMap{{QStringLiteral("Index"), current.Index},
                               {QStringLiteral("Left"), current.Left},
                               {QStringLiteral("Top"), current.Top},
                               {QStringLiteral("Width"), current.Width},
                               {QStringLiteral("Height"), current.Height}});
    return {};
}

// The chooser answers in public variables; Accepted stands for the result code.
void answerChoice(Form& form, const DialogContext&, QJsonObject& answer)
{
    const bool accepted = form.GetPublic(QStringLiteral("Accepted")).toBool();
    answer.insert(QStringLiteral("Result"), accepted ? ResultOk : ResultAbort);
    answer.insert(QStringLiteral("Accepted"), accepted);
    answer.insert(QStringLiteral("Monitor"),
                  QJsonValue::fromVariant(form.GetPublic(QStringLiteral("Monitor"))));
}

} // namespace

DialogRun MonitorRun()
{
    return {{QStringLiteral("monitor")}, chooseCurrent, nullptr, answerChoice};
}

} // namespace fw::cli
