#pragma once
// Whether the display server that Qt's platform plugin will ask for answers.
// Qt aborts the process when it cannot connect; asking first lets the command
// say so in its own words and exit with its own code.

#include <QString>

namespace fw::cli {

/// Why no display server answers for this environment, or an empty string
/// (also for platforms that need no server).
QString UnreachableDisplay();

} // namespace fw::cli
