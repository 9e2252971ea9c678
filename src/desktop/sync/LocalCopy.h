#pragma once
// Copying one file on this machine so that the target is either as it was or
// complete: through a temporary file beside it and a rename.

#include "desktop/sync/SyncSide.h"

#include <cstdint>
#include <string>

namespace fw::desktop::sync {

/// The temporary name beside a target: ".Name.fwsync-XXXXXX". Listings leave
/// such names out, so that one left by a crash is never synchronised.
bool IsSyncTemporary(std::string_view name);

/// Copies source to target (Linux paths). Holes of a sparse source stay holes;
/// the copy goes in chunks of 1 MiB, asking watch between them. The copy's
/// size is checked, its permissions and modification time (mtime, seconds; 0
/// keeps the source's) set, and then it is renamed over target. expectedSize
/// (-1: any) is the size the caller listed: a source that differs has changed
/// since and is not copied. On failure or cancel target is untouched and the
/// temporary gone; error says why.
bool CopyLocalFile(const std::string& source, const std::string& target, std::int64_t mtime,
                   std::int64_t expectedSize, const SyncSignals& watch, std::string& error);

} // namespace fw::desktop::sync
