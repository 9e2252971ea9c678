#include "controls/ctl_Percent.h"

#include "controls/Theme.h"
#include "forms/Form.h"

#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace fw {

namespace {
class Track : public QWidget {
  public:
    Track(const ctl_Percent& bar, QWidget* parent) : QWidget(parent), m_bar(bar) {}

  protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        const QRectF outer = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
        const double radius = std::min(4.0, outer.height() / 2);
        p.setPen(theme::ButtonBorder());
        p.setBrush(theme::Mix(theme::Base(), theme::BarBack(), 0.6));
        p.drawRoundedRect(outer, radius, radius);
        const double share = m_bar.Fraction();
        if (share > 0) {
            QRectF filled = outer.adjusted(1, 1, -1, -1);
            filled.setWidth(filled.width() * share);
            p.setPen(Qt::NoPen);
            p.setBrush(theme::Accent());
            p.drawRoundedRect(filled, radius - 1, radius - 1);
        }
        const QString text = QString::number(int(std::floor(share * 100))) + u'%';
        // The figure reads dark over the empty track and white over the fill.
        p.setPen(theme::Text());
        p.drawText(rect(), Qt::AlignCenter, text);
        if (share > 0) {
            p.save();
            p.setClipRect(QRectF(0, 0, width() * share, height()));
            p.setPen(Qt::white);
            p.drawText(rect(), Qt::AlignCenter, text);
            p.restore();
        }
    }

  private:
    const ctl_Percent& m_bar;
};
} // namespace

ctl_Percent::ctl_Percent(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("ctl_Percent"), nullptr)
{
    // The track reads the bar, so it is made once the bar exists.
    setWidget(new Track(*this, container ? container : form.clientArea()));
    widget()->resize(200, 18);
}

void ctl_Percent::SetMin(double value)
{
    m_min = value;
    widget()->update();
}

void ctl_Percent::SetMax(double value)
{
    m_max = value;
    widget()->update();
}

void ctl_Percent::SetValue(double value)
{
    m_value = value;
    widget()->update();
}

double ctl_Percent::Fraction() const
{
    if (!(m_max > m_min) && !(m_max < m_min))
        return 0;
    return std::clamp((m_value - m_min) / (m_max - m_min), 0.0, 1.0);
}

QVariant ctl_Percent::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"MIN")
        return m_min;
    if (key == u"MAX")
        return m_max;
    if (key == u"VALUE")
        return m_value;
    return Control::GetProperty(name);
}

bool ctl_Percent::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"MIN")
        SetMin(value.toDouble());
    else if (key == u"MAX")
        SetMax(value.toDouble());
    else if (key == u"VALUE")
        SetValue(value.toDouble());
    else
        return Control::SetProperty(name, value);
    return true;
}

} // namespace fw
