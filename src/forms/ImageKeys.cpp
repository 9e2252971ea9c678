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
    if (!list->Exists(key))
        throw ControlError(ControlError::ElementNotFound, "Element not found");
    if (const auto it = m_ids.constFind(key); it != m_ids.cend())
        return *it;
    if (m_keys.size() > 0xffff)
        throw ControlError(ControlError::IndexOutOfBounds, "Index out of bounds");
    const auto id = std::uint16_t(m_keys.size());
    m_keys.push_back(key);
    m_ids.insert(key, id);
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
