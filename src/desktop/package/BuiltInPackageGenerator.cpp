// Makes the library's own resource package: pictures drawn here (shapes
// only, no text, so that installed fonts cannot change a byte) for the
// resource paths the dialogs name, at 16, 20 and 32 pixels, stored as PNG
// data under ".ico" names (Qt reads a picture by its content).
//
// The same input gives the same bytes on every build: a fixed entry order,
// one fixed time stamp, fixed compression, and DOS times computed in UTC.
//
//   builtin_package_generator OUT.zip

#include <QBuffer>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>
#include <zip.h>

namespace {

enum class Shape {
    Sheet,
    Folder,
    Drive,
    Disc,
    Monitor,
    Chip,
    Window,
    Check,
    Cross,
    Question,
    Info,
    Warning,
    ArrowRight,
    ArrowLeft,
    ArrowUp,
    ArrowDown,
    Star,
    Funnel,
    Lens,
    Floppy,
    Sheets,
    Printer,
    Tag,
    Undo,
    Dash,
    Minus,
    Person,
    People,
    Globe
};

struct Picture {
    const char* folder; ///< below "Ico\<size>\"
    const char* name;
    Shape shape;
    QRgb colour;
};

// Signs sit on a coloured disc; everything else is drawn as an object.
const Picture kPictures[] = {
    {"Computer/Files", "New", Shape::Sheet, 0xffffffff},
    {"Computer/Files", "avi", Shape::Sheet, 0xff8e44ad},
    {"Computer/Files", "bin", Shape::Sheet, 0xff7f8c8d},
    {"Computer/Files", "bmp", Shape::Sheet, 0xff27ae60},
    {"Computer/Files", "c", Shape::Sheet, 0xff2980b9},
    {"Computer/Files", "doc", Shape::Sheet, 0xff1f5fbf},
    {"Computer/Files", "inf", Shape::Sheet, 0xff16a085},
    {"Computer/Files", "ini", Shape::Sheet, 0xff95a5a6},
    {"Computer/Files", "kht", Shape::Sheet, 0xffd35400},
    {"Computer/Files", "pak", Shape::Sheet, 0xff8d6e63},
    {"Computer/Files", "txt", Shape::Sheet, 0xff607d8b},
    {"Computer/Files", "wav", Shape::Sheet, 0xffe67e22},
    {"Computer/Folders", "Checklist", Shape::Folder, 0xff27ae60},
    {"Computer/Folders", "Closed", Shape::Folder, 0},
    {"Computer/Folders", "Desktop", Shape::Monitor, 0xff3498db},
    {"Computer/Folders", "Favorite", Shape::Folder, 0xfff1c40f},
    {"Computer/Folders", "Generic", Shape::Folder, 0},
    {"Computer/Folders", "Nethood", Shape::Globe, 0xff2980b9},
    {"Computer/Folders", "ok", Shape::Folder, 0xff27ae60},
    {"Computer/Folders", "Open", Shape::Folder, 0xffffffff},
    {"Computer/Folders", "save", Shape::Folder, 0xff2980b9},
    {"Computer/Folders", "User", Shape::Person, 0xff3498db},
    {"Computer/Folders", "Users", Shape::People, 0xff3498db},
    {"Computer/Hardware", "Drive", Shape::Drive, 0xff27ae60},
    {"Computer/Hardware", "Drive CD Ready", Shape::Disc, 0xffbdc3c7},
    {"Computer/Hardware", "Drive Disc Ready", Shape::Disc, 0xff3498db},
    {"Computer/Hardware", "Drive Net", Shape::Drive, 0xff2980b9},
    {"Computer/Hardware", "Drive RAM", Shape::Chip, 0xff27ae60},
    {"Computer/Hardware", "Drive Removable", Shape::Drive, 0xffe67e22},
    {"Computer/Hardware", "Nethood", Shape::Globe, 0xff2980b9},
    {"Computer/Hardware", "Workstation", Shape::Monitor, 0xff2c3e50},
    {"Computer/Equipment", "usbstick", Shape::Drive, 0xffe67e22},
    {"Computer/Signs", "About", Shape::Info, 0xff2980b9},
    {"Computer/Signs", "Attention", Shape::Warning, 0xfff1c40f},
    {"Computer/Signs", "Copy", Shape::Sheets, 0xff7f8c8d},
    {"Computer/Signs", "Critical", Shape::Cross, 0xffc0392b},
    {"Computer/Signs", "Delete", Shape::Cross, 0xffc0392b},
    {"Computer/Signs", "Favorite", Shape::Star, 0xfff1c40f},
    {"Computer/Signs", "Filter", Shape::Funnel, 0xff2980b9},
    {"Computer/Signs", "Help", Shape::Question, 0xff2980b9},
    {"Computer/Signs", "Info", Shape::Info, 0xff2980b9},
    {"Computer/Signs", "Information", Shape::Info, 0xff2980b9},
    {"Computer/Signs", "Load", Shape::ArrowUp, 0xff27ae60},
    {"Computer/Signs", "Name", Shape::Tag, 0xffe67e22},
    {"Computer/Signs", "New", Shape::Star, 0xfff39c12},
    {"Computer/Signs", "Next", Shape::ArrowRight, 0xff27ae60},
    {"Computer/Signs", "OK", Shape::Check, 0xff27ae60},
    {"Computer/Signs", "Previous", Shape::ArrowLeft, 0xff27ae60},
    {"Computer/Signs", "Print", Shape::Printer, 0xff7f8c8d},
    {"Computer/Signs", "Question", Shape::Question, 0xff2980b9},
    {"Computer/Signs", "Save", Shape::Floppy, 0xff2980b9},
    {"Computer/Signs", "Search", Shape::Lens, 0xff2980b9},
    {"Computer/Signs", "abort", Shape::Cross, 0xffc0392b},
    {"Computer/Signs", "ignore", Shape::Dash, 0xff95a5a6},
    {"Computer/Signs", "no", Shape::Cross, 0xffc0392b},
    {"Computer/Signs", "retry", Shape::Undo, 0xff27ae60},
    {"Computer/Signs", "undo", Shape::Undo, 0xff2980b9},
    {"Computer/Software", "Generic", Shape::Window, 0xff2980b9},
    {"Computer/Windows", "Program Group", Shape::Window, 0xff8e44ad},
    {"Writing/Papers", "Sheet", Shape::Sheet, 0xffffffff},
    {"Overlay", "New", Shape::Star, 0xfff39c12},
    {"Overlay", "Remove", Shape::Minus, 0xffc0392b},
    {"Tools", "Generic", Shape::Window, 0xff7f8c8d},
};

const int kSizes[] = {16, 20, 32};
const QColor kOutline(0x40, 0x40, 0x40);

QPainterPath polygon(std::initializer_list<QPointF> points)
{
    QPainterPath path;
    path.addPolygon(QPolygonF(points));
    path.closeSubpath();
    return path;
}

void fillOutlined(QPainter& p, const QPainterPath& path, const QColor& fill)
{
    p.setPen(QPen(kOutline, 1.0));
    p.setBrush(fill);
    p.drawPath(path);
}

// A stroke in the 32-unit design grid.
void stroke(QPainter& p, const QPainterPath& path, const QColor& colour, qreal width)
{
    p.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    p.drawPath(path);
}

QPainterPath line(QPointF a, QPointF b)
{
    QPainterPath path(a);
    path.lineTo(b);
    return path;
}

QPainterPath star(QPointF centre, qreal outer)
{
    QPolygonF points;
    for (int i = 0; i < 10; ++i) {
        const qreal r = i % 2 ? outer * 0.45 : outer;
        const qreal a = -M_PI / 2 + i * M_PI / 5;
        points << centre + QPointF(r * std::cos(a), r * std::sin(a));
    }
    QPainterPath path;
    path.addPolygon(points);
    path.closeSubpath();
    return path;
}

void drawDisc(QPainter& p, const QColor& colour)
{
    QPainterPath disc;
    disc.addEllipse(QRectF(2, 2, 28, 28));
    fillOutlined(p, disc, colour);
}

void drawSign(QPainter& p, Shape shape, const QColor& colour)
{
    const QColor white(Qt::white);
    switch (shape) {
    case Shape::Check: {
        drawDisc(p, colour);
        QPainterPath tick({9, 16});
        tick.lineTo(14, 21);
        tick.lineTo(23, 10);
        stroke(p, tick, white, 4);
        break;
    }
    case Shape::Cross:
        drawDisc(p, colour);
        stroke(p, line({10, 10}, {22, 22}), white, 4);
        stroke(p, line({22, 10}, {10, 22}), white, 4);
        break;
    case Shape::Dash:
    case Shape::Minus:
        drawDisc(p, colour);
        stroke(p, line({9, 16}, {23, 16}), white, 4);
        break;
    case Shape::Question: {
        drawDisc(p, colour);
        QPainterPath hook({11, 12});
        hook.arcTo(QRectF(11, 7, 10, 10), 180, -270);
        hook.lineTo(16, 19);
        stroke(p, hook, white, 3.5);
        stroke(p, line({16, 24}, {16, 24.2}), white, 4);
        break;
    }
    case Shape::Info:
        drawDisc(p, colour);
        stroke(p, line({16, 14}, {16, 24}), white, 4);
        stroke(p, line({16, 8.5}, {16, 8.7}), white, 4);
        break;
    case Shape::Warning:
        fillOutlined(p, polygon({{16, 2}, {30, 28}, {2, 28}}), colour);
        stroke(p, line({16, 10}, {16, 19}), kOutline, 3.5);
        stroke(p, line({16, 24}, {16, 24.2}), kOutline, 3.5);
        break;
    case Shape::ArrowRight:
    case Shape::ArrowLeft:
    case Shape::ArrowUp:
    case Shape::ArrowDown: {
        drawDisc(p, colour);
        const qreal turn = shape == Shape::ArrowRight  ? 0
                           : shape == Shape::ArrowDown ? 90
                           : shape == Shape::ArrowLeft ? 180
                                                       : 270;
        p.save();
        p.translate(16, 16);
        p.rotate(turn);
        p.translate(-16, -16);
        fillOutlined(
            p, polygon({{8, 13}, {16, 13}, {16, 8}, {25, 16}, {16, 24}, {16, 19}, {8, 19}}), white);
        p.restore();
        break;
    }
    case Shape::Star:
        fillOutlined(p, star({16, 17}, 14), colour);
        break;
    case Shape::Funnel:
        fillOutlined(p, polygon({{3, 4}, {29, 4}, {19, 16}, {19, 28}, {13, 24}, {13, 16}}), colour);
        break;
    case Shape::Lens: {
        stroke(p, line({19, 19}, {28, 28}), kOutline, 5);
        QPainterPath glass;
        glass.addEllipse(QRectF(3, 3, 19, 19));
        fillOutlined(p, glass, QColor(0xd6, 0xea, 0xf8));
        stroke(p, glass, colour, 3);
        break;
    }
    case Shape::Floppy: {
        QPainterPath body;
        body.addRoundedRect(QRectF(3, 3, 26, 26), 3, 3);
        fillOutlined(p, body, colour);
        QPainterPath label;
        label.addRect(QRectF(8, 17, 16, 12));
        fillOutlined(p, label, Qt::white);
        QPainterPath shutter;
        shutter.addRect(QRectF(9, 3, 13, 8));
        fillOutlined(p, shutter, QColor(0xbd, 0xc3, 0xc7));
        break;
    }
    case Shape::Sheets: {
        QPainterPath back;
        back.addRect(QRectF(4, 3, 16, 20));
        fillOutlined(p, back, Qt::white);
        QPainterPath front;
        front.addRect(QRectF(12, 9, 16, 20));
        fillOutlined(p, front, Qt::white);
        for (int y = 14; y <= 24; y += 5)
            stroke(p, line({15, qreal(y)}, {25, qreal(y)}), colour, 2);
        break;
    }
    case Shape::Printer: {
        QPainterPath paper;
        paper.addRect(QRectF(9, 3, 14, 10));
        fillOutlined(p, paper, Qt::white);
        QPainterPath body;
        body.addRoundedRect(QRectF(3, 12, 26, 12), 2, 2);
        fillOutlined(p, body, colour);
        QPainterPath out;
        out.addRect(QRectF(9, 20, 14, 9));
        fillOutlined(p, out, Qt::white);
        break;
    }
    case Shape::Tag: {
        fillOutlined(p, polygon({{3, 9}, {22, 9}, {29, 16}, {22, 23}, {3, 23}}), colour);
        QPainterPath hole;
        hole.addEllipse(QRectF(7, 14, 4, 4));
        fillOutlined(p, hole, Qt::white);
        break;
    }
    case Shape::Undo: {
        drawDisc(p, colour);
        QPainterPath bow({10, 12});
        bow.arcTo(QRectF(9, 9, 14, 14), 150, -300);
        stroke(p, bow, white, 3);
        fillOutlined(p, polygon({{5, 9}, {13, 9}, {9, 16}}), white);
        break;
    }
    default:
        break;
    }
}

void drawObject(QPainter& p, Shape shape, const QColor& colour)
{
    switch (shape) {
    case Shape::Sheet: {
        fillOutlined(p, polygon({{6, 2}, {20, 2}, {27, 9}, {27, 30}, {6, 30}}), Qt::white);
        fillOutlined(p, polygon({{20, 2}, {20, 9}, {27, 9}}), QColor(0xdd, 0xdd, 0xdd));
        QPainterPath band;
        band.addRect(QRectF(6, 20, 21, 10));
        if (colour != QColor(Qt::white))
            fillOutlined(p, band, colour);
        for (int y = 8; y <= 16; y += 4)
            stroke(p, line({10, qreal(y)}, {y == 8 ? 17.0 : 23.0, qreal(y)}),
                   QColor(0x99, 0x99, 0x99), 1.5);
        break;
    }
    case Shape::Folder: {
        const QColor paper(0xf5, 0xc5, 0x42);
        fillOutlined(p, polygon({{2, 7}, {12, 7}, {15, 10}, {30, 10}, {30, 28}, {2, 28}}),
                     paper.darker(115));
        if (colour == QColor(Qt::white)) // open: the front leans back
            fillOutlined(p, polygon({{6, 14}, {31, 14}, {27, 28}, {2, 28}}), paper);
        else
            fillOutlined(p, polygon({{2, 13}, {30, 13}, {30, 28}, {2, 28}}), paper);
        if (colour.alpha() != 0 && colour != QColor(Qt::white)) {
            QPainterPath mark;
            mark.addEllipse(QRectF(17, 17, 10, 10));
            fillOutlined(p, mark, colour);
        }
        break;
    }
    case Shape::Drive: {
        QPainterPath body;
        body.addRoundedRect(QRectF(2, 10, 28, 13), 3, 3);
        fillOutlined(p, body, QColor(0xbd, 0xc3, 0xc7));
        QPainterPath led;
        led.addEllipse(QRectF(23, 15, 4, 4));
        fillOutlined(p, led, colour);
        stroke(p, line({6, 17}, {17, 17}), kOutline, 1.5);
        break;
    }
    case Shape::Disc: {
        QPainterPath disc;
        disc.addEllipse(QRectF(2, 2, 28, 28));
        fillOutlined(p, disc, colour);
        QPainterPath hole;
        hole.addEllipse(QRectF(12, 12, 8, 8));
        fillOutlined(p, hole, Qt::white);
        break;
    }
    case Shape::Monitor: {
        QPainterPath screen;
        screen.addRoundedRect(QRectF(2, 3, 28, 19), 2, 2);
        fillOutlined(p, screen, colour);
        fillOutlined(p, polygon({{12, 22}, {20, 22}, {22, 28}, {10, 28}}),
                     QColor(0x95, 0xa5, 0xa6));
        break;
    }
    case Shape::Chip: {
        QPainterPath chip;
        chip.addRect(QRectF(4, 8, 24, 16));
        fillOutlined(p, chip, colour);
        for (int x = 7; x <= 25; x += 6) {
            stroke(p, line({qreal(x), 4}, {qreal(x), 8}), kOutline, 2);
            stroke(p, line({qreal(x), 24}, {qreal(x), 28}), kOutline, 2);
        }
        break;
    }
    case Shape::Window: {
        QPainterPath frame;
        frame.addRect(QRectF(2, 4, 28, 24));
        fillOutlined(p, frame, Qt::white);
        QPainterPath title;
        title.addRect(QRectF(2, 4, 28, 6));
        fillOutlined(p, title, colour);
        break;
    }
    case Shape::Person:
    case Shape::People: {
        const auto person = [&](qreal x, const QColor& c) {
            QPainterPath head;
            head.addEllipse(QRectF(x + 5, 4, 10, 10));
            fillOutlined(p, head, QColor(0xf0, 0xc2, 0x9e));
            QPainterPath body;
            body.addRoundedRect(QRectF(x, 15, 20, 14), 6, 6);
            fillOutlined(p, body, c);
        };
        if (shape == Shape::People)
            person(11, colour.darker(130));
        person(shape == Shape::People ? 1 : 6, colour);
        break;
    }
    case Shape::Globe: {
        QPainterPath globe;
        globe.addEllipse(QRectF(2, 2, 28, 28));
        fillOutlined(p, globe, colour);
        QPainterPath meridian;
        meridian.addEllipse(QRectF(10, 2, 12, 28));
        stroke(p, meridian, Qt::white, 1.5);
        stroke(p, line({2, 16}, {30, 16}), Qt::white, 1.5);
        break;
    }
    default:
        drawSign(p, shape, colour);
        break;
    }
}

QByteArray pngOf(const Picture& picture, int size)
{
    QImage image(size, size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 32.0, size / 32.0);
    drawObject(painter, picture.shape, QColor::fromRgba(picture.colour));
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

bool addFile(zip_t* archive, const std::string& name, const QByteArray& bytes)
{
    // 2000-01-01: a fixed stamp keeps the bytes the same from build to build.
    constexpr time_t kStamp = 946684800;
    void* copy = std::malloc(std::size_t(bytes.size()));
    std::memcpy(copy, bytes.constData(), std::size_t(bytes.size()));
    zip_source_t* source = zip_source_buffer(archive, copy, zip_uint64_t(bytes.size()), 1);
    const zip_int64_t index = source ? zip_file_add(archive, name.c_str(), source, 0) : -1;
    if (index < 0) {
        zip_source_free(source);
        return false;
    }
    return zip_set_file_compression(archive, zip_uint64_t(index), ZIP_CM_DEFLATE, 9) == 0 &&
           zip_file_set_mtime(archive, zip_uint64_t(index), kStamp, 0) == 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s OUT.zip\n", argv[0]);
        return 64;
    }
    // libzip turns time stamps into DOS times in local time.
    setenv("TZ", "UTC", 1);
    tzset();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    std::remove(argv[1]);
    int error = 0;
    zip_t* archive = zip_open(argv[1], ZIP_CREATE | ZIP_EXCL, &error);
    if (!archive) {
        std::fprintf(stderr, "%s: cannot create %s\n", argv[0], argv[1]);
        return 1;
    }
    bool ok = true;
    for (const int size : kSizes)
        for (const Picture& picture : kPictures)
            ok = ok && addFile(archive,
                               "Ico/" + std::to_string(size) + "/" + picture.folder + "/" +
                                   picture.name + ".ico",
                               pngOf(picture, size));
    if (!ok || zip_close(archive) != 0) {
        std::fprintf(stderr, "%s: cannot write %s\n", argv[0], argv[1]);
        zip_discard(archive);
        return 1;
    }
    return 0;
}
