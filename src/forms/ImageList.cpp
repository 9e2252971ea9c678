#include "forms/ImageList.h"

#include "forms/ControlError.h"

#include <QPixmap>

namespace fw {

bool IsNumericKey(const QString& key)
{
    bool number = false;
    key.trimmed().toDouble(&number);
    return number;
}

ImageList::ImageList(Form& form, const QString& name)
    : Control(form, name, QStringLiteral("ImageList"), nullptr)
{
}

void ImageList::SetImageSize(int width, int height)
{
    if (!m_items.empty() || width <= 0 || height <= 0)
        throw ControlError(ControlError::InvalidPropertyValue, "Invalid property value");
    m_width = width;
    m_height = height;
}

int ImageList::Add(const QString& key, const QImage& picture)
{
    if (!key.isEmpty() && IsNumericKey(key))
        throw ControlError(ControlError::InvalidKey, "Invalid key");
    if (!key.isEmpty() && m_byKey.contains(key))
        throw ControlError(ControlError::KeyNotUnique, "Key is not unique in collection");
    QImage scaled = picture;
    if (!scaled.isNull() && scaled.size() != QSize(m_width, m_height))
        scaled = scaled.scaled(m_width, m_height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    m_items.push_back({key, scaled, QIcon(QPixmap::fromImage(scaled))});
    const int index = Count();
    if (!key.isEmpty())
        m_byKey.insert(key, index);
    return index;
}

int ImageList::indexOf(const QVariant& indexOrKey) const
{
    if (indexOrKey.typeId() == QMetaType::QString) {
        const int index = IndexOf(indexOrKey.toString());
        if (index == 0)
            throw ControlError(ControlError::ElementNotFound, "Element not found");
        return index;
    }
    const int index = indexOrKey.toInt();
    if (index < 1 || index > Count())
        throw ControlError(ControlError::IndexOutOfBounds, "Index out of bounds");
    return index;
}

QImage ImageList::Picture(const QVariant& indexOrKey) const
{
    return m_items[std::size_t(indexOf(indexOrKey) - 1)].picture;
}

QIcon ImageList::Icon(int index) const
{
    if (index < 1 || index > Count())
        return {};
    return m_items[std::size_t(index - 1)].icon;
}

QString ImageList::Key(int index) const
{
    if (index < 1 || index > Count())
        return {};
    return m_items[std::size_t(index - 1)].key;
}

void ImageList::Clear()
{
    m_items.clear();
    m_byKey.clear();
}

QVariant ImageList::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"IMAGEWIDTH")
        return m_width;
    if (key == u"IMAGEHEIGHT")
        return m_height;
    if (key == u"LISTCOUNT")
        return Count();
    return Control::GetProperty(name);
}

bool ImageList::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"IMAGEWIDTH")
        SetImageSize(value.toInt(), m_height);
    else if (key == u"IMAGEHEIGHT")
        SetImageSize(m_width, value.toInt());
    else
        return Control::SetProperty(name, value);
    return true;
}

} // namespace fw
