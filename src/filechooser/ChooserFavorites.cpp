#include "filechooser/ChooserFavorites.h"

#include "forms/Resume.h"
#include "host/mdl_CoreDevWrapper.h"

#include <algorithm>
#include <vector>

namespace fw {

namespace {

const std::string kUserKey = "Software\\Valdrenix\\Core\\Settings\\FolderFavorites";
const std::string kAppSuffix = "Ext\\FolderFavorites";

// Stands in when the host makes no favourite lists: the chooser still works,
// its favourites just last as long as the dialog.
class SessionFavoriteList final : public FavoriteList {
  public:
    int Count() const override { return static_cast<int>(m_items.size()); }
    FavoriteItem& Item(int index) override
    {
        return m_items.at(static_cast<std::size_t>(index - 1));
    }
    bool Contains(const std::string& path) const override
    {
        return std::any_of(m_items.begin(), m_items.end(),
                           [&](const FavoriteItem& item) { return item.Path == path; });
    }
    void RemoveAt(int index) override
    {
        if (index >= 1 && index <= Count())
            m_items.erase(m_items.begin() + (index - 1));
    }
    void Add(const FavoriteItem& item) override { m_items.push_back(item); }
    FavoriteItem& AddNew(const std::string& name, const std::string& path) override
    {
        m_items.push_back(FavoriteItem{name, {}, {}, path});
        return m_items.back();
    }
    bool Load(std::uint32_t, const std::string&) override { return false; }
    bool Save(std::uint32_t, const std::string&) override { return false; }
    bool RemoveKey(const std::string& path) override
    {
        return std::erase_if(m_items, [&](const FavoriteItem& item) { return item.Path == path; }) >
               0;
    }

  private:
    std::vector<FavoriteItem> m_items;
};

void ensureList(std::shared_ptr<FavoriteList>& list)
{
    if (!list)
        Resume([&] { list = GetCoreDevRegistry().NewFavoriteList(); });
    if (!list)
        list = std::make_shared<SessionFavoriteList>();
}

// The application's list lives below the application's own key; a host
// without one has no application list to read or write.
std::string appKey()
{
    std::string key;
    Resume([&] { key = GetCoreDevApp().RegistryKey(); });
    return key.empty() ? std::string() : key + kAppSuffix;
}

int countOf(const std::shared_ptr<FavoriteList>& list)
{
    return list ? list->Count() : 0;
}

} // namespace

void ChooserFavorites::Load()
{
    ensureList(App);
    ensureList(User);
    if (const std::string key = appKey(); !key.empty())
        Resume([&] { App->Load(HiveCurrentUser, key); });
    Resume([&] { User->Load(HiveCurrentUser, kUserKey); });
}

void ChooserFavorites::Save()
{
    ensureList(App);
    ensureList(User);
    if (const std::string key = appKey(); !key.empty())
        Resume([&] { App->Save(HiveCurrentUser, key); });
    Resume([&] { User->Save(HiveCurrentUser, kUserKey); });
}

int ChooserFavorites::Total() const
{
    return countOf(App) + countOf(User);
}

bool ChooserFavorites::Contains(const std::string& path) const
{
    return (User && User->Contains(path)) || (App && App->Contains(path));
}

} // namespace fw
