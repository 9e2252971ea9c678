#include "inspect/frm_DialogXMLInspector.h"

#include "controls/ctl_CmdBar.h"
#include "core/hLangText.h"
#include "dialogs/MessageBox.h"
#include "forms/ImageList.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/Text.h"
#include "forms/TreeView.h"

#include <QPainter>
#include <QPainterPath>
#include <QWidget>

namespace fw {

namespace {
// Design metrics, in pixels.
constexpr int kClientWidth = 460;
constexpr int kClientHeight = 420;
constexpr int kMargin = 8;

// The three pictures of the tree, drawn rather than shipped as files so that
// they come out the same from every build: a tag as a pair of angle brackets
// on a blue tile (lighter with a bar below while open), an attribute as a
// small green tile with an equals sign.
QImage tagPicture(bool open)
{
    QImage image(16, 16, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QColor(0x2a, 0x4d, 0x8f));
    p.setBrush(open ? QColor(0xd6, 0xe4, 0xfb) : QColor(0x6f, 0x9b, 0xe6));
    p.drawRoundedRect(QRectF(0.5, 1.5, 15, 13), 2.5, 2.5);
    QPen glyph(open ? QColor(0x2a, 0x4d, 0x8f) : Qt::white, 1.6);
    glyph.setCapStyle(Qt::RoundCap);
    glyph.setJoinStyle(Qt::RoundJoin);
    p.setPen(glyph);
    p.setBrush(Qt::NoBrush);
    QPainterPath brackets;
    brackets.moveTo(6, 4.5);
    brackets.lineTo(3, 7.5);
    brackets.lineTo(6, 10.5);
    brackets.moveTo(10, 4.5);
    brackets.lineTo(13, 7.5);
    brackets.lineTo(10, 10.5);
    p.drawPath(brackets);
    if (open)
        p.drawLine(QPointF(5.5, 12.5), QPointF(10.5, 12.5));
    return image;
}

QImage propertyPicture()
{
    QImage image(16, 16, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QColor(0x2f, 0x6b, 0x2a));
    p.setBrush(QColor(0x8c, 0xc8, 0x6e));
    p.drawRoundedRect(QRectF(2.5, 3.5, 11, 9), 2, 2);
    QPen glyph(QColor(0x1d, 0x3f, 0x1a), 1.4);
    glyph.setCapStyle(Qt::RoundCap);
    p.setPen(glyph);
    p.drawLine(QPointF(5.5, 6.5), QPointF(10.5, 6.5));
    p.drawLine(QPointF(5.5, 9.5), QPointF(10.5, 9.5));
    return image;
}
} // namespace

frm_DialogXMLInspector::frm_DialogXMLInspector() : Form(QStringLiteral("frm_DialogXMLInspector"))
{
    buildControls();
}

frm_DialogXMLInspector::~frm_DialogXMLInspector() = default;

void frm_DialogXMLInspector::buildControls()
{
    window()->resize(kClientWidth, kClientHeight);
    SetCaption(QStringLiteral("XML-Struktur"));

    img_XML = Add<ImageList>(QStringLiteral("img_XML"));
    img_XML->Add(QStringLiteral("tag.closed"), tagPicture(false));
    img_XML->Add(QStringLiteral("tag.open"), tagPicture(true));
    img_XML->Add(QStringLiteral("property"), propertyPicture());

    // Made before the bar, so that the tree has the focus first and the
    // arrow keys walk it at once.
    tvw_XML = Add<TreeView>(QStringLiteral("tvw_XML"));
    tvw_XML->SetImageList(img_XML);

    bar_Buttons = Add<ctl_CmdBar>(QStringLiteral("bar_Buttons"));
    const QString signs = QStringLiteral("Ico\\20\\Computer\\Signs\\");
    bar_Buttons->AddButton(QStringLiteral("HELP"), QStringLiteral("Hilfe"),
                           signs + QStringLiteral("Help.ico"), QStringLiteral("DIALOG.HELP();"));
    bar_Buttons->AddButton(QStringLiteral("OK"), QStringLiteral("OK"),
                           signs + QStringLiteral("OK.ico"), QStringLiteral("DIALOG.OK();"));
    bar_Buttons->Script = [this](const QString& script) { bar_Buttons_Script(script); };

    const int left = kMargin * Screen::TwipsPerPixelX();
    const int top = kMargin * Screen::TwipsPerPixelY();
    tvw_XML->Move(left, top, ScaleWidth() - 2 * left, bar_Buttons->Top() - 2 * top);
}

QVariant frm_DialogXMLInspector::GetPublic(const QString& name) const
{
    if (name.compare(u"CaptionText", Qt::CaseInsensitive) == 0)
        return CaptionText;
    return Form::GetPublic(name);
}

bool frm_DialogXMLInspector::SetPublic(const QString& name, const QVariant& value)
{
    if (name.compare(u"CaptionText", Qt::CaseInsensitive) != 0)
        return Form::SetPublic(name, value);
    CaptionText = value.toString();
    return true;
}

void frm_DialogXMLInspector::Form_Load()
{
    if (!CaptionText.isEmpty())
        SetCaption(CaptionText);
    tvw_XML->DepthNote = qs(hLangText("\u2026 tiefere Ebenen werden nicht angezeigt",
                                      "\u2026 deeper levels are not shown"));
    if (Xml)
        Resume([&] { Xml->fillTree(*tvw_XML, nullptr); });
}

void frm_DialogXMLInspector::Form_Resize()
{
    // A window too small for the margins asks for a negative size, which the
    // tree refuses; it then keeps the size it had.
    Resume([&] {
        tvw_XML->Move(tvw_XML->Left(), tvw_XML->Top(), ScaleWidth() - 2 * tvw_XML->Left(),
                      bar_Buttons->Top() - 2 * tvw_XML->Top());
    });
}

void frm_DialogXMLInspector::bar_Buttons_Script(const QString& script)
{
    const QString command = script.toUpper();
    if (command == u"DIALOG.OK();")
        Unload();
    else if (command == u"DIALOG.HELP();")
        Resume([&] {
            ShowMessageBox("In diesem Dialog sehen Sie die Baumstruktur der erzeugten XML-Datei",
                           us(Caption()), 0, "");
        });
}

} // namespace fw
