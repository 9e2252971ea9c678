#include "controls/ctl_StatusBar.h"

#include "controls/EdgeDock.h"
#include "controls/Theme.h"
#include "forms/Form.h"
#include "forms/Screen.h"

#include <QPainter>
#include <QWidget>

namespace fw {

namespace {
constexpr int kHeight = 24;
constexpr int kPad = 8;

bool isPanels(const QString& collection)
{
    return collection.compare(u"PANELS", Qt::CaseInsensitive) == 0;
}
bool isText(const QString& property)
{
    return property.compare(u"TEXT", Qt::CaseInsensitive) == 0;
}
} // namespace

class StatusStrip : public QWidget {
  public:
    StatusStrip(ctl_StatusBar& owner, QWidget* parent) : QWidget(parent), m_owner(owner) {}

  protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.fillRect(rect(), theme::BarBack());
        p.fillRect(QRect(0, 0, width(), 1), theme::Hairline());
        p.setFont(theme::UiFont(-1));
        int x = 0;
        const auto& panels = m_owner.m_panels;
        for (std::size_t i = 0; i < panels.size(); ++i) {
            const bool last = i + 1 == panels.size();
            const int w = panels[i].width > 0 && !last ? panels[i].width : width() - x;
            p.setPen(theme::MutedText());
            p.drawText(QRect(x + kPad, 1, std::max(0, w - 2 * kPad), height() - 1),
                       Qt::AlignVCenter | Qt::AlignLeft,
                       fontMetrics().elidedText(panels[i].text, Qt::ElideRight, w - 2 * kPad));
            x += w;
            if (!last)
                p.fillRect(QRect(x - 1, 5, 1, height() - 10), theme::Hairline());
        }
    }

  private:
    ctl_StatusBar& m_owner;
};

ctl_StatusBar::ctl_StatusBar(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("ctl_StatusBar"), nullptr),
      m_strip(new StatusStrip(*this, container ? container : form.clientArea()))
{
    m_strip->resize(m_strip->parentWidget()->width(), kHeight);
    setWidget(m_strip);
    new EdgeDock(m_strip, EdgeDock::Bottom);
}

int ctl_StatusBar::AddPanel(const QString& text, int width)
{
    m_panels.push_back({text, width / Screen::TwipsPerPixelX()});
    m_strip->update();
    return PanelCount();
}

QString ctl_StatusBar::PanelText(int panel) const
{
    return panel >= 1 && panel <= PanelCount() ? m_panels[std::size_t(panel - 1)].text : QString();
}

void ctl_StatusBar::SetPanelText(int panel, const QString& text)
{
    if (panel < 1 || panel > PanelCount())
        return;
    m_panels[std::size_t(panel - 1)].text = text;
    m_strip->update();
}

int ctl_StatusBar::RowCount(const QString& collection) const
{
    return isPanels(collection) ? PanelCount() : 0;
}

QVariant ctl_StatusBar::RowProperty(const QString& collection, int row,
                                    const QString& property) const
{
    if (!isPanels(collection) || !isText(property) || row < 1 || row > PanelCount())
        return {};
    return PanelText(row);
}

bool ctl_StatusBar::SetRowProperty(const QString& collection, int row, const QString& property,
                                   const QString& value)
{
    if (!isPanels(collection) || !isText(property) || row < 1 || row > PanelCount())
        return false;
    m_panels[std::size_t(row - 1)].text = value;
    return true;
}

void ctl_StatusBar::RowsChanged(const QString&)
{
    m_strip->update();
}

} // namespace fw
