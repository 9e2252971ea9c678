// The hidden drawing surface: grows only through Width and Height, keeps what
// a smaller picture does not cover, and frees safely twice.
#include "core/cls_HiddenDC.h"

#include <QColor>
#include <QImage>
#include <gtest/gtest.h>

using fw::cls_HiddenDC;

namespace {

QImage filled(int width, int height, QColor colour)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(colour);
    return image;
}

TEST(HiddenSurface, WidthAndHeightOnlyEverGrowUntilFreed)
{
    cls_HiddenDC dc;
    dc.Create(200, 50);
    dc.SetWidth(100);
    dc.SetHeight(10);
    EXPECT_EQ(dc.Width(), 200);
    EXPECT_EQ(dc.Height(), 50);
    dc.SetWidth(300);
    EXPECT_EQ(dc.Width(), 300);
    ASSERT_NE(dc.hDC(), nullptr);
    EXPECT_EQ(dc.hDC()->size(), QSize(300, 50));
    dc.Create(20, 10); // Create sets exactly
    EXPECT_EQ(dc.hDC()->size(), QSize(20, 10));

    dc.Free();
    dc.Free(); // freeing twice is harmless
    EXPECT_EQ(dc.Width(), 0);
    EXPECT_EQ(dc.hDC(), nullptr);
    dc.SetWidth(8); // grows again from nothing
    dc.SetHeight(4);
    EXPECT_EQ(dc.hDC()->size(), QSize(8, 4));
}

TEST(HiddenSurface, PictureGrowsTheSurfaceAndASmallerOneLeavesTheRest)
{
    cls_HiddenDC dc;
    dc.CreateFromPicture(filled(40, 30, Qt::red));
    EXPECT_EQ(dc.Width(), 40);
    EXPECT_EQ(dc.Height(), 30);
    EXPECT_EQ(dc.hDC()->pixelColor(39, 29), QColor(Qt::red));

    dc.CreateFromPicture(filled(10, 10, Qt::blue));
    EXPECT_EQ(dc.Width(), 40);
    EXPECT_EQ(dc.hDC()->pixelColor(9, 9), QColor(Qt::blue));
    EXPECT_EQ(dc.hDC()->pixelColor(10, 10), QColor(Qt::red));
}

} // namespace
