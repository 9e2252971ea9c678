#include "dialogs/frm_DialogInputDbl.h"

#include "controls/Theme.h"
#include "controls/ctl_Button.h"
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
constexpr int kLineHeight = 26;
constexpr int kPromptCap = 160; // per prompt, so that both boxes stay on the screen

// A text that is no pair stands as the first of the two.
std::pair<std::string, std::string> unpack(const std::string& packed)
{
    std::string first = packed;
    std::string second;
    Resume([&] { GetCoreDevText().Pairs().Unpack(packed, first, second); });
    return {first, second};
}

void selectAll(TextBox& box)
{
    Resume([&] { GetCoreDevControls().TextBoxes().SelectAll(box); });
}

} // namespace

frm_DialogInputDbl::frm_DialogInputDbl()
    : PromptForm(QStringLiteral("frm_DialogInputDbl"), QStringLiteral("Eingabe"))
{

    // Made first so that it is the form's default button, before the bar's OK;
    // kept out of the focus chain so that the form opens in the first box.
    but_Return = Add<CommandButton>(QStringLiteral("but_Return"));
    but_Return->SetCaption(QStringLiteral("Return"));
    but_Return->SetDefault(true);
    but_Return->widget()->setFocusPolicy(Qt::NoFocus);
    but_Return->Click = [this] { but_Return_Click(); };

    lab_DescriptionA = addPrompt(QStringLiteral("lab_DescriptionA"), 3);
    txt_InputA = Add<TextBox>(QStringLiteral("txt_InputA"), false, pan_Holder->container());
    ctl_Seperator1 = Add<ctl_Seperator>(QStringLiteral("ctl_Seperator1"), pan_Holder->container());
    ctl_Pannel1 = Add<ctl_Pannel>(QStringLiteral("ctl_Pannel1"), pan_Holder->container());
    lab_DescriptionB = Add<ctl_Label>(QStringLiteral("lab_DescriptionB"), ctl_Pannel1->container());
    lab_DescriptionB->SetAlignment(3);
    txt_InputB = Add<TextBox>(QStringLiteral("txt_InputB"), false, ctl_Pannel1->container());
    ctl_Seperator2 = Add<ctl_Seperator>(QStringLiteral("ctl_Seperator2"), pan_Holder->container());

    ctl_Sidebar = addAnswerBar();

    but_DefText = AddDefaultTextButton(*this, *ctl_Sidebar);
    but_DefText->Click = [this] {
        showDefaults();
        Resume([&] { txt_InputA->SetFocus(); });
    };

    txt_InputA->GotFocus = [this] {
        selectAll(*txt_InputA);
        m_inSecond = false;
    };
    txt_InputB->GotFocus = [this] {
        selectAll(*txt_InputB);
        m_inSecond = true;
    };
    // The boxes tell of releases only; a left release is the click.
    txt_InputA->MouseUp = [this](int button, int, float, float) {
        if (button == 1)
            hTouchInput(*txt_InputA, QStringLiteral("Eingabe"));
    };
    txt_InputB->MouseUp = [this](int button, int, float, float) {
        if (button == 1)
            hTouchInput(*txt_InputB, QStringLiteral("Eingabe"));
    };
    arrange();
}

frm_DialogInputDbl::~frm_DialogInputDbl() = default;

void frm_DialogInputDbl::Form_Load()
{
    DialogContext& ctx = context();
    OpenDialog(*this, ctx, *img_Icon, *lab_DescriptionA, *pan_Holder);
    if (ctx.Texts.DefaultText.empty())
        Resume([&] { but_DefText->SetVisible(false); });
    const auto [promptA, promptB] = unpack(ctx.Texts.Description);
    // Named captures: clang 14 (the fuzz build) cannot capture structured bindings.
    Resume([&, &p = promptA] { lab_DescriptionA->SetCaption(ShownPrompt(p)); });
    Resume([&, &p = promptB] { lab_DescriptionB->SetCaption(ShownPrompt(p)); });
    showDefaults();
    selectAll(*txt_InputA);
    arrange();
    // Only now is the width final: a long prompt widens the form.
    Resume([&] { but_Return->SetLeft(Width() + 100); });
}

void frm_DialogInputDbl::showDefaults()
{
    const auto [first, second] = unpack(context().Texts.DefaultText);
    Resume([&, &text = first] { txt_InputA->SetText(qs(text)); });
    Resume([&, &text = second] { txt_InputB->SetText(qs(text)); });
}

// Both rows take the prompt's column; the second row's panel follows the
// first box, and the form grows to hold everything.
void frm_DialogInputDbl::arrange()
{
    Resume([&] {
        const int left = lab_DescriptionA->Left();
        const int clientWidth = clientWidthFor(*lab_DescriptionA);
        const int width = clientWidth - left - px(Margin);
        int top = belowPrompt(*lab_DescriptionA, kPromptCap) + px(kGap);
        txt_InputA->Move(left, top, width, px(kLineHeight));
        top += txt_InputA->Height() + px(kGap);
        ctl_Seperator1->Move(left, top, width, px(1));
        top += px(kGap);

        lab_DescriptionB->Move(0, 0, width);
        if (lab_DescriptionB->Height() > px(kPromptCap))
            lab_DescriptionB->SetHeight(px(kPromptCap));
        const int boxTop = lab_DescriptionB->Height() + px(kGap);
        txt_InputB->Move(0, boxTop, width, px(kLineHeight));
        ctl_Pannel1->Move(left, top, width, boxTop + txt_InputB->Height());
        top += ctl_Pannel1->Height() + px(Margin + 4);
        closeLayout(clientWidth, top, *ctl_Seperator2);
    });
}

void frm_DialogInputDbl::acceptAnswer()
{
    DialogContext& ctx = context();
    Resume([&] {
        ctx.Texts.InputText =
            GetCoreDevText().Pairs().Pack(us(txt_InputA->Text()), us(txt_InputB->Text()));
    });
    answer(ResultOk);
}

void frm_DialogInputDbl::but_Return_Click()
{
    if (m_inSecond)
        acceptAnswer();
    else
        Resume([&] { txt_InputB->SetFocus(); });
}

} // namespace fw
