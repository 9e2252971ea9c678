#include "dialogs/SingleInputForm.h"

#include "controls/Theme.h"
#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Label.h"
#include "controls/ctl_Pannel.h"
#include "controls/ctl_Seperator.h"
#include "core/TouchInput.h"
#include "dialogs/DialogOpening.h"
#include "forms/KeyCodes.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "forms/Text.h"

#include <QWidget>
#include <algorithm>

namespace fw {

namespace {
// Design metrics, in pixels.
constexpr int kGap = 12;
constexpr int kLineHeight = 26;
constexpr int kMultiHeight = 132;
// A prompt taller than this is cut, so that the box stays on the screen.
constexpr int kPromptCap = 320;

} // namespace

SingleInputForm::SingleInputForm(const QString& name, bool multiLine, bool touchOnClick)
    : PromptForm(name, QStringLiteral("Eingabe"), Publics::WithPasswordEntry),
      m_multiLine(multiLine)
{
    lab_Description = addPrompt(QStringLiteral("lab_Description"), 3);
    txt_Input = Add<TextBox>(QStringLiteral("txt_Input"), multiLine, pan_Holder->container());
    ctl_Seperator1 = Add<ctl_Seperator>(QStringLiteral("ctl_Seperator1"), pan_Holder->container());

    ctl_Sidebar = addAnswerBar();

    but_DefText = AddDefaultTextButton(*this, *ctl_Sidebar);
    but_DefText->Click = [this] {
        showDefault();
        Resume([&] { txt_Input->SetFocus(); });
    };

    txt_Input->GotFocus = [this] {
        Resume([&] {
            txt_Input->SetSelStart(0);
            txt_Input->SetSelLength(int(txt_Input->Text().size()));
        });
    };
    txt_Input->KeyDown = [this](int& keyCode, int shift) { txt_Input_KeyDown(keyCode, shift); };
    if (touchOnClick) {
        // The box tells of releases only; a left release is the click.
        txt_Input->MouseUp = [this](int button, int, float, float) {
            if (button == 1)
                hTouchInput(*txt_Input, QStringLiteral("Eingabe"));
        };
    }
    arrange();
}

SingleInputForm::~SingleInputForm() = default;

void SingleInputForm::Form_Load()
{
    DialogContext& ctx = context();
    OpenDialog(*this, ctx, *img_Icon, *lab_Description, *pan_Holder);
    Resume([&] { txt_Input->SetPasswordChar(PasswordEntry ? QStringLiteral("*") : QString()); });
    if (ctx.Texts.DefaultText.empty())
        Resume([&] { but_DefText->SetVisible(false); });
    Resume([&] { lab_Description->SetCaption(ShownPrompt(ctx.Texts.Description)); });
    showDefault();
    arrange();
}

void SingleInputForm::showDefault()
{
    Resume([&] {
        txt_Input->SetText(qs(context().Texts.DefaultText));
        txt_Input->SetSelStart(0);
        txt_Input->SetSelLength(int(txt_Input->Text().size()));
    });
}

// The box goes below the prompt (or the icon, if that is taller), and the
// form grows to hold both; a prompt with a word too long to wrap widens it.
void SingleInputForm::arrange()
{
    Resume([&] {
        const int left = lab_Description->Left();
        const int clientWidth = clientWidthFor(*lab_Description);
        const int top = belowPrompt(*lab_Description, kPromptCap) + px(kGap);
        const int boxWidth = clientWidth - left - px(Margin);
        txt_Input->Move(left, top, boxWidth, px(m_multiLine ? kMultiHeight : kLineHeight));
        closeLayout(clientWidth, top + txt_Input->Height() + px(Margin + 4), *ctl_Seperator1);
    });
}

void SingleInputForm::acceptAnswer()
{
    context().Texts.InputText = us(txt_Input->Text());
    answer(ResultOk);
}

// Return in the multi-line box breaks the line; Ctrl+Return still answers OK.
void SingleInputForm::txt_Input_KeyDown(int& keyCode, int shift)
{
    if (!m_multiLine || keyCode != KeyReturn || (shift & CtrlDown) != 0)
        return;
    const QString text = txt_Input->Text();
    const int start = txt_Input->SelStart();
    const int length = txt_Input->SelLength();
    txt_Input->SetText(text.left(start) + u'\n' + text.mid(start + length));
    txt_Input->SetSelStart(start + 1);
    keyCode = 0;
}

} // namespace fw
