#include "dialogs/frm_DialogCritical.h"

#include "controls/Theme.h"
#include "controls/ctl_Button.h"
#include "controls/ctl_Frame.h"
#include "controls/ctl_Option.h"
#include "controls/ctl_Seperator.h"
#include "controls/ctl_StatusBar.h"
#include "controls/ctl_Title.h"
#include "forms/KeyCodes.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QWidget>

namespace fw {

namespace {

// Design metrics, in pixels.
constexpr int kClientWidth = 520;
constexpr int kClientHeight = 500;
constexpr int kMargin = 16;
constexpr int kGap = 12;
constexpr int kTextFrameHeight = 118;
constexpr int kOptionSize = 48;
constexpr int kOptionPitch = 58;
constexpr int kOptions = 3;

const QString kSigns = QStringLiteral("Ico\\20\\Computer\\Signs\\");

// How an option is drawn, chosen or not: scheme colours and shades from the host.
struct OptionLook {
    int cardScheme;
    int shadeA;
    int shadeB;
    bool value;
    int labelScheme;
};
constexpr OptionLook kChosen{13, 100, -100, true, 8};
constexpr OptionLook kOther{15, 0, -50, false, 17};

std::uint32_t schemeColour(int scheme)
{
    std::uint32_t colour = 0;
    Resume([&] { colour = GetCoreDevColors().Tools().GetSchemeColor(scheme); });
    return colour;
}

} // namespace

frm_DialogCritical::frm_DialogCritical() : Form(QStringLiteral("frm_DialogCritical"))
{
    buildControls();
}

frm_DialogCritical::~frm_DialogCritical() = default;

void frm_DialogCritical::buildControls()
{
    SetKeyPreview(true);
    window()->resize(kClientWidth, kClientHeight);
    SetCaption(QStringLiteral("Sicherheitsabfrage - ACHTUNG!"));

    ctl_Title1 = Add<ctl_Title>(QStringLiteral("ctl_Title1"));
    ctl_Title1->SetScheme(6);
    ctl_Title1->SetIconPath(QStringLiteral("Ico\\32\\Computer\\Signs\\Critical.ico"));
    ctl_Title1->CloseRequest = [this](const QString&) { Unload(); };

    constexpr int width = kClientWidth - 2 * kMargin;
    int top = ctl_Title1->Height() / Screen::TwipsPerPixel + kGap;
    ctl_Frame2 = Add<ctl_Frame>(QStringLiteral("ctl_Frame2"));
    ctl_Frame2->SetCaption(QStringLiteral("Bitte lesen Sie den Text genau durch:"));
    ctl_Frame2->SetIconPath(kSigns + QStringLiteral("Information.ico"));
    ctl_Frame2->Move(ToTwips(kMargin), ToTwips(top), ToTwips(width), ToTwips(kTextFrameHeight));
    lab_Text = Add<Label>(QStringLiteral("lab_Text"), ctl_Frame2->container());
    lab_Text->SetWordWrap(true);
    lab_Text->SetFont(theme::UiFont(1));
    lab_Text->Move(ToTwips(12), ctl_Frame2->InsideTop() + ToTwips(4), ToTwips(width - 24),
                   ToTwips(kTextFrameHeight - 12) - ctl_Frame2->InsideTop());
    top += kTextFrameHeight + kGap;

    const int choiceHeight = 8 + kOptions * kOptionPitch;
    ctl_Frame1 = Add<ctl_Frame>(QStringLiteral("ctl_Frame1"));
    ctl_Frame1->SetCaption(QStringLiteral("Wählen Sie Ihr Vorgehen und klicken Sie auf 'Weiter'"));
    ctl_Frame1->SetIconPath(kSigns + QStringLiteral("OK.ico"));
    ctl_Frame1->Move(ToTwips(kMargin), ToTwips(top), ToTwips(width),
                     ctl_Frame1->InsideTop() + ToTwips(choiceHeight));
    top += choiceHeight + ctl_Frame1->InsideTop() / Screen::TwipsPerPixel + kGap;

    opt_Choice = ControlArray<ctl_Option>(
        QStringLiteral("opt_Choice"),
        [this](int index) {
            auto* option = Add<ctl_Option>(QStringLiteral("opt_Choice"), ctl_Frame1->container());
            option->Move(ToTwips(12), ctl_Frame1->InsideTop() + ToTwips(2 + index * kOptionPitch),
                         ToTwips(kOptionSize), ToTwips(kOptionSize));
            return option;
        },
        [this](ctl_Option& option) { option.Click = [this, &option] { choose(option.Index()); }; });
    lab_Choice = ControlArray<Label>(
        QStringLiteral("lab_Choice"),
        [this](int index) {
            auto* label = Add<Label>(QStringLiteral("lab_Choice"), ctl_Frame1->container());
            label->SetWordWrap(true);
            label->SetFont(theme::UiFont(1, true));
            // Centred on its card for one line, still room for a second.
            label->Move(ToTwips(12 + kOptionSize + 14),
                        ctl_Frame1->InsideTop() + ToTwips(2 + index * kOptionPitch + 12),
                        ToTwips(width - kOptionSize - 44), ToTwips(kOptionSize - 12));
            // The caption is part of the option: a click on it chooses too.
            label->widget()->setCursor(Qt::PointingHandCursor);
            return label;
        },
        [this](Label& label) { label.Click = [this, &label] { choose(label.Index()); }; });
    for (int i = 0; i < kOptions; ++i) {
        opt_Choice.Load(i);
        lab_Choice.Load(i);
    }

    lin_Line = ControlArray<ctl_Seperator>(QStringLiteral("lin_Line"), [this, top](int) {
        auto* line = Add<ctl_Seperator>(QStringLiteral("lin_Line"));
        line->Move(ToTwips(kMargin), ToTwips(top), ToTwips(width), ToTwips(1));
        return line;
    });
    lin_Line.Load(0);

    but_OK = Add<ctl_Button>(QStringLiteral("but_OK"));
    but_OK->SetText(QStringLiteral("&Weiter"));
    but_OK->SetIconPath(kSigns + QStringLiteral("Next.ico"));
    but_OK->SetDefault(true);
    but_OK->Move(ToTwips(kClientWidth - kMargin - theme::ButtonWidth - 20), ToTwips(top + kGap),
                 ToTwips(theme::ButtonWidth + 20), ToTwips(theme::ButtonHeight + 4));
    but_OK->Click = [this] { but_OK_Click(); };

    ctl_StatusBar1 = Add<ctl_StatusBar>(QStringLiteral("ctl_StatusBar1"));
    ctl_StatusBar1->AddPanel(QString());
}

void frm_DialogCritical::Form_Load()
{
    CriticalChoice& p = Publics;
    if (p.Text.empty())
        p.Text = "Wollen Sie den ausgewählten Vorgang wirklich durchführen?";
    if (p.Title.empty())
        p.Title = "ACHTUNG!";
    if (p.Choices.Count() == 0) {
        p.Choices = StringList{"Ja", "Nein"};
        p.ChoiceIcons =
            StringList{"Ico\\20\\Computer\\Signs\\OK.ico", "Ico\\20\\Computer\\Signs\\abort.ico"};
    }
    SetCaption(QStringLiteral("Sicherheitsabfrage - ACHTUNG!"));
    ctl_Title1->SetCaption(QString::fromStdString(p.Title));
    lab_Text->SetCaption(QString::fromStdString(p.Text));

    // Every option shows the first icon.
    const QString icon =
        p.ChoiceIcons.Count() > 0 ? QString::fromStdString(p.ChoiceIcons.Item(1)) : QString();
    for (int i = 0; i < kOptions; ++i) {
        const bool shown = p.Choices.Count() >= i + 1;
        lab_Choice[i].SetCaption(shown ? QString::fromStdString(p.Choices.Item(i + 1)) : QString());
        opt_Choice[i].SetIconPath(icon);
        opt_Choice[i].SetVisible(shown);
        lab_Choice[i].SetVisible(shown);
    }
    choose(-1);
    p.Confirmed = false;
}

void frm_DialogCritical::choose(int index)
{
    m_choice = index + 1;
    for (int i = 0; i < kOptions; ++i) {
        const OptionLook& look = i + 1 == m_choice ? kChosen : kOther;
        const std::uint32_t card = schemeColour(look.cardScheme);
        opt_Choice[i].SetColorA(card);
        opt_Choice[i].SetColorB(card);
        opt_Choice[i].SetShadeA(look.shadeA);
        opt_Choice[i].SetShadeB(look.shadeB);
        opt_Choice[i].SetValue(look.value);
        lab_Choice[i].SetForeColor(theme::FromHostColour(schemeColour(look.labelScheme)));
    }
    const bool chosen = m_choice >= 1;
    but_OK->SetVisible(chosen);
    for (int i = 0; i < lin_Line.Count(); ++i)
        lin_Line[i].SetVisible(chosen);
    ctl_StatusBar1->SetPanelText(1, chosen ? QStringLiteral("Weiter mit 'Weiter' oder Return")
                                           : QStringLiteral("Bitte wählen Sie eine Möglichkeit"));
}

void frm_DialogCritical::but_OK_Click()
{
    Publics.Confirmed = true;
    Publics.ChoiceIndex = m_choice;
    Unload();
}

// Keys for those without a mouse: the option's number chooses it, Return goes
// on once something is chosen, Esc leaves unconfirmed.
void frm_DialogCritical::Form_KeyDown(int& keyCode, int shift)
{
    if (shift != 0)
        return;
    if (keyCode >= '1' && keyCode < '1' + kOptions && opt_Choice[keyCode - '1'].Visible()) {
        choose(keyCode - '1');
        keyCode = 0;
    } else if (keyCode == KeyReturn && m_choice >= 1) {
        keyCode = 0;
        but_OK_Click();
    } else if (keyCode == KeyEscape) {
        keyCode = 0;
        Unload();
    }
}

QVariant frm_DialogCritical::GetPublic(const QString& name) const
{
    const QVariant value = Publics.Get(name);
    return value.isValid() ? value : Form::GetPublic(name);
}

bool frm_DialogCritical::SetPublic(const QString& name, const QVariant& value)
{
    return Publics.Set(name, value) || Form::SetPublic(name, value);
}

} // namespace fw
