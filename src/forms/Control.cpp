#include "forms/Control.h"

#include "forms/Form.h"
#include "forms/KeyCodes.h"
#include "forms/Screen.h"

#include <QCursor>
#include <QEvent>
#include <QMouseEvent>
#include <QPixmap>
#include <QWidget>

namespace fw {

namespace {
const char* const kControlProperty = "fw_control";

int buttonOf(Qt::MouseButtons buttons)
{
    int button = 0;
    if (buttons & Qt::LeftButton)
        button |= 1;
    if (buttons & Qt::RightButton)
        button |= 2;
    if (buttons & Qt::MiddleButton)
        button |= 4;
    return button;
}

} // namespace

// Focus and mouse events of one control's widget become its callbacks.
class ControlEvents : public QObject {
  public:
    explicit ControlEvents(Control& control) : QObject(control.widget()), m_control(control) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched != m_control.widget())
            return false;
        switch (event->type()) {
        case QEvent::FocusIn:
            m_control.raise(m_control.GotFocus);
            break;
        case QEvent::FocusOut:
            m_control.raise(m_control.LostFocus);
            break;
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseMove:
        case QEvent::MouseButtonDblClick: {
            auto* me = static_cast<QMouseEvent*>(event);
            const float x = float(ToTwips(1)) * float(me->position().x());
            const float y = float(ToTwips(1)) * float(me->position().y());
            const int shift = ShiftOf(me->modifiers());
            if (event->type() == QEvent::MouseButtonPress)
                m_control.raise(m_control.MouseDown, buttonOf(me->button()), shift, x, y);
            else if (event->type() == QEvent::MouseButtonRelease) {
                m_control.raise(m_control.MouseUp, buttonOf(me->button()), shift, x, y);
                if (m_control.m_clickOnRelease && me->button() == Qt::LeftButton &&
                    m_control.widget()->rect().contains(me->position().toPoint()))
                    m_control.raise(m_control.Click);
            } else if (event->type() == QEvent::MouseMove)
                m_control.raise(m_control.MouseMove, buttonOf(me->buttons()), shift, x, y);
            else
                m_control.raise(m_control.DblClick);
            break;
        }
        default:
            break;
        }
        return false;
    }

  private:
    Control& m_control;
};

Control::Control(Form& form, QString name, QString typeName, QWidget* widget)
    : m_form(form), m_name(std::move(name)), m_typeName(std::move(typeName)), m_widget(nullptr)
{
    setWidget(widget);
}

Control::~Control() = default;

void Control::setWidget(QWidget* widget)
{
    m_widget = widget;
    if (!widget)
        return;
    widget->setObjectName(m_name);
    widget->setProperty(kControlProperty, QVariant::fromValue(static_cast<void*>(this)));
    widget->installEventFilter(new ControlEvents(*this));
}

bool Control::eventsLive() const
{
    return m_form.eventsLive();
}

Control* Control::fromWidget(const QWidget* widget)
{
    for (const QWidget* w = widget; w; w = w->parentWidget()) {
        const QVariant v = w->property(kControlProperty);
        if (v.isValid())
            return static_cast<Control*>(v.value<void*>());
        if (w->isWindow())
            break;
    }
    return nullptr;
}

int Control::Left() const
{
    return m_widget ? ToTwips(m_widget->x()) : 0;
}
int Control::Top() const
{
    return m_widget ? ToTwips(m_widget->y()) : 0;
}
int Control::Width() const
{
    return m_widget ? ToTwips(m_widget->width()) : 0;
}
int Control::Height() const
{
    return m_widget ? ToTwips(m_widget->height()) : 0;
}

void Control::SetLeft(int twips)
{
    if (m_widget)
        m_widget->move(ToPixels(twips), m_widget->y());
}

void Control::SetTop(int twips)
{
    if (m_widget)
        m_widget->move(m_widget->x(), ToPixels(twips));
}

void Control::SetWidth(int twips)
{
    if (m_widget)
        m_widget->resize(std::max(0, ToPixels(twips)), m_widget->height());
}

void Control::SetHeight(int twips)
{
    if (m_widget)
        m_widget->resize(m_widget->width(), std::max(0, ToPixels(twips)));
}

void Control::Move(int left, int top, int width, int height)
{
    SetLeft(left);
    SetTop(top);
    if (width >= 0)
        SetWidth(width);
    if (height >= 0)
        SetHeight(height);
}

bool Control::Visible() const
{
    return m_widget && !m_widget->isHidden();
}

void Control::SetVisible(bool visible)
{
    if (m_widget)
        m_widget->setVisible(visible);
}

bool Control::Enabled() const
{
    return !m_widget || m_widget->isEnabled();
}

void Control::SetEnabled(bool enabled)
{
    if (m_widget)
        m_widget->setEnabled(enabled);
}

QString Control::ToolTipText() const
{
    return m_widget ? m_widget->toolTip() : QString();
}

void Control::SetToolTipText(const QString& text)
{
    if (m_widget)
        m_widget->setToolTip(text);
}

void Control::SetFocus()
{
    if (!m_widget)
        return;
    m_widget->setFocus(Qt::OtherFocusReason);
}

bool Control::HasFocus() const
{
    return m_widget && m_widget->window()->focusWidget() &&
           Control::fromWidget(m_widget->window()->focusWidget()) == this;
}

Control* Control::Container() const
{
    return m_widget ? Control::fromWidget(m_widget->parentWidget()) : nullptr;
}

void Control::Refresh()
{
    if (m_widget)
        m_widget->repaint();
}

void Control::SetMousePointer(int pointer)
{
    m_mousePointer = pointer;
    showMousePointer();
}

void Control::SetMouseIcon(const QImage& icon)
{
    m_mouseIcon = icon;
    showMousePointer();
}

void Control::showMousePointer()
{
    if (!m_widget)
        return;
    switch (m_mousePointer) {
    case 1:
        m_widget->setCursor(Qt::ArrowCursor);
        break;
    case 2:
        m_widget->setCursor(Qt::CrossCursor);
        break;
    case 3:
        m_widget->setCursor(Qt::IBeamCursor);
        break;
    case 11:
        m_widget->setCursor(Qt::WaitCursor);
        break;
    case 99:
        if (!m_mouseIcon.isNull()) {
            m_widget->setCursor(QCursor(QPixmap::fromImage(m_mouseIcon)));
            break;
        }
        [[fallthrough]];
    default:
        m_widget->unsetCursor();
    }
}

bool Control::PerformClick()
{
    if (!Enabled() || !Visible())
        return false;
    raise(Click);
    return true;
}

QVariant Control::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"NAME")
        return m_name;
    if (key == u"INDEX")
        return m_index;
    if (key == u"LEFT")
        return Left();
    if (key == u"TOP")
        return Top();
    if (key == u"WIDTH")
        return Width();
    if (key == u"HEIGHT")
        return Height();
    if (key == u"VISIBLE")
        return Visible();
    if (key == u"ENABLED")
        return Enabled();
    if (key == u"TAG")
        return m_tag;
    if (key == u"TOOLTIPTEXT")
        return ToolTipText();
    if (key == u"MOUSEPOINTER")
        return m_mousePointer;
    return {};
}

bool Control::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"LEFT")
        SetLeft(value.toInt());
    else if (key == u"TOP")
        SetTop(value.toInt());
    else if (key == u"WIDTH")
        SetWidth(value.toInt());
    else if (key == u"HEIGHT")
        SetHeight(value.toInt());
    else if (key == u"VISIBLE")
        SetVisible(value.toBool());
    else if (key == u"ENABLED")
        SetEnabled(value.toBool());
    else if (key == u"TAG")
        SetTag(value.toString());
    else if (key == u"TOOLTIPTEXT")
        SetToolTipText(value.toString());
    else if (key == u"MOUSEPOINTER")
        SetMousePointer(value.toInt());
    else
        return false;
    return true;
}

} // namespace fw
