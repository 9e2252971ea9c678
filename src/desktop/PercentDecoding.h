#pragma once
// Percent escapes ("%C3%84") of the URLs the desktop host reads: SMB
// addresses and FTP accounts.

#include <string>
#include <string_view>

namespace fw::desktop {

/// The bytes of text with every "%XX" escape decoded. A "%" that starts no
/// escape stands for itself, as a typed address may hold one; brokenEscape,
/// where given, is set when that happened, for callers that must refuse it.
std::string PercentDecoded(std::string_view text, bool* brokenEscape = nullptr);

} // namespace fw::desktop
