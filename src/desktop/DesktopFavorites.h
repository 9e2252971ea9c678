#pragma once
// Favourite folders of the desktop host, kept in the settings store.

#include "desktop/SettingsStore.h"
#include "host/MemoryFavoriteList.h"

#include <memory>
#include <vector>

namespace fw::desktop {

/// A list of favourites under one key of the current user's hive. The key
/// holds "Count" and, for entry n from 1, the values "Name<n>",
/// "Description<n>", "Icon<n>" and "Path<n>"; Save replaces the whole key in
/// one atomic write of the store, so a second list never reads half a list.
///
/// Load reads leniently: a Count that is no number reads as 0, entries stop at
/// the first one without a Path text (a shortened list), and a field that is
/// no text reads as empty. Other hives than the current user's read as empty
/// and refuse to save.
///
/// Contains and RemoveKey compare paths without case and without a trailing
/// backslash, as the dialogs name folders by location strings compared in
/// capitals ("C:\HOME\ANNA\" is the folder "C:\home\anna"); RemoveKey removes
/// every entry of that path.
class DesktopFavoriteList final : public MemoryFavoriteList {
  public:
    explicit DesktopFavoriteList(std::shared_ptr<SettingsStore> store);

    bool Contains(const std::string& path) const override;
    bool Load(std::uint32_t hive, const std::string& key) override;
    bool Save(std::uint32_t hive, const std::string& key) override;
    bool RemoveKey(const std::string& path) override;

  private:
    std::shared_ptr<SettingsStore> m_store;
};

} // namespace fw::desktop
