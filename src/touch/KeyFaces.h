#pragma once
// What the keyboard draws in place of bitmaps: the key caps, the outline of
// the keyboard, and the key label that shows Wingdings glyph codes as symbols
// of a font that exists while its Caption keeps the codes the key logic reads.

#include "forms/Form.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QRectF>
#include <QSize>

namespace fw {

/// A key cap of size pixels; enter draws the cap that reaches down into the
/// next row at its right, leftOfStem pixels from its left edge.
QImage DrawKeyCap(QSize size, int leftOfStem = 0);
/// A touch form's body, transparent around its rounded outline, with a
/// darker panel (pixels) behind the input line.
QImage DrawKeyboardBody(QSize size, const QRectF& panel);

class KeyLabel : public Control {
  public:
    KeyLabel(Form& form, const QString& name, QWidget* container);
    QString Caption() const { return m_caption; }
    void SetCaption(const QString& caption);
    QColor ForeColor() const { return m_foreColor; }
    void SetForeColor(const QColor& colour);
    /// Wingdings captions are shown as symbols.
    void SetFont(const QFont& font, bool wingdings);
    QFont Font() const { return m_font; }
    bool Wingdings() const { return m_wingdings; }
    /// What the key shows now.
    QString ShownText() const;

    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    QString m_caption;
    QColor m_foreColor = Qt::black;
    QFont m_font;
    bool m_wingdings = false;
};

} // namespace fw
