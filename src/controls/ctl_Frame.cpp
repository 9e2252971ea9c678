#include "controls/ctl_Frame.h"

#include "controls/Theme.h"
#include "forms/Form.h"
#include "forms/Screen.h"

#include <QFontMetrics>
#include <QPainter>
#include <QWidget>

namespace fw {

namespace {
constexpr int kCaptionInset = 10; ///< pixels from the left edge to the caption
}

class FrameBox : public QWidget {
  public:
    FrameBox(ctl_Frame& frame, QWidget* parent) : QWidget(parent), m_frame(frame)
    {
        // Only the caption is bold: the controls inside take the frame's font.
        setFont(theme::UiFont());
    }

    static QFont captionFont() { return theme::UiFont(0, true); }

  protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.setFont(captionFont());
        const QFontMetrics metrics(captionFont());
        // The outline starts at the middle of the caption line, which interrupts it.
        const int lineY = metrics.height() / 2;
        p.setPen(theme::Hairline());
        p.drawRoundedRect(QRectF(0.5, lineY + 0.5, width() - 1.0, height() - lineY - 1.0), 4, 4);
        if (m_frame.m_caption.isEmpty())
            return;
        const QString caption = theme::PlainCaption(m_frame.m_caption);
        const QImage& icon = m_frame.m_icon;
        const int iconWidth = icon.isNull() ? 0 : icon.width() + 4;
        const int captionWidth = metrics.horizontalAdvance(caption);
        p.fillRect(QRect(kCaptionInset - 4, 0, iconWidth + captionWidth + 8, metrics.height()),
                   palette().color(QPalette::Window));
        if (!icon.isNull())
            p.drawImage(QPoint(kCaptionInset, (metrics.height() - icon.height()) / 2), icon);
        p.setPen(theme::Text());
        p.drawText(QRect(kCaptionInset + iconWidth, 0, captionWidth + 2, metrics.height()),
                   Qt::AlignLeft, caption);
    }

  private:
    ctl_Frame& m_frame;
};

ctl_Frame::ctl_Frame(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("ctl_Frame"), nullptr)
{
    auto* box = new FrameBox(*this, container ? container : form.clientArea());
    box->setAutoFillBackground(true);
    QPalette palette = box->palette();
    palette.setColor(QPalette::Window, theme::Base());
    box->setPalette(palette);
    box->resize(200, 100);
    setWidget(box);
}

void ctl_Frame::SetCaption(const QString& caption)
{
    m_caption = caption;
    widget()->update();
}

void ctl_Frame::SetIconPath(const QString& path)
{
    m_iconPath = path;
    // No taller than the caption line, which the outline runs through.
    m_icon = theme::LoadIcon(path, QFontMetrics(FrameBox::captionFont()).height());
    widget()->update();
}

int ctl_Frame::InsideTop() const
{
    return ToTwips(QFontMetrics(FrameBox::captionFont()).height() + 6);
}

QVariant ctl_Frame::GetProperty(const QString& name) const
{
    if (name.compare(u"Caption", Qt::CaseInsensitive) == 0)
        return m_caption;
    return Control::GetProperty(name);
}

bool ctl_Frame::SetProperty(const QString& name, const QVariant& value)
{
    if (name.compare(u"Caption", Qt::CaseInsensitive) != 0)
        return Control::SetProperty(name, value);
    SetCaption(value.toString());
    return true;
}

} // namespace fw
