#pragma once
// Replacing a file's content so that readers see the old content or the new,
// never a part, for any Linux file name.

#include <functional>
#include <string>
#include <string_view>

namespace fw::desktop {

/// Writes bytes to path (a Linux path, any bytes) through a temporary file in
/// the same folder and a rename. An existing file keeps its permissions; a
/// new one gets 0666 less the umask. False, with the old file untouched and
/// no temporary file left, if anything fails.
bool WriteFileAtomically(const std::string& path, std::string_view bytes);

/// Writes piece by piece what produce hands to its writer, the same way.
/// The writer answers false once a piece could not be written; produce
/// answers false to give up, which leaves the old file untouched too.
using PieceWriter = std::function<bool(std::string_view piece)>;
bool WriteFileAtomically(const std::string& path,
                         const std::function<bool(const PieceWriter& write)>& produce);

} // namespace fw::desktop
