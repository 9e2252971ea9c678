#pragma once
// Replacing a file's content so that readers see the old content or the new,
// never a part, for any Linux file name.

#include <string_view>

namespace fw::desktop {

/// Writes bytes to path (a Linux path, any bytes) through a temporary file in
/// the same folder and a rename. An existing file keeps its permissions; a
/// new one gets 0666 less the umask. False, with the old file untouched and
/// no temporary file left, if anything fails.
bool WriteFileAtomically(const std::string& path, std::string_view bytes);

} // namespace fw::desktop
