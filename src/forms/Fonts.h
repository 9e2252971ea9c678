#pragma once
// Font families that this machine really has.

#include <QString>

namespace fw {

/// An installed family whose glyphs all have one width: the desktop's fixed
/// font if it is one, else a common monospace family, else any the font
/// database knows. Needs the GUI application.
QString FixedPitchFamily();

} // namespace fw
