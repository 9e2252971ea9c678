#pragma once
// The progress window on the command line: shown without waiting and driven
// by lines on standard input. A number sets the value, "range LOW HIGH" the
// bounds, "# TEXT" the text shown above the bar; the end of the input ends
// the window. The abort button ends it too, and the reading with it.

#include "cli/DialogRuns.h"

#include <QByteArrayView>
#include <QString>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>

namespace fw {
class frm_DialogProcess;
}

namespace fw::cli {

/// What the lines read in one pass ask of the window: of each kind only the
/// last counts, since the window shows one state per pass anyway.
struct ProgressUpdate {
    std::optional<std::int32_t> value;
    std::optional<std::pair<std::int32_t, std::int32_t>> range;
    std::optional<QString> text;
    bool empty() const { return !value && !range && !text; }
};

/// Reads one input line (without its newline) into update; false for a line
/// that is none of the commands. Blank lines are no command and count as understood.
bool ReadProgressLine(QByteArrayView line, ProgressUpdate& update);

/// Shows what update asks for; a value lets pending events run once.
void ApplyProgress(frm_DialogProcess& form, const ProgressUpdate& update);

/// Shows form, feeds it the input (standard input unless another descriptor
/// is given) until the input ends, the user aborts or the window is closed,
/// and returns once the window is gone. Lines that mean nothing go to warn and
/// the window goes on; a line longer than the input limit ends the run with
/// ExitData.
Outcome DriveProgress(frm_DialogProcess& form, const std::function<void(const QString&)>& warn,
                      int inputFd = 0);

} // namespace fw::cli
