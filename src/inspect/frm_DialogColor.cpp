#include "inspect/frm_DialogColor.h"

#include "controls/Theme.h"
#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Frame.h"
#include "controls/ctl_Label.h"
#include "controls/ctl_Palette.h"
#include "controls/ctl_Pannel.h"
#include "controls/ctl_Title.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QRegularExpression>
#include <QWidget>
#include <cmath>

namespace fw {

namespace {
// Design metrics, in pixels.
constexpr int kClientWidth = 568;
constexpr int kMargin = 12;
constexpr int kPadding = 14;
constexpr int kFieldWidth = 240;
constexpr int kFieldHeight = 181; // also the brightness strip's height
constexpr int kStripWidth = 24;
constexpr int kGap = 10;
constexpr int kPreviewHeight = 72;
constexpr int kRowHeight = 26;
constexpr int kRowStep = 34;
constexpr int kLabelWidth = 44;
constexpr int kSwatch = 22;
constexpr int kSwatchSpace = 4;
constexpr int kSwatchRows = 2;
constexpr int kIconButton = 34;
constexpr int kEditButtonWidth = 128;

// Where the palettes of this dialog live in the host's settings.
const char* const kPaletteKey = "Software\\Valdrenix\\Core\\Settings\\DialogColor";

int px(int pixels)
{
    return ToTwips(pixels);
}

/// The host colour of a point of a picture box, negative outside it.
std::int64_t pixelAt(const PictureBox& box, double x, double y)
{
    const QColor c = box.Point(x, y);
    if (!c.isValid())
        return -1;
    return c.red() + 256 * c.green() + 65536 * c.blue();
}

/// The number a text begins with, 0 if it begins with anything else.
double leadingValue(const QString& text)
{
    static const QRegularExpression number(
        QStringLiteral("^\\s*[+-]?(\\d+\\.?\\d*|\\.\\d+)([eE][+-]?\\d+)?"));
    const QRegularExpressionMatch match = number.match(text);
    return match.hasMatch() ? match.captured(0).trimmed().toDouble() : 0.0;
}

/// Rounded to the nearest integer, ties to the even one.
double roundEven(double value)
{
    return std::nearbyint(value);
}

ctl_Button* iconButton(Form& form, const QString& name, QWidget* container, const QString& icon,
                       const QString& tip)
{
    auto* button = form.Add<ctl_Button>(name, container);
    button->SetIconPath(icon);
    button->SetToolTipText(tip);
    return button;
}
} // namespace

frm_DialogColor::frm_DialogColor() : Form(QStringLiteral("frm_DialogColor"))
{
    buildControls();
}

frm_DialogColor::~frm_DialogColor() = default;

QImage frm_DialogColor::ColourField()
{
    static const QImage field(QStringLiteral(":/formwerk/inspect/ColourField.jpg"));
    return field;
}

void frm_DialogColor::buildControls()
{
    SetCaption(QStringLiteral("Farbe bestimmen"));

    ctl_Title1 = Add<ctl_Title>(QStringLiteral("ctl_Title1"));
    ctl_Title1->SetCaption(QStringLiteral("Farbe auswählen"));
    ctl_Title1->CloseRequest = [this](const QString&) { ctl_Sidebar_Key(QStringLiteral("ABORT")); };

    const int top = theme::TitleHeight + kMargin;

    // The field and its brightness strip.
    ctl_FrameColor = Add<ctl_Frame>(QStringLiteral("ctl_FrameColor"));
    ctl_FrameColor->SetCaption(QStringLiteral("Farbe"));
    const int inside = ToPixels(ctl_FrameColor->InsideTop());
    const int frameHeight = inside + kFieldHeight + kPadding;
    const int colorFrameWidth = kPadding + kFieldWidth + kGap + kStripWidth + kPadding;
    ctl_FrameColor->Move(px(kMargin), px(top), px(colorFrameWidth), px(frameHeight));
    pic_Colors = Add<PictureBox>(QStringLiteral("pic_Colors"), ctl_FrameColor->container());
    pic_Colors->Move(px(kPadding), px(inside), px(kFieldWidth), px(kFieldHeight));
    pic_Colors->SetPicture(ColourField());
    pic_Colors->widget()->setCursor(Qt::CrossCursor);
    pic_ColorY = Add<PictureBox>(QStringLiteral("pic_ColorY"), ctl_FrameColor->container());
    pic_ColorY->Move(px(kPadding + kFieldWidth + kGap), px(inside), px(kStripWidth),
                     px(kFieldHeight));
    pic_ColorY->SetScaleMode(3);
    pic_ColorY->SetAutoRedraw(true);
    pic_ColorY->widget()->setCursor(Qt::CrossCursor);

    // The mixed colour and its three components.
    const int mixLeft = kMargin + colorFrameWidth + kGap;
    const int mixWidth = kClientWidth - mixLeft - kMargin;
    ctl_FrameMix = Add<ctl_Frame>(QStringLiteral("ctl_FrameMix"));
    ctl_FrameMix->SetCaption(QStringLiteral("Mischen"));
    ctl_FrameMix->Move(px(mixLeft), px(top), px(mixWidth), px(frameHeight));
    // A hairline edge keeps a white or near-white colour visible on the white frame.
    auto* edge = Add<ctl_Pannel>(QStringLiteral("pan_ColorEdge"), ctl_FrameMix->container());
    edge->Move(px(kPadding), px(inside), px(mixWidth - 2 * kPadding), px(kPreviewHeight));
    edge->SetBackColor(theme::ButtonBorder());
    pan_Color = Add<ctl_Pannel>(QStringLiteral("pan_Color"), edge->container());
    pan_Color->Move(px(1), px(1), px(mixWidth - 2 * kPadding - 2), px(kPreviewHeight - 2));
    const auto row = [&](ctl_Label*& label, TextBox*& box, const QString& suffix,
                         const QString& caption, int index) {
        const int y = inside + kPreviewHeight + 12 + index * kRowStep;
        label = Add<ctl_Label>(QStringLiteral("lab_") + suffix, ctl_FrameMix->container());
        label->Move(px(kPadding), px(y + 4), px(kLabelWidth));
        label->SetCaption(caption);
        box = Add<TextBox>(QStringLiteral("txt_") + suffix, false, ctl_FrameMix->container());
        box->Move(px(kPadding + kLabelWidth + 8), px(y),
                  px(mixWidth - 2 * kPadding - kLabelWidth - 8), px(kRowHeight));
        box->Change = [this] { hTextChange(); };
        box->GotFocus = [box] {
            Resume([&] {
                box->SetSelStart(0);
                box->SetSelLength(int(box->Text().size()));
            });
        };
    };
    row(lab_R, txt_R, QStringLiteral("R"), QStringLiteral("Rot:"), 0);
    row(lab_G, txt_G, QStringLiteral("G"), QStringLiteral("Grün:"), 1);
    row(lab_B, txt_B, QStringLiteral("B"), QStringLiteral("Blau:"), 2);

    // The palette and its buttons.
    const int paletteTop = top + frameHeight + kGap;
    const int paletteWidth = kClientWidth - 2 * kMargin;
    const int swatchesHeight = kSwatchRows * (kSwatch + kSwatchSpace) + kSwatchSpace;
    const int buttonsTop = inside + swatchesHeight + 8;
    const int paletteHeight = buttonsTop + theme::ButtonHeight + kPadding;
    ctl_FramePalette = Add<ctl_Frame>(QStringLiteral("ctl_FramePalette"));
    ctl_FramePalette->SetCaption(QStringLiteral("Farbpalette"));
    ctl_FramePalette->Move(px(kMargin), px(paletteTop), px(paletteWidth), px(paletteHeight));
    QWidget* holder = ctl_FramePalette->container();
    ctl_Pal = Add<ctl_Palette>(QStringLiteral("ctl_Pal"), holder);
    ctl_Pal->Move(px(kPadding - kSwatchSpace), px(inside),
                  px(paletteWidth - 2 * kPadding + 2 * kSwatchSpace), px(swatchesHeight));
    ctl_Pal->SetColorWidth(kSwatch);
    ctl_Pal->SetColorHeight(kSwatch);
    ctl_Pal->SetColorSpace(kSwatchSpace);
    ctl_Pal->SetColorFrame(0x808080);
    ctl_Pal->SetStoreKey(QString::fromLatin1(kPaletteKey));
    ctl_Pal->ColorClick = [this](std::uint32_t colour, int index) {
        ctl_Pal_ColorClick(colour, index);
    };

    const QString signs = QStringLiteral("Ico\\20\\Computer\\Signs\\");
    but_PalEdit = Add<ctl_Button>(QStringLiteral("but_PalEdit"), holder);
    but_PalEdit->SetText(QStringLiteral("Ü&bernehmen"));
    but_PalEdit->SetIconPath(signs + QStringLiteral("Copy.ico"));
    but_PalEdit->SetToolTipText(QStringLiteral("Die Farbe in das gewählte Feld der Palette"));
    but_PalEdit->Move(px(kPadding), px(buttonsTop), px(kEditButtonWidth), px(theme::ButtonHeight));
    but_PalEdit->Click = [this] { but_PalEdit_Click(); };
    but_PalLoad = iconButton(*this, QStringLiteral("but_PalLoad"), holder,
                             signs + QStringLiteral("Load.ico"), QStringLiteral("Palette laden"));
    but_PalSave =
        iconButton(*this, QStringLiteral("but_PalSave"), holder, signs + QStringLiteral("Save.ico"),
                   QStringLiteral("Palette speichern"));
    but_PalNew = iconButton(*this, QStringLiteral("but_PalNew"), holder,
                            signs + QStringLiteral("New.ico"), QStringLiteral("Neue Palette"));
    but_PalAdd =
        iconButton(*this, QStringLiteral("but_PalAdd"), holder,
                   QStringLiteral("Ico\\20\\Overlay\\New.ico"), QStringLiteral("Farbe hinzufügen"));
    but_PalRemove = iconButton(*this, QStringLiteral("but_PalRemove"), holder,
                               QStringLiteral("Ico\\20\\Overlay\\Remove.ico"),
                               QStringLiteral("Farbe entfernen"));
    int x = paletteWidth - kPadding;
    for (ctl_Button* button : {but_PalRemove, but_PalAdd, but_PalNew, but_PalSave, but_PalLoad}) {
        x -= kIconButton;
        button->Move(px(x), px(buttonsTop), px(kIconButton), px(theme::ButtonHeight));
        x -= 4;
    }
    // These buttons are the palette's own business; the form only shows them.
    ctl_Pal->BindButtons(but_PalLoad, but_PalSave, but_PalNew, but_PalAdd, but_PalRemove,
                         pan_Color);

    ctl_Sidebar = Add<ctl_CmdBar>(QStringLiteral("ctl_Sidebar"));
    ctl_Sidebar->SetHelpVisible(false);
    ctl_Sidebar->AddButton(QStringLiteral("OK"), QStringLiteral("&OK"),
                           signs + QStringLiteral("ok.ico"), QStringLiteral("DIALOG.OK();"));
    ctl_Sidebar->AddButton(QStringLiteral("ABORT"), QStringLiteral("&Abbruch"),
                           signs + QStringLiteral("abort.ico"), QStringLiteral("DIALOG.ABORT();"));
    ctl_Sidebar->Key = [this](const QString& key) { ctl_Sidebar_Key(key); };

    pic_Colors->MouseDown = [this](int, int, float x, float y) { hColorsPress(x, y); };
    pic_Colors->MouseMove = [this](int button, int, float x, float y) {
        if (button != 0)
            hColorsPress(x, y);
    };
    // The strip counts in pixels; the mouse reports twips.
    const auto inPixels = [](float twips) { return double(twips) / Screen::TwipsPerPixel; };
    pic_ColorY->MouseDown = [this, inPixels](int, int, float x, float y) {
        hColorYPress(inPixels(x), inPixels(y));
    };
    pic_ColorY->MouseMove = [this, inPixels](int button, int, float x, float y) {
        if (button != 0)
            hColorYPress(inPixels(x), inPixels(y));
    };
    pic_Colors->DblClick = [this] { ctl_Sidebar_Key(QStringLiteral("OK")); };
    pic_ColorY->DblClick = [this] { ctl_Sidebar_Key(QStringLiteral("OK")); };

    const int clientHeight = paletteTop + paletteHeight + kMargin + theme::CmdBarHeight;
    window()->resize(kClientWidth, clientHeight);
}

void frm_DialogColor::Form_Load()
{
    DialogRequest& request = context().Request;
    m_loading = true;
    m_palIndex = 1;
    request.Result = ResultAbort;
    hShowComponents(request.Color);
    m_loading = false;
    // The start is an ordinary pick with the request's colour.
    hColorsPress(-1, -1);
}

void frm_DialogColor::hShowComponents(std::uint32_t colour)
{
    int r = 0;
    int g = 0;
    int b = 0;
    Resume([&] { GetCoreDevColors().Tools().splitColour(colour, r, g, b); });
    Resume([&] { txt_R->SetText(QString::number(r)); });
    Resume([&] { txt_G->SetText(QString::number(g)); });
    Resume([&] { txt_B->SetText(QString::number(b)); });
}

void frm_DialogColor::hColorsPress(double x, double y)
{
    std::int64_t c = pixelAt(*pic_Colors, x, y);
    if (x < 0 || y < 0 || c < 0)
        c = context().Request.Color;
    int r = 0;
    int g = 0;
    int b = 0;
    Resume([&] { GetCoreDevColors().Tools().splitColour(std::uint32_t(c), r, g, b); });

    // H is the strip's full height, so black falls on the row just below it
    // and the last row the user can press keeps a trace of a bright colour.
    const double h = pic_ColorY->ScaleHeight();
    const double w = pic_ColorY->ScaleWidth();
    for (int row = 0; row <= int(h); ++row) {
        // Multiplied before dividing, so that no rounding of a share moves a
        // component across a half.
        const auto shade = [&](int component) { return int(roundEven((h - row) * component / h)); };
        pic_ColorY->Line(0, row, w, row, QColor(shade(r), shade(g), shade(b)));
    }
    pic_ColorY->Refresh();
    hColorYPress(1, 1);
}

void frm_DialogColor::hColorYPress(double x, double y)
{
    const std::int64_t c = pixelAt(*pic_ColorY, x, y);
    if (c < 0)
        return;
    hShowComponents(std::uint32_t(c));
    pan_Color->SetBackColor(theme::FromHostColour(std::uint32_t(c)));
    context().Request.Color = std::uint32_t(c);
}

void frm_DialogColor::hTextChange()
{
    const double r = roundEven(leadingValue(txt_R->Text()));
    const double g = roundEven(leadingValue(txt_G->Text()));
    const double b = roundEven(leadingValue(txt_B->Text()));
    // Setting "0" runs this procedure again, with the component in range.
    if (r < 0 || r > 255) {
        txt_R->SetText(QStringLiteral("0"));
        return;
    }
    if (g < 0 || g > 255) {
        txt_G->SetText(QStringLiteral("0"));
        return;
    }
    if (b < 0 || b > 255) {
        txt_B->SetText(QStringLiteral("0"));
        return;
    }
    const std::uint32_t colour =
        std::uint32_t(r) + 256 * std::uint32_t(g) + 65536 * std::uint32_t(b);
    pan_Color->SetBackColor(theme::FromHostColour(colour));
    if (!m_loading)
        context().Request.Color = colour;
}

void frm_DialogColor::ctl_Pal_ColorClick(std::uint32_t colour, int index)
{
    m_palIndex = index;
    hShowComponents(colour);
}

void frm_DialogColor::but_PalEdit_Click()
{
    if (m_palIndex > ctl_Pal->Count())
        return;
    const QColor shown = pan_Color->BackColor();
    ctl_Pal->SetColor(m_palIndex, std::uint32_t(shown.red()) + 256 * std::uint32_t(shown.green()) +
                                      65536 * std::uint32_t(shown.blue()));
    ctl_Pal->Refresh();
}

void frm_DialogColor::ctl_Sidebar_Key(const QString& key)
{
    const QString command = key.toUpper();
    if (command == u"OK") {
        context().Request.Result = ResultOk;
        Unload();
    } else if (command == u"ABORT") {
        Unload();
    }
}

} // namespace fw
