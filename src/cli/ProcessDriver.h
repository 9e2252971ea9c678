#pragma once
// The progress window on the command line: shown without waiting and driven
// by lines on standard input. A number sets the value, "range LOW HIGH" the
// bounds; the end of the input ends the window. The abort button ends it too,
// and the reading with it.

#include <QString>
#include <functional>

namespace fw {
class frm_DialogProcess;
}

namespace fw::cli {

/// Applies one input line to the window; false for a line that is neither a
/// value nor a range. Blank lines are no command and count as understood.
bool ApplyProgressLine(frm_DialogProcess& form, const QString& line);

/// Shows form, feeds it standard input until the input ends, the user aborts
/// or the window is closed, and returns once the window is gone. Lines that
/// mean nothing go to warn and the window goes on.
void DriveProgress(frm_DialogProcess& form, const std::function<void(const QString&)>& warn);

} // namespace fw::cli
