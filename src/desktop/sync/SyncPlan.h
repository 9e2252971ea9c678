#pragma once
// Finding what a synchronisation has to do: the two sides' trees compared
// with the state both had after the last run. Pure: no file is touched.

#include "desktop/sync/SyncSide.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace fw::desktop::sync {

/// One path as both sides had it after the last successful run.
struct SyncRecord {
    SyncItem side1;
    SyncItem side2;
    bool operator==(const SyncRecord&) const = default;
};

/// The protocol of the last run, by path ("/"-separated bytes).
using SyncState = std::map<std::string, SyncRecord>;

struct SyncConflict {
    std::string path;
    std::string reason;     ///< German, for the error list
    bool bothFiles = false; ///< a file changed on both sides (not a file against a folder)
    bool operator==(const SyncConflict&) const = default;
};

/// The eight action lists as "/" paths, in the order they can be carried
/// out: folders to make parents first; no tree to delete lies inside another.
struct SyncPlan {
    std::vector<std::string> DL, DR, DTL, DTR, MKL, MMR, UP, DOWN;
    std::vector<SyncConflict> conflicts;
    /// Paths that need nothing and are the same on both sides now: the next
    /// protocol records them as they are.
    std::vector<std::string> inSync;
    /// Paths of the old protocol whose entries the next one keeps as they were:
    /// conflicts and what lies below entries a side could not read.
    std::vector<std::string> keep;
};

struct SyncPlanInput {
    const SyncTree& side1;
    const SyncTree& side2;
    /// Null on a first run (or when the protocol could not be read): then
    /// nothing is ever deleted.
    const SyncState* last = nullptr;
    /// Entries a side could not list; they and everything below are left alone.
    std::set<std::string> unreadable1, unreadable2;
};

/// Servers round modification times, so a first run takes files of the same
/// size whose times lie this close together as equal.
inline constexpr std::int64_t SyncTimeTolerance = 2;

SyncPlan PlanSync(const SyncPlanInput& input);

} // namespace fw::desktop::sync
