#include "sync/SyncConfirmForm.h"

#include "controls/Theme.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Frame.h"
#include "controls/ctl_Label.h"
#include "dialogs/DialogOpening.h"
#include "forms/ListView.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "host/DialogContext.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QWidget>

namespace fw {

namespace {
// Design metrics, in pixels.
constexpr int kClientWidth = 560;
constexpr int kClientHeight = 460;
constexpr int kMargin = 10;
constexpr int kInfoHeight = 86;
constexpr std::int32_t kYesNo = 4;

struct ActionRow {
    std::string_view key;
    const char* text;
    const char* kind;
};

// The rows' order on the screen.
constexpr ActionRow kActionRows[] = {
    {"DL", "Lokale Datei löschen", "delete"},
    {"DR", "Remote Datei löschen", "delete"},
    {"DTL", "Lokalen Ordner löschen", "deltree"},
    {"DTR", "Remote Ordner löschen", "deltree"},
    {"MKL", "Lokalen Ordner erstellen", "makedir"},
    {"MMR", "Remote Ordner erstellen", "makedir"},
    {"UP", "Datei hochladen", "upload"},
    {"DOWN", "Datei herunterladen", "download"},
};

// The order in which a confirmation trims the lists; each list is walked on
// its own, so the order does not change the result.
constexpr std::string_view kTrimOrder[] = {"DTL", "DTR", "DL", "DR", "MKL", "MMR", "UP", "DOWN"};

// Both forms say "FTP-Server" here: the help was written once for both.
const char* const kHelpText =
    "Das Programm hat festgestellt, welche Aktionen notwendig sind um den FTP-Server mit dem "
    "lokalen Ordner abzugleichen. Die Aktionen sehen Sie links in der Liste. Wollen Sie "
    "bestimmte Aktionen trotzdem nicht ausführen lassen entfernen Sie einfach den Haken vor "
    "der Aktion. Klicken Sie auf 'OK' um mit dem Abgleich zu beginnen oder auf 'Abbruch' um "
    "die Synchronisation zu stoppen.";

QString rowKey(int index, std::string_view key)
{
    return QString::number(index) + u'|' + QString::fromLatin1(key.data(), qsizetype(key.size()));
}

std::string question(int checked, int unchecked)
{
    std::string text =
        "Wenn Sie fortfahren werden " + std::to_string(checked) + " Aktionen ausgeführt";
    if (unchecked > 0)
        text += " und " + std::to_string(unchecked) +
                " Aktionen werden NICHT ausgeführt, da sie von Ihnen deselektiert wurden";
    return text + ". Wollen Sie jetzt mit der Synchronisation beginnen?";
}
} // namespace

SyncConfirmForm::SyncConfirmForm(const QString& name, const QString& description) : Form(name)
{
    window()->resize(kClientWidth, kClientHeight);
    SetCaption(QStringLiteral("Geplante Aktionen bestätigen"));
    const QString signs = QStringLiteral("Ico\\20\\Computer\\Signs\\");

    fra_Information = Add<ctl_Frame>(QStringLiteral("fra_Information"));
    fra_Information->SetCaption(QStringLiteral("Information"));
    fra_Information->SetIconPath(signs + QStringLiteral("Information.ico"));
    lab_Description =
        Add<ctl_Label>(QStringLiteral("lab_Description"), fra_Information->container());
    lab_Description->SetAlignment(3);
    lab_Description->SetCaption(description);

    fra_Actions = Add<ctl_Frame>(QStringLiteral("fra_Actions"));
    fra_Actions->SetCaption(QStringLiteral("Geplante Aktionen"));
    fra_Actions->SetIconPath(signs + QStringLiteral("OK.ico"));
    lst_Actions = Add<ListView>(QStringLiteral("lst_Actions"), fra_Actions->container());
    lst_Actions->SetView(lvwReport);
    lst_Actions->SetCheckboxes(true);
    lst_Actions->ColumnHeaders().Add(QStringLiteral("Aktion"));
    lst_Actions->ColumnHeaders().Add(QStringLiteral("Datei / Ordner"));

    bar_Buttons = Add<ctl_CmdBar>(QStringLiteral("bar_Buttons"));
    AddDialogCommands(*bar_Buttons);
    bar_Buttons->Script = [this](const QString& script) { bar_Buttons_Script(script); };
    Form_Resize();
}

SyncConfirmForm::~SyncConfirmForm() = default;

void SyncConfirmForm::Form_Load()
{
    Resume([&] { GetCoreDevControls().ListViews().SetColumnWidths(*lst_Actions, "40,60"); });
    if (Actions)
        for (const ActionRow& row : kActionRows)
            vList(*Actions->ByKey(row.key), row.key, QString::fromUtf8(row.text),
                  QString::fromLatin1(row.kind));
    lst_Actions->SetFocus();
}

void SyncConfirmForm::Form_Resize()
{
    Resume([&] {
        const int margin = ToTwips(kMargin);
        const int width = ScaleWidth() - 2 * margin;
        fra_Information->Move(margin, margin, width, ToTwips(kInfoHeight));
        lab_Description->Move(ToTwips(12), fra_Information->InsideTop() + ToTwips(2),
                              width - ToTwips(24));
        const int top = fra_Information->Top() + fra_Information->Height() + margin;
        fra_Actions->Move(margin, top, width, bar_Buttons->Top() - top - margin);
        lst_Actions->Move(ToTwips(8), fra_Actions->InsideTop() + ToTwips(2), width - ToTwips(16),
                          fra_Actions->Height() - fra_Actions->InsideTop() - ToTwips(10));
    });
}

void SyncConfirmForm::vList(const StringList& list, std::string_view key, const QString& text,
                            const QString& /*kind: carried by the rows' table, used nowhere*/)
{
    const QString tag = QString::fromLatin1(key.data(), qsizetype(key.size()));
    for (int i = 1; i <= list.Count(); ++i) {
        ListItem& row = lst_Actions->ListItems().Add(rowKey(i, key), text);
        row.SetTag(tag);
        row.SetChecked(true);
        row.SetSubItem(1, QString::fromStdString(list.Item(i)));
    }
}

void SyncConfirmForm::vListS(StringList& list, std::string_view key)
{
    for (int i = list.Count(); i >= 1; --i) {
        const ListItem* row = lst_Actions->ListItems().Find(rowKey(i, key));
        if (row && !row->Checked())
            list.Remove(i);
    }
}

void SyncConfirmForm::bar_Buttons_Script(const QString& script)
{
    const QString command = script.toUpper();
    if (command == u"DIALOG.ABORT();") {
        Confirmed = false;
        Unload();
    } else if (command == u"DIALOG.HELP();") {
        Resume([&] { GetCoreDevMessages().ShowHelp(kHelpText, Caption().toStdString()); });
    } else if (command == u"DIALOG.OK();") {
        confirm();
    }
}

void SyncConfirmForm::confirm()
{
    int checked = 0;
    const ListItems& rows = lst_Actions->ListItems();
    for (int i = 1; i <= rows.Count(); ++i)
        checked += rows.Item(i).Checked() ? 1 : 0;
    const int unchecked = rows.Count() - checked;
    if (checked == 0) {
        Resume([&] {
            GetCoreDevMessages().ShowInfo("Sie müssen zumindest eine Aktion ausführen lassen!", "");
        });
        return;
    }
    std::int32_t answer = ResultNo;
    Resume([&] {
        answer = GetCoreDevMessages().AskQuestion(question(checked, unchecked), "Beginnen?", kYesNo,
                                                  "", "");
    });
    if (answer == ResultNo)
        return;
    if (Actions)
        for (std::string_view key : kTrimOrder)
            vListS(*Actions->ByKey(key), key);
    Confirmed = true;
    Unload();
}

frm_DialogFileSyncConfirm::frm_DialogFileSyncConfirm()
    : SyncConfirmForm(QStringLiteral("frm_DialogFileSyncConfirm"),
                      QStringLiteral("Nachfolgende Aktionen sind zur Durchführung geplant um den "
                                     "Inhalt der Ordner abzugleichen. Bestätigen Sie die "
                                     "Änderungen. Entfernen Sie ggf. unerwünschte Änderungen, "
                                     "indem Sie den 'Haken' davor entfernen."))
{
}

frm_InternetFTPConfirm::frm_InternetFTPConfirm()
    : SyncConfirmForm(QStringLiteral("frm_InternetFTPConfirm"),
                      QStringLiteral("Nachfolgende Aktionen sind zur Durchführung geplant um den "
                                     "Inhalt des FTP-Servers mit dem lokalen Ordner abzugleichen. "
                                     "Bestätigen Sie die Änderungen. Entfernen Sie ggf. "
                                     "unerwünschte Änderungen, indem Sie den 'Haken' davor "
                                     "entfernen."))
{
}

} // namespace fw
