#include "cli/DialogRuns.h"
#include "forms/Form.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "forms/Text.h"
#include "touch/frm_DialogNumericTouch.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace fw::cli {

namespace {

// The pad edits a control of some other form. The command gives it a plain
// text box on a form that is never shown, centred on the screen so that the
// pad, which lies under its target, opens in the middle.
class TargetForm : public Form {
  public:
    TargetForm() : Form(QStringLiteral("frm_NumericTarget"))
    {
        window()->resize(240, 40);
        if (const QScreen* screen = QGuiApplication::primaryScreen())
            window()->move(screen->availableGeometry().center() - QPoint(120, 120));
        txt_Value = Add<TextBox>(QStringLiteral("txt_Value"));
        txt_Value->Move(0, 0, ToTwips(240), ToTwips(24));
    }
    TextBox* txt_Value;
};

// One pad per run; the target lives until the answer has been read.
std::unique_ptr<TargetForm>& targetForm()
{
    static std::unique_ptr<TargetForm> form;
    return form;
}

Outcome giveTarget(Form& form, const Invocation&, DialogContext& context)
{
    auto& pad = dynamic_cast<frm_DialogNumericTouch&>(form);
    targetForm() = std::make_unique<TargetForm>();
    targetForm()->txt_Value->SetText(qs(context.Texts.DefaultText));
    pad.SetTarget(targetForm()->txt_Value);
    pad.SetDescription(qs(context.Texts.Description));
    return {};
}

// The pad has no result code of its own: Confirmed stands for it.
void answerValue(Form& form, const DialogContext&, QJsonObject& answer)
{
    const bool confirmed = dynamic_cast<frm_DialogNumericTouch&>(form).Confirmed();
    answer.insert(QStringLiteral("Result"), confirmed ? ResultOk : ResultAbort);
    answer.insert(QStringLiteral("Confirmed"), confirmed);
    answer.insert(QStringLiteral("Value"),
                  targetForm() ? targetForm()->txt_Value->Text() : QString());
    targetForm().reset();
}

} // namespace

DialogRun NumericTouchRun()
{
    DialogRun run;
    run.prepare = giveTarget;
    run.answer = answerValue;
    return run;
}

} // namespace fw::cli
