#include "touch/frm_DialogKeyboard.h"

#include "controls/ctl_Button.h"
#include "core/hLangText.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/SendKeys.h"
#include "forms/StdControls.h"
#include "forms/Text.h"
#include "host/mdl_CoreDevWrapper.h"
#include "touch/KeyFaces.h"

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QPalette>
#include <QWidget>
#include <cmath>
#include <stdexcept>

namespace fw {

namespace {

constexpr int kFormWidth = 11490; // client area, twips
constexpr int kFormHeight = 5190;
constexpr QSize kBodySize(750, 340); // the keyboard's drawn body, pixels
constexpr int kDragThreshold = 11;   // pixels before a press becomes a drag
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

QFont tahoma(double points, bool bold = false)
{
    QFont font(QStringLiteral("Tahoma"));
    font.setPointSizeF(points);
    font.setBold(bold);
    return font;
}

QString designText(const QString& text)
{
    const int bar = text.indexOf(u'|');
    if (bar < 0)
        return text;
    return qs(hLangText(text.left(bar).toStdString(), text.mid(bar + 1).toStdString()));
}

const QColor kGrey(0x80, 0x80, 0x80); // classic colour number 7

} // namespace

frm_DialogKeyboard::frm_DialogKeyboard() : Form(QStringLiteral("frm_DialogKeyboard"))
{
    QWidget* w = window();
    w->setWindowFlag(Qt::FramelessWindowHint);
    w->setAttribute(Qt::WA_TranslucentBackground);
    w->resize(ToPixels(kFormWidth), ToPixels(kFormHeight));
    SetBackColor(QColor(0xFF, 0x00, 0xFF));

    auto* body = Add<PictureBox>(QStringLiteral("pic_Background"));
    body->widget()->setGeometry(QRect(QPoint(0, 0), kBodySize));
    body->SetBackColor(Qt::transparent);
    body->SetPicture(DrawKeyboardBody(kBodySize));
    body->widget()->setAttribute(Qt::WA_TransparentForMouseEvents);

    lab_Title = Add<Label>(QStringLiteral("lab_Title"));
    lab_Title->Move(180, 240, 3200, 200);
    lab_Title->SetFont(tahoma(8.25, true));
    lab_Title->SetForeColor(Qt::white);
    lab_Title->SetCaption(designText(QStringLiteral("Wert eingeben für:|Enter value for:")));
    lab_Description = Add<Label>(QStringLiteral("lab_Description"));
    lab_Description->Move(180, 420, 3200, 400);
    lab_Description->SetFont(tahoma(14.25));
    lab_Description->SetForeColor(Qt::white);

    txt_Input = Add<TextBox>(QStringLiteral("txt_Input"));
    txt_Input->Move(3480, 300, 6675, 615);
    txt_Input->SetFont(tahoma(20.25));

    but_Enter = Add<CommandButton>(QStringLiteral("but_Enter"));
    but_Enter->SetCaption(QStringLiteral("Command1"));
    but_Enter->SetDefault(true);
    but_Enter->Click = [this] { confirm(); };

    but_Quit = Add<ctl_Button>(QStringLiteral("but_Quit"));
    but_Quit->Move(10260, 300, 720, 615);
    but_Quit->SetText(QStringLiteral("X"));
    but_Quit->SetToolTipText(
        designText(QStringLiteral("Dieses Fenster schließen|Close this window")));
    but_Quit->Click = [this] {
        m_confirmed = false;
        tmr_Unload->SetEnabled(true);
    };

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

    buildKeys();
    w->installEventFilter(new PressFilter(
        w, [this] { pressStart(); }, [this] { pressEnd(); }));
}

frm_DialogKeyboard::~frm_DialogKeyboard() = default;

void frm_DialogKeyboard::buildKeys()
{
    pic_Key = ControlArray<PictureBox>(QStringLiteral("pic_Key"), [this](int index) {
        return Add<PictureBox>(QStringLiteral("pic_Key"));
        (void)index;
    });
    lab_Key = ControlArray<KeyLabel>(QStringLiteral("lab_Key"), [this](int index) {
        return Add<KeyLabel>(QStringLiteral("lab_Key"), pic_Key[index].widget());
    });
    for (const KeyDesign& design : KeyboardTable()) {
        const int i = design.index;
        PictureBox& pic = pic_Key.Load(i);
        pic.Move(design.left, design.top, design.width, design.height);
        pic.SetBackColor(Qt::transparent);
        const int stem = design.tag == QLatin1String("ENTER") ? ToPixels(10260 - design.left) : 0;
        keyFaces[i] = DrawKeyCap(QSize(ToPixels(design.width), ToPixels(design.height)), stem);
        pic.SetPicture(keyFaces[i]);
        pic.widget()->installEventFilter(new PressFilter(
            pic.widget(), [this, i] { keyDown(i); }, [this, i] { keyUp(i); },
            [this, i] { hPressKey(i); }));

        KeyLabel& label = lab_Key.Load(i);
        label.Move(design.labelLeft, design.labelTop, design.labelWidth, 435);
        label.SetFont(tahoma(design.points), design.wingdings);
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
        label.Click = [this, i] {
            if (!wasDragged)
                hPressKey(i);
        };
        if (!design.faces.isEmpty())
            faceStrings[i] = design.faces;
    }
    // The UP key lies over the corner of the ENTER cap.
    pic_Key[54].widget()->raise();
}

ModifierStates frm_DialogKeyboard::States() const
{
    auto at = [this](int index) {
        return index >= 0 ? keyState[static_cast<std::size_t>(index)] : 0;
    };
    return {at(shiftIndex), at(ctrlIndex), at(altIndex), at(symIndex)};
}

QString frm_DialogKeyboard::hKeyName(int index) const
{
    const KeyLabel& label = lab_Key[index];
    if (!label.Tag().isEmpty())
        return label.Tag().toUpper();
    return label.Caption();
}

void frm_DialogKeyboard::Form_Load()
{
    but_Enter->SetLeft(Width() + 100);
    for (const auto& [i, pic] : pic_Key) {
        Resume([&, i = i, pic = pic] {
            pic->SetAutoRedraw(true);
            pic->SetScaleMode(3);
            keyName[static_cast<std::size_t>(i)] = hKeyName(i);
            const QString& name = keyName[static_cast<std::size_t>(i)];
            if (name == QLatin1String("SHIFT"))
                shiftIndex = i;
            else if (name == QLatin1String("CTRL"))
                ctrlIndex = i;
            else if (name == QLatin1String("SYM"))
                symIndex = i;
            else if (name == QLatin1String("ALT"))
                altIndex = i;
        });
    }
    Resume([&] { GetCoreDevSystem().Windows().setWindowColorKey(*this, 100, 1, kMagenta); });
    Resume([&] {
        if (!Description.isEmpty()) {
            lab_Description->SetCaption(Description);
        } else {
            lab_Description->SetCaption(QString());
            lab_Title->SetCaption(QStringLiteral("Bitte geben Sie den Wert ein:"));
        }
    });
    int x = 0, y = 0;
    Resume([&] {
        CoreDev& root = CoreDev::Instance();
        x = static_cast<int>(std::lround(root.mouseX() * Screen::TwipsPerPixelX() - Width() / 2.0));
        y = static_cast<int>(
            std::lround(root.mouseY() * Screen::TwipsPerPixelY() - Height() / 2.0));
    });
    Resume([&] { placeByTarget(x, y); });
    Resume([&] {
        const int tppX = Screen::TwipsPerPixelX(), tppY = Screen::TwipsPerPixelY();
        x = std::max(x, 0);
        y = std::max(y, 0);
        if (y + Height() > Screen::Height() - 30 * tppY)
            y = Screen::Height() - 30 * tppY - Height();
        if (x + Width() > Screen::Width() - 30 * tppX)
            x = Screen::Width() - 30 * tppX - Width();
    });
    Move(x, y);
    Resume([&] {
        if (!target)
            throw std::runtime_error("no target");
        const QString type = target->TypeName();
        QVariant text;
        if (type == QLatin1String("clt_TermInput"))
            text = target->GetProperty(QStringLiteral("TERM"));
        else if (type == QLatin1String("Label"))
            text = target->GetProperty(QStringLiteral("Caption"));
        else // "RichTextbox", as a rich text box never calls itself, falls here too
            text = target->GetProperty(QStringLiteral("TEXT"));
        if (!text.isValid())
            throw std::runtime_error("target without that property");
        txt_Input->SetText(text.toString());
        txt_Input->SetSelStart(static_cast<int>(txt_Input->Text().size()));
    });
}

void frm_DialogKeyboard::placeByTarget(int& x, int& y)
{
    if (!target)
        return;
    // The resource forms' shared number box places its keyboard itself.
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

void frm_DialogKeyboard::hUpdateKeys()
{
    const ModifierStates states = States();
    for (const auto& [i, label] : lab_Key) {
        const QString& name = keyName[static_cast<std::size_t>(i)];
        QString face = QStringLiteral("_NOT_");
        if (name == QLatin1String("ESC"))
            face = states.sym != 0 ? QStringLiteral("Menü") : QStringLiteral("ESC");
        else if (name == QLatin1String("UP"))
            face = QChar(states.shift != 0 ? 0xE9 : 0xE1);
        else if (name == QLatin1String("LEFT"))
            face = QChar(states.shift != 0 ? 0xE7 : 0xDF);
        else if (name == QLatin1String("DOWN"))
            face = QChar(states.shift != 0 ? 0xEA : 0xE2);
        else if (name == QLatin1String("RIGHT"))
            face = QChar(states.shift != 0 ? 0xE8 : 0xE0);
        else if (name == QLatin1String("www."))
            face = states.shift != 0 ? QStringLiteral("http://") : QStringLiteral("www.");
        else if (auto it = faceStrings.find(i); it != faceStrings.end() && it->second.size() > 1)
            face = hKeys(it->second, states);
        if (face == QLatin1String("_NOT_"))
            continue;
        if (!face.isEmpty()) {
            label->SetCaption(face);
            label->SetForeColor(Qt::black);
        } else {
            label->SetForeColor(kGrey);
            label->SetCaption(name);
        }
    }
}

void frm_DialogKeyboard::hPaintKey(int index, int state)
{
    PictureBox& key = pic_Key[index];
    const QColor mark = pic_ColorSel->BackColor();
    key.Cls();
    key.SetPicture(keyFaces[index]); // the face is the key's picture, not its drawing
    if (state == 1) {
        // Mask pen: the face stays visible through the highlight colour.
        QImage masked =
            keyFaces[index].copy(2, 2, int(key.ScaleWidth()) - 4, int(key.ScaleHeight()) - 4);
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

void frm_DialogKeyboard::keyDown(int index)
{
    wasDragged = false;
    hPaintKey(index, 1);
    pressStart();
    const QString name = hKeyName(index);
    int modifier = -1;
    if (name == QLatin1String("SHIFT"))
        modifier = shiftIndex;
    else if (name == QLatin1String("SYM"))
        modifier = symIndex;
    else if (name == QLatin1String("CTRL"))
        modifier = ctrlIndex;
    else if (name == QLatin1String("ALT"))
        modifier = altIndex;
    if (modifier >= 0) {
        state(modifier) = hNextState(state(modifier));
        hUpdateKeys();
    }
}

void frm_DialogKeyboard::keyUp(int index)
{
    pressEnd();
    hPaintKey(index, keyState[static_cast<std::size_t>(index)]);
}

void frm_DialogKeyboard::pressStart()
{
    dragStart = QCursor::pos();
    mousePressed = true;
}

void frm_DialogKeyboard::pressEnd()
{
    dragging = false;
    mousePressed = false;
}

void frm_DialogKeyboard::hPressKey(int index)
{
    const QString name = hKeyName(index);
    const ModifierStates states = States();
    if (name == QLatin1String("CTRL") || name == QLatin1String("SYM") ||
        name == QLatin1String("SHIFT") || name == QLatin1String("ALT"))
        return;
    static const std::map<QString, QString> quoted = {
        {QStringLiteral("+"), QStringLiteral("{+}")},
        {QStringLiteral("*"), QStringLiteral("{*}")},
        {QStringLiteral("^"), QStringLiteral("{^}")},
        {QStringLiteral("%"), QStringLiteral("{%}")},
        {QStringLiteral("{"), QStringLiteral("{{}")},
        {QStringLiteral("}"), QStringLiteral("{}}")},
        {QStringLiteral("("), QStringLiteral("{(}")},
        {QStringLiteral(")"), QStringLiteral("{)}")},
        {QStringLiteral("TAB"), QStringLiteral("{tab}")},
        {QStringLiteral("BACKSPACE"), QStringLiteral("{bs}")}};
    const bool shifted = states.shift != 0;
    static const std::map<QString, std::pair<QString, QString>> arrows = {
        {QStringLiteral("UP"), {QStringLiteral("{up}"), QStringLiteral("{pgup}")}},
        {QStringLiteral("LEFT"), {QStringLiteral("{left}"), QStringLiteral("{home}")}},
        {QStringLiteral("DOWN"), {QStringLiteral("{down}"), QStringLiteral("{pgdn}")}},
        {QStringLiteral("RIGHT"), {QStringLiteral("{right}"), QStringLiteral("{end}")}}};
    QString s;
    bool prefix = true;
    if (auto q = quoted.find(name); q != quoted.end()) {
        s = q->second;
    } else if (name == QLatin1String("CLEAR")) {
        Resume([&] { txt_Input->SetText(QString()); });
    } else if (name == QLatin1String("OK") || name == QLatin1String("ENTER")) {
        confirm();
    } else if (auto a = arrows.find(name); a != arrows.end()) {
        s = shifted ? a->second.second : a->second.first;
        prefix = false;
    } else if (name == QLatin1String("ESC")) {
        if (states.sym != 0) { // the key reads "Menü": away at once, unconfirmed
            m_confirmed = false;
            Unload();
            return;
        }
        s = QStringLiteral("{esc}");
        prefix = false;
    } else if (name.size() == 1) {
        s = keyName[static_cast<std::size_t>(index)];
    } else {
        s = name;
    }
    if (prefix) {
        if (states.shift > 0)
            s.prepend(u'+');
        if (states.ctrl > 0)
            s.prepend(u'^');
        if (states.alt > 0)
            s.prepend(u'%');
        if (states.sym > 0)
            s.prepend(QStringLiteral("^%"));
    }
    Resume([&] {
        txt_Input->SetFocus();
        SendKeys(s, txt_Input->widget());
    });
    for (int modifier : {ctrlIndex, symIndex, shiftIndex, altIndex}) {
        if (modifier >= 0 && state(modifier) == 1) {
            state(modifier) = 0;
            hPaintKey(modifier, 0);
            hUpdateKeys();
        }
    }
}

void frm_DialogKeyboard::writeTarget()
{
    if (!target)
        throw std::runtime_error("no target");
    const QString type = target->TypeName();
    const QString text = txt_Input->Text();
    bool written = false;
    if (type == QLatin1String("clt_TermInput"))
        written = target->SetProperty(QStringLiteral("TERM"), text);
    else if (type == QLatin1String("Label"))
        written = target->SetProperty(QStringLiteral("Caption"), text);
    else if (type == QLatin1String("RichTextBox"))
        written = target->SetProperty(QStringLiteral("TextRTF"), text);
    else
        written = target->SetProperty(QStringLiteral("TEXT"), text);
    if (!written)
        throw std::runtime_error("target without that property");
}

void frm_DialogKeyboard::confirm()
{
    Resume([&] { writeTarget(); });
    m_confirmed = true;
    tmr_Unload->SetEnabled(true);
}

void frm_DialogKeyboard::tmr_Dragging_Tick()
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
