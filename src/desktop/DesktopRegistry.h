#pragma once
// Registry and named settings of the desktop host, both over one SettingsStore.

#include "desktop/SettingsStore.h"
#include "host/CoreDevServices.h"

#include <memory>

namespace fw::desktop {

/// The current user's hive (0x80000001) lives in the store under
/// "HKEY_CURRENT_USER". The classes root (0x80000000) is the installed MIME
/// database, read-only (see MimeClasses.h): its numbers read as the default
/// and writes are refused. Any other hive answers defaults and refuses writes.
class DesktopRegistry final : public CoreDevRegistry, RegistryStrings, RegistryWriter {
  public:
    explicit DesktopRegistry(std::shared_ptr<SettingsStore> store);

    RegistryStrings& Strings() override { return *this; }
    RegistryWriter& Writer() override { return *this; }
    std::shared_ptr<FavoriteList> NewFavoriteList() override;

    /// A number reads as its decimal text; limit > 0 caps the length in characters.
    std::string ReadString(std::uint32_t hive, const std::string& key,
                           const std::string& defaultValue, int limit) override;
    /// A text reads as a number if it is one, else the default.
    std::int32_t ReadNumber(std::uint32_t hive, const std::string& key,
                            std::int32_t defaultValue) override;
    bool WriteNumber(std::uint32_t hive, const std::string& key, std::int32_t value) override;
    bool WriteString(std::uint32_t hive, const std::string& key, const std::string& value) override;

  private:
    std::optional<QString> textOf(std::uint32_t hive, const std::string& key) const;

    std::shared_ptr<SettingsStore> m_store;
};

/// Named switches such as "Touchmode". An environment variable
/// FORMWERK_<NAME> (upper case, "1"/"true"/"yes"/"on" or "0"/...) wins; else
/// the value <name> of the key Software\Valdrenix\Core\Settings of the
/// current user's hive: a number not 0 or a text like "true" is on. Absent: off.
class DesktopSettings final : public CoreDevSettings {
  public:
    static constexpr auto SettingsKey = "Software\\Valdrenix\\Core\\Settings";

    explicit DesktopSettings(std::shared_ptr<SettingsStore> store);
    bool GetBool(const std::string& name) override;

  private:
    std::shared_ptr<SettingsStore> m_store;
};

} // namespace fw::desktop
