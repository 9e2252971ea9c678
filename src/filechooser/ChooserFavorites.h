#pragma once
// The two favourite lists of a chooser: the application's own (below its
// registry key + "Ext\FolderFavorites") and the user's across all
// applications ("Software\Valdrenix\Core\Settings\FolderFavorites"), both in
// the current user's hive. Loaded when a chooser opens, saved after each
// change.

#include "host/HostObjects.h"

#include <memory>
#include <string>

namespace fw {

class ChooserFavorites {
  public:
    /// Made through the host on first use; never null after Load.
    std::shared_ptr<FavoriteList> App;
    std::shared_ptr<FavoriteList> User;

    void Load();
    void Save();
    /// Entries of both lists together.
    int Total() const;
    /// Whether either list holds a target.
    bool Contains(const std::string& path) const;
};

} // namespace fw
