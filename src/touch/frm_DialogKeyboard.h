#pragma once
// A borderless, draggable on-screen keyboard shown modally for one control:
// it edits a copy of the control's text in its own line, turns each key into
// keystrokes for that line, and writes the text back on ENTER.

#include "forms/ControlArray.h"
#include "forms/Form.h"
#include "touch/KeyboardLayout.h"

#include <QImage>
#include <QPoint>
#include <array>
#include <map>

namespace fw {

class TextBox;
class Label;
class PictureBox;
class CommandButton;
class Timer;
class ctl_Button;
class KeyLabel;

class frm_DialogKeyboard : public Form {
  public:
    frm_DialogKeyboard();
    ~frm_DialogKeyboard() override;

    /// The control being edited; may be null.
    void SetTarget(Control* control) { target = control; }
    /// The text over the input line.
    void SetDescription(const QString& text) { Description = text; }
    /// False until the input was confirmed.
    bool Confirmed() const { return m_confirmed; }

    /// The modifier states now (0 off, 1 one-shot, 2 locked).
    ModifierStates States() const;

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
    void Form_Load() override;

  private:
    void buildKeys();
    QString hKeyName(int index) const;
    void hUpdateKeys();
    void hPaintKey(int index, int state);
    void hPressKey(int index);
    void confirm();
    void writeTarget();
    void placeByTarget(int& x, int& y);
    void keyDown(int index);
    void keyUp(int index);
    void pressStart();
    void pressEnd();
    void tmr_Dragging_Tick();
    int& state(int modifierIndex) { return keyState[static_cast<std::size_t>(modifierIndex)]; }

    Control* target = nullptr;
    QString Description;
    bool m_confirmed = false;

    std::array<int, 1001> keyState{};
    std::array<QString, 1001> keyName;
    std::map<int, QString> faceStrings;
    std::map<int, QImage> keyFaces;
    int shiftIndex = -1, ctrlIndex = -1, altIndex = -1, symIndex = -1;

    QPoint dragStart;
    QPoint formAtDragStart;
    bool mousePressed = false;
    bool dragging = false;
    bool wasDragged = false;
};

} // namespace fw
