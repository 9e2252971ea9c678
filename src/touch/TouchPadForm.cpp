#include "touch/TouchPadForm.h"

#include "controls/ctl_Button.h"
#include "core/hLangText.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "forms/Text.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QPalette>
#include <QWidget>
#include <cmath>
#include <stdexcept>

namespace fw {

namespace {

constexpr int kDragThreshold = 11; // pixels before a press becomes a drag
constexpr std::uint32_t kMagenta = 0xFF00FF;

// Press and release on a window without events of its own: the key's
// surface, and the form's background.
class PressFilter : public QObject {
  public:
    PressFilter(QObject* parent, std::function<void()> down, std::function<void()> up,
                std::function<void()> click = {})
        : QObject(parent), m_down(std::move(down)), m_up(std::move(up)), m_click(std::move(click))
    {
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* widget = qobject_cast<QWidget*>(watched);
        if (!widget || (event->type() != QEvent::MouseButtonPress &&
                        event->type() != QEvent::MouseButtonRelease))
            return false;
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() != Qt::LeftButton)
            return false;
        if (event->type() == QEvent::MouseButtonPress) {
            m_down();
        } else {
            m_up();
            if (m_click && widget->rect().contains(mouse->position().toPoint()))
                m_click();
        }
        return true;
    }

  private:
    std::function<void()> m_down, m_up, m_click;
};

QString designText(const QString& text)
{
    const int bar = text.indexOf(u'|');
    if (bar < 0)
        return text;
    return qs(hLangText(text.left(bar).toStdString(), text.mid(bar + 1).toStdString()));
}

} // namespace

QFont TouchFont(double points, bool bold)
{
    QFont font(QStringLiteral("Tahoma"));
    font.setPointSizeF(points);
    font.setBold(bold);
    return font;
}

TouchPadForm::TouchPadForm(const QString& name, QSize clientTwips, QSize bodyPixels,
                           const QRectF& panel)
    : Form(name)
{
    SetBorderStyle(0);
    QWidget* w = window();
    w->setAttribute(Qt::WA_TranslucentBackground);
    w->resize(ToPixels(clientTwips.width()), ToPixels(clientTwips.height()));
    SetBackColor(QColor(0xFF, 0x00, 0xFF));

    auto* body = Add<PictureBox>(QStringLiteral("pic_Background"));
    body->widget()->setGeometry(QRect(QPoint(0, 0), bodyPixels));
    body->SetBackColor(Qt::transparent);
    body->SetPicture(DrawKeyboardBody(bodyPixels, panel));
    body->widget()->setAttribute(Qt::WA_TransparentForMouseEvents);

    lab_Title = Add<Label>(QStringLiteral("lab_Title"));
    lab_Title->Move(180, 240, 3200, 200);
    lab_Title->SetFont(TouchFont(8.25, true));
    lab_Title->SetForeColor(Qt::white);
    lab_Title->SetCaption(designText(QStringLiteral("Wert eingeben für:|Enter value for:")));
    lab_Description = Add<Label>(QStringLiteral("lab_Description"));
    lab_Description->Move(180, 420, 3200, 400);
    lab_Description->SetFont(TouchFont(14.25));
    lab_Description->SetForeColor(Qt::white);

    txt_Input = Add<TextBox>(QStringLiteral("txt_Input"));
    txt_Input->SetFont(TouchFont(20.25));

    but_Enter = Add<CommandButton>(QStringLiteral("but_Enter"));
    but_Enter->SetCaption(QStringLiteral("Command1"));
    but_Enter->SetDefault(true);

    but_Quit = Add<ctl_Button>(QStringLiteral("but_Quit"));
    but_Quit->SetText(QStringLiteral("X"));
    but_Quit->SetToolTipText(
        designText(QStringLiteral("Dieses Fenster schließen|Close this window")));
    but_Quit->Click = [this] { finish(false); };

    pic_ColorSel = Add<PictureBox>(QStringLiteral("pic_ColorSel"));
    pic_ColorSel->SetVisible(false);
    pic_ColorSel->SetBackColor(QApplication::palette().color(QPalette::Highlight));

    tmr_Dragging = Add<Timer>(QStringLiteral("tmr_Dragging"));
    tmr_Dragging->SetInterval(10);
    tmr_Dragging->Tick = [this] { tmr_Dragging_Tick(); };
    tmr_Dragging->SetEnabled(true);
    tmr_Unload = Add<Timer>(QStringLiteral("tmr_Unload"));
    tmr_Unload->SetInterval(100);
    tmr_Unload->Tick = [this] {
        tmr_Unload->SetEnabled(false);
        Unload();
    };

    pic_Key = ControlArray<PictureBox>(QStringLiteral("pic_Key"), [this](int) {
        return Add<PictureBox>(QStringLiteral("pic_Key"));
    });
    lab_Key = ControlArray<KeyLabel>(QStringLiteral("lab_Key"), [this](int index) {
        return Add<KeyLabel>(QStringLiteral("lab_Key"), pic_Key[index].widget());
    });
    w->installEventFilter(new PressFilter(
        w, [this] { pressStart(); }, [this] { pressEnd(); }));
}

TouchPadForm::~TouchPadForm() = default;

void TouchPadForm::loadKey(const KeyDesign& design, int leftOfStem)
{
    const int i = design.index;
    PictureBox& pic = pic_Key.Load(i);
    pic.Move(design.left, design.top, design.width, design.height);
    pic.SetBackColor(Qt::transparent);
    m_keyFaces[i] = DrawKeyCap(QSize(ToPixels(design.width), ToPixels(design.height)), leftOfStem);
    pic.SetPicture(m_keyFaces[i]);
    pic.widget()->installEventFilter(new PressFilter(
        pic.widget(), [this, i] { keyDown(i); }, [this, i] { keyUp(i); },
        [this, i] { onKeyClick(i, false); }));

    KeyLabel& label = lab_Key.Load(i);
    label.Move(design.labelLeft, design.labelTop, design.labelWidth, 435);
    label.SetFont(TouchFont(design.points), design.wingdings);
    label.SetCaption(design.caption);
    label.SetTag(design.tag);
    label.MouseDown = [this, i](int button, int, float, float) {
        if (button == 1)
            keyDown(i);
    };
    label.MouseUp = [this, i](int button, int, float, float) {
        if (button == 1)
            keyUp(i);
    };
    label.Click = [this, i] { onKeyClick(i, true); };
}

void TouchPadForm::hideEnterButton()
{
    but_Enter->SetLeft(Width() + 100);
}

void TouchPadForm::placeOnLoad(bool passOver)
{
    auto step = [passOver](auto&& body) {
        if (passOver)
            Resume(body);
        else
            body();
    };
    step([&] { GetCoreDevSystem().Windows().setWindowColorKey(*this, 100, 1, kMagenta); });
    step([&] {
        if (!Description.isEmpty()) {
            lab_Description->SetCaption(Description);
        } else {
            lab_Description->SetCaption(QString());
            lab_Title->SetCaption(QStringLiteral("Bitte geben Sie den Wert ein:"));
        }
    });
    int x = 0, y = 0;
    step([&] {
        CoreDev& root = CoreDev::Instance();
        x = static_cast<int>(std::lround(root.mouseX() * Screen::TwipsPerPixelX() - Width() / 2.0));
        y = static_cast<int>(
            std::lround(root.mouseY() * Screen::TwipsPerPixelY() - Height() / 2.0));
    });
    step([&] { placeByTarget(x, y); });
    step([&] {
        const int tppX = Screen::TwipsPerPixelX(), tppY = Screen::TwipsPerPixelY();
        x = std::max(x, 0);
        y = std::max(y, 0);
        if (y + Height() > Screen::Height() - 30 * tppY)
            y = Screen::Height() - 30 * tppY - Height();
        if (x + Width() > Screen::Width() - 30 * tppX)
            x = Screen::Width() - 30 * tppX - Width();
    });
    Move(x, y);
}

void TouchPadForm::placeByTarget(int& x, int& y)
{
    if (!target)
        return;
    // The resource forms' shared number box places its pad itself.
    if (target->Name() == QLatin1String("txt_NumberInput") &&
        target->form().Name() == QLatin1String("frm_ResourceControls"))
        return;
    WindowHelper& windows = GetCoreDevSystem().Windows();
    const int tppX = Screen::TwipsPerPixelX(), tppY = Screen::TwipsPerPixelY();
    if (target->TypeName() == QLatin1String("Label")) {
        // A label has no window: its container's edge plus its own offset.
        Control* container = target->Container();
        const QPoint origin =
            container ? QPoint(windows.windowLeft(*container), windows.windowTop(*container))
                      : target->form().clientArea()->mapToGlobal(QPoint());
        x = static_cast<int>(std::lround(origin.x() + double(target->Left()) / tppX)) * tppX;
        y = static_cast<int>(std::lround(origin.y() + double(target->Top()) / tppY)) * tppY;
        return;
    }
    const int centre = (windows.windowLeft(*target) + windows.windowRight(*target)) / 2;
    const int below = windows.windowBottom(*target);
    x = centre * tppX - Width() / 2;
    y = below * tppY;
}

QString TouchPadForm::readTarget() const
{
    if (!target)
        throw std::runtime_error("no target");
    const QString type = target->TypeName();
    QVariant text;
    if (type == QLatin1String("clt_TermInput"))
        text = target->GetProperty(QStringLiteral("TERM"));
    else if (type == QLatin1String("Label"))
        text = target->GetProperty(QStringLiteral("Caption"));
    else // a rich text box, which never calls itself "RichTextbox", falls here too
        text = target->GetProperty(QStringLiteral("TEXT"));
    if (!text.isValid())
        throw std::runtime_error("target without that property");
    return text.toString();
}

void TouchPadForm::writeTarget(const QString& text, bool richText)
{
    if (!target)
        throw std::runtime_error("no target");
    const QString type = target->TypeName();
    bool written = false;
    if (type == QLatin1String("clt_TermInput"))
        written = target->SetProperty(QStringLiteral("TERM"), text);
    else if (type == QLatin1String("Label"))
        written = target->SetProperty(QStringLiteral("Caption"), text);
    else if (richText && type == QLatin1String("RichTextBox"))
        written = target->SetProperty(QStringLiteral("TextRTF"), text);
    else
        written = target->SetProperty(QStringLiteral("TEXT"), text);
    if (!written)
        throw std::runtime_error("target without that property");
}

void TouchPadForm::finish(bool confirmed)
{
    m_confirmed = confirmed;
    tmr_Unload->SetEnabled(true);
}

void TouchPadForm::hPaintKey(int index, int state)
{
    PictureBox& key = pic_Key[index];
    const QImage& face = m_keyFaces[index];
    const QColor mark = pic_ColorSel->BackColor();
    key.Cls();
    key.SetPicture(face); // the face is the key's picture, not its drawing
    if (state == 1) {
        // Mask pen over the box (2, 2)-(ScaleWidth - 3, ScaleHeight - 3): the
        // face stays visible through the highlight colour.
        const double perUnit = key.ScaleMode() == 3 ? 1.0 : 1.0 / Screen::TwipsPerPixel;
        const int left = static_cast<int>(std::lround(2 * perUnit));
        const int right = static_cast<int>(std::lround((key.ScaleWidth() - 3) * perUnit));
        const int bottom = static_cast<int>(std::lround((key.ScaleHeight() - 3) * perUnit));
        QImage masked = face.copy(left, left, right - left + 1, bottom - left + 1);
        const QRgb pen = mark.rgb();
        for (int yy = 0; yy < masked.height(); ++yy) {
            auto* row = reinterpret_cast<QRgb*>(masked.scanLine(yy));
            for (int xx = 0; xx < masked.width(); ++xx)
                if (qAlpha(row[xx]) != 0)
                    row[xx] = (row[xx] & pen) | (row[xx] & 0xFF000000u);
        }
        key.PaintPicture(masked, 2, 2);
    } else if (state == 2) {
        const int y = static_cast<int>(std::lround((key.ScaleHeight() - 16) / 2));
        key.Box(8, y, 23, y + 15, mark, true);
        key.Box(8, y, 23, y + 15, Qt::black, false);
    }
}

void TouchPadForm::keyDown(int index)
{
    wasDragged = false;
    hPaintKey(index, 1);
    pressStart();
    onKeyDown(index);
}

void TouchPadForm::keyUp(int index)
{
    pressEnd();
    hPaintKey(index, restingState(index));
}

void TouchPadForm::pressStart()
{
    dragStart = QCursor::pos();
    mousePressed = true;
}

void TouchPadForm::pressEnd()
{
    dragging = false;
    mousePressed = false;
}

void TouchPadForm::tmr_Dragging_Tick()
{
    const QPoint cursor = QCursor::pos();
    const int tppX = Screen::TwipsPerPixelX(), tppY = Screen::TwipsPerPixelY();
    if (dragging) {
        int x = (cursor.x() - dragStart.x()) * tppX + formAtDragStart.x();
        int y = (cursor.y() - dragStart.y()) * tppY + formAtDragStart.y();
        const int margin = 30 * tppX; // one margin for both axes
        if (x < margin)
            x = 0;
        if (x + Width() - 1 + margin > Screen::Width())
            x = Screen::Width() - Width();
        if (y < margin)
            y = 0;
        if (y + Height() - 1 + margin > Screen::Height())
            y = Screen::Height() - Height();
        Move(x, y);
    } else if (mousePressed && (std::abs(cursor.x() - dragStart.x()) >= kDragThreshold ||
                                std::abs(cursor.y() - dragStart.y()) >= kDragThreshold)) {
        dragStart = cursor;
        formAtDragStart = QPoint(Left(), Top());
        dragging = true;
        wasDragged = true;
    }
}

} // namespace fw
