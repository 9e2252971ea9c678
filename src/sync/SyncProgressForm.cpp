#include "sync/SyncProgressForm.h"

#include "controls/Theme.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Frame.h"
#include "controls/ctl_Percent.h"
#include "controls/ctl_Title.h"
#include "dialogs/DialogOpening.h"
#include "forms/ListView.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "host/DialogContext.h"
#include "host/mdl_CoreDevWrapper.h"
#include "sync/SyncConfirmForm.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPainterPath>
#include <QTimer>
#include <QWidget>

namespace fw {

namespace {
// Design metrics, in pixels.
constexpr int kClientWidth = 1000;
constexpr int kClientHeight = 620;
constexpr int kMargin = 10;
constexpr int kTaskColumn = 270;
constexpr int kTaskPitch = 58;
constexpr int kBarPitch = 28;
constexpr int kBarLabelWidth = 100;
constexpr int kTaskCount = 6;
constexpr std::int32_t kYesNo = 4;

// The classic colours 0 and 8 of the current and the other tasks.
const QColor kCurrentTaskText(0x00, 0x00, 0x00);
const QColor kOtherTaskText(0x80, 0x80, 0x80);

// The mark of the current task, drawn so that it needs no file: a filled
// arrow in the accent colour.
QImage currentTaskMark()
{
    QImage image(16, 16, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(theme::Accent());
    QPainterPath arrow;
    arrow.moveTo(4, 2.5);
    arrow.lineTo(13, 8);
    arrow.lineTo(4, 13.5);
    arrow.closeSubpath();
    p.drawPath(arrow);
    return image;
}

QString fromHost(const std::string& text)
{
    return QString::fromStdString(text);
}
} // namespace

SyncProgressForm::SyncProgressForm(const QString& name, const QString& caption,
                                   const TaskTexts& tasks)
    : Form(name)
{
    window()->resize(kClientWidth, kClientHeight);
    SetCaption(caption);
    ctl_Header1 = Add<ctl_Title>(QStringLiteral("ctl_Header1"));
    ctl_Header1->SetCaption(caption);
    ctl_Header1->SetSubCaption(QStringLiteral("Der Inhalt der beiden Orte wird abgeglichen."));
    ctl_Header1->SetIconPath(QStringLiteral("Ico\\32\\Computer\\Folders\\Favorite.ico"));
    // The header's close button is the window's: it asks to cancel a run.
    ctl_Header1->CloseRequest = [this](const QString&) { window()->close(); };

    bar_Buttons = Add<ctl_CmdBar>(QStringLiteral("bar_Buttons"));
    bar_Buttons->AddButton(QStringLiteral("ABORT"), QStringLiteral("&Abbruch"),
                           QStringLiteral("Ico\\20\\Computer\\Signs\\abort.ico"),
                           QStringLiteral("DIALOG.ABORT();"));
    bar_Buttons->SetHelpVisible(false);
    bar_Buttons->SetDoEvents(true);
    bar_Buttons->Key = [this](const QString&) { askCancel(); };

    buildTasks(tasks);
    buildProgress();
    buildLists();

    tmr_Unload = Add<Timer>(QStringLiteral("tmr_Unload"));
    tmr_Unload->SetInterval(100);
    tmr_Unload->SetEnabled(false);
    tmr_Unload->Tick = [this] { tmr_Unload_Timer(); };
}

SyncProgressForm::~SyncProgressForm() = default;

void SyncProgressForm::buildTasks(const TaskTexts& tasks)
{
    const int top = theme::TitleHeight + kMargin;
    const int height = bar_Buttons->Top() / Screen::TwipsPerPixel - top - kMargin;
    fra_Tasks = Add<ctl_Frame>(QStringLiteral("fra_Tasks"));
    fra_Tasks->SetCaption(QStringLiteral("Aufgabenliste"));
    fra_Tasks->Move(ToTwips(kMargin), ToTwips(top), ToTwips(kTaskColumn), ToTwips(height));
    const int inside = fra_Tasks->InsideTop() + ToTwips(4);
    const int width = kTaskColumn - 16;

    pan_Task = ControlArray<ctl_Pannel>(QStringLiteral("pan_Task"), [this, inside, width](int i) {
        auto* panel = Add<ctl_Pannel>(QStringLiteral("pan_Task"), fra_Tasks->container());
        panel->Move(ToTwips(8), inside + ToTwips(i * kTaskPitch), ToTwips(width),
                    ToTwips(kTaskPitch - 4));
        return panel;
    });
    const QImage mark = currentTaskMark();
    img_Task = ControlArray<PictureBox>(QStringLiteral("img_Task"), [this, mark](int i) {
        auto* picture = Add<PictureBox>(QStringLiteral("img_Task"), pan_Task[i].container());
        picture->SetBackColor(Qt::transparent);
        picture->SetPicture(mark);
        picture->Move(ToTwips(6), ToTwips(6), ToTwips(16), ToTwips(16));
        picture->SetVisible(false);
        return picture;
    });
    lab_Task = ControlArray<Label>(QStringLiteral("lab_Task"), [this, width](int i) {
        auto* label = Add<Label>(QStringLiteral("lab_Task"), pan_Task[i].container());
        label->SetFont(theme::UiFont(0, true));
        label->Move(ToTwips(28), ToTwips(4), ToTwips(width - 34), ToTwips(18));
        return label;
    });
    lab_TaskDescription =
        ControlArray<Label>(QStringLiteral("lab_TaskDescription"), [this, width](int i) {
            auto* label =
                Add<Label>(QStringLiteral("lab_TaskDescription"), pan_Task[i].container());
            label->SetWordWrap(true);
            label->SetFont(theme::UiFont(-1));
            label->Move(ToTwips(28), ToTwips(22), ToTwips(width - 34), ToTwips(kTaskPitch - 28));
            return label;
        });
    for (int i = 0; i < kTaskCount; ++i) {
        pan_Task.Load(i);
        img_Task.Load(i);
        lab_Task.Load(i).SetCaption(QString::fromUtf8(tasks[i][0]));
        lab_TaskDescription.Load(i).SetCaption(QString::fromUtf8(tasks[i][1]));
        lab_Task[i].SetForeColor(kOtherTaskText);
        lab_TaskDescription[i].SetForeColor(kOtherTaskText);
    }
}

void SyncProgressForm::buildProgress()
{
    const int left = 2 * kMargin + kTaskColumn;
    const int width = kClientWidth - left - kMargin;
    int top = theme::TitleHeight + kMargin + 6;
    auto addBar = [&](const QString& labelName, const QString& caption, const QString& barName,
                      Label*& label, ctl_Percent*& bar) {
        label = Add<Label>(labelName);
        label->SetCaption(caption);
        label->Move(ToTwips(left), ToTwips(top + 2), ToTwips(kBarLabelWidth), ToTwips(18));
        bar = Add<ctl_Percent>(barName);
        bar->SetMin(0);
        bar->SetValue(0);
        bar->Move(ToTwips(left + kBarLabelWidth), ToTwips(top), ToTwips(width - kBarLabelWidth),
                  ToTwips(20));
        top += kBarPitch;
    };
    addBar(QStringLiteral("lab_ProgressTotal"), QStringLiteral("Gesamt:"),
           QStringLiteral("bar_ProgressTotal"), lab_ProgressTotal, bar_ProgressTotal);
    addBar(QStringLiteral("lab_ProgressStep"), QStringLiteral("Arbeitsschritt:"),
           QStringLiteral("bar_ProgressStep"), lab_ProgressStep, bar_ProgressStep);
    addBar(QStringLiteral("lab_ProgressSub"), QStringLiteral("Aufgabe:"),
           QStringLiteral("bar_ProgressSub"), lab_ProgressSub, bar_ProgressSub);
}

void SyncProgressForm::buildLists()
{
    const int left = 2 * kMargin + kTaskColumn;
    const int width = kClientWidth - left - kMargin;
    const int top = theme::TitleHeight + kMargin + 3 * kBarPitch + kMargin;
    const int bottom = bar_Buttons->Top() / Screen::TwipsPerPixel - kMargin;
    const int logHeight = (bottom - top - kMargin) * 3 / 5;

    lst_Log = Add<ListView>(QStringLiteral("lst_Log"));
    lst_Log->SetView(lvwReport);
    lst_Log->ColumnHeaders().Add(QStringLiteral("Zeit"));
    lst_Log->ColumnHeaders().Add(QStringLiteral("Meldung"));
    lst_Log->Move(ToTwips(left), ToTwips(top), ToTwips(width), ToTwips(logHeight));

    lst_Errors = Add<ListView>(QStringLiteral("lst_Errors"));
    lst_Errors->SetView(lvwReport);
    lst_Errors->ColumnHeaders().Add(QStringLiteral("Aktion"));
    lst_Errors->ColumnHeaders().Add(QStringLiteral("Pfad"));
    lst_Errors->ColumnHeaders().Add(QStringLiteral("Fehler"));
    const int errorsTop = top + logHeight + kMargin;
    lst_Errors->Move(ToTwips(left), ToTwips(errorsTop), ToTwips(width),
                     ToTwips(bottom - errorsTop));
}

void SyncProgressForm::Form_Paint()
{
    if (m_started)
        return;
    m_started = true;
    // The run starts once the first paint is through: a run inside the paint
    // itself could not repaint the window it reports to.
    QTimer::singleShot(0, window(), [this] { run(); });
}

void SyncProgressForm::run()
{
    if (!IsLoaded())
        return; // closed before the run could start
    Resume([&] { GetCoreDevControls().ListViews().SetColumnWidths(*lst_Errors, "20,40,40"); });
    Resume([&] { GetCoreDevControls().ListViews().SetColumnWidths(*lst_Log, "20,80"); });
    m_running = true;
    Resume([&] { Result = synchronise(); });
    m_running = false;
    showNewestRows();
    tmr_Unload->SetEnabled(true);
}

void SyncProgressForm::SHOWTASK(std::int32_t n)
{
    const int tasks = lab_Task.UBound() + 1;
    if (bar_ProgressTotal->Max() != tasks)
        bar_ProgressTotal->SetMax(tasks);
    bar_ProgressTotal->SetValue(n);
    for (int i = 0; i <= lab_Task.UBound(); ++i) {
        const bool current = i == n - 1;
        pan_Task[i].SetBackColor(current ? theme::Mix(theme::Accent(), theme::Base(), 0.85)
                                         : theme::Base());
        img_Task[i].SetVisible(current);
        lab_Task[i].SetForeColor(current ? kCurrentTaskText : kOtherTaskText);
        lab_TaskDescription[i].SetForeColor(current ? kCurrentTaskText : kOtherTaskText);
    }
    showNewestRows();
    Refresh();
    QCoreApplication::processEvents();
}

void SyncProgressForm::LOG(const std::string& text)
{
    std::string stamp;
    Resume([&] { stamp = GetCoreDevClock().logStamp(); });
    ListItem& row = lst_Log->ListItems().Add(QString(), fromHost(stamp));
    row.SetSubItem(1, fromHost(text));
    m_newestLog = &row;
}

void SyncProgressForm::PROGRESS(std::int32_t value, std::int32_t max)
{
    if (bar_ProgressStep->Max() != max)
        bar_ProgressStep->SetMax(max);
    bar_ProgressStep->SetValue(value);
    showNewestRows();
    QCoreApplication::processEvents();
}

void SyncProgressForm::LOGERROR(const std::string& a, const std::string& b, const std::string& c)
{
    ListItem& row = lst_Errors->ListItems().Add(QString(), fromHost(a));
    row.SetSubItem(1, fromHost(b));
    row.SetSubItem(2, fromHost(c));
    m_newestError = &row;
}

// Selecting a row and scrolling to it makes the list view lay out all its rows
// anew: done for each of 10,000 log rows that is minutes, done once before the
// window can next be seen it is nothing. Nobody can tell the difference, since
// the window is only painted when the run lets the message loop run.
void SyncProgressForm::showNewestRows()
{
    for (auto [list, row] :
         {std::pair{lst_Log, &m_newestLog}, std::pair{lst_Errors, &m_newestError}}) {
        if (!*row)
            continue;
        list->SetSelectedItem(*row);
        (*row)->EnsureVisible();
        *row = nullptr;
    }
}

bool SyncProgressForm::Confirm(SyncActions& actions)
{
    showNewestRows();
    std::unique_ptr<SyncConfirmForm> confirm = makeConfirmForm();
    confirm->Actions = &actions;
    confirm->Show(true);
    return confirm->Confirmed;
}

void SyncProgressForm::askCancel()
{
    if (cancelFlag())
        return;
    std::int32_t answer = ResultNo;
    Resume([&] {
        answer = GetCoreDevMessages().AskQuestion(
            "Sind Sie sicher, daß Sie die Synchronisation abbrechen wollen?",
            Caption().toStdString(), kYesNo, "", "");
    });
    if (answer != ResultNo)
        setCancelFlag();
}

// Closing the window while the run is inside it would pull the window from
// under the run: the close asks to cancel instead, and the run's end closes.
void SyncProgressForm::Form_QueryUnload(bool& cancel, int unloadMode)
{
    if (!m_running || unloadMode != UnloadByUser)
        return;
    cancel = true;
    askCancel();
}

void SyncProgressForm::tmr_Unload_Timer()
{
    bool failed = true;
    Resume([&] {
        Unload();
        failed = false;
    });
    if (!failed)
        tmr_Unload->SetEnabled(false);
}

// ---- the two forms --------------------------------------------------------------

frm_DialogFileSync::frm_DialogFileSync()
    : SyncProgressForm(
          QStringLiteral("frm_DialogFileSync"), QStringLiteral("Lokale Synchronisation"),
          {{{"Dateiliste 1 erstellen",
             "Dateien und Ordner im 1. Pfad werden gesucht und inventarisiert."},
            {"Dateiliste 2 erstellen",
             "Dateien und Ordner im 1. Pfad werden gesucht und inventarisiert."},
            {"Änderungen suchen", "Unterschiede zwischen den Dateilisten werden analysiert."},
            {"Aktionen besätigen",
             "Sie werden aufgefordert, die geplanten Änderungen zu bestätigen"},
            {"Synchronisieren",
             "Die notwendigen Maßnahmen zur Synchronisation werden durchgeführt."},
            {"Protokoll erstellen",
             "Ein Protokoll wird erstellt um die nächste Sync. zu unterstützen."}}})
{
}

std::int32_t frm_DialogFileSync::synchronise()
{
    return GetCoreDevFiles().synchronise(Path1, Path2, *this, Job);
}

std::unique_ptr<SyncConfirmForm> frm_DialogFileSync::makeConfirmForm() const
{
    return std::make_unique<frm_DialogFileSyncConfirm>();
}

frm_InternetFTPSync::frm_InternetFTPSync()
    : SyncProgressForm(
          QStringLiteral("frm_InternetFTPSync"), QStringLiteral("FTP Synchronisation"),
          {{{"Dateiliste erstellen",
             "Lokale Dateien und Ordner werden gesucht und inventarisiert."},
            {"Remotedateiliste erstellen",
             "Die Dateien und Ordner auf dem FTP-Server werden inventarisiert."},
            {"Änderungen suchen", "Unterschiede zwischen den Dateilisten werden analysiert."},
            {"Aktionen bestätigen",
             "Sie werden aufgefordert, die geplanten Änderungen zu bestätigen"},
            {"Synchronisieren",
             "Die notwendigen Maßnahmen zur Synchronisation werden durchgeführt."},
            {"Protokoll erstellen",
             "Ein Protokoll wird erstellt um die nächste Sync. zu unterstützen."}}})
{
}

std::int32_t frm_InternetFTPSync::synchronise()
{
    return Ftp ? Ftp->synchronise(Path1, Path2, *this, Job) : std::int32_t(SyncFailed);
}

std::unique_ptr<SyncConfirmForm> frm_InternetFTPSync::makeConfirmForm() const
{
    return std::make_unique<frm_InternetFTPConfirm>();
}

void frm_InternetFTPSync::setCancelFlag()
{
    if (Ftp)
        Ftp->SetCancel(true);
}

} // namespace fw
