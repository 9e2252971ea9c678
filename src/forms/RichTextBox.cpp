#include "forms/RichTextBox.h"

#include "forms/Form.h"
#include "forms/RtfText.h"

#include <QTextBrowser>
#include <QTextEdit>

namespace fw {

namespace {
QWidget* parentOf(Form& form, QWidget* container)
{
    return container ? container : form.clientArea();
}
} // namespace

RichTextBox::RichTextBox(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("RichTextBox"), nullptr),
      m_edit(new QTextEdit(parentOf(form, container)))
{
    m_edit->setReadOnly(true);
    m_edit->setAcceptRichText(false);
    m_edit->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setWidget(m_edit);
}

QString RichTextBox::Text() const
{
    return m_edit->toPlainText();
}

void RichTextBox::SetText(const QString& text)
{
    m_rtf.clear();
    m_edit->setPlainText(text);
}

QString RichTextBox::TextRTF() const
{
    return m_rtf.isEmpty() ? PlainTextToRtf(Text()) : m_rtf;
}

void RichTextBox::SetTextRTF(const QString& rtf)
{
    m_edit->setPlainText(RtfToPlainText(rtf));
    m_rtf = rtf;
}

QVariant RichTextBox::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"TEXT")
        return Text();
    if (key == u"TEXTRTF")
        return TextRTF();
    return Control::GetProperty(name);
}

bool RichTextBox::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"TEXT")
        SetText(value.toString());
    else if (key == u"TEXTRTF")
        SetTextRTF(value.toString());
    else
        return Control::SetProperty(name, value);
    return true;
}

HtmlViewer::HtmlViewer(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("HtmlViewer"), nullptr),
      m_browser(new QTextBrowser(parentOf(form, container)))
{
    m_browser->setOpenLinks(false);
    setWidget(m_browser);
}

void HtmlViewer::SetText(const QString& html)
{
    m_source = html;
    m_browser->setHtml(html);
}

QString HtmlViewer::PlainText() const
{
    return m_browser->toPlainText();
}

QVariant HtmlViewer::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"TEXT")
        return Text();
    if (key == u"PLAINTEXT")
        return PlainText();
    return Control::GetProperty(name);
}

bool HtmlViewer::SetProperty(const QString& name, const QVariant& value)
{
    if (name.compare(u"TEXT", Qt::CaseInsensitive) != 0)
        return Control::SetProperty(name, value);
    SetText(value.toString());
    return true;
}

} // namespace fw
