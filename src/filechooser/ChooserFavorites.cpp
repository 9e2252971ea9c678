#include "filechooser/ChooserFavorites.h"

#include "forms/Resume.h"
#include "host/MemoryFavoriteList.h"
#include "host/mdl_CoreDevWrapper.h"

#include <algorithm>
#include <vector>

namespace fw {

namespace {

const std::string kUserKey = "Software\\Valdrenix\\Core\\Settings\\FolderFavorites";
const std::string kAppSuffix = "Ext\\FolderFavorites";

void ensureList(std::shared_ptr<FavoriteList>& list)
{
    if (!list)
        Resume([&] { list = GetCoreDevRegistry().NewFavoriteList(); });
    if (!list)
        // Without lists of the host the chooser still works; its favourites
        // just last as long as the dialog.
        list = std::make_shared<MemoryFavoriteList>();
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
