#include "controls/ctl_Option.h"

#include "controls/Theme.h"
#include "forms/Form.h"
#include "forms/Resume.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>

namespace fw {

namespace {

constexpr int kIcon = 32;
constexpr int kRadius = 8;

// A colour moved by a shade amount through the host's colour tools, so that
// the cards match the host's other shaded chrome.
QColor shaded(std::uint32_t colour, int amount)
{
    std::uint32_t result = colour;
    Resume([&] {
        ColourTools& tools = GetCoreDevColors().Tools();
        if (amount > 0)
            result = tools.ColorShadeA(colour, 0, amount);
        else if (amount < 0)
            result = tools.ColorShadeB(colour, 0, -amount);
    });
    return theme::FromHostColour(result);
}

} // namespace

class OptionCard : public QWidget {
  public:
    OptionCard(ctl_Option& owner, QWidget* parent) : QWidget(parent), m_owner(owner)
    {
        setFocusPolicy(Qt::StrongFocus);
        setCursor(Qt::PointingHandCursor);
    }

  protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        const QRectF card = QRectF(rect()).adjusted(1, 1, -1, -1);
        QLinearGradient fill(card.topLeft(), card.bottomLeft());
        fill.setColorAt(0, shaded(m_owner.m_colorA, m_owner.m_shadeA));
        fill.setColorAt(1, shaded(m_owner.m_colorB, m_owner.m_shadeB));
        p.setBrush(fill);
        const bool chosen = m_owner.m_value;
        p.setPen(QPen(chosen ? theme::Accent() : theme::ButtonBorder(), chosen ? 2 : 1));
        p.drawRoundedRect(card, kRadius, kRadius);
        if (hasFocus()) {
            p.setPen(QPen(theme::Accent(), 1, Qt::DotLine));
            p.setBrush(Qt::NoBrush);
            p.drawRoundedRect(card.adjusted(3, 3, -3, -3), kRadius - 2, kRadius - 2);
        }
        const QImage& icon = m_owner.m_icon;
        if (!icon.isNull())
            p.drawImage(QPointF(card.center().x() - icon.width() / 2.0,
                                card.center().y() - icon.height() / 2.0),
                        icon);
    }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
            m_owner.PerformClick();
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier)
            m_owner.PerformClick();
        else
            QWidget::keyPressEvent(event);
    }

  private:
    ctl_Option& m_owner;
};

ctl_Option::ctl_Option(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("ctl_Option"), nullptr),
      m_card(new OptionCard(*this, container ? container : form.clientArea()))
{
    m_card->resize(kIcon + 16, kIcon + 16);
    setWidget(m_card);
}

void ctl_Option::SetIconPath(const QString& path)
{
    m_iconPath = path;
    m_icon = theme::LoadIcon(path, kIcon);
    m_card->update();
}

void ctl_Option::SetColorA(std::uint32_t colour)
{
    m_colorA = colour;
    m_card->update();
}

void ctl_Option::SetColorB(std::uint32_t colour)
{
    m_colorB = colour;
    m_card->update();
}

void ctl_Option::SetShadeA(int amount)
{
    m_shadeA = amount;
    m_card->update();
}

void ctl_Option::SetShadeB(int amount)
{
    m_shadeB = amount;
    m_card->update();
}

void ctl_Option::SetValue(bool on)
{
    m_value = on;
    m_card->update();
}

bool ctl_Option::PerformClick()
{
    if (!Enabled() || !Visible())
        return false;
    raise(Click);
    return true;
}

QVariant ctl_Option::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"ICONPATH")
        return m_iconPath;
    if (key == u"COLORA")
        return m_colorA;
    if (key == u"COLORB")
        return m_colorB;
    if (key == u"SHADEA")
        return m_shadeA;
    if (key == u"SHADEB")
        return m_shadeB;
    if (key == u"VALUE")
        return m_value;
    return Control::GetProperty(name);
}

bool ctl_Option::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"ICONPATH")
        SetIconPath(value.toString());
    else if (key == u"COLORA")
        SetColorA(std::uint32_t(value.toLongLong()));
    else if (key == u"COLORB")
        SetColorB(std::uint32_t(value.toLongLong()));
    else if (key == u"SHADEA")
        SetShadeA(value.toInt());
    else if (key == u"SHADEB")
        SetShadeB(value.toInt());
    else if (key == u"VALUE")
        SetValue(value.toBool());
    else
        return Control::SetProperty(name, value);
    return true;
}

} // namespace fw
