// Pictures from resource paths and files: size, store before theme before
// drawing, overlays, the theme on a real X display, and a picture for every
// path however bad.
#include "desktop/DesktopPictures.h"
#include "desktop/DesktopPicturesTheme.h"
#include "desktop/LocationPaths.h"
#include "forms/Pictures.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QImage>
#include <QImageWriter>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using fw::desktop::DesktopPictures;
using fw::desktop::IconThemeChain;

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
    DesktopPictures pictures(store.path(),
                             std::make_shared<fw::desktop::PackageFolders>(QStringList(), false));

    const fw::StringList folders = pictures.ListResources("ico\\20\\computer", true, false, true);
    EXPECT_EQ(folders,
              (fw::StringList{"ico\\20\\computer\\Folders\\", "ico\\20\\computer\\Signs\\"}));
    const fw::StringList files =
        pictures.ListResources("Ico\\20\\Computer\\Signs\\", false, false, true);
    EXPECT_EQ(files, (fw::StringList{"Ico\\20\\Computer\\Signs\\abort.png",
                                     "Ico\\20\\Computer\\Signs\\OK.png"}));
    EXPECT_EQ(pictures.ListResources("Ico\\nowhere", true, false, true).Count(), 0);
    EXPECT_EQ(DesktopPictures(QString(),
                              std::make_shared<fw::desktop::PackageFolders>(QStringList(), false))
                  .ListResources("Ico", true, false, true)
                  .Count(),
              0);
}

void writeText(const QString& file, const QByteArray& text)
{
    QDir().mkpath(QFileInfo(file).path());
    QFile out(file);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(text);
}

QStringList g_warnings;

TEST(DesktopPictures, AbsolutePathsNamePictureFilesAndBadOnesWarn)
{
    QTemporaryDir dir;
    writeSquare(dir.filePath("red.png"), 40, Qt::red);
    writeSquare(dir.filePath("blue.ico"), 24, Qt::blue);
    writeText(dir.filePath("green.svg"), "<svg xmlns='http://www.w3.org/2000/svg' width='20' "
                                         "height='20'><rect width='20' height='20' "
                                         "fill='#00ff00'/></svg>");
    writeText(dir.filePath("text.png"), "not a picture at all");
    writeSquare(dir.filePath("odd#name.png"), 8, Qt::red);
    DesktopPictures pictures{QString()};
    const QtMessageHandler previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& m) { g_warnings << m; });
    const struct {
        QString file;
        int width; // -1: the file's own size
        QSize size;
        QColor centre; // invalid: the drawn stand-in, with a warning
    } cases[] = {
        {"red.png", -1, {40, 40}, Qt::red},
        {"red.png", 20, {20, 20}, Qt::red},
        {"blue.ico", -1, {24, 24}, Qt::blue},
        {"green.svg", -1, {20, 20}, Qt::green},
        {"green.svg", 64, {64, 64}, Qt::green},
        {"odd#name.png", -1, {8, 8}, Qt::red},
        {"text.png", -1, {16, 16}, {}},
        {"missing.png", 32, {32, 32}, {}},
        {"", -1, {16, 16}, {}}, // the folder itself
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file.toStdString() + " " + std::to_string(c.width));
        g_warnings.clear();
        const QString path = dir.filePath(c.file);
        const QImage image =
            fw::ToImage(pictures.LoadPicture(path.toStdString(), 0, c.width, c.width));
        EXPECT_EQ(image.size(), c.size);
        if (c.centre.isValid()) {
            EXPECT_EQ(image.pixelColor(c.size.width() / 2, c.size.height() / 2), c.centre);
            EXPECT_TRUE(g_warnings.isEmpty()) << g_warnings.join(' ').toStdString();
        } else {
            EXPECT_TRUE(hasVisiblePixel(image));
            ASSERT_EQ(g_warnings.size(), 1);
            EXPECT_TRUE(g_warnings[0].contains(path)) << g_warnings[0].toStdString();
        }
    }
    qInstallMessageHandler(previous);
}

TEST(DesktopPictures, ThemeChainPutsInstalledFullThemesBeforeHicolor)
{
    QTemporaryDir icons;
    const auto theme = [&](const QString& name, const QByteArray& body) {
        writeText(icons.filePath(name + "/index.theme"), "[Icon Theme]\n" + body);
    };
    theme("Adwaita", "Directories=16x16/actions\nInherits=hicolor\n");
    theme("Mine", "Directories=scalable/apps,32x32/apps\n");
    theme("default", "Inherits=Adwaita\n"); // cursors only
    theme("hicolor", "Directories=48x48/apps\n");
    const QStringList paths{"/nonexistent", icons.path()};
    const struct {
        QString reported;
        QStringList chain;
    } cases[] = {
        {"hicolor", {"Adwaita", "Mine", "hicolor"}}, {"", {"Adwaita", "Mine", "hicolor"}},
        {"Mine", {"Mine", "Adwaita", "hicolor"}},    {"breeze", {"Adwaita", "Mine", "hicolor"}},
        {"default", {"Adwaita", "Mine", "hicolor"}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(IconThemeChain(c.reported, paths), c.chain) << c.reported.toStdString();
    EXPECT_EQ(IconThemeChain("Adwaita", {}), QStringList{"hicolor"});
}

// An icon file of several images: Qt writes one image per ICO file, so the
// single-image files are joined under one directory of entries.
QByteArray iconFileOf(const std::vector<QImage>& images)
{
    QByteArray directory, data;
    const int headerSize = 6 + 16 * int(images.size());
    for (const QImage& image : images) {
        QByteArray single;
        QBuffer buffer(&single);
        buffer.open(QIODevice::WriteOnly);
        QImageWriter(&buffer, "ico").write(image);
        QByteArray entry = single.mid(6, 16);
        const qint32 offset = headerSize + qint32(data.size());
        entry.replace(12, 4, QByteArray(reinterpret_cast<const char*>(&offset), 4));
        directory += entry;
        data += single.mid(6 + 16);
    }
    const char count[] = {0, 0, 1, 0, char(images.size()), 0};
    return QByteArray(count, 6) + directory + data;
}

QImage filled(int size, QImage::Format format, const QColor& colour)
{
    QImage image(size, size, format);
    image.fill(colour);
    return image;
}

TEST(DesktopPictures, ExtractIconTakesTheNumberedImageOfAFileAndKeysOutTheMaskColour)
{
    QTemporaryDir dir;
    QFile icon(dir.filePath("two.ico"));
    ASSERT_TRUE(icon.open(QIODevice::WriteOnly));
    icon.write(iconFileOf(
        {filled(16, QImage::Format_ARGB32, Qt::red), filled(32, QImage::Format_ARGB32, Qt::blue)}));
    icon.close();
    // Half magenta: the key colour of the chooser's lists.
    QImage opaque = filled(8, QImage::Format_RGB32, Qt::green);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 8; ++x)
            opaque.setPixel(x, y, qRgb(255, 0, 255));
    ASSERT_TRUE(opaque.save(dir.filePath("keyed.png")));
    ASSERT_TRUE(
        filled(8, QImage::Format_ARGB32, QColor(255, 0, 255)).save(dir.filePath("own.png")));
    QFile(dir.filePath("text.txt")).open(QIODevice::WriteOnly);
    const std::string base = dir.path().toStdString() + "/";
    const std::string asLocation = fw::desktop::PosixToLocation(base);
    constexpr std::uint32_t magenta = 0x00FF00FF;

    struct Row {
        const char* name;
        std::string file;
        int index;
        QColor top;    ///< expected at the top row; invalid: transparent
        QColor bottom; ///< expected at the bottom row
        int count;     ///< IconCount of the file
    };
    const Row rows[] = {
        {"first image of an icon file", base + "two.ico", 0, Qt::red, Qt::red, 2},
        {"second image", base + "two.ico", 1, Qt::blue, Qt::blue, 2},
        {"named by a location", asLocation + "two.ico", 1, Qt::blue, Qt::blue, 2},
        {"the key colour is transparent", base + "keyed.png", 0, {}, Qt::green, 1},
        {"own transparency wins over the key", base + "own.png", 0, QColor(255, 0, 255),
         QColor(255, 0, 255), 1},
    };
    DesktopPictures pictures{QString()};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const QImage image = fw::ToImage(pictures.ExtractIcon(row.file, row.index, 24, magenta));
        ASSERT_EQ(image.size(), QSize(24, 24));
        const QColor top = image.pixelColor(12, 1), bottom = image.pixelColor(12, 22);
        EXPECT_EQ(top.alpha() == 0, !row.top.isValid());
        if (row.top.isValid()) {
            EXPECT_EQ(top.rgb(), row.top.rgb());
        }
        EXPECT_EQ(bottom.rgb(), row.bottom.rgb());
        EXPECT_EQ(pictures.IconCount(row.file), row.count);
    }
    // Nothing to draw gives null, and a file without pictures counts none.
    const std::pair<std::string, int> nothing[] = {
        {base + "two.ico", 3},       {base + "missing.png", 0},
        {base + "text.txt", 0},      {base, 0},
        {"no-such-icon-name-42", 0}, {"", 0}};
    for (const auto& [file, index] : nothing) {
        EXPECT_EQ(pictures.ExtractIcon(file, index, 16, magenta), nullptr) << file << index;
        EXPECT_EQ(pictures.IconCount(file), file.ends_with(".ico") ? 2 : 0) << file;
    }
}

// Runs inside the test below, on the xcb platform; skipped in a normal run.
TEST(DesktopPicturesOnXChild, NamedPicturesAreNotTheDrawnSquare)
{
    if (!qEnvironmentVariableIsSet("FORMWERK_TEST_X_CHILD"))
        GTEST_SKIP() << "only run as the child of another test";
    ASSERT_EQ(QGuiApplication::platformName(), "xcb");
    if (IconThemeChain(QIcon::themeName(), QIcon::themeSearchPaths() << "/usr/share/icons").size() <
        2)
        GTEST_SKIP() << "no full icon theme is installed";
    DesktopPictures pictures{QString()};
    // An unknown name draws the square with the same first letter.
    const char* const names[] = {
        "Signs\\Question",
        "Signs\\Critical",
        "Signs\\Warning",
        "Signs\\Favorite",
        "Signs\\Load",
        "Signs\\Save",
        "Signs\\Attention",
        "Signs\\Delete",
        "Signs\\OK",
        "Signs\\abort",
        "Folders\\Favorite",
        "Folders\\Desktop",
        "Folders\\Open",
        "Folders\\Closed",
        "Folders\\User",
        "Folders\\Users",
        "Folders\\Checklist",
        "Folders\\ok",
        "Folders\\save",
        "Folders\\Nethood",
        "Hardware\\Workstation",
        "Hardware\\Nethood",
        "Hardware\\Drive",
        "Hardware\\Drive CD Ready",
        "Hardware\\Drive Disc Ready",
        "Hardware\\Drive Net",
        "Hardware\\Drive RAM",
        "Hardware\\Drive Removable",
        "Software\\Generic",
        "Equipment\\usbstick",
    };
    for (const char* name : names) {
        const std::string path = std::string("Ico\\32\\Computer\\") + name;
        EXPECT_TRUE(load(pictures, path + ".ico") != load(pictures, path + "xyz.ico"))
            << name << " is the drawn square";
    }
    for (const std::string path : {"Ico\\16\\Writing\\Papers\\Sheet", "Cur\\Hand Up"})
        EXPECT_TRUE(load(pictures, path + ".ico") != load(pictures, path + "xyz.ico")) << path;
}

// Qt reports "hicolor" as the theme on a bare X display, where offscreen it
// reports none: so this runs the check above in a child on its own Xvfb.
TEST(DesktopPictures, NamedPicturesComeFromAThemeOnAnXDisplay)
{
    const QString xvfb = QStandardPaths::findExecutable("Xvfb");
    if (xvfb.isEmpty())
        GTEST_SKIP() << "Xvfb is not installed, so there is no X display to try";
    QProcess server;
    // -displayfd picks a free display and writes its number once it serves.
    server.start(xvfb, {"-displayfd", "1", "-screen", "0", "640x480x24", "-nolisten", "tcp"});
    ASSERT_TRUE(server.waitForStarted());
    QByteArray display;
    while (!display.contains('\n') && server.waitForReadyRead(10000))
        display += server.readAllStandardOutput();
    ASSERT_TRUE(display.contains('\n')) << "Xvfb gave no display";

    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("DISPLAY", ":" + QString::fromLatin1(display.trimmed()));
    env.insert("QT_QPA_PLATFORM", "xcb");
    env.insert("FORMWERK_TEST_KEEP_PLATFORM", "1");
    env.insert("FORMWERK_TEST_X_CHILD", "1");
    child.setProcessEnvironment(env);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(),
                {"--gtest_filter=DesktopPicturesOnXChild.*"});
    ASSERT_TRUE(child.waitForFinished(60000));
    const QString output = QString::fromLocal8Bit(child.readAll());
    server.terminate();
    server.waitForFinished(10000);
    ASSERT_EQ(child.exitCode(), 0) << output.toStdString();
    if (output.contains("[  SKIPPED ]"))
        GTEST_SKIP() << output.section("Skipped", 1).trimmed().toStdString();
}

} // namespace
