#pragma once
// A hidden drawing surface: one image to paint on before copying it to the
// screen. Its size only ever grows through Width and Height; Create makes a
// surface of exactly the size asked for.

#include "host/Picture.h"

#include <QImage>
#include <cstdint>

namespace fw {

class cls_HiddenDC {
  public:
    cls_HiddenDC() = default;
    ~cls_HiddenDC() { Free(); }
    cls_HiddenDC(const cls_HiddenDC&) = delete;
    cls_HiddenDC& operator=(const cls_HiddenDC&) = delete;

    /// The surface to paint on; null while there is none.
    QImage* hDC() { return m_surface.isNull() ? nullptr : &m_surface; }

    std::int32_t Width() const { return m_width; }
    std::int32_t Height() const { return m_height; }
    /// A value at or below the current one is ignored.
    void SetWidth(std::int32_t width);
    void SetHeight(std::int32_t height);

    /// A fresh surface of exactly this size; nothing happens if it has it already.
    void Create(std::int32_t width, std::int32_t height);
    /// Grows the surface to the picture if needed and copies the picture in at
    /// 0, 0; the rest of a larger surface stays as it was.
    void CreateFromPicture(const QImage& picture);
    void CreateFromPicture(const PicturePtr& picture);

    /// Drops the surface; sizes become 0. Safe to call any number of times.
    void Free();

  private:
    QImage m_surface;
    std::int32_t m_width = 0;
    std::int32_t m_height = 0;
};

} // namespace fw
