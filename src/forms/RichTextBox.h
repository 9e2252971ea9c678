#pragma once
// Read-only viewers for long texts: a rich text box and an HTML viewer. Both
// scroll, wrap and let the user select and copy.

#include "forms/Control.h"

class QTextEdit;
class QTextBrowser;

namespace fw {

/// A rich text box. It shows RTF as its plain text: see RtfText.h.
class RichTextBox : public Control {
  public:
    RichTextBox(Form& form, const QString& name, QWidget* container = nullptr);

    /// The plain text shown.
    QString Text() const;
    void SetText(const QString& text);
    /// The document as RTF: as it was set, or the shown text wrapped as RTF.
    QString TextRTF() const;
    void SetTextRTF(const QString& rtf);

    /// "Text" and "TextRTF" besides the common properties.
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    QTextEdit* m_edit;
    QString m_rtf; ///< empty unless the document came as RTF
};

/// An HTML viewer. Text is the document's source as it was given; links are
/// not followed, the viewer only shows.
class HtmlViewer : public Control {
  public:
    HtmlViewer(Form& form, const QString& name, QWidget* container = nullptr);

    QString Text() const { return m_source; }
    void SetText(const QString& html);
    /// What the reader sees, without markup.
    QString PlainText() const;

    /// "Text" (the source) and "PlainText" besides the common properties.
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    QTextBrowser* m_browser;
    QString m_source;
};

} // namespace fw
