#include "touch/KeyFaces.h"

#include "touch/KeyboardLayout.h"

#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>

namespace fw {

namespace {

class KeyLabelWidget : public QWidget {
  public:
    KeyLabelWidget(KeyLabel& label, QWidget* parent) : QWidget(parent), m_label(label)
    {
        setAttribute(Qt::WA_TranslucentBackground);
    }

  protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::TextAntialiasing);
        painter.setFont(font());
        painter.setPen(m_label.ForeColor());
        painter.drawText(rect(), Qt::AlignCenter, m_label.ShownText());
    }
    // The label takes the press itself, so that the key under it does not see
    // it a second time.
    void mousePressEvent(QMouseEvent* event) override { event->accept(); }
    void mouseReleaseEvent(QMouseEvent* event) override { event->accept(); }

  private:
    KeyLabel& m_label;
};

QWidget* parentFor(Form& form, QWidget* container)
{
    return container ? container : form.clientArea();
}

} // namespace

KeyLabel::KeyLabel(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("Label"), nullptr)
{
    setWidget(new KeyLabelWidget(*this, parentFor(form, container)));
    setClickOnRelease(true);
}

void KeyLabel::SetCaption(const QString& caption)
{
    m_caption = caption;
    widget()->update();
}

void KeyLabel::SetForeColor(const QColor& colour)
{
    m_foreColor = colour;
    widget()->update();
}

void KeyLabel::SetFont(const QFont& font, bool wingdings)
{
    m_font = font;
    m_wingdings = wingdings;
    QFont shown = font;
    if (wingdings)
        shown.setFamilies({QStringLiteral("DejaVu Sans")});
    widget()->setFont(shown);
    widget()->update();
}

QString KeyLabel::ShownText() const
{
    return m_wingdings ? WingdingsAsSymbols(m_caption) : m_caption;
}

QVariant KeyLabel::GetProperty(const QString& name) const
{
    if (name.compare(QLatin1String("Caption"), Qt::CaseInsensitive) == 0)
        return m_caption;
    return Control::GetProperty(name);
}

bool KeyLabel::SetProperty(const QString& name, const QVariant& value)
{
    if (name.compare(QLatin1String("Caption"), Qt::CaseInsensitive) == 0) {
        SetCaption(value.toString());
        return true;
    }
    return Control::SetProperty(name, value);
}

QImage DrawKeyCap(QSize size, int leftOfStem)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath cap;
    const QRectF outer = QRectF(image.rect()).adjusted(2, 2, -2, -2);
    if (leftOfStem > 0) {
        // One cap over two rows: full width on top, the stem at the right below.
        const qreal rowHeight = size.height() / 2.0;
        QPainterPath top, stem;
        top.addRoundedRect(QRectF(outer.left(), outer.top(), outer.width(), rowHeight - 4), 6, 6);
        stem.addRoundedRect(
            QRectF(leftOfStem + 2, outer.top(), outer.right() - leftOfStem - 2, outer.height()), 6,
            6);
        cap = top.united(stem);
    } else {
        cap.addRoundedRect(outer, 6, 6);
    }
    painter.fillPath(cap.translated(0, 2), QColor(0, 0, 0, 70)); // shadow
    QLinearGradient shade(0, 0, 0, size.height());
    shade.setColorAt(0, QColor(0xfc, 0xfc, 0xfd));
    shade.setColorAt(1, QColor(0xdc, 0xdf, 0xe4));
    painter.fillPath(cap, shade);
    painter.setPen(QPen(QColor(0x8a, 0x90, 0x9a), 1));
    painter.drawPath(cap);
    return image;
}

QImage DrawKeyboardBody(QSize size, const QRectF& panel)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF body = QRectF(image.rect()).adjusted(1, 1, -2, -2);
    QLinearGradient shade(0, 0, 0, size.height());
    shade.setColorAt(0, QColor(0x5a, 0x63, 0x70));
    shade.setColorAt(1, QColor(0x3a, 0x40, 0x4a));
    painter.setBrush(shade);
    painter.setPen(QPen(QColor(0x22, 0x26, 0x2c), 2));
    painter.drawRoundedRect(body, 14, 14);
    // The panel around the input line.
    painter.setBrush(QColor(0x2e, 0x33, 0x3b));
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(panel, 9, 9);
    return image;
}

} // namespace fw
