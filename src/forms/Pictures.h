#pragma once
// The forms layer's picture type is QImage; these convert to and from the
// host's toolkit-free picture.

#include "host/Picture.h"

#include <QImage>

namespace fw {

QImage ToImage(const Picture& picture);
inline QImage ToImage(const PicturePtr& picture)
{
    return picture ? ToImage(*picture) : QImage();
}
PicturePtr FromImage(const QImage& image);

} // namespace fw
