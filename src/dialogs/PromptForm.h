#pragma once
// What the input family and the progress window share: a holder panel with
// the icon and a prompt at its top, closed by a rule over the command bar,
// and the form sized around it; the answer goes into the context's Result.

#include "core/HasContext.h"
#include "forms/Form.h"
#include "forms/Screen.h"

#include <cstdint>

namespace fw {

class ctl_CmdBar;
class ctl_Label;
class ctl_Pannel;
class ctl_Seperator;
class PictureBox;

class PromptForm : public Form, public HasContext {
  public:
    ~PromptForm() override;

    /// Masks the answer box with "*" where the form has one; the host still
    /// gets the real text. A public variable only of the forms that name it.
    bool PasswordEntry = false;
    QVariant GetPublic(const QString& name) const override;
    bool SetPublic(const QString& name, const QVariant& value) override;

    ctl_Pannel* pan_Holder;
    PictureBox* img_Icon;

  protected:
    // Design metrics, in pixels.
    static constexpr int ClientWidth = 460;
    static constexpr int Margin = 16;
    static constexpr int IconSize = 32;
    static constexpr int TextLeft = Margin + IconSize + 14;

    static int px(int pixels) { return ToTwips(pixels); }

    enum class Publics { ContextOnly, WithPasswordEntry };
    PromptForm(const QString& name, const QString& caption, Publics publics = Publics::ContextOnly);

    /// A prompt label in the holder, beside the icon.
    ctl_Label* addPrompt(const QString& name, int alignment);
    /// The client width a prompt asks for: at least the design width, at most
    /// nine tenths of the screen.
    int clientWidthFor(const ctl_Label& prompt) const;
    /// Where the rows below a prompt begin: under the prompt, cut to
    /// capPixels, or under the icon where that reaches lower.
    int belowPrompt(ctl_Label& prompt, int capPixels) const;
    /// Makes the holder holderHeight tall with the rule along its bottom, and
    /// the form as large as the holder and the command bar.
    void closeLayout(int clientWidth, int holderHeight, ctl_Seperator& rule);
    /// Sets the result and closes.
    void answer(std::int32_t result);
    /// The bar of OK, Abbruch and help that ends the input forms: Abbruch and
    /// help answer at once, OK leaves it to acceptAnswer.
    ctl_CmdBar* addAnswerBar();
    /// OK: take the typed answer into the context and close, or refuse it.
    virtual void acceptAnswer() {}

  private:
    Publics m_publics;
};

} // namespace fw
