#pragma once
// A terminal: an output pane that keeps the last MaxLines lines and follows
// the end, and an input line below it. Return in the input line raises
// LineEntered (the first own event) with the text and clears the line; Up and
// Down walk through the lines entered before. What appears in the output is
// written by the control's owner; the control echoes nothing.

#include "forms/Control.h"

#include <QColor>
#include <QFont>
#include <QString>
#include <QStringList>
#include <functional>

class QPlainTextEdit;

namespace fw {

class ConsoleInput;

class ctl_Console : public Control {
  public:
    ctl_Console(Form& form, const QString& name, QWidget* container = nullptr);

    /// Appends text at the end of the output; a text without a final line
    /// break is continued by the next write. An invalid colour is ForeColor.
    void Write(const QString& text, const QColor& colour = {});
    /// Appends text and a line break.
    void WriteLine(const QString& text, const QColor& colour = {});
    void Clear();
    /// The output as plain text, lines separated by "\n".
    QString Output() const;
    /// Lines that the output keeps; the oldest go first.
    int MaxLines() const { return m_maxLines; }
    void SetMaxLines(int lines);

    QString InputText() const;
    void SetInputText(const QString& text);
    /// Lines entered, oldest first, as Up and Down offer them.
    const QStringList& History() const { return m_history; }

    QColor ForeColor() const { return m_foreColor; }
    void SetForeColor(const QColor& colour);
    QColor BackColor() const { return m_backColor; }
    void SetBackColor(const QColor& colour);
    QFont Font() const;
    void SetFontName(const QString& family);
    void SetFontSize(double points);

    /// The text of a line entered with Return.
    std::function<void(const QString& line)> LineEntered;

    /// "Text" (the output, written whole), "InputText", "MaxLines",
    /// "ForeColor", "BackColor", "FontName", "FontSize".
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    friend class ConsoleInput;
    void enter();
    void recall(int step);
    void applyColours();
    void setFont(const QFont& font);

    QPlainTextEdit* m_output;
    ConsoleInput* m_input;
    QWidget* m_rule;
    QStringList m_history;
    int m_recalled = 0; ///< position in m_history while walking it; size() = the draft
    QString m_draft;
    int m_maxLines = 5000;
    QColor m_foreColor;
    QColor m_backColor;
};

} // namespace fw
