#include "dialogs/frm_DialogProcess.h"

#include "controls/Theme.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Label.h"
#include "controls/ctl_Pannel.h"
#include "controls/ctl_Percent.h"
#include "controls/ctl_Seperator.h"
#include "core/hLangText.h"
#include "dialogs/DialogOpening.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "forms/Text.h"

#include <QCoreApplication>
#include <QWidget>
#include <algorithm>

namespace fw {

namespace {
// Design metrics, in pixels.
constexpr int kGap = 10;
constexpr int kBarHeight = 20;
constexpr int kPromptCap = 240;

} // namespace

frm_DialogProcess::frm_DialogProcess()
    : PromptForm(QStringLiteral("frm_DialogProcess"), QStringLiteral("Bitte warten"))
{
    lab_Description = addPrompt(QStringLiteral("lab_Description"), 0);
    lab_Details = Add<ctl_Label>(QStringLiteral("lab_Details"), pan_Holder->container());
    lab_Details->Move(px(TextLeft), px(Margin + 30), px(ClientWidth - TextLeft - Margin));
    lab_Details->SetFontSize(8);
    bar = Add<ctl_Percent>(QStringLiteral("bar"), pan_Holder->container());
    ctl_Seperator1 = Add<ctl_Seperator>(QStringLiteral("ctl_Seperator1"), pan_Holder->container());

    bar_Buttons = Add<ctl_CmdBar>(QStringLiteral("bar_Buttons"));
    bar_Buttons->AddButton(QStringLiteral("ABORT"), qs(hLangText("&Abbruch", "&Cancel")),
                           QStringLiteral("Ico\\20\\Computer\\Signs\\abort.ico"),
                           QStringLiteral("DIALOG.ABORT();"));
    bar_Buttons->Key = [this](const QString& key) { bar_Buttons_Key(key); };
    bar_Buttons->SetDoEvents(true);
    arrange();
}

frm_DialogProcess::~frm_DialogProcess() = default;

void frm_DialogProcess::Form_Load()
{
    DialogContext& ctx = context();
    ctx.Request.Result = ResultNone;
    Resume([&] {
        bar->SetMin(0);
        bar->SetValue(0);
        bar->SetMax(100);
    });
    Resume([&] { lab_Details->SetCaption(QString()); });
    Resume([&] { lab_Description->SetCaption(ShownPrompt(ctx.Request.Subtitle)); });
    OpenDialog(*this, ctx, *img_Icon, *lab_Description, *pan_Holder, FreedRoom::GrowByMove);
    // Cancelable is not read: the abort button stays in every case.
    arrange();
}

void frm_DialogProcess::PROCESS_SET_RANGE(std::int32_t lower, std::int32_t upper)
{
    bar->SetMin(lower);
    bar->SetMax(upper);
    Refresh();
}

void frm_DialogProcess::PROCESS_SET_CUR(std::int32_t value)
{
    bar->SetValue(value);
    // The caller's loop yields here alone: the bar's flag, on by design in this
    // window, lets it repaint and its abort button be pressed.
    if (bar_Buttons->DoEvents())
        QCoreApplication::processEvents();
}

void frm_DialogProcess::PROCESS_END()
{
    Unload();
}

bool frm_DialogProcess::PROCESS_ABORT()
{
    return context().Request.Result == ResultAbort;
}

void frm_DialogProcess::SetDescription(const QString& text)
{
    Resume([&] { lab_Description->SetCaption(ShownPrompt(text.toStdString())); });
    arrange();
}

void frm_DialogProcess::bar_Buttons_Key(const QString& key)
{
    if (CommandOf(key) != Command::Abort)
        return;
    // The window stays: the caller sees the abort and ends it.
    context().Request.Result = ResultAbort;
    if (Abort)
        Abort->SetCancel(true);
}

// Description, details and bar stack under one another from the description's
// left edge, which moves when there is no icon; the form fits around them.
void frm_DialogProcess::arrange()
{
    Resume([&] {
        const int left = lab_Description->Left();
        const int right = px(ClientWidth - Margin);
        if (lab_Description->Height() > px(kPromptCap))
            lab_Description->SetHeight(px(kPromptCap));
        int top = lab_Description->Top() + lab_Description->Height() + px(4);
        lab_Details->Move(left, top, right - left);
        if (!lab_Details->Caption().isEmpty())
            top += lab_Details->Height();
        if (img_Icon->Visible())
            top = std::max(top, img_Icon->Top() + img_Icon->Height());
        top += px(kGap);
        bar->Move(left, top, right - left, px(kBarHeight));
        closeLayout(px(ClientWidth), top + bar->Height() + px(Margin + 4), *ctl_Seperator1);
    });
}

} // namespace fw
