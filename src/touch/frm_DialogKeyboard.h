#pragma once
// A borderless, draggable on-screen keyboard shown modally for one control:
// it edits a copy of the control's text in its own line, turns each key into
// keystrokes for that line, and writes the text back on ENTER.

#include "touch/TouchPadForm.h"

#include <array>
#include <map>

namespace fw {

class frm_DialogKeyboard : public TouchPadForm {
  public:
    frm_DialogKeyboard();
    ~frm_DialogKeyboard() override;

    /// The modifier states now (0 off, 1 one-shot, 2 locked).
    ModifierStates States() const;

  protected:
    void Form_Load() override;
    void onKeyDown(int index) override;
    int restingState(int index) const override { return keyState[static_cast<std::size_t>(index)]; }
    void onKeyClick(int index, bool onLabel) override;

  private:
    QString hKeyName(int index) const;
    void hUpdateKeys();
    void hPressKey(int index);
    void confirm();
    int& state(int modifierIndex) { return keyState[static_cast<std::size_t>(modifierIndex)]; }

    std::array<int, 1001> keyState{};
    std::array<QString, 1001> keyName;
    std::map<int, QString> faceStrings;
    int shiftIndex = -1, ctrlIndex = -1, altIndex = -1, symIndex = -1;
};

} // namespace fw
