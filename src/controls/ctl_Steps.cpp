#include "controls/ctl_Steps.h"

#include "controls/Theme.h"
#include "forms/Form.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace fw {

namespace {
constexpr int kIconSize = 20;
constexpr int kEntryHeight = 32;
constexpr int kPadding = 10;
constexpr int kIconGap = 8;
constexpr int kTextFlags = Qt::TextShowMnemonic | Qt::AlignLeft | Qt::AlignVCenter;
} // namespace

class StepStrip : public QWidget {
  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.fillRect(rect(), theme::BarBack());
        p.setPen(theme::Hairline());
        p.drawLine(width() - 1, 0, width() - 1, height());
    }
};

class StepEntry : public QAbstractButton {
  public:
    StepEntry(ctl_Steps& steps, QWidget* parent) : QAbstractButton(parent), m_steps(steps)
    {
        setAttribute(Qt::WA_Hover);
        setFont(theme::UiFont());
        setCursor(Qt::PointingHandCursor);
        connect(this, &QAbstractButton::clicked, this, [this] { m_steps.clicked(m_index); });
    }

    int m_index = 0;
    QString m_caption;
    QString m_tag;
    QImage m_icon;

    void setCaption(const QString& caption)
    {
        m_caption = caption;
        setAccessibleName(theme::PlainCaption(caption));
        // Alt + the marked letter clicks the entry wherever the focus is on the form.
        setShortcut(QKeySequence::mnemonic(caption));
        update();
    }

    QSize sizeHint() const override
    {
        const int text = QFontMetrics(font()).horizontalAdvance(theme::PlainCaption(m_caption));
        return {2 * kPadding + kIconSize + kIconGap + text, kEntryHeight};
    }

  protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        const bool lit = m_index == m_steps.SelectedIndex();
        const QPalette& colours = palette();
        const QRectF body = QRectF(rect()).adjusted(4, 1, -4, -1);
        if (lit || isDown() || underMouse()) {
            const QColor selection = colours.color(QPalette::Active, QPalette::Highlight);
            p.setPen(Qt::NoPen);
            p.setBrush(lit ? selection : theme::Mix(theme::BarBack(), selection, 0.15));
            p.drawRoundedRect(body, 4, 4);
        }
        if (hasFocus()) {
            p.setPen(QPen(lit ? colours.color(QPalette::Active, QPalette::HighlightedText)
                              : theme::Accent(),
                          1, Qt::DotLine));
            p.setBrush(Qt::NoBrush);
            p.drawRoundedRect(body.adjusted(1.5, 1.5, -1.5, -1.5), 3, 3);
        }
        int x = kPadding;
        if (!m_icon.isNull()) {
            p.drawImage(
                QPoint(x + (kIconSize - m_icon.width()) / 2, (height() - m_icon.height()) / 2),
                m_icon);
        }
        x += kIconSize + kIconGap;
        p.setPen(lit ? colours.color(QPalette::Active, QPalette::HighlightedText) : theme::Text());
        p.drawText(QRect(x, 0, width() - x - kPadding / 2, height()), kTextFlags,
                   theme::DisplayCaption(m_caption));
    }

    bool event(QEvent* event) override
    {
        // A button animates its accelerator and clicks a tenth of a second
        // later; the strip acts at once, as a menu accelerator does.
        if (event->type() == QEvent::Shortcut && isEnabled()) {
            auto* shortcut = static_cast<QShortcutEvent*>(event);
            if (shortcut->key() == this->shortcut()) {
                click();
                return true;
            }
        }
        return QAbstractButton::event(event);
    }

    void keyPressEvent(QKeyEvent* event) override
    {
        switch (event->key()) {
        case Qt::Key_Up:
            m_steps.moveFocus(m_index, -1);
            return;
        case Qt::Key_Down:
            m_steps.moveFocus(m_index, +1);
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            click();
            return;
        default:
            QAbstractButton::keyPressEvent(event);
        }
    }

  private:
    ctl_Steps& m_steps;
};

ctl_Steps::ctl_Steps(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("ctl_Steps"), nullptr),
      m_strip(new StepStrip(container ? container : form.clientArea()))
{
    auto* column = new QVBoxLayout(m_strip);
    column->setContentsMargins(0, 6, 1, 6);
    column->setSpacing(1);
    column->addStretch(1);
    m_strip->resize(180, 300);
    setWidget(m_strip);
}

void ctl_Steps::Clear()
{
    // Later: a StepClick handler that rebuilds the strip runs inside an
    // entry's own event.
    for (StepEntry* entry : m_entries) {
        entry->hide();
        entry->setShortcut({});
        m_strip->layout()->removeWidget(entry);
        entry->deleteLater();
    }
    m_entries.clear();
    m_selected = 0;
}

int ctl_Steps::AddStep(const QString& caption, const QString& iconPath, const QString& toolTip,
                       const QString& tag)
{
    auto* entry = new StepEntry(*this, m_strip);
    entry->m_index = Count() + 1;
    entry->m_tag = tag;
    entry->m_icon = theme::LoadIcon(iconPath, kIconSize);
    entry->setCaption(caption);
    entry->setToolTip(toolTip);
    entry->setObjectName(QStringLiteral("%1_%2").arg(Name()).arg(entry->m_index));
    // Before the stretch, which keeps the entries at the top.
    auto* column = static_cast<QVBoxLayout*>(m_strip->layout());
    column->insertWidget(column->count() - 1, entry);
    entry->show();
    m_entries.push_back(entry);
    updateTabStop();
    return entry->m_index;
}

QString ctl_Steps::Caption(int index) const
{
    const QWidget* entry = stepWidget(index);
    return entry ? static_cast<const StepEntry*>(entry)->m_caption : QString();
}

QString ctl_Steps::Tag(int index) const
{
    const QWidget* entry = stepWidget(index);
    return entry ? static_cast<const StepEntry*>(entry)->m_tag : QString();
}

QString ctl_Steps::ToolTip(int index) const
{
    const QWidget* entry = stepWidget(index);
    return entry ? entry->toolTip() : QString();
}

QWidget* ctl_Steps::stepWidget(int index) const
{
    return index >= 1 && index <= Count() ? m_entries[std::size_t(index - 1)] : nullptr;
}

void ctl_Steps::SetSelectedIndex(int index)
{
    m_selected = index >= 1 && index <= Count() ? index : 0;
    updateTabStop();
    Redraw();
}

void ctl_Steps::Redraw()
{
    m_strip->update();
    for (StepEntry* entry : m_entries)
        entry->update();
}

bool ctl_Steps::PerformClick()
{
    if (!Enabled() || !Visible())
        return false;
    for (StepEntry* entry : m_entries)
        if (entry->hasFocus()) {
            entry->click();
            return true;
        }
    return false;
}

void ctl_Steps::clicked(int index)
{
    SetSelectedIndex(index);
    raise(StepClick, index);
}

void ctl_Steps::moveFocus(int from, int step)
{
    for (int index = from + step; index >= 1 && index <= Count(); index += step) {
        StepEntry* entry = m_entries[std::size_t(index - 1)];
        if (entry->isEnabled() && !entry->isHidden()) {
            entry->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
}

void ctl_Steps::updateTabStop()
{
    // One tab stop for the whole strip, on the lit entry (or the first), so
    // that Tab passes the strip in one step; the arrows move inside it.
    const int stop = m_selected ? m_selected : 1;
    for (StepEntry* entry : m_entries)
        entry->setFocusPolicy(entry->m_index == stop ? Qt::StrongFocus : Qt::ClickFocus);
}

QVariant ctl_Steps::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"SELECTEDINDEX")
        return m_selected;
    if (key == u"COUNT")
        return Count();
    return Control::GetProperty(name);
}

bool ctl_Steps::SetProperty(const QString& name, const QVariant& value)
{
    if (name.compare(u"SelectedIndex", Qt::CaseInsensitive) != 0)
        return Control::SetProperty(name, value);
    SetSelectedIndex(value.toInt());
    return true;
}

} // namespace fw
