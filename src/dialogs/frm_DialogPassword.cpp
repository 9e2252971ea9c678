#include "dialogs/frm_DialogPassword.h"

#include "controls/Theme.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Label.h"
#include "controls/ctl_Pannel.h"
#include "controls/ctl_Seperator.h"
#include "core/TouchInput.h"
#include "dialogs/DialogOpening.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "forms/Text.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QWidget>
#include <algorithm>

namespace fw {

namespace {
// Design metrics, in pixels.
constexpr int kGap = 12;
constexpr int kRowHeight = 26;
constexpr int kRowGap = 8;
constexpr int kCaptionWidth = 150;
constexpr int kPromptCap = 240;

void selectAll(TextBox& box)
{
    Resume([&] { GetCoreDevControls().TextBoxes().SelectAll(box); });
}

// The host's error box, with the form's caption as its title.
void showError(Form& form, const char* text)
{
    Resume([&] { GetCoreDevMessages().ShowError(text, us(form.Caption())); });
}
} // namespace

// Hosts may set PasswordEntry here too; the form does not read it.
frm_DialogPassword::frm_DialogPassword()
    : PromptForm(QStringLiteral("frm_DialogPassword"), QStringLiteral("Kennwort"),
                 Publics::WithPasswordEntry)
{
    lab_Description = addPrompt(QStringLiteral("lab_Description"), 3);
    ctl_Seperator1 = Add<ctl_Seperator>(QStringLiteral("ctl_Seperator1"), pan_Holder->container());

    const auto row = [this](const QString& labelName, const char* caption, const QString& boxName,
                            Label*& label, TextBox*& box) {
        label = Add<Label>(labelName, pan_Holder->container());
        label->SetCaption(QString::fromUtf8(caption));
        box = Add<TextBox>(boxName, false, pan_Holder->container());
        box->SetPasswordChar(QStringLiteral("*"));
        box->GotFocus = [box] { selectAll(*box); };
    };
    row(QStringLiteral("Label1"), "Altes Kennwort:", QStringLiteral("txt_Old"), Label1, txt_Old);
    row(QStringLiteral("Label2"), "Neues Kennwort:", QStringLiteral("txt_New"), Label2, txt_New);
    row(QStringLiteral("Label3"), "Kennwort wiederholen:", QStringLiteral("txt_Retype"), Label3,
        txt_Retype);
    ctl_Seperator2 = Add<ctl_Seperator>(QStringLiteral("ctl_Seperator2"), pan_Holder->container());

    // The boxes tell of releases only; a left release is the click.
    txt_Old->MouseUp = [this](int button, int, float, float) {
        if (button == 1)
            hTouchInput(*txt_Old, QStringLiteral("Altes Kennwort"));
    };
    txt_Retype->MouseUp = [this](int button, int, float, float) {
        if (button == 1)
            hTouchInput(*txt_Retype, QStringLiteral("Kennwort wiederholen"));
    };
    txt_New->Change = [this] { txt_New_Change(); };

    ctl_Sidebar = addAnswerBar();
    arrange();
}

frm_DialogPassword::~frm_DialogPassword() = default;

void frm_DialogPassword::Form_Load()
{
    DialogContext& ctx = context();
    OpenDialog(*this, ctx, *img_Icon, *lab_Description, *pan_Holder);
    // Without an old password there is nothing to check against.
    const bool hasOld = !ctx.Texts.OldValue.empty();
    Resume([&] { txt_Old->SetEnabled(hasOld); });
    Resume([&] { txt_Old->SetBackColor(hasOld ? txt_New->BackColor() : BackColor()); });
    Resume([&] { lab_Description->SetCaption(ShownPrompt(ctx.Texts.Description)); });
    arrange();
}

void frm_DialogPassword::arrange()
{
    Resume([&] {
        const int left = lab_Description->Left();
        const int clientWidth = clientWidthFor(*lab_Description);
        int top = belowPrompt(*lab_Description, kPromptCap);
        // Without a prompt or an icon the rows start at the top, with no rule above them.
        const bool head = img_Icon->Visible() || !lab_Description->Caption().isEmpty();
        ctl_Seperator1->SetVisible(head);
        if (head) {
            top += px(kGap);
            ctl_Seperator1->Move(left, top, clientWidth - left - px(Margin), px(1));
            top += px(kGap);
        } else {
            top = px(Margin);
        }
        const int boxLeft = left + px(kCaptionWidth);
        const int boxWidth = clientWidth - boxLeft - px(Margin);
        for (auto [label, box] : {std::pair{Label1, txt_Old}, std::pair{Label2, txt_New},
                                  std::pair{Label3, txt_Retype}}) {
            label->Move(left, top + px(4), px(kCaptionWidth - 8), px(kRowHeight - 4));
            box->Move(boxLeft, top, boxWidth, px(kRowHeight));
            top += px(kRowHeight + kRowGap);
        }
        closeLayout(clientWidth, top + px(Margin - kRowGap + 4), *ctl_Seperator2);
    });
}

void frm_DialogPassword::acceptAnswer()
{
    DialogContext& ctx = context();
    if (txt_Old->Text() != qs(ctx.Texts.OldValue)) {
        showError(*this, "Sie haben nicht das richtige, alte Kennwort eingegeben!");
        Resume([&] { txt_Old->SetText(QString()); });
        Resume([&] { txt_Old->SetFocus(); });
        return;
    }
    if (txt_New->Text() == txt_Retype->Text()) {
        ctx.Texts.InputText = us(txt_New->Text());
        answer(ResultOk);
        return;
    }
    showError(*this, "Kennwort und Kennwortwiederholung stimmen nicht überein!");
    Resume([&] { txt_New->SetText(QString()); });
    Resume([&] { txt_Retype->SetText(QString()); });
    Resume([&] { txt_New->SetFocus(); });
}

// The new box asks for the keyboard when its text changes, not on a click.
// Only a touch screen gets it: without one, selecting the whole text after
// every keystroke would let each key replace what was typed before. And the
// keyboard's own writing into the box must not call it up again.
void frm_DialogPassword::txt_New_Change()
{
    if (m_inNewTouch || !hTouchEnabled())
        return;
    m_inNewTouch = true;
    hTouchInput(*txt_New, QStringLiteral("Neues Kennwort"));
    m_inNewTouch = false;
}

} // namespace fw
