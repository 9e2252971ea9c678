#include "controls/ctl_Console.h"

#include "controls/Theme.h"
#include "forms/Form.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QVBoxLayout>
#include <QtDebug>
#include <exception>

namespace fw {

namespace {
constexpr int kHistoryLines = 200;

// Hosts give colours as 0x00BBGGRR numbers; Qt code gives QColors.
QColor colourOf(const QVariant& value)
{
    if (value.typeId() == QMetaType::QColor)
        return value.value<QColor>();
    return theme::FromHostColour(value.toUInt());
}
} // namespace

// The input line's band. It paints its own background rather than being
// opaque to Qt: a form that the console fills must still get its own paint.
class ConsoleRow : public QWidget {
  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter(this).fillRect(rect(), palette().color(QPalette::Base));
    }
};

class ConsoleInput : public QLineEdit {
  public:
    ConsoleInput(ctl_Console& owner, QWidget* parent) : QLineEdit(parent), m_owner(owner) {}

  protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            m_owner.enter();
            return;
        case Qt::Key_Up:
            m_owner.recall(-1);
            return;
        case Qt::Key_Down:
            m_owner.recall(+1);
            return;
        default:
            QLineEdit::keyPressEvent(event);
        }
    }

  private:
    ctl_Console& m_owner;
};

ctl_Console::ctl_Console(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("ctl_Console"), nullptr), m_foreColor(theme::Text()),
      m_backColor(theme::Base())
{
    auto* frame = new QWidget(container ? container : form.clientArea());
    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);

    m_output = new QPlainTextEdit(frame);
    m_output->setObjectName(QStringLiteral("txt_Output"));
    m_output->setReadOnly(true);
    m_output->setUndoRedoEnabled(false);
    m_output->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    m_output->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    // The document drops its oldest lines itself, so a chatty server costs
    // a bounded amount of memory.
    SetMaxLines(m_maxLines);
    // Clicks in the output must not take the typing away from the input line.
    m_output->setFocusPolicy(Qt::NoFocus);
    m_output->setFrameShape(QFrame::NoFrame);
    layout->addWidget(m_output, 1);

    // A rule between output and input, in the chrome's hairline colour.
    m_rule = new QWidget(frame);
    m_rule->setFixedHeight(1);
    m_rule->setAutoFillBackground(true);
    layout->addWidget(m_rule);

    auto* row = new ConsoleRow(frame);
    row->setObjectName(QStringLiteral("pan_Input"));
    auto* rowLayout = new QHBoxLayout(row);
    rowLayout->setContentsMargins(4, 2, 2, 2);
    rowLayout->setSpacing(4);
    auto* prompt = new QLabel(QStringLiteral(">"), row);
    prompt->setObjectName(QStringLiteral("lab_Prompt"));
    rowLayout->addWidget(prompt);
    m_input = new ConsoleInput(*this, row);
    m_input->setObjectName(QStringLiteral("txt_Input"));
    m_input->setFrame(false);
    rowLayout->addWidget(m_input, 1);
    layout->addWidget(row);
    frame->setFocusProxy(m_input);

    setWidget(frame);
    frame->resize(400, 240);
    setFont(QFont(theme::ResolveFamily(QStringLiteral("Tahoma")), 9));
    applyColours();
}

void ctl_Console::Write(const QString& text, const QColor& colour)
{
    QString plain = text;
    plain.remove(u'\r');
    QTextCharFormat format;
    format.setForeground(colour.isValid() ? colour : m_foreColor);
    QTextCursor cursor(m_output->document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(plain, format);
    QScrollBar* bar = m_output->verticalScrollBar();
    bar->setValue(bar->maximum());
}

void ctl_Console::WriteLine(const QString& text, const QColor& colour)
{
    Write(text + u'\n', colour);
}

void ctl_Console::Clear()
{
    m_output->clear();
}

QString ctl_Console::Output() const
{
    return m_output->toPlainText();
}

void ctl_Console::SetMaxLines(int lines)
{
    m_maxLines = std::max(1, lines);
    // One block more: the open line after the last break counts as a block.
    m_output->setMaximumBlockCount(m_maxLines + 1);
}

QString ctl_Console::InputText() const
{
    return m_input->text();
}

void ctl_Console::SetInputText(const QString& text)
{
    m_input->setText(text);
}

void ctl_Console::SetForeColor(const QColor& colour)
{
    m_foreColor = colour;
    applyColours();
}

void ctl_Console::SetBackColor(const QColor& colour)
{
    m_backColor = colour;
    applyColours();
}

QFont ctl_Console::Font() const
{
    return m_output->font();
}

void ctl_Console::SetFontName(const QString& family)
{
    QFont font = Font();
    font.setFamily(theme::ResolveFamily(family));
    setFont(font);
}

void ctl_Console::SetFontSize(double points)
{
    if (points <= 0)
        return;
    QFont font = Font();
    font.setPointSizeF(points);
    setFont(font);
}

void ctl_Console::setFont(const QFont& font)
{
    widget()->setFont(font);
    m_output->setFont(font);
    m_input->setFont(font);
}

void ctl_Console::applyColours()
{
    QPalette palette = widget()->palette();
    palette.setColor(QPalette::Base, m_backColor);
    palette.setColor(QPalette::Window, m_backColor);
    palette.setColor(QPalette::Text, m_foreColor);
    palette.setColor(QPalette::WindowText, m_foreColor);
    widget()->setPalette(palette);
    for (QWidget* child : widget()->findChildren<QWidget*>())
        child->setPalette(palette);
    palette.setColor(QPalette::Window, theme::Hairline());
    m_rule->setPalette(palette);
}

void ctl_Console::enter()
{
    const QString line = m_input->text();
    m_input->clear();
    if (!line.isEmpty() && (m_history.isEmpty() || m_history.last() != line)) {
        m_history << line;
        if (m_history.size() > kHistoryLines)
            m_history.removeFirst();
    }
    m_recalled = int(m_history.size());
    m_draft.clear();
    // What the owner does with the line may fail; a failure ends that handler
    // only, and must not unwind through Qt's event delivery.
    try {
        raise(LineEntered, line);
    } catch (const std::exception& e) {
        qCritical().noquote() << QStringLiteral("formwerk: %1.%2: %3")
                                     .arg(form().Name(), Name(), QString::fromUtf8(e.what()));
    } catch (...) {
        qCritical().noquote()
            << QStringLiteral("formwerk: %1.%2: an unknown failure").arg(form().Name(), Name());
    }
}

void ctl_Console::recall(int step)
{
    const int count = int(m_history.size());
    const int target = std::clamp(m_recalled + step, 0, count);
    if (target == m_recalled)
        return;
    if (m_recalled == count)
        m_draft = m_input->text(); // leaving the line being typed: keep it
    m_recalled = target;
    m_input->setText(target == count ? m_draft : m_history[target]);
}

QVariant ctl_Console::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"TEXT")
        return Output();
    if (key == u"INPUTTEXT")
        return InputText();
    if (key == u"MAXLINES")
        return m_maxLines;
    if (key == u"FORECOLOR")
        return m_foreColor;
    if (key == u"BACKCOLOR")
        return m_backColor;
    if (key == u"FONTNAME")
        return Font().family();
    if (key == u"FONTSIZE")
        return Font().pointSizeF();
    return Control::GetProperty(name);
}

bool ctl_Console::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"TEXT") {
        Clear();
        Write(value.toString());
    } else if (key == u"INPUTTEXT")
        SetInputText(value.toString());
    else if (key == u"MAXLINES")
        SetMaxLines(value.toInt());
    else if (key == u"FORECOLOR")
        SetForeColor(colourOf(value));
    else if (key == u"BACKCOLOR")
        SetBackColor(colourOf(value));
    else if (key == u"FONTNAME")
        SetFontName(value.toString());
    else if (key == u"FONTSIZE")
        SetFontSize(value.toDouble());
    else
        return Control::SetProperty(name, value);
    return true;
}

} // namespace fw
