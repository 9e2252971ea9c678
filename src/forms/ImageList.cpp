#include "forms/ImageList.h"

#include "forms/ControlError.h"

#include <QPixmap>
#include <algorithm>

namespace fw {

bool IsNumericKey(const QString& key)
{
    // Every row of a folder listing passes through here, and nearly every key
    // is a path or a name: one that cannot begin a number is turned away
    // before the full parse, which costs more than the rest of adding a row.
    const auto first =
        std::find_if_not(key.cbegin(), key.cend(), [](QChar c) { return c.isSpace(); });
    if (first == key.cend() || (!first->isDigit() && !QStringView(u"+-.iInN").contains(*first)))
        return false;
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

namespace {

// Exact matches only: a near colour is a picture's own shading, not its mask.
QImage withoutMaskColour(const QImage& picture, QRgb mask)
{
    QImage image = picture.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            if ((line[x] & RGB_MASK) == (mask & RGB_MASK) && qAlpha(line[x]) == 255)
                line[x] = 0;
    }
    return image;
}

} // namespace

void ImageList::SetMaskColor(std::uint32_t bgr)
{
    m_maskColor = bgr & 0xFFFFFFu;
    m_masked = true;
}

int ImageList::Add(const QString& key, const QImage& picture, const QString& tag)
{
    if (!key.isEmpty() && IsNumericKey(key))
        throw ControlError(ControlError::InvalidKey, "Invalid key");
    if (!key.isEmpty() && m_byKey.contains(key))
        throw ControlError(ControlError::KeyNotUnique, "Key is not unique in collection");
    // Masked before scaling, which would blend the mask into its neighbours.
    QImage scaled =
        m_masked && !picture.isNull()
            ? withoutMaskColour(picture, qRgb(int(m_maskColor & 0xFF), int(m_maskColor >> 8 & 0xFF),
                                              int(m_maskColor >> 16 & 0xFF)))
            : picture;
    if (!scaled.isNull() && scaled.size() != QSize(m_width, m_height))
        scaled = scaled.scaled(m_width, m_height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    m_items.push_back({key, tag, scaled, QIcon(QPixmap::fromImage(scaled))});
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

QString ImageList::Tag(const QVariant& indexOrKey) const
{
    return m_items[std::size_t(indexOf(indexOrKey) - 1)].tag;
}

void ImageList::Clear()
{
    ++m_clears;
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
    if (key == u"MASKCOLOR")
        return m_maskColor;
    return Control::GetProperty(name);
}

bool ImageList::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"IMAGEWIDTH")
        SetImageSize(value.toInt(), m_height);
    else if (key == u"IMAGEHEIGHT")
        SetImageSize(m_width, value.toInt());
    else if (key == u"MASKCOLOR")
        SetMaskColor(value.toUInt());
    else
        return Control::SetProperty(name, value);
    return true;
}

} // namespace fw
