#pragma once
// The colour picker: a stored colour field, a brightness strip of the colour
// picked there, three boxes for red, green and blue, and a palette. The
// request's Color is the start colour and receives the chosen one; Result is
// 1 for OK and 2 otherwise. The request keeps the colour picked last also when
// the user cancels.

#include "core/HasContext.h"
#include "forms/Form.h"

#include <cstdint>

namespace fw {

class PictureBox;
class TextBox;
class ctl_Button;
class ctl_CmdBar;
class ctl_Frame;
class ctl_Label;
class ctl_Palette;
class ctl_Pannel;
class ctl_Title;

class frm_DialogColor : public Form, public HasContext {
  public:
    frm_DialogColor();
    ~frm_DialogColor() override;

    // Controls, public so that hosts and tests reach them by name as users see them.
    ctl_Title* ctl_Title1;
    ctl_Frame* ctl_FrameColor;
    PictureBox* pic_Colors;
    PictureBox* pic_ColorY;
    ctl_Frame* ctl_FrameMix;
    ctl_Pannel* pan_Color;
    ctl_Label* lab_R;
    ctl_Label* lab_G;
    ctl_Label* lab_B;
    TextBox* txt_R;
    TextBox* txt_G;
    TextBox* txt_B;
    ctl_Frame* ctl_FramePalette;
    ctl_Palette* ctl_Pal;
    ctl_Button* but_PalEdit;
    ctl_Button* but_PalLoad;
    ctl_Button* but_PalSave;
    ctl_Button* but_PalNew;
    ctl_Button* but_PalAdd;
    ctl_Button* but_PalRemove;
    ctl_CmdBar* ctl_Sidebar;

    /// The stored colour field as the library ships it.
    static QImage ColourField();

  protected:
    void Form_Load() override;

  private:
    void buildControls();
    void hColorsPress(double x, double y);
    void hColorYPress(double x, double y);
    void hTextChange();
    void hShowComponents(std::uint32_t colour);
    void ctl_Pal_ColorClick(std::uint32_t colour, int index);
    void but_PalEdit_Click();
    void ctl_Sidebar_Key(const QString& key);

    bool m_loading = false;
    int m_palIndex = 1;
};

} // namespace fw
