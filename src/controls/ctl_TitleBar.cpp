#include "controls/ctl_TitleBar.h"

#include "controls/Theme.h"
#include "forms/Form.h"

#include <QPainter>
#include <QWidget>

namespace fw {

namespace {
constexpr int kIconSize = 16;
constexpr int kInset = 6; ///< pixels from the left edge to the icon
} // namespace

class TitleStrip : public QWidget {
  public:
    TitleStrip(ctl_TitleBar& owner, QWidget* parent) : QWidget(parent), m_owner(owner)
    {
        setFocusPolicy(Qt::NoFocus);
        resize(200, ctl_TitleBar::PreferredHeight);
    }

  protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        const QColor accent = theme::Accent();
        p.fillRect(rect(), theme::Mix(accent, Qt::white, 0.88));
        p.fillRect(QRect(0, height() - 1, width(), 1), theme::Mix(accent, Qt::white, 0.5));
        int x = kInset;
        const QImage& icon = m_owner.m_picture;
        if (!icon.isNull()) {
            p.setRenderHint(QPainter::SmoothPixmapTransform);
            p.drawImage(QPoint(x + (kIconSize - icon.width()) / 2, (height() - icon.height()) / 2),
                        icon);
            x += kIconSize + kInset;
        }
        const QFont font = theme::UiFont(0, true);
        p.setFont(font);
        p.setPen(theme::Text());
        const QRect textRect(x, 0, width() - x - kInset, height() - 1);
        p.drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter,
                   QFontMetrics(font).elidedText(theme::PlainCaption(m_owner.m_caption),
                                                 Qt::ElideRight, textRect.width()));
    }

  private:
    ctl_TitleBar& m_owner;
};

ctl_TitleBar::ctl_TitleBar(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("ctl_TitleBar"),
              new TitleStrip(*this, container ? container : form.clientArea()))
{
}

void ctl_TitleBar::SetCaption(const QString& caption)
{
    m_caption = caption;
    widget()->setAccessibleName(theme::PlainCaption(caption));
    widget()->update();
}

void ctl_TitleBar::SetIconPath(const QString& path)
{
    m_iconPath = path;
    m_picture = theme::LoadIcon(path, kIconSize);
    widget()->update();
}

QVariant ctl_TitleBar::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"CAPTION")
        return m_caption;
    if (key == u"ICONPATH")
        return m_iconPath;
    return Control::GetProperty(name);
}

bool ctl_TitleBar::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"CAPTION")
        SetCaption(value.toString());
    else if (key == u"ICONPATH")
        SetIconPath(value.toString());
    else
        return Control::SetProperty(name, value);
    return true;
}

} // namespace fw
