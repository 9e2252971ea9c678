#pragma once
// The synchronisation's six tasks over two sides: list side 1, list side 2,
// find the changes against the protocol of the last run, confirm them, carry
// them out, write the new protocol. It reports through the progress window
// and counts into the job.

#include "desktop/sync/SyncSide.h"
#include "host/SyncJob.h"

#include <memory>
#include <string>

namespace fw::desktop::sync {

/// A folder on this machine as a side: location ("C:\home\anna\Daten") or
/// Linux path. Deletions go to the desktop's trash unless job.DeleteForGood.
/// Null with a reason if it is no folder.
std::unique_ptr<SyncSide> MakeLocalFolder(const std::string& folder, const SyncJob& job,
                                          std::string& error);

/// side1 is the local folder; side2 the second folder or the FTP folder.
/// Returns SyncFinished, SyncCancelled or SyncFailed (bad places: nothing
/// changed, the reason in the error list).
///
/// The protocol is written only after a run that was not cancelled, and keeps
/// the old entries of whatever failed or was left out, so that the next run
/// plans it again. With job.KeepBothOnConflict, the side 2 copy of a file
/// changed on both sides goes to "Name (Konflikt 2026-11-23 2215).ext" (local
/// time of the run) beside it on both sides; the file itself stays as it is on
/// each side and the conflict is still reported.
SyncOutcome RunSync(SyncSide& side1, SyncSide& side2, SyncProgress& window, SyncJob& job);

} // namespace fw::desktop::sync
