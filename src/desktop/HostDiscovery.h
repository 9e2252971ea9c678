#pragma once
// Hosts that announce file sharing on the local link (DNS-SD "_smb._tcp"),
// found through the Avahi daemon.

#include <string>
#include <vector>

namespace fw::desktop {

/// The host names ("nas.local", with ":port" where the service is not on
/// 445) of the SMB services announced now, sorted, each once. Browses for at
/// most timeoutMs and ends earlier once the daemon has told all it knows.
/// Where no Avahi daemon runs (containers, CI) the answer is empty at once.
std::vector<std::string> DiscoverSmbHosts(int timeoutMs = 1500);

} // namespace fw::desktop
