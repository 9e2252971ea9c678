#pragma once
// The text viewer: a long text in a sizeable window, with commands to copy it
// to the clipboard and to save it. It holds a plain, a rich text and an HTML
// viewer; the plain one is what it shows, and every command serves all three.

#include "core/HasContext.h"
#include "forms/Form.h"

namespace fw {

class ctl_Title;
class ctl_CmdBar;
class TextBox;
class RichTextBox;
class HtmlViewer;

class frm_DialogText : public Form, public HasContext {
  public:
    frm_DialogText();
    ~frm_DialogText() override;

    // Controls, public so that hosts and tests reach them by name as users see them.
    ctl_Title* bar_Header;
    ctl_CmdBar* bar_Sidebar;
    TextBox* txt_Plain;
    RichTextBox* txt_RTF;
    HtmlViewer* txt_HTML;

  protected:
    void Form_Load() override;
    void Form_Resize() override;
    void Form_Unload(bool& cancel) override;

  private:
    void buildControls();
    void bar_Sidebar_Key(const QString& key);
    void answer(std::int32_t result);
    void copyText();
    void saveText();
    /// The first visible viewer in the order HTML, RTF, plain; null if none is.
    Control* shownViewer() const;
};

} // namespace fw
