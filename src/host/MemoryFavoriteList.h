#pragma once
// A favourites list held in memory only. Load and Save keep nothing and
// answer false; a host that stores its lists builds on it, and a chooser
// whose host makes no lists uses it as it is, so that its favourites last
// as long as the dialog. Paths compare exactly. Item of an index out of range
// gives an empty scratch entry that belongs to no list.

#include "host/HostObjects.h"

#include <vector>

namespace fw {

class MemoryFavoriteList : public FavoriteList {
  public:
    int Count() const override;
    FavoriteItem& Item(int index) override;
    bool Contains(const std::string& path) const override;
    void RemoveAt(int index) override;
    void Add(const FavoriteItem& item) override;
    FavoriteItem& AddNew(const std::string& name, const std::string& path) override;
    bool Load(std::uint32_t hive, const std::string& key) override;
    bool Save(std::uint32_t hive, const std::string& key) override;
    bool RemoveKey(const std::string& path) override;

  protected:
    std::vector<FavoriteItem> m_items;

  private:
    FavoriteItem m_scratch;
};

} // namespace fw
