// The plan's confirmation driven as a user: check boxes cleared by click and
// by Space, OK, the question answered; the host's lists checked afterwards.
#include "controls/ctl_CmdBar.h"
#include "forms/ListView.h"
#include "forms/testing/ListInput.h"
#include "forms/testing/UserInput.h"
#include "host/DialogContext.h"
#include "sync/SyncConfirmForm.h"
#include "testing/TestHost.h"

#include <gtest/gtest.h>

using namespace fw;
using namespace fw::testing;

namespace {

SyncActions samplePlan()
{
    SyncActions plan;
    plan.DL = {"alt.txt"};
    plan.DTR = {"Leer"};
    plan.MMR = {"Neu"};
    plan.UP = {"Neu\\a.txt", "Neu\\b.txt", "c:d\\e.txt"};
    return plan;
}

struct ConfirmCase {
    const char* name;
    std::vector<int> unchecked; ///< rows from 1, as they stand on the screen
    std::int32_t answer;
    const char* question; ///< empty: the "no action" message instead
    bool confirmed;
    std::vector<std::string> up; ///< what UP holds afterwards
    int mmr;                     ///< entries MMR holds afterwards
};

class SyncConfirm : public ::testing::Test {
  protected:
    ScopedTestHost host;
    SyncActions plan = samplePlan();
    frm_DialogFileSyncConfirm form;

    SyncConfirm()
    {
        form.Actions = &plan;
        form.Show(false);
        ProcessEvents();
    }
    ~SyncConfirm() override
    {
        if (form.IsLoaded())
            form.Unload();
    }
    ListItem& row(int index) { return form.lst_Actions->ListItems().Item(index); }
};

TEST_F(SyncConfirm, RowsFollowTheActionTableWithIndexKeysAllChecked)
{
    const ListItems& rows = form.lst_Actions->ListItems();
    ASSERT_EQ(rows.Count(), 6);
    const char* expected[][4] = {
        {"1|DL", "DL", "Lokale Datei löschen", "alt.txt"},
        {"1|DTR", "DTR", "Remote Ordner löschen", "Leer"},
        {"1|MMR", "MMR", "Remote Ordner erstellen", "Neu"},
        {"1|UP", "UP", "Datei hochladen", "Neu\\a.txt"},
        {"2|UP", "UP", "Datei hochladen", "Neu\\b.txt"},
        {"3|UP", "UP", "Datei hochladen", "c:d\\e.txt"},
    };
    for (int i = 0; i < 6; ++i) {
        const ListItem& item = rows.Item(i + 1);
        EXPECT_EQ(item.Key(), QString::fromUtf8(expected[i][0]));
        EXPECT_EQ(item.Tag(), QString::fromUtf8(expected[i][1]));
        EXPECT_EQ(item.Text(), QString::fromUtf8(expected[i][2]));
        EXPECT_EQ(item.SubItem(1), QString::fromUtf8(expected[i][3]));
        EXPECT_TRUE(item.Checked());
    }
    EXPECT_EQ(host->callsTo("SetColumnWidths"), std::vector<std::string>{"SetColumnWidths(40,60)"});
    EXPECT_EQ(form.Caption(), QStringLiteral("Geplante Aktionen bestätigen"));
}

TEST_F(SyncConfirm, OkAsksAndTrimsWhatTheUserUnchecked)
{
    const std::string ask = "AskQuestion(Wenn Sie fortfahren werden ";
    const std::string tail = ". Wollen Sie jetzt mit der Synchronisation beginnen?|Beginnen?|4||)";
    const ConfirmCase cases[] = {
        {"all kept",
         {},
         ResultYes,
         "6 Aktionen ausgeführt",
         true,
         {"Neu\\a.txt", "Neu\\b.txt", "c:d\\e.txt"},
         1},
        // The first and the last entry of a list: the walk must go backwards.
        {"two of a list",
         {4, 6},
         ResultYes,
         "4 Aktionen ausgeführt und 2 Aktionen werden NICHT ausgeführt, da sie von Ihnen "
         "deselektiert wurden",
         true,
         {"Neu\\b.txt"},
         1},
        {"No keeps the checks",
         {3},
         ResultNo,
         "5 Aktionen ausgeführt und 1 Aktionen werden NICHT ausgeführt, da sie von Ihnen "
         "deselektiert wurden",
         false,
         {"Neu\\a.txt", "Neu\\b.txt", "c:d\\e.txt"},
         1},
        {"none left",
         {1, 2, 3, 4, 5, 6},
         ResultYes,
         "",
         false,
         {"Neu\\a.txt", "Neu\\b.txt", "c:d\\e.txt"},
         1},
    };
    for (const ConfirmCase& c : cases) {
        SCOPED_TRACE(c.name);
        ScopedTestHost caseHost;
        SyncActions casePlan = samplePlan();
        frm_InternetFTPConfirm caseForm;
        caseForm.Actions = &casePlan;
        caseForm.Show(false);
        ProcessEvents();
        ListView& list = *caseForm.lst_Actions;
        for (int index : c.unchecked) {
            // Clicks for the first rows, Space on the others: both are a user's way.
            if (index <= 3) {
                ClickCheckBox(list, list.ListItems().Item(index));
            } else {
                list.SetSelectedItem(&list.ListItems().Item(index));
                Focus(list);
                PressKey(caseForm, Qt::Key_Space);
            }
        }
        caseHost->queueQuestionAnswer(c.answer);
        caseForm.bar_Buttons->Press(QStringLiteral("OK"));
        if (*c.question) {
            EXPECT_EQ(caseHost->callsTo("AskQuestion"),
                      std::vector<std::string>{ask + c.question + tail});
            EXPECT_FALSE(caseHost->wasCalled("ShowInfo"));
        } else {
            EXPECT_FALSE(caseHost->wasCalled("AskQuestion"));
            EXPECT_EQ(caseHost->callsTo("ShowInfo"),
                      std::vector<std::string>{
                          "ShowInfo(Sie müssen zumindest eine Aktion ausführen lassen!|)"});
        }
        EXPECT_EQ(caseForm.Confirmed, c.confirmed);
        EXPECT_EQ(caseForm.IsUnloaded(), c.confirmed);
        EXPECT_EQ(casePlan.UP.items(), c.up);
        EXPECT_EQ(casePlan.MMR.Count(), c.mmr);
        if (!c.confirmed) {
            for (int index : c.unchecked)
                EXPECT_FALSE(list.ListItems().Item(index).Checked()) << index;
        }
        if (caseForm.IsLoaded())
            caseForm.Unload();
    }
}

TEST_F(SyncConfirm, EmptyPlanRefusesOk)
{
    SyncActions empty;
    frm_DialogFileSyncConfirm emptyForm;
    emptyForm.Actions = &empty;
    emptyForm.Show(false);
    emptyForm.bar_Buttons->Press(QStringLiteral("OK"));
    EXPECT_EQ(emptyForm.lst_Actions->ListItems().Count(), 0);
    EXPECT_TRUE(host->wasCalled("ShowInfo"));
    EXPECT_TRUE(emptyForm.IsLoaded());
    emptyForm.Unload();
}

TEST_F(SyncConfirm, AbortLeavesTheListsAndHelpExplains)
{
    ClickCheckBox(*form.lst_Actions, row(1));
    form.bar_Buttons->Press(QStringLiteral("HELP"));
    const auto help = host->callsTo("ShowHelp");
    ASSERT_EQ(help.size(), 1u);
    EXPECT_NE(help[0].find("um den FTP-Server mit dem lokalen Ordner abzugleichen"),
              std::string::npos);
    form.bar_Buttons->Press(QStringLiteral("ABORT"));
    EXPECT_TRUE(form.IsUnloaded());
    EXPECT_FALSE(form.Confirmed);
    EXPECT_EQ(plan, samplePlan());
}

} // namespace
