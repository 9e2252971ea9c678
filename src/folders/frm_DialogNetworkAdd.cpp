#include "folders/frm_DialogNetworkAdd.h"

#include "controls/Theme.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Executor.h"
#include "controls/ctl_Label.h"
#include "controls/ctl_Option.h"
#include "controls/ctl_Seperator.h"
#include "controls/ctl_Title.h"
#include "dialogs/DialogOpening.h"
#include "folders/frm_DialogNetworkBrowse.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "forms/Text.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QWidget>

namespace fw {

namespace {

// Design metrics, in pixels.
constexpr int kClientWidth = 500;
constexpr int kLabelWidth = 80;
constexpr int kRowPitch = 34;
constexpr int kBoxHeight = 24;
constexpr int kComboWidth = 80;
constexpr int kOptionSize = 24;

constexpr int kFieldLeft = theme::Margin + kLabelWidth;
constexpr int kFieldWidth = kClientWidth - kFieldLeft - theme::Margin;

// The card shows a tick while the option is on.
const QString kTickIcon = QStringLiteral("Ico\\16\\Computer\\Signs\\OK.ico");

} // namespace

frm_DialogNetworkAdd::frm_DialogNetworkAdd() : Form(QStringLiteral("frm_DialogNetworkAdd"))
{
    buildControls();
}

frm_DialogNetworkAdd::~frm_DialogNetworkAdd() = default;

void frm_DialogNetworkAdd::buildControls()
{
    SetCaption(QStringLiteral("Netzwerklaufwerk verbinden"));

    ctl_Title1 = Add<ctl_Title>(QStringLiteral("ctl_Title1"));
    ctl_Title1->SetCaption(QStringLiteral("Netzwerklaufwerk"));
    ctl_Title1->SetSubCaption(QStringLiteral("Geben Sie an, welchen Laufwerksbuchstaben Sie mit "
                                             "einem Netzwerkserver verbinden wollen"));
    ctl_Title1->SetIconPath(QStringLiteral("Ico\\32\\Computer\\Folders\\Nethood.ico"));
    ctl_Title1->CloseRequest = [this](const QString&) {
        ctl_Executor_Script(QStringLiteral("DIALOG.ABORT();"));
    };

    int top = ctl_Title1->Height() / Screen::TwipsPerPixel + theme::Margin;
    addFieldLabel(Label1, QStringLiteral("Label1"), QStringLiteral("Laufwerk:"), top);
    lst_DriveLetter = Add<ComboBox>(QStringLiteral("lst_DriveLetter"), 2);
    lst_DriveLetter->Move(ToTwips(kFieldLeft), ToTwips(top), ToTwips(kComboWidth),
                          ToTwips(kBoxHeight));
    top += kRowPitch;

    addFieldLabel(Label2, QStringLiteral("Label2"), QStringLiteral("Ordner:"), top);
    txt_NetworkShare = Add<TextBox>(QStringLiteral("txt_NetworkShare"));
    txt_NetworkShare->Move(ToTwips(kFieldLeft), ToTwips(top), ToTwips(kFieldWidth),
                           ToTwips(kBoxHeight));
    top += kBoxHeight + 4;

    ctl_Label1 = Add<ctl_Label>(QStringLiteral("ctl_Label1"));
    ctl_Label1->SetCaption(
        QStringLiteral("Netzwerk <A HREF='SEARCH'>durchsuchen</A> und auswählen"));
    ctl_Label1->Move(ToTwips(kFieldLeft), ToTwips(top), ToTwips(kFieldWidth), ToTwips(20));
    ctl_Label1->LinkClick = [this](const QString& target) { ctl_Executor1->Execute(target); };
    top += 20 + theme::Gap;

    opt_UpdateProfile = Add<ctl_Option>(QStringLiteral("opt_UpdateProfile"));
    opt_UpdateProfile->Move(ToTwips(kFieldLeft), ToTwips(top), ToTwips(kOptionSize),
                            ToTwips(kOptionSize));
    opt_UpdateProfile->Click = [this] { toggleUpdateProfile(); };
    lab_UpdateProfile = Add<Label>(QStringLiteral("lab_UpdateProfile"));
    lab_UpdateProfile->SetCaption(
        QStringLiteral("Verbindung beim Start automatisch wiederherstellen"));
    lab_UpdateProfile->Move(ToTwips(kFieldLeft + kOptionSize + theme::Gap), ToTwips(top + 4),
                            ToTwips(kFieldWidth - kOptionSize - theme::Gap), ToTwips(kBoxHeight));
    lab_UpdateProfile->widget()->setCursor(Qt::PointingHandCursor);
    lab_UpdateProfile->Click = [this] { toggleUpdateProfile(); };
    top += kOptionSize + theme::Margin;

    ctl_Seperator1 = Add<ctl_Seperator>(QStringLiteral("ctl_Seperator1"));
    ctl_Seperator1->Move(0, ToTwips(top), ToTwips(kClientWidth), ToTwips(1));

    ctl_Executor1 = Add<ctl_Executor>(QStringLiteral("ctl_Executor"));
    ctl_Executor1->Script = [this](const QString& script) { ctl_Executor_Script(script); };
    bar_Buttons = Add<ctl_CmdBar>(QStringLiteral("bar_Buttons"));
    AddDialogCommands(*bar_Buttons);
    bar_Buttons->Script = [this](const QString& script) { ctl_Executor1->Execute(script); };

    window()->resize(kClientWidth, top + 1 + bar_Buttons->Height() / Screen::TwipsPerPixel);
}

void frm_DialogNetworkAdd::addFieldLabel(Label*& label, const QString& name, const QString& caption,
                                         int top)
{
    label = Add<Label>(name);
    label->SetCaption(caption);
    label->Move(ToTwips(theme::Margin), ToTwips(top + 4), ToTwips(kLabelWidth - theme::Gap),
                ToTwips(kBoxHeight));
}

QVariant frm_DialogNetworkAdd::GetPublic(const QString& name) const
{
    if (name.compare(u"DriveRoot", Qt::CaseInsensitive) == 0)
        return DriveRoot;
    if (name.compare(u"NetworkPath", Qt::CaseInsensitive) == 0)
        return NetworkPath;
    if (name.compare(u"Accepted", Qt::CaseInsensitive) == 0)
        return Accepted;
    return Form::GetPublic(name);
}

bool frm_DialogNetworkAdd::SetPublic(const QString& name, const QVariant& value)
{
    if (name.compare(u"DriveRoot", Qt::CaseInsensitive) == 0)
        DriveRoot = value.toString();
    else if (name.compare(u"NetworkPath", Qt::CaseInsensitive) == 0)
        NetworkPath = value.toString();
    else if (name.compare(u"Accepted", Qt::CaseInsensitive) == 0)
        Accepted = value.toBool();
    else
        return Form::SetPublic(name, value);
    return true;
}

void frm_DialogNetworkAdd::Form_Load()
{
    // A and B were floppy letters and are never offered.
    for (char letter = 'C'; letter <= 'Z'; ++letter) {
        const std::string drive{letter, ':'};
        int type = 0;
        Resume([&] { type = GetCoreDevFiles().DriveType(drive); });
        if (type == 0)
            lst_DriveLetter->AddItem(qs(drive));
    }
    if (lst_DriveLetter->ListCount() > 0)
        lst_DriveLetter->SetListIndex(0);
    Resume([&] { txt_NetworkShare->SetFocus(); });
}

void frm_DialogNetworkAdd::toggleUpdateProfile()
{
    const bool on = !opt_UpdateProfile->Value();
    opt_UpdateProfile->SetValue(on);
    opt_UpdateProfile->SetIconPath(on ? kTickIcon : QString());
}

void frm_DialogNetworkAdd::ctl_Executor_Script(const QString& script)
{
    const QString command = script.toUpper();
    if (command == u"DIALOG.OK();") {
        connectDrive();
    } else if (command == u"DIALOG.ABORT();") {
        Unload();
    } else if (command == u"DIALOG.HELP();") {
        Resume([&] {
            GetCoreDevMessages().ShowHelp(
                "In diesem Dialog können Sie einen freien Laufwerksbuchstaben mit einem "
                "Netzwerkpfad verbinden um später bequem darauf zugreifen zu können.",
                us(Caption()));
        });
    } else if (command == u"SEARCH") {
        browseNetwork();
    }
}

void frm_DialogNetworkAdd::connectDrive()
{
    const QString path = txt_NetworkShare->Text();
    const QString root = lst_DriveLetter->Text() + u'\\';
    bool connected = false;
    Resume([&] {
        if (const std::shared_ptr<NetworkService> service = GetCoreDevFiles().Network())
            service->Connect(us(path), us(root), "", "", opt_UpdateProfile->Value(), connected);
    });
    if (!connected) {
        Resume([] {
            GetCoreDevMessages().ShowError(
                "Die Verbindung konnte nicht hergestellt werden. Übrpfüfen Sie den Netzwerkpfad "
                "und ob Sie über die Berechtigungen verfügen, darauf zuzugreifen.",
                "");
        });
        return;
    }
    Accepted = true;
    NetworkPath = path;
    DriveRoot = root;
    Unload();
}

void frm_DialogNetworkAdd::browseNetwork()
{
    frm_DialogNetworkBrowse browser;
    browser.BrowseMode = frm_DialogNetworkBrowse::ChooseShare;
    browser.Accepted = false;
    browser.Show(true);
    if (browser.Accepted)
        txt_NetworkShare->SetText(browser.SelectedPath);
}

} // namespace fw
