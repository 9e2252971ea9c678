// The progress window over the test host's scripted runs: tasks, log, errors
// and bars as the run reports them, the cancel button pressed mid-run, the
// plan confirmed through the matching confirmation form.
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Percent.h"
#include "forms/ListView.h"
#include "forms/StdControls.h"
#include "forms/testing/ListInput.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "host/DialogContext.h"
#include "sync/SyncConfirmForm.h"
#include "sync/SyncProgressForm.h"
#include "testing/TestHost.h"

#include <QAbstractButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace fw;
using namespace fw::testing;

namespace {

const std::string kCancelQuestion =
    "AskQuestion(Sind Sie sicher, daß Sie die Synchronisation abbrechen wollen?|";

void clickCancel(SyncProgressForm& form)
{
    auto* button =
        form.bar_Buttons->container()->findChild<QAbstractButton*>(QStringLiteral("cmd_ABORT"));
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton);
}

// The tasks that are lit, from 0.
std::vector<int> litTasks(SyncProgressForm& form)
{
    std::vector<int> lit;
    for (int i = 0; i <= form.lab_Task.UBound(); ++i) {
        const bool black = form.lab_Task[i].ForeColor() == QColor(Qt::black);
        EXPECT_EQ(black, form.lab_TaskDescription[i].ForeColor() == QColor(Qt::black));
        EXPECT_EQ(black, form.img_Task[i].Visible());
        if (black)
            lit.push_back(i);
    }
    return lit;
}

// A run that spins, letting the window's events through as a real run's
// transfers do, until the window's flag is set or it gives up.
std::int32_t spinUntilCancelled(SyncProgress& window)
{
    for (int i = 0; i < 150 && !window.Cancelled(); ++i) {
        window.PROGRESS(i, 150);
        QTest::qWait(2);
    }
    return window.Cancelled() ? SyncCancelled : SyncFinished;
}

// The host's FTP object: the cancel flag lives here.
struct FakeFtp : FtpObject {
    bool Cancel() const override { return cancel; }
    void SetCancel(bool on) override { cancel = on; }
    std::int32_t synchronise(const std::string& local, const std::string& remote,
                             SyncProgress& window, SyncJob& job) override
    {
        places = local + "|" + remote;
        return script(window, job);
    }
    std::string SENDCOMMAND(const std::string&) override { return {}; }
    bool cancel = false;
    std::string places;
    std::function<std::int32_t(SyncProgress&, SyncJob&)> script;
};

class SyncProgressWindow : public ::testing::Test {
  protected:
    ScopedTestHost host;
    frm_DialogFileSync form;

    SyncProgressWindow()
    {
        form.Path1 = "/tmp/a";
        form.Path2 = "/tmp/b";
    }
    ~SyncProgressWindow() override
    {
        if (form.IsLoaded())
            form.Unload();
    }
};

TEST_F(SyncProgressWindow, ShowsTasksLogErrorsAndBarsAndClosesWithTheRunsResult)
{
    const std::pair<int, std::vector<int>> taskRows[] = {
        {1, {0}}, {6, {5}}, {0, {}}, {7, {}}, {3, {2}}};
    host->synchroniseScript = [&](const std::string&, const std::string&, SyncProgress& window,
                                  SyncJob& job) {
        for (const auto& [n, lit] : taskRows) {
            window.SHOWTASK(n);
            EXPECT_EQ(litTasks(form), lit) << n;
            EXPECT_EQ(form.bar_ProgressTotal->Max(), 6);
            EXPECT_EQ(form.bar_ProgressTotal->Value(), n);
        }
        host->logStampText = "10:00:01";
        window.LOG("Ordner A wird gelesen");
        host->logStampText = "10:00:02";
        window.LOG("Fertig");
        window.LOGERROR("Hochladen", "a\\b.txt", "Zugriff verweigert");
        window.PROGRESS(3, 40);
        EXPECT_EQ(form.bar_ProgressStep->Max(), 40);
        EXPECT_EQ(form.bar_ProgressStep->Value(), 3);
        // A repaint during the run starts nothing a second time.
        form.Refresh();
        ProcessEvents();
        job.Done = 7;
        return std::int32_t(SyncFinished);
    };
    form.Show(true); // returns once the timer has closed the window
    EXPECT_TRUE(form.IsUnloaded());
    EXPECT_EQ(form.Result, SyncFinished);
    EXPECT_EQ(form.Job.Done, 7);
    EXPECT_EQ(host->callsTo("synchronise"), std::vector<std::string>{"synchronise(/tmp/a|/tmp/b)"});
    const ListItems& log = form.lst_Log->ListItems();
    ASSERT_EQ(log.Count(), 2);
    EXPECT_EQ(log.Item(1).Text(), QStringLiteral("10:00:01"));
    EXPECT_EQ(log.Item(2).Text(), QStringLiteral("10:00:02"));
    EXPECT_EQ(log.Item(2).SubItem(1), QStringLiteral("Fertig"));
    EXPECT_TRUE(log.Item(2).Selected());
    const ListItems& errors = form.lst_Errors->ListItems();
    ASSERT_EQ(errors.Count(), 1);
    EXPECT_EQ(errors.Item(1).Text() + u'|' + errors.Item(1).SubItem(1) + u'|' +
                  errors.Item(1).SubItem(2),
              QStringLiteral("Hochladen|a\\b.txt|Zugriff verweigert"));
    EXPECT_EQ(host->callsTo("SetColumnWidths"),
              (std::vector<std::string>{"SetColumnWidths(20,40,40)", "SetColumnWidths(20,80)"}));
    EXPECT_EQ(form.bar_ProgressSub->Value(), 0);
}

TEST_F(SyncProgressWindow, CancelMidRunAsksOnceAndSetsTheFlag)
{
    struct Row {
        const char* name;
        std::int32_t answer;
        bool cancelled;
    };
    for (const Row& row : {Row{"Yes", ResultYes, true}, Row{"No", ResultNo, false}}) {
        SCOPED_TRACE(row.name);
        ScopedTestHost caseHost;
        frm_DialogFileSync caseForm;
        caseHost->queueQuestionAnswer(row.answer);
        caseHost->synchroniseScript = [&](const std::string&, const std::string&,
                                          SyncProgress& window, SyncJob&) {
            window.SHOWTASK(5);
            QTimer::singleShot(20, caseForm.window(), [&] { clickCancel(caseForm); });
            const std::int32_t outcome = spinUntilCancelled(window);
            if (window.Cancelled()) {
                clickCancel(caseForm); // a second press asks nothing
                PressKey(caseForm, Qt::Key_Escape);
            }
            return outcome;
        };
        caseForm.Show(true);
        EXPECT_EQ(caseHost->callsTo("AskQuestion").size(), 1u);
        EXPECT_EQ(caseHost->callsTo("AskQuestion")[0].rfind(kCancelQuestion, 0), 0u);
        EXPECT_EQ(caseForm.Cancelled(), row.cancelled);
        EXPECT_EQ(caseForm.Result, row.cancelled ? SyncCancelled : SyncFinished);
        EXPECT_TRUE(caseForm.IsUnloaded());
    }
}

TEST_F(SyncProgressWindow, ClosingTheWindowMidRunAsksToCancelInstead)
{
    host->queueQuestionAnswer(ResultYes);
    host->synchroniseScript = [&](const std::string&, const std::string&, SyncProgress& window,
                                  SyncJob&) {
        window.SHOWTASK(1);
        CloseWindow(form);
        EXPECT_TRUE(form.IsLoaded());
        return window.Cancelled() ? SyncCancelled : SyncFinished;
    };
    form.Show(true);
    EXPECT_EQ(form.Result, SyncCancelled);
}

TEST_F(SyncProgressWindow, ConfirmShowsTheLocalConfirmationAndReturnsItsAnswer)
{
    ModalDriver driver;
    SyncActions plan;
    plan.DOWN = {"x.txt", "y.txt"};
    driver.OnNextModal([](Form&) {}); // the progress window itself
    driver.OnNextModal([&](Form& confirm) {
        EXPECT_EQ(confirm.Name(), QStringLiteral("frm_DialogFileSyncConfirm"));
        auto& shown = dynamic_cast<SyncConfirmForm&>(confirm);
        ClickCheckBox(*shown.lst_Actions, shown.lst_Actions->ListItems().Item(1));
        host->queueQuestionAnswer(ResultYes);
        shown.bar_Buttons->Press(QStringLiteral("OK"));
    });
    bool confirmed = false;
    host->synchroniseScript = [&](const std::string&, const std::string&, SyncProgress& window,
                                  SyncJob&) {
        confirmed = window.Confirm(plan);
        return std::int32_t(SyncFinished);
    };
    form.Show(true);
    EXPECT_TRUE(confirmed);
    EXPECT_EQ(plan.DOWN.items(), std::vector<std::string>{"y.txt"});
}

TEST(FtpSyncWindow, RunsOnTheFtpObjectWhichKeepsTheCancelFlag)
{
    ScopedTestHost host;
    ModalDriver driver;
    auto ftp = std::make_shared<FakeFtp>();
    frm_InternetFTPSync form;
    form.Ftp = ftp;
    form.Path1 = "/home/anna/web";
    form.Path2 = "/htdocs";
    host->queueQuestionAnswer(ResultYes);
    driver.OnNextModal([](Form&) {});
    driver.OnNextModal([&](Form& confirm) {
        EXPECT_EQ(confirm.Name(), QStringLiteral("frm_InternetFTPConfirm"));
        confirm.Unload(); // the window's close: not confirmed
    });
    ftp->script = [&](SyncProgress& window, SyncJob&) {
        SyncActions plan;
        plan.UP = {"index.html"};
        EXPECT_FALSE(window.Confirm(plan));
        EXPECT_EQ(plan.UP.Count(), 1);
        QTimer::singleShot(20, form.window(), [&] { clickCancel(form); });
        return spinUntilCancelled(window);
    };
    form.Show(true);
    EXPECT_EQ(ftp->places, "/home/anna/web|/htdocs");
    EXPECT_TRUE(ftp->cancel);
    EXPECT_EQ(form.Result, SyncCancelled);
    EXPECT_EQ(form.lab_Task[1].Caption(), QStringLiteral("Remotedateiliste erstellen"));
    EXPECT_FALSE(host->wasCalled("synchronise"));
}

} // namespace
