#include "cli/DialogRuns.h"

namespace fw::cli {

// The form is not in the library yet; the row names the options it will read.
DialogRun NumericTouchRun()
{
    return {{}};
}

} // namespace fw::cli
