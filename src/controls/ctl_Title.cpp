#include "controls/ctl_Title.h"

#include "controls/EdgeDock.h"
#include "controls/Theme.h"
#include "forms/Form.h"
#include "forms/Screen.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QTextLayout>

namespace fw {

namespace {
constexpr int kCloseSize = 28;
constexpr int kIconTextGap = 12;

// The flat "×" at the band's right: only a glyph until the pointer is over it.
class CloseGlyph : public QAbstractButton {
  public:
    explicit CloseGlyph(QWidget* parent) : QAbstractButton(parent)
    {
        setAttribute(Qt::WA_Hover);
        // Esc is the keyboard's way to close; a tab stop in the header would only be noise.
        setFocusPolicy(Qt::NoFocus);
        setToolTip(QStringLiteral("Schließen"));
        setAccessibleName(QStringLiteral("Schließen"));
        resize(kCloseSize, kCloseSize);
    }
    QColor accent;

  protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        if (underMouse() || isDown()) {
            p.setPen(Qt::NoPen);
            p.setBrush(QColor(accent.red(), accent.green(), accent.blue(), isDown() ? 70 : 38));
            p.drawRoundedRect(QRectF(rect()), 6, 6);
        }
        p.setPen(QPen(theme::Mix(theme::Text(), accent, 0.25), 1.6, Qt::SolidLine, Qt::RoundCap));
        const QPointF c = QRectF(rect()).center();
        const qreal r = 5;
        p.drawLine(c + QPointF(-r, -r), c + QPointF(r, r));
        p.drawLine(c + QPointF(-r, r), c + QPointF(r, -r));
    }
};

// Up to maxLines lines of text wrapped to width; the last one elided if more remain.
QStringList wrapLines(const QString& text, const QFont& font, int width, int maxLines)
{
    QStringList lines;
    if (text.isEmpty() || width <= 0)
        return lines;
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        if (lines.size() == maxLines - 1) {
            const QFontMetrics fm(font);
            lines << fm.elidedText(text.mid(line.textStart()).simplified(), Qt::ElideRight, width);
            break;
        }
        lines << text.mid(line.textStart(), line.textLength()).trimmed();
    }
    layout.endLayout();
    return lines;
}
} // namespace

class TitleBand : public QWidget {
  public:
    TitleBand(ctl_Title& owner, QWidget* parent) : QWidget(parent), m_owner(owner)
    {
        setFocusPolicy(Qt::NoFocus);
        m_close = new CloseGlyph(this);
        m_close->setObjectName(QStringLiteral("cmd_Close"));
        QObject::connect(m_close, &QAbstractButton::clicked, this,
                         [this] { m_owner.raise(m_owner.CloseRequest, QStringLiteral("CLOSE")); });
        resize(640, theme::TitleHeight);
    }

    /// The scheme's colour, asked of the host once per scheme rather than per paint.
    QColor accent()
    {
        if (!m_accent.isValid())
            m_accent = theme::SchemeColour(m_owner.m_scheme);
        return m_accent;
    }
    void schemeChanged()
    {
        m_accent = QColor();
        update();
    }

  protected:
    void resizeEvent(QResizeEvent*) override
    {
        m_close->move(width() - kCloseSize - theme::Gap, theme::Gap);
    }

    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Escape)
            m_owner.raise(m_owner.CloseRequest, QStringLiteral("ESC"));
        else
            QWidget::keyPressEvent(event);
    }

    void paintEvent(QPaintEvent*) override
    {
        const QColor scheme = accent();
        m_close->accent = scheme;
        QPainter p(this);
        p.fillRect(rect(), theme::Mix(scheme, Qt::white, 0.9));
        p.fillRect(QRect(0, height() - 2, width(), 2), scheme);

        int x = theme::Margin;
        const QImage& icon = m_owner.m_picture;
        if (!icon.isNull()) {
            p.setRenderHint(QPainter::SmoothPixmapTransform);
            p.drawImage(QPoint(x + (theme::TitleIcon - icon.width()) / 2,
                               (height() - 2 - icon.height()) / 2),
                        icon);
            x += theme::TitleIcon + kIconTextGap;
        }
        const int textWidth = width() - x - kCloseSize - 2 * theme::Gap;
        const QFont titleFont = theme::UiFont(2, true);
        const QFont subFont = theme::UiFont(0);
        const QFontMetrics titleMetrics(titleFont);
        const QFontMetrics subMetrics(subFont);
        const QString title = titleMetrics.elidedText(m_owner.m_caption, Qt::ElideRight, textWidth);
        const QStringList sub = wrapLines(m_owner.m_subCaption, subFont, textWidth, 2);

        const int lineGap = sub.isEmpty() ? 0 : 3;
        const int block = titleMetrics.height() + lineGap + int(sub.size()) * subMetrics.height();
        int y = std::max(4, (height() - 2 - block) / 2);
        p.setFont(titleFont);
        p.setPen(theme::Text());
        p.drawText(QRect(x, y, textWidth, titleMetrics.height()), Qt::AlignLeft | Qt::AlignVCenter,
                   title);
        y += titleMetrics.height() + lineGap;
        p.setFont(subFont);
        p.setPen(theme::Mix(theme::MutedText(), scheme, 0.2));
        for (const QString& line : sub) {
            p.drawText(QRect(x, y, textWidth, subMetrics.height()),
                       Qt::AlignLeft | Qt::AlignVCenter, line);
            y += subMetrics.height();
        }
    }

  private:
    ctl_Title& m_owner;
    CloseGlyph* m_close;
    QColor m_accent;
};

ctl_Title::ctl_Title(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("ctl_Title"), nullptr),
      m_band(new TitleBand(*this, container ? container : form.clientArea()))
{
    setWidget(m_band);
    new EdgeDock(m_band, EdgeDock::Top);
}

void ctl_Title::SetCaption(const QString& caption)
{
    m_caption = caption;
    m_band->setAccessibleName(caption);
    m_band->update();
}

void ctl_Title::SetSubCaption(const QString& caption)
{
    m_subCaption = caption;
    m_band->setToolTip(caption);
    m_band->update();
}

void ctl_Title::SetIconPath(const QString& path)
{
    m_iconPath = path;
    m_picture = theme::LoadIcon(path, theme::TitleIcon);
    m_band->update();
}

void ctl_Title::SetPicture(const QImage& picture)
{
    m_picture = theme::FitIcon(picture, theme::TitleIcon);
    m_band->update();
}

void ctl_Title::SetScheme(int scheme)
{
    m_scheme = scheme;
    m_band->schemeChanged();
}

QVariant ctl_Title::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"CAPTION" || key == u"TITLE")
        return m_caption;
    if (key == u"TEXT" || key == u"SUBCAPTION")
        return m_subCaption;
    if (key == u"ICONPATH")
        return m_iconPath;
    if (key == u"PICTURE")
        return m_picture;
    if (key == u"SCHEME")
        return m_scheme;
    return Control::GetProperty(name);
}

bool ctl_Title::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"CAPTION" || key == u"TITLE")
        SetCaption(value.toString());
    else if (key == u"TEXT" || key == u"SUBCAPTION")
        SetSubCaption(value.toString());
    else if (key == u"ICONPATH")
        SetIconPath(value.toString());
    else if (key == u"PICTURE")
        SetPicture(value.value<QImage>());
    else if (key == u"SCHEME")
        SetScheme(value.toInt());
    else
        return Control::SetProperty(name, value);
    return true;
}

} // namespace fw
