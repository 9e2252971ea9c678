#pragma once
// The desktop host's boundary between the dialogs' location strings
// ("C:\home\anna\Bericht.txt", UTF-8) and Linux paths (bytes).
//
// File names on Linux are any bytes but "/" and NUL, while a location string
// is UTF-8 that gives "\" and ":" a meaning. A name therefore travels
// escaped: every byte that is not part of valid UTF-8, every character of
// EscapedCharacters and every character of the escape block itself becomes
// U+F700 + byte value (one private-use character per byte). Everything else,
// newlines, tabs and bidi controls included, passes unchanged, so that
// NameFromLocation(NameToLocation(b)) == b for every byte sequence b.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fw::desktop {

/// Byte b of an escaped name is the character U+F700 + b.
inline constexpr char32_t EscapedByteBase = 0xF700;

/// Characters a name never shows as themselves inside a location string:
/// the separators of locations and the wildcards and separators of filters.
inline constexpr std::string_view EscapedCharacters = "\\:*?\"<>|";

/// A mounted volume that has a drive letter other than C: (which is "/").
struct DriveRoot {
    char letter = 0;        ///< 'D' to 'Z'
    std::string mountPoint; ///< the volume's folder, bytes, without trailing "/"
};

/// One file name (bytes, no "/") as it stands in a location string.
std::string NameToLocation(std::string_view bytes);

/// The bytes of a name from a location string; the inverse of NameToLocation.
/// Characters that NameToLocation never makes pass as their UTF-8.
std::string NameFromLocation(std::string_view name);

/// A name (as in a location string) made safe for one line of a list: control
/// characters show as the Unicode control pictures (a newline as U+2424),
/// bidi controls as "[U+202E]", escaped characters as themselves and
/// undecodable bytes as U+FFFD. For display only: it does not map back.
std::string DisplayName(std::string_view locationName);

/// An absolute Linux path as a location: "/home/anna/x.txt" is
/// "C:\home\anna\x.txt", "/" is "C:\", a path inside a lettered volume starts
/// with that volume's letter (the deepest mount wins). A trailing "/" stays as
/// a trailing "\". A relative or empty path gives an empty text.
std::string PosixToLocation(std::string_view posixPath, const std::vector<DriveRoot>& drives = {});

/// The Linux path of a location: "C:\" (or "c:") and the lettered volumes
/// map back; a path that already starts with "/" is taken as it is. Pseudo
/// paths, UNC paths, relative texts and unknown letters give nothing.
std::optional<std::string> LocationToPosix(std::string_view location,
                                           const std::vector<DriveRoot>& drives = {});

/// What a user typed into a name box, if it is a Linux path: "/etc/hosts",
/// "~" and "~/x.txt" (home is the user's home folder). The typed text is taken
/// as the bytes of the path. Anything else (a plain name, "C:\...") gives
/// nothing, so that the caller treats it as a name.
std::optional<std::string> TypedPathToLocation(std::string_view typed, std::string_view home,
                                               const std::vector<DriveRoot>& drives = {});

} // namespace fw::desktop
