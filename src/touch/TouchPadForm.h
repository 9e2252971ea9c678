#pragma once
// What the touch keyboard and the numeric pad share: a borderless form with
// a drawn body on a transparent magenta ground, keys made of a picture and a
// label per index, the pressed look, a line to edit, placement by the target
// control, dragging by the background or any key, and the 100 ms unload.

#include "forms/ControlArray.h"
#include "forms/Form.h"
#include "touch/KeyFaces.h"
#include "touch/KeyboardLayout.h"

#include <QImage>
#include <QPoint>
#include <QRectF>
#include <QSize>
#include <map>

namespace fw {

class TextBox;
class Label;
class PictureBox;
class CommandButton;
class Timer;
class ctl_Button;

class TouchPadForm : public Form {
  public:
    ~TouchPadForm() override;

    /// The control being edited; may be null.
    void SetTarget(Control* control) { target = control; }
    /// The text over the input line.
    void SetDescription(const QString& text) { Description = text; }
    /// False until the input was confirmed.
    bool Confirmed() const { return m_confirmed; }

    ControlArray<PictureBox> pic_Key;
    ControlArray<KeyLabel> lab_Key;
    TextBox* txt_Input;
    Label* lab_Title;
    Label* lab_Description;
    CommandButton* but_Enter;
    ctl_Button* but_Quit;
    PictureBox* pic_ColorSel;
    Timer* tmr_Dragging;
    Timer* tmr_Unload;

  protected:
    /// A form of clientTwips whose drawn body of bodyPixels frames the input
    /// line with a darker panel.
    TouchPadForm(const QString& name, QSize clientTwips, QSize bodyPixels, const QRectF& panel);

    /// Makes pic_Key(index) and lab_Key(index) as designed; leftOfStem as
    /// DrawKeyCap takes it.
    void loadKey(const KeyDesign& design, int leftOfStem = 0);

    /// Moves the Return button out of sight; first step of the load.
    void hideEnterButton();
    /// The load steps after the keys: colour key, title, position by the
    /// cursor or the target, kept on screen. With passOver a failing step is
    /// skipped; otherwise it ends the load.
    void placeOnLoad(bool passOver);
    /// The target's text by its type name; throws without target or property.
    QString readTarget() const;
    /// Writes text by the target's type name; richText writes a "RichTextBox"
    /// through TextRTF. Throws without target or property.
    void writeTarget(const QString& text, bool richText);
    /// Ends the dialog from inside a key handler, after 100 ms.
    void finish(bool confirmed);
    void setConfirmed(bool confirmed) { m_confirmed = confirmed; }

    /// 1 the pressed look (or a one-shot modifier), 2 a locked modifier's
    /// lamp, else the plain face. Coordinates in the key's scale mode.
    void hPaintKey(int index, int state);

    /// Runs after the shared press handling (pressed look, drag start).
    virtual void onKeyDown(int /*index*/) {}
    /// The state a key is painted with when it is released.
    virtual int restingState(int /*index*/) const { return 0; }
    /// A click on a key; onLabel false for the key's rim around its label.
    virtual void onKeyClick(int index, bool onLabel) = 0;

    Control* target = nullptr;
    QString Description;
    /// Set when a drag starts, cleared at the next key press.
    bool wasDragged = false;

  private:
    void keyDown(int index);
    void keyUp(int index);
    void pressStart();
    void pressEnd();
    void placeByTarget(int& x, int& y);
    void tmr_Dragging_Tick();

    bool m_confirmed = false;
    std::map<int, QImage> m_keyFaces;
    QPoint dragStart;
    QPoint formAtDragStart;
    bool mousePressed = false;
    bool dragging = false;
};

/// Tahoma at points, as the touch forms' texts are set.
QFont TouchFont(double points, bool bold = false);

} // namespace fw
