// Makes the colour picker's field: hue across, from red round to red again,
// and saturation down, from the pure hue at the top to white at the bottom,
// all at full brightness (the picker's strip supplies the darker shades).
// The build runs it, so the stored picture can always be made again alike.

#include <QColor>
#include <QCoreApplication>
#include <QImage>
#include <QImageWriter>
#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv); // image format plugins are found through it
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s WIDTH HEIGHT OUT.jpg\n", argv[0]);
        return 64;
    }
    const int width = QString::fromLocal8Bit(argv[1]).toInt();
    const int height = QString::fromLocal8Bit(argv[2]).toInt();
    if (width < 2 || height < 2) {
        std::fprintf(stderr, "%s: the field needs at least 2 x 2 pixels\n", argv[0]);
        return 64;
    }
    QImage field(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        const double saturation = 1.0 - double(y) / (height - 1);
        for (int x = 0; x < width; ++x) {
            const double hue = double(x) / width;
            field.setPixelColor(x, y, QColor::fromHsvF(float(hue), float(saturation), 1.0f));
        }
    }
    QImageWriter writer(QString::fromLocal8Bit(argv[3]), "jpeg");
    writer.setQuality(95);
    if (!writer.write(field)) {
        std::fprintf(stderr, "%s: %s\n", argv[0], qPrintable(writer.errorString()));
        return 73;
    }
    return 0;
}
