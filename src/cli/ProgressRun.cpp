#include "cli/DialogRuns.h"
#include "cli/ProcessDriver.h"
#include "dialogs/frm_DialogProcess.h"

#include <cstdio>

namespace fw::cli {

namespace {

void showDriven(Form& form)
{
    DriveProgress(static_cast<frm_DialogProcess&>(form), [](const QString& warning) {
        std::fputs(qPrintable(QStringLiteral("formwerk: ") + warning + u'\n'), stderr);
    });
}

} // namespace

DialogRun ProgressRun()
{
    DialogRun run;
    run.show = showDriven;
    return run;
}

} // namespace fw::cli
