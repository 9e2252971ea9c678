#include "cli/DialogRuns.h"
#include "cli/ProcessDriver.h"
#include "dialogs/frm_DialogProcess.h"

#include <cstdio>

namespace fw::cli {

namespace {

Outcome showDriven(Form& form)
{
    return DriveProgress(static_cast<frm_DialogProcess&>(form), [](const QString& warning) {
        std::fputs(qPrintable(QStringLiteral("formwerk: ") + warning + u'\n'), stderr);
    });
}

// The window shows its Subtitle; --text is where a user of the command puts it.
Outcome textAsSubtitle(Form&, const Invocation&, DialogContext& context)
{
    if (context.Request.Subtitle.empty())
        context.Request.Subtitle = context.Texts.Description;
    return {};
}

} // namespace

DialogRun ProgressRun()
{
    DialogRun run;
    run.prepare = textAsSubtitle;
    run.show = showDriven;
    return run;
}

} // namespace fw::cli
