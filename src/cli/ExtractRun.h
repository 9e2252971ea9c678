#pragma once
// formwerk --extract RESOURCE DEST: one resource of the desktop host's
// picture store, from its folder or a package, written out for scripts.

#include "cli/DialogRuns.h"

namespace fw::cli {

/// Writes inv.extract to inv.extractTo; silent on success, exit 1 with the
/// reason otherwise.
Outcome RunExtract(const Invocation& inv);

} // namespace fw::cli
