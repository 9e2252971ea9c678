#pragma once
// What a synchronisation window and the host's synchronisation hand each
// other: the window's four methods and cancel flag, the eight action lists
// that the confirmation shows, and the job record with the caller's options
// and the counts of the run.

#include "host/StringList.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace fw {

/// The planned actions, one list per kind. Side 1 is the "local" side (the
/// first folder), side 2 the "remote" one (the second folder or the FTP
/// server). Each entry is a path relative to its side's root, in location
/// form ("Ordner\Datei.txt"); folders carry no trailing "\".
struct SyncActions {
    StringList DL;   ///< delete a file on side 1
    StringList DR;   ///< delete a file on side 2
    StringList DTL;  ///< delete a folder tree on side 1
    StringList DTR;  ///< delete a folder tree on side 2
    StringList MKL;  ///< make a folder on side 1
    StringList MMR;  ///< make a folder on side 2
    StringList UP;   ///< copy a file from side 1 to side 2
    StringList DOWN; ///< copy a file from side 2 to side 1

    /// The list of a key ("DL", "UP", ...), exact case; null for any other.
    StringList* ByKey(std::string_view key);
    const StringList* ByKey(std::string_view key) const;
    /// The number of entries of all eight lists.
    int Total() const;
    bool operator==(const SyncActions&) const = default;
};

/// The keys in the order the confirmation lists them.
inline constexpr std::string_view SyncActionKeys[] = {"DL",  "DR",  "DTL", "DTR",
                                                       "MKL", "MMR", "UP",  "DOWN"};

/// What the caller asks of a run and what the run reports back.
struct SyncJob {
    // In: options.
    bool DryRun = false;      ///< plan and confirm, change nothing
    bool ConfirmAll = false;  ///< carry out the whole plan without asking
    bool DeleteForGood = false; ///< local deletions skip the trash
    /// A file changed on both sides since the last run is left alone and
    /// reported; with this, the side 2 copy is also kept beside the side 1
    /// file under a name that says so, and both sides then hold both.
    bool KeepBothOnConflict = false;

    // Out: counts of the run.
    int Done = 0;      ///< actions carried out
    int Skipped = 0;   ///< planned actions not carried out (unchecked, cancelled, dry run)
    int Errors = 0;    ///< actions and steps that failed (each also in the error list)
    int Conflicts = 0; ///< files changed on both sides, left as they were
};

/// What a run returns.
enum SyncOutcome : std::int32_t {
    SyncFailed = 0,    ///< could not start (bad places), nothing changed
    SyncFinished = 1,  ///< ran to its end; Errors tells whether all went well
    SyncCancelled = 2, ///< cancelled or not confirmed; what was done is in the log
};

/// The progress window as the host's synchronisation sees it. Called on the
/// interface thread; SHOWTASK and PROGRESS let the message loop run once, so
/// that the cancel button stays alive.
class SyncProgress {
  public:
    virtual ~SyncProgress() = default;
    /// Marks task n (1: list side 1, 2: list side 2, 3: find changes,
    /// 4: confirm, 5: carry out, 6: write the protocol).
    virtual void SHOWTASK(std::int32_t n) = 0;
    virtual void LOG(const std::string& text) = 0;
    virtual void PROGRESS(std::int32_t value, std::int32_t max) = 0;
    /// One error: what failed, on which path, and why.
    virtual void LOGERROR(const std::string& a, const std::string& b, const std::string& c) = 0;
    /// The cancel flag the user sets through the window.
    virtual bool Cancelled() const = 0;
    /// Shows the plan for confirmation, modally; true once the user confirmed,
    /// and the lists then hold exactly what is to be done. False leaves them.
    virtual bool Confirm(SyncActions& actions) = 0;
};

} // namespace fw
