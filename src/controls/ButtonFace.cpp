#include "controls/ButtonFace.h"

#include "controls/Theme.h"

#include <QPainter>
#include <QPainterPath>

namespace fw {

namespace {
constexpr int kPadding = 12;
constexpr int kIconGap = 6;
constexpr int kTextFlags = Qt::TextShowMnemonic | Qt::AlignLeft | Qt::AlignVCenter;

struct Look {
    QColor fill, border, text;
    int borderWidth = 1;
};

Look lookFor(bool enabled, bool isDefault, bool down, bool hover, bool focus)
{
    const QColor accent = theme::Accent();
    Look look;
    if (!enabled) {
        look.fill = theme::BarBack();
        look.border = theme::Hairline();
        look.text = QColor(0x9a, 0xa1, 0xab);
        return look;
    }
    if (isDefault) {
        look.fill = down    ? theme::Mix(accent, Qt::black, 0.18)
                    : hover ? theme::Mix(accent, Qt::white, 0.12)
                            : accent;
        look.border = theme::Mix(accent, Qt::black, 0.15);
        look.text = Qt::white;
        return look;
    }
    look.fill = down    ? theme::Mix(Qt::white, accent, 0.16)
                : hover ? theme::Mix(Qt::white, accent, 0.07)
                        : theme::Base();
    look.border = focus   ? accent
                  : hover ? theme::Mix(theme::ButtonBorder(), accent, 0.4)
                          : theme::ButtonBorder();
    look.borderWidth = focus ? 2 : 1;
    look.text = theme::Text();
    return look;
}
} // namespace

ButtonFace::ButtonFace(QWidget* parent) : QAbstractButton(parent)
{
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setFont(theme::UiFont());
    setCursor(Qt::ArrowCursor);
}

void ButtonFace::setCaption(const QString& caption)
{
    m_caption = caption;
    m_display = theme::DisplayCaption(caption);
    setAccessibleName(theme::PlainCaption(caption));
    updateGeometry();
    update();
}

void ButtonFace::setPicture(const QImage& icon)
{
    m_icon = icon;
    updateGeometry();
    update();
}

void ButtonFace::setDefaultLook(bool on)
{
    m_defaultLook = on;
    update();
}

void ButtonFace::setRound(bool on)
{
    m_round = on;
    updateGeometry();
    update();
}

QSize ButtonFace::contentSize() const
{
    const QFontMetrics fm(font());
    QSize text = m_display.isEmpty()
                     ? QSize()
                     : fm.boundingRect(QRect(0, 0, 10000, 10000), kTextFlags, m_display).size();
    int width = text.width();
    int height = text.height();
    if (!m_icon.isNull()) {
        width += m_icon.width() + (text.isEmpty() ? 0 : kIconGap);
        height = std::max(height, m_icon.height());
    }
    return {width, height};
}

QSize ButtonFace::sizeHint() const
{
    if (m_round)
        return {theme::ButtonHeight, theme::ButtonHeight};
    const QSize content = contentSize();
    return {std::max(88, content.width() + 2 * kPadding),
            std::max(theme::ButtonHeight, content.height() + 8)};
}

void ButtonFace::setBorderColours(const QColor& outer, const QColor& inner)
{
    m_borderOuter = outer;
    m_borderInner = inner;
    update();
}

void ButtonFace::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const bool enabled = isEnabled();
    const bool focus = hasFocus();
    const Look look =
        lookFor(enabled, m_defaultLook && !m_round, isDown(), underMouse() && enabled, focus);

    const QRectF body = QRectF(rect()).adjusted(0.5 * look.borderWidth, 0.5 * look.borderWidth,
                                                -0.5 * look.borderWidth, -0.5 * look.borderWidth);
    const qreal radius = m_round ? body.height() / 2 : 4;
    p.setPen(QPen(look.border, look.borderWidth));
    p.setBrush(look.fill);
    p.drawRoundedRect(body, radius, radius);
    if (m_borderOuter.isValid()) {
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(m_borderOuter, 2));
        p.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), radius, radius);
        p.setPen(QPen(m_borderInner, 1));
        p.drawRoundedRect(QRectF(rect()).adjusted(2.5, 2.5, -2.5, -2.5), radius - 1, radius - 1);
    }
    if (focus && m_defaultLook && !m_round) {
        // On the accent fill an outer ring would vanish; an inner white line shows.
        p.setPen(QPen(QColor(255, 255, 255, 200), 1));
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(body.adjusted(2, 2, -2, -2), radius - 1, radius - 1);
    }

    p.setPen(look.text);
    if (m_round) {
        QFont glyph = font();
        glyph.setBold(true);
        p.setFont(glyph);
        p.drawText(rect(), Qt::AlignCenter, QStringLiteral("?"));
        return;
    }

    const QSize content = contentSize();
    int x = std::max(kPadding, (width() - content.width()) / 2);
    if (!m_icon.isNull()) {
        p.save();
        if (!enabled)
            p.setOpacity(0.4);
        p.drawImage(QPoint(x, (height() - m_icon.height()) / 2), m_icon);
        p.restore();
        x += m_icon.width() + kIconGap;
    }
    if (!m_display.isEmpty()) {
        p.setClipRect(rect().adjusted(2, 2, -2, -2));
        // Lines of a broken caption centre on each other within the block.
        const int textWidth = content.width() - (m_icon.isNull() ? 0 : m_icon.width() + kIconGap);
        p.drawText(QRect(x, 0, textWidth, height()),
                   (kTextFlags & ~Qt::AlignLeft) | Qt::AlignHCenter, m_display);
    }
}

} // namespace fw
