#pragma once
// The classes root of the desktop host: a read-only view of the installed
// shared-mime-info database, shaped as the registry keys of file types.

#include <optional>
#include <string>

namespace fw::desktop {

/// Reads one value "key path\value name" (an empty name is the key's default
/// value), answering as a registry of file types would:
///  - ".txt\" (default of ".txt"): the MIME type name, "text/plain", taken as
///    the type's ProgId; case of the extension ignored.
///  - "text/plain\" : the type's comment in the user interface language.
///  - "text/plain\DefaultIcon\" : the theme icon name, "text-plain", or the
///    generic one ("text-x-generic") when the theme has no icon of its own
///    for the type; nothing when the theme has neither (or no theme is
///    installed), as for a type without an icon.
/// Nothing for unknown extensions and types and for every other value.
std::optional<std::string> ReadMimeClass(const std::string& key);

} // namespace fw::desktop
