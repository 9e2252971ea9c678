#include "cli/DialogRuns.h"
#include "dialogs/frm_DialogCritical.h"
#include "dialogs/frm_DialogFlash.h"

#include <cstdio>

namespace fw::cli {

namespace {

constexpr int kShownChoices = 3;

// The choice takes no records: --text, --title and the choices become the
// notice's public variables, which it hands on to the choice.
Outcome handOver(Form& form, const Invocation& inv, DialogContext& context)
{
    const QStringList choices = inv.extra(QStringLiteral("choice"));
    if (choices.size() > kShownChoices)
        std::fputs(
            qPrintable(QStringLiteral("formwerk: only the first %1 of %2 choices are shown\n")
                           .arg(kShownChoices)
                           .arg(choices.size())),
            stderr);
    form.SetPublic(QStringLiteral("Choices"), choices);
    form.SetPublic(QStringLiteral("ChoiceIcons"), inv.extra(QStringLiteral("choice-icon")));
    form.SetPublic(QStringLiteral("Text"), QString::fromStdString(context.Texts.Description));
    form.SetPublic(QStringLiteral("Title"), QString::fromStdString(context.Request.Title));
    return {};
}

void answerChoice(Form& form, const DialogContext&, QJsonObject& answer)
{
    const bool confirmed = form.GetPublic(QStringLiteral("Confirmed")).toBool();
    answer.insert(QStringLiteral("Result"), confirmed ? ResultOk : ResultAbort);
    answer.insert(QStringLiteral("Confirmed"), confirmed);
    answer.insert(QStringLiteral("ChoiceIndex"),
                  form.GetPublic(QStringLiteral("ChoiceIndex")).toInt());
}

// A picture of the veil would be a black rectangle; the choice is what a user reads.
std::unique_ptr<Form> choiceOf(Form& form)
{
    return static_cast<frm_DialogFlash&>(form).MakeChoice();
}

} // namespace

DialogRun CriticalRun()
{
    DialogRun run{
        {QStringLiteral("choice"), QStringLiteral("choice-icon")}, handOver, nullptr, answerChoice};
    run.keysFor = QStringLiteral("frm_DialogCritical");
    run.pictured = choiceOf;
    return run;
}

} // namespace fw::cli
