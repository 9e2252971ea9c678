#include "forms/StdControls.h"

#include "forms/Form.h"
#include "forms/Screen.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTimer>
#include <limits>

namespace fw {

namespace {
QWidget* parentFor(Form& form, QWidget* container)
{
    return container ? container : form.clientArea();
}

void setBase(QWidget* widget, const QColor& colour)
{
    QPalette palette = widget->palette();
    palette.setColor(QPalette::Base, colour);
    widget->setPalette(palette);
}
} // namespace

// ---- TextBox --------------------------------------------------------------

TextBox::TextBox(Form& form, const QString& name, bool multiLine, QWidget* container)
    : Control(form, name, QStringLiteral("TextBox"), nullptr), m_multiLine(multiLine)
{
    QWidget* parent = parentFor(form, container);
    if (multiLine) {
        m_multi = new QPlainTextEdit(parent);
        QObject::connect(m_multi, &QPlainTextEdit::textChanged, m_multi, [this] { raise(Change); });
        setWidget(m_multi);
    } else {
        m_line = new QLineEdit(parent);
        // A text box holds any text a host hands it; Qt's line edit would cut at 32767.
        m_line->setMaxLength(std::numeric_limits<int>::max());
        QObject::connect(m_line, &QLineEdit::textChanged, m_line, [this] { raise(Change); });
        setWidget(m_line);
    }
}

QString TextBox::Text() const
{
    return m_line ? m_line->text() : m_multi->toPlainText();
}

void TextBox::SetText(const QString& text)
{
    if (Text() == text)
        return;
    if (m_line) {
        m_line->setText(text);
        return;
    }
    // Qt takes minutes to wrap one line of a megabyte; such a text shows unwrapped.
    constexpr qsizetype kLongestWrappedLine = 20000;
    qsizetype longest = 0;
    for (qsizetype start = 0; start <= text.size();) {
        qsizetype end = text.indexOf(u'\n', start);
        if (end < 0)
            end = text.size();
        longest = std::max(longest, end - start);
        start = end + 1;
    }
    m_multi->setLineWrapMode(longest > kLongestWrappedLine ? QPlainTextEdit::NoWrap
                                                           : QPlainTextEdit::WidgetWidth);
    m_multi->setPlainText(text);
}

int TextBox::SelStart() const
{
    if (m_line)
        return m_line->hasSelectedText() ? m_line->selectionStart() : m_line->cursorPosition();
    return m_multi->textCursor().selectionStart();
}

void TextBox::SetSelStart(int start)
{
    start = std::clamp(start, 0, int(Text().size()));
    if (m_line) {
        m_line->setCursorPosition(start);
    } else {
        QTextCursor cursor = m_multi->textCursor();
        cursor.setPosition(start);
        m_multi->setTextCursor(cursor);
    }
}

int TextBox::SelLength() const
{
    if (m_line)
        return int(m_line->selectedText().size());
    const QTextCursor cursor = m_multi->textCursor();
    return cursor.selectionEnd() - cursor.selectionStart();
}

void TextBox::SetSelLength(int length)
{
    const int start = SelStart();
    length = std::clamp(length, 0, int(Text().size()) - start);
    if (m_line) {
        m_line->setSelection(start, length);
    } else {
        QTextCursor cursor = m_multi->textCursor();
        cursor.setPosition(start);
        cursor.setPosition(start + length, QTextCursor::KeepAnchor);
        m_multi->setTextCursor(cursor);
    }
}

QString TextBox::SelText() const
{
    return m_line ? m_line->selectedText() : m_multi->textCursor().selectedText();
}

void TextBox::SetPasswordChar(const QString& mask)
{
    m_passwordChar = mask.left(1);
    if (m_line)
        m_line->setEchoMode(m_passwordChar.isEmpty() ? QLineEdit::Normal : QLineEdit::Password);
}

bool TextBox::Locked() const
{
    return m_line ? m_line->isReadOnly() : m_multi->isReadOnly();
}

void TextBox::SetLocked(bool locked)
{
    if (m_line)
        m_line->setReadOnly(locked);
    else
        m_multi->setReadOnly(locked);
}

QColor TextBox::BackColor() const
{
    return widget()->palette().color(QPalette::Base);
}
void TextBox::SetBackColor(const QColor& colour)
{
    setBase(widget(), colour);
}
void TextBox::SetFont(const QFont& font)
{
    widget()->setFont(font);
}
QFont TextBox::Font() const
{
    return widget()->font();
}

QVariant TextBox::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"TEXT")
        return Text();
    if (key == u"SELSTART")
        return SelStart();
    if (key == u"SELLENGTH")
        return SelLength();
    if (key == u"PASSWORDCHAR")
        return m_passwordChar;
    return Control::GetProperty(name);
}

bool TextBox::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"TEXT")
        SetText(value.toString());
    else if (key == u"SELSTART")
        SetSelStart(value.toInt());
    else if (key == u"SELLENGTH")
        SetSelLength(value.toInt());
    else if (key == u"PASSWORDCHAR")
        SetPasswordChar(value.toString());
    else
        return Control::SetProperty(name, value);
    return true;
}

// ---- Label ----------------------------------------------------------------

Label::Label(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("Label"), nullptr),
      m_label(new QLabel(parentFor(form, container)))
{
    m_label->setTextFormat(Qt::PlainText);
    m_label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setWidget(m_label);
    setClickOnRelease(true);
}

QString Label::Caption() const
{
    return m_label->text();
}

void Label::SetCaption(const QString& caption)
{
    m_label->setText(caption);
    if (m_autoSize)
        m_label->adjustSize();
}

void Label::SetAlignment(int alignment)
{
    const Qt::Alignment h = alignment == 1   ? Qt::AlignRight
                            : alignment == 2 ? Qt::AlignHCenter
                                             : Qt::AlignLeft;
    m_label->setAlignment(h | Qt::AlignTop);
}

void Label::SetWordWrap(bool on)
{
    m_label->setWordWrap(on);
}

void Label::SetAutoSize(bool on)
{
    m_autoSize = on;
    if (on)
        m_label->adjustSize();
}

void Label::SetFont(const QFont& font)
{
    m_label->setFont(font);
    if (m_autoSize)
        m_label->adjustSize();
}

QFont Label::Font() const
{
    return m_label->font();
}

void Label::SetForeColor(const QColor& colour)
{
    QPalette palette = m_label->palette();
    palette.setColor(QPalette::WindowText, colour);
    m_label->setPalette(palette);
}

QColor Label::ForeColor() const
{
    return m_label->palette().color(QPalette::WindowText);
}

void Label::SetBackStyle(int style)
{
    m_label->setAutoFillBackground(style == 1);
}

QVariant Label::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"CAPTION" || key == u"TEXT")
        return Caption();
    return Control::GetProperty(name);
}

bool Label::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"CAPTION" || key == u"TEXT") {
        SetCaption(value.toString());
        return true;
    }
    return Control::SetProperty(name, value);
}

// ---- PictureBox -----------------------------------------------------------

class PictureSurface : public QWidget {
  public:
    PictureSurface(PictureBox& box, QWidget* parent) : QWidget(parent), m_box(box) {}

  protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), m_box.m_backColor);
        if (!m_box.m_picture.isNull())
            painter.drawImage(0, 0, m_box.m_picture);
        if (!m_box.m_canvas.isNull())
            painter.drawImage(0, 0, m_box.m_canvas);
        painter.end();
        if (!m_box.m_autoRedraw)
            m_box.raise(m_box.Paint);
    }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        QWidget::mouseReleaseEvent(event);
        if (rect().contains(event->position().toPoint()))
            m_box.raise(m_box.Click);
    }

  private:
    PictureBox& m_box;
};

PictureBox::PictureBox(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("PictureBox"), nullptr),
      m_surface(new PictureSurface(*this, parentFor(form, container)))
{
    setWidget(m_surface);
}

PictureBox::~PictureBox() = default;

void PictureBox::SetScaleMode(int mode)
{
    m_scaleMode = mode == 3 ? 3 : 1;
}

void PictureBox::SetBackColor(const QColor& colour)
{
    m_backColor = colour;
    m_surface->update();
}

void PictureBox::SetPicture(const QImage& picture)
{
    m_picture = picture;
    m_surface->update();
}

double PictureBox::ScaleWidth() const
{
    return m_scaleMode == 3 ? m_surface->width() : double(ToTwips(m_surface->width()));
}

double PictureBox::ScaleHeight() const
{
    return m_scaleMode == 3 ? m_surface->height() : double(ToTwips(m_surface->height()));
}

QPointF PictureBox::toPixels(double x, double y) const
{
    if (m_scaleMode == 3)
        return {x, y};
    return {x / Screen::TwipsPerPixel, y / Screen::TwipsPerPixel};
}

void PictureBox::ensureCanvas()
{
    const QSize size = m_surface->size().expandedTo(QSize(1, 1));
    if (m_canvas.size() == size)
        return;
    QImage grown(size, QImage::Format_ARGB32_Premultiplied);
    grown.fill(Qt::transparent);
    if (!m_canvas.isNull()) {
        QPainter painter(&grown);
        painter.drawImage(0, 0, m_canvas);
    }
    m_canvas = grown;
}

void PictureBox::Cls()
{
    m_canvas = QImage();
    m_picture = QImage();
    m_surface->update();
}

void PictureBox::Line(double x1, double y1, double x2, double y2, const QColor& colour)
{
    ensureCanvas();
    QPainter painter(&m_canvas);
    painter.setPen(colour);
    painter.drawLine(toPixels(x1, y1), toPixels(x2, y2));
    m_surface->update();
}

void PictureBox::Box(double x1, double y1, double x2, double y2, const QColor& colour, bool filled)
{
    ensureCanvas();
    QPainter painter(&m_canvas);
    const QRectF box = QRectF(toPixels(x1, y1), toPixels(x2, y2)).normalized();
    if (filled)
        painter.fillRect(box.adjusted(0, 0, 1, 1), colour);
    else {
        painter.setPen(colour);
        painter.drawRect(box);
    }
    m_surface->update();
}

void PictureBox::PrintText(double x, double y, const QString& text, const QFont& font,
                           const QColor& colour)
{
    ensureCanvas();
    QPainter painter(&m_canvas);
    painter.setFont(font);
    painter.setPen(colour);
    const QPointF at = toPixels(x, y);
    painter.drawText(QRectF(at, QSizeF(m_canvas.width() - at.x(), m_canvas.height() - at.y())),
                     Qt::AlignLeft | Qt::AlignTop, text);
    m_surface->update();
}

void PictureBox::PaintPicture(const QImage& picture, double x, double y, double width,
                              double height)
{
    ensureCanvas();
    QPainter painter(&m_canvas);
    const QPointF at = toPixels(x, y);
    QSizeF size = picture.size();
    if (width >= 0 && height >= 0) {
        const QPointF far = toPixels(x + width, y + height);
        size = QSizeF(far.x() - at.x(), far.y() - at.y());
    }
    painter.drawImage(QRectF(at, size), picture);
    m_surface->update();
}

QImage PictureBox::Image() const
{
    return m_surface->grab().toImage();
}

QColor PictureBox::Point(double x, double y) const
{
    const QPoint at = toPixels(x, y).toPoint();
    if (!m_surface->rect().contains(at))
        return {};
    if (!m_canvas.isNull() && m_canvas.rect().contains(at) && qAlpha(m_canvas.pixel(at)) == 255)
        return QColor(m_canvas.pixel(at));
    if (!m_picture.isNull() && m_picture.rect().contains(at))
        return QColor(m_picture.pixel(at));
    return m_backColor;
}

// ---- CommandButton --------------------------------------------------------

CommandButton::CommandButton(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("CommandButton"), nullptr),
      m_button(new QPushButton(parentFor(form, container)))
{
    m_button->setAutoDefault(false); // Return is the form's business, see Form
    QObject::connect(m_button, &QPushButton::clicked, m_button, [this] { raise(Click); });
    setWidget(m_button);
}

QString CommandButton::Caption() const
{
    return m_button->text();
}
void CommandButton::SetCaption(const QString& caption)
{
    m_button->setText(caption);
}
bool CommandButton::Default() const
{
    return m_button->isDefault();
}
void CommandButton::SetDefault(bool on)
{
    m_button->setDefault(on);
}
bool CommandButton::IsDefaultButton() const
{
    return Default();
}
bool CommandButton::PerformClick()
{
    if (!Enabled() || !Visible())
        return false;
    m_button->click();
    return true;
}

QVariant CommandButton::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"CAPTION")
        return Caption();
    if (key == u"DEFAULT")
        return Default();
    return Control::GetProperty(name);
}

bool CommandButton::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"CAPTION")
        SetCaption(value.toString());
    else if (key == u"DEFAULT")
        SetDefault(value.toBool());
    else
        return Control::SetProperty(name, value);
    return true;
}

// ---- OptionButton ---------------------------------------------------------

OptionButton::OptionButton(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("OptionButton"), nullptr),
      m_button(new QRadioButton(parentFor(form, container)))
{
    QObject::connect(m_button, &QRadioButton::clicked, m_button, [this] { raise(Click); });
    setWidget(m_button);
}

QString OptionButton::Caption() const
{
    return m_button->text();
}
void OptionButton::SetCaption(const QString& caption)
{
    m_button->setText(caption);
}
bool OptionButton::Value() const
{
    return m_button->isChecked();
}
void OptionButton::SetValue(bool on)
{
    m_button->setChecked(on);
}

QVariant OptionButton::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"CAPTION")
        return Caption();
    if (key == u"VALUE")
        return Value();
    return Control::GetProperty(name);
}

bool OptionButton::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"CAPTION")
        SetCaption(value.toString());
    else if (key == u"VALUE")
        SetValue(value.toBool());
    else
        return Control::SetProperty(name, value);
    return true;
}

// ---- ComboBox -------------------------------------------------------------

ComboBox::ComboBox(Form& form, const QString& name, int style, QWidget* container)
    : Control(form, name, QStringLiteral("ComboBox"), nullptr),
      m_combo(new QComboBox(parentFor(form, container)))
{
    m_combo->setEditable(style != 2);
    QObject::connect(m_combo, &QComboBox::currentTextChanged, m_combo, [this] { raise(Change); });
    QObject::connect(m_combo, &QComboBox::activated, m_combo, [this] { raise(Click); });
    setWidget(m_combo);
}

void ComboBox::AddItem(const QString& text)
{
    m_combo->addItem(text);
}
void ComboBox::Clear()
{
    m_combo->clear();
}
int ComboBox::ListCount() const
{
    return m_combo->count();
}
QString ComboBox::List(int index) const
{
    return m_combo->itemText(index);
}
int ComboBox::ListIndex() const
{
    return m_combo->currentIndex();
}
void ComboBox::SetListIndex(int index)
{
    m_combo->setCurrentIndex(index);
}
QString ComboBox::Text() const
{
    return m_combo->currentText();
}

void ComboBox::SetText(const QString& text)
{
    if (m_combo->isEditable())
        m_combo->setEditText(text);
    else
        m_combo->setCurrentIndex(m_combo->findText(text));
}

QVariant ComboBox::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"TEXT")
        return Text();
    if (key == u"LISTINDEX")
        return ListIndex();
    if (key == u"LISTCOUNT")
        return ListCount();
    return Control::GetProperty(name);
}

bool ComboBox::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"TEXT")
        SetText(value.toString());
    else if (key == u"LISTINDEX")
        SetListIndex(value.toInt());
    else
        return Control::SetProperty(name, value);
    return true;
}

// ---- Timer ----------------------------------------------------------------

Timer::Timer(Form& form, const QString& name)
    : Control(form, name, QStringLiteral("Timer"), nullptr), m_timer(std::make_unique<QTimer>())
{
    QObject::connect(m_timer.get(), &QTimer::timeout, m_timer.get(), [this] { raise(Tick); });
}

Timer::~Timer() = default;

int Timer::Interval() const
{
    return m_timer->interval();
}

void Timer::SetInterval(int ms)
{
    m_timer->setInterval(std::max(0, ms));
    sync();
}

void Timer::SetEnabled(bool on)
{
    m_enabled = on;
    sync();
}

// A timer with interval 0 does not tick, however it is enabled.
void Timer::sync()
{
    if (m_enabled && m_timer->interval() > 0)
        m_timer->start();
    else
        m_timer->stop();
}

QVariant Timer::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"INTERVAL")
        return Interval();
    if (key == u"ENABLED")
        return Enabled();
    return Control::GetProperty(name);
}

bool Timer::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"INTERVAL")
        SetInterval(value.toInt());
    else if (key == u"ENABLED")
        SetEnabled(value.toBool());
    else
        return Control::SetProperty(name, value);
    return true;
}

} // namespace fw
