#pragma once
// Drive letters mapped to network shares: "X:\" stands for "\\host\share\"
// or a folder below it ("\\host\share\dir\").
// No mount: the desktop host's file services read "X:\..." as the UNC path.

#include "host/CoreDevServices.h"

#include <map>
#include <memory>
#include <string>

namespace fw::desktop {

/// "\\host[:port]\share[\dir...]" as a mapping holds it: no trailing "\", no
/// empty names; empty for a text that names no share.
std::string MappableUnc(const std::string& unc);

/// Mappings asked to persist live in the settings store (current user, under
/// StoreKey, one value per letter holding the UNC path); the others last as
/// long as the process. Letters are "C" to "Z"; a mapping never takes a letter
/// that a mounted volume holds (the caller checks before mapping).
class NetworkDrives {
  public:
    static constexpr auto StoreKey = "Software\\Valdrenix\\Core\\Settings\\NetworkDrives";

    /// registry may be null: then nothing persists.
    explicit NetworkDrives(std::shared_ptr<CoreDevRegistry> registry);

    /// "X:", "x:\" or "X"; false for a letter outside C..Z or a UNC path that
    /// names no share (MappableUnc).
    bool Map(const std::string& drive, const std::string& unc, bool persist);
    bool Unmap(const std::string& drive);
    /// "\\host\share[\dir]" (no trailing "\"), empty for a letter without mapping.
    std::string UncOf(const std::string& drive) const;
    /// Letter -> UNC path, in letter order.
    std::map<char, std::string> All() const;
    /// A location on a mapped letter as its UNC location ("X:\a\b" ->
    /// "\\host\share\a\b"); any other text unchanged.
    std::string Resolve(const std::string& location) const;

  private:
    std::shared_ptr<CoreDevRegistry> m_registry;
    std::map<char, std::string> m_session;
    mutable std::map<char, std::string> m_persisted;
    mutable bool m_loaded = false;
};

} // namespace fw::desktop
