#include "controls/ctl_Label.h"

#include "controls/Theme.h"
#include "forms/Form.h"
#include "forms/Screen.h"

#include <QAbstractTextDocumentLayout>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextDocument>
#include <QWheelEvent>
#include <QWidget>
#include <cmath>

namespace fw {

namespace {

enum class Whitespace { Normal, PreWrap };

// Qt looks for a line's break by scanning to the end of the word, so a word
// of n characters wrapped into lines takes n*n steps (a 100 KB word took
// seconds). An invisible break after every so many characters of a run keeps
// each scan short. Runs this long are wider than the label may grow on
// common screens and would be broken anyway; shorter words stay whole.
constexpr int kLongestUnbrokenRun = 256;
const QChar kBreakHint(0x200B); // zero width space

// The label's markup to Qt's rich text. Only the few tags of the markup are
// taken as tags: the rest of the text is user data and shows as written.
QString markupToHtml(const QString& text, int alignment, Whitespace whitespace)
{
    static const QRegularExpression tag(
        QStringLiteral("^<(?:(/?)([bi])|(br)\\s*/?|a\\s+href\\s*=\\s*(?:'([^']*)'|\"([^\"]*)\"|"
                       "([^\\s'\">]+))\\s*|(/)a\\s*)>$"),
        QRegularExpression::CaseInsensitiveOption);
    const QString linkColour = theme::Accent().name();

    QString html;
    html.reserve(text.size() + text.size() / 8 + 64);
    const char* align = alignment == 1   ? "center"
                        : alignment == 2 ? "right"
                        : alignment == 3 ? "justify"
                                         : "left";
    const char* space = whitespace == Whitespace::PreWrap ? "pre-wrap" : "normal";
    html += QStringLiteral("<p align=\"%1\" style=\"margin:0; white-space:%2\">")
                .arg(QLatin1String(align), QLatin1String(space));

    int run = 0; // characters since the last blank or break hint
    auto plain = [&](QStringView part) {
        for (const QChar c : part) {
            if (c.isSpace())
                run = 0;
            else if (++run > kLongestUnbrokenRun) {
                html += kBreakHint;
                run = 1;
            }
            switch (c.unicode()) {
            case '<':
                html += QStringLiteral("&lt;");
                break;
            case '>':
                html += QStringLiteral("&gt;");
                break;
            case '&':
                html += QStringLiteral("&amp;");
                break;
            case '"':
                html += QStringLiteral("&quot;");
                break;
            case '\n':
                html += QStringLiteral("<br>");
                break;
            case '\r':
                break;
            default:
                html += c;
            }
        }
    };

    // Each candidate is matched on its own: matching at an offset into a long
    // text costs the whole text every time.
    qsizetype from = 0;
    qsizetype at = text.indexOf(u'<');
    while (at >= 0) {
        const qsizetype end = text.indexOf(u'>', at);
        if (end < 0)
            break; // no tag can close any more
        const auto m = tag.match(text.mid(at, end - at + 1));
        if (!m.hasMatch()) {
            at = text.indexOf(u'<', at + 1);
            continue;
        }
        plain(QStringView(text).mid(from, at - from));
        if (m.hasCaptured(2))
            html += u'<' + m.captured(1) + m.captured(2).toLower() + u'>';
        else if (m.hasCaptured(3))
            html += QStringLiteral("<br>");
        else if (m.hasCaptured(7))
            html += QStringLiteral("</a>");
        else {
            const QString target = m.captured(4) + m.captured(5) + m.captured(6);
            html += QStringLiteral("<a href=\"%1\" style=\"color:%2\">")
                        .arg(target.toHtmlEscaped(), linkColour);
        }
        from = at + m.capturedLength();
        at = text.indexOf(u'<', from);
    }
    plain(QStringView(text).mid(from));
    html += QStringLiteral("</p>");
    return html;
}

} // namespace

// Draws the text document the label lays out; a QLabel would lay the text out
// a second time and cannot break a word that is wider than the screen.
class LabelView : public QWidget {
  public:
    LabelView(ctl_Label& owner, QWidget* parent)
        : QWidget(parent), m_owner(owner), m_scroll(new QScrollBar(Qt::Vertical, this))
    {
        setMouseTracking(true);
        m_document.setDocumentMargin(0);
        m_document.setUndoRedoEnabled(false);
        m_scroll->hide();
        QObject::connect(m_scroll, &QScrollBar::valueChanged, this, [this] { update(); });
    }

    QTextDocument& document() { return m_document; }
    QScrollBar& scrollBar() { return *m_scroll; }

    /// Shows the text width wide; taller than height, it scrolls beside a bar.
    void fit(int width, int height)
    {
        const int full = int(std::ceil(m_document.size().height()));
        const bool scrolls = height > 0 && full > height;
        m_scroll->setVisible(scrolls);
        if (!scrolls) {
            m_scroll->setValue(0);
            resize(width, full);
            return;
        }
        const int bar = m_scroll->sizeHint().width();
        resize(width + bar, height);
        m_scroll->setGeometry(width, 0, bar, height);
        m_scroll->setRange(0, full - height);
        m_scroll->setPageStep(height);
        m_scroll->setSingleStep(fontMetrics().lineSpacing());
    }

  protected:
    void paintEvent(QPaintEvent* event) override
    {
        QPainter p(this);
        QAbstractTextDocumentLayout::PaintContext context;
        context.palette = palette();
        context.palette.setColor(QPalette::Text, isEnabled() ? theme::Text() : theme::MutedText());
        p.setClipRect(event->rect());
        p.translate(0, -offset());
        context.clip = event->rect().translated(0, offset());
        m_document.documentLayout()->draw(&p, context);
    }

    void wheelEvent(QWheelEvent* event) override
    {
        if (m_scroll->isVisible())
            QCoreApplication::sendEvent(m_scroll, event);
        else
            event->ignore();
    }

    void mouseMoveEvent(QMouseEvent* event) override
    {
        const bool overLink = !anchorAt(event->position()).isEmpty();
        setCursor(overLink ? Qt::PointingHandCursor : Qt::ArrowCursor);
    }

    void mousePressEvent(QMouseEvent* event) override
    {
        if (event->button() == Qt::LeftButton)
            m_pressed = anchorAt(event->position());
    }

    void mouseReleaseEvent(QMouseEvent* event) override
    {
        const QString pressed = std::exchange(m_pressed, QString());
        if (event->button() == Qt::LeftButton && !pressed.isEmpty() &&
            anchorAt(event->position()) == pressed)
            m_owner.raise(m_owner.LinkClick, pressed);
    }

  private:
    int offset() const { return m_scroll->isVisible() ? m_scroll->value() : 0; }
    QString anchorAt(const QPointF& pos) const
    {
        return m_document.documentLayout()->anchorAt(pos + QPointF(0, offset()));
    }

    ctl_Label& m_owner;
    QTextDocument m_document;
    QScrollBar* m_scroll;
    QString m_pressed;
};

ctl_Label::ctl_Label(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("ctl_Label"), nullptr),
      m_label(new LabelView(*this, container ? container : form.clientArea())), m_designWidth(200)
{
    setWidget(m_label);
    setClickOnRelease(true);
    m_label->setFont(theme::UiFont());
    relayout();
}

void ctl_Label::SetCaption(const QString& text)
{
    m_text = text;
    relayout();
}

QString ctl_Label::DisplayedText() const
{
    return m_label->document().toPlainText().remove(kBreakHint);
}

void ctl_Label::SetAlignment(int alignment)
{
    m_alignment = alignment;
    relayout();
}

QFont ctl_Label::Font() const
{
    return m_label->font();
}

void ctl_Label::SetFont(const QFont& font)
{
    QFont resolved = font;
    resolved.setFamily(theme::ResolveFamily(font.family()));
    m_label->setFont(resolved);
    relayout();
}

void ctl_Label::SetFontName(const QString& family)
{
    QFont font = m_label->font();
    font.setFamily(family);
    SetFont(font);
}

void ctl_Label::SetFontSize(double points)
{
    if (points <= 0)
        return;
    QFont font = m_label->font();
    font.setPointSizeF(points);
    SetFont(font);
}

void ctl_Label::SetWidth(int twips)
{
    m_designWidth = std::max(1, ToPixels(twips));
    relayout();
}

void ctl_Label::SetMaxHeight(int twips)
{
    m_maxHeight = std::max(0, twips);
    relayout();
}

void ctl_Label::relayout()
{
    QTextDocument& doc = m_label->document();
    const int design = std::max(1, m_designWidth);
    const int cap = std::max(design, ToPixels(Screen::Width()) * 9 / 10);
    doc.setDefaultFont(m_label->font());

    auto layOut = [&](Whitespace whitespace, QTextOption::WrapMode wrap, int width) {
        // Emptied first: new options and width would lay the old text out again.
        doc.clear();
        QTextOption option = doc.defaultTextOption();
        option.setWrapMode(wrap);
        doc.setDefaultTextOption(option);
        doc.setTextWidth(width);
        doc.setHtml(markupToHtml(m_text, m_alignment, whitespace));
        return int(std::ceil(doc.idealWidth()));
    };

    // Each path lays the text out once, a second time only when a wrapped
    // line does not fit: long texts are measured here and nowhere else.
    int width = design;
    if (m_alignment == 0) {
        // Lines as written, laid out at the widest allowed width: only those
        // wider than that wrap, and the label takes the widest line.
        const int natural =
            layOut(Whitespace::PreWrap, QTextOption::WrapAtWordBoundaryOrAnywhere, cap);
        width = std::max(design, natural);
    } else {
        const int natural = layOut(Whitespace::Normal, QTextOption::WordWrap, design);
        if (natural > design) {
            width = std::min(natural, cap);
            layOut(Whitespace::Normal, QTextOption::WrapAtWordBoundaryOrAnywhere, width);
        }
    }
    m_label->fit(width, ToPixels(m_maxHeight));
    m_label->update();
}

QVariant ctl_Label::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"CAPTION" || key == u"TEXT")
        return m_text;
    if (key == u"ALIGNMENT")
        return m_alignment;
    if (key == u"FONT")
        return Font();
    if (key == u"FONTNAME")
        return Font().family();
    if (key == u"FONTSIZE")
        return Font().pointSizeF();
    if (key == u"FONTBOLD")
        return Font().bold();
    if (key == u"MAXHEIGHT")
        return m_maxHeight;
    return Control::GetProperty(name);
}

bool ctl_Label::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"CAPTION" || key == u"TEXT")
        SetCaption(value.toString());
    else if (key == u"ALIGNMENT")
        SetAlignment(value.toInt());
    else if (key == u"FONT") {
        if (value.typeId() == QMetaType::QFont)
            SetFont(value.value<QFont>());
        else
            SetFontName(value.toString());
    } else if (key == u"FONTNAME")
        SetFontName(value.toString());
    else if (key == u"FONTSIZE")
        SetFontSize(value.toDouble());
    else if (key == u"FONTBOLD") {
        QFont font = Font();
        font.setBold(value.toBool());
        SetFont(font);
    } else if (key == u"MAXHEIGHT")
        SetMaxHeight(value.toInt());
    else
        return Control::SetProperty(name, value);
    return true;
}

} // namespace fw
