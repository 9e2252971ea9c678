#include "forms/ImageKeys.h"

#include "forms/ControlError.h"
#include "forms/ImageList.h"

namespace fw {

std::uint16_t ImageKeys::idOf(const QString& key, const ImageList* list)
{
    if (key.isEmpty())
        return 0;
    if (!list)
        throw ControlError(ControlError::ImageListNotInitialized,
                           "ImageList must be initialized before it can be used");
    for (const Recent& recent : m_recent)
        if (recent.list == list && recent.clears == list->Clears() && recent.key == key)
            return recent.id;
    if (!list->Exists(key))
        throw ControlError(ControlError::ElementNotFound, "Element not found");
    std::uint16_t id = 0;
    if (const auto it = m_ids.constFind(key); it != m_ids.cend()) {
        id = *it;
    } else {
        if (m_keys.size() > 0xffff)
            throw ControlError(ControlError::IndexOutOfBounds, "Index out of bounds");
        id = std::uint16_t(m_keys.size());
        m_keys.push_back(key);
        m_ids.insert(key, id);
    }
    Recent& slot = m_recent[0].list == list   ? m_recent[0]
                   : m_recent[1].list == list ? m_recent[1]
                                              : m_recent[m_nextRecent++ % 2];
    slot = {list, list->Clears(), key, id};
    return id;
}

QIcon ImageKeys::iconOf(std::uint16_t id, const ImageList* list) const
{
    if (!id || !list)
        return {};
    const int index = list->IndexOf(m_keys[id]);
    return index ? list->Icon(index) : QIcon();
}

} // namespace fw
