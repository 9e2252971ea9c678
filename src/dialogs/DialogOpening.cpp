#include "dialogs/DialogOpening.h"

#include "controls/Theme.h"
#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "forms/Form.h"
#include "forms/Pictures.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "forms/Text.h"
#include "host/mdl_CoreDevWrapper.h"

#include <stdexcept>

namespace fw {

namespace {
// The icon box is square; a picture larger than it is scaled down, never up.
void showPicture(PictureBox& box, const QImage& picture)
{
    box.SetPicture(theme::FitIcon(picture, ToPixels(box.Width())));
}
} // namespace

void OpenDialog(Form& form, DialogContext& context, PictureBox& img_Icon, Control& lab_Description,
                const Control& pan_Holder, FreedRoom room)
{
    DialogRequest& request = context.Request;
    Resume([&] { form.SetCaption(qs(request.Title)); });

    if (!request.IconPath.empty()) {
        Resume([&] {
            showPicture(img_Icon,
                        ToImage(GetCoreDevPictures().LoadPicture(request.IconPath, 0, -1, -1)));
        });
        return;
    }
    if (!IsEmpty(request.Icon)) {
        // Only a picture casts to a picture; a text in its place is a failed step.
        Resume([&] {
            const auto* picture = std::get_if<PicturePtr>(&request.Icon);
            if (!picture || !*picture)
                throw std::runtime_error("icon is not a picture");
            showPicture(img_Icon, ToImage(*picture));
        });
        return;
    }
    Resume([&] { img_Icon.SetVisible(false); });
    const int moved = lab_Description.Left() - img_Icon.Left();
    Resume([&] { lab_Description.SetLeft(img_Icon.Left()); });
    Resume([&] {
        if (room == FreedRoom::SpanHolder)
            lab_Description.SetWidth(pan_Holder.Width() - 2 * img_Icon.Left());
        else
            lab_Description.SetWidth(lab_Description.Width() + moved);
    });
}

QString ShownPrompt(const std::string& text)
{
    const QString prompt = qs(text);
    if (prompt.size() <= PromptShownLength)
        return prompt;
    qsizetype cut = PromptShownLength;
    if (prompt[cut - 1].isHighSurrogate())
        --cut; // never half a character
    return prompt.left(cut) + QChar(0x2026);
}

void AddDialogCommands(ctl_CmdBar& bar)
{
    const QString signs = QStringLiteral("Ico\\20\\Computer\\Signs\\");
    bar.AddButton(QStringLiteral("HELP"), QStringLiteral("&Hilfe"),
                  signs + QStringLiteral("help.ico"), QStringLiteral("DIALOG.HELP();"));
    bar.AddButton(QStringLiteral("OK"), QStringLiteral("&OK"), signs + QStringLiteral("ok.ico"),
                  QStringLiteral("DIALOG.OK();"));
    bar.AddButton(QStringLiteral("ABORT"), QStringLiteral("&Abbruch"),
                  signs + QStringLiteral("abort.ico"), QStringLiteral("DIALOG.ABORT();"));
}

Command CommandOf(const QString& key)
{
    const QString upper = key.toUpper();
    if (upper == u"OK")
        return Command::Ok;
    if (upper == u"ABORT")
        return Command::Abort;
    if (upper == u"HELP")
        return Command::Help;
    return Command::Other;
}

ctl_Button* AddDefaultTextButton(Form& form, ctl_CmdBar& bar)
{
    auto* button = form.Add<ctl_Button>(QStringLiteral("but_DefText"), bar.container());
    button->SetText(QStringLiteral("&Vorgabe"));
    button->SetIconPath(QStringLiteral("Ico\\20\\Computer\\Signs\\undo.ico"));
    button->Move(ToTwips(theme::Margin - 4 + theme::ButtonHeight + theme::Gap),
                 ToTwips((theme::CmdBarHeight - theme::ButtonHeight + 1) / 2),
                 ToTwips(theme::ButtonWidth + 12), ToTwips(theme::ButtonHeight));
    return button;
}

} // namespace fw
