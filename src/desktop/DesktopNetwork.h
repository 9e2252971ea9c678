#pragma once
// The desktop host's network service: SMB domains, hosts and shares through
// libsmbclient, and drive letters mapped to shares (no mount).

#include "desktop/NetworkDrives.h"
#include "desktop/SmbClient.h"
#include "host/CoreDevServices.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace fw::desktop {

/// Settings are values of the current user's key SettingsKey: "Hosts" (added
/// by hand) and "KnownHosts" (connected to before), both ";"-separated; the
/// client's "TimeoutSeconds" and "Port" (DesktopFiles) live there too.
class DesktopNetwork final : public NetworkService {
  public:
    static constexpr auto SettingsKey = "Software\\Valdrenix\\Core\\Settings\\Network";

    /// The lettered volumes that mapping must leave alone: their type for
    /// "X:" (0 for none) and the UNC path of a mounted network volume.
    struct Volumes {
        std::function<int(const std::string& drive)> typeOf;
        std::function<std::string(const std::string& drive)> uncOf;
    };
    using HostFinder = std::function<std::vector<std::string>()>;
    /// The client shared with the file operations, made on first use.
    using ClientSource = std::function<SmbClient&()>;

    /// registry may be null (no hosts added by hand, nothing remembered).
    /// finder defaults to DNS-SD discovery (HostDiscovery.h).
    DesktopNetwork(ClientSource client, std::shared_ptr<NetworkDrives> drives,
                   std::shared_ptr<CoreDevRegistry> registry, Volumes volumes,
                   HostFinder finder = {});

    /// The browse service's workgroups and always the configured one.
    StringList Domains() override;
    /// The configured workgroup, without browsing: the hosts added by hand and
    /// connected to before are listed under it, and a UNC path needs no wait.
    std::string HomeDomain() override { return ConfiguredWorkgroup(); }
    /// Sorted, each once (case-blind). The configured workgroup adds the hosts
    /// announced through DNS-SD, those added by hand and those connected to before.
    StringList Hosts(const std::string& domain) override;
    /// The disk shares of "host" or "host:port", hidden ones included; empty
    /// when the host refuses or does not answer.
    ShareList Shares(const std::string& host) override;
    /// remote: "\\host[:port]\share[\dir...][\]" or "smb://host[:port]/share[/dir]";
    /// local: "X:\" or "X:", a letter from C to Z that no volume and no mapping
    /// holds. The share, and the folder named below it, must answer. user and
    /// password are not used: the client signs in as SmbClient.h tells.
    /// Returns why it failed.
    std::string Connect(const std::string& remote, const std::string& local,
                        const std::string& user, const std::string& password, bool persist,
                        bool& ok) override;
    bool Disconnect(const std::string& drive) override;
    /// "X:" of each mapped letter, in letter order.
    StringList MappedDrives() override;
    /// "\\host\share[\dir]" of a mapped letter or of a mounted network volume.
    std::string UncOfDrive(const std::string& drive) override;

    /// Called by the owner of the client and the volumes as it goes: from
    /// then on the lists hold only what the store names, and Connect fails.
    void Detach();

    /// The workgroup of smb.conf (libsmbclient's reading), "WORKGROUP" by default.
    static std::string ConfiguredWorkgroup();

  private:
    SmbClient* client();
    std::vector<std::string> storedHosts(const char* value) const;
    void rememberHost(const std::string& host);

    ClientSource m_client;
    std::shared_ptr<NetworkDrives> m_drives;
    std::shared_ptr<CoreDevRegistry> m_registry;
    Volumes m_volumes;
    HostFinder m_finder;
};

} // namespace fw::desktop
