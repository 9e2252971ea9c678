// The image list's tags and mask colour, as the file chooser fills its lists.
#include "forms/ControlError.h"
#include "forms/Form.h"
#include "forms/ImageList.h"

#include <gtest/gtest.h>

using namespace fw;

namespace {

// A picture of size pixels in background with a centre square of ink.
QImage twoColours(int size, QRgb background, QRgb ink)
{
    QImage image(size, size, QImage::Format_RGB32);
    image.fill(background);
    for (int y = size / 4; y < size * 3 / 4; ++y)
        for (int x = size / 4; x < size * 3 / 4; ++x)
            image.setPixel(x, y, ink);
    return image;
}

class ImageListTest : public ::testing::Test {
  public:
    Form form{QStringLiteral("frm_Images")};
    ImageList& img = *form.Add<ImageList>(QStringLiteral("img_Icon16"));
};

TEST_F(ImageListTest, TagsTravelWithTheirPicturesByIndexAndKey)
{
    const QImage picture = twoColours(16, qRgb(255, 255, 255), qRgb(0, 0, 0));
    img.Add("FILE", picture, "C:\\Windows\\file.ico");
    img.Add({}, picture, "#2");
    EXPECT_EQ(img.Tag("FILE"), "C:\\Windows\\file.ico");
    EXPECT_EQ(img.Tag(2), "#2");
    EXPECT_THROW(img.Tag("NONE"), ControlError);
}

TEST_F(ImageListTest, PixelsOfExactlyTheMaskColourBecomeTransparent)
{
    const QRgb magenta = qRgb(255, 0, 255);
    const QRgb nearMagenta = qRgb(254, 0, 255);
    const struct {
        const char* name;
        bool maskSet;
        std::uint32_t maskBgr;
        QRgb background;
        int size;
        bool cornerTransparent;
    } cases[] = {
        {"no mask set keeps every pixel", false, 0, magenta, 16, false},
        {"mask colour given as BGR", true, 0xFF00FF, magenta, 16, true},
        {"a near colour stays", true, 0xFF00FF, nearMagenta, 16, false},
        {"green in BGR order", true, 0x00FF00, qRgb(0, 255, 0), 16, true},
        {"red is not blue", true, 0x0000FF, qRgb(0, 0, 255), 16, false},
        {"masked before scaling down", true, 0xFF00FF, magenta, 32, true},
    };
    for (const auto& c : cases) {
        ImageList& list = *form.Add<ImageList>(QStringLiteral("img_Case"));
        if (c.maskSet)
            list.SetMaskColor(c.maskBgr);
        list.Add("PIC", twoColours(c.size, c.background, qRgb(10, 20, 30)));
        const QImage picture = list.Picture("PIC");
        EXPECT_EQ(qAlpha(picture.pixel(0, 0)) == 0, c.cornerTransparent) << c.name;
        EXPECT_EQ(picture.pixel(8, 8), qRgb(10, 20, 30)) << c.name << ": the ink stays";
        EXPECT_EQ(list.MaskColor(), c.maskSet ? c.maskBgr : 0u) << c.name;
    }
}

} // namespace
