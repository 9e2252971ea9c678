#include "forms/Pictures.h"

#include <cstring>

namespace fw {

QImage ToImage(const Picture& picture)
{
    if (picture.IsNull() ||
        picture.Pixels().size() < size_t(picture.Width()) * size_t(picture.Height()))
        return {};
    QImage image(picture.Width(), picture.Height(), QImage::Format_ARGB32);
    for (int y = 0; y < picture.Height(); ++y)
        std::memcpy(image.scanLine(y), picture.Pixels().data() + size_t(y) * picture.Width(),
                    size_t(picture.Width()) * sizeof(std::uint32_t));
    return image;
}

PicturePtr FromImage(const QImage& image)
{
    if (image.isNull())
        return nullptr;
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    std::vector<std::uint32_t> pixels(size_t(argb.width()) * size_t(argb.height()));
    for (int y = 0; y < argb.height(); ++y)
        std::memcpy(pixels.data() + size_t(y) * argb.width(), argb.constScanLine(y),
                    size_t(argb.width()) * sizeof(std::uint32_t));
    return std::make_shared<Picture>(argb.width(), argb.height(), std::move(pixels));
}

} // namespace fw
