#include "folders/frm_DialogFolderFavorite.h"

#include "controls/Theme.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Executor.h"
#include "controls/ctl_Label.h"
#include "controls/ctl_Seperator.h"
#include "controls/ctl_Title.h"
#include "core/TouchInput.h"
#include "forms/Pictures.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "forms/Text.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QVariantMap>
#include <QWidget>

#include <algorithm>

namespace fw {

namespace {

// Design metrics, in pixels.
constexpr int kClientWidth = 480;
constexpr int kLabelWidth = 104;
constexpr int kRowPitch = 34;
constexpr int kBoxHeight = 24;
constexpr int kIconSize = 16;
constexpr int kOptionHeight = 22;

constexpr int kFieldLeft = theme::Margin + kLabelWidth;
constexpr int kFieldWidth = kClientWidth - kFieldLeft - theme::Margin;

const QString kDefaultIcon = QStringLiteral("Ico\\16\\Computer\\folders\\Favorite.ico");

} // namespace

frm_DialogFolderFavorite::frm_DialogFolderFavorite()
    : Form(QStringLiteral("frm_DialogFolderFavorite"))
{
    buildControls();
}

frm_DialogFolderFavorite::~frm_DialogFolderFavorite() = default;

void frm_DialogFolderFavorite::buildControls()
{
    SetCaption(QStringLiteral("Ordner-Favorit erstellen"));

    ctl_Title1 = Add<ctl_Title>(QStringLiteral("ctl_Title1"));
    ctl_Title1->SetCaption(QStringLiteral("Ordner-Favorit"));
    ctl_Title1->SetSubCaption(
        QStringLiteral("Legen Sie weitere Einstellungen für den Favoriten fest"));
    ctl_Title1->SetIconPath(QStringLiteral("Ico\\32\\Computer\\Folders\\Favorite.ico"));
    ctl_Title1->CloseRequest = [this](const QString&) {
        ctl_Executor_Script(QStringLiteral("DIALOG.ABORT();"));
    };

    int top = ctl_Title1->Height() / Screen::TwipsPerPixel + theme::Margin;
    addTextRow(Label1, QStringLiteral("Label1"), txt_Text, QStringLiteral("txt_Text"),
               QStringLiteral("Name:"), QStringLiteral("Name"), top);
    txt_Text->SetText(QStringLiteral("Neuer Favorit"));
    top += kRowPitch;
    addTextRow(Label2, QStringLiteral("Label2"), txt_URL, QStringLiteral("txt_URL"),
               QStringLiteral("Ziel-Ordner:"), QStringLiteral("URL"), top);
    top += kRowPitch;
    addTextRow(Label3, QStringLiteral("Label3"), txt_Description, QStringLiteral("txt_Description"),
               QStringLiteral("Beschreibung:"), QStringLiteral("Beschreibung"), top);
    top += kRowPitch;

    Label4 = Add<Label>(QStringLiteral("Label4"));
    Label4->SetCaption(QStringLiteral("Symbol:"));
    Label4->Move(ToTwips(theme::Margin), ToTwips(top + 2), ToTwips(kLabelWidth - theme::Gap),
                 ToTwips(kBoxHeight));
    pic_Icon = Add<PictureBox>(QStringLiteral("pic_Icon"));
    pic_Icon->SetScaleMode(3);
    pic_Icon->SetBackColor(theme::Base());
    pic_Icon->Move(ToTwips(kFieldLeft), ToTwips(top + 4), ToTwips(kIconSize), ToTwips(kIconSize));
    pic_Icon->widget()->setCursor(Qt::PointingHandCursor);
    pic_Icon->Click = [this] { hChangeIcon(); };
    lab_Change = Add<ctl_Label>(QStringLiteral("lab_Change"));
    lab_Change->SetCaption(QStringLiteral("<A HREF='CHANGEICON'>Symbol ändern...</A>"));
    lab_Change->Move(ToTwips(kFieldLeft + kIconSize + theme::Gap), ToTwips(top + 2),
                     ToTwips(kFieldWidth - kIconSize - theme::Gap), ToTwips(kBoxHeight));
    lab_Change->LinkClick = [this](const QString& target) { ctl_Executor1->Execute(target); };
    showIcon(QStringLiteral("Ico\\16\\Computer\\Folders\\Favorite.ico"));
    top += kRowPitch;

    Label5 = Add<Label>(QStringLiteral("Label5"));
    Label5->SetCaption(QStringLiteral("Speichern in:"));
    Label5->Move(ToTwips(theme::Margin), ToTwips(top + 2), ToTwips(kLabelWidth - theme::Gap),
                 ToTwips(kBoxHeight));
    // Both options sit on the form itself, which makes them one group.
    opt_FavUser = Add<OptionButton>(QStringLiteral("opt_FavUser"));
    opt_FavUser->SetCaption(QStringLiteral("Meine eigenen Favoriten"));
    opt_FavUser->SetToolTipText(QStringLiteral("Wählen Sie diese Option, wenn Sie den Favoriten "
                                               "auch in anderen Anwendungen nutzen wollen"));
    opt_FavUser->Move(ToTwips(kFieldLeft), ToTwips(top + 2), ToTwips(kFieldWidth),
                      ToTwips(kOptionHeight));
    opt_FavApp = Add<OptionButton>(QStringLiteral("opt_FavApp"));
    opt_FavApp->SetCaption(QStringLiteral("Favorit für die Anwendung 'APP'"));
    opt_FavApp->SetToolTipText(QStringLiteral(
        "Wählen Sie diese Option, falls der Favorit nur in dieser Anwendung Sinn macht."));
    opt_FavApp->Move(ToTwips(kFieldLeft), ToTwips(top + 2 + kOptionHeight + 4),
                     ToTwips(kFieldWidth), ToTwips(kOptionHeight));
    // As wide as their captions, so that a click beside the text chooses nothing.
    for (OptionButton* option : {opt_FavUser, opt_FavApp})
        option->SetWidth(ToTwips(std::min(kFieldWidth, option->widget()->sizeHint().width())));
    top += 2 * kOptionHeight + 4 + theme::Margin;

    ctl_Seperator1 = Add<ctl_Seperator>(QStringLiteral("ctl_Seperator1"));
    ctl_Seperator1->Move(0, ToTwips(top), ToTwips(kClientWidth), ToTwips(1));

    ctl_Executor1 = Add<ctl_Executor>(QStringLiteral("ctl_Executor"));
    ctl_Executor1->Script = [this](const QString& script) { ctl_Executor_Script(script); };
    ctl_CmdBar1 = Add<ctl_CmdBar>(QStringLiteral("ctl_CmdBar1"));
    const QString signs = QStringLiteral("Ico\\20\\Computer\\Signs\\");
    ctl_CmdBar1->AddButton(QStringLiteral("HELP"), QStringLiteral("Hilfe"),
                           signs + QStringLiteral("Help.ico"), QStringLiteral("DIALOG.HELP();"));
    ctl_CmdBar1->AddButton(QStringLiteral("OK"), QStringLiteral("&OK"),
                           signs + QStringLiteral("OK.ico"), QStringLiteral("DIALOG.OK();"));
    ctl_CmdBar1->AddButton(QStringLiteral("ABORT"), QStringLiteral("&Abbruch"),
                           signs + QStringLiteral("Abort.ico"), QStringLiteral("DIALOG.ABORT();"));
    ctl_CmdBar1->Script = [this](const QString& script) { ctl_Executor1->Execute(script); };

    window()->resize(kClientWidth, top + 1 + ctl_CmdBar1->Height() / Screen::TwipsPerPixel);
}

void frm_DialogFolderFavorite::addTextRow(Label*& label, const QString& labelName, TextBox*& box,
                                          const QString& name, const QString& caption,
                                          const QString& touchTitle, int top)
{
    label = Add<Label>(labelName);
    label->SetCaption(caption);
    label->Move(ToTwips(theme::Margin), ToTwips(top + 2), ToTwips(kLabelWidth - theme::Gap),
                ToTwips(kBoxHeight));
    TextBox* made = Add<TextBox>(name);
    made->Move(ToTwips(kFieldLeft), ToTwips(top), ToTwips(kFieldWidth), ToTwips(kBoxHeight));
    // The boxes tell of releases only; a left release is the click.
    made->MouseUp = [made, touchTitle](int button, int, float, float) {
        if (button == 1)
            hTouchInput(*made, touchTitle);
    };
    box = made;
}

QVariant frm_DialogFolderFavorite::GetPublic(const QString& name) const
{
    if (name.compare(u"Accepted", Qt::CaseInsensitive) == 0)
        return Accepted;
    if (name.compare(u"ForUser", Qt::CaseInsensitive) == 0)
        return ForUser;
    if (name.compare(u"Favorite", Qt::CaseInsensitive) != 0)
        return Form::GetPublic(name);
    return QVariantMap{{QStringLiteral("Name"), qs(Favorite.Name)},
                       {QStringLiteral("Description"), qs(Favorite.Description)},
                       {QStringLiteral("Icon"), qs(Favorite.Icon)},
                       {QStringLiteral("Path"), qs(Favorite.Path)}};
}

bool frm_DialogFolderFavorite::SetPublic(const QString& name, const QVariant& value)
{
    if (name.compare(u"Accepted", Qt::CaseInsensitive) == 0) {
        Accepted = value.toBool();
        return true;
    }
    if (name.compare(u"ForUser", Qt::CaseInsensitive) == 0) {
        ForUser = value.toBool();
        return true;
    }
    if (name.compare(u"Favorite", Qt::CaseInsensitive) != 0)
        return Form::SetPublic(name, value);
    const QVariantMap map = value.toMap();
    Favorite = FavoriteItem{us(map.value(QStringLiteral("Name")).toString()),
                            us(map.value(QStringLiteral("Description")).toString()),
                            us(map.value(QStringLiteral("Icon")).toString()),
                            us(map.value(QStringLiteral("Path")).toString())};
    return true;
}

void frm_DialogFolderFavorite::Form_Load()
{
    // A fresh record has no name yet: the proposal "Neuer Favorit" stays then.
    if (!Favorite.Name.empty())
        txt_Text->SetText(qs(Favorite.Name));
    txt_Description->SetText(qs(Favorite.Description));
    txt_URL->SetText(qs(Favorite.Path));
    showIcon(Favorite.Icon.empty() ? kDefaultIcon : qs(Favorite.Icon));

    std::string appKey;
    Resume([&] { appKey = GetCoreDevApp().RegistryKey(); });
    if (appKey.empty()) {
        // Without a key of its own the application has no list to store in.
        opt_FavUser->SetValue(true);
        opt_FavApp->SetVisible(false);
        window()->resize(window()->width(), window()->height() - kOptionHeight - 4);
        ForUser = true;
    } else {
        (ForUser ? opt_FavUser : opt_FavApp)->SetValue(true);
    }
    // The name is asked first; typing replaces the proposal.
    Resume([&] {
        txt_Text->SetFocus();
        txt_Text->SetSelStart(0);
        txt_Text->SetSelLength(int(txt_Text->Text().size()));
    });
}

void frm_DialogFolderFavorite::showIcon(const QString& path)
{
    m_iconPath = path;
    Resume([&] { pic_Icon->SetPicture(ToImage(GetCoreDevPictures().LoadPicture(us(path)))); });
}

void frm_DialogFolderFavorite::hChangeIcon()
{
    std::string chosen;
    Resume([&] {
        chosen = GetCoreDevMessages().ChooseIcon(us(m_iconPath), "Symbol wählen", kIconSize);
    });
    if (!chosen.empty())
        showIcon(qs(chosen));
}

void frm_DialogFolderFavorite::ctl_Executor_Script(const QString& script)
{
    const QString command = script.toUpper();
    if (command == u"DIALOG.OK();") {
        acceptEntry();
    } else if (command == u"DIALOG.ABORT();") {
        Accepted = false;
        Unload();
    } else if (command == u"DIALOG.HELP();") {
        Resume([&] {
            GetCoreDevMessages().ShowHelp("In diesem Dialog können Sie die Eigenschaften des "
                                          "neuen Ordner-Favoriten festlegen.",
                                          us(Caption()));
        });
    } else if (command == u"CHANGEICON") {
        hChangeIcon();
    }
}

void frm_DialogFolderFavorite::acceptEntry()
{
    if (txt_Text->Text().isEmpty()) {
        Resume([] {
            GetCoreDevMessages().ShowInfo("Sie müssen einen Namen für den Favoriten eingeben!", "");
        });
        return;
    }
    Favorite.Name = us(txt_Text->Text());
    Favorite.Description = us(txt_Description->Text());
    Favorite.Path = us(txt_URL->Text());
    Favorite.Icon = us(m_iconPath);
    ForUser = opt_FavUser->Value();
    Accepted = true;
    Unload();
}

} // namespace fw
