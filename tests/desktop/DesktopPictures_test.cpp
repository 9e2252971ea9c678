// Pictures from resource paths: size, store before theme before drawing,
// overlays, and a picture for every path however bad.
#include "desktop/DesktopPictures.h"
#include "forms/Pictures.h"

#include <QDir>
#include <QIcon>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using fw::desktop::DesktopPictures;

namespace {

void writeSquare(const QString& file, int size, const QColor& colour)
{
    QDir().mkpath(QFileInfo(file).path());
    QImage image(size, size, QImage::Format_ARGB32);
    image.fill(colour);
    ASSERT_TRUE(image.save(file));
}

QImage load(DesktopPictures& pictures, const std::string& path)
{
    const fw::PicturePtr picture = pictures.LoadPicture(path, 0, -1, -1);
    EXPECT_TRUE(picture && !picture->IsNull()) << path;
    return picture ? fw::ToImage(*picture) : QImage();
}

bool hasVisiblePixel(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 0)
                return true;
    return false;
}

TEST(DesktopPictures, EveryPathGivesAVisiblePictureOfTheNamedSize)
{
    DesktopPictures pictures{QString()};
    const struct {
        std::string path;
        int size;
    } cases[] = {
        {"Ico\\20\\Computer\\Signs\\OK.ico", 20},
        {"ico\\32\\computer\\folders\\generic.ico", 32},
        {"Ico\\16\\Computer\\Hardware\\Nethood.ico#ico\\16\\overlay\\new.ico", 16},
        {"Ico\\48\\Nowhere\\Unknown.ico", 48},
        {"Ico\\abc", 16},
        {"Ico\\0\\x.ico", 16},
        {"Ico\\99999\\x.ico", 16},
        {"", 16},
        {"#", 16},
        {"#Ico\\20\\overlay\\new.ico", 16},
        {"\\\\//\\", 16},
        {"Ico\\20\\..\\..\\..\\etc\\passwd", 20},
        {std::string(5000, 'x'), 16},
        {"Ico\\24\\" + std::string(3000, '\\'), 24},
    };
    for (const auto& c : cases) {
        const QImage image = load(pictures, c.path);
        EXPECT_EQ(image.size(), QSize(c.size, c.size)) << c.path.substr(0, 60);
        EXPECT_TRUE(hasVisiblePixel(image)) << c.path.substr(0, 60);
    }
}

TEST(DesktopPictures, StoreFilesWinMatchCaseInsensitivelyAreFittedAndTakeOverlays)
{
    QTemporaryDir store;
    writeSquare(store.filePath("ico/20/computer/signs/ok.png"), 20, Qt::red);
    writeSquare(store.filePath("ico/32/computer/signs/Big.png"), 64, Qt::green);
    writeSquare(store.filePath("ico/20/overlay/New.png"), 20, Qt::blue);
    DesktopPictures pictures(store.path());
    QImage image = load(pictures, "Ico\\20\\Computer\\Signs\\OK.ico");
    ASSERT_EQ(image.size(), QSize(20, 20));
    EXPECT_EQ(image.pixelColor(10, 10), QColor(Qt::red));

    image = load(pictures, "Ico\\32\\Computer\\Signs\\Big.ico");
    ASSERT_EQ(image.size(), QSize(32, 32));
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::green));

    // The overlay goes into the bottom right corner.
    image = load(pictures, "Ico\\20\\Computer\\Signs\\OK.ico#ico\\20\\overlay\\new.ico");
    ASSERT_EQ(image.size(), QSize(20, 20));
    EXPECT_EQ(image.pixelColor(2, 2), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(17, 17), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(2, 17), QColor(Qt::red));
}

TEST(DesktopPictures, ThemeGivesTheDialogsSignsAndOverlaysChangeThem)
{
    DesktopPictures pictures{QString()};
    load(pictures, "Ico\\20\\Computer\\Signs\\OK.ico"); // sets the theme up
    if (!QIcon::hasThemeIcon("dialog-error-symbolic") && !QIcon::hasThemeIcon("dialog-error"))
        GTEST_SKIP() << "no icon theme installed";
    // An unknown name with the same first letter draws the fallback square.
    EXPECT_NE(load(pictures, "Ico\\20\\Computer\\Signs\\Critical.ico"),
              load(pictures, "Ico\\20\\Computer\\Signs\\Cxyz.ico"));
    EXPECT_NE(load(pictures, "Ico\\20\\Computer\\Signs\\Critical.ico"),
              load(pictures, "Ico\\20\\Computer\\Signs\\Info.ico"));
    EXPECT_NE(load(pictures, "Ico\\20\\Computer\\Hardware\\Nethood.ico"),
              load(pictures, "Ico\\20\\Computer\\Hardware\\Nethood.ico#ico\\20\\overlay\\new.ico"));
}

TEST(DesktopPictures, ListResourcesListsFoldersOrFilesOfTheStore)
{
    QTemporaryDir store;
    writeSquare(store.filePath("Ico/20/Computer/Signs/OK.png"), 20, Qt::red);
    writeSquare(store.filePath("Ico/20/Computer/Signs/abort.png"), 20, Qt::red);
    QDir().mkpath(store.filePath("Ico/20/Computer/Folders"));
    DesktopPictures pictures(store.path());

    const fw::StringList folders = pictures.ListResources("ico\\20\\computer", true, false, true);
    EXPECT_EQ(folders, (fw::StringList{"ico\\20\\computer\\Folders", "ico\\20\\computer\\Signs"}));
    const fw::StringList files =
        pictures.ListResources("Ico\\20\\Computer\\Signs\\", false, false, true);
    EXPECT_EQ(files, (fw::StringList{"Ico\\20\\Computer\\Signs\\abort.png",
                                     "Ico\\20\\Computer\\Signs\\OK.png"}));
    EXPECT_EQ(pictures.ListResources("Ico\\nowhere", true, false, true).Count(), 0);
    EXPECT_EQ(DesktopPictures(QString()).ListResources("Ico", true, false, true).Count(), 0);
}

} // namespace
