#pragma once
// A text label with simple markup: <b>, <i>, <br> and <A HREF='X'>...</A>
// links that raise LinkClick with X. Alignment 0 keeps lines as written (left,
// no wrapping, for tables), 1 centres wrapped lines, 3 justifies them. The
// label keeps its width unless a line cannot be wrapped into it, and takes the
// height its text needs up to a maximum, beyond which the text scrolls.

#include "forms/Control.h"

#include <QFont>
#include <functional>

namespace fw {

class LabelView;

class ctl_Label : public Control {
  public:
    ctl_Label(Form& form, const QString& name, QWidget* container = nullptr);

    QString Caption() const { return m_text; }
    void SetCaption(const QString& text);
    /// The text as shown: markup applied, everything else literal.
    QString DisplayedText() const;
    int Alignment() const { return m_alignment; }
    void SetAlignment(int alignment);
    QFont Font() const;
    void SetFont(const QFont& font);
    /// Families that are not installed fall back: monospace names such as
    /// "Lucida Console" to an installed fixed-pitch family, others as Qt
    /// substitutes.
    void SetFontName(const QString& family);
    void SetFontSize(double points);

    void SetWidth(int twips) override;
    /// The most height the label takes, in twips; 0 (the default) for none. A
    /// taller text scrolls, with a scroll bar to the right of the text width.
    int MaxHeight() const { return m_maxHeight; }
    void SetMaxHeight(int twips);

    std::function<void(const QString& target)> LinkClick;

    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    void relayout();
    friend class LabelView;
    LabelView* m_label;
    QString m_text;
    int m_alignment = 0;
    int m_designWidth = 0; ///< pixels: the width wrapping aims at
    int m_maxHeight = 0;   ///< twips
};

} // namespace fw
