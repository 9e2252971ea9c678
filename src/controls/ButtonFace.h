#pragma once
// The painted push button that ctl_Button and the command bar's rows share:
// icon and caption centred, "&" accelerators underlined, hover, pressed,
// focus and disabled states, and an accent look for the default button.

#include <QAbstractButton>
#include <QColor>
#include <QImage>

namespace fw {

class ButtonFace : public QAbstractButton {
    Q_OBJECT
  public:
    explicit ButtonFace(QWidget* parent = nullptr);

    /// The caption with "&" accelerators and "<br>" breaks.
    void setCaption(const QString& caption);
    QString caption() const { return m_caption; }
    void setPicture(const QImage& icon);
    bool hasPicture() const { return !m_icon.isNull(); }
    /// The default button of its form: drawn in the accent colour.
    void setDefaultLook(bool on);
    /// A small round button with one glyph (the help "?").
    void setRound(bool on);
    /// Draws the frame in outer with an inner ring in inner; invalid colours
    /// keep the themed frame.
    void setBorderColours(const QColor& outer, const QColor& inner);

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QSize contentSize() const;

    QString m_caption;
    QString m_display;
    QImage m_icon;
    bool m_defaultLook = false;
    bool m_round = false;
    QColor m_borderOuter;
    QColor m_borderInner;
};

} // namespace fw
