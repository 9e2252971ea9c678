#include "dialogs/PromptForm.h"

#include "controls/Theme.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Label.h"
#include "controls/ctl_Pannel.h"
#include "controls/ctl_Seperator.h"
#include "dialogs/DialogOpening.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"

#include <QWidget>
#include <algorithm>

namespace fw {

PromptForm::PromptForm(const QString& name, const QString& caption, Publics publics)
    : Form(name), m_publics(publics)
{
    window()->resize(ClientWidth, 180);
    SetCaption(caption);
    pan_Holder = Add<ctl_Pannel>(QStringLiteral("pan_Holder"));
    pan_Holder->Move(0, 0, ToTwips(ClientWidth), ToTwips(120));
    img_Icon = Add<PictureBox>(QStringLiteral("img_Icon"), pan_Holder->container());
    img_Icon->Move(ToTwips(Margin), ToTwips(Margin), ToTwips(IconSize), ToTwips(IconSize));
    img_Icon->SetBackColor(theme::Base());
}

PromptForm::~PromptForm() = default;

QVariant PromptForm::GetPublic(const QString& name) const
{
    if (m_publics == Publics::WithPasswordEntry &&
        name.compare(u"PasswordEntry", Qt::CaseInsensitive) == 0)
        return PasswordEntry;
    return Form::GetPublic(name);
}

bool PromptForm::SetPublic(const QString& name, const QVariant& value)
{
    if (m_publics != Publics::WithPasswordEntry ||
        name.compare(u"PasswordEntry", Qt::CaseInsensitive) != 0)
        return Form::SetPublic(name, value);
    PasswordEntry = value.toBool();
    return true;
}

ctl_Label* PromptForm::addPrompt(const QString& name, int alignment)
{
    auto* prompt = Add<ctl_Label>(name, pan_Holder->container());
    prompt->Move(ToTwips(TextLeft), ToTwips(Margin + 6), ToTwips(ClientWidth - TextLeft - Margin));
    prompt->SetAlignment(alignment);
    return prompt;
}

int PromptForm::clientWidthFor(const ctl_Label& prompt) const
{
    return std::clamp(prompt.Left() + prompt.Width() + ToTwips(Margin), ToTwips(ClientWidth),
                      std::max(ToTwips(ClientWidth), Screen::Width() * 9 / 10));
}

int PromptForm::belowPrompt(ctl_Label& prompt, int capPixels) const
{
    if (prompt.Height() > ToTwips(capPixels))
        prompt.SetHeight(ToTwips(capPixels));
    int top = prompt.Top() + prompt.Height();
    if (img_Icon->Visible())
        top = std::max(top, img_Icon->Top() + img_Icon->Height());
    return top;
}

void PromptForm::closeLayout(int clientWidth, int holderHeight, ctl_Seperator& rule)
{
    pan_Holder->Move(0, 0, clientWidth, holderHeight);
    rule.Move(0, holderHeight - ToTwips(1), clientWidth, ToTwips(1));
    SetWidth(clientWidth + (Width() - ScaleWidth()));
    SetHeight(holderHeight + ToTwips(theme::CmdBarHeight) + (Height() - ScaleHeight()));
}

void PromptForm::answer(std::int32_t result)
{
    context().Request.Result = result;
    Unload();
}

ctl_CmdBar* PromptForm::addAnswerBar()
{
    auto* bar = Add<ctl_CmdBar>(QStringLiteral("ctl_Sidebar"));
    AddDialogCommands(*bar);
    bar->Key = [this](const QString& key) {
        switch (CommandOf(key)) {
        case Command::Ok:
            acceptAnswer();
            break;
        case Command::Abort:
            answer(ResultAbort);
            break;
        case Command::Help:
            answer(ResultHelp);
            break;
        case Command::Other:
            break;
        }
    };
    return bar;
}

} // namespace fw
