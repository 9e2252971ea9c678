#include "core/cls_HiddenDC.h"

#include "forms/Pictures.h"

#include <QPainter>
#include <algorithm>

namespace fw {

void cls_HiddenDC::SetWidth(std::int32_t width)
{
    if (width > m_width)
        Create(width, m_height);
}

void cls_HiddenDC::SetHeight(std::int32_t height)
{
    if (height > m_height)
        Create(m_width, height);
}

void cls_HiddenDC::Create(std::int32_t width, std::int32_t height)
{
    if (width == m_width && height == m_height)
        return;
    Free();
    // A size with a zero side still makes a surface, of one pixel, and keeps
    // the size asked for: growing the other side later must see it.
    QImage surface(std::max(width, 1), std::max(height, 1), QImage::Format_ARGB32_Premultiplied);
    if (surface.isNull() || width < 0 || height < 0)
        return; // no room for it: an empty surface of size 0
    surface.fill(Qt::black);
    m_surface = std::move(surface);
    m_width = width;
    m_height = height;
}

void cls_HiddenDC::CreateFromPicture(const QImage& picture)
{
    SetWidth(picture.width());
    SetHeight(picture.height());
    if (m_surface.isNull() || picture.isNull())
        return;
    QPainter painter(&m_surface);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(0, 0, picture);
}

void cls_HiddenDC::CreateFromPicture(const PicturePtr& picture)
{
    CreateFromPicture(ToImage(picture));
}

void cls_HiddenDC::Free()
{
    m_surface = QImage();
    m_width = 0;
    m_height = 0;
}

} // namespace fw
