#pragma once
// The platform's standard controls: text box, label, picture box, command
// button, option button, combo box and timer.

#include "forms/Control.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QStringList>
#include <memory>

class QLineEdit;
class QPlainTextEdit;
class QLabel;
class QPushButton;
class QRadioButton;
class QComboBox;
class QTimer;

namespace fw {

class PictureSurface;

class TextBox : public Control {
  public:
    TextBox(Form& form, const QString& name, bool multiLine = false, QWidget* container = nullptr);

    QString Text() const;
    /// Raises Change, as every change of the text does.
    void SetText(const QString& text);
    int SelStart() const;
    void SetSelStart(int start);
    int SelLength() const;
    void SetSelLength(int length);
    QString SelText() const;
    QString PasswordChar() const { return m_passwordChar; }
    /// A non-empty character masks the text.
    void SetPasswordChar(const QString& mask);
    bool MultiLine() const { return m_multiLine; }
    bool Locked() const;
    void SetLocked(bool locked);
    QColor BackColor() const;
    void SetBackColor(const QColor& colour);
    void SetFont(const QFont& font);
    QFont Font() const;

    std::function<void()> Change;

    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    QLineEdit* m_line = nullptr;
    QPlainTextEdit* m_multi = nullptr;
    bool m_multiLine;
    QString m_passwordChar;
};

class Label : public Control {
  public:
    Label(Form& form, const QString& name, QWidget* container = nullptr);
    QString Caption() const;
    void SetCaption(const QString& caption);
    /// 0 left, 1 right, 2 centre.
    void SetAlignment(int alignment);
    void SetWordWrap(bool on);
    void SetAutoSize(bool on);
    void SetFont(const QFont& font);
    QFont Font() const;
    void SetForeColor(const QColor& colour);
    QColor ForeColor() const;
    void SetBackStyle(int style); ///< 0 transparent, 1 opaque
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    QLabel* m_label;
    bool m_autoSize = false;
};

/// A picture box: a persistent drawing surface in its own scale mode
/// (1 twips, 3 pixels) with Cls, lines, boxes and pixel reads.
class PictureBox : public Control {
  public:
    PictureBox(Form& form, const QString& name, QWidget* container = nullptr);
    ~PictureBox() override;

    /// 1 twips (the default), 3 pixels.
    int ScaleMode() const { return m_scaleMode; }
    void SetScaleMode(int mode);
    bool AutoRedraw() const { return m_autoRedraw; }
    void SetAutoRedraw(bool on) { m_autoRedraw = on; }
    QColor BackColor() const { return m_backColor; }
    void SetBackColor(const QColor& colour);
    QColor ForeColor() const { return m_foreColor; }
    void SetForeColor(const QColor& colour) { m_foreColor = colour; }
    void SetPicture(const QImage& picture);
    QImage Picture() const { return m_picture; }
    /// Width and height of the client area in the scale mode.
    double ScaleWidth() const;
    double ScaleHeight() const;

    void Cls();
    void Line(double x1, double y1, double x2, double y2, const QColor& colour);
    /// A box; filled paints its inside in the colour.
    void Box(double x1, double y1, double x2, double y2, const QColor& colour, bool filled);
    void PrintText(double x, double y, const QString& text, const QFont& font,
                   const QColor& colour);
    void PaintPicture(const QImage& picture, double x, double y, double width = -1,
                      double height = -1);
    /// The colour of one point of the surface; invalid outside.
    QColor Point(double x, double y) const;
    /// What the surface shows now.
    QImage Image() const;

    /// Raised when the surface must be drawn again (AutoRedraw off).
    std::function<void()> Paint;

  private:
    friend class PictureSurface;
    QPointF toPixels(double x, double y) const;
    void ensureCanvas();

    PictureSurface* m_surface;
    int m_scaleMode = 1;
    bool m_autoRedraw = false;
    QColor m_backColor = Qt::white;
    QColor m_foreColor = Qt::black;
    QImage m_picture;
    QImage m_canvas;
};

class CommandButton : public Control {
  public:
    CommandButton(Form& form, const QString& name, QWidget* container = nullptr);
    QString Caption() const;
    void SetCaption(const QString& caption);
    bool Default() const;
    /// The default button answers Return wherever the focus is.
    void SetDefault(bool on);
    bool IsButton() const override { return true; }
    bool IsDefaultButton() const override;
    bool IsCancelButton() const override { return m_cancel; }
    bool PerformClick() override;
    bool Cancel() const { return m_cancel; }
    /// The cancel button answers Esc.
    void SetCancel(bool on) { m_cancel = on; }
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    QPushButton* m_button;
    bool m_cancel = false;
};

class OptionButton : public Control {
  public:
    OptionButton(Form& form, const QString& name, QWidget* container = nullptr);
    QString Caption() const;
    void SetCaption(const QString& caption);
    bool Value() const;
    void SetValue(bool on);
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    QRadioButton* m_button;
};

class ComboBox : public Control {
  public:
    /// style 0 drop-down with text, 2 list only.
    ComboBox(Form& form, const QString& name, int style = 0, QWidget* container = nullptr);
    void AddItem(const QString& text);
    void Clear();
    int ListCount() const;
    QString List(int index) const;
    int ListIndex() const;
    void SetListIndex(int index);
    QString Text() const;
    void SetText(const QString& text);
    std::function<void()> Change;
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    QComboBox* m_combo;
};

/// A timer control: no window, ticks every Interval milliseconds while Enabled.
class Timer : public Control {
  public:
    Timer(Form& form, const QString& name);
    ~Timer() override;
    int Interval() const;
    void SetInterval(int ms);
    bool Enabled() const override { return m_enabled; }
    void SetEnabled(bool on) override;
    std::function<void()> Tick;
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    void sync();
    std::unique_ptr<QTimer> m_timer;
    bool m_enabled = false;
};

} // namespace fw
