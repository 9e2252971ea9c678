#include "cli/DialogRuns.h"
#include "forms/Form.h"

namespace fw::cli {

namespace {

// The options name the picker's public variables; the last of each counts.
Outcome setUp(Form& form, const Invocation& inv, DialogContext&)
{
    const std::pair<const char*, const char*> publics[] = {{"root", "RootFolder"},
                                                           {"start-folder", "StartFolder"},
                                                           {"start-item", "StartItem"},
                                                           {"filter", "FilterText"}};
    for (const auto& [option, variable] : publics)
        if (const QStringList given = inv.extra(QLatin1String(option)); !given.isEmpty())
            form.SetPublic(QLatin1String(variable), given.last());
    return {};
}

void answerResource(Form&, const DialogContext& context, QJsonObject& answer)
{
    if (context.Request.Result == ResultOk)
        answer.insert(QStringLiteral("Resource"),
                      QString::fromStdString(context.Items.SingleValue));
}

} // namespace

DialogRun ResourcePickerRun()
{
    return {{QStringLiteral("root"), QStringLiteral("start-folder"), QStringLiteral("start-item"),
             QStringLiteral("filter")},
            setUp,
            nullptr,
            answerResource};
}

} // namespace fw::cli
