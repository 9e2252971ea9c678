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
constexpr int kClientWidth = 460;
constexpr int kMargin = 16;
constexpr int kIconSize = 32;
constexpr int kTextLeft = kMargin + kIconSize + 14;
constexpr int kGap = 12;
constexpr int kLineHeight = 26;
constexpr int kMultiHeight = 132;
// A prompt taller than this is cut, so that the box stays on the screen.
constexpr int kPromptCap = 320;

int px(int pixels)
{
    return ToTwips(pixels);
}
} // namespace

SingleInputForm::SingleInputForm(const QString& name, bool multiLine, bool touchOnClick)
    : Form(name), m_multiLine(multiLine)
{
    window()->resize(kClientWidth, 180);
    SetCaption(QStringLiteral("Eingabe"));

    pan_Holder = Add<ctl_Pannel>(QStringLiteral("pan_Holder"));
    pan_Holder->Move(0, 0, px(kClientWidth), px(120));
    img_Icon = Add<PictureBox>(QStringLiteral("img_Icon"), pan_Holder->container());
    img_Icon->Move(px(kMargin), px(kMargin), px(kIconSize), px(kIconSize));
    img_Icon->SetBackColor(theme::Base());
    lab_Description = Add<ctl_Label>(QStringLiteral("lab_Description"), pan_Holder->container());
    lab_Description->Move(px(kTextLeft), px(kMargin + 6), px(kClientWidth - kTextLeft - kMargin));
    lab_Description->SetAlignment(3);
    txt_Input = Add<TextBox>(QStringLiteral("txt_Input"), multiLine, pan_Holder->container());
    ctl_Seperator1 = Add<ctl_Seperator>(QStringLiteral("ctl_Seperator1"), pan_Holder->container());

    ctl_Sidebar = Add<ctl_CmdBar>(QStringLiteral("ctl_Sidebar"));
    AddDialogCommands(*ctl_Sidebar);
    ctl_Sidebar->Key = [this](const QString& key) { ctl_Sidebar_Key(key); };

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

QVariant SingleInputForm::GetPublic(const QString& name) const
{
    if (name.compare(u"PasswordEntry", Qt::CaseInsensitive) == 0)
        return PasswordEntry;
    return Form::GetPublic(name);
}

bool SingleInputForm::SetPublic(const QString& name, const QVariant& value)
{
    if (name.compare(u"PasswordEntry", Qt::CaseInsensitive) != 0)
        return Form::SetPublic(name, value);
    PasswordEntry = value.toBool();
    return true;
}

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
        int clientWidth = std::max(px(kClientWidth), left + lab_Description->Width() + px(kMargin));
        clientWidth = std::min(clientWidth, Screen::Width() * 9 / 10);
        if (lab_Description->Height() > px(kPromptCap))
            lab_Description->SetHeight(px(kPromptCap));
        int top = lab_Description->Top() + lab_Description->Height();
        if (img_Icon->Visible())
            top = std::max(top, img_Icon->Top() + img_Icon->Height());
        top += px(kGap);
        const int boxWidth = clientWidth - left - px(kMargin);
        txt_Input->Move(left, top, boxWidth, px(m_multiLine ? kMultiHeight : kLineHeight));
        const int holderHeight = top + txt_Input->Height() + px(kMargin + 4);
        pan_Holder->Move(0, 0, clientWidth, holderHeight);
        ctl_Seperator1->Move(0, holderHeight - px(1), clientWidth, px(1));
        SetWidth(clientWidth + (Width() - ScaleWidth()));
        SetHeight(holderHeight + px(theme::CmdBarHeight) + (Height() - ScaleHeight()));
    });
}

void SingleInputForm::ctl_Sidebar_Key(const QString& key)
{
    DialogContext& ctx = context();
    switch (CommandOf(key)) {
    case Command::Ok:
        ctx.Texts.InputText = us(txt_Input->Text());
        ctx.Request.Result = ResultOk;
        break;
    case Command::Abort:
        ctx.Request.Result = ResultAbort;
        break;
    case Command::Help:
        ctx.Request.Result = ResultHelp;
        break;
    case Command::Other:
        return;
    }
    Unload();
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
