#include "host/MemoryFavoriteList.h"

#include <algorithm>

namespace fw {

int MemoryFavoriteList::Count() const
{
    return static_cast<int>(m_items.size());
}

FavoriteItem& MemoryFavoriteList::Item(int index)
{
    if (index < 1 || index > Count()) {
        m_scratch = {};
        return m_scratch;
    }
    return m_items[static_cast<std::size_t>(index - 1)];
}

bool MemoryFavoriteList::Contains(const std::string& path) const
{
    return std::any_of(m_items.begin(), m_items.end(),
                       [&](const FavoriteItem& item) { return item.Path == path; });
}

void MemoryFavoriteList::RemoveAt(int index)
{
    if (index >= 1 && index <= Count())
        m_items.erase(m_items.begin() + (index - 1));
}

void MemoryFavoriteList::Add(const FavoriteItem& item)
{
    m_items.push_back(item);
}

FavoriteItem& MemoryFavoriteList::AddNew(const std::string& name, const std::string& path)
{
    m_items.push_back(FavoriteItem{name, {}, {}, path});
    return m_items.back();
}

bool MemoryFavoriteList::Load(std::uint32_t, const std::string&)
{
    return false;
}

bool MemoryFavoriteList::Save(std::uint32_t, const std::string&)
{
    return false;
}

bool MemoryFavoriteList::RemoveKey(const std::string& path)
{
    return std::erase_if(m_items, [&](const FavoriteItem& item) { return item.Path == path; }) > 0;
}

} // namespace fw
