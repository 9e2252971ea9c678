#pragma once
// The library's message box: one text, a header with an icon, up to three
// answer buttons picked by a message style number, keyboard shortcuts. It
// grows to fit its text and centres its buttons.

#include "core/HasContext.h"
#include "forms/ControlArray.h"
#include "forms/Form.h"

#include <array>

namespace fw {

class ctl_Title;
class ctl_CmdBar;
class ctl_Button;
class ctl_Pannel;
class ctl_Label;
class ctl_Seperator;
class TextBox;

class frm_DialogMessage : public Form, public HasContext {
  public:
    frm_DialogMessage();
    ~frm_DialogMessage() override;

    /// 0: the main text with the icon path as icon; 1: the main text and the
    /// host's icon as given; anything else: no text.
    std::int32_t DialogMode = 0;

    QVariant GetPublic(const QString& name) const override;
    bool SetPublic(const QString& name, const QVariant& value) override;

    // Controls, public so that hosts and tests reach them by name as users see them.
    ctl_Title* bar_Header;
    ctl_CmdBar* ctl_Sidebar;
    ControlArray<ctl_Button> but_Sel;
    ControlArray<ctl_Pannel> pan_Holder;
    ControlArray<ctl_Label> lab_Description;
    ControlArray<TextBox> txt_Input;
    ControlArray<fw::ctl_Seperator> ctl_Seperator;

  protected:
    void Form_Load() override;
    void Form_Paint() override;
    void Form_KeyDown(int& keyCode, int shift) override;
    void Form_KeyPress(int& keyAscii) override;

  private:
    struct Slot {
        QString icon;
        std::int32_t value = 0;
        QString caption; ///< empty: the button is not shown
    };

    void buildControls();
    void splitTitle();
    void chooseButtonSet(std::array<Slot, 3>& rows);
    void setUpBody(const std::array<Slot, 3>& rows);
    void answer(std::int32_t result);
    void but_Sel_Click(int index);
    void bar_Header_CloseRequest();

    std::int32_t PrimaryResult = 0;
    std::int32_t SecondaryResult = 0;
    std::int32_t EscapeResult = 0;
    std::array<bool, 11> SectionVisible{};
    bool m_painted = false;
};

} // namespace fw
